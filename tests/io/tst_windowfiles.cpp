#include "io/ProjectFile.h"
#include "support/Dialogs.h"
#include "support/Window.h"

#include <QFile>
#include <QFileDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

using Support::BoxAnswer;
using Support::FileAnswer;
using Support::TestWindow;

namespace
{

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString put(const QTemporaryDir& folder, const QString& name, const QByteArray& bytes)
{
    QFile file(folder.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qUtf8Printable(name));
    return file.fileName();
}

/// A project unlike any new one.
QByteArray otherProject(const QString& name = u"Gira"_s)
{
    LoadLogic::ProjectState project;
    project.tabName = name;
    project.trussLength = 20.0F;
    LoadLogic::Motor motor;
    motor.id = 4;
    motor.positionX = 5.0F;
    project.motors.append(motor);
    motor.id = 5;
    motor.positionX = 15.0F;
    project.motors.append(motor);
    LoadLogic::ActiveLoad load;
    load.id = 1000;
    load.groupId = 2000;
    load.positionX = 10.0F;
    project.loads.append(load);
    return ProjectFile::toBytes(project);
}

} // namespace

class TestWindowFiles : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void save_writesTheCurrentProject();
    void save_takesTheNameOfTheTab();
    void save_cancelled_saysNothing();
    void save_thatFails_isTold();
    void save_changesNothing();
    void open_replacesTheProjectOfTheTab();
    void open_cancelled_saysNothing();
    void open_calculates();
    void open_keepsTheTitleOfTheTab();
    void open_isOneUndoStep();
    void openedScreenFields_areTheDefaults();
    void emptyObject_opensWithTheEnginesWeightAndCpl();
    void unreadableFile_isTold();
    void badFile_isToldAndChangesNothing_data();
    void badFile_isToldAndChangesNothing();
    void openedIds_areNotUsedAgain();
    void savedArray_comesBackUntyped();
    void selection_endsWithOpening();
    void twoFiles_openInTwoNamedTabs();
    void oneFile_namesTheTab();
    void fileWithoutAName_leavesTheTabItsName();
    void withoutProjects_theFirstFileGetsNoTab();
    void badFileAmongSeveral_opensNoTab();
    void manyFiles_keepTheirOwnProjects();
    void strangeProjects_areOpenedAsTheyAre_data();
    void strangeProjects_areOpenedAsTheyAre();
};

void TestWindowFiles::initTestCase()
{
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

void TestWindowFiles::save_writesTheCurrentProject()
{
    TestWindow test;
    test.hangLoad(69.55F, 4.25F);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"mi proyecto"_s);
    const FileAnswer file(path);
    // The box comes after the dialog that the first answer deals with.
    const BoxAnswer box(QMessageBox::Ok);
    test.window.onSaveProjectClicked();

    QVERIFY(file.given());
    QCOMPARE(file.title, u"Guardar Proyecto"_s);
    QCOMPARE(file.filters, QStringList({u"Rigging Project (*.rig)"_s, u"JSON File (*.json)"_s}));
    QCOMPARE(file.mode, QFileDialog::AcceptSave);
    QVERIFY(box.given());
    QCOMPARE(box.title, u"Guardado"_s);
    QCOMPARE(box.text, u"Proyecto guardado con éxito."_s);
    QCOMPARE(box.icon, QMessageBox::Information);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent, &test.window);
    QCOMPARE(contentOf(path), ProjectFile::toBytes(test.window.captureCurrentState())); // no ".rig" added
}

void TestWindowFiles::save_takesTheNameOfTheTab()
{
    TestWindow test;
    test.tabBar()->setTabText(0, u"Otro nombre"_s);
    const QTemporaryDir folder;
    const FileAnswer file(folder.filePath(u"a.rig"_s));
    const BoxAnswer box(QMessageBox::Ok);
    test.window.onSaveProjectClicked();
    QCOMPARE(ProjectFile::read(folder.filePath(u"a.rig"_s)).project.tabName, u"Otro nombre"_s);
}

void TestWindowFiles::save_cancelled_saysNothing()
{
    TestWindow test;
    const FileAnswer file{QString()};
    test.window.onSaveProjectClicked(); // a box would wait for the watchdog
    QVERIFY(file.given());
}

void TestWindowFiles::save_thatFails_isTold()
{
    TestWindow test;
    const QTemporaryDir folder;
    const FileAnswer file(folder.filePath(u"no existe/a.rig"_s));
    const BoxAnswer box(QMessageBox::Ok);
    test.window.onSaveProjectClicked();
    QVERIFY(box.given());
    QCOMPARE(box.title, u"Error"_s);
    QCOMPARE(box.text, u"No se pudo guardar el archivo."_s);
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
}

void TestWindowFiles::save_changesNothing()
{
    TestWindow test;
    test.hangLoad(10.0F, 4.0F);
    const QByteArray before = ProjectFile::toBytes(test.window.captureCurrentState());
    const QTemporaryDir folder;
    const FileAnswer file(folder.filePath(u"a.rig"_s));
    const BoxAnswer box(QMessageBox::Ok);
    test.window.onSaveProjectClicked();
    QCOMPARE(ProjectFile::toBytes(test.window.captureCurrentState()), before);
    QCOMPARE(test.undoDepth(), 0);
    QCOMPARE(test.tabBar()->tabText(0), u"Proyecto 1"_s);
}

void TestWindowFiles::open_replacesTheProjectOfTheTab()
{
    TestWindow test;
    const QTemporaryDir folder;
    const FileAnswer file(put(folder, u"a.rig"_s, otherProject()));
    test.window.onLoadProjectClicked();
    QVERIFY(file.given());
    QCOMPARE(file.title, u"Abrir Proyecto"_s);
    QCOMPARE(file.filters, QStringList({u"Rigging Project (*.rig)"_s, u"JSON File (*.json)"_s}));
    QCOMPARE(file.mode, QFileDialog::AcceptOpen);
    QCOMPARE(LoadLogic::TrussLength, 20.0F);
    QCOMPARE(LoadLogic::MotorList.size(), 2);
    QCOMPARE(LoadLogic::MotorList.at(0).id, 4);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 1);
    QCOMPARE(test.tabBar()->count(), 1);
}

void TestWindowFiles::open_cancelled_saysNothing()
{
    TestWindow test;
    const FileAnswer file{QString()};
    test.window.onLoadProjectClicked();
    QVERIFY(file.given());
    QCOMPARE(test.undoDepth(), 0);
    QCOMPARE(LoadLogic::TrussLength, 12.0F);
}

void TestWindowFiles::open_calculates()
{
    TestWindow test;
    const QTemporaryDir folder;
    QVERIFY(test.window.openProjectFile(put(folder, u"a.rig"_s, otherProject())));
    // Half of 500 kg, half a span of 10 m, an overhang of 5 m: 250 + 42 + 42.
    QCOMPARE(LoadLogic::MotorList.at(0).staticLoad, 334.0F);
}

void TestWindowFiles::open_keepsTheTitleOfTheTab()
{
    TestWindow test;
    const QTemporaryDir folder;
    QVERIFY(test.window.openProjectFile(put(folder, u"a.rig"_s, otherProject())));
    QCOMPARE(test.tabBar()->tabText(0), u"Proyecto 1"_s);
}

void TestWindowFiles::open_isOneUndoStep()
{
    TestWindow test;
    test.hangLoad(10.0F, 4.0F);
    const QByteArray before = ProjectFile::toBytes(test.window.captureCurrentState());
    const QTemporaryDir folder;
    QVERIFY(test.window.openProjectFile(put(folder, u"a.rig"_s, otherProject())));
    QCOMPARE(test.undoDepth(), 1);
    test.window.undo();
    QCOMPARE(ProjectFile::toBytes(test.window.captureCurrentState()), before);
}

void TestWindowFiles::openedScreenFields_areTheDefaults()
{
    TestWindow test;
    test.window.restoreProjectState([] {
        LoadLogic::ProjectState state;
        state.screenWidth = 9.0F;
        state.screenHeight = 8.0F;
        state.screenWeightM2 = 70.0F;
        state.bumperWeightPerMeter = 25.0F;
        state.cableWeightPercent = 3.0F;
        return state;
    }());
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    QVERIFY(ProjectFile::write(path, test.window.captureCurrentState()));
    QVERIFY(test.window.openProjectFile(path));
    const LoadLogic::ProjectState state = test.window.captureCurrentState();
    QCOMPARE(state.screenWidth, 4.0F);
    QCOMPARE(state.screenHeight, 3.0F);
    QCOMPARE(state.screenWeightM2, 40.0F);
    QCOMPARE(state.bumperWeightPerMeter, 25.0F); // these two the file carries
    QCOMPARE(state.cableWeightPercent, 3.0F);
}

void TestWindowFiles::emptyObject_opensWithTheEnginesWeightAndCpl()
{
    TestWindow test;
    LoadLogic::TrussSelfWeight = 11.0F;
    LoadLogic::Limit_CPL = 900.0F;
    const QTemporaryDir folder;
    QVERIFY(test.window.openProjectFile(put(folder, u"vacio.rig"_s, "{}")));
    QCOMPARE(LoadLogic::TrussLength, 12.0F);
    QCOMPARE(LoadLogic::TrussSelfWeight, 11.0F);
    QCOMPARE(LoadLogic::Limit_CPL, 900.0F);
    QVERIFY(LoadLogic::MotorList.isEmpty());
    QVERIFY(LoadLogic::ActiveLoads.isEmpty());
    QCOMPARE(test.tabBar()->tabText(0), u"Proyecto 1"_s);
}

void TestWindowFiles::unreadableFile_isTold()
{
    TestWindow test;
    const QTemporaryDir folder;
    for (const QString& path : {folder.filePath(u"nada.rig"_s), folder.path()}) {
        const BoxAnswer box(QMessageBox::Ok);
        QVERIFY(!test.window.openProjectFile(path));
        QVERIFY(box.given());
        QCOMPARE(box.title, u"Error"_s);
        QCOMPARE(box.text, u"No se pudo leer el archivo."_s);
        QCOMPARE(box.icon, QMessageBox::Critical);
        QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
        QCOMPARE(box.parent, &test.window);
    }
    QCOMPARE(test.undoDepth(), 0);
}

void TestWindowFiles::badFile_isToldAndChangesNothing_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("array") << QByteArray("[]");
    QTest::newRow("truncated") << otherProject().chopped(10);
    QTest::newRow("binary") << QByteArray(100, '\xff');
    QTest::newRow("deeply nested") << QByteArray(100'000, '[');
}

void TestWindowFiles::badFile_isToldAndChangesNothing()
{
    QFETCH(const QByteArray, bytes);
    TestWindow test;
    test.hangLoad(10.0F, 4.0F);
    const QByteArray before = ProjectFile::toBytes(test.window.captureCurrentState());
    const QTemporaryDir folder;
    const BoxAnswer box(QMessageBox::Ok);
    QVERIFY(!test.window.openProjectFile(put(folder, u"a.rig"_s, bytes)));
    QVERIFY(box.given());
    QCOMPARE(box.title, u"Error"_s);
    QCOMPARE(box.text, u"Formato de archivo inválido."_s);
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(ProjectFile::toBytes(test.window.captureCurrentState()), before);
    QCOMPARE(test.undoDepth(), 0);
}

void TestWindowFiles::openedIds_areNotUsedAgain()
{
    TestWindow test;
    const QTemporaryDir folder;
    QVERIFY(test.window.openProjectFile(put(folder, u"a.rig"_s, otherProject())));
    QVERIFY(LoadLogic::NextLoadId > 1000);
    QVERIFY(LoadLogic::NextGroupId > 2000);
}

void TestWindowFiles::savedArray_comesBackUntyped()
{
    TestWindow test;
    test.addScreen();
    const QList<LoadLogic::ActiveLoad> before = LoadLogic::ActiveLoads;
    QVERIFY(before.size() > 1);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    QVERIFY(ProjectFile::write(path, test.window.captureCurrentState()));
    QVERIFY(test.window.openProjectFile(path));
    QCOMPARE(LoadLogic::ActiveLoads.size(), before.size());
    for (qsizetype i = 0; i < before.size(); ++i) {
        const LoadLogic::ActiveLoad& load = LoadLogic::ActiveLoads.at(i);
        QCOMPARE(load.type, QString());
        QCOMPARE(load.name, before.at(i).name);
        QCOMPARE(load.mass, before.at(i).mass);
        QCOMPARE(load.positionX, before.at(i).positionX);
        QCOMPARE(load.groupId, before.at(i).groupId);
        QCOMPARE(load.screenWidth, before.at(i).screenWidth);
        QCOMPARE(load.cableWeightPercent, before.at(i).cableWeightPercent);
        QCOMPARE(load.screenHeight, 0.0F);
    }
}

void TestWindowFiles::selection_endsWithOpening()
{
    TestWindow test;
    test.window.showLoadProperties(test.hangLoad(10.0F, 4.0F));
    const QTemporaryDir folder;
    QVERIFY(test.window.openProjectFile(put(folder, u"a.rig"_s, otherProject())));
    QCOMPARE(test.window.selectedLoadId, -1);
}

void TestWindowFiles::twoFiles_openInTwoNamedTabs()
{
    TestWindow test;
    const QTemporaryDir folder;
    test.window.openProjectFiles({put(folder, u"a.rig"_s, otherProject(u"Uno %1"_s)),
                                  put(folder, u"b.rig"_s, "{\"trussLength\": 7}")});
    QCOMPARE(test.tabBar()->count(), 2);
    QCOMPARE(test.tabBar()->tabText(0), u"Uno %1"_s);
    QCOMPARE(test.tabBar()->tabText(1), u"Proyecto Cargado"_s);
    QCOMPARE(test.window.projects.size(), 2);
    QCOMPARE(test.window.currentProjectIndex, 1);
    QCOMPARE(LoadLogic::TrussLength, 7.0F);
    QCOMPARE(test.window.projects.at(0).trussLength, 20.0F);
    QCOMPARE(test.window.projects.at(0).tabName, u"Uno %1"_s);
}

void TestWindowFiles::oneFile_namesTheTab()
{
    TestWindow test;
    const QTemporaryDir folder;
    test.window.openProjectFiles({put(folder, u"a.rig"_s, otherProject(u"Gira 2024"_s))});
    QCOMPARE(test.tabBar()->count(), 1);
    QCOMPARE(test.tabBar()->tabText(0), u"Gira 2024"_s);
    QCOMPARE(test.window.projects.at(0).tabName, u"Gira 2024"_s);
    QCOMPARE(LoadLogic::TrussLength, 20.0F);
}

void TestWindowFiles::fileWithoutAName_leavesTheTabItsName()
{
    TestWindow test;
    const QTemporaryDir folder;
    test.window.openProjectFiles(
        {put(folder, u"a.rig"_s, otherProject(QString())), put(folder, u"b.rig"_s, otherProject(u"B"_s))});
    QCOMPARE(test.tabBar()->tabText(0), u"Proyecto 1"_s);
    QCOMPARE(test.tabBar()->tabText(1), u"B"_s);
}

void TestWindowFiles::withoutProjects_theFirstFileGetsNoTab()
{
    TestWindow test;
    test.window.projects.clear();
    test.window.currentProjectIndex = -1;
    test.tabBar()->removeTab(0);
    const QTemporaryDir folder;
    test.window.openProjectFiles(
        {put(folder, u"a.rig"_s, otherProject(u"A"_s)), put(folder, u"b.rig"_s, otherProject(u"B"_s))});
    QCOMPARE(test.tabBar()->count(), 1);
    QCOMPARE(test.tabBar()->tabText(0), u"B"_s);
    QCOMPARE(test.window.projects.size(), 1);
    QCOMPARE(test.window.projects.at(0).tabName, u"B"_s);
}

void TestWindowFiles::badFileAmongSeveral_opensNoTab()
{
    TestWindow test;
    const QTemporaryDir folder;
    const BoxAnswer box(QMessageBox::Ok);
    test.window.openProjectFiles({put(folder, u"a.rig"_s, otherProject(u"A"_s)),
                                  put(folder, u"b.rig"_s, "[]"),
                                  put(folder, u"c.rig"_s, otherProject(u"C"_s))});
    QVERIFY(box.given());
    QCOMPARE(test.tabBar()->count(), 2);
    QCOMPARE(test.tabBar()->tabText(0), u"A"_s);
    QCOMPARE(test.tabBar()->tabText(1), u"C"_s);
}

void TestWindowFiles::manyFiles_keepTheirOwnProjects()
{
    TestWindow test;
    const QTemporaryDir folder;
    QStringList paths;
    for (int i = 0; i < 5; ++i) {
        const QString name = QString::number(i);
        paths.append(
            put(folder, name,
                "{\"tabName\": \"P" + name.toUtf8() + "\", \"trussLength\": 1" + name.toUtf8() + '}'));
    }
    test.window.openProjectFiles(paths);
    for (int i = 0; i < 5; ++i) {
        test.tabBar()->setCurrentIndex(i);
        QCOMPARE(LoadLogic::TrussLength, 10.0F + static_cast<float>(i));
        QCOMPARE(test.tabBar()->tabText(i), u'P' + QString::number(i));
    }
}

void TestWindowFiles::strangeProjects_areOpenedAsTheyAre_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("no length") << QByteArray(R"({"trussLength": 0, "motors": [{}], "loads": [{}]})");
    QTest::newRow("negative length") << QByteArray(R"({"trussLength": -5, "motors": [{"id": 1}]})");
    QTest::newRow("a million kilometres")
        << QByteArray(R"({"trussLength": 1e9, "motors": [{}, {"positionX": 1e9}]})");
    QTest::newRow("beyond single precision") << QByteArray(R"({"trussLength": 1e39, "limitCPL": 1e39})");
    QTest::newRow("duplicate ids") << QByteArray(R"({"motors": [{"id": 1}, {"id": 1, "positionX": 12}],
        "loads": [{"id": 1}, {"id": 1}]})");
    QTest::newRow("two motors under a load") << QByteArray(R"({"motors": [{"positionX": 6}, {"positionX": 6}],
        "loads": [{"positionX": 6, "mass": 100}]})");
    QTest::newRow("far outside") << QByteArray(
        R"({"motors": [{"positionX": -1e30}], "loads": [{"positionX": 1e30}]})");
    QTest::newRow("largest ids") << QByteArray(R"({"motors": [{"id": 2147483647}],
        "loads": [{"id": 2147483647, "groupId": 2147483647}]})");
}

void TestWindowFiles::strangeProjects_areOpenedAsTheyAre()
{
    QFETCH(const QByteArray, json);
    TestWindow test;
    const QTemporaryDir folder;
    QVERIFY(test.window.openProjectFile(put(folder, u"a.rig"_s, json)));
    test.window.grab(); // paints everything once
    test.window.onAddMotorClicked();
    test.window.onAddLoadClicked();
    test.window.undo();
    QVERIFY(ProjectFile::fromBytes(ProjectFile::toBytes(test.window.captureCurrentState())).has_value());
}

QTEST_MAIN(TestWindowFiles)
#include "tst_windowfiles.moc"
