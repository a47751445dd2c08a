#include "io/SafeFile.h"
#include "support/Files.h"
#include "support/FullDisk.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#ifdef Q_OS_LINUX
#include <sys/xattr.h>
#endif

using namespace Qt::StringLiterals;

using Support::contentOf;
using Support::FullDisk;
using Support::put;

namespace
{

struct stat statusOf(const QString& path)
{
    struct stat status
    {
    };
    if (lstat(QFile::encodeName(path).constData(), &status) != 0)
        qFatal("no such file");
    return status;
}

unsigned permissionsOf(const QString& path)
{
    return statusOf(path).st_mode & 07777U;
}

void setMode(const QString& path, mode_t mode)
{
    QCOMPARE(chmod(QFile::encodeName(path).constData(), mode), 0);
}

/// A second name for the file.
void addName(const QString& path, const QString& second)
{
    QCOMPARE(link(QFile::encodeName(path).constData(), QFile::encodeName(second).constData()), 0);
}

/// What this process makes is readable by `mask` less, for as long as this lives.
class Umask
{
public:
    explicit Umask(mode_t mask)
        : m_before(umask(mask))
    {
    }
    ~Umask()
    {
        umask(m_before);
    }
    Umask(const Umask&) = delete;
    Umask& operator=(const Umask&) = delete;

private:
    mode_t m_before;
};
/// Lets user 4711 read and write. Version 2; then owner, that user, group, mask and others, each with
/// tag, permissions and identity.
QByteArray accessList()
{
    return QByteArray::fromHex("02000000"
                               "01000600ffffffff"
                               "0200060067120000"
                               "04000400ffffffff"
                               "10000600ffffffff"
                               "20000000ffffffff");
}

QStringList entries(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

} // namespace

/// What others see of a file besides its content stays when it is saved, and what is no file of the
/// user's is left alone.
class TestSharedFiles : public QObject
{
    Q_OBJECT

private slots:
    void ofANewFile_permitsWhatIsUsual();
    void ofAnOwnFile_replacesItWhole();
    void keepsOwnerGroupAndPermissions();
    void keepsFurtherNames_data();
    void keepsFurtherNames();
    void keepsAttributes_data();
    void keepsAttributes();
    void ofAFileThatInheritedAList_replacesIt();
    void inPlaceOnAFullDisk_keepsTheOldFile_data();
    void inPlaceOnAFullDisk_keepsTheOldFile();
    void inPlace_leavesAnEmptyPrivateFolder();
    void inPlace_usesTheUsersRecoveryFolder();
    void inPlaceWhereNoCopyCanBeMade_isRefused_data();
    void inPlaceWhereNoCopyCanBeMade_isRefused();
    void inPlaceWhileAnotherWrites_isRefused();
    void overNoFile_isRefused_data();
    void overNoFile_isRefused();
    void overALoopOfLinks_isRefused();
    void throughManyLinks_worksAsFarAsTheSystemDoes_data();
    void throughManyLinks_worksAsFarAsTheSystemDoes();
    void throughALinkToNothing_makesTheFile();
    void overAReadOnlyFile_isRefused();
    void ofTheLongestName_works_data();
    void ofTheLongestName_works();
    void toANameWithAZero_fails();
    void files_areClosed();
};

void TestSharedFiles::ofANewFile_permitsWhatIsUsual()
{
    const QTemporaryDir folder;
    const Umask usual(026);
    const QString path = folder.filePath(u"a.rig"_s);
    QVERIFY(SafeFile::save(path, "nuevo"));
    QCOMPARE(permissionsOf(path), 0640U);
    QCOMPARE(contentOf(path), QByteArray("nuevo"));
    QCOMPARE(entries(folder.path()), QStringList(u"a.rig"_s));
}

// Whoever has it open goes on reading the old project.
void TestSharedFiles::ofAnOwnFile_replacesItWhole()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    put(path, "viejo");
    QFile reader(path);
    QVERIFY(reader.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    QVERIFY(SafeFile::save(path, "nuevo"));
    QCOMPARE(reader.readAll(), QByteArray("viejo"));
    QCOMPARE(contentOf(path), QByteArray("nuevo"));
    QCOMPARE(entries(folder.path()), QStringList(u"a.rig"_s));
}

void TestSharedFiles::keepsOwnerGroupAndPermissions()
{
    const QTemporaryDir folder;
    const Umask strict(077);
    const QString path = folder.filePath(u"a.rig"_s);
    put(path, "viejo");
    const bool isRoot = geteuid() == 0;
    if (isRoot)
        QCOMPARE(chown(QFile::encodeName(path).constData(), 1234, 1235), 0);
    setMode(path, 0664);
    const struct stat before = statusOf(path);
    QVERIFY(SafeFile::save(path, "nuevo"));
    QCOMPARE(contentOf(path), QByteArray("nuevo"));
    const struct stat after = statusOf(path);
    QCOMPARE(after.st_uid, before.st_uid);
    QCOMPARE(after.st_gid, before.st_gid);
    QCOMPARE(after.st_mode, before.st_mode);
}

void TestSharedFiles::keepsFurtherNames_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::newRow("longer") << QByteArray("viejo") << QByteArray("nuevo y más largo");
    QTest::newRow("shorter") << QByteArray(300'000, 'v') << QByteArray("nuevo");
    QTest::newRow("large") << QByteArray(300'000, 'v') << QByteArray(400'000, 'n');
    QTest::newRow("from one byte") << QByteArray("v") << QByteArray("nuevo");
    QTest::newRow("from nothing") << QByteArray() << QByteArray("nuevo");
}

void TestSharedFiles::keepsFurtherNames()
{
    QFETCH(const QByteArray, before);
    QFETCH(const QByteArray, after);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    const QString second = folder.filePath(u"b.rig"_s);
    put(path, before);
    addName(path, second);
    QVERIFY(SafeFile::save(path, after, folder.filePath(u"copias"_s)));
    QCOMPARE(contentOf(path), after);
    QCOMPARE(contentOf(second), after);
    QCOMPARE(statusOf(path).st_nlink, 2U);
}

// A new file gets the same list from the folder, so nothing is lost by it.
void TestSharedFiles::ofAFileThatInheritedAList_replacesIt()
{
#ifdef Q_OS_LINUX
    const QTemporaryDir folder;
    const QByteArray list = accessList();
    if (setxattr(QFile::encodeName(folder.path()).constData(), "system.posix_acl_default", list.constData(),
                 size_t(list.size()), 0)
        != 0)
        QSKIP("No such lists on this disk");
    const QString path = folder.filePath(u"a.rig"_s);
    put(path, "viejo");
    QFile reader(path);
    QVERIFY(reader.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    QVERIFY(SafeFile::save(path, "nuevo", folder.filePath(u"copias"_s)));
    QCOMPARE(reader.readAll(), QByteArray("viejo"));
    QCOMPARE(contentOf(path), QByteArray("nuevo"));
    QCOMPARE(getxattr(QFile::encodeName(path).constData(), "system.posix_acl_access", nullptr, 0),
             ssize_t(list.size()));
#else
    QSKIP("The attributes of Linux");
#endif
}

void TestSharedFiles::keepsAttributes_data()
{
    QTest::addColumn<QByteArray>("attribute");
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("remark") << QByteArray("user.comment") << QByteArray("de la gira");
    QTest::newRow("access control list") << QByteArray("system.posix_acl_access") << accessList();
}

void TestSharedFiles::keepsAttributes()
{
#ifdef Q_OS_LINUX
    QFETCH(const QByteArray, attribute);
    QFETCH(const QByteArray, value);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    put(path, "viejo");
    const QByteArray name = QFile::encodeName(path);
    if (setxattr(name.constData(), attribute.constData(), value.constData(), size_t(value.size()), 0) != 0)
        QSKIP("No such attributes on this disk");
    QVERIFY(SafeFile::save(path, "nuevo", folder.filePath(u"copias"_s)));
    QCOMPARE(contentOf(path), QByteArray("nuevo"));
    QByteArray kept(value.size(), '\0');
    QCOMPARE(getxattr(name.constData(), attribute.constData(), kept.data(), size_t(kept.size())),
             ssize_t(value.size()));
    QCOMPARE(kept, value);
#else
    QSKIP("The attributes of Linux");
#endif
}

void TestSharedFiles::inPlaceOnAFullDisk_keepsTheOldFile_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QByteArray>("after");
    QTest::addColumn<int>("room"); // [bytes]
    const QByteArray large = QByteArray("viejo").repeated(40'000);
    QTest::newRow("for the copy alone") << QByteArray("viejo") << QByteArray("nuevo y más largo") << 10;
    QTest::newRow("for the copy alone, large") << large << large + "nuevo" << 200'002;
    QTest::newRow("for half of the copy") << large << large + "nuevo" << 100'000;
    QTest::newRow("for nothing") << large << QByteArray("nuevo") << 0;
}

void TestSharedFiles::inPlaceOnAFullDisk_keepsTheOldFile()
{
    QFETCH(const QByteArray, before);
    QFETCH(const QByteArray, after);
    QFETCH(const int, room);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    put(path, before);
    addName(path, folder.filePath(u"b.rig"_s));
    bool saved = true;
    {
        const FullDisk disk(static_cast<rlim_t>(room));
        saved = SafeFile::save(path, after, folder.filePath(u"copias"_s));
    }
    QVERIFY(!saved);
    QCOMPARE(contentOf(path), before);
    QVERIFY(entries(folder.filePath(u"copias"_s)).isEmpty());
}

void TestSharedFiles::inPlace_leavesAnEmptyPrivateFolder()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    const QString copies = folder.filePath(u"estado/copias"_s);
    put(path, "viejo");
    addName(path, folder.filePath(u"b.rig"_s));
    QVERIFY(SafeFile::save(path, "nuevo", copies));
    QCOMPARE(permissionsOf(copies), 0700U);
    QVERIFY(entries(copies).isEmpty());

    setMode(copies, 0755);
    QVERIFY(SafeFile::save(path, "otro", copies));
    QCOMPARE(permissionsOf(copies), 0700U);
}

void TestSharedFiles::inPlace_usesTheUsersRecoveryFolder()
{
    const QTemporaryDir folder;
    const QByteArray home = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", QFile::encodeName(folder.path()));
    const QString path = folder.filePath(u"a.rig"_s);
    put(path, "viejo");
    addName(path, folder.filePath(u"b.rig"_s));
    const bool saved = SafeFile::save(path, "nuevo");
    const QString recovery = RecoveryFolder::path();
    qputenv("XDG_DATA_HOME", home);
    QVERIFY(saved);
    QVERIFY(recovery.startsWith(folder.path() + u'/'));
    QVERIFY(recovery.endsWith(u"/recuperacion"_s));
    QCOMPARE(permissionsOf(recovery), 0700U);
}

void TestSharedFiles::inPlaceWhereNoCopyCanBeMade_isRefused_data()
{
    QTest::addColumn<QByteArray>("temporaryFolder");
    QTest::newRow("missing") << QByteArray("/no existe");
    QTest::newRow("takes no files") << QByteArray("/proc");
}

void TestSharedFiles::inPlaceWhereNoCopyCanBeMade_isRefused()
{
    QFETCH(const QByteArray, temporaryFolder);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    put(path, "viejo");
    addName(path, folder.filePath(u"b.rig"_s));
    const QByteArray temporary = qgetenv("TMPDIR");
    qputenv("TMPDIR", temporaryFolder);
    const bool saved = SafeFile::save(path, "nuevo", path + u"/copias"_s);
    qputenv("TMPDIR", temporary);
    QVERIFY(!saved);
    QCOMPARE(contentOf(path), QByteArray("viejo"));
}

// Otherwise the two could leave a mixture of both, and both say that it is saved.
void TestSharedFiles::inPlaceWhileAnotherWrites_isRefused()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    put(path, "viejo");
    addName(path, folder.filePath(u"b.rig"_s));
    const int other = open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC);
    QCOMPARE(flock(other, LOCK_EX), 0);
    QVERIFY(!SafeFile::save(path, "nuevo", folder.filePath(u"copias"_s)));
    QCOMPARE(contentOf(path), QByteArray("viejo"));
    close(other);
    QVERIFY(SafeFile::save(path, "nuevo", folder.filePath(u"copias"_s)));
}

void TestSharedFiles::overNoFile_isRefused_data()
{
    QTest::addColumn<bool>("throughALink");
    QTest::newRow("pipe") << false;
    QTest::newRow("link to a pipe") << true;
}

void TestSharedFiles::overNoFile_isRefused()
{
    QFETCH(const bool, throughALink);
    const QTemporaryDir folder;
    const QString pipe = folder.filePath(u"tubo"_s);
    const QString link = folder.filePath(u"enlace"_s);
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QVERIFY(QFile::link(pipe, link));
    QVERIFY(!SafeFile::save(throughALink ? link : pipe, "nuevo"));
    QVERIFY(S_ISFIFO(statusOf(pipe).st_mode));
    QVERIFY(S_ISLNK(statusOf(link).st_mode));
    QCOMPARE(entries(folder.path()).size(), 2);
}

void TestSharedFiles::overALoopOfLinks_isRefused()
{
    const QTemporaryDir folder;
    const QString first = folder.filePath(u"a.rig"_s);
    const QString second = folder.filePath(u"b.rig"_s);
    QVERIFY(QFile::link(second, first));
    QVERIFY(QFile::link(first, second));
    QVERIFY(!SafeFile::save(first, "nuevo"));
    QVERIFY(S_ISLNK(statusOf(first).st_mode));
    QVERIFY(S_ISLNK(statusOf(second).st_mode));
    QCOMPARE(entries(folder.path()).size(), 2);
}

void TestSharedFiles::throughManyLinks_worksAsFarAsTheSystemDoes_data()
{
    QTest::addColumn<int>("links");
    QTest::addColumn<bool>("works");
    QTest::newRow("forty") << 40 << true;
    QTest::newRow("one more") << 41 << false;
}

void TestSharedFiles::throughManyLinks_worksAsFarAsTheSystemDoes()
{
    QFETCH(const int, links);
    QFETCH(const bool, works);
    const QTemporaryDir folder;
    put(folder.filePath(u"0"_s), "viejo");
    for (int i = 1; i <= links; ++i)
        QVERIFY(QFile::link(QString::number(i - 1), folder.filePath(QString::number(i))));
    QCOMPARE(SafeFile::save(folder.filePath(QString::number(links)), "nuevo"), works);
    QCOMPARE(contentOf(folder.filePath(u"0"_s)), QByteArray(works ? "nuevo" : "viejo"));
}

void TestSharedFiles::throughALinkToNothing_makesTheFile()
{
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(u"disco"_s));
    QVERIFY(QFile::link(u"disco/gira.rig"_s, folder.filePath(u"enlace"_s)));
    QVERIFY(SafeFile::save(folder.filePath(u"enlace"_s), "nuevo"));
    QVERIFY(S_ISLNK(statusOf(folder.filePath(u"enlace"_s)).st_mode));
    QCOMPARE(contentOf(folder.filePath(u"disco/gira.rig"_s)), QByteArray("nuevo"));
}

// Whoever took away the permission to write meant it, and root is told like everybody.
void TestSharedFiles::overAReadOnlyFile_isRefused()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    put(path, "viejo");
    setMode(path, 0444);
    QVERIFY(!SafeFile::save(path, "nuevo"));
    QCOMPARE(contentOf(path), QByteArray("viejo"));
    QCOMPARE(permissionsOf(path), 0444U);
    QCOMPARE(entries(folder.path()), QStringList(u"a.rig"_s));
}

void TestSharedFiles::ofTheLongestName_works_data()
{
    QTest::addColumn<bool>("inPlace");
    QTest::newRow("replaced") << false;
    QTest::newRow("in place") << true;
}

void TestSharedFiles::ofTheLongestName_works()
{
    QFETCH(const bool, inPlace);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QString(255, u'x'));
    put(path, "viejo");
    if (inPlace)
        addName(path, folder.filePath(u"b.rig"_s));
    QVERIFY(SafeFile::save(path, "nuevo", folder.filePath(u"copias"_s)));
    QCOMPARE(contentOf(path), QByteArray("nuevo"));
}

// The system would take the name for what stands before the zero.
void TestSharedFiles::toANameWithAZero_fails()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    put(path, "viejo");
    QVERIFY(!SafeFile::save(path + QChar(u'\0') + u".rig"_s, "nuevo"));
    QVERIFY(!SafeFile::read(path + QChar(u'\0') + u".rig"_s, 100).has_value());
    QCOMPARE(contentOf(path), QByteArray("viejo"));
}

void TestSharedFiles::files_areClosed()
{
#ifdef Q_OS_LINUX
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    const QString shared = folder.filePath(u"b.rig"_s);
    put(path, "viejo");
    put(shared, "viejo");
    addName(shared, folder.filePath(u"c.rig"_s));
    const QString copies = folder.filePath(u"copias"_s);
    const qsizetype before = entries(u"/proc/self/fd"_s).size();
    QVERIFY(SafeFile::save(path, "nuevo", copies));
    QVERIFY(SafeFile::save(shared, "nuevo", copies));
    QVERIFY(SafeFile::read(path, 100).has_value());
    QVERIFY(SafeFile::publish(path, "informe"));
    {
        const FullDisk disk;
        QVERIFY(!SafeFile::save(path, QByteArray(100, 'n'), copies));
        QVERIFY(!SafeFile::save(shared, QByteArray(100, 'n'), copies));
        QVERIFY(!SafeFile::publish(path, QByteArray(100, 'n')));
    }
    QCOMPARE(entries(u"/proc/self/fd"_s).size(), before);
#else
    QSKIP("The list of Linux");
#endif
}

QTEST_GUILESS_MAIN(TestSharedFiles)
#include "tst_sharedfiles.moc"
