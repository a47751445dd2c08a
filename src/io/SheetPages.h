#pragma once

#include "io/SheetPictures.h"
#include "io/SheetText.h"

#include <QFont>
#include <QSizeF>
#include <QTextDocument>

#include <memory>
#include <optional>
#include <vector>

class QPagedPaintDevice;
class QPainter;

/// The text of one project, laid out in pages: no heading stands at a page's end without what it is about,
/// and no table's head without a row.
class SheetPages
{
public: // construction
    /// `text` has to outlive it. Each page has `size` [px of `device`].
    SheetPages(const SheetText& text, QSizeF size, QPagedPaintDevice& device);

public: // queries
    /// The sheet's font; its letters are not joined, so that words are found in the PDF.
    static QFont font(double points);
    [[nodiscard]] int count() const;

public: // commands
    /// Paints the page at `index` with its upper left corner at `corner`.
    void paint(QPainter& painter, int index, QPointF corner);

private: // helpers
    void layOut(const SheetText& text, QPagedPaintDevice& device, const std::vector<int>& breaks);
    /// The first block that has to go to the next page, so that what belongs together stays so; `breaks` do
    /// already.
    [[nodiscard]] std::optional<int> nextBreak(const std::vector<int>& breaks) const;
    [[nodiscard]] int pageOf(double y) const;

private: // data
    QSizeF m_size;
    SheetPictures m_pictures;
    std::unique_ptr<QTextDocument> m_document;
};
