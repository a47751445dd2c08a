#include "canvas/MotorDialog.h"
#include "io/ProjectFile.h"
#include "support/Dialogs.h"
#include "support/Window.h"

#include <QAbstractItemView>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QHelpEvent>
#include <QInputDialog>
#include <QLabel>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <QToolTip>

#include <optional>

using namespace Qt::StringLiterals;

using Support::Answer;
using Support::TestWindow;

namespace
{

const QString MARK = u"ENGAÑO"_s;
const QString NAME = u"<b>"_s + MARK + u"</b><img src='http://example.org/a.png'>"_s;

/// Where the name stands in what can be seen: how often as it is, and where as a document.
struct Sight
{
    int plain = 0;
    QStringList documents;

    void note(bool isDocument, const QObject& where, const QString& text)
    {
        if (!text.contains(MARK))
            return;
        if (isDocument)
            documents.append(QLatin1String(where.metaObject()->className()) + u' ' + where.objectName());
        else
            ++plain;
    }
};

void lookAtItems(const QAbstractItemView& view, Sight& sight)
{
    const QAbstractItemModel* model = view.model();
    if (model == nullptr)
        return;
    for (int row = 0; row < model->rowCount(); ++row) {
        for (int column = 0; column < model->columnCount(); ++column) {
            const QModelIndex index = model->index(row, column);
            sight.note(false, view, index.data(Qt::DisplayRole).toString());
            for (const int hint : {Qt::ToolTipRole, Qt::StatusTipRole, Qt::WhatsThisRole})
                sight.note(true, view, index.data(hint).toString());
        }
    }
}

void lookAtTabs(const QTabBar& tabs, Sight& sight)
{
    for (int i = 0; i < tabs.count(); ++i) {
        sight.note(false, tabs, tabs.tabText(i));
        sight.note(true, tabs, tabs.tabToolTip(i));
        sight.note(true, tabs, tabs.tabWhatsThis(i));
    }
}

/// Looks at every widget of every window. Of hints Qt guesses whether they are documents.
Sight lookAround()
{
    Sight sight;
    const QWidgetList widgets = QApplication::allWidgets();
    for (const QWidget* widget : widgets) {
        for (const QString& hint : {widget->toolTip(), widget->statusTip(), widget->whatsThis()})
            sight.note(true, *widget, hint);
        if (const auto* label = qobject_cast<const QLabel*>(widget))
            sight.note(label->textFormat() != Qt::PlainText, *label, label->text()); // no guessing
        else if (const auto* field = qobject_cast<const QLineEdit*>(widget))
            sight.note(false, *field, field->text());
        else if (const auto* text = qobject_cast<const QTextEdit*>(widget))
            sight.note(true, *text, text->toPlainText());
        else if (const auto* tabs = qobject_cast<const QTabBar*>(widget))
            lookAtTabs(*tabs, sight);
        else if (const auto* view = qobject_cast<const QAbstractItemView*>(widget))
            lookAtItems(*view, sight);
    }
    return sight;
}

} // namespace

/// Names from a file that would be a document, in every place of the window that shows them.
class TestMarkup : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup()
    {
        m_test.reset();
    }

    void tabs_showItAsItIs();
    void hoveringATab_showsNothing();
    void panels_showItAsItIs();
    void reportPage_showsItAsItIs();
    void dynamicFactorDialog_showsItAsItIs();
    void renaming_showsItAsItIs();
    void motorDialog_showsItAsItIs();
    void messages_showItAsItIs();

private:
    std::optional<TestWindow> m_test;
    QTemporaryDir m_folder;
};

// Two files, so that tabs take their names.
void TestMarkup::init()
{
    LoadLogic::ProjectState project;
    project.tabName = NAME;
    LoadLogic::Motor motor;
    motor.id = 1;
    motor.modelName = NAME;
    motor.positionX = 6.0F;
    project.motors = {motor};
    LoadLogic::ActiveLoad load;
    load.id = 1;
    load.name = NAME;
    load.type = NAME;
    load.positionX = 3.0F;
    project.loads = {load};
    const QString path = m_folder.filePath(u"a.rig"_s);
    QVERIFY(ProjectFile::write(path, project));
    m_test.emplace();
    m_test->window.openProjectFiles({path, path});
    m_test->window.show();
}

void TestMarkup::tabs_showItAsItIs()
{
    const Sight sight = lookAround();
    QCOMPARE(sight.documents, QStringList());
    QCOMPARE(sight.plain, 2);
}

void TestMarkup::hoveringATab_showsNothing()
{
    QTabBar* tabs = m_test->tabBar();
    const QPoint middle = tabs->tabRect(0).center();
    QHelpEvent hover(QEvent::ToolTip, middle, tabs->mapToGlobal(middle));
    QCoreApplication::sendEvent(tabs, &hover);
    QVERIFY(!QToolTip::text().contains(MARK));
}

void TestMarkup::panels_showItAsItIs()
{
    m_test->window.showMotorProperties(0);
    Sight sight = lookAround();
    QCOMPARE(sight.documents, QStringList());
    QVERIFY(m_test->motorPanel()->findChild<QLabel*>()->text().contains(NAME));
    QCOMPARE(m_test->text("motorName"), NAME);
    const int withMotor = sight.plain;
    QVERIFY(withMotor >= 4); // two tabs, the title and the field

    m_test->window.showLoadProperties(LoadLogic::ActiveLoads.at(0).id);
    sight = lookAround();
    QCOMPARE(sight.documents, QStringList());
    QCOMPARE(m_test->text("loadName"), NAME);
}

void TestMarkup::reportPage_showsItAsItIs()
{
    m_test->window.onGenerateReportClicked();
    const Sight sight = lookAround();
    QCOMPARE(sight.documents, QStringList());
    QVERIFY(sight.plain >= 2 + 2 * 2); // the tabs; in the table of each project its motor and its load
}

void TestMarkup::dynamicFactorDialog_showsItAsItIs()
{
    Sight sight;
    const Answer<QDialog> look([&sight](QDialog& dialog) {
        sight = lookAround();
        dialog.reject();
    });
    m_test->window.onDynamicFactorClicked();
    QVERIFY(look.given());
    QCOMPARE(sight.documents, QStringList());
    QVERIFY(sight.plain >= 3); // the tabs and the motor's row
}

void TestMarkup::renaming_showsItAsItIs()
{
    Sight sight;
    const Answer<QInputDialog> look([&sight](QInputDialog& dialog) {
        sight = lookAround();
        dialog.reject();
    });
    m_test->window.onRenameTab(0);
    QVERIFY(look.given());
    QCOMPARE(sight.documents, QStringList());
    QVERIFY(sight.plain >= 3); // the tabs and the field
}

void TestMarkup::motorDialog_showsItAsItIs()
{
    const MotorDialog dialog(LoadLogic::MotorList.at(0), &m_test->window);
    const Sight sight = lookAround();
    QCOMPARE(sight.documents, QStringList());
    QVERIFY(sight.plain >= 3); // the tabs and the field
}

// The folder of the reports may be called so too, and where there is no browser its name is told.
void TestMarkup::messages_showItAsItIs()
{
    const QString folder = m_folder.filePath(u"<b>"_s + MARK + u"<br>"_s);
    QVERIFY(QDir().mkdir(folder));
    const QByteArray reports = qgetenv("TMPDIR");
    const QByteArray commands = qgetenv("PATH");
    qputenv("TMPDIR", QFile::encodeName(folder));
    qputenv("PATH", "/no/such/folder");
    if (QGuiApplication::platformName() != u"offscreen"_s) // which does not even look for a browser
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Unable to detect a launcher for "_s));
    Sight sight;
    const Answer<QMessageBox> look([&sight](QMessageBox& box) {
        sight = lookAround();
        box.close();
    });
    m_test->window.onPrintReportClicked();
    qputenv("TMPDIR", reports);
    qputenv("PATH", commands);
    QVERIFY(look.given());
    QCOMPARE(sight.documents, QStringList());
    QVERIFY(sight.plain >= 3); // the tabs and the text
}

QTEST_MAIN(TestMarkup)
#include "tst_markup.moc"
