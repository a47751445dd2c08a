#include "canvas/TrussView.h"

#include "canvas/CanvasHost.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScopedValueRollback>

#include <cmath>

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

void TrussView::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (LoadLogic::ActiveLoads.isEmpty()) {
        m_backdrop.reset();
        drawBackdrop(painter);
    } else {
        // As dense as the device that the picture ends on: a widget can be rendered into any.
        const QTransform toDevice = painter.deviceTransform();
        refreshBackdrop(std::hypot(toDevice.m11(), toDevice.m12()));
        painter.drawImage(0, 0, m_backdrop->image);
    }
    drawMotors(painter, width(), height(), 1.0);
    drawFlexionLabel(painter, width(), height(), 1.0);
    drawWarning(painter);
}

void TrussView::drawBackdrop(QPainter& painter)
{
    painter.fillRect(rect(), colours(1.0).background);
    m_arrays = summariseArrays(selectedLoadId().value_or(-1));
    drawTruss(painter, width(), height(), 1.0);
    drawLoads(painter, width(), height(), 1.0);
    m_arrays.reset();
}

bool TrussView::isBackdropCurrent(qreal density) const
{
    return m_backdrop && m_backdrop->image.size() == size() * density
           && m_backdrop->loads.isSharedWith(LoadLogic::ActiveLoads)
           && m_backdrop->trussLength == LoadLogic::TrussLength && m_backdrop->chord == chordState()
           && m_backdrop->selectedLoadId == selectedLoadId() && m_backdrop->marginX == marginX
           && m_backdrop->print == printMode;
}

void TrussView::refreshBackdrop(qreal density)
{
    if (isBackdropCurrent(density))
        return;
    if (!m_backdrop)
        m_backdrop = Backdrop{};
    if (m_backdrop->image.size() != size() * density)
        m_backdrop->image = QImage(size() * density, QImage::Format_RGB32);
    m_backdrop->image.setDevicePixelRatio(density);
    m_backdrop->loads = LoadLogic::ActiveLoads;
    m_backdrop->trussLength = LoadLogic::TrussLength;
    m_backdrop->chord = chordState();
    m_backdrop->selectedLoadId = selectedLoadId();
    m_backdrop->marginX = marginX;
    m_backdrop->print = printMode;

    QPainter painter(&m_backdrop->image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawBackdrop(painter);
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
