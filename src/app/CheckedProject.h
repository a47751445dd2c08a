#pragma once

#include "engine/Figures.h"
#include "engine/SecondOpinion.h"

#include <QString>

#include <optional>

/// A project of the command line with all that is told of it.
struct CheckedProject
{
    QString name; ///< the file as given
    Figures figures;
    std::optional<SecondOpinion::Opinion> opinion; ///< none where nobody wants it
};
