#pragma once

#include <QEvent>
#include <QPointer>
#include <QWidget>

/// A bright frame around what is selected on a canvas. It lies over the canvas as a sibling, takes no input
/// and covers nothing but its own line, so that the canvas itself is drawn as ever. Screen readers get what
/// is framed by its accessible name.
class SelectionFrame : public QWidget
{
    Q_OBJECT

public: // construction
    /// Lies over `canvas`, which has its parent already; hidden until it frames something.
    explicit SelectionFrame(QWidget* canvas);

public: // queries
    /// Whether the selection may be another one, or elsewhere, after an event of this type of the canvas.
    [[nodiscard]] static bool mayMoveAt(QEvent::Type type);
    [[nodiscard]] const QWidget* canvas() const;

public: // commands
    /// Frames `area` of the canvas [px], as far as it can be seen, and tells `text`.
    void frame(const QRect& area, const QString& text);
    /// Has screen readers tell what is framed, as when it gets the focus.
    void announce();

signals:
    /// Screen readers, if any listen, were told `text`.
    void announced(const QString& text);

protected: // events
    void paintEvent(QPaintEvent* event) override;

private: // data
    QPointer<QWidget> m_canvas;
};
