#include "support/Window.h"
#include "ui/DynamicFactorDialog.h"
#include "ui/InfoWindow.h"

#include <QStackedWidget>
#include <QTableWidget>
#include <QTextBrowser>

#include <optional>

using namespace Qt::StringLiterals;

namespace
{

/// What the Tab key comes to, from the focus on, until it comes to the same widget again or stays where
/// it is. `forwards` or with the Shift key.
QList<QWidget*> stops(bool forwards)
{
    QList<QWidget*> visited;
    QWidget* now = QApplication::focusWidget();
    while (now != nullptr && !visited.contains(now)) {
        visited.append(now);
        QTest::keyClick(now, forwards ? Qt::Key_Tab : Qt::Key_Backtab);
        now = QApplication::focusWidget();
    }
    return visited;
}

bool isActive(QWidget& dialog)
{
    dialog.activateWindow();
    return QTest::qWaitForWindowActive(&dialog);
}

} // namespace

/// The program for who has no mouse.
class TestKeyboard : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_test.emplace();
    }
    void cleanup()
    {
        m_test.reset();
    }

    void tabKey_leavesTheReportTable_data();
    void tabKey_leavesTheReportTable();
    void tabKey_leavesTheFactorTable_data();
    void tabKey_leavesTheFactorTable();
    void tabKey_leavesTheLegalText();
    void escape_leavesTheReportPage();
    void escape_onTheDesignPage_leavesItOpen();

private:
    [[nodiscard]] int page() const
    {
        return qobject_cast<QStackedWidget*>(m_test->window.centralWidget())->currentIndex();
    }

    std::optional<Support::TestWindow> m_test;
};

void TestKeyboard::tabKey_leavesTheReportTable_data()
{
    QTest::addColumn<bool>("forwards");
    QTest::newRow("Tab") << true;
    QTest::newRow("Shift+Tab") << false;
}

void TestKeyboard::tabKey_leavesTheReportTable()
{
    QFETCH(bool, forwards);
    QVERIFY(m_test->activate());
    m_test->window.onGenerateReportClicked();
    auto* table = m_test->window.findChild<QTableWidget*>();
    table->setFocus();
    const QList<QWidget*> reached = stops(forwards);
    QVERIFY(reached.contains(m_test->button(u"← VOLVER AL DISEÑO"_s)));
    QVERIFY(reached.contains(m_test->button(u"🖨️ IMPRIMIR / PDF"_s)));
}

void TestKeyboard::tabKey_leavesTheFactorTable_data()
{
    tabKey_leavesTheReportTable_data();
}

void TestKeyboard::tabKey_leavesTheFactorTable()
{
    QFETCH(bool, forwards);
    DynamicFactorDialog dialog(LoadLogic::MotorList, nullptr);
    dialog.show();
    QVERIFY(isActive(dialog));
    dialog.findChild<QTableWidget*>()->setFocus();
    QVERIFY(stops(forwards).contains(dialog.findChild<QPushButton*>()));
}

void TestKeyboard::tabKey_leavesTheLegalText()
{
    InfoWindow dialog(nullptr);
    dialog.show();
    QVERIFY(isActive(dialog));
    dialog.findChild<QTextBrowser*>()->setFocus();
    QVERIFY(stops(true).contains(dialog.findChild<QPushButton*>()));
}

void TestKeyboard::escape_leavesTheReportPage()
{
    QVERIFY(m_test->activate());
    m_test->window.onGenerateReportClicked();
    QTest::keyClick(&m_test->window, Qt::Key_Escape);
    QCOMPARE(page(), 0);

    m_test->window.onGenerateReportClicked();
    auto* table = m_test->window.findChild<QTableWidget*>();
    table->setFocus();
    QTest::keyClick(table, Qt::Key_Escape);
    QCOMPARE(page(), 0);
}

void TestKeyboard::escape_onTheDesignPage_leavesItOpen()
{
    QVERIFY(m_test->activate());
    QTest::keyClick(&m_test->window, Qt::Key_Escape);
    QCOMPARE(page(), 0);
    QVERIFY(m_test->window.isVisible());
}

QTEST_MAIN(TestKeyboard)
#include "tst_keyboard.moc"
