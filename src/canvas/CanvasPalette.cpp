#include "canvas/CanvasPalette.h"

#include "engine/Numbers.h"
#include "fields/AccentColour.h"

using namespace Qt::StringLiterals;

namespace
{

/// The colour that a style sheet would read in `name`.
QColor named(const QString& name)
{
    QColor colour;
    colour.setNamedColor(name);
    return colour;
}

QFont monospace(double points, QFont::Weight weight)
{
    return QFont(u"Monospace"_s, Numbers::toPixel(points), weight);
}

} // namespace

const QColor CanvasPalette::OVERLOADED = named(u"#FF0000"_s);
const QColor CanvasPalette::NEAR_LIMIT = named(u"#FFAF00"_s);
const QColor CanvasPalette::WITHIN_LIMIT = named(u"#39FF14"_s);
const QColor CanvasPalette::CHAIN = named(u"#AAAAAA"_s);
const QColor CanvasPalette::POINT_LOAD = named(u"#888888"_s);
const QColor CanvasPalette::SCREEN_METRES(0, 255, 255, 130);
const QColor CanvasPalette::SCREEN_LABEL_BOX(0, 0, 0, 90);
const QColor CanvasPalette::WARNING_VEIL(255, 0, 0, 180);

CanvasPalette::CanvasPalette(bool print, double scale)
    : stressFont(monospace(10 * scale, QFont::Bold))
    , lengthFont(monospace(9 * scale, QFont::Bold))
    , nameFont(monospace(8 * scale, QFont::Bold))
    , tagFont(monospace(7 * scale, QFont::Bold))
    , detailFont(monospace(7 * scale, QFont::Normal))
    , loadPositionFont(monospace(6 * scale, QFont::Normal))
{
    const auto choose = [print](const QColor& onScreen, const QColor& onPaper) {
        return print ? onPaper : onScreen;
    };
    // All colours are chosen by the same rule, so they stand in one list.
    // cppcheck-suppress useInitializationList
    background = choose(named(u"#121212"_s), Qt::white);
    ink = choose(Qt::white, Qt::black);
    accent = choose(accentColour(), Qt::black);
    axis = choose(named(u"#444"_s), Qt::gray);
    lattice = choose(named(u"#444444"_s), named(u"#CCCCCC"_s));
    centreMark = choose(named(u"#BBBBBB"_s), named(u"#888888"_s));
    secondary = choose(named(u"#AAAAAA"_s), Qt::black);
    mass = choose(named(u"#00FFFF"_s), Qt::black);
    loadOutline = choose(Qt::yellow, Qt::black);
    selectedLoadOutline = choose(Qt::cyan, Qt::black);
    // Eight digits are read alpha first: an opaque red, and nothing at all for the selected load.
    loadFill = choose(named(u"#FFFF0022"_s), Qt::transparent);
    selectedLoadFill = choose(named(u"#00FFFF22"_s), Qt::transparent);
    screenFrame = choose(named(u"#00FFFF"_s), named(u"#888888"_s));
    selectedScreenFrame = choose(Qt::white, named(u"#888888"_s));
    motorOutline = choose(named(u"#333333"_s), Qt::black);
    motorFill = choose(named(u"#222222"_s), Qt::white);
    overloadedMotorFill = choose(named(u"#440000"_s), Qt::white);
    tagFill = choose(Qt::black, Qt::white);
}
