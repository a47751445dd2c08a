#pragma once

#include <QColor>
#include <QFont>

/// Colours and fonts of the drawing by what they are for: dark colours for the screen, black on
/// white for print.
struct CanvasPalette
{
public: // construction
    /// The fonts are those of `scale` (1 on screen).
    CanvasPalette(bool print, double scale);

public: // colours
    QColor background;
    QColor ink;    ///< outlines, names
    QColor accent; ///< chord, length, stress
    QColor axis;   ///< through the middle of the target
    QColor lattice;
    QColor centreMark; ///< the truss's centre
    QColor secondary;  ///< positions
    QColor mass;       ///< of loads
    QColor loadOutline;
    QColor selectedLoadOutline;
    QColor loadFill;
    QColor selectedLoadFill;
    QColor screenFrame;
    QColor selectedScreenFrame;
    QColor motorOutline;
    QColor motorFill;
    QColor overloadedMotorFill;
    QColor tagFill; ///< behind a motor's name

public: // fonts
    QFont stressFont;
    QFont lengthFont; ///< also of what a motor carries
    QFont nameFont;   ///< of loads and screens
    QFont tagFont;    ///< of motors' names
    QFont detailFont;
    QFont loadPositionFont;

public: // colours that mean the same on screen and on paper
    static const QColor OVERLOADED;
    static const QColor NEAR_LIMIT;
    static const QColor WITHIN_LIMIT;
    static const QColor CHAIN;
    static const QColor POINT_LOAD;
    static const QColor SCREEN_METRES;
    static const QColor SCREEN_LABEL_BOX;
    static const QColor WARNING_VEIL;
};
