#pragma once

#include "canvas/HitTest.h"
#include "canvas/PaintKit.h"
#include "engine/LoadLogic.h"

#include <QImage>
#include <QWidget>

#include <optional>

class CanvasHost;
class ScenePainter;

/// Shows the current project as a drawing, and lets the user pick and move what is on it. Keeps no copy
/// of the model: it makes a scene of it for each picture and each press, and forwards to the modules
/// that draw, find and move.
///
/// Pixels grow to the right and downwards; model positions are metres from the truss's left end.
class TrussView : public QWidget
{
    Q_OBJECT

public: // construction
    explicit TrussView(QWidget* parent = nullptr);
    ~TrussView() override;

public: // state
    /// Phase of the warning; written by the window.
    bool blinkOn = false;
    bool printMode = false;  ///< black on white, and deaf to the pointer
    int draggedMotor = -1;   ///< index in `LoadLogic::MotorList`, -1 for none
    int draggedGroup = -1;   ///< `groupId` of an array, -1 for none
    int draggedLoad = -1;    ///< `id` of a point load, -1 for none
    float dragOffset = 0.0F; ///< where the pointer last was in a load or array drag [m]
    int marginX = 80;        ///< from the widget's edge to a truss end, at scale 1 [px]
    int motorBoxSize = 70;   ///< side of a motor's body, at scale 1 [px]

public: // queries
    /// Whether something hangs on the pointer.
    [[nodiscard]] bool isDragging() const;

public: // off-screen rendering
    /// The drawing in the print palette, `width` × `height` [px], at a scale of width / 1000.
    QImage renderToImage(int width, int height);
    /// Draws into `rect` of `painter` in the palette that `printMode` selects, on white.
    void renderTo(QPainter& painter, const QRect& rect);

public: // drawing; W and H are the target's size [px], s the scale (1.0 on screen)
    /// Each draws its part of the current project as `ScenePainter` does.
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

private: // what stands around, and what is seen
    [[nodiscard]] CanvasHost* host() const;
    [[nodiscard]] Scene scene() const;
    [[nodiscard]] TrussGeometry geometry() const;
    void paintAll(QPainter& painter);

private: // drags (TrussViewDrag.cpp)
    void begin(const HitTest::Target& target, float metres);
    void pickNothing();
    void beginMotorDrag(int index);
    void beginLoadDrag(int id, float metres);
    void beginArrayDrag(const LoadLogic::ActiveLoad& segment, float metres);
    void moveMotor(float metres);
    void followMotor();
    void moveLoads(float metres);
    void endDrag();
    /// What a release does: ends the drag and calculates once more.
    void finishDrag();

private: // edits (TrussViewEdits.cpp)
    void askMotorPosition(int index);
    void askLoadPosition(qsizetype index);
    [[nodiscard]] int chooseFrom(const QStringList& entries, const QList<QKeySequence>& keys,
                                 QPoint position);
    void runMotorMenu(int index, QPoint position);
    void runArrayMenu(qsizetype index, QPoint position);
    void runLoadMenu(qsizetype index, QPoint position);
    void editMotor(const MotorIdentity& motor);
    void removeMotor(const MotorIdentity& motor);
    void removeArray(int groupId);
    void editArray(int groupId);
    void removeLoad(qsizetype index);
    void aboutToEdit();
    void edited();

private: // data
    /// While a motor is dragged.
    std::optional<MotorIdentity> m_grabbedMotor;
    PaintKit m_kit;
};
