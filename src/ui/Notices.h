#pragma once

#include "engine/Project.h"
#include "engine/SecondOpinion.h"

#include <QList>
#include <QString>

#include <optional>

/// One thing that the window has to say beside its figures.
struct Notice
{
    /// What it is about, most urgent first.
    enum class Kind
    {
        Tips,           ///< the truss tips, or is on the edge, although the drawing calls it stable
        LevelOverload,  ///< a motor exceeds its capacity at level although its label passes it
        NoFigure,       ///< a figure is not a number, or nothing could be calculated
        MotorsTogether, ///< two motors hang at one place
        NoRating,       ///< the truss has no central point load to be rated by
        UnusedField,    ///< a field reads what the project does not use
        Recovery,       ///< work of an earlier run can be brought back
        Names,          ///< a name that other programs would not show as it is
        EditedLoad,     ///< which load the mass field edits
        DraggedTabs,    ///< the tabs were dragged
        UnlistedFile,   ///< a file was saved that the dialog for opening does not list
    };

    enum class Urgency
    {
        Alarm,   ///< today's figures are on the unsafe side
        Warning, ///< a figure is missing or is not about what was typed
        Hint,    ///< the program works as it does; good to know
    };

    Kind kind = Kind::UnlistedFile;
    QString id;   ///< tells it from all others, also while its text changes
    QString text; ///< one Spanish sentence, plain text, without line breaks

    /// How much it matters, by its kind.
    [[nodiscard]] Urgency urgency() const;
};

/// The same in every member.
bool operator==(const Notice& a, const Notice& b);

/// What the window has to say, of facts that it is given.
namespace Notices
{

/// The ids of notices that come and go at an event.
extern const QString DRAGGED_TABS;
extern const QString UNLISTED_FILE;
extern const QString NAMES;

/// What a number field reads, and what the project has instead of it or because of it.
struct Field
{
    QString id;           ///< the field's object name
    QString label;        ///< as it stands before the field, without the colon
    QString text;         ///< what it reads
    float counted = 0.0F; ///< what the project counts with, in the field's unit
    int decimals = 1;     ///< with so many the program itself fills the field
};

/// Whether `field` reads the number that counts, exactly, rounded as the program shows it, or nearer
/// to it than an edit goes.
bool isUsed(const Field& field);

/// Everything that a notice may come from.
struct Facts
{
    ProjectState solved;            ///< the project with its results
    SecondOpinion::Opinion opinion; ///< on that project
    QList<Field> fields;            ///< those that stand for a value of the project
    QList<Notice> standing;         ///< what others have to say, until they take it back
};

/// All that there is to say of `facts`, most urgent first; of equal urgency in the order of motors and
/// fields. Of very many motors only the first are told.
QList<Notice> of(const Facts& facts);

/// The tabs show another order than before; titles went along, projects did not.
Notice draggedTabs();
/// A file was saved as `fileName`; nothing where the dialog for opening lists such a name.
std::optional<Notice> savedFile(const QString& fileName);
/// `name` is markup to a browser.
Notice markupName(const QString& name);
/// `name` in one line, shortened in its middle where it is very long.
QString shortName(const QString& name);

} // namespace Notices
