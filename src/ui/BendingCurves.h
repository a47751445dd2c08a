#pragma once

#include "ui/ContrastPicture.h"

#include <vector>

/// Bending moment and shear of the truss at level, with their extremes, and dashed those of the case of
/// one slack motor that bends it most. Sagging moments are drawn downwards, on the side that is pulled.
class BendingCurves : public ContrastPicture
{
    Q_OBJECT

public: // construction
    BendingCurves();

protected: // what a picture is
    [[nodiscard]] std::size_t stops() const override;
    [[nodiscard]] double xOf(std::size_t stop) const override;
    [[nodiscard]] QString textOf(std::size_t stop) const override;
    [[nodiscard]] QString description() const override;
    void draw(QPainter& painter) const override;

private: // nested types
    using Bending = SecondOpinion::Bending;
    using Value = double BeamDiagram::Point::*;
    struct Curve
    {
        Value value;
        double down; ///< 1 where positive values are drawn downwards, else -1
    };
    struct Scale
    {
        double zero;    ///< where a value of 0 is drawn [px]
        double perUnit; ///< downwards, for each unit of the value [px]
    };
    struct Mark
    {
        double position; ///< [m]
        double value;    ///< [kg·m] or [kg]
    };

private: // helpers
    /// The point of `bending` at which `value` is farthest from 0.
    [[nodiscard]] static Mark farthest(const Bending& bending, Value value);
    [[nodiscard]] double largest(Value value) const;
    void drawCurves(QPainter& painter, const QRectF& area, const QString& title, const Curve& curve) const;
    void drawLine(QPainter& painter, const Bending& bending, const Curve& curve, const Scale& scale,
                  const QPen& pen) const;
    void drawMark(QPainter& painter, const Mark& mark, const Scale& scale) const;
};
