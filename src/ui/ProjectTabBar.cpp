#include "ui/ProjectTabBar.h"

#include <QStyleOptionTab>

using namespace Qt::StringLiterals;

ProjectTabBar::ProjectTabBar(QWidget* parent)
    : QTabBar(parent)
{
    connect(this, &QTabBar::tabMoved, this, [this](int from, int to) { m_places.move(from, to); });
}

bool ProjectTabBar::titlesStandByTheirProjects() const
{
    for (int i = 0; i < static_cast<int>(m_places.size()); ++i) {
        if (m_places.at(i) != i)
            return false;
    }
    return true;
}

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

void ProjectTabBar::tabInserted(int index)
{
    m_places.insert(index, static_cast<int>(m_places.size()));
    QTabBar::tabInserted(index);
}

// The project at this place goes with the title at this place, whether they belong together or not.
void ProjectTabBar::tabRemoved(int index)
{
    m_places.removeAt(index);
    for (int& place : m_places) {
        if (place == index)
            place = -1;
        else if (place > index)
            --place;
    }
    QTabBar::tabRemoved(index);
}
