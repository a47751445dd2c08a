#include "canvas/TrussView.h"

#include "canvas/CanvasHost.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

namespace
{

/// A target this wide is drawn at a scale of 1 [px].
constexpr double SCALE_ONE_WIDTH = 1000.0;

} // namespace

TrussView::TrussView(QWidget* parent)
    : QWidget(parent)
{
    setMinimumHeight(300);
    setMouseTracking(true);
    setAccessibleName(u"Plano del truss"_s);
}

TrussView::~TrussView() = default;

CanvasHost* TrussView::host() const
{
    return qobject_cast<CanvasHost*>(window());
}

int TrussView::selectedLoadId() const
{
    const CanvasHost* window = host();
    return window == nullptr ? -1 : window->selectedLoad();
}

bool TrussView::hasLongArray()
{
    qsizetype run = 0;
    int groupId = -1;
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads)) {
        const bool goesOn = LoadLogic::IsScreen(load) && load.groupId == groupId;
        groupId = load.groupId;
        run = goesOn ? run + 1 : 1;
        if (run > LONG_RUN)
            return true;
    }
    return false;
}

void TrussView::paintEvent(QPaintEvent* /*event*/)
{
    const auto paint = [this](QPaintDevice* device) {
        QPainter painter(device);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillRect(rect(), colours(1.0).background);
        drawScene(painter, width(), height(), 1.0, Order::LoadsFirst);
        drawWarning(painter);
    };
    if (!hasLongArray()) {
        paint(this);
        return;
    }
    QImage image(size() * devicePixelRatioF(), QImage::Format_RGB32);
    image.setDevicePixelRatio(devicePixelRatioF());
    paint(&image);
    QPainter(this).drawImage(0, 0, image);
}

QImage TrussView::renderToImage(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);

    const QScopedValueRollback<bool> printing(printMode, true);
    drawScene(painter, width, height, width / SCALE_ONE_WIDTH, Order::MotorsFirst);
    return image;
}

void TrussView::renderTo(QPainter& painter, const QRect& rect)
{
    painter.save();
    painter.setClipRect(rect);
    painter.translate(rect.topLeft());
    painter.fillRect(0, 0, rect.width(), rect.height(), Qt::white);
    drawScene(painter, rect.width(), rect.height(), rect.width() / SCALE_ONE_WIDTH, Order::LoadsFirst);
    painter.restore();
}
