// Hanging a very wide screen.

#include "engine/LoadLogic.h"
#include "ui/MainWindow.h"

#include <benchmark/benchmark.h>

#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace
{

constexpr int SEGMENTS = 20'000;

template <typename Widget>
Widget* widgetWithText(const QWidget& window, const QString& text)
{
    const auto widgets = window.findChildren<Widget*>();
    for (Widget* widget : widgets) {
        if (widget->text() == text)
            return widget;
    }
    return nullptr;
}

void placeSegments(benchmark::State& state)
{
    MainWindow window;
    auto* width = window.findChild<QLineEdit*>(u"screenWidth"_s);
    auto* add = widgetWithText<QPushButton>(window, u"AÑADIR PANTALLA"_s);
    if (width == nullptr || add == nullptr) {
        state.SkipWithError("the fields of the screen are not there");
        return;
    }
    LoadLogic::TrussLength = SEGMENTS;
    width->setText(QString::number(SEGMENTS / 2)); // a segment each half metre

    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        LoadLogic::ActiveLoads.clear();
        window.undoStack.clear();
        state.ResumeTiming();
        add->click();
    }
    if (LoadLogic::ActiveLoads.size() != SEGMENTS)
        state.SkipWithError("another number of segments was placed");
}

BENCHMARK(placeSegments)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

} // namespace
