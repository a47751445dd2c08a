#pragma once

#include <QCache>
#include <QFont>
#include <QString>
#include <QTextLayout>

class QPainter;
class QRect;

/// Draws short texts, and keeps how each is laid out: finding and placing its glyphs costs more than
/// painting them, and from one picture to the next nearly all texts are the same. A layout is found
/// by its whole text, so that another number is another layout.
class TextLayouts
{
public: // construction
    TextLayouts();

public: // commands
    /// Draws `text` in the middle of `box` [px] with font and pen of `painter`: the pixels that
    /// `QPainter::drawText` makes with Qt::AlignCenter.
    void drawCentred(QPainter& painter, const QRect& box, const QString& text);

private: // types
    struct Key
    {
        QString text;
        QFont font;
        int resolution; ///< of the target [dpi]

        friend bool operator==(const Key& a, const Key& b)
        {
            return a.text == b.text && a.resolution == b.resolution && a.font == b.font;
        }
        friend std::size_t qHash(const Key& key, std::size_t seed)
        {
            return qHashMulti(seed, key.text, key.resolution, key.font);
        }
    };

private: // helpers
    /// The layout of `text` for `painter`, until the next call.
    const QTextLayout& layoutOf(const QPainter& painter, const QString& text);

private: // data
    QCache<Key, QTextLayout> m_layouts;
};
