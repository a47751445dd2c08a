#pragma once

#include <QString>

#include <cmath>
#include <vector>

/// What the verification page is made of.

/// One figure, by the textbook and by the program.
struct Figure
{
    QString name;
    QString formula;
    double expected = 0.0;
    double actual = 0.0;

    /// Relative, but for a figure that is 0 by the textbook.
    [[nodiscard]] double difference() const
    {
        const double distance = std::abs(actual - expected);
        return expected == 0.0 ? distance : distance / std::abs(expected);
    }
};

struct Case
{
    QString title;
    QString given;
    std::vector<Figure> figures;
};
