#include "ui/ListDelegate.h"

#include "fields/NumberValidators.h"
#include "ui/ListModel.h"
#include "ui/NumberField.h"

#include <QDoubleValidator>
#include <QKeyEvent>

namespace
{

QLineEdit* createNumberEditor(const ListField& field)
{
    QLineEdit* editor = NumberField::create(QString(), field.name);
    editor->setAlignment(Qt::AlignRight);
    QDoubleValidator* validator = NumberValidators::createReal(field.bottom, field.top, editor);
    validator->setDecimals(field.decimals);
    editor->setValidator(validator);
    editor->setAccessibleDescription(field.rule);
    return editor;
}

QLineEdit* createNameEditor(const ListField& field)
{
    auto* editor = new QLineEdit;
    editor->setAccessibleName(field.name);
    return editor;
}

/// Whether `event` is a key that ends the editing of a cell and keeps what was typed.
bool isEnd(QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Tab || key == Qt::Key_Backtab;
}

} // namespace

QWidget* ListDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& /*option*/,
                                    const QModelIndex& index) const
{
    const ListField field = index.data(ListModel::FieldRole).value<ListField>();
    QLineEdit* editor =
        field.kind == ListField::Kind::Number ? createNumberEditor(field) : createNameEditor(field);
    editor->setParent(parent);
    editor->setFrame(false);
    connect(editor, &QLineEdit::textChanged, this, [this, editor, field](const QString& text) {
        const bool isTaken = ListRows::takes(field, text);
        NumberField::mark(editor, isTaken);
        emit objected(isTaken ? QString() : field.rule);
    });
    return editor;
}

// What is not taken stays as it was typed, to be put right; Qt would write the number anew first.
bool ListDelegate::eventFilter(QObject* editor, QEvent* event)
{
    const auto* field = qobject_cast<const QLineEdit*>(editor);
    if (field != nullptr && isEnd(event) && !field->hasAcceptableInput())
        return true;
    return QStyledItemDelegate::eventFilter(editor, event);
}
