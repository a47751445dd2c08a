#include "ui/ProjectTabBar.h"

#include <QStyleOptionTab>

using namespace Qt::StringLiterals;

void ProjectTabBar::initStyleOption(QStyleOptionTab* option, int tabIndex) const
{
    QTabBar::initStyleOption(option, tabIndex);
    option->text.replace(u'&', u"&&"_s);
}

// The usual size leaves out the marks that it takes them for.
QSize ProjectTabBar::tabSizeHint(int index) const
{
    const QSize usual = QTabBar::tabSizeHint(index);
    const int marks = static_cast<int>(tabText(index).count(u'&'));
    return {usual.width() + marks * fontMetrics().horizontalAdvance(u'&'), usual.height()};
}
