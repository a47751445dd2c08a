#pragma once

#include <QList>
#include <QTabBar>

/// Tabs whose titles are shown as they are: an "&" in a project's name is a character of it, not the
/// mark of a keyboard short cut. Projects stand in the order in which their tabs were added.
class ProjectTabBar : public QTabBar
{
    Q_OBJECT

public: // construction
    explicit ProjectTabBar(QWidget* parent = nullptr);

public: // queries
    /// False once tabs were dragged: a title moves, the project at its place does not.
    [[nodiscard]] bool titlesStandByTheirProjects() const;

protected: // overrides
    void initStyleOption(QStyleOptionTab* option, int tabIndex) const override;
    [[nodiscard]] QSize tabSizeHint(int index) const override;
    void tabInserted(int index) override;
    void tabRemoved(int index) override;

private: // data
    /// For each title the place of the project that it was given to, -1 once that is closed.
    QList<int> m_places;
};
