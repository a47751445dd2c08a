#include "canvas/TrussView.h"
#include "io/ReportPage.h"
#include "ui/MainWindow.h"

#include <QAction>
#include <QStackedWidget>
#include <QTabBar>

using namespace Qt::StringLiterals;

void MainWindow::onKey(const QKeySequence& keys, const std::function<void()>& act)
{
    auto* action = new QAction(this);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, [this, act] {
        if (!m_canvas->isDragging())
            act();
    });
    addAction(action);
}

void MainWindow::leaveOrRelease()
{
    if (m_pages->currentWidget() == m_reportPage)
        onBackToDesignClicked();
    else
        releaseLoad();
}

// The keys of buttons and tabs act where those can be pressed: not while the report covers them. Saving and
// the guide change nothing, and act on the report page too.
void MainWindow::startKeys()
{
    const auto anywhere = [this](const QString& keys, const std::function<void()>& act) {
        onKey(QKeySequence(keys, QKeySequence::PortableText), act);
    };
    const auto onDesign = [this, anywhere](const QString& keys, const std::function<void()>& act) {
        anywhere(keys, [this, act] {
            if (m_pages->currentWidget() != m_reportPage)
                act();
        });
    };
    const auto goOn = [this](int step) {
        const int count = m_tabBar->count();
        m_tabBar->setCurrentIndex((m_tabBar->currentIndex() + step + count) % count);
    };
    onKey(Qt::Key_Escape, [this] { leaveOrRelease(); });
    anywhere(u"F1"_s, [this] { onOpenUserGuideClicked(); });
    anywhere(u"Ctrl+S"_s, [this] { onSaveProjectClicked(); });
    onDesign(u"Ctrl+O"_s, [this] { onLoadProjectClicked(); });
    onDesign(u"Ctrl+T"_s, [this] { onAddTab(); });
    onDesign(u"Ctrl+PgUp"_s, [goOn] { goOn(-1); });
    onDesign(u"Ctrl+PgDown"_s, [goOn] { goOn(1); });
    onDesign(u"F2"_s, [this] { onRenameTab(m_tabBar->currentIndex()); });
    onDesign(u"Ctrl+I"_s, [this] { onGenerateReportClicked(); });
    onDesign(u"Ctrl+L"_s, [this] { openList(); });
}
