#include "io/SheetPages.h"

#include <QAbstractTextDocumentLayout>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextLayout>
#include <QTextTable>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

/// Points, and pixels of the page.
const QString STYLE = uR"(
h1 { font-size: 15pt; margin-top: 0px; margin-bottom: 8px; }
h2 { font-size: 11.5pt; margin-top: 16px; margin-bottom: 6px; }
h3 { font-size: 9pt; margin-top: 12px; margin-bottom: 4px; }
p { margin-top: 4px; margin-bottom: 4px; }
p.note { font-size: 7.5pt; }
p.picture { margin-top: 6px; margin-bottom: 6px; }
table { border-collapse: collapse; border-color: #999999; margin-top: 4px; margin-bottom: 6px; }
th { background-color: #eeeeee; font-size: 7.5pt; }
td { font-size: 8pt; }
)"_s;

constexpr double TEXT_POINTS = 8.5;

/// Letters with any room between them are not joined; the least there is [px].
constexpr double SEPARATE = 1.0 / 64.0;

/// A table of so many rows is not divided.
constexpr int SHORT_TABLE = 14;

/// Room below a heading in which what follows has to begin [px].
constexpr int LINES_KEPT = 2;

bool isHeading(const QTextBlock& block)
{
    return block.blockFormat().headingLevel() > 0;
}

/// The table that `block` is in, none otherwise.
QTextTable* tableOf(const QTextBlock& block)
{
    return QTextCursor(block).currentTable();
}

/// How far down what begins with `block` has to stay together: a short table to its end, a longer one to its
/// first row, a text to its second line, a heading to what follows it.
double keptBottom(const QTextBlock& block, const QAbstractTextDocumentLayout& layout)
{
    if (isHeading(block) && block.next().isValid())
        return keptBottom(block.next(), layout);
    if (const QTextTable* table = tableOf(block); table != nullptr && table->rows() > 1) {
        const int row = table->rows() <= SHORT_TABLE ? table->rows() - 1 : 1;
        double bottom = 0.0;
        for (int column = 0; column < table->columns(); ++column) {
            const QTextBlock cell = table->cellAt(row, column).lastCursorPosition().block();
            bottom = std::max(bottom, layout.blockBoundingRect(cell).bottom());
        }
        return bottom;
    }
    const QRectF box = layout.blockBoundingRect(block);
    const QTextLayout* lines = block.layout();
    if (lines->lineCount() <= LINES_KEPT)
        return box.bottom();
    const QTextLine last = lines->lineAt(LINES_KEPT - 1);
    return box.top() + last.y() + last.height();
}

void breakBefore(const QTextBlock& block)
{
    if (QTextTable* table = tableOf(block)) {
        QTextTableFormat format = table->format();
        format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        table->setFormat(format);
        return;
    }
    QTextBlockFormat format = block.blockFormat();
    format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
    QTextCursor(block).setBlockFormat(format);
}

} // namespace

SheetPages::SheetPages(const SheetText& text, QSizeF size, QPagedPaintDevice& device)
    : m_size(size)
    , m_pictures(text, size.width())
{
    // A break moves everything below it. The layout goes wrong where it goes on from a block that has
    // changed, so that each break takes a document of its own; there is no more than one for each page.
    std::vector<int> breaks;
    layOut(text, device, breaks);
    while (const std::optional<int> next = nextBreak(breaks)) {
        breaks.push_back(*next);
        layOut(text, device, breaks);
    }
}

void SheetPages::layOut(const SheetText& text, QPagedPaintDevice& device, const std::vector<int>& breaks)
{
    m_document = std::make_unique<QTextDocument>();
    m_document->setDocumentMargin(0.0);
    m_document->setUndoRedoEnabled(false);
    m_document->setDefaultFont(font(TEXT_POINTS));
    m_document->setDefaultStyleSheet(STYLE);
    m_document->setHtml(text.html);
    m_pictures.insertInto(*m_document);
    for (const int block : breaks)
        breakBefore(m_document->findBlockByNumber(block));
    m_document->documentLayout()->setPaintDevice(&device);
    m_document->setPageSize(m_size);
}

QFont SheetPages::font(double points)
{
    QFont font(QStringList{u"DejaVu Sans"_s, u"Liberation Sans"_s, u"Arial"_s, u"sans-serif"_s});
    font.setPointSizeF(points);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setLetterSpacing(QFont::AbsoluteSpacing, SEPARATE);
    return font;
}

int SheetPages::count() const
{
    return m_document->pageCount();
}

int SheetPages::pageOf(double y) const
{
    return static_cast<int>(std::floor((y - 0.5) / m_size.height()));
}

std::optional<int> SheetPages::nextBreak(const std::vector<int>& breaks) const
{
    const QAbstractTextDocumentLayout& layout = *m_document->documentLayout();
    for (QTextBlock block = m_document->begin(); block.isValid(); block = block.next()) {
        const QTextTable* table = tableOf(block);
        const bool isTableStart = table != nullptr && table->firstCursorPosition().block() == block;
        if (!isHeading(block) && !isTableStart)
            continue;
        const double top = layout.blockBoundingRect(block).top() + 1.0;
        const bool isBroken = std::find(breaks.begin(), breaks.end(), block.blockNumber()) != breaks.end();
        if (!isBroken && pageOf(top) != pageOf(keptBottom(block, layout)))
            return block.blockNumber();
    }
    return std::nullopt;
}

void SheetPages::paint(QPainter& painter, int index, QPointF corner)
{
    const QRectF shown(0.0, index * m_size.height(), m_size.width(), m_size.height());
    painter.save();
    painter.translate(corner.x(), corner.y() - shown.top());
    QAbstractTextDocumentLayout::PaintContext context;
    context.clip = shown;
    context.palette.setColor(QPalette::Text, Qt::black);
    painter.setClipRect(shown);
    m_document->documentLayout()->draw(&painter, context);
    painter.restore();
}
