#pragma once

#include "engine/Project.h"
#include "engine/SecondOpinion.h"

#include <QString>

/// The text of the calculation sheet of one project, with all its derivations, and what its pictures show.
struct SheetText
{
    QString title;                  ///< of the project
    QString html;                   ///< with a place for each picture, see SheetHtml
    ProjectState solved;            ///< for the drawing
    SecondOpinion::Opinion opinion; ///< for the diagrams; its names are fit to be shown

public: // construction
    /// The sheet of `project`, which is calculated first.
    static SheetText of(const ProjectState& project);
};
