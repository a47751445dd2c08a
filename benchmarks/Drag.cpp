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

/// The middle of the project's middle motor.
QPoint motorPoint(const TrussView& canvas)
{
    const LoadLogic::Motor& motor = LoadLogic::MotorList.at(LoadLogic::MotorList.size() / 2);
    const int span = canvas.width() - 2 * canvas.marginX;
    const float share = motor.positionX / LoadLogic::TrussLength;
    return {canvas.marginX + static_cast<int>(share * static_cast<float>(span)), canvas.height() / 2};
}

void drag(benchmark::State& state, const Projects::Size& size)
{
    Stage stage(size);
    const QPoint start = motorPoint(stage.canvas());
    stage.send(QEvent::MouseButtonPress, start);
    QCoreApplication::processEvents();

    PaintCounter counter(stage.canvas());
    int steps = 0;
    for ([[maybe_unused]] auto _ : state) {
        ++steps;
        stage.send(QEvent::MouseMove, start + QPoint(steps % DRAG_WIDTH, 0));
        QCoreApplication::sendPostedEvents(); // settles layouts and paints
    }
    if (counter.paints != steps)
        state.SkipWithError("a move was not painted exactly once");
    stage.send(QEvent::MouseButtonRelease, start);
}

void dragStep(benchmark::State& state)
{
    drag(state, USUAL);
}

void dragStepLarge(benchmark::State& state)
{
    drag(state, LARGE);
}

QImage blankImage()
{
    QImage image(CANVAS, QImage::Format_RGB32);
    image.fill(Qt::black);
    return image;
}

void paintPicture(benchmark::State& state)
{
    Stage stage(USUAL);
    PaintRecorder recorder(CANVAS);
    stage.canvas().render(&recorder);

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

BENCHMARK(dragStep)->MeasureProcessCPUTime();
BENCHMARK(paintPicture)->MeasureProcessCPUTime();
BENCHMARK(dragStepLarge)->MeasureProcessCPUTime();

} // namespace
