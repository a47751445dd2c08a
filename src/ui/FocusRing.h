#pragma once

#include <QPointer>
#include <QWidget>

/// A bright frame around the field or button of its window that has the keyboard focus: the dark theme
/// alone does not show where the keys go. What scrolls, a page or a table, is framed where the Tab key came
/// to it, and so is the canvas; a press anywhere in it gives it the focus too, and would only flash a frame
/// around everything.
/// Takes no input, and lies over its widget as a sibling.
class FocusRing : public QWidget
{
    Q_OBJECT

public: // construction
    /// Follows the keyboard focus in `window`.
    explicit FocusRing(QWidget* window);

public: // queries
    /// The widget that it frames, or nothing while it is hidden.
    [[nodiscard]] QWidget* framed() const;
    /// Its colour: the accent, white around what is drawn in the accent itself, or a dark blue around what
    /// is white.
    [[nodiscard]] QColor colour() const;

public: // overrides
    bool eventFilter(QObject* watched, QEvent* event) override;

protected: // overrides
    void paintEvent(QPaintEvent* event) override;

private: // helpers
    void follow(QWidget* focused);
    void place();

private: // data
    QPointer<QWidget> m_window;
    QPointer<QWidget> m_framed;
    bool m_byTabKey = false; ///< the last focus was given by the Tab key
};
