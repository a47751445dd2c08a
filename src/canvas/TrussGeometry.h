#pragma once

#include "engine/LoadLogic.h"

#include <QPoint>
#include <QRect>

/// Metres to pixels and back, and where things can be grabbed, for one target size.
///
/// Positions are metres from the truss's left end; pixels grow to the right and downwards. The
/// truss is always stretched across the target between its margins. The boxes differ from what is
/// drawn, and the pointer's from the menu's, on purpose: a hand needs more room than an eye.
class TrussGeometry
{
public: // construction
    /// `width` and `height` of the target [px]; `scale` is 1 on screen; `marginX` [px] at scale 1.
    TrussGeometry(int width, int height, double scale, int marginX);

public: // queries
    /// A length at scale 1 [px] as it is in the target, truncated.
    [[nodiscard]] int scaled(double length) const;
    [[nodiscard]] int margin() const; ///< left of the truss [px]
    [[nodiscard]] int span() const;   ///< of the truss [px]
    [[nodiscard]] int lineY() const;  ///< of the truss [px]
    /// Pixels from the truss's left end to the position [m].
    [[nodiscard]] int offset(float position) const;
    /// The pixel column of the position [m].
    [[nodiscard]] int toX(float position) const;
    /// The position [m] under a pixel column; not clamped.
    [[nodiscard]] float toMetres(int x) const;

public: // boxes for the pointer
    [[nodiscard]] QRect motorLabelBox(const LoadLogic::Motor& motor) const;
    [[nodiscard]] QRect motorBodyBox(const LoadLogic::Motor& motor, int side) const;
    [[nodiscard]] QRect loadLabelBox(const LoadLogic::ActiveLoad& load) const;
    [[nodiscard]] QRect loadBodyBox(const LoadLogic::ActiveLoad& load) const;
    /// As wide and as high as the screen itself, `centre` [m] being the middle of its array.
    [[nodiscard]] QRect arrayBox(const LoadLogic::ActiveLoad& segment, float centre) const;

public: // boxes for the menu
    [[nodiscard]] QRect arrayMenuBox(const LoadLogic::ActiveLoad& segment, float centre) const;
    [[nodiscard]] QRect loadMenuBox(const LoadLogic::ActiveLoad& load) const;

private: // data
    double m_scale;
    int m_margin;
    int m_span;
    int m_lineY;
};
