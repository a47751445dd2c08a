#pragma once

#include "engine/Project.h"

#include <QPoint>
#include <QRect>

/// Metres to pixels and back, and where things can be grabbed, for one target size.
///
/// Positions are metres from the truss's left end; pixels grow to the right and downwards. The
/// truss is always stretched across the target between its margins. The pointer's boxes are those of
/// scale 1. They differ from what is drawn, and from the menu's: a motor is drawn above the truss line
/// and grabbed on either side of it, a screen is grabbed at its own height and drawn flat.
class TrussGeometry
{
public: // dimensions that drawing, boxes and overlays share, at scale 1 [px]
    /// Of a screen's frame, below the truss line.
    static constexpr int ARRAY_TOP = 5;
    static constexpr int ARRAY_HEIGHT = 40;        ///< of a screen's frame
    static constexpr int MOTOR_LABEL_TOP = 105;    ///< of what a motor carries, above the truss line
    static constexpr int MOTOR_LABEL_WIDTH = 90;   ///< of that, and of the motor's position over it
    static constexpr int MOTOR_POSITION_RISE = 14; ///< of the position, above the label's top
    static constexpr int MOTOR_POSITION_HEIGHT = 13;
    static constexpr int LOAD_LABEL_WIDTH = 80;
    static constexpr int STRESS_LABEL_TOP = 125; ///< of "Flexión", below the truss line
    static constexpr int STRESS_LABEL_HEIGHT = 25;

public: // construction
    /// `width` and `height` of the target [px]; `scale` is 1 on screen; `marginX` [px] at scale 1;
    /// `trussLength` [m], where one that is not positive gives positions without a meaning.
    TrussGeometry(int width, int height, double scale, int marginX, float trussLength);

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
    /// A motor's place as text: a press asks for the exact one.
    [[nodiscard]] QRect motorLabelBox(const Motor& motor) const;
    /// Where a motor is grabbed; `side` [px].
    [[nodiscard]] QRect motorBodyBox(const Motor& motor, int side) const;
    /// A load's place as text: a press asks for the exact one.
    [[nodiscard]] QRect loadLabelBox(const ActiveLoad& load) const;
    /// Where a load is grabbed.
    [[nodiscard]] QRect loadBodyBox(const ActiveLoad& load) const;
    /// As wide and as high as the screen itself, `centre` [m] being the middle of its array.
    [[nodiscard]] QRect arrayBox(const ActiveLoad& segment, float centre) const;

public: // boxes for the menu
    /// The array's frame as it is drawn.
    [[nodiscard]] QRect arrayMenuBox(const ActiveLoad& segment, float centre) const;
    /// The load's triangle as it is drawn.
    [[nodiscard]] QRect loadMenuBox(const ActiveLoad& load) const;

private: // data
    double m_scale;
    int m_margin;
    int m_span;
    int m_lineY;
    float m_trussLength;
};
