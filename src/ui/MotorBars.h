#pragma once

#include "ui/ContrastPicture.h"

#include <vector>

/// The motors on the truss, each with four bars, lever, level, one slack and maximum, against the line of
/// its capacity.
class MotorBars : public ContrastPicture
{
    Q_OBJECT

public: // construction
    MotorBars();

protected: // what a picture is
    [[nodiscard]] std::size_t stops() const override;
    [[nodiscard]] double xOf(std::size_t stop) const override;
    [[nodiscard]] QString textOf(std::size_t stop) const override;
    [[nodiscard]] QString description() const override;
    void draw(QPainter& painter) const override;

private: // helpers
    /// The places in the list, left to right.
    [[nodiscard]] std::vector<std::size_t> order() const;
    [[nodiscard]] double groupWidth() const;
    /// Where each motor's bars stand, left to right: at its place, or beside it where bars would overlap
    /// [px].
    [[nodiscard]] std::vector<double> groupCentres() const;
    /// What the picture is high enough for: all figures and capacities, but for maxima far above all
    /// others, which are cut off [kg].
    [[nodiscard]] double highest() const;
    void drawLegend(QPainter& painter) const;
    void drawGroup(QPainter& painter, const SecondOpinion::MotorOpinion& told, double centre,
                   double scale) const;
    static void drawCut(QPainter& painter, const QPointF& top);
};
