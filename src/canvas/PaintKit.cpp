#include "canvas/PaintKit.h"

const CanvasPalette& PaintKit::palette(bool print, double scale)
{
    if (!m_look || m_look->print != print || m_look->scale != scale)
        m_look.emplace(Look{print, scale, CanvasPalette(print, scale)});
    return m_look->palette;
}

TextLayouts& PaintKit::texts()
{
    return m_texts;
}
