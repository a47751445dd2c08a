#include "canvas/CanvasMenu.h"

#include <QEvent>
#include <QMenu>
#include <QPoint>
#include <QPointer>

#include <utility>

namespace
{

/// Calls `released` whenever a mouse button is released over what it watches.
class ReleaseWatcher : public QObject
{
public: // construction
    ReleaseWatcher(std::function<void()> released, QObject* parent)
        : QObject(parent)
        , m_released(std::move(released))
    {
    }

public: // overrides
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::MouseButtonRelease)
            m_released();
        return QObject::eventFilter(watched, event);
    }

private: // data
    std::function<void()> m_released;
};

} // namespace

int CanvasMenu::choose(QWidget* canvas, const QStringList& entries, const QPoint& position,
                       const std::function<void()>& released, const QList<QKeySequence>& keys)
{
    const QPointer<QMenu> menu = new QMenu(canvas);
    for (qsizetype i = 0; i < entries.size(); ++i) {
        QAction* action = menu->addAction(entries.at(i));
        action->setShortcut(keys.value(i));
        action->setShortcutVisibleInContextMenu(true);
    }
    menu->installEventFilter(new ReleaseWatcher(released, menu));
    QAction* chosen = menu->exec(position);
    const int index =
        menu.isNull() || chosen == nullptr ? -1 : static_cast<int>(menu->actions().indexOf(chosen));
    delete menu;
    return index;
}
