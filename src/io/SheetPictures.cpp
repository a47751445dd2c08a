#include "io/SheetPictures.h"

#include "canvas/ScenePainter.h"
#include "io/SheetDiagrams.h"
#include "io/SheetHtml.h"
#include "io/SheetPages.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace
{

constexpr int PICTURE = QTextFormat::UserObject + 1;
constexpr int WHICH = QTextFormat::UserProperty + 1;

/// The drawing's size, as the program's own reports have it [px at scale 2].
constexpr int DRAWING_WIDTH = 2000;
constexpr int DRAWING_HEIGHT = 800;

/// More loads than this hide one another, and as lines and texts they would make a large file.
constexpr qsizetype MOST_DRAWN_AS_LINES = 300;

/// Of the width.
constexpr double DIAGRAM_HEIGHT = 0.26;
constexpr double DIAGRAM_POINTS = 8.0;

/// A line that holds a picture alone begins above it, which is on the page before [px].
constexpr double INSET = 8.0;

} // namespace

SheetPictures::SheetPictures(const SheetText& text, double width)
    : m_text(text)
    , m_width(width)
{
}

void SheetPictures::insertInto(QTextDocument& document)
{
    document.documentLayout()->registerHandler(PICTURE, this);
    for (const QChar which : {SheetHtml::DRAWING, SheetHtml::MOMENTS, SheetHtml::SHEAR}) {
        QTextCursor mark = document.find(QString(which));
        if (mark.isNull())
            continue;
        QTextCharFormat format;
        format.setObjectType(PICTURE);
        format.setProperty(WHICH, which);
        mark.insertText(QString(QChar::ObjectReplacementCharacter), format);
    }
}

QSizeF SheetPictures::intrinsicSize(QTextDocument* /*document*/, int /*position*/, const QTextFormat& format)
{
    const bool isDrawing = format.property(WHICH).toChar() == SheetHtml::DRAWING;
    return {m_width, INSET + m_width * (isDrawing ? double(DRAWING_HEIGHT) / DRAWING_WIDTH : DIAGRAM_HEIGHT)};
}

void SheetPictures::drawObject(QPainter* painter, const QRectF& area, QTextDocument* /*document*/,
                               int /*position*/, const QTextFormat& format)
{
    const QChar which = format.property(WHICH).toChar();
    painter->setFont(SheetPages::font(DIAGRAM_POINTS));
    const QRectF inside = area.adjusted(0.0, INSET, 0.0, 0.0);
    if (which == SheetHtml::DRAWING)
        paintDrawing(*painter, inside);
    else if (which == SheetHtml::MOMENTS)
        SheetDiagrams::paintMoments(*painter, inside, m_text.opinion);
    else
        SheetDiagrams::paintShear(*painter, inside, m_text.opinion);
}

void SheetPictures::paintDrawing(QPainter& painter, const QRectF& area)
{
    const Scene scene = Scene::forPrint(m_text.solved);
    if (m_text.solved.loads.size() > MOST_DRAWN_AS_LINES) {
        painter.drawImage(area, ScenePainter::toImage(scene, m_kit, DRAWING_WIDTH, DRAWING_HEIGHT));
        return;
    }
    painter.save();
    painter.translate(area.topLeft());
    painter.scale(area.width() / DRAWING_WIDTH, area.width() / DRAWING_WIDTH);
    ScenePainter::paintInto(painter, QRect(0, 0, DRAWING_WIDTH, DRAWING_HEIGHT), scene, m_kit);
    painter.restore();
}
