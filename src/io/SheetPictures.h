#pragma once

#include "canvas/PaintKit.h"
#include "io/SheetText.h"

#include <QObject>
#include <QTextObjectInterface>

/// Paints a project's pictures where its text has a place for them.
class SheetPictures : public QObject, public QTextObjectInterface
{
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)

public: // construction
    /// For a text of this width [px]; `text` has to outlive it.
    SheetPictures(const SheetText& text, double width);

public: // commands
    /// Puts the pictures in place of their marks in `document`, which keeps this as their painter.
    void insertInto(QTextDocument& document);

public: // overrides
    QSizeF intrinsicSize(QTextDocument* document, int position, const QTextFormat& format) override;
    void drawObject(QPainter* painter, const QRectF& area, QTextDocument* document, int position,
                    const QTextFormat& format) override;

private: // helpers
    void paintDrawing(QPainter& painter, const QRectF& area);

private: // data
    const SheetText& m_text;
    double m_width;
    PaintKit m_kit;
};
