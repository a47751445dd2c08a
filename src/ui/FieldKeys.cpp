#include "ui/FieldKeys.h"

#include "canvas/CanvasHost.h"
#include "ui/NumberField.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace
{

/// Whether `object` is a field that stands in the window itself, not in a dialog over it.
bool standsInWindow(const QObject* object)
{
    const auto* widget = qobject_cast<const QWidget*>(object);
    return widget != nullptr && qobject_cast<CanvasHost*>(widget->window()) != nullptr;
}

} // namespace

FieldKeys::FieldKeys(QObject* parent)
    : QObject(parent)
{
}

void FieldKeys::install()
{
    if (qApp->findChild<FieldKeys*>(QString(), Qt::FindDirectChildrenOnly) == nullptr)
        qApp->installEventFilter(new FieldKeys(qApp));
}

bool FieldKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Undo) && standsInWindow(watched)) {
            key->ignore();
            return true;
        }
        return false;
    }
    if (event->type() == QEvent::KeyPress && NumberField::takesNumbers(watched))
        return typePoint(watched, *static_cast<QKeyEvent*>(event));
    if (event->type() == QEvent::InputMethod && NumberField::takesNumbers(watched))
        return commitPoint(watched, *static_cast<QInputMethodEvent*>(event));
    return false;
}

bool FieldKeys::typePoint(QObject* field, const QKeyEvent& comma)
{
    if (comma.text() != ","_L1)
        return false;
    QKeyEvent point(QEvent::KeyPress, Qt::Key_Period, comma.modifiers(), u"."_s, comma.isAutoRepeat());
    QCoreApplication::sendEvent(field, &point);
    return true;
}

bool FieldKeys::commitPoint(QObject* field, const QInputMethodEvent& comma)
{
    if (comma.commitString() != ","_L1)
        return false;
    QInputMethodEvent point(comma.preeditString(), comma.attributes());
    point.setCommitString(u"."_s, comma.replacementStart(), comma.replacementLength());
    QCoreApplication::sendEvent(field, &point);
    return true;
}
