#pragma once

#include "ui/Notices.h"

#include <QPointer>
#include <QWidget>

/// Shows one notice over the lower edge of the canvas, and how many others there are. It stands beside
/// the canvas in the same parent, in no layout, as wide as its text and as high as there is room below
/// "Flexión"; it is hidden while it has nothing to say.
///
/// With the focus, the arrow keys go through the notices and Enter or Space does what a click does.
/// Screen readers get an alert whenever another notice becomes the most urgent.
class NoticeLine : public QWidget
{
    Q_OBJECT

public: // construction
    /// Lies over `canvas`, which has its parent already.
    explicit NoticeLine(QWidget* canvas);

public: // queries
    /// All of them, the most urgent first.
    [[nodiscard]] const QList<Notice>& notices() const;
    /// The one that is shown; there must be one.
    [[nodiscard]] const Notice& shown() const;
    /// "2 de 3"; empty for a single notice.
    [[nodiscard]] QString counter() const;
    /// Where a click goes to the notice before or after the shown one [px]; empty for a single notice.
    [[nodiscard]] QRect backArrow() const;
    [[nodiscard]] QRect forwardArrow() const;

public: // commands
    /// Shows the first of `notices`, or goes on showing what it shows if the first one is no other than
    /// before and that is still among them.
    void setNotices(const QList<Notice>& notices);
    /// Shows the notice `step` further on, round the end.
    void go(int step);
    /// As a click on the text.
    void activate();

public: // overrides
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    /// The notice with this id was clicked.
    void activated(const QString& id);

protected: // events
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private: // helpers
    void showNotice(qsizetype index);
    void place();
    [[nodiscard]] QFont textFont() const;
    [[nodiscard]] int counterWidth() const;
    [[nodiscard]] QRect textArea() const;
    void paintCounter(QPainter& painter) const;

private: // data
    QPointer<QWidget> m_canvas;
    QList<Notice> m_notices;
    qsizetype m_index = 0;
};
