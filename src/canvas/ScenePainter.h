#pragma once

#include "canvas/PaintContext.h"
#include "canvas/PaintKit.h"
#include "engine/Arrays.h"

#include <QImage>
#include <QRect>

#include <optional>

/// Draws a scene: the truss as a side elevation, motors above it, loads and LED arrays below it.
/// Made anew for each picture.
class ScenePainter
{
public: // nested types
    enum class Order
    {
        LoadsFirst,
        MotorsFirst
    };

public: // construction
    /// For a target of `width` × `height` [px] that `painter` is open on, at `scale` (1 on screen).
    ScenePainter(QPainter& painter, const Scene& scene, PaintKit& kit, QSize target, double scale);

public: // commands
    /// Everything but the warning.
    void draw(Order order);
    /// The warning of an unstable layout over `area`, as its blinking shows it.
    void drawWarning(const QRect& area);

public: // parts
    /// Chord, ends, length, lattice and centre mark.
    void drawTruss();
    /// A point load: triangle, name, mass and place.
    void drawLoad(const ActiveLoad& load);
    /// The array that `segment` belongs to; nothing where the scene has none of its group.
    void drawScreen(const ActiveLoad& segment);
    void drawMotor(const Motor& motor);
    void drawFlexionLabel();

public: // whole pictures
    /// The drawing at a scale of width / 1000 on white, motors first.
    static QImage toImage(const Scene& scene, PaintKit& kit, int width, int height);
    /// Draws into `area` of `painter` at a scale of width / 1000, on white, loads first.
    static void paintInto(QPainter& painter, const QRect& area, const Scene& scene, PaintKit& kit);

private: // helpers
    [[nodiscard]] QColor chordColour() const;
    void drawDimension();
    void drawLattice();
    void drawLoads();
    void drawMotors();
    [[nodiscard]] std::optional<ArraySummary> arrayOf(int groupId);

private: // data
    PaintContext m_context;
    std::optional<ArraySummaries> m_arrays;
};
