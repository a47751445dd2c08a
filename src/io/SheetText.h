#pragma once

#include "engine/Project.h"
#include "engine/SecondOpinion.h"

#include <QString>

#include <optional>

/// The text of the calculation sheet of one project, with all its derivations, and what its pictures show.
struct SheetText
{
    QString kind;                   ///< of document, in its head
    QString title;                  ///< of the project
    QString html;                   ///< with a place for each picture, see SheetHtml
    ProjectState solved;            ///< for the drawing
    SecondOpinion::Opinion opinion; ///< for the diagrams; its names are fit to be shown

public: // construction
    /// The sheet of `project`, which is calculated first.
    static SheetText of(const ProjectState& project);
    /// Of it only the drawing and the second opinion; with a `tableDeflection` [mm] also what a millimetre
    /// out of level changes.
    static SheetText contrastOf(const ProjectState& project, std::optional<double> tableDeflection);
};
