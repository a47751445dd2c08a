#include "canvas/AccessibleCanvas.h"

#include "canvas/SelectionFrame.h"
#include "canvas/TrussView.h"

#include <QAccessibleWidget>

namespace
{

class Entry : public QAccessibleWidget
{
public: // construction
    explicit Entry(SelectionFrame* frame)
        : QAccessibleWidget(frame, QAccessible::ListItem)
        , m_frame(frame)
    {
    }

public: // overrides
    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state = QAccessibleWidget::state();
        const bool isShown = m_frame->isVisible();
        state.focusable = true;
        state.selectable = true;
        state.selected = isShown;
        state.focused = isShown && m_frame->canvas() != nullptr && m_frame->canvas()->hasFocus();
        return state;
    }

private: // data
    SelectionFrame* m_frame;
};

QAccessibleInterface* createAccessible(const QString& /*className*/, QObject* object)
{
    if (auto* frame = qobject_cast<SelectionFrame*>(object))
        return new Entry(frame);
    if (auto* canvas = qobject_cast<TrussView*>(object))
        return new QAccessibleWidget(canvas, QAccessible::Canvas);
    return nullptr;
}

} // namespace

void AccessibleCanvas::install()
{
    static const bool installed = [] {
        QAccessible::installFactory(createAccessible);
        return true;
    }();
    Q_UNUSED(installed)
}
