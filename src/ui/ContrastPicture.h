#pragma once

#include "engine/SecondOpinion.h"

#include <QWidget>

#include <optional>

/// What both pictures of the second opinion have in common: a pointer, moved by the mouse or by the
/// arrow keys, at one thing that can be read off, and a text that says all that is drawn.
class ContrastPicture : public QWidget
{
    Q_OBJECT

public: // construction
    /// Called `name` by screen readers.
    explicit ContrastPicture(const QString& name);

public: // queries
    /// What the pointer is at, value and place; empty while it is at nothing.
    [[nodiscard]] QString readout() const;

public: // commands
    /// Shows `opinion`; the pointer stays where it is.
    void setOpinion(const SecondOpinion::Opinion& opinion);
    /// Puts the pointer at what is nearest to `x` [px].
    void pointAt(int x);

protected: // events
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

protected: // what a picture is
    /// How many things can be read off, left to right.
    [[nodiscard]] virtual std::size_t stops() const = 0;
    /// Where the thing at `stop` is drawn [px].
    [[nodiscard]] virtual double xOf(std::size_t stop) const = 0;
    [[nodiscard]] virtual QString textOf(std::size_t stop) const = 0;
    /// The whole picture in words.
    [[nodiscard]] virtual QString description() const = 0;
    virtual void draw(QPainter& painter) const = 0;

protected: // colours and texts
    static const QString NOTHING_TO_DRAW;
    static const QColor INK;
    static const QColor FAINT;
    static const QColor ACCENT;
    static const QColor LESS_SAFE;
    static const QColor OVERLOADED;

protected: // helpers
    /// One without motors before the first `setOpinion`.
    [[nodiscard]] const SecondOpinion::Opinion& opinion() const;
    /// What is left of the widget for truss and curves [px].
    [[nodiscard]] QRectF plot() const;
    /// A position [m] in `plot` [px].
    [[nodiscard]] double toX(double position) const;
    /// The motors' triangles below `y` [px], and the truss as a line there.
    void drawTruss(QPainter& painter, double y) const;

private: // helpers
    void moveTo(std::optional<std::size_t> stop);
    void drawNothing(QPainter& painter) const;
    void drawReadout(QPainter& painter) const;

private: // data
    SecondOpinion::Opinion m_opinion;
    std::optional<std::size_t> m_stop;
};
