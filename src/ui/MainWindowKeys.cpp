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
    connect(action, &QAction::triggered, this, act);
    addAction(action);
}

void MainWindow::leaveOrRelease()
{
    if (m_pages->currentWidget() == m_reportPage)
        onBackToDesignClicked();
    else
        releaseLoad();
}

// The keys of buttons and tabs act where those can be pressed: not while the report covers them, nor while
// something hangs on the pointer, which would find itself in another project. Saving and the guide change
// nothing, and act on the report page too.
void MainWindow::startKeys()
{
    const auto atRest = [this](const QString& keys, const std::function<void()>& act) {
        onKey(QKeySequence(keys, QKeySequence::PortableText), [this, act] {
            if (!m_canvas->isDragging())
                act();
        });
    };
    const auto onDesign = [this, atRest](const QString& keys, const std::function<void()>& act) {
        atRest(keys, [this, act] {
            if (m_pages->currentWidget() != m_reportPage)
                act();
        });
    };
    const auto goOn = [this](int step) {
        const int count = m_tabBar->count();
        m_tabBar->setCurrentIndex((m_tabBar->currentIndex() + step + count) % count);
    };
    onKey(Qt::Key_Escape, [this] { leaveOrRelease(); });
    atRest(u"F1"_s, [this] { onOpenUserGuideClicked(); });
    atRest(u"Ctrl+S"_s, [this] { onSaveProjectClicked(); });
    onDesign(u"Ctrl+O"_s, [this] { onLoadProjectClicked(); });
    onDesign(u"Ctrl+T"_s, [this] { onAddTab(); });
    onDesign(u"Ctrl+PgUp"_s, [goOn] { goOn(-1); });
    onDesign(u"Ctrl+PgDown"_s, [goOn] { goOn(1); });
    onDesign(u"F2"_s, [this] { onRenameTab(m_tabBar->currentIndex()); });
    onDesign(u"Ctrl+I"_s, [this] { onGenerateReportClicked(); });
}
