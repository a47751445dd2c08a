#include "ui/FieldPaste.h"

#include "ui/NumberField.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>

namespace
{

/// The line edit that numbers are typed into when `object` has the keys: the field itself or that of a
/// spin box; nothing for any other object.
QLineEdit* numberFieldOf(QObject* object)
{
    if (!NumberField::takesNumbers(object))
        return nullptr;
    auto* field = qobject_cast<QLineEdit*>(object);
    return field != nullptr ? field : object->findChild<QLineEdit*>();
}

bool isEditable(const QLineEdit* field)
{
    return field != nullptr && field->isEnabled() && !field->isReadOnly();
}

/// Qt's own entry "Paste" of a field's menu; it carries its key behind a tab.
QAction* pasteEntry(const QMenu* menu)
{
    const QString title = QLineEdit::tr("&Paste");
    const QList<QAction*> actions = menu->actions();
    for (QAction* action : actions) {
        if (action->text().section(u'\t', 0, 0) == title)
            return action;
    }
    return nullptr;
}

} // namespace

FieldPaste::FieldPaste(QObject* parent)
    : QObject(parent)
{
}

void FieldPaste::install()
{
    if (qApp->findChild<FieldPaste*>(QString(), Qt::FindDirectChildrenOnly) == nullptr)
        qApp->installEventFilter(new FieldPaste(qApp));
}

QString FieldPaste::asTyped(const QString& text)
{
    return text.trimmed().replace(u',', u'.');
}

bool FieldPaste::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Polish) {
        if (auto* menu = qobject_cast<QMenu*>(watched))
            redirect(menu, numberFieldOf(menu->parentWidget()));
        return false;
    }
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::MouseButtonRelease)
        return false;
    QLineEdit* field = numberFieldOf(watched);
    if (!isEditable(field))
        return false;
    if (event->type() == QEvent::MouseButtonRelease)
        return pasteSelection(field, *static_cast<QMouseEvent*>(event));
    if (!static_cast<QKeyEvent*>(event)->matches(QKeySequence::Paste))
        return false;
    paste(field);
    return true;
}

void FieldPaste::paste(QLineEdit* field)
{
    field->insert(asTyped(QApplication::clipboard()->text()));
}

bool FieldPaste::pasteSelection(QLineEdit* field, const QMouseEvent& release)
{
    const QClipboard* clipboard = QApplication::clipboard();
    if (release.button() != Qt::MiddleButton || !clipboard->supportsSelection())
        return false;
    field->deselect();
    field->insert(asTyped(clipboard->text(QClipboard::Selection)));
    return true;
}

// Qt's entry is tied to a slot of the field that cannot be reached; one that looks the same stands in.
void FieldPaste::redirect(QMenu* menu, QLineEdit* field)
{
    QAction* usual = field == nullptr ? nullptr : pasteEntry(menu);
    if (usual == nullptr)
        return;
    auto* replacement = new QAction(usual->icon(), usual->text(), menu);
    replacement->setEnabled(usual->isEnabled());
    connect(replacement, &QAction::triggered, field, [field] { paste(field); });
    menu->insertAction(usual, replacement);
    menu->removeAction(usual);
}
