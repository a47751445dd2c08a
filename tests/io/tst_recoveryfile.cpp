#include "engine/Edits.h"
#include "engine/Statics.h"
#include "io/ProjectFile.h"
#include "io/RecoveryFile.h"
#include "io/RecoveryProject.h"
#include "support/Files.h"
#include "support/Sessions.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <QTest>

#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;

using Failure = RecoveryFile::Failure;
using Support::screenOf;
using Support::sessionOf;
using Support::workOf;

/// What is written for recovery comes back as it was.
class TestRecoveryFile : public QObject
{
    Q_OBJECT

private slots:
    void session_comesBack();
    void arrays_comeBackAsArrays();
    void figures_areBitEqual();
    void numbersThatJsonHasNot_comeBack();
    void anyNumber_comesBackToTheBit();
    void project_isThatOfAProjectFile();
    void otherDocuments_areDamaged_data();
    void otherDocuments_areDamaged();
    void laterVersions_areNotRead();
    void everyCutDocument_isDamaged();
    void wrongMembers_countAsMissing();
    void aFileThatIsNotOwn_isNotOpened();
    void isSame_noticesEveryChange();
    void isUntouched_asANewTabAndAResetAre();

private:
    static ProjectState again(const ProjectState& project)
    {
        const RecoveryFile::Content content =
            RecoveryFile::fromBytes(RecoveryFile::toBytes(sessionOf({project})));
        return content.session.tabs.value(0);
    }
};

void TestRecoveryFile::session_comesBack()
{
    const QDateTime time(QDate(2024, 3, 1), QTime(1, 2, 3, 4));
    RecoverySession session = sessionOf({workOf(u"Uno"_s), workOf(u"Dos «ñ» \"<b>"_s, 0.1F)});
    session.program = u"2.0.0"_s;
    session.process = 4'000'000'000;
    session.boot = u"arranque"_s;
    session.current = 1;
    for (const auto reason : {KeptProject::Reason::Closed, KeptProject::Reason::Reset,
                              KeptProject::Reason::Replaced, KeptProject::Reason::Overwritten})
        session.kept.append({screenOf(u"Cerrado"_s, 3), time, reason});

    const RecoveryFile::Content content = RecoveryFile::fromBytes(RecoveryFile::toBytes(session));
    QCOMPARE(content.failure, Failure::None);
    const RecoverySession& read = content.session;
    QCOMPARE(read.program, session.program);
    QCOMPARE(read.process, session.process);
    QCOMPARE(read.boot, session.boot);
    QCOMPARE(read.time, session.time);
    QCOMPARE(read.current, 1);
    QCOMPARE(read.tabs.size(), 2);
    for (qsizetype i = 0; i < 2; ++i) {
        QCOMPARE(read.tabs.at(i).tabName, session.tabs.at(i).tabName);
        QVERIFY(RecoveryProject::isSame(read.tabs.at(i), session.tabs.at(i)));
    }
    QCOMPARE(read.kept.size(), 4);
    for (qsizetype i = 0; i < 4; ++i) {
        QCOMPARE(read.kept.at(i).reason, session.kept.at(i).reason);
        QCOMPARE(read.kept.at(i).time, time);
        QVERIFY(RecoveryProject::isSame(read.kept.at(i).project, session.kept.at(i).project));
    }
}

void TestRecoveryFile::arrays_comeBackAsArrays()
{
    ProjectState project = screenOf(u"Pantalla"_s, 8);
    project.screenWidth = 5.5F;
    project.screenHeight = 2.25F;
    project.screenWeightM2 = 33.3F;
    project.loads[3].screenHeight = 2.0F; // a kind of its own in the middle
    const ProjectState read = again(project);
    QVERIFY(RecoveryProject::isSame(read, project));
    QVERIFY(!Project::isArraySegment(read.loads.at(0)));
    for (qsizetype i = 1; i < read.loads.size(); ++i) {
        QVERIFY(Project::isArraySegment(read.loads.at(i)));
        QCOMPARE(read.loads.at(i).type, u"Video_Segment"_s);
        QCOMPARE(read.loads.at(i).screenHeight, i == 3 ? 2.0F : 3.1F);
        QCOMPARE(read.loads.at(i).screenWeightM2, 38.7F);
        QCOMPARE(read.loads.at(i).bumperWeightPerMeter, 11.3F);
    }
    QCOMPARE(read.screenWidth, 5.5F);
    QCOMPARE(read.screenHeight, 2.25F);
    QCOMPARE(read.screenWeightM2, 33.3F);
}

void TestRecoveryFile::figures_areBitEqual()
{
    ProjectState project = screenOf(u"Cifras"_s, 20);
    project.trussLength = 17.3F;
    project.motors[1].positionX = 15.55F;
    project.motors[0].positionX = 1.0F / 3.0F;
    const ProjectState before = Statics::solved(project);
    const ProjectState after = Statics::solved(again(project));
    QCOMPARE(std::memcmp(&before.trussStressPercentage, &after.trussStressPercentage, sizeof(float)), 0);
    QCOMPARE(before.isUnstable, after.isUnstable);
    QCOMPARE(before.motors.size(), after.motors.size());
    for (qsizetype i = 0; i < before.motors.size(); ++i) {
        QCOMPARE(std::memcmp(&before.motors.at(i).totalLoad, &after.motors.at(i).totalLoad, sizeof(float)),
                 0);
        QCOMPARE(std::memcmp(&before.motors.at(i).staticLoad, &after.motors.at(i).staticLoad, sizeof(float)),
                 0);
    }
}

void TestRecoveryFile::numbersThatJsonHasNot_comeBack()
{
    using Limits = std::numeric_limits<float>;
    for (const float value :
         {Limits::quiet_NaN(), -Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), -0.0F,
          Limits::denorm_min(), Limits::max(), Limits::lowest()}) {
        ProjectState project = screenOf(u"Raro"_s, 2);
        project.trussLength = value;
        project.limitCPL = value;
        project.screenWidth = value;
        project.screenWeightM2 = value;
        project.ledTotalWeight = value;
        project.motors[1].capacity = value;
        project.motors[0].positionX = value;
        project.loads[0].mass = value;
        project.loads[2].screenHeight = value;
        project.loads[2].bumperWeightPerMeter = value;
        QVERIFY2(RecoveryProject::isSame(again(project), project), qPrintable(QString::number(value)));
    }
}

void TestRecoveryFile::anyNumber_comesBackToTheBit()
{
    std::mt19937 random(20'240'229);
    const auto any = [&random] {
        const auto bits = static_cast<std::uint32_t>(random());
        float value = 0.0F;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    };
    ProjectState project;
    for (int i = 0; i < 2000; ++i) {
        ActiveLoad load;
        load.mass = any();
        load.positionX = any();
        load.screenWidth = any();
        load.screenHeight = any();
        load.screenWeightM2 = any();
        load.bumperWeightPerMeter = any();
        load.cableWeightPercent = any();
        project.loads.append(load);
        Motor motor;
        motor.positionX = any();
        motor.capacity = any();
        motor.selfWeight = any();
        project.motors.append(motor);
    }
    QVERIFY(RecoveryProject::isSame(again(project), project));
}

void TestRecoveryFile::project_isThatOfAProjectFile()
{
    const ProjectState project = screenOf(u"Archivo"_s, 4);
    const QJsonObject document =
        QJsonDocument::fromJson(RecoveryFile::toBytes(sessionOf({project}))).object();
    const QJsonObject inside = document["tabs"_L1].toArray().at(0).toObject()["project"_L1].toObject();
    QCOMPARE(QJsonDocument(inside).toJson(), ProjectFile::toBytes(project));
}

void TestRecoveryFile::otherDocuments_areDamaged_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("zeros") << QByteArray(4096, '\0');
    QTest::newRow("array") << QByteArray("[]");
    QTest::newRow("project") << ProjectFile::toBytes(workOf(u"Uno"_s));
    QTest::newRow("no version") << QByteArray(R"({"velmoraRecovery":"1"})");
    QTest::newRow("no such version") << QByteArray(R"({"velmoraRecovery":0})");
}

void TestRecoveryFile::otherDocuments_areDamaged()
{
    QFETCH(const QByteArray, bytes);
    QCOMPARE(RecoveryFile::fromBytes(bytes).failure, Failure::Damaged);
}

void TestRecoveryFile::laterVersions_areNotRead()
{
    QByteArray bytes = RecoveryFile::toBytes(sessionOf({workOf(u"Uno"_s)}));
    QVERIFY(bytes.contains(R"("velmoraRecovery":1)"));
    bytes.replace(R"("velmoraRecovery":1)", R"("velmoraRecovery":2)");
    const RecoveryFile::Content content = RecoveryFile::fromBytes(bytes);
    QCOMPARE(content.failure, Failure::Newer);
    QVERIFY(content.session.tabs.isEmpty());
}

void TestRecoveryFile::everyCutDocument_isDamaged()
{
    const QByteArray bytes = RecoveryFile::toBytes(sessionOf({workOf(u"Uno"_s)})).trimmed();
    for (qsizetype size = 0; size < bytes.size(); ++size)
        QCOMPARE(RecoveryFile::fromBytes(bytes.first(size)).failure, Failure::Damaged);
}

void TestRecoveryFile::wrongMembers_countAsMissing()
{
    const QByteArray bytes = R"({"velmoraRecovery":1,"current":"x","time":5,"kept":[7,{"reason":"?"}],"tabs":[
        {"project":{"loads":[{},{}],"motors":[{}]},
         "kinds":[{"count":-5,"type":"Video"},{"count":1e300,"type":"Audio"},{"count":1,"type":"Video"}],
         "bits":[["loads",-1,"mass",1],["loads",2,"mass",1],["motors",9e99,"capacity",1],["x"],5,["loads",1]]}]})";
    const RecoveryFile::Content content = RecoveryFile::fromBytes(bytes);
    QCOMPARE(content.failure, Failure::None);
    QCOMPARE(content.session.current, 0);
    QVERIFY(!content.session.time.isValid());
    QCOMPARE(content.session.kept.size(), 2);
    QCOMPARE(content.session.kept.at(1).reason, KeptProject::Reason::Closed);
    QCOMPARE(content.session.tabs.size(), 1);
    QCOMPARE(content.session.tabs.at(0).loads.size(), 2);
}

void TestRecoveryFile::aFileThatIsNotOwn_isNotOpened()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"sesion.json"_s);
    QCOMPARE(RecoveryFile::read(path).failure, Failure::NotOwn);
    Support::put(path, RecoveryFile::toBytes(sessionOf({workOf(u"Uno"_s)})));
    QCOMPARE(RecoveryFile::read(path).failure, Failure::None);
    QVERIFY(QFile::link(path, folder.filePath(u"enlace"_s)));
    QCOMPARE(RecoveryFile::read(folder.filePath(u"enlace"_s)).failure, Failure::NotOwn);
    QCOMPARE(RecoveryFile::read(folder.path()).failure, Failure::NotOwn);
}

void TestRecoveryFile::isSame_noticesEveryChange()
{
    const ProjectState project = screenOf(u"Uno"_s, 3);
    const QList<std::function<void(ProjectState&)>> changes{
        [](ProjectState& p) { p.trussLength = 12.0001F; },
        [](ProjectState& p) { p.trussSelfWeight = -0.0F; },
        [](ProjectState& p) { p.limitCPL += 1.0F; },
        [](ProjectState& p) { p.screenWidth += 1.0F; },
        [](ProjectState& p) { p.screenHeight += 1.0F; },
        [](ProjectState& p) { p.screenWeightM2 += 1.0F; },
        [](ProjectState& p) { p.bumperWeightPerMeter = 0.0F; },
        [](ProjectState& p) { p.cableWeightPercent = 0.0F; },
        [](ProjectState& p) { p.ledTotalWeight = 1.0F; },
        [](ProjectState& p) { p.motors.removeLast(); },
        [](ProjectState& p) { p.motors[0].id = 7; },
        [](ProjectState& p) { p.motors[0].modelName = u"x"_s; },
        [](ProjectState& p) { p.motors[0].positionX = 1.0F; },
        [](ProjectState& p) { p.motors[0].capacity = 1.0F; },
        [](ProjectState& p) { p.motors[0].selfWeight = 1.0F; },
        [](ProjectState& p) { p.loads.removeFirst(); },
        [](ProjectState& p) { p.loads[1].id = 99; },
        [](ProjectState& p) { p.loads[1].groupId = 7; },
        [](ProjectState& p) { p.loads[1].mass = 1.0F; },
        [](ProjectState& p) { p.loads[1].positionX = 1.0F; },
        [](ProjectState& p) { p.loads[1].type = u"Video"_s; },
        [](ProjectState& p) { p.loads[1].name = u"x"_s; },
        [](ProjectState& p) { p.loads[1].screenWidth = 9.0F; },
        [](ProjectState& p) { p.loads[1].screenHeight = 9.0F; },
        [](ProjectState& p) { p.loads[1].screenWeightM2 = 9.0F; },
        [](ProjectState& p) { p.loads[1].bumperWeightPerMeter = 9.0F; },
        [](ProjectState& p) { p.loads[1].cableWeightPercent = 9.0F; },
    };
    for (const auto& change : changes) {
        ProjectState changed = project;
        QVERIFY(RecoveryProject::isSame(changed, project));
        change(changed);
        QVERIFY(!RecoveryProject::isSame(changed, project));
        QVERIFY(RecoveryProject::isSame(again(changed), changed));
    }
    ProjectState solved = Statics::solved(project);
    solved.tabName = u"Otro"_s;
    QVERIFY(RecoveryProject::isSame(solved, project));
}

void TestRecoveryFile::isUntouched_asANewTabAndAResetAre()
{
    for (const float weight : {25.0F, 50.0F})
        QVERIFY(RecoveryProject::isUntouched(Edits::freshProject(u"Proyecto 9"_s, weight)));
    const ProjectState fresh = Edits::freshProject(u"Proyecto 9"_s, 50.0F);
    QVERIFY(RecoveryProject::isUntouched(Statics::solved(fresh)));
    ProjectState longer = fresh;
    longer.trussLength = 12.5F;
    QVERIFY(!RecoveryProject::isUntouched(longer));
    ProjectState heavier = fresh;
    heavier.trussSelfWeight = 9.0F;
    QVERIFY(!RecoveryProject::isUntouched(heavier));
    ProjectState stronger = fresh;
    stronger.limitCPL = 2000.0F;
    QVERIFY(!RecoveryProject::isUntouched(stronger));
    ProjectState moved = fresh;
    moved.motors[0].positionX = 1.0F;
    QVERIFY(!RecoveryProject::isUntouched(moved));
    QVERIFY(!RecoveryProject::isUntouched(workOf(u"Uno"_s)));
    QVERIFY(!RecoveryProject::isUntouched({})); // its motors were taken away
}

QTEST_GUILESS_MAIN(TestRecoveryFile)
#include "tst_recoveryfile.moc"
