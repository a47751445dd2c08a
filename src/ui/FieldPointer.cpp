#include "ui/FieldPointer.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QDragEnterEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QUrl>

#include <algorithm>

namespace
{

bool carriesFiles(const QMimeData* dragged)
{
    const QList<QUrl> urls = dragged->urls();
    return std::any_of(urls.cbegin(), urls.cend(), [](const QUrl& url) { return url.isLocalFile(); });
}

} // namespace

FieldPointer::FieldPointer(QObject* parent)
    : QObject(parent)
{
}

void FieldPointer::install()
{
    if (qApp->findChild<FieldPointer*>(QString(), Qt::FindDirectChildrenOnly) == nullptr)
        qApp->installEventFilter(new FieldPointer(qApp));
}

// What is refused here goes on to the widget around the field.
bool FieldPointer::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Polish) {
        auto* box = qobject_cast<QAbstractSpinBox*>(watched);
        if (box != nullptr && box->focusPolicy() == Qt::WheelFocus)
            box->setFocusPolicy(Qt::StrongFocus);
    } else if (event->type() == QEvent::Wheel) {
        const auto* box = qobject_cast<const QAbstractSpinBox*>(watched);
        if (box != nullptr && !box->hasFocus()) {
            event->ignore();
            return true;
        }
    } else if (event->type() == QEvent::DragEnter) {
        const bool isField = qobject_cast<const QLineEdit*>(watched) != nullptr;
        if (isField && carriesFiles(static_cast<QDragEnterEvent*>(event)->mimeData())) {
            event->ignore();
            return true;
        }
    }
    return false;
}
