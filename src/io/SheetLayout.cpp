#include "io/SheetLayout.h"

#include "io/SheetPages.h"

#include <QBuffer>
#include <QPainter>
#include <QPdfWriter>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{

/// The dots of a screen: in them the drawing's fonts have their sizes. Positions are finer than dots.
constexpr int RESOLUTION = 96;
constexpr double MARGIN = 15.0; // [mm]
constexpr double HEAD = 44.0;   // [px]
constexpr double FOOT = 26.0;   // [px]

struct Strip
{
    QString left;
    QString right;
    QString below;
};

void paintLine(QPainter& painter, const QRectF& line, const QString& left, const QString& right)
{
    const double rightWidth = painter.fontMetrics().horizontalAdvance(right) + 12.0;
    const QString shown =
        painter.fontMetrics().elidedText(left, Qt::ElideRight, static_cast<int>(line.width() - rightWidth));
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
    painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, right);
}

void paintFrame(QPainter& painter, const QRectF& page, const Strip& head, const Strip& foot)
{
    painter.save();
    painter.setFont(SheetPages::font(7.5));
    painter.setPen(Qt::black);
    QRectF line(page.left(), page.top(), page.width(), 16.0);
    paintLine(painter, line, head.left, head.right);
    line.translate(0.0, 16.0);
    paintLine(painter, line, head.below, {});
    painter.drawLine(line.bottomLeft(), line.bottomRight());
    line.moveBottom(page.bottom());
    painter.drawLine(line.topLeft(), line.topRight());
    paintLine(painter, line, foot.left, foot.right);
    painter.restore();
}

void setUp(QPdfWriter& writer, const QList<SheetLayout::Part>& parts, const QString& version)
{
    writer.setResolution(RESOLUTION);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(MARGIN, MARGIN, MARGIN, MARGIN), QPageLayout::Millimeter);
    const SheetText& first = parts.constFirst().text;
    writer.setTitle(first.kind + u": "_s + first.title);
    writer.setCreator(u"Velmora Master "_s + version);
}

} // namespace

QByteArray SheetLayout::pdf(const QList<Part>& parts, const QString& version, const QDateTime& date)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    setUp(writer, parts, version);
    const QRectF page(0.0, 0.0, writer.width(), writer.height());
    const QRectF body = page.adjusted(0.0, HEAD, 0.0, -FOOT);

    std::vector<std::unique_ptr<SheetPages>> all;
    int count = 0;
    for (const Part& part : parts) {
        all.push_back(std::make_unique<SheetPages>(part.text, body.size(), writer));
        count += all.back()->count();
    }
    QPainter painter(&writer);
    int number = 0;
    for (std::size_t i = 0; i < all.size(); ++i) {
        const Part& part = parts.at(static_cast<qsizetype>(i));
        for (int k = 0; k < all[i]->count(); ++k) {
            if (number > 0)
                writer.newPage();
            ++number;
            paintFrame(painter, page,
                       {part.text.kind + u" · "_s + part.text.title, date.toString(u"dd/MM/yyyy HH:mm"_s),
                        u"SHA-256 del proyecto: "_s + part.digest},
                       {u"Velmora Master "_s + version,
                        u"Página %1 de %2"_s.arg(QString::number(number), QString::number(count)),
                        {}});
            all[i]->paint(painter, k, body.topLeft());
        }
    }
    return painter.end() ? bytes : QByteArray();
}
