#pragma once

#include <QStyledItemDelegate>

/// The editors of "Lista": each takes what the field of its cell takes, and says so while it does not.
class ListDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public: // construction
    using QStyledItemDelegate::QStyledItemDelegate;

public: // overrides
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    bool eventFilter(QObject* editor, QEvent* event) override;

signals:
    /// What stands in the editor changed: `objection` says why it is not taken, nothing where it is.
    /// Const, as is the function in which editors are made.
    void objected(const QString& objection) const; // clazy:exclude=const-signal-or-slot
};
