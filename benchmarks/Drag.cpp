// A step of a drag on the canvas, from the pointer's move to the painted picture, and the same
// picture from prepared calls alone.

#include "canvas/TrussView.h"
#include "ui/MainWindow.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

#include "PaintRecorder.h"
#include "Projects.h"

namespace
{

constexpr QSize CANVAS(1600, 900);
constexpr QSize WINDOW(2600, 1300); // holds the canvas without scrolling
constexpr Projects::Size USUAL{20, 100, 5, 8};
constexpr Projects::Size LARGE{50, 1000, 40, 20};
/// The pointer goes so far and begins anew: across several neighbours of the dragged motor [px].
constexpr int DRAG_WIDTH = 200;

/// Counts what a widget paints.
class PaintCounter : public QObject
{
public: // construction
    explicit PaintCounter(QWidget& widget)
    {
        widget.installEventFilter(this);
    }

public: // state
    int paints = 0;

public: // overrides
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        paints += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

/// The canvas that is edited; the report page has another one, for print.
TrussView* designCanvas(const QWidget& window)
{
    const QList<TrussView*> canvases = window.findChildren<TrussView*>();
    const auto found = std::find_if_not(canvases.cbegin(), canvases.cend(),
                                        [](const TrussView* canvas) { return canvas->printMode; });
    return *found;
}

/// The window with a project on a canvas of `CANVAS`.
class Stage
{
public: // construction
    explicit Stage(const Projects::Size& size)
    {
        m_canvas = designCanvas(m_window);
        m_canvas->setFixedSize(CANVAS);
        m_window.setWindowState(Qt::WindowNoState);
        m_window.resize(WINDOW);
        m_window.show();
        Projects::load(size);
        m_window.updateCalculations();
        QCoreApplication::processEvents();
    }

public: // queries
    [[nodiscard]] TrussView& canvas()
    {
        return *m_canvas;
    }

public: // commands
    void send(QEvent::Type type, const QPoint& point)
    {
        const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, point, m_canvas->mapToGlobal(point), button, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_canvas, &event);
    }

private: // data
    MainWindow m_window;
    TrussView* m_canvas = nullptr;
};

/// Where `position` [m] of the truss is on the canvas.
QPoint pointAt(const TrussView& canvas, float position)
{
    const float share = position / LoadLogic::TrussLength;
    const int span = canvas.width() - 2 * canvas.marginX;
    return {canvas.marginX + static_cast<int>(share * static_cast<float>(span)), canvas.height() / 2};
}

QPoint middleMotor(const TrussView& canvas)
{
    return pointAt(canvas, LoadLogic::MotorList.at(LoadLogic::MotorList.size() / 2).positionX);
}

/// A load's triangle hangs below the motors' bodies.
QPoint middleLoad(const TrussView& canvas)
{
    constexpr int BELOW_MOTORS = 45; // [px]
    return pointAt(canvas, LoadLogic::TrussLength / 2.0F) + QPoint(0, BELOW_MOTORS);
}

void drag(benchmark::State& state, const Projects::Size& size, QPoint (*grip)(const TrussView&))
{
    Stage stage(size);
    const QPoint start = grip(stage.canvas());
    stage.send(QEvent::MouseButtonPress, start);
    QCoreApplication::processEvents();
    const bool grabbed = stage.canvas().draggedMotor != -1 || stage.canvas().draggedLoad != -1
                         || stage.canvas().draggedGroup != -1;

    PaintCounter counter(stage.canvas());
    int steps = 0;
    for ([[maybe_unused]] auto _ : state) {
        ++steps;
        stage.send(QEvent::MouseMove, start + QPoint(steps % DRAG_WIDTH, 0));
        QCoreApplication::sendPostedEvents(); // settles layouts and paints
    }
    if (!grabbed || counter.paints != steps)
        state.SkipWithError("a move was not painted exactly once");
    stage.send(QEvent::MouseButtonRelease, start);
}

void dragMotor(benchmark::State& state)
{
    drag(state, USUAL, middleMotor);
}

void dragLoad(benchmark::State& state)
{
    drag(state, USUAL, middleLoad);
}

void dragMotorLarge(benchmark::State& state)
{
    drag(state, LARGE, middleMotor);
}

void dragLoadLarge(benchmark::State& state)
{
    drag(state, LARGE, middleLoad);
}

QImage blankImage()
{
    QImage image(CANVAS, QImage::Format_RGB32);
    image.fill(Qt::black);
    return image;
}

/// The whole picture, as the canvas paints it where it has kept nothing.
void drawAll(TrussView& canvas, QPaintDevice& device)
{
    const int W = canvas.width();
    const int H = canvas.height();
    QPainter painter(&device);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(canvas.rect(), QColor(0x12, 0x12, 0x12));
    canvas.drawTruss(painter, W, H, 1.0);
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads)) {
        if (Project::isScreen(load))
            canvas.drawScreen(painter, load, W, H, 1.0);
        else
            canvas.drawLoad(painter, load, W, H, 1.0);
    }
    for (const LoadLogic::Motor& motor : std::as_const(LoadLogic::MotorList))
        canvas.drawMotor(painter, motor, W, H, 1.0);
    canvas.drawFlexionLabel(painter, W, H, 1.0);
}

void paintPicture(benchmark::State& state)
{
    Stage stage(USUAL);
    PaintRecorder recorder(CANVAS);
    drawAll(stage.canvas(), recorder);

    QImage image = blankImage();
    for ([[maybe_unused]] auto _ : state) {
        QPainter painter(&image);
        recorder.replay(painter);
    }

    QImage picture = blankImage();
    stage.canvas().render(&picture);
    if (image != picture)
        state.SkipWithError("the prepared calls paint another picture");
}

BENCHMARK(dragMotor)->MeasureProcessCPUTime();
BENCHMARK(dragLoad)->MeasureProcessCPUTime();
BENCHMARK(paintPicture)->MeasureProcessCPUTime();
BENCHMARK(dragMotorLarge)->MeasureProcessCPUTime();
BENCHMARK(dragLoadLarge)->MeasureProcessCPUTime();

} // namespace
