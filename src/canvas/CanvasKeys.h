#pragma once

#include "canvas/CanvasItems.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <optional>
#include <variant>

class QContextMenuEvent;
class QKeyEvent;
class SelectionFrame;
class TrussView;

/// The canvas for who has no mouse: it takes the focus from the Tab key and from a press, and its keys go
/// through motors, arrays and loads, move what is selected, ask for its exact place, delete it and open its
/// menu. A frame shows what is selected and tells it to screen readers; a tip tells what is stacked there,
/// under the pointer as well. While something hangs on the pointer the keys do nothing.
class CanvasKeys : public QObject
{
    Q_OBJECT

public: // what keys mean
    /// Moves the selection.
    struct Select
    {
        CanvasItems::Step step;
    };
    /// Moves what is selected.
    struct Nudge
    {
        float distance; ///< [m]
    };
    struct AskPosition
    {
    };
    struct Remove
    {
    };
    struct OpenMenu
    {
    };
    using Meaning = std::variant<std::monostate, Select, Nudge, AskPosition, Remove, OpenMenu>;

    /// What `key` does on the canvas; nothing for most. Keys of the number pad count as the others.
    [[nodiscard]] static Meaning meaning(int key, Qt::KeyboardModifiers modifiers);

public: // construction
    /// For `canvas`, which has its parent already.
    explicit CanvasKeys(TrussView* canvas);

public: // overrides
    bool eventFilter(QObject* watched, QEvent* event) override;

private: // helpers
    bool press(const QKeyEvent& event);
    void act(const Meaning& meaning);
    bool openMenu(const QContextMenuEvent& event);
    bool tellAt(QPoint point, QPoint global);
    void tellSelected();
    void follow();

private: // data
    QPointer<TrussView> m_canvas;
    SelectionFrame* m_frame; ///< beside the canvas, in its parent
    QTimer m_following;      ///< brings the frame to the selection once the canvas is at rest
};
