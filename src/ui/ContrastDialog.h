#pragma once

#include "engine/Project.h"
#include "engine/SecondOpinion.h"

#include <QDialog>

#include <optional>

class BendingCurves;
class ContrastTable;
class MotorBars;
class QBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;

/// "Contraste de reparto": the second opinion on a project, in sentences, as a table and in pictures.
/// Stays open beside the window while the project changes; whoever opened it shows it each new opinion.
class ContrastDialog : public QDialog
{
    Q_OBJECT

public: // construction
    explicit ContrastDialog(QWidget* parent = nullptr);

public: // queries
    /// The deflection of the truss under its CPL that was typed in [mm]; nothing where that is no number
    /// above 0.
    [[nodiscard]] std::optional<double> tableDeflection() const;
    /// The table with its headings, columns parted by tabs and rows by line feeds.
    [[nodiscard]] QString tableText() const;

public: // commands
    /// Takes out a table deflection that was typed in for another project, length or CPL than those of
    /// `project`. To be called before an opinion is asked for.
    void prepare(const ProjectState& project);
    /// Shows `opinion`.
    void follow(const SecondOpinion::Opinion& opinion);
    void copyTable() const;

signals:
    /// Another table deflection was typed, or none.
    void tableDeflectionChanged();
    /// The calculation sheet is wanted.
    void sheetRequested();
    /// What is shown is wanted on paper.
    void printRequested();

private: // helpers
    void buildSentences(QBoxLayout* column);
    void buildTable(QBoxLayout* column);
    void buildPictures(QBoxLayout* column);
    void buildDeflection(QBoxLayout* column);
    void buildButtons(QBoxLayout* column);
    [[nodiscard]] QPushButton* addButton(QBoxLayout* row, const QString& text) const;
    void fillSentences();
    void onDeflectionEdited();

private:                     // data
    QString m_project;       ///< the one that is shown
    float m_length = 0.0F;   ///< of its truss [m]
    float m_limitCPL = 0.0F; ///< of its truss [kg]
    SecondOpinion::Opinion m_opinion;
    QLabel* m_contradictions = nullptr;
    QLabel* m_sentences = nullptr;
    QLabel* m_moreSentences = nullptr;
    ContrastTable* m_table = nullptr;
    MotorBars* m_bars = nullptr;
    BendingCurves* m_curves = nullptr;
    QLineEdit* m_deflection = nullptr;
};
