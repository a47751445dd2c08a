#include "support/Dialogs.h"
#include "support/Window.h"

#include <QInputDialog>

#include <optional>

using namespace Qt::StringLiterals;

namespace
{

/// Answers the rename dialog with `text`, or cancels it; keeps what it said.
class RenameAnswer
{
public: // construction
    explicit RenameAnswer(std::optional<QString> text)
        : m_answer([this, text = std::move(text)](QInputDialog& dialog) {
            title = dialog.windowTitle();
            label = dialog.labelText();
            prefilled = dialog.textValue();
            mode = dialog.textEchoMode();
            if (text)
                dialog.setTextValue(*text);
            if (text)
                dialog.accept();
            else
                dialog.reject();
        })
    {
    }

public: // queries
    [[nodiscard]] bool given() const
    {
        return m_answer.given();
    }

public: // what the dialog said
    QString title;
    QString label;
    QString prefilled;
    QLineEdit::EchoMode mode = QLineEdit::Password;

private: // data
    Support::Answer<QInputDialog> m_answer;
};

} // namespace

/// Projects side by side. Each tab is told apart by the length of its truss: 21 m in the first, 22 m
/// in the second …
class TestTabs : public QObject
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

    void add_makesAProjectOfItsOwn();
    void add_namesByTheNumberOfProjects();
    void add_storesTheCurrentProject();
    void add_plusButton();
    void switch_bringsEverythingBack();
    void switch_toTheSameOrNoTab_doesNothing();
    void switch_whileRestoring_doesNothing();
    void switch_calculates();
    void close_theLastTab_doesNothing();
    void close_outOfRange_doesNothing();
    void close_leftOfTheCurrent();
    void close_leftOfTheCurrent_withOneToFollow();
    void close_theCurrentFirst();
    void close_theCurrentInTheMiddle();
    void close_theCurrentLast();
    void close_rightOfTheCurrent();
    void close_byItsButton();
    void moved_tabsDoNotReorderTheProjects();
    void rename_dialogAsksForTheName();
    void rename_takesTheTextAsTyped_data();
    void rename_takesTheTextAsTyped();
    void rename_emptyOrCancelled_changesNothing();
    void rename_anotherTab();
    void rename_byDoubleClick();
    void doubleClick_onTheEmptyPart_changesNothing();
    void menu_besideTheTabs_doesNotCome();
    void menu_offersTwoActions();
    void menu_renames();
    void menu_closes();
    void menu_doesNotCloseTheLastTab();
    void nextTabKeepsWorkingAfterClosing();

private:
    /// Opens tabs until there are `count`; tab i gets a truss of 21 + i m. The last one is current.
    void openTabs(int count)
    {
        m_test->setText("trussLength", u"21"_s);
        for (int i = 1; i < count; ++i) {
            m_test->window.onAddTab();
            m_test->setText("trussLength", QString::number(21 + i));
        }
    }

    void goTo(int index)
    {
        m_test->tabBar()->setCurrentIndex(index);
    }

    [[nodiscard]] QList<float> storedLengths() const
    {
        QList<float> lengths;
        for (const LoadLogic::ProjectState& project : std::as_const(m_test->window.projects))
            lengths.append(project.trussLength);
        return lengths;
    }

    [[nodiscard]] QStringList titles() const
    {
        QStringList result;
        for (int i = 0; i < m_test->tabBar()->count(); ++i)
            result.append(m_test->tabBar()->tabText(i));
        return result;
    }

    void requestMenu(const QPoint& point)
    {
        emit m_test->tabBar()->customContextMenuRequested(point);
    }

    std::optional<Support::TestWindow> m_test;
};

void TestTabs::add_makesAProjectOfItsOwn()
{
    m_test->setText("trussLength", u"20"_s);
    m_test->addScreen();
    m_test->window.onAddTab();
    QCOMPARE(m_test->window.currentProjectIndex, 1);
    QCOMPARE(m_test->tabBar()->currentIndex(), 1);
    QCOMPARE(LoadLogic::TrussLength, 12.0F);
    QVERIFY(LoadLogic::ActiveLoads.isEmpty());
    QCOMPARE(LoadLogic::MotorList.size(), 2);
    for (int i = 0; i < 2; ++i) {
        const LoadLogic::Motor& motor = LoadLogic::MotorList.at(i);
        QCOMPARE(motor.id, i + 1);
        QCOMPARE(motor.modelName, u"Motor"_s);
        QCOMPARE(motor.positionX, 12.0F * static_cast<float>(i));
        QCOMPARE(motor.capacity, 1000.0F);
        QCOMPARE(motor.selfWeight, 25.0F); // lighter than those of the first project
    }
    QCOMPARE(m_test->window.selectedLoadId, -1);
    QCOMPARE(m_test->window.projectCounter, 100);
    QCOMPARE(m_test->text("trussLength"), u"12.0"_s);
    QCOMPARE(m_test->text("screenWidth"), u"4.00"_s);
}

void TestTabs::add_namesByTheNumberOfProjects()
{
    openTabs(3);
    QCOMPARE(titles(), QStringList({u"Proyecto 1"_s, u"Proyecto 2"_s, u"Proyecto 3"_s}));
    m_test->window.onCloseTab(0);
    m_test->window.onAddTab();
    QCOMPARE(titles(), QStringList({u"Proyecto 2"_s, u"Proyecto 3"_s, u"Proyecto 3"_s}));
    m_test->window.onAddTab();
    QCOMPARE(m_test->tabBar()->tabText(3), u"Proyecto 4"_s);
    QCOMPARE(m_test->window.projects.at(3).tabName, u"Proyecto 4"_s);
}

void TestTabs::add_storesTheCurrentProject()
{
    m_test->setText("trussLength", u"21"_s);
    m_test->hangLoad(123.0F, 4.0F);
    m_test->window.onAddTab();
    const LoadLogic::ProjectState& first = m_test->window.projects.constFirst();
    QCOMPARE(first.tabName, u"Proyecto 1"_s);
    QCOMPARE(first.trussLength, 21.0F);
    QCOMPARE(first.loads.size(), 1);
}

void TestTabs::add_plusButton()
{
    m_test->button(u"+"_s)->click();
    QCOMPARE(m_test->tabBar()->count(), 2);
}

void TestTabs::switch_bringsEverythingBack()
{
    m_test->setText("trussLength", u"14.5"_s);
    m_test->setText("trussWeight", u"9.5"_s);
    m_test->setText("limitCPL", u"1800"_s);
    m_test->setText("screenWidth", u"6"_s);
    m_test->setText("screenHeight", u"2.5"_s);
    m_test->setText("screenWeightM2", u"33"_s);
    m_test->setText("bumperWeight", u"11"_s);
    m_test->setText("cablePercent", u"9"_s);
    const int segment = m_test->addScreen();
    m_test->hangLoad(321.0F, 1.0F);
    const LoadLogic::ProjectState before = m_test->window.captureCurrentState();

    m_test->window.onAddTab();
    m_test->window.onAddLoadClicked();
    goTo(0);
    const LoadLogic::ProjectState after = m_test->window.captureCurrentState();
    QCOMPARE(after.tabName, u"Proyecto 1"_s);
    QCOMPARE(after.trussLength, before.trussLength);
    QCOMPARE(after.trussSelfWeight, before.trussSelfWeight);
    QCOMPARE(after.limitCPL, before.limitCPL);
    QCOMPARE(after.screenWidth, before.screenWidth);
    QCOMPARE(after.screenHeight, before.screenHeight);
    QCOMPARE(after.screenWeightM2, before.screenWeightM2);
    QCOMPARE(after.bumperWeightPerMeter, before.bumperWeightPerMeter);
    QCOMPARE(after.cableWeightPercent, before.cableWeightPercent);
    QCOMPARE(after.ledTotalWeight, before.ledTotalWeight);
    QCOMPARE(after.trussStressPercentage, before.trussStressPercentage);
    QCOMPARE(after.loads.size(), before.loads.size());
    for (qsizetype i = 0; i < after.loads.size(); ++i) {
        QCOMPARE(after.loads.at(i).mass, before.loads.at(i).mass);
        QCOMPARE(after.loads.at(i).positionX, before.loads.at(i).positionX);
        QCOMPARE(after.loads.at(i).name, before.loads.at(i).name);
    }
    QCOMPARE(after.motors.size(), before.motors.size());
    QCOMPARE(m_test->window.selectedLoadId, segment);
}

void TestTabs::switch_toTheSameOrNoTab_doesNothing()
{
    openTabs(2);
    const Support::CalculationWatch watch;
    m_test->window.onTabChanged(1);
    m_test->window.onTabChanged(-1);
    QVERIFY(!watch.calculated());
    QCOMPARE(m_test->window.currentProjectIndex, 1);
    LoadLogic::CalcularReacciones();
}

void TestTabs::switch_whileRestoring_doesNothing()
{
    openTabs(2);
    m_test->window.isRestoring = true;
    m_test->window.onTabChanged(0);
    m_test->window.isRestoring = false;
    QCOMPARE(m_test->window.currentProjectIndex, 1);
    QCOMPARE(LoadLogic::TrussLength, 22.0F);
}

void TestTabs::switch_calculates()
{
    openTabs(2);
    const Support::CalculationWatch watch;
    goTo(0);
    QVERIFY(watch.calculated());
    QCOMPARE(LoadLogic::TrussLength, 21.0F);
    QCOMPARE(m_test->undoDepth(), 2); // those of typing the lengths: a switch pushes none
}

void TestTabs::close_theLastTab_doesNothing()
{
    openTabs(1);
    m_test->window.onCloseTab(0);
    QCOMPARE(m_test->tabBar()->count(), 1);
    QCOMPARE(m_test->window.projects.size(), 1);
    QCOMPARE(LoadLogic::TrussLength, 21.0F);
}

void TestTabs::close_outOfRange_doesNothing()
{
    openTabs(2);
    m_test->window.onCloseTab(-1);
    m_test->window.onCloseTab(2);
    QCOMPARE(m_test->tabBar()->count(), 2);
    QCOMPARE(m_test->window.projects.size(), 2);
}

// Tabs 21, 22, 23 with the last current: closing the first moves the current tab to index 1, the old
// index 2 belongs to nobody any more, and the stored project of the third is loaded.
void TestTabs::close_leftOfTheCurrent()
{
    openTabs(3);
    m_test->window.onCloseTab(0);
    QCOMPARE(titles(), QStringList({u"Proyecto 2"_s, u"Proyecto 3"_s}));
    QCOMPARE(m_test->tabBar()->currentIndex(), 1);
    QCOMPARE(m_test->window.currentProjectIndex, 1);
    QCOMPARE(storedLengths().size(), 2);
    QCOMPARE(storedLengths().at(0), 22.0F);
    // What was stored of the third tab is what it was made with; it was never left since.
    QCOMPARE(LoadLogic::TrussLength, 12.0F);
}

// Tabs 21, 22, 23 with the second current: after closing the first the engine's project (22) is stored
// under the old index 1, which is now that of the third.
void TestTabs::close_leftOfTheCurrent_withOneToFollow()
{
    openTabs(3);
    goTo(1);
    m_test->window.onCloseTab(0);
    QCOMPARE(titles(), QStringList({u"Proyecto 2"_s, u"Proyecto 3"_s}));
    QCOMPARE(m_test->window.currentProjectIndex, 0);
    QCOMPARE(LoadLogic::TrussLength, 22.0F);
    QCOMPARE(storedLengths(), QList<float>({22.0F, 22.0F}));
    QCOMPARE(m_test->window.projects.at(1).tabName, u"Proyecto 3"_s); // the title is that of its tab
}

// The first of three is current and closed: the tab bar stands on index 0 again, which is no change, so
// the engine keeps the closed project, now under the title of the second.
void TestTabs::close_theCurrentFirst()
{
    openTabs(3);
    goTo(0);
    m_test->window.onCloseTab(0);
    QCOMPARE(titles(), QStringList({u"Proyecto 2"_s, u"Proyecto 3"_s}));
    QCOMPARE(m_test->window.currentProjectIndex, 0);
    QCOMPARE(LoadLogic::TrussLength, 21.0F);
    QCOMPARE(storedLengths(), QList<float>({22.0F, 23.0F}));
    goTo(1);
    QCOMPARE(storedLengths(), QList<float>({21.0F, 23.0F}));
    QCOMPARE(m_test->window.projects.at(0).tabName, u"Proyecto 2"_s);
}

void TestTabs::close_theCurrentInTheMiddle()
{
    openTabs(3);
    goTo(1);
    m_test->window.onCloseTab(1);
    QCOMPARE(titles(), QStringList({u"Proyecto 1"_s, u"Proyecto 3"_s}));
    QCOMPARE(m_test->tabBar()->currentIndex(), 1);
    QCOMPARE(m_test->window.currentProjectIndex, 1);
    QCOMPARE(LoadLogic::TrussLength, 22.0F); // no change of the index, no switch
    QCOMPARE(storedLengths(), QList<float>({21.0F, 23.0F}));
}

// The last is current and closed: the one before becomes current, the old index is gone.
void TestTabs::close_theCurrentLast()
{
    openTabs(3);
    m_test->window.onCloseTab(2);
    QCOMPARE(titles(), QStringList({u"Proyecto 1"_s, u"Proyecto 2"_s}));
    QCOMPARE(m_test->window.currentProjectIndex, 1);
    QCOMPARE(LoadLogic::TrussLength, 22.0F);
    QCOMPARE(storedLengths(), QList<float>({21.0F, 22.0F}));
}

void TestTabs::close_rightOfTheCurrent()
{
    openTabs(3);
    goTo(0);
    m_test->window.onCloseTab(2);
    QCOMPARE(titles(), QStringList({u"Proyecto 1"_s, u"Proyecto 2"_s}));
    QCOMPARE(m_test->window.currentProjectIndex, 0);
    QCOMPARE(LoadLogic::TrussLength, 21.0F);
    QCOMPARE(storedLengths(), QList<float>({21.0F, 22.0F}));
}

void TestTabs::close_byItsButton()
{
    openTabs(2);
    emit m_test->tabBar()->tabCloseRequested(1);
    QCOMPARE(m_test->tabBar()->count(), 1);
    emit m_test->tabBar()->tabCloseRequested(0);
    QCOMPARE(m_test->tabBar()->count(), 1);
}

// Dragging the current tab from the third place to the first: the tab bar reports index 0, so the
// engine's project is stored as the third and the first one's is loaded, under the moved title.
void TestTabs::moved_tabsDoNotReorderTheProjects()
{
    openTabs(3);
    m_test->tabBar()->moveTab(2, 0);
    QCOMPARE(titles(), QStringList({u"Proyecto 3"_s, u"Proyecto 1"_s, u"Proyecto 2"_s}));
    QCOMPARE(storedLengths(), QList<float>({21.0F, 22.0F, 23.0F}));
    QCOMPARE(m_test->window.currentProjectIndex, m_test->tabBar()->currentIndex());
    QCOMPARE(LoadLogic::TrussLength, 21.0F);
    QCOMPARE(m_test->window.captureCurrentState().tabName, u"Proyecto 3"_s);
}

void TestTabs::rename_dialogAsksForTheName()
{
    const RenameAnswer answer(u"Gira"_s);
    m_test->window.onRenameTab(0);
    QVERIFY(answer.given());
    QCOMPARE(answer.title, u"Renombrar Proyecto"_s);
    QCOMPARE(answer.label, u"Nombre del proyecto:"_s);
    QCOMPARE(answer.prefilled, u"Proyecto 1"_s);
    QCOMPARE(answer.mode, QLineEdit::Normal);
    QCOMPARE(m_test->tabBar()->tabText(0), u"Gira"_s);
    QCOMPARE(m_test->window.projects.constFirst().tabName, u"Gira"_s);
    QCOMPARE(m_test->window.captureCurrentState().tabName, u"Gira"_s);
}

void TestTabs::rename_takesTheTextAsTyped_data()
{
    QTest::addColumn<QString>("name");
    for (const QString& name :
         {u"  con espacios "_s, u" "_s, u"R&D"_s, u"<b>negrita</b>"_s, u"50%1 \"A\" %9"_s})
        QTest::newRow(qUtf8Printable(name)) << name;
}

void TestTabs::rename_takesTheTextAsTyped()
{
    QFETCH(QString, name);
    const RenameAnswer answer(name);
    m_test->window.onRenameTab(0);
    QCOMPARE(m_test->tabBar()->tabText(0), name);
    QCOMPARE(m_test->window.projects.constFirst().tabName, name);
}

void TestTabs::rename_emptyOrCancelled_changesNothing()
{
    for (const std::optional<QString>& text : {std::optional<QString>(QString()), std::optional<QString>()}) {
        const RenameAnswer answer(text);
        m_test->window.onRenameTab(0);
        QVERIFY(answer.given());
        QCOMPARE(m_test->tabBar()->tabText(0), u"Proyecto 1"_s);
        QCOMPARE(m_test->window.projects.constFirst().tabName, u"Proyecto 1"_s);
    }
}

void TestTabs::rename_anotherTab()
{
    openTabs(2);
    const RenameAnswer answer(u"Otro"_s);
    m_test->window.onRenameTab(0);
    QCOMPARE(titles(), QStringList({u"Otro"_s, u"Proyecto 2"_s}));
    QCOMPARE(m_test->window.currentProjectIndex, 1);
}

void TestTabs::rename_byDoubleClick()
{
    QVERIFY(m_test->activate());
    const RenameAnswer answer(u"Doble"_s);
    QTest::mouseDClick(m_test->tabBar(), Qt::LeftButton, {}, m_test->tabBar()->tabRect(0).center());
    QVERIFY(answer.given());
    QCOMPARE(m_test->tabBar()->tabText(0), u"Doble"_s);
}

void TestTabs::doubleClick_onTheEmptyPart_changesNothing()
{
    const RenameAnswer answer(u"Nadie"_s);
    emit m_test->tabBar()->tabBarDoubleClicked(-1);
    QVERIFY(answer.given());
    QCOMPARE(answer.prefilled, QString());
    QCOMPARE(titles(), QStringList{u"Proyecto 1"_s});
    QCOMPARE(m_test->window.projects.constFirst().tabName, u"Proyecto 1"_s);
}

void TestTabs::menu_besideTheTabs_doesNotCome()
{
    requestMenu(QPoint(-5, -5));
    QVERIFY(QApplication::activePopupWidget() == nullptr);
}

void TestTabs::menu_offersTwoActions()
{
    openTabs(2);
    const Support::MenuAnswer nothing;
    requestMenu(m_test->tabBar()->tabRect(0).center());
    QVERIFY(nothing.given());
    QCOMPARE(nothing.entries, QStringList({u"Renombrar"_s, u"Cerrar Pestaña"_s}));
    QCOMPARE(m_test->tabBar()->count(), 2);
    QVERIFY(m_test->window.findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly).isEmpty());
}

void TestTabs::menu_renames()
{
    openTabs(2);
    const RenameAnswer name(u"Gira"_s);
    const Support::MenuAnswer rename(u"Renombrar"_s);
    requestMenu(m_test->tabBar()->tabRect(0).center());
    QVERIFY(rename.given());
    QVERIFY(name.given());
    QCOMPARE(name.prefilled, u"Proyecto 1"_s);
    QCOMPARE(titles(), QStringList({u"Gira"_s, u"Proyecto 2"_s}));
}

void TestTabs::menu_closes()
{
    openTabs(2);
    const Support::MenuAnswer close(u"Cerrar Pestaña"_s);
    requestMenu(m_test->tabBar()->tabRect(1).center());
    QVERIFY(close.given());
    QCOMPARE(titles(), QStringList{u"Proyecto 1"_s});
    QCOMPARE(LoadLogic::TrussLength, 21.0F);
}

void TestTabs::menu_doesNotCloseTheLastTab()
{
    const Support::MenuAnswer close(u"Cerrar Pestaña"_s);
    requestMenu(m_test->tabBar()->tabRect(0).center());
    QVERIFY(close.given());
    QCOMPARE(m_test->tabBar()->count(), 1);
}

void TestTabs::nextTabKeepsWorkingAfterClosing()
{
    openTabs(4);
    m_test->window.onCloseTab(1);
    m_test->window.onAddTab();
    QCOMPARE(m_test->window.projects.size(), m_test->tabBar()->count());
    QCOMPARE(m_test->window.currentProjectIndex, m_test->tabBar()->currentIndex());
    for (int i = 0; i < m_test->tabBar()->count(); ++i) {
        goTo(i);
        QCOMPARE(m_test->window.currentProjectIndex, i);
    }
}

QTEST_MAIN(TestTabs)
#include "tst_tabs.moc"
