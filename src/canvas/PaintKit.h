#pragma once

#include "canvas/CanvasPalette.h"
#include "canvas/TextLayouts.h"

#include <optional>

/// What painting a scene keeps from one picture to the next: colours and fonts of the last medium and
/// scale, and how texts are laid out. Holds nothing that depends on the project.
class PaintKit
{
public: // commands
    /// The palette for paper or screen at `scale`; valid until the next call.
    const CanvasPalette& palette(bool print, double scale);
    [[nodiscard]] TextLayouts& texts();

private: // nested types
    struct Look
    {
        bool print;
        double scale;
        CanvasPalette palette;
    };

private: // data
    std::optional<Look> m_look;
    TextLayouts m_texts;
};
