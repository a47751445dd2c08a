#include "io/ProjectFile.h"
#include "io/SafeFile.h"
#include "support/Files.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include <thread>

#include <fcntl.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

using Failure = ProjectFile::Failure;

namespace
{

constexpr int PATIENT = 20'000;  // [ms]
constexpr int IMPATIENT = 300;   // [ms]
constexpr qint64 A_WHILE = 5000; // [ms]

/// Two ends of a pipe without a name, as a shell's "<(…)" is handed over.
class Pipe
{
public:
    Pipe()
    {
        m_isOpen = pipe2(m_ends, O_CLOEXEC) == 0;
    }
    ~Pipe()
    {
        close(m_ends[0]);
        finish();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    [[nodiscard]] bool isOpen() const
    {
        return m_isOpen;
    }
    [[nodiscard]] QString path() const
    {
        return u"/dev/fd/"_s + QString::number(m_ends[0]);
    }
    /// Returns whether all of it was taken.
    bool write(const QByteArray& bytes)
    {
        qint64 done = 0;
        while (done < bytes.size()) {
            const ssize_t written =
                ::write(m_ends[1], bytes.constData() + done, static_cast<std::size_t>(bytes.size() - done));
            if (written <= 0)
                return false;
            done += written;
        }
        return true;
    }
    void finish()
    {
        if (m_ends[1] >= 0)
            close(m_ends[1]);
        m_ends[1] = -1;
    }

private:
    int m_ends[2] = {-1, -1};
    bool m_isOpen = false;
};

} // namespace

/// What can be read once: pipes, with and without a name.
class TestPipes : public QObject
{
    Q_OBJECT

private slots:
    void file_isRead();
    void pipe_isReadToItsEnd();
    void pipe_thatIsSlow_isWaitedFor();
    void namedPipe_isWaitedFor();
    void namedPipe_ofNobody_isUnreadable();
    void pipe_thatFallsSilent_isUnreadable();
    void pipe_isReadNoFurtherThanWanted();
    void emptyPipe_isNoProject();
    void terminal_isUnreadableAtOnce();
    void devicesAndFolders_areUnreadable_data();
    void devicesAndFolders_areUnreadable();
};

void TestPipes::file_isRead()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    Support::put(path, R"({"tabName": "Gira"})");
    QCOMPARE(ProjectFile::readOnce(path).project.tabName, u"Gira"_s);
    QCOMPARE(ProjectFile::readOnce(path).project.tabName, u"Gira"_s);
    Support::put(path, "[]");
    QCOMPARE(ProjectFile::readOnce(path).failure, Failure::NotAProject);
    QCOMPARE(ProjectFile::readOnce(folder.filePath(u"nada"_s)).failure, Failure::Unreadable);
}

void TestPipes::pipe_isReadToItsEnd()
{
    Pipe pipe;
    QVERIFY(pipe.isOpen());
    QVERIFY(pipe.write(R"({"tabName": "Gira"})"));
    pipe.finish();
    const ProjectFile::Content content = ProjectFile::readOnce(pipe.path());
    QCOMPARE(content.failure, Failure::None);
    QCOMPARE(content.project.tabName, u"Gira"_s);
}

// Larger than any pipe holds, in two parts with a pause.
void TestPipes::pipe_thatIsSlow_isWaitedFor()
{
    Pipe pipe;
    QVERIFY(pipe.isOpen());
    const QByteArray half(3'000'000, 'x');
    bool isTaken = false;
    std::thread writer([&] {
        isTaken = pipe.write(half);
        usleep(200'000);
        isTaken = pipe.write(half) && isTaken;
        pipe.finish();
    });
    const std::optional<QByteArray> bytes = SafeFile::readOnce(pipe.path(), 10'000'000, PATIENT);
    writer.join();
    QVERIFY(isTaken);
    QVERIFY(bytes == half + half);
}

// Opening it tells nothing yet of those who are going to write.
void TestPipes::namedPipe_isWaitedFor()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"tubo"_s);
    QCOMPARE(mkfifo(QFile::encodeName(path).constData(), S_IRUSR | S_IWUSR), 0);
    std::thread writer([&path] {
        usleep(200'000);
        const int end = open(QFile::encodeName(path).constData(), O_WRONLY | O_CLOEXEC);
        [[maybe_unused]] const ssize_t written = ::write(end, "hola", 4);
        close(end);
    });
    const std::optional<QByteArray> bytes = SafeFile::readOnce(path, 100, PATIENT);
    writer.join();
    QCOMPARE(bytes.value_or(QByteArray("unreadable")), QByteArray("hola"));
}

void TestPipes::namedPipe_ofNobody_isUnreadable()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"tubo"_s);
    QCOMPARE(mkfifo(QFile::encodeName(path).constData(), S_IRUSR | S_IWUSR), 0);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(ProjectFile::readOnce(path, IMPATIENT).failure, Failure::Unreadable);
    QVERIFY(timer.elapsed() >= IMPATIENT);
    QVERIFY(timer.elapsed() < A_WHILE);
}

// Half a project is none, even if it could be read.
void TestPipes::pipe_thatFallsSilent_isUnreadable()
{
    Pipe pipe;
    QVERIFY(pipe.isOpen());
    QVERIFY(pipe.write(R"({"tabName": "Gira"})"));
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(ProjectFile::readOnce(pipe.path(), IMPATIENT).failure, Failure::Unreadable);
    QVERIFY(timer.elapsed() < A_WHILE);
}

// The writer is still there: what is enough is not waited on.
void TestPipes::pipe_isReadNoFurtherThanWanted()
{
    Pipe pipe;
    QVERIFY(pipe.isOpen());
    QVERIFY(pipe.write("0123456789"));
    const std::optional<QByteArray> bytes = SafeFile::readOnce(pipe.path(), 4, IMPATIENT);
    QCOMPARE(bytes.value_or(QByteArray("unreadable")), QByteArray("0123"));
    const std::optional<QByteArray> rest = SafeFile::readOnce(pipe.path(), 6, IMPATIENT);
    QCOMPARE(rest.value_or(QByteArray("unreadable")), QByteArray("456789"));
}

void TestPipes::emptyPipe_isNoProject()
{
    Pipe pipe;
    QVERIFY(pipe.isOpen());
    pipe.finish();
    QCOMPARE(ProjectFile::readOnce(pipe.path()).failure, Failure::NotAProject);
}

void TestPipes::terminal_isUnreadableAtOnce()
{
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0)
        QSKIP("No terminals here");
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(ProjectFile::readOnce(QString::fromLocal8Bit(ptsname(terminal)), PATIENT).failure,
             Failure::Unreadable);
    QVERIFY(timer.elapsed() < A_WHILE);
    close(terminal);
}

void TestPipes::devicesAndFolders_areUnreadable_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("endless") << u"/dev/zero"_s;
    QTest::newRow("empty") << u"/dev/null"_s;
    QTest::newRow("folder") << u"/"_s;
    QTest::newRow("nothing there") << u"/dev/no-such-device"_s;
    QTest::newRow("zero character") << u"/dev/fd/0\0"_s + QChar(0) + u"x"_s;
    QTest::newRow("no name") << QString();
}

void TestPipes::devicesAndFolders_areUnreadable()
{
    QFETCH(const QString, path);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(ProjectFile::readOnce(path, PATIENT).failure, Failure::Unreadable);
    QVERIFY(timer.elapsed() < A_WHILE); // there is nothing to wait for
}

QTEST_GUILESS_MAIN(TestPipes)
#include "tst_pipes.moc"
