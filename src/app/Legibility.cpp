#include "app/Legibility.h"

#include "fields/AccentColour.h"

#include <QApplication>
#include <QComboBox>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QMenu>
#include <QStyledItemDelegate>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace
{

const QString MENU_STYLE =
    u"QMenu { background-color: #1E1E1E; color: white; border: 1px solid #888; padding: 3px; "
    "font-weight: normal; }"
    "QMenu::item { background-color: transparent; color: white; padding: 5px 25px; }"
    "QMenu::item:disabled { color: #888; }"
    "QMenu::item:selected { background-color: " ACCENT_COLOUR "; color: black; }"
    "QMenu::item:selected:disabled { background-color: #333; color: #AAA; }"
    "QMenu::separator { background-color: #555; height: 1px; margin: 3px 6px; }"_s;

const QString TIP_STYLE = u"QToolTip { background-color: #2D2D2D; color: white; border: 1px solid #888; "
                          "font-weight: normal; }"_s;

/// A list whose current entry is drawn in the highlight, instead of a menu that shows none.
const QString COMBO_STYLE = u"QComboBox { combobox-popup: 0; }"_s;

/// The column of kinds in the list of a file dialog.
constexpr int KIND_COLUMN = 2;

/// Qt asks the default locale, which is the program's own for numbers, and gets English.
class KindDelegate : public QStyledItemDelegate
{
public: // construction
    using QStyledItemDelegate::QStyledItemDelegate;

protected: // overrides
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        QStyledItemDelegate::initStyleOption(option, index);
        const QModelIndex file = index.siblingAtColumn(0);
        option->text = index.model()->hasChildren(file)
                           ? u"Carpeta"_s
                           : kindOf(file.data(QFileSystemModel::FileNameRole).toString());
    }

private: // helpers
    static QString kindOf(const QString& fileName)
    {
        const QString suffix = QFileInfo(fileName).suffix().toLower();
        if (suffix == "rig"_L1)
            return u"Proyecto de Velmora Master"_s;
        return suffix.isEmpty() ? u"Archivo"_s : u"Archivo "_s + suffix.toUpper();
    }
};

void giveSheet(QWidget* widget, const QString& sheet)
{
    if (widget->styleSheet() != sheet)
        widget->setStyleSheet(sheet);
}

} // namespace

Legibility::Legibility(QObject* parent)
    : QObject(parent)
{
}

void Legibility::install(QApplication& application)
{
    if (application.findChild<Legibility*>(QString(), Qt::FindDirectChildrenOnly) == nullptr)
        application.installEventFilter(new Legibility(&application));
}

// A tool tip is given the sheet of the widget under it again and again, and tells that it has changed.
bool Legibility::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::StyleChange || event->type() == QEvent::Show) {
        if (watched->inherits("QTipLabel"))
            giveSheet(static_cast<QWidget*>(watched), TIP_STYLE);
    } else if (event->type() == QEvent::Polish) {
        if (auto* menu = qobject_cast<QMenu*>(watched))
            giveSheet(menu, MENU_STYLE);
        else if (auto* box = qobject_cast<QComboBox*>(watched))
            giveSheet(box, COMBO_STYLE);
        else if (auto* dialog = qobject_cast<QFileDialog*>(watched))
            nameKinds(dialog);
    }
    return false;
}

void Legibility::nameKinds(QFileDialog* dialog)
{
    auto* list = dialog->findChild<QTreeView*>(u"treeView"_s);
    if (list == nullptr)
        return;
    list->setItemDelegateForColumn(KIND_COLUMN, new KindDelegate(list));
    list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
}
