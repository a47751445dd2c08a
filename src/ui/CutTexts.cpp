#include "ui/CutTexts.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QStyleOptionFrame>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace
{

/// Between the text of a line edit and its frame, on either side [px].
constexpr int FIELD_MARGIN = 2;

bool isWider(const QWidget* widget, const QString& text, int room)
{
    return widget->fontMetrics().horizontalAdvance(text) > room;
}

/// The text of `label` if it is cut, else nothing.
QString cutText(const QLabel& label)
{
    const bool isPlainLine = label.textFormat() == Qt::PlainText && !label.wordWrap();
    return isPlainLine && isWider(&label, label.text(), label.contentsRect().width()) ? label.text()
                                                                                      : QString();
}

QString cutText(const QLineEdit& field)
{
    QStyleOptionFrame option;
    option.initFrom(&field);
    option.lineWidth = field.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, &option, &field);
    const QRect inside = field.style()->subElementRect(QStyle::SE_LineEditContents, &option, &field);
    return isWider(&field, field.text(), inside.width() - 2 * FIELD_MARGIN) ? field.text() : QString();
}

/// The text of the cell at `point` of the view [px]; views elide what is wider than its cell.
QString cutText(const QAbstractItemView& view, const QPoint& point)
{
    const QModelIndex index = view.indexAt(point);
    if (!index.isValid() || view.sizeHintForIndex(index).width() <= view.visualRect(index).width())
        return {};
    return index.data().toString();
}

} // namespace

CutTexts::CutTexts(QObject* parent)
    : QObject(parent)
{
}

void CutTexts::install()
{
    if (qApp->findChild<CutTexts*>(QString(), Qt::FindDirectChildrenOnly) == nullptr)
        qApp->installEventFilter(new CutTexts(qApp));
}

bool CutTexts::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ToolTip || !watched->isWidgetType())
        return false;
    auto* widget = static_cast<QWidget*>(watched);
    const auto& help = *static_cast<QHelpEvent*>(event);
    if (!widget->toolTip().isEmpty())
        return false;
    if (const auto* label = qobject_cast<const QLabel*>(widget))
        return tell(widget, cutText(*label), help);
    if (const auto* field = qobject_cast<const QLineEdit*>(widget))
        return tell(widget, cutText(*field), help);
    const auto* view = qobject_cast<const QAbstractItemView*>(widget->parentWidget());
    if (view != nullptr && view->viewport() == widget)
        return tell(widget, cutText(*view, help.pos()), help);
    return false;
}

bool CutTexts::tell(QWidget* widget, const QString& text, const QHelpEvent& event)
{
    if (text.isEmpty())
        return false;
    QToolTip::showText(event.globalPos(), u"<qt>"_s + text.toHtmlEscaped() + u"</qt>"_s, widget);
    return true;
}
