#include "support/Dialogs.h"
#include "support/Names.h"
#include "support/Window.h"

#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QUrl>

#include <optional>

using namespace Qt::StringLiterals;

namespace
{

/// What a file manager carries when these files are dragged.
std::unique_ptr<QMimeData> dragged(const QStringList& paths)
{
    auto data = std::make_unique<QMimeData>();
    QList<QUrl> urls;
    for (const QString& path : paths)
        urls.append(QUrl::fromLocalFile(path));
    data->setUrls(urls);
    return data;
}

bool isNameField(const QWidget* widget)
{
    return QStringList({u"newLoadName"_s, u"motorName"_s, u"loadName"_s}).contains(widget->objectName());
}

} // namespace

/// Project files from the file manager, dropped on the window.
class TestDrop : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup()
    {
        m_test.reset();
    }

    void projectFiles_areWelcome_data();
    void projectFiles_areWelcome();
    void links_areNotWelcome();
    void whileADialogIsOpen_nothingIsWelcome();
    void fields_leaveFilesToTheWindow();
    void fileOverAName_goesToTheWindow();
    void textOverAName_isTheFields();
    void one_opensInTheCurrentTab();
    void files_mayHaveAnyName_data();
    void files_mayHaveAnyName();
    void several_openOneTabEach();
    void otherFilesAmongThem_areLeftOut();
    void brokenFirst_isToldAndTheRestOpens();
    void brokenLater_makesNoTab();
    void brokenFirst_leavesTheCurrentTabAsItIs_data();
    void brokenFirst_leavesTheCurrentTabAsItIs();
    void onTheReportPage_showsTheDesign_data();
    void onTheReportPage_showsTheDesign();

private:
    void drop(const QStringList& paths);
    [[nodiscard]] QStringList titles() const;

    /// A project with this name in the file and this length of truss [m]; returns its path.
    [[nodiscard]] QString project(const QString& fileName, const QString& tabName, int length);

    std::optional<Support::TestWindow> m_test;
    QTemporaryDir m_folder;
};

void TestDrop::init()
{
    m_test.emplace();
}

QString TestDrop::project(const QString& fileName, const QString& tabName, int length)
{
    const QString path = m_folder.filePath(fileName);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write");
    file.write((u"{\"tabName\": \""_s + tabName + u"\", \"trussLength\": "_s + QString::number(length)
                + u", \"motors\": [], \"loads\": []}"_s)
                   .toUtf8());
    return path;
}

QStringList TestDrop::titles() const
{
    QStringList result;
    for (int i = 0; i < m_test->tabBar()->count(); ++i)
        result.append(m_test->tabBar()->tabText(i));
    return result;
}

void TestDrop::drop(const QStringList& paths)
{
    const auto data = dragged(paths);
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_test->window, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent event(QPointF(50, 50), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_test->window, &event);
    QVERIFY(event.isAccepted());
    QCoreApplication::processEvents(); // the files are opened after the drop
}

void TestDrop::projectFiles_areWelcome_data()
{
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<bool>("welcome");
    QTest::newRow("a project") << QStringList{u"/a/b.rig"_s} << true;
    QTest::newRow("capital letters") << QStringList{u"/a/B.RIG"_s} << true;
    QTest::newRow("a project as JSON") << QStringList{u"/a/b.json"_s} << true;
    QTest::newRow("JSON in capital letters") << QStringList{u"/a/b.JSON"_s} << true;
    QTest::newRow("one among others") << QStringList{u"/a/b.txt"_s, u"/a/ñ c.rig"_s} << true;
    QTest::newRow("a text") << QStringList{u"/a/b.txt"_s} << false;
    QTest::newRow("nothing") << QStringList{} << false;
}

void TestDrop::projectFiles_areWelcome()
{
    QFETCH(QStringList, paths);
    QFETCH(bool, welcome);
    const auto data = dragged(paths);
    QDragEnterEvent event(QPoint(50, 50), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    event.ignore();
    QCoreApplication::sendEvent(&m_test->window, &event);
    QCOMPARE(event.isAccepted(), welcome);
}

void TestDrop::links_areNotWelcome()
{
    QMimeData data;
    data.setUrls({QUrl(u"https://example.org/a.rig"_s)});
    QDragEnterEvent event(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    event.ignore();
    QCoreApplication::sendEvent(&m_test->window, &event);
    QVERIFY(!event.isAccepted());
}

void TestDrop::whileADialogIsOpen_nothingIsWelcome()
{
    bool accepted = true;
    const Support::Answer<QMessageBox> look([this, &accepted](QMessageBox& box) {
        const auto data = dragged({u"/a/b.rig"_s});
        QDragEnterEvent event(QPoint(50, 50), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(&m_test->window, &event);
        accepted = event.isAccepted();
        box.close();
    });
    m_test->window.onResetProjectClicked();
    QVERIFY(look.given());
    QVERIFY(!accepted);
}

void TestDrop::fields_leaveFilesToTheWindow()
{
    QVERIFY(m_test->window.acceptDrops());
    const auto widgets = m_test->window.findChildren<QWidget*>();
    for (const QWidget* widget : widgets)
        QVERIFY2(!widget->acceptDrops() || isNameField(widget), qPrintable(widget->objectName()));
}

// A file manager offers the path as a text as well.
void TestDrop::fileOverAName_goesToTheWindow()
{
    const auto data = dragged({project(u"a.rig"_s, u"Uno"_s, 17)});
    data->setText(u"/a/b.rig"_s);
    QLineEdit* name = m_test->field("newLoadName");
    QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(name, &enter);
    QVERIFY(enter.isAccepted()); // by the window, to which it went on
    QDropEvent drop(QPointF(5, 5), Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&m_test->window, &drop);
    QCoreApplication::processEvents();
    QCOMPARE(name->text(), u"Carga"_s);
    QCOMPARE(LoadLogic::TrussLength, 17.0F);
}

void TestDrop::textOverAName_isTheFields()
{
    m_test->window.showMotorProperties(0);
    QMimeData data;
    data.setText(u"PA izq, alto"_s);
    for (const char* name : {"newLoadName", "motorName", "loadName"}) {
        QLineEdit* field = m_test->field(name);
        field->clear();
        QVERIFY(field->acceptDrops());
        QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QCoreApplication::sendEvent(field, &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent drop(QPointF(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(field, &drop);
        QCOMPARE(field->text(), u"PA izq, alto"_s);
    }
}

void TestDrop::one_opensInTheCurrentTab()
{
    drop({project(u"a.rig"_s, u"Del fichero"_s, 17)});
    QCOMPARE(LoadLogic::TrussLength, 17.0F);
    QCOMPARE(titles(), QStringList{u"Proyecto 1"_s}); // the tab keeps its title
    QCOMPARE(m_test->undoDepth(), 1);
}

void TestDrop::files_mayHaveAnyName_data()
{
    Support::awkwardNames();
}

void TestDrop::files_mayHaveAnyName()
{
    QFETCH(QString, name);
    drop({project(name + u".rig"_s, u"Del fichero"_s, 17)});
    QCOMPARE(LoadLogic::TrussLength, 17.0F);
}

void TestDrop::several_openOneTabEach()
{
    drop({project(u"a.rig"_s, u"Primero"_s, 17), project(u"b.rig"_s, u"Segundo"_s, 18),
          project(u"c.rig"_s, u"Tercero"_s, 19)});
    QCOMPARE(titles(), QStringList({u"Proyecto 1"_s, u"Segundo"_s, u"Tercero"_s}));
    QCOMPARE(m_test->window.currentProjectIndex, 2);
    QCOMPARE(LoadLogic::TrussLength, 19.0F);
    m_test->tabBar()->setCurrentIndex(0);
    QCOMPARE(LoadLogic::TrussLength, 17.0F);
    m_test->tabBar()->setCurrentIndex(1);
    QCOMPARE(LoadLogic::TrussLength, 18.0F);
}

void TestDrop::otherFilesAmongThem_areLeftOut()
{
    drop({m_folder.filePath(u"nota.txt"_s), project(u"a.rig"_s, u"Uno"_s, 17)});
    QCOMPARE(titles(), QStringList{u"Proyecto 1"_s});
    QCOMPARE(LoadLogic::TrussLength, 17.0F);
}

void TestDrop::brokenFirst_isToldAndTheRestOpens()
{
    const Support::BoxAnswer ok(QMessageBox::Ok);
    drop({m_folder.filePath(u"falta.rig"_s), project(u"b.rig"_s, u"Segundo"_s, 18)});
    QVERIFY(ok.given());
    QCOMPARE(ok.icon, QMessageBox::Critical);
    QCOMPARE(titles(), QStringList({u"Proyecto 1"_s, u"Segundo"_s}));
    QCOMPARE(LoadLogic::TrussLength, 18.0F);
}

void TestDrop::brokenLater_makesNoTab()
{
    const Support::BoxAnswer ok(QMessageBox::Ok);
    drop({project(u"a.rig"_s, u"Uno"_s, 17), m_folder.filePath(u"falta.rig"_s)});
    QVERIFY(ok.given());
    QCOMPARE(titles(), QStringList{u"Proyecto 1"_s});
    QCOMPARE(LoadLogic::TrussLength, 17.0F);
}

void TestDrop::brokenFirst_leavesTheCurrentTabAsItIs_data()
{
    QTest::addColumn<bool>("dropped");
    QTest::newRow("dropped") << true;
    QTest::newRow("on the command line") << false;
}

void TestDrop::brokenFirst_leavesTheCurrentTabAsItIs()
{
    QFETCH(bool, dropped);
    const QStringList paths{m_folder.filePath(u"falta.rig"_s), project(u"b.rig"_s, u"Segundo"_s, 18),
                            project(u"c.rig"_s, u"Tercero"_s, 19)};
    const Support::BoxAnswer ok(QMessageBox::Ok);
    if (dropped)
        drop(paths);
    else
        m_test->window.openProjectFiles(paths);
    QVERIFY(ok.given());
    QCOMPARE(titles(), QStringList({u"Proyecto 1"_s, u"Segundo"_s, u"Tercero"_s}));
    QCOMPARE(LoadLogic::TrussLength, 19.0F);
    m_test->tabBar()->setCurrentIndex(0);
    QCOMPARE(LoadLogic::TrussLength, 12.0F);
}

void TestDrop::onTheReportPage_showsTheDesign_data()
{
    QTest::addColumn<bool>("broken");
    QTest::newRow("a project") << false;
    QTest::newRow("a broken file") << true;
}

void TestDrop::onTheReportPage_showsTheDesign()
{
    QFETCH(bool, broken);
    const auto* pages = qobject_cast<QStackedWidget*>(m_test->window.centralWidget());
    m_test->window.onGenerateReportClicked();
    QCOMPARE(pages->currentIndex(), 1);
    const QString path = broken ? m_folder.filePath(u"falta.rig"_s) : project(u"a.rig"_s, u"Uno"_s, 17);
    int pageUnderTheBox = -1;
    const Support::Answer<QMessageBox> ok([pages, &pageUnderTheBox](QMessageBox& box) {
        pageUnderTheBox = pages->currentIndex();
        box.accept();
    });
    drop({path});
    QCOMPARE(ok.given(), broken);
    QCOMPARE(pageUnderTheBox, broken ? 0 : -1);
    QCOMPARE(pages->currentIndex(), 0);
}

QTEST_MAIN(TestDrop)
#include "tst_drop.moc"
