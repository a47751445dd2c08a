#include "PaintRecorder.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

class PaintRecorder::Engine : public QPaintEngine
{
public: // construction
    explicit Engine(std::vector<Call>& calls)
        : QPaintEngine(AllFeatures)
        , m_calls(calls)
    {
    }

public: // overrides
    bool begin(QPaintDevice* /*device*/) override
    {
        return true;
    }
    bool end() override
    {
        return true;
    }
    [[nodiscard]] Type type() const override
    {
        return User;
    }

    void updateState(const QPaintEngineState& painterState) override
    {
        const DirtyFlags dirty = painterState.state();
        if (dirty.testFlag(DirtyPen) && painterState.pen() != m_pen)
            add([pen = m_pen = painterState.pen()](QPainter& painter) { painter.setPen(pen); });
        if (dirty.testFlag(DirtyBrush) && painterState.brush() != m_brush)
            add([brush = m_brush = painterState.brush()](QPainter& painter) { painter.setBrush(brush); });
        if (dirty.testFlag(DirtyFont) && painterState.font() != m_font)
            add([font = m_font = painterState.font()](QPainter& painter) { painter.setFont(font); });
        if (dirty.testFlag(DirtyHints) && painterState.renderHints() != m_hints)
            add([hints = m_hints = painterState.renderHints()](QPainter& painter) {
                painter.setRenderHint(QPainter::Antialiasing, hints.testFlag(QPainter::Antialiasing));
            });
    }

    void drawLines(const QLineF* lines, int count) override
    {
        add([lines = QList<QLineF>(lines, lines + count)](QPainter& painter) { painter.drawLines(lines); });
    }

    void drawLines(const QLine* lines, int count) override
    {
        add([lines = QList<QLine>(lines, lines + count)](QPainter& painter) { painter.drawLines(lines); });
    }

    void drawRects(const QRectF* rects, int count) override
    {
        add([rects = QList<QRectF>(rects, rects + count)](QPainter& painter) { painter.drawRects(rects); });
    }

    void drawRects(const QRect* rects, int count) override
    {
        add([rects = QList<QRect>(rects, rects + count)](QPainter& painter) { painter.drawRects(rects); });
    }

    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override
    {
        addPolygon(QPolygonF(QList<QPointF>(points, points + count)), mode);
    }

    void drawPolygon(const QPoint* points, int count, PolygonDrawMode mode) override
    {
        addPolygon(QPolygon(QList<QPoint>(points, points + count)), mode);
    }

    void drawPath(const QPainterPath& path) override
    {
        add([path](QPainter& painter) { painter.drawPath(path); });
    }

    void drawTextItem(const QPointF& point, const QTextItem& item) override
    {
        add([point, text = item.text()](QPainter& painter) { painter.drawText(point, text); });
    }

    void drawPixmap(const QRectF& target, const QPixmap& pixmap, const QRectF& source) override
    {
        add([target, pixmap, source](QPainter& painter) { painter.drawPixmap(target, pixmap, source); });
    }

private: // helpers
    void add(Call call)
    {
        m_calls.push_back(std::move(call));
    }

    template <typename Polygon>
    void addPolygon(const Polygon& points, PolygonDrawMode mode)
    {
        if (mode == PolylineMode)
            add([points](QPainter& painter) { painter.drawPolyline(points); });
        else
            add([points, rule = mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill](QPainter& painter) {
                painter.drawPolygon(points, rule);
            });
    }

private: // data
    std::vector<Call>& m_calls;
    QPen m_pen = QPen(Qt::black);
    QBrush m_brush;
    QFont m_font;
    QPainter::RenderHints m_hints;
};

PaintRecorder::PaintRecorder(const QSize& size)
    : m_size(size)
    , m_engine(std::make_unique<Engine>(m_calls))
{
}

PaintRecorder::~PaintRecorder() = default;

void PaintRecorder::replay(QPainter& painter) const
{
    for (const Call& call : m_calls)
        call(painter);
}

QPaintEngine* PaintRecorder::paintEngine() const
{
    return m_engine.get();
}

// Resolution and depth are those of an image, so that texts come out at the same size.
int PaintRecorder::metric(PaintDeviceMetric metric) const
{
    const QImage image(1, 1, QImage::Format_RGB32);
    switch (metric) {
    case PdmWidth:
        return m_size.width();
    case PdmHeight:
        return m_size.height();
    case PdmDpiX:
    case PdmPhysicalDpiX:
        return image.logicalDpiX();
    case PdmDpiY:
    case PdmPhysicalDpiY:
        return image.logicalDpiY();
    case PdmDepth:
        return image.depth();
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return static_cast<int>(devicePixelRatioFScale());
    default: // millimetres and colours, which no drawing asks for
        return 0;
    }
}
