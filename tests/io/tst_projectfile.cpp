#include "io/ProjectFile.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <chrono>
#include <limits>
#include <thread>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

using namespace Qt::StringLiterals;

using ProjectFile::Failure;

namespace
{

ProjectState smallProject()
{
    Motor motor;
    motor.id = 7;
    motor.positionX = 2.5F;
    motor.modelName = u"Motor \"A\" 50%1 <b>ñ😀"_s;
    ActiveLoad load;
    load.id = 41;
    load.mass = 69.55F;
    load.positionX = 6.25F;
    load.type = u"Video_Segment"_s;
    load.name = u"LED Segment"_s;
    load.groupId = 100;
    load.screenWidth = 4.0F;
    load.screenHeight = 3.0F;
    load.screenWeightM2 = 40.0F;
    load.bumperWeightPerMeter = 10.0F;
    load.cableWeightPercent = 8.5F;

    ProjectState project;
    project.tabName = u"Gira 2026"_s;
    project.motors = {motor};
    project.loads = {load};
    return project;
}

QJsonObject parsed(const ProjectState& project)
{
    return QJsonDocument::fromJson(ProjectFile::toBytes(project)).object();
}

ProjectState read(const QByteArray& json)
{
    return ProjectFile::fromBytes(json).value();
}

#ifdef Q_OS_LINUX
/// What this process has of memory addresses, and `more` [bytes], for as long as this lives.
class LimitedMemory
{
public:
    explicit LimitedMemory(rlim_t more)
    {
        QFile status(u"/proc/self/statm"_s);
        if (!status.open(QIODevice::ReadOnly) || getrlimit(RLIMIT_AS, &m_before) != 0)
            qFatal("no such limit");
        const QByteArray pages = status.readAll().split(' ').constFirst();
        rlimit tight = m_before;
        tight.rlim_cur = pages.toULongLong() * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + more;
        setrlimit(RLIMIT_AS, &tight);
    }
    ~LimitedMemory()
    {
        setrlimit(RLIMIT_AS, &m_before);
    }
    LimitedMemory(const LimitedMemory&) = delete;
    LimitedMemory& operator=(const LimitedMemory&) = delete;

private:
    rlimit m_before{};
};
#endif

#ifdef Q_OS_UNIX
/// Puts an empty project and the pipe at `path` in turn, as fast as it can, for as long as this lives.
class Changeling
{
public:
    Changeling(const QString& path, const QByteArray& pipe)
        : m_path(QFile::encodeName(path))
        , m_pipe(pipe)
        , m_thread([this] { change(); })
    {
    }
    ~Changeling()
    {
        m_goesOn = false;
        m_thread.join();
    }
    Changeling(const Changeling&) = delete;
    Changeling& operator=(const Changeling&) = delete;

private:
    void change()
    {
        const QByteArray other = m_path + ".otro";
        while (m_goesOn) {
            if (link(m_pipe.constData(), other.constData()) != 0)
                qFatal("no second name for the pipe");
            rename(other.constData(), m_path.constData());
            QFile file(QFile::decodeName(other));
            if (file.open(QIODevice::WriteOnly) && file.write("{}") == 2)
                file.close();
            rename(other.constData(), m_path.constData());
        }
    }

    QByteArray m_path;
    QByteArray m_pipe;
    std::atomic<bool> m_goesOn = true;
    std::thread m_thread;
};
#endif

} // namespace

class TestProjectFile : public QObject
{
    Q_OBJECT

private slots:
    void loads_keepTheirOwnValues();
    void emptyProject_isWrittenWithEveryMember();
    void members_areThoseOfTheFormat();
    void weightOfTheTruss_isWidenedExactly();
    void notFinite_isWrittenAsNull();
    void emptyObject_givesTheDefaults();
    void missingWeightAndCpl_areThoseOfTheFallback();
    void wrongTypes_countAsMissing();
    void wrongTypeInAMotor_isItsDefault();
    void wrongTypeInALoad_isItsDefault();
    void elementThatIsNoObject_isMadeOfDefaults();
    void listThatIsNoArray_isEmpty();
    void integers_mustBeIntegral_data();
    void integers_mustBeIntegral();
    void typeWord_isNeverRead();
    void whatTheFileDoesNotCarry_startsAsANewRecord();
    void numberBeyondSinglePrecision_isStillANumber();
    void valuesOutOfRange_areTakenAsTheyCome();
    void bytesThatAreNoObject_areNoProject_data();
    void bytesThatAreNoObject_areNoProject();
    void truncatedAnywhere_isNoProject();
    void deeplyNested_isNoProjectAndNoCrash();
    void writeRead_keepsWhatTheFormatCarries();
    void saveOpenSave_givesTheSameBytes();
    void missingFile_isUnreadable();
    void folder_isUnreadable();
    void pipe_isUnreadableWithoutWaiting();
    void fileThatBecomesAPipe_isNotWaitedFor();
    void endlessDevice_isUnreadable();
    void errorWhileReading_isUnreadable();
    void smallFile_takesLittleMemory();
    void fileThatCannotBeOpened_isUnreadable();
    void hundredMegabytes_areRefusedInTime();
    void hugeNumberOfLoads_isRead();
    void write_intoAMissingFolder_fails();
};

void TestProjectFile::emptyProject_isWrittenWithEveryMember()
{
    // Keys ascend, four blanks a level, one member a line, a line feed at the end.
    const QByteArray expected = R"({
    "bumperWeightPerMeter": 10,
    "cableWeightPercent": 7,
    "ledTotalWeight": 0,
    "limitCPL": 1600,
    "loads": [
    ],
    "motors": [
    ],
    "tabName": "Proyecto",
    "trussLength": 12,
    "trussSelfWeight": 8.399999618530273
}
)";
    QCOMPARE(ProjectFile::toBytes(ProjectState()), expected);
}

void TestProjectFile::members_areThoseOfTheFormat()
{
    const QJsonObject object = parsed(smallProject());
    QCOMPARE(object.keys(), QStringList({u"bumperWeightPerMeter"_s, u"cableWeightPercent"_s,
                                         u"ledTotalWeight"_s, u"limitCPL"_s, u"loads"_s, u"motors"_s,
                                         u"tabName"_s, u"trussLength"_s, u"trussSelfWeight"_s}));
    QCOMPARE(object[u"motors"_s][0].toObject().keys(),
             QStringList({u"capacity"_s, u"id"_s, u"modelName"_s, u"positionX"_s, u"selfWeight"_s}));
    QCOMPARE(object[u"loads"_s][0].toObject().keys(),
             QStringList({u"cableWeightPercent"_s, u"groupId"_s, u"id"_s, u"mass"_s, u"name"_s,
                          u"positionX"_s, u"screenWidth"_s, u"type"_s}));
    QCOMPARE(object[u"loads"_s][0][u"type"_s].toString(), u"Video_Segment"_s);
    QCOMPARE(object[u"motors"_s][0][u"id"_s].toInt(), 7);
}

void TestProjectFile::weightOfTheTruss_isWidenedExactly()
{
    const QByteArray bytes = ProjectFile::toBytes(ProjectState());
    QVERIFY(bytes.contains("\"trussSelfWeight\": 8.399999618530273\n"));
    QVERIFY(bytes.contains("\"trussLength\": 12,\n"));
}

void TestProjectFile::notFinite_isWrittenAsNull()
{
    ProjectState project;
    project.trussLength = std::numeric_limits<float>::infinity();
    project.limitCPL = std::numeric_limits<float>::quiet_NaN();
    const QJsonObject object = parsed(project);
    QVERIFY(object[u"trussLength"_s].isNull());
    QVERIFY(object[u"limitCPL"_s].isNull());
}

void TestProjectFile::emptyObject_givesTheDefaults()
{
    const ProjectState project = read("{}");
    QCOMPARE(project.tabName, u"Proyecto Cargado"_s);
    QCOMPARE(project.trussLength, 12.0F);
    QCOMPARE(project.trussSelfWeight, 8.4F);
    QCOMPARE(project.limitCPL, 1600.0F);
    QCOMPARE(project.screenWidth, 4.0F);
    QCOMPARE(project.screenHeight, 3.0F);
    QCOMPARE(project.screenWeightM2, 40.0F);
    QCOMPARE(project.bumperWeightPerMeter, 10.0F);
    QCOMPARE(project.cableWeightPercent, 7.0F);
    QCOMPARE(project.ledTotalWeight, 0.0F);
    QCOMPARE(project.selectedLoadId, -1);
    QCOMPARE(project.projectCounter, 100);
    QVERIFY(project.motors.isEmpty());
    QVERIFY(project.loads.isEmpty());
}

void TestProjectFile::missingWeightAndCpl_areThoseOfTheFallback()
{
    const Truss fallback{12.0F, 15.25F, 820.0F};
    for (const QByteArray& json :
         {QByteArray("{}"), QByteArray(R"({"trussSelfWeight": "9", "limitCPL": null})")}) {
        const ProjectState project = ProjectFile::fromBytes(json, fallback).value();
        QCOMPARE(project.trussSelfWeight, 15.25F);
        QCOMPARE(project.limitCPL, 820.0F);
        QCOMPARE(project.trussLength, 12.0F);
    }
}

void TestProjectFile::wrongTypes_countAsMissing()
{
    const ProjectState project = read(R"({"tabName": 5, "trussLength": "20", "bumperWeightPerMeter": true,
        "cableWeightPercent": [], "ledTotalWeight": {}, "motors": {}, "loads": "x"})");
    QCOMPARE(project.tabName, u"Proyecto Cargado"_s);
    QCOMPARE(project.trussLength, 12.0F);
    QCOMPARE(project.bumperWeightPerMeter, 10.0F);
    QCOMPARE(project.cableWeightPercent, 7.0F);
    QCOMPARE(project.ledTotalWeight, 0.0F);
    QVERIFY(project.motors.isEmpty());
    QVERIFY(project.loads.isEmpty());
}

void TestProjectFile::wrongTypeInAMotor_isItsDefault()
{
    const ProjectState project = read(R"({"motors": [{"id": "3", "positionX": null, "capacity": "1000",
        "modelName": 12, "selfWeight": false}, {"capacity": "2500"}]})");
    QCOMPARE(project.motors.size(), 2);
    const Motor& motor = project.motors.at(0);
    QCOMPARE(motor.id, 0);
    QCOMPARE(motor.positionX, 0.0F);
    QCOMPARE(motor.capacity, 1000.0F);
    QCOMPARE(motor.modelName, u"Motor"_s);
    QCOMPARE(motor.selfWeight, 50.0F);
    QCOMPARE(project.motors.at(1).capacity, 1000.0F); // the default, not the number in the string
}

void TestProjectFile::wrongTypeInALoad_isItsDefault()
{
    const ProjectState project =
        read(R"({"loads": [{"id": "3", "groupId": "100", "positionX": "1", "mass": "5",
        "name": 9, "screenWidth": [], "cableWeightPercent": "9"}]})");
    const ActiveLoad& load = project.loads.at(0);
    QCOMPARE(load.id, 0);
    QCOMPARE(load.groupId, 0);
    QCOMPARE(load.positionX, 0.0F);
    QCOMPARE(load.mass, 0.0F);
    QCOMPARE(load.name, QString());
    QCOMPARE(load.screenWidth, 0.0F);
    QCOMPARE(load.cableWeightPercent, 7.0F);
}

void TestProjectFile::elementThatIsNoObject_isMadeOfDefaults()
{
    const ProjectState project = read(R"({"motors": [1, null, "x", [2]], "loads": [true, {}]})");
    QCOMPARE(project.motors.size(), 4);
    QCOMPARE(project.motors.at(3).capacity, 1000.0F);
    QCOMPARE(project.motors.at(3).modelName, u"Motor"_s);
    QCOMPARE(project.loads.size(), 2);
    QCOMPARE(project.loads.at(0).mass, 0.0F);
    QCOMPARE(project.loads.at(0).groupId, 0);
}

void TestProjectFile::listThatIsNoArray_isEmpty()
{
    QVERIFY(read(R"({"motors": 3, "loads": {"0": {}}})").motors.isEmpty());
    QVERIFY(read(R"({"motors": 3, "loads": {"0": {}}})").loads.isEmpty());
}

void TestProjectFile::integers_mustBeIntegral_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<int>("expected");
    QTest::newRow("integer") << QByteArray("42") << 42;
    QTest::newRow("negative") << QByteArray("-1") << -1;
    QTest::newRow("integral number") << QByteArray("3.0") << 3;
    QTest::newRow("fraction") << QByteArray("3.5") << 0;
    QTest::newRow("too large") << QByteArray("2147483648") << 0;
    QTest::newRow("enormous") << QByteArray("1e300") << 0;
    QTest::newRow("text") << QByteArray("\"42\"") << 0;
}

void TestProjectFile::integers_mustBeIntegral()
{
    QFETCH(const QByteArray, value);
    QFETCH(const int, expected);
    const ProjectState project = read("{\"motors\": [{\"id\": " + value + "}], \"loads\": [{\"id\": " + value
                                      + ", \"groupId\": " + value + "}]}");
    QCOMPARE(project.motors.at(0).id, expected);
    QCOMPARE(project.loads.at(0).id, expected);
    QCOMPARE(project.loads.at(0).groupId, expected);
}

void TestProjectFile::typeWord_isNeverRead()
{
    QCOMPARE(read(ProjectFile::toBytes(smallProject())).loads.at(0).type, QString());
    QCOMPARE(read(R"({"loads": [{}]})").loads.at(0).type, QString());
}

void TestProjectFile::whatTheFileDoesNotCarry_startsAsANewRecord()
{
    const ProjectState project = read(ProjectFile::toBytes(smallProject()));
    const ActiveLoad& load = project.loads.at(0);
    QCOMPARE(load.screenHeight, 0.0F);
    QCOMPARE(load.screenWeightM2, 0.0F);
    QCOMPARE(load.bumperWeightPerMeter, 0.0F);
    QCOMPARE(project.motors.at(0).staticLoad, 0.0F);
    QCOMPARE(project.motors.at(0).totalLoad, 0.0F);
}

void TestProjectFile::numberBeyondSinglePrecision_isStillANumber()
{
    const ProjectState project = read(R"({"trussLength": 1e39, "limitCPL": -1e300})");
    QVERIFY(project.trussLength > 1e38F);
    QVERIFY(project.limitCPL < -1e38F);
}

void TestProjectFile::valuesOutOfRange_areTakenAsTheyCome()
{
    const ProjectState project =
        read(R"({"trussLength": -5, "motors": [{"id": 1, "positionX": 1e9, "capacity": 0},
        {"id": 1, "positionX": -3}], "loads": [{"mass": -7}]})");
    QCOMPARE(project.trussLength, -5.0F);
    QCOMPARE(project.motors.at(0).positionX, 1e9F);
    QCOMPARE(project.motors.at(0).capacity, 0.0F);
    QCOMPARE(project.motors.at(1).id, 1);
    QCOMPARE(project.loads.at(0).mass, -7.0F);
}

void TestProjectFile::bytesThatAreNoObject_areNoProject_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("blank") << QByteArray("  \n");
    QTest::newRow("array") << QByteArray("[{}]");
    QTest::newRow("number") << QByteArray("12");
    QTest::newRow("text") << QByteArray("hola");
    QTest::newRow("two objects") << QByteArray("{}{}");
    QTest::newRow("trailing comma") << QByteArray("{\"a\": 1,}");
    QTest::newRow("binary") << QByteArray("\x89PNG\r\n\x1a\n\0\0\0\rIHDR\xff\xfe", 18);
    QTest::newRow("zeros") << QByteArray(4096, '\0');
    QTest::newRow("number beyond double precision") << QByteArray("{\"trussLength\": 1e400}");
    QTest::newRow("broken utf-8") << QByteArray("{\"tabName\": \"\xff\xff\"}");
}

void TestProjectFile::bytesThatAreNoObject_areNoProject()
{
    QFETCH(const QByteArray, bytes);
    QVERIFY(!ProjectFile::fromBytes(bytes).has_value());
}

void TestProjectFile::truncatedAnywhere_isNoProject()
{
    const QByteArray whole = ProjectFile::toBytes(smallProject()).trimmed();
    for (qsizetype size = 0; size < whole.size(); ++size)
        QVERIFY2(!ProjectFile::fromBytes(whole.left(size)).has_value(), QByteArray::number(size).constData());
}

void TestProjectFile::deeplyNested_isNoProjectAndNoCrash()
{
    constexpr int DEPTH = 1'000'000;
    QVERIFY(!ProjectFile::fromBytes("{\"motors\": " + QByteArray(DEPTH, '[')).has_value());
    QVERIFY(!ProjectFile::fromBytes("{\"motors\": " + QByteArray(DEPTH, '[') + QByteArray(DEPTH, ']') + '}')
                 .has_value());
}

void TestProjectFile::writeRead_keepsWhatTheFormatCarries()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"prueba con espacios ñ.rig"_s);
    const ProjectState written = smallProject();
    QVERIFY(ProjectFile::write(path, written));

    const ProjectFile::Content content = ProjectFile::read(path);
    QCOMPARE(content.failure, Failure::None);
    QCOMPARE(content.project.tabName, written.tabName);
    const Motor& motor = content.project.motors.at(0);
    QCOMPARE(motor.id, 7);
    QCOMPARE(motor.positionX, 2.5F);
    QCOMPARE(motor.modelName, written.motors.at(0).modelName);
    const ActiveLoad& load = content.project.loads.at(0);
    QCOMPARE(load.id, 41);
    QCOMPARE(load.groupId, 100);
    QCOMPARE(load.mass, 69.55F);
    QCOMPARE(load.positionX, 6.25F);
    QCOMPARE(load.name, u"LED Segment"_s);
    QCOMPARE(load.screenWidth, 4.0F);
    QCOMPARE(load.cableWeightPercent, 8.5F);
}

void TestProjectFile::saveOpenSave_givesTheSameBytes()
{
    const QByteArray first = ProjectFile::toBytes(read(ProjectFile::toBytes(smallProject())));
    QCOMPARE(ProjectFile::toBytes(read(first)), first);
}

void TestProjectFile::missingFile_isUnreadable()
{
    const QTemporaryDir folder;
    QCOMPARE(ProjectFile::read(folder.filePath(u"nada.rig"_s)).failure, Failure::Unreadable);
    QCOMPARE(ProjectFile::read(QString()).failure, Failure::Unreadable);
}

void TestProjectFile::folder_isUnreadable()
{
    const QTemporaryDir folder;
    QCOMPARE(ProjectFile::read(folder.path()).failure, Failure::Unreadable);
}

void TestProjectFile::pipe_isUnreadableWithoutWaiting()
{
#ifdef Q_OS_UNIX
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"tubo"_s);
    QCOMPARE(mkfifo(QFile::encodeName(path).constData(), S_IRUSR | S_IWUSR), 0);
    QCOMPARE(ProjectFile::read(path).failure, Failure::Unreadable);
#else
    QSKIP("No named pipes here");
#endif
}

void TestProjectFile::endlessDevice_isUnreadable()
{
#ifdef Q_OS_UNIX
    QCOMPARE(ProjectFile::read(u"/dev/zero"_s).failure, Failure::Unreadable);
#else
    QSKIP("No such device here");
#endif
}

void TestProjectFile::fileThatBecomesAPipe_isNotWaitedFor()
{
#ifdef Q_OS_UNIX
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    const QByteArray pipe = QFile::encodeName(folder.filePath(u"tubo"_s));
    QCOMPARE(mkfifo(pipe.constData(), S_IRUSR | S_IWUSR), 0);
    std::atomic<bool> waits = true;
    std::atomic<bool> isPipeRead = false; // as an empty file would be
    std::thread reader;
    {
        const Changeling changeling(path, pipe);
        reader = std::thread([&] {
            const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(2);
            while (std::chrono::steady_clock::now() < end)
                isPipeRead = isPipeRead || ProjectFile::read(path).failure == Failure::NotAProject;
            waits = false;
        });
        for (int i = 0; i < 200 && waits; ++i)
            QTest::qWait(50);
    }
    // A reader that waits for somebody to write goes on when the pipe is opened for that.
    const bool waited = waits;
    while (waits) {
        const int writer = open(pipe.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        if (writer >= 0)
            close(writer);
    }
    reader.join();
    QVERIFY(!waited);
    QVERIFY(!isPipeRead);
#else
    QSKIP("No named pipes here");
#endif
}

// The memory of a process is a regular file, whose beginning cannot be read.
void TestProjectFile::errorWhileReading_isUnreadable()
{
#ifdef Q_OS_LINUX
    QCOMPARE(ProjectFile::read(u"/proc/self/mem"_s).failure, Failure::Unreadable);
#else
    QSKIP("No such file here");
#endif
}

void TestProjectFile::smallFile_takesLittleMemory()
{
#ifdef Q_OS_LINUX
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    QVERIFY(ProjectFile::write(path, smallProject()));
    constexpr rlim_t MORE = 48U << 20U; // [bytes]
    const LimitedMemory memory(MORE);
    QCOMPARE(ProjectFile::read(path).failure, Failure::None);
#else
    QSKIP("The limits of Linux");
#endif
}

void TestProjectFile::fileThatCannotBeOpened_isUnreadable()
{
#ifdef Q_OS_UNIX
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    QVERIFY(ProjectFile::write(path, smallProject()));

    // No permission would not keep root out; having too many files open keeps out everybody.
    rlimit before{};
    QCOMPARE(getrlimit(RLIMIT_NOFILE, &before), 0);
    rlimit none = before;
    none.rlim_cur = 0;
    QCOMPARE(setrlimit(RLIMIT_NOFILE, &none), 0);
    const Failure failure = ProjectFile::read(path).failure;
    QCOMPARE(setrlimit(RLIMIT_NOFILE, &before), 0);
    QCOMPARE(failure, Failure::Unreadable);
    QCOMPARE(ProjectFile::read(path).failure, Failure::None);
#else
    QSKIP("No such limit here");
#endif
}

void TestProjectFile::hundredMegabytes_areRefusedInTime()
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"grande.rig"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("{\"tabName\": \"") > 0);
    QVERIFY(file.resize(100 * 1024 * 1024)); // zeros: a hole on the disk
    file.close();

    QCOMPARE(ProjectFile::read(file.fileName()).failure, Failure::NotAProject);
}

void TestProjectFile::hugeNumberOfLoads_isRead()
{
    constexpr int COUNT = 20'000;
    ProjectState project;
    project.loads.fill(ActiveLoad(), COUNT);
    QCOMPARE(read(ProjectFile::toBytes(project)).loads.size(), COUNT);
}

void TestProjectFile::write_intoAMissingFolder_fails()
{
    const QTemporaryDir folder;
    QVERIFY(!ProjectFile::write(folder.filePath(u"no/existe.rig"_s), ProjectState()));
}

// Each differs from the first in some values and shares others with it.
void TestProjectFile::loads_keepTheirOwnValues()
{
    ProjectState project;
    project.loads = {{1, 100.0F, 1.0F, u"Audio"_s, u"PA"_s, -1, 0.0F, 0.0F, 0.0F, 0.0F, 7.0F},
                     {2, 100.0F, 2.5F, u"Audio"_s, u"Luz"_s, -1, 0.0F, 0.0F, 0.0F, 0.0F, 7.0F},
                     {3, 60.5F, 1.0F, u"Video_Segment"_s, u"PA"_s, 100, 4.0F, 0.0F, 0.0F, 0.0F, 9.0F}};
    const QJsonArray loads =
        QJsonDocument::fromJson(ProjectFile::toBytes(project)).object()["loads"_L1].toArray();
    QCOMPARE(loads.size(), 3);
    for (int i = 0; i < 3; ++i) {
        const ActiveLoad& load = project.loads.at(i);
        const QJsonObject object = loads.at(i).toObject();
        QCOMPARE(object["id"_L1].toInt(), load.id);
        QCOMPARE(object["mass"_L1].toDouble(), double(load.mass));
        QCOMPARE(object["positionX"_L1].toDouble(), double(load.positionX));
        QCOMPARE(object["type"_L1].toString(), load.type);
        QCOMPARE(object["name"_L1].toString(), load.name);
        QCOMPARE(object["groupId"_L1].toInt(), load.groupId);
        QCOMPARE(object["screenWidth"_L1].toDouble(), double(load.screenWidth));
        QCOMPARE(object["cableWeightPercent"_L1].toDouble(), double(load.cableWeightPercent));
    }
}

QTEST_GUILESS_MAIN(TestProjectFile)
#include "tst_projectfile.moc"
