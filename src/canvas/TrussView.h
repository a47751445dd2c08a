#pragma once

#include "engine/LoadLogic.h"

#include <QHash>
#include <QImage>
#include <QWidget>

class CanvasHost;

/// Draws the project in the engine: the truss as a side elevation, motors above it, loads and LED
/// arrays below it; and lets the user pick and move them. Keeps no copy of the model.
///
/// Pixels grow to the right and downwards; model positions are metres from the truss's left end.
class TrussView : public QWidget
{
    Q_OBJECT

public: // construction
    explicit TrussView(QWidget* parent = nullptr);
    ~TrussView() override;

public:                      // state
    bool blinkOn = false;    ///< phase of the warning; written by the window
    bool printMode = false;  ///< black on white, and deaf to the pointer
    int draggedMotor = -1;   ///< index in `LoadLogic::MotorList`, -1 for none
    int draggedGroup = -1;   ///< `groupId` of an array, -1 for none
    int draggedLoad = -1;    ///< `id` of a point load, -1 for none
    float dragOffset = 0.0F; ///< where the pointer last was in a load or array drag [m]
    int marginX = 80;        ///< from the widget's edge to a truss end, at scale 1 [px]
    int motorBoxSize = 70;   ///< side of a motor's body, at scale 1 [px]

public: // off-screen rendering
    /// The drawing in the print palette, `width` × `height` [px], at a scale of width / 1000.
    QImage renderToImage(int width, int height);
    /// Draws into `rect` of `painter` in the palette that `printMode` selects, on white.
    void renderTo(QPainter& painter, const QRect& rect);

public: // drawing; W and H are the target's size [px], s the scale (1.0 on screen)
    void drawTruss(QPainter& painter, int W, int H, double s);
    void drawScreen(QPainter& painter, const LoadLogic::ActiveLoad& segment, int W, int H, double s);
    void drawLoad(QPainter& painter, const LoadLogic::ActiveLoad& load, int W, int H, double s);
    void drawMotor(QPainter& painter, const LoadLogic::Motor& motor, int W, int H, double s);
    void drawFlexionLabel(QPainter& painter, int W, int H, double s);

protected: // events
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
};
