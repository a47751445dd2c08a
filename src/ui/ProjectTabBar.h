#pragma once

#include <QTabBar>

/// Tabs whose titles are shown as they are: an "&" in a project's name is a character of it, not the
/// mark of a keyboard short cut.
class ProjectTabBar : public QTabBar
{
    Q_OBJECT

public: // construction
    using QTabBar::QTabBar;

protected: // overrides
    void initStyleOption(QStyleOptionTab* option, int tabIndex) const override;
    [[nodiscard]] QSize tabSizeHint(int index) const override;
};
