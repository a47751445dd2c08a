#include "io/ConsolidatedReport.h"
#include "support/Anybody.h"
#include "support/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

using Support::contentOf;
using Support::put;

namespace
{

constexpr uint FIRST_USER = 41'001;
constexpr uint SECOND_USER = 41'002;
constexpr uint TEAM = 1234; ///< both belong to it, besides a group of their own

struct stat statusOf(const QString& path)
{
    struct stat status
    {
    };
    if (lstat(QFile::encodeName(path).constData(), &status) != 0)
        qFatal("no such file");
    return status;
}

QString sharing(const QString& path)
{
    const struct stat status = statusOf(path);
    return u"%1:%2 %3"_s.arg(QString::number(status.st_uid), QString::number(status.st_gid),
                             QString::number(status.st_mode & 07777U, 8));
}

void share(const QString& path, uint owner, uint group, mode_t mode)
{
    const QByteArray name = QFile::encodeName(path);
    QCOMPARE(chown(name.constData(), owner, group), 0);
    QCOMPARE(chmod(name.constData(), mode), 0);
}

/// How `command` ends when `user` runs it.
int becoming(uint user, const QStringList& command)
{
    const QString identity = QString::number(user);
    return QProcess::execute(u"setpriv"_s, QStringList{u"--reuid"_s, identity, u"--regid"_s, identity,
                                                       u"--groups"_s, QString::number(TEAM)}
                                               + command);
}

} // namespace

/// Two users of one group, and root, in the folders that they share.
class TestSharedFolders : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void teamFile_staysTheTeams_data();
    void teamFile_staysTheTeams();
    void fileInAStickyFolder_isSavedByWhoMayWriteIt();
    void fileOfAnotherUser_isNotSavedWithoutPermission();
    void readOnlyFile_isNotReplacedByRoot();
    void ownReportFile_isReplacedInAStickyFolder();
    void plantedFile_failsTheReportAndStays_data();
    void plantedFile_failsTheReportAndStays();
    void ownLink_isReplacedAndNotFollowed();
    void drawingThatStaysAnothers_endsTheReport_data();
    void drawingThatStaysAnothers_endsTheReport();

private:
    int run(uint user, const QStringList& arguments);
    void plant(const QString& kind, const QString& path, const QString& victim);
    [[nodiscard]] QString path(const QString& name) const
    {
        return m_folder->filePath(name);
    }
    /// What is left of copies of files that `user` wrote in place.
    [[nodiscard]] QStringList copies(uint user) const
    {
        return QDir(path(u"hogar%1/recuperacion"_s.arg(user))).entryList(QDir::Files | QDir::Hidden);
    }
    [[nodiscard]] QStringList entries() const
    {
        return QDir(path(u"comun"_s))
            .entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    QTemporaryDir m_program; ///< a copy of the saver: its own folder may be closed to others
    QString m_saver;
    std::unique_ptr<QTemporaryDir> m_folder;
    QByteArray m_new;
};

void TestSharedFolders::initTestCase()
{
    if (geteuid() != 0 || QStandardPaths::findExecutable(u"setpriv"_s).isEmpty())
        QSKIP("Only root can be two users, with setpriv");
    QCOMPARE(chmod(QFile::encodeName(m_program.path()).constData(), 0755), 0);
    m_saver = m_program.filePath(u"saver"_s);
    QVERIFY(QFile::copy(QStringLiteral(VELMORA_SAVER), m_saver));
    QCOMPARE(chmod(QFile::encodeName(m_saver).constData(), 0755), 0);
    if (becoming(FIRST_USER, {u"test"_s, u"-x"_s, m_saver}) != 0)
        QSKIP("The folder for temporary files is closed to other users");
    init();
    QCOMPARE(run(0, {u"--new"_s, path(u"nuevo"_s)}), 0);
    m_new = contentOf(path(u"nuevo"_s));
}

void TestSharedFolders::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    share(m_folder->path(), 0, 0, 0755);
    QVERIFY(QDir(m_folder->path()).mkdir(u"comun"_s));
    for (const uint user : {0U, FIRST_USER, SECOND_USER}) {
        const QString home = u"hogar%1"_s.arg(user);
        QVERIFY(QDir(m_folder->path()).mkdir(home));
        share(path(home), user, user, 0700);
    }
}

/// How the saver ends that `user` starts.
int TestSharedFolders::run(uint user, const QStringList& arguments)
{
    qputenv("XDG_DATA_HOME", QFile::encodeName(path(u"hogar%1"_s.arg(user))));
    return becoming(user, QStringList(m_saver) + arguments);
}

void TestSharedFolders::teamFile_staysTheTeams_data()
{
    QTest::addColumn<bool>("groupIsInherited");
    QTest::newRow("plain folder") << false;
    QTest::newRow("folder that gives its group") << true;
}

// The colleague after the next finds it as the first one did.
void TestSharedFolders::teamFile_staysTheTeams()
{
    QFETCH(const bool, groupIsInherited);
    share(path(u"comun"_s), 0, TEAM, groupIsInherited ? 02775 : 0775);
    const QString file = path(u"comun/gira.rig"_s);
    put(file, "viejo");
    share(file, FIRST_USER, TEAM, 0664);
    const QString before = sharing(file);
    for (const uint user : {SECOND_USER, FIRST_USER, SECOND_USER, 0U}) {
        QCOMPARE(run(user, {u"--old"_s, file}), 0);
        QVERIFY(contentOf(file) != m_new);
        QCOMPARE(run(user, {u"--new"_s, file}), 0);
        QCOMPARE(contentOf(file), m_new);
        QCOMPARE(sharing(file), before);
        QVERIFY(copies(user).isEmpty());
    }
    // Only the colleague could not take the file's place.
    QVERIFY(QFileInfo(path(u"hogar%1/recuperacion"_s.arg(SECOND_USER))).isDir());
    QVERIFY(!QFileInfo::exists(path(u"hogar%1/recuperacion"_s.arg(FIRST_USER))));
    QCOMPARE(entries(), QStringList(u"gira.rig"_s));
}

void TestSharedFolders::fileInAStickyFolder_isSavedByWhoMayWriteIt()
{
    share(path(u"comun"_s), 0, 0, 01777);
    const QString file = path(u"comun/gira.rig"_s);
    put(file, "viejo");
    share(file, FIRST_USER, FIRST_USER, 0666);
    const QString before = sharing(file);
    for (const uint user : {SECOND_USER, FIRST_USER, 0U}) {
        QCOMPARE(run(user, {u"--new"_s, file}), 0);
        QCOMPARE(contentOf(file), m_new);
        QCOMPARE(sharing(file), before);
    }
    QCOMPARE(entries(), QStringList(u"gira.rig"_s));
}

void TestSharedFolders::fileOfAnotherUser_isNotSavedWithoutPermission()
{
    share(path(u"comun"_s), 0, TEAM, 0775);
    const QString file = path(u"comun/gira.rig"_s);
    put(file, "viejo");
    share(file, FIRST_USER, TEAM, 0644);
    QCOMPARE(run(SECOND_USER, {u"--new"_s, file}), 1);
    QCOMPARE(contentOf(file), QByteArray("viejo"));
    QCOMPARE(entries(), QStringList(u"gira.rig"_s));
}

void TestSharedFolders::readOnlyFile_isNotReplacedByRoot()
{
    const QString file = path(u"comun/gira.rig"_s);
    put(file, "viejo");
    share(file, FIRST_USER, FIRST_USER, 0444);
    QCOMPARE(run(0, {u"--new"_s, file}), 1);
    QCOMPARE(contentOf(file), QByteArray("viejo"));
}

void TestSharedFolders::ownReportFile_isReplacedInAStickyFolder()
{
    share(path(u"comun"_s), 0, 0, 01777);
    const QString file = path(u"comun/truss_schema_0.jpg"_s);
    put(file, "viejo");
    share(file, SECOND_USER, SECOND_USER, 0644);
    QCOMPARE(run(SECOND_USER, {u"--publish"_s, file}), 0);
    QCOMPARE(contentOf(file), m_new);
    QCOMPARE(sharing(file), u"41002:41002 600"_s);
}

void TestSharedFolders::plantedFile_failsTheReportAndStays_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("file") << u"file"_s;
    QTest::newRow("link") << u"link"_s;
    QTest::newRow("link to nothing") << u"dangling"_s;
    QTest::newRow("folder") << u"folder"_s;
}

// Only the file's owner may remove it there: what was planted stays, and the report is told as failed.
void TestSharedFolders::plantedFile_failsTheReportAndStays()
{
    QFETCH(const QString, kind);
    share(path(u"comun"_s), 0, 0, 01777);
    const QString victim = path(u"hogar41002/secreto"_s);
    put(victim, "del segundo");
    share(victim, SECOND_USER, SECOND_USER, 0600);
    const QString planted = path(u"comun/truss_schema_0.jpg"_s);
    plant(kind, planted, victim);
    const QString before = sharing(planted);
    QCOMPARE(run(SECOND_USER, {u"--publish"_s, planted}), 1);
    QCOMPARE(sharing(planted), before);
    if (kind == u"file"_s)
        QCOMPARE(contentOf(planted), QByteArray("ajeno\n"));
    QCOMPARE(contentOf(victim), QByteArray("del segundo"));
    QCOMPARE(QDir(path(u"hogar41002"_s)).entryList(QDir::Files), QStringList(u"secreto"_s));
    QCOMPARE(entries(), QStringList(u"truss_schema_0.jpg"_s));
}

/// As the first user does it.
void TestSharedFolders::plant(const QString& kind, const QString& path, const QString& victim)
{
    QString command = u"echo ajeno >\"$0\""_s;
    if (kind == u"link"_s)
        command = u"ln -s -- \"$1\" \"$0\""_s;
    else if (kind == u"dangling"_s)
        command = u"ln -s -- \"$1.nuevo\" \"$0\""_s;
    else if (kind == u"folder"_s)
        command = u"mkdir -- \"$0\""_s;
    QCOMPARE(becoming(FIRST_USER, {u"sh"_s, u"-c"_s, command, path, victim}), 0);
}

void TestSharedFolders::ownLink_isReplacedAndNotFollowed()
{
    share(path(u"comun"_s), 0, 0, 01777);
    const QString victim = path(u"hogar41002/secreto"_s);
    put(victim, "del segundo");
    share(victim, SECOND_USER, SECOND_USER, 0600);
    const QString link = path(u"comun/truss_schema_0.jpg"_s);
    QVERIFY(QFile::link(victim, link));
    QCOMPARE(lchown(QFile::encodeName(link).constData(), SECOND_USER, SECOND_USER), 0);
    QCOMPARE(run(SECOND_USER, {u"--publish"_s, link}), 0);
    QCOMPARE(contentOf(victim), QByteArray("del segundo"));
    QVERIFY(!QFileInfo(link).isSymLink());
    QCOMPARE(contentOf(link), m_new);
}

void TestSharedFolders::drawingThatStaysAnothers_endsTheReport_data()
{
    QTest::addColumn<bool>("isLink");
    QTest::newRow("another user's picture") << false;
    QTest::newRow("another user's link to nothing") << true;
}

// In a sticky folder only the owner removes a file: the report would show it under the new text.
void TestSharedFolders::drawingThatStaysAnothers_endsTheReport()
{
    QFETCH(bool, isLink);
    const QString folder = path(u"pegajosa"_s);
    QVERIFY(QDir().mkdir(folder));
    QCOMPARE(chmod(QFile::encodeName(folder).constData(), 01777), 0);
    const QString planted = folder + u"/truss_schema_1.jpg"_s;
    if (isLink)
        QVERIFY(QFile::link(folder + u"/nowhere"_s, planted));
    else
        Support::put(planted, "another show");

    const QDateTime noon(QDate(2024, 2, 29), QTime(12, 0));
    ConsolidatedReport::Outcome outcome;
    {
        const Support::Anybody nobody;
        outcome =
            ConsolidatedReport::write({{{}, {}}, u"Gira"_s, folder, noon}, [](qsizetype) { return true; });
    }
    QCOMPARE(outcome.status, ConsolidatedReport::Status::NotWritten);
    QVERIFY(!QFile::exists(outcome.path));
    QVERIFY(outcome.path.endsWith("informe_rigging_20240229_120000.html"_L1));
    QCOMPARE(outcome.missingDrawings, QStringList());
    if (!isLink)
        QCOMPARE(Support::contentOf(planted), QByteArray("another show"));
}

QTEST_MAIN(TestSharedFolders)
#include "tst_sharedfolders.moc"
