#include "canvas/TrussView.h"

#include "canvas/CanvasHost.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>

#include <cmath>
#include <utility>

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
    setAttribute(Qt::WA_OpaquePaintEvent); // spares what lies under it a fill of the same pixels
    setAccessibleName(u"Plano del truss"_s);
}

TrussView::~TrussView() = default;

CanvasHost* TrussView::host() const
{
    return qobject_cast<CanvasHost*>(window());
}

std::optional<int> TrussView::selectedLoadId() const
{
    const CanvasHost* window = host();
    return window == nullptr ? std::nullopt : std::optional<int>(window->selectedLoad());
}

bool TrussView::hasLongArray()
{
    qsizetype run = 0;
    int groupId = -1;
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads)) {
        const bool goesOn = Project::isScreen(load) && load.groupId == groupId;
        groupId = load.groupId;
        run = goesOn ? run + 1 : 1;
        if (run > LONG_RUN)
            return true;
    }
    return false;
}

void TrussView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (!hasLongArray()) {
        paintAll(painter);
        return;
    }
    // As dense as the device that the picture ends on: a widget can be rendered into any.
    const QTransform toDevice = painter.deviceTransform();
    const qreal density = std::hypot(toDevice.m11(), toDevice.m12());
    QImage image(size() * density, QImage::Format_RGB32);
    image.setDevicePixelRatio(density);
    QPainter imagePainter(&image);
    paintAll(imagePainter);
    imagePainter.end();
    painter.drawImage(0, 0, image);
}

void TrussView::paintAll(QPainter& painter)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), colours(1.0).background);
    drawScene(painter, width(), height(), 1.0, Order::LoadsFirst);
    drawWarning(painter);
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
