#pragma once

#include "canvas/CanvasItems.h"
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

public: // what is selected in the window (TrussViewKeys.cpp)
    /// Nothing while something hangs on the pointer, or where no window knows.
    [[nodiscard]] std::optional<CanvasItem> selectedItem() const;
    /// All that `item` is drawn on [px].
    [[nodiscard]] QRect areaOf(const CanvasItem& item) const;
    /// Its name, place, load and verdict.
    [[nodiscard]] QString textOf(const CanvasItem& item) const;
    /// The same of it and whatever is stacked with it, as HTML.
    [[nodiscard]] QString tipOf(const CanvasItem& item) const;
    /// The same of whatever lies under `point` [px]; empty for nothing.
    [[nodiscard]] QString tipAt(QPoint point) const;

public: // what keys do with it; nothing while something hangs on the pointer (TrussViewKeys.cpp)
    /// Selects the motor, array or load that `step` leads to, from left to right.
    void select(CanvasItems::Step step);
    /// Moves what is selected by `distance` [m], held on the truss. One step after another makes one edit.
    void nudge(float distance);
    /// The next nudge is an edit of its own.
    void endNudging();
    /// Asks for its exact position; an array's is that of its centre.
    void askSelectedPosition();
    void removeSelected();
    /// Opens its context menu over it.
    void runSelectedMenu();

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
    /// What positions a drag can reach.
    enum class Grid
    {
        Free,
        Decimetres ///< from the centre
    };
    void begin(const HitTest::Target& target, float metres);
    void pickNothing();
    void beginMotorDrag(int index);
    void beginLoadDrag(int id, float metres);
    void beginArrayDrag(const LoadLogic::ActiveLoad& segment, float metres);
    void drag(float metres, Grid grid);
    void moveMotor(float metres);
    void followMotor();
    void moveLoads(float metres);
    void snapLoads(float metres);
    [[nodiscard]] std::optional<float> draggedPlace() const;
    void endDrag();
    /// What a release does: ends the drag and calculates once more.
    void finishDrag();

private: // edits (TrussViewEdits.cpp)
    /// What a menu was opened by: the host was told of a press before, of keys it was not.
    enum class OpenedBy
    {
        Press,
        Keys
    };
    void askMotorPosition(int index);
    void askLoadPosition(qsizetype index);
    [[nodiscard]] int chooseFrom(const QStringList& entries, const QList<QKeySequence>& keys,
                                 QPoint position);
    void runMotorMenu(int index, QPoint position, OpenedBy opened);
    void runArrayMenu(qsizetype index, QPoint position, OpenedBy opened);
    void runLoadMenu(qsizetype index, QPoint position);
    void editMotor(const MotorIdentity& motor, OpenedBy opened);
    void removeMotor(const MotorIdentity& motor);
    void removeArray(int groupId);
    void editArray(int groupId);
    void removeLoad(qsizetype index);
    void aboutToEdit();
    void edited();

private: // keys (TrussViewKeys.cpp)
    [[nodiscard]] static bool canMove(const CanvasItem& item, float distance);
    static void move(const CanvasItem& item, float distance);
    void askArrayPosition(const CanvasItem& array);

private: // data
    /// While a motor is dragged.
    std::optional<MotorIdentity> m_grabbedMotor;
    /// What a key selected last: loads from a file may share their id.
    std::optional<CanvasItem> m_stepped;
    bool m_isNudging = false; ///< the next nudge belongs to the edit of the last one
    PaintKit m_kit;
};
