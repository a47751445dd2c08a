#include "canvas/TrussView.h"

#include "canvas/AccessibleCanvas.h"
#include "canvas/ArrayPainter.h"
#include "canvas/CanvasHost.h"
#include "canvas/ScenePainter.h"

#include <QContextMenuEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>

#include <cmath>

using namespace Qt::StringLiterals;

TrussView::TrussView(QWidget* parent)
    : QWidget(parent)
{
    AccessibleCanvas::install(); // before anything is told of it: what readers get is made but once
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

Scene TrussView::scene() const
{
    const CanvasHost* window = host();
    const Rating rating{LoadLogic::TrussStress_Percentage, LoadLogic::isUnstable};
    return {LoadLogic::MotorList,
            LoadLogic::ActiveLoads,
            LoadLogic::TrussLength,
            rating,
            window == nullptr ? std::nullopt : std::optional<int>(window->selectedLoad()),
            printMode,
            blinkOn,
            marginX,
            motorBoxSize};
}

TrussGeometry TrussView::geometry() const
{
    return {width(), height(), 1.0, marginX, LoadLogic::TrussLength};
}

void TrussView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    if (!ArrayPainter::hasLongRun(LoadLogic::ActiveLoads)) {
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
    painter.fillRect(rect(), m_kit.palette(printMode, 1.0).background);
    const Scene shown = scene();
    ScenePainter scenePainter(painter, shown, m_kit, size(), 1.0);
    scenePainter.draw(ScenePainter::Order::LoadsFirst);
    scenePainter.drawWarning(rect());
}

QImage TrussView::renderToImage(int width, int height)
{
    Scene printed = scene();
    printed.print = true;
    return ScenePainter::toImage(printed, m_kit, width, height);
}

void TrussView::renderTo(QPainter& painter, const QRect& rect)
{
    ScenePainter::paintInto(painter, rect, scene(), m_kit);
}

void TrussView::drawTruss(QPainter& painter, int W, int H, double s)
{
    const Scene shown = scene();
    ScenePainter(painter, shown, m_kit, {W, H}, s).drawTruss();
}

void TrussView::drawScreen(QPainter& painter, const LoadLogic::ActiveLoad& segment, int W, int H, double s)
{
    const Scene shown = scene();
    ScenePainter(painter, shown, m_kit, {W, H}, s).drawScreen(segment);
}

void TrussView::drawLoad(QPainter& painter, const LoadLogic::ActiveLoad& load, int W, int H, double s)
{
    const Scene shown = scene();
    ScenePainter(painter, shown, m_kit, {W, H}, s).drawLoad(load);
}

void TrussView::drawMotor(QPainter& painter, const LoadLogic::Motor& motor, int W, int H, double s)
{
    const Scene shown = scene();
    ScenePainter(painter, shown, m_kit, {W, H}, s).drawMotor(motor);
}

void TrussView::drawFlexionLabel(QPainter& painter, int W, int H, double s)
{
    const Scene shown = scene();
    ScenePainter(painter, shown, m_kit, {W, H}, s).drawFlexionLabel();
}

void TrussView::mousePressEvent(QMouseEvent* event)
{
    if (printMode)
        return;
    endDrag();
    const QPoint point = event->position().toPoint();
    const TrussGeometry seen = geometry();
    begin(HitTest::targetAt(scene(), seen, point), seen.toMetres(point.x()));
}

void TrussView::mouseMoveEvent(QMouseEvent* event)
{
    if (printMode)
        return;
    const QPoint point = event->position().toPoint();
    const bool snaps = event->modifiers().testFlag(Qt::AltModifier);
    if (isDragging())
        drag(geometry().toMetres(point.x()), snaps ? Grid::Decimetres : Grid::Free);
    else
        setCursor(HitTest::isOverGrip(scene(), geometry(), point) ? Qt::OpenHandCursor : Qt::ArrowCursor);
}

void TrussView::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    finishDrag();
}

void TrussView::contextMenuEvent(QContextMenuEvent* event)
{
    if (printMode)
        return;
    const HitTest::Target target = HitTest::menuTargetAt(scene(), geometry(), event->pos());
    if (const auto* motor = std::get_if<HitTest::MotorBody>(&target))
        runMotorMenu(motor->index, event->globalPos(), OpenedBy::Press);
    else if (const auto* array = std::get_if<HitTest::ArrayBody>(&target))
        runArrayMenu(array->index, event->globalPos(), OpenedBy::Press);
    else if (const auto* load = std::get_if<HitTest::LoadBody>(&target))
        runLoadMenu(load->index, event->globalPos());
}
