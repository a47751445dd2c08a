#pragma once

#include "canvas/CanvasPalette.h"
#include "canvas/TextLayouts.h"
#include "canvas/TrussGeometry.h"
#include "engine/Arrays.h"
#include "engine/LoadLogic.h"

#include <QImage>
#include <QWidget>

#include <optional>
#include <variant>

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

private: // nested types
    /// What is drawn the same until scale or medium change.
    struct Look
    {
        bool print;
        double scale;
        CanvasPalette colours;
    };
    struct MotorLabel
    {
        int index;
    };
    struct MotorBody
    {
        int index;
    };
    struct LoadLabel
    {
        int id;
    };
    struct LoadBody
    {
        int id;
    };
    /// The segment through which an array was hit.
    struct Array
    {
        LoadLogic::ActiveLoad segment;
    };
    /// What lies under the pointer.
    using Target = std::variant<std::monostate, MotorLabel, MotorBody, LoadLabel, LoadBody, Array>;
    /// Arrays of more segments than this are painted into an image, where repeating can stop early.
    static constexpr int LONG_RUN = 16;
    enum class Order
    {
        LoadsFirst,
        MotorsFirst
    };

private: // the window around
    [[nodiscard]] CanvasHost* host() const;
    /// What the window has selected, -1 for no load; nothing where there is no window.
    [[nodiscard]] std::optional<int> selectedLoadId() const;
    /// What a load is called on the canvas: its name, or "L" and its id when that is empty.
    [[nodiscard]] static QString loadTitle(const LoadLogic::ActiveLoad& load);

private: // drawing (TrussViewDrawing.cpp)
    [[nodiscard]] TrussGeometry geometry(int W, int H, double s) const;
    [[nodiscard]] TrussGeometry screenGeometry() const;
    const CanvasPalette& colours(double s);
    void drawScene(QPainter& painter, int W, int H, double s, Order order);
    void paintAll(QPainter& painter);
    [[nodiscard]] static QColor chordColour(const CanvasPalette& c);
    void drawLoads(QPainter& painter, int W, int H, double s);
    void drawMotors(QPainter& painter, int W, int H, double s);
    void drawDimension(QPainter& painter, const TrussGeometry& g, const CanvasPalette& c);
    void drawLattice(QPainter& painter, const TrussGeometry& g, const CanvasPalette& c);
    void drawMotorBody(QPainter& painter, const TrussGeometry& g, const CanvasPalette& c, int x,
                       bool overloaded);
    void drawMotorTexts(QPainter& painter, const TrussGeometry& g, const CanvasPalette& c,
                        const LoadLogic::Motor& motor, bool overloaded);
    void drawWarning(QPainter& painter);

private: // drawing of arrays (TrussViewArrays.cpp)
    /// Nothing where no load is of this group.
    [[nodiscard]] std::optional<ArraySummary> arrayOf(int groupId) const;
    [[nodiscard]] static bool hasLongArray();
    void drawArrayRun(QPainter& painter, const LoadLogic::ActiveLoad& segment, int times, int W, int H,
                      double s);
    void drawMetres(QPainter& painter, const TrussGeometry& g, const QRect& frame, float a, float b, int W,
                    double s);
    static void fillMetres(QPainter& painter, const QRectF& area, double s);
    void drawScreenLabel(QPainter& painter, const CanvasPalette& c, const QRect& frame,
                         const QColor& frameColour);

private: // pointer (TrussViewPointer.cpp)
    [[nodiscard]] Target targetAt(QPoint point) const;
    [[nodiscard]] Target loadTargetAt(QPoint point, const TrussGeometry& g) const;
    [[nodiscard]] bool isOverGrip(QPoint point) const;
    void beginMotorDrag(int index);
    void beginLoadDrag(int id, float pointer);
    void beginArrayDrag(const LoadLogic::ActiveLoad& segment, float pointer);
    void moveMotor(float pointer);
    void moveLoads(float pointer);
    void followDraggedMotor();
    [[nodiscard]] bool isDragging() const;
    void endDrag();
    /// What a release does: ends the drag and calculates once more.
    void finishDrag();
    void selectNothing();
    void askMotorPosition(LoadLogic::Motor motor);
    void askLoadPosition(int id);
    [[nodiscard]] std::optional<float> askPosition(const QString& title, float position);
    void pushUndo();
    void recalculate();

private: // menu (TrussViewMenu.cpp)
    /// Shows a menu of `entries` at `position`; returns the index of the chosen one, -1 for none. The
    /// canvas may be destroyed meanwhile.
    [[nodiscard]] int chooseFrom(const QStringList& entries, QPoint position);
    [[nodiscard]] int arrayForMenuAt(QPoint point) const;
    void runMotorMenu(LoadLogic::Motor motor, QPoint position);
    void runArrayMenu(int groupId, QPoint position);
    void runLoadMenu(qsizetype index, QPoint position);
    void editMotor(const LoadLogic::Motor& motor);
    void removeMotor(const LoadLogic::Motor& motor);
    void removeArray(int groupId);
    void editArray(int groupId);
    void removeLoad(qsizetype index);
    void positionChanged();

private: // data
    std::optional<Look> m_look;
    std::optional<LoadLogic::Motor> m_grabbedMotor; ///< as it last stood in a motor drag
    std::optional<ArraySummaries> m_arrays;         ///< while a scene is drawn
    TextLayouts m_texts;
};
