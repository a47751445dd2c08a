#include "canvas/TextLayouts.h"

#include <QPaintDevice>
#include <QPainter>
#include <QTextLine>
#include <QTextOption>

#include <algorithm>

namespace
{

/// A thousand loads have three texts each. A layout takes about a kilobyte.
constexpr qsizetype MOST_LAYOUTS = 4096;

/// What is one line wherever it stands. Anything else is left to QPainter, which breaks lines and
/// reads control characters in its own way.
bool isPlainLine(const QString& text)
{
    const auto isPlain = [](QChar c) { return c == u' ' || (c.isPrint() && !c.isSpace()); };
    return !text.isEmpty() && std::all_of(text.cbegin(), text.cend(), isPlain);
}

/// The caller owns it.
QTextLayout* layOut(const QPainter& painter, const QString& text)
{
    auto* layout = new QTextLayout(text, painter.font());
    QTextOption option;
    option.setTextDirection(painter.layoutDirection());
    layout->setTextOption(option);
    layout->setCacheEnabled(true);
    layout->beginLayout();
    layout->createLine();
    layout->endLayout();
    return layout;
}

} // namespace

TextLayouts::TextLayouts()
    : m_layouts(MOST_LAYOUTS)
{
}

const QTextLayout& TextLayouts::layoutOf(const QPainter& painter, const QString& text)
{
    const Key key{text, painter.font(), painter.device()->logicalDpiY()};
    if (!m_layouts.contains(key))
        m_layouts.insert(key, layOut(painter, text));
    return *m_layouts.object(key);
}

void TextLayouts::drawCentred(QPainter& painter, const QRect& box, const QString& text)
{
    if (isPlainLine(text)) {
        const QTextLine line = layoutOf(painter, text).lineAt(0);
        const qreal height = line.ascent() + line.descent(); // unlike the line's own, not rounded up
        if (line.naturalTextWidth() <= box.width() && height <= box.height()) {
            const QPointF margin((box.width() - line.horizontalAdvance()) / 2.0,
                                 (box.height() - height) / 2.0);
            line.draw(&painter, box.topLeft() + margin);
            return;
        }
    }
    painter.drawText(box, Qt::AlignCenter, text); // cuts off what is larger than the box
}
