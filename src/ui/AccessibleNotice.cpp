#include "ui/AccessibleNotice.h"

#include "ui/NoticeLine.h"

#include <QAccessibleWidget>

namespace
{

class Alert : public QAccessibleWidget
{
public: // construction
    explicit Alert(NoticeLine* line)
        : QAccessibleWidget(line, QAccessible::AlertMessage)
        , m_line(line)
    {
    }

public: // overrides
    QStringList actionNames() const override
    {
        QStringList names{pressAction()};
        if (m_line->notices().size() > 1)
            names += {nextPageAction(), previousPageAction()};
        return names + QAccessibleWidget::actionNames();
    }

    void doAction(const QString& name) override
    {
        if (name == pressAction())
            m_line->activate();
        else if (name == nextPageAction())
            m_line->go(1);
        else if (name == previousPageAction())
            m_line->go(-1);
        else
            QAccessibleWidget::doAction(name);
    }

private: // data
    NoticeLine* m_line;
};

QAccessibleInterface* createAccessible(const QString& /*className*/, QObject* object)
{
    auto* line = qobject_cast<NoticeLine*>(object);
    return line == nullptr ? nullptr : new Alert(line);
}

} // namespace

void AccessibleNotice::install()
{
    static const bool installed = [] {
        QAccessible::installFactory(createAccessible);
        return true;
    }();
    Q_UNUSED(installed)
}
