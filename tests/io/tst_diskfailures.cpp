#include "io/SafeFile.h"
#include "support/Files.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <cerrno>
#include <cstdio>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

using Support::contentOf;
using Support::put;

namespace
{

enum class Call
{
    None,
    Read,
    Write,
    WriteAll, ///< half of it is written, and that is told
    SyncFile,
    SyncFolder,
    Close,
    Rename,
    ListAttributes,
    GetAttribute,
};

/// Which calls to the disk fail, and how.
struct Fault
{
    Call call = Call::None;
    int from = 1; ///< the first of these calls that fails
    int to = 1;   ///< the last one
    int error = EIO;
    int seen = 0;
};

Fault current;
ino_t syncedFolder = 0; ///< the last one

bool fails(Call call)
{
    if (current.call != call)
        return false;
    ++current.seen;
    if (current.seen < current.from || current.seen > current.to)
        return false;
    errno = current.error;
    return true;
}

} // namespace

// The program's calls end here instead of in the C library.
extern "C" {

ssize_t pread(int descriptor, void* bytes, size_t size, off_t at)
{
    return fails(Call::Read) ? -1 : syscall(SYS_pread64, descriptor, bytes, size, at);
}

ssize_t write(int descriptor, const void* bytes, size_t size)
{
    if (fails(Call::Write))
        return -1;
    return syscall(SYS_write, descriptor, bytes, fails(Call::WriteAll) ? (size + 1) / 2 : size);
}

int fdatasync(int descriptor)
{
    return fails(Call::SyncFile) ? -1 : static_cast<int>(syscall(SYS_fdatasync, descriptor));
}

int fsync(int descriptor)
{
    if (fails(Call::SyncFolder))
        return -1;
    struct stat status
    {
    };
    syncedFolder = fstat(descriptor, &status) == 0 ? status.st_ino : 0;
    return static_cast<int>(syscall(SYS_fsync, descriptor));
}

// As the kernel does it: closed, whatever it tells.
int close(int descriptor)
{
    const bool isTold = fails(Call::Close);
    const int result = static_cast<int>(syscall(SYS_close, descriptor));
    if (!isTold)
        return result;
    errno = current.error;
    return -1;
}

int rename(const char* from, const char* to) noexcept
{
    return fails(Call::Rename) ? -1 : renameat(AT_FDCWD, from, AT_FDCWD, to);
}

ssize_t llistxattr(const char* path, char* names, size_t size) noexcept
{
    return fails(Call::ListAttributes) ? -1 : syscall(SYS_llistxattr, path, names, size);
}

ssize_t lgetxattr(const char* path, const char* name, void* value, size_t size) noexcept
{
    return fails(Call::GetAttribute) ? -1 : syscall(SYS_lgetxattr, path, name, value, size);
}
}

namespace
{

/// The calls that fail while this lives.
class FailingDisk
{
public:
    explicit FailingDisk(const Fault& wanted)
    {
        current = wanted;
    }
    ~FailingDisk()
    {
        current = Fault();
    }
    FailingDisk(const FailingDisk&) = delete;
    FailingDisk& operator=(const FailingDisk&) = delete;
};

/// Those of a broken disk, a full one, and a quota.
const std::array<std::pair<const char*, int>, 3> ERRORS{
    {{"EIO", EIO}, {"ENOSPC", ENOSPC}, {"EDQUOT", EDQUOT}}};

constexpr int FOR_EVER = 1'000'000;

const QByteArray OLD(200'000, 'v');
const QByteArray NEW = QByteArray("nuevo").repeated(30'000);

} // namespace

Q_DECLARE_METATYPE(Fault)

/// What the disk tells late: when the bytes are synced, the file is closed, the name is changed. As a
/// network disk, a quota and a stick do it.
class TestDiskFailures : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void failure_leavesTheOldFile_data();
    void failure_leavesTheOldFile();
    void failureOfANewFile_leavesNothing_data();
    void failureOfANewFile_leavesNothing();
    void failureInPlace_leavesTheOldFile_data();
    void failureInPlace_leavesTheOldFile();
    void failureToRestore_leavesTheCopy_data();
    void failureToRestore_leavesTheCopy();
    void unusableRecoveryFolder_isReplacedByTheTemporaryOne_data();
    void unusableRecoveryFolder_isReplacedByTheTemporaryOne();
    void folderOfTheFile_isSynced_data();
    void folderOfTheFile_isSynced();
    void unsyncedFolder_isTold();
    void folderThatCannotBeSynced_isNoFailure_data();
    void folderThatCannotBeSynced_isNoFailure();
    void folderThatRefusesTheReplacement_isWrittenInPlace_data();
    void folderThatRefusesTheReplacement_isWrittenInPlace();
    void diskWithoutAttributes_letsTheFileBeReplaced();
    void unknownAttributes_areKeptByWritingInPlace_data();
    void unknownAttributes_areKeptByWritingInPlace();
    void shortWrites_areContinued();
    void interruptedCalls_areRepeated_data();
    void interruptedCalls_areRepeated();
    void failedPublication_leavesNothing_data();
    void failedPublication_leavesNothing();

private:
    [[nodiscard]] QString path(const QString& name) const
    {
        return m_folder->filePath(name);
    }
    [[nodiscard]] QStringList entries(const QString& folder) const
    {
        return QDir(path(folder)).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }
    bool save(const Fault& wanted)
    {
        const FailingDisk disk(wanted);
        const bool saved = SafeFile::save(path(u"gira.rig"_s), NEW, path(u"copias"_s));
        m_seen = current.seen;
        return saved;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    int m_seen = 0; ///< calls of the kind that fails
};

void TestDiskFailures::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    put(path(u"gira.rig"_s), OLD);
}

void TestDiskFailures::failure_leavesTheOldFile_data()
{
    QTest::addColumn<Fault>("fault");
    for (const auto& [name, error] : ERRORS) {
        QTest::addRow("write %s", name) << Fault{Call::Write, 1, 1, error};
        QTest::addRow("sync %s", name) << Fault{Call::SyncFile, 1, 1, error};
        QTest::addRow("close %s", name) << Fault{Call::Close, 1, 1, error};
        QTest::addRow("rename %s", name) << Fault{Call::Rename, 1, 1, error};
    }
}

void TestDiskFailures::failure_leavesTheOldFile()
{
    QFETCH(const Fault, fault);
    QVERIFY(!save(fault));
    QVERIFY(m_seen >= fault.from);
    QCOMPARE(contentOf(path(u"gira.rig"_s)), OLD);
    QCOMPARE(entries(QString()), QStringList(u"gira.rig"_s));
}

void TestDiskFailures::failureOfANewFile_leavesNothing_data()
{
    failure_leavesTheOldFile_data();
}

void TestDiskFailures::failureOfANewFile_leavesNothing()
{
    QFETCH(const Fault, fault);
    QVERIFY(QFile::remove(path(u"gira.rig"_s)));
    QVERIFY(!save(fault));
    QVERIFY(entries(QString()).isEmpty());
}

// First the copy goes to the disk and its folder is synced, then the file itself.
void TestDiskFailures::failureInPlace_leavesTheOldFile_data()
{
    QTest::addColumn<Fault>("fault");
    for (const auto& [name, error] : ERRORS) {
        QTest::addRow("read %s", name) << Fault{Call::Read, 1, FOR_EVER, error};
        QTest::addRow("write copy %s", name) << Fault{Call::Write, 1, FOR_EVER, error};
        QTest::addRow("write %s", name) << Fault{Call::Write, 5, 5, error};
        QTest::addRow("sync copy %s", name) << Fault{Call::SyncFile, 1, FOR_EVER, error};
        QTest::addRow("sync %s", name) << Fault{Call::SyncFile, 2, 2, error};
        QTest::addRow("sync folder of the copy %s", name) << Fault{Call::SyncFolder, 1, FOR_EVER, error};
        QTest::addRow("close copy %s", name) << Fault{Call::Close, 1, FOR_EVER, error};
        QTest::addRow("close %s", name) << Fault{Call::Close, 3, 3, error};
    }
}

void TestDiskFailures::failureInPlace_leavesTheOldFile()
{
    QFETCH(const Fault, fault);
    QVERIFY(QFile::link(path(u"gira.rig"_s), path(u"enlace"_s))); // stays as it is, too
    QCOMPARE(link(QFile::encodeName(path(u"gira.rig"_s)).constData(),
                  QFile::encodeName(path(u"b.rig"_s)).constData()),
             0);
    QVERIFY(!save(fault));
    QVERIFY(m_seen >= fault.from);
    QCOMPARE(contentOf(path(u"gira.rig"_s)), OLD);
    QCOMPARE(contentOf(path(u"b.rig"_s)), OLD);
    QVERIFY(entries(u"copias"_s).isEmpty());
}

void TestDiskFailures::failureToRestore_leavesTheCopy_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::newRow("write") << Fault{Call::Write, 5, FOR_EVER};
    QTest::newRow("sync") << Fault{Call::SyncFile, 2, FOR_EVER};
    QTest::newRow("close") << Fault{Call::Close, 3, FOR_EVER};
}

void TestDiskFailures::failureToRestore_leavesTheCopy()
{
    QFETCH(const Fault, fault);
    QCOMPARE(link(QFile::encodeName(path(u"gira.rig"_s)).constData(),
                  QFile::encodeName(path(u"b.rig"_s)).constData()),
             0);
    QVERIFY(!save(fault));
    const QStringList copies = entries(u"copias"_s);
    QCOMPARE(copies.size(), 1);
    QVERIFY(copies.at(0).startsWith(u"gira.rig."_s));
    const QString copy = path(u"copias/"_s + copies.at(0));
    QCOMPARE(contentOf(copy), OLD);
    const QFile::Permissions others =
        QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    QVERIFY(!(QFile::permissions(copy) & others));
}

void TestDiskFailures::unusableRecoveryFolder_isReplacedByTheTemporaryOne_data()
{
    QTest::addColumn<QString>("obstacle");
    QTest::newRow("link") << u"link"_s;
    QTest::newRow("file") << u"file"_s;
    QTest::newRow("somebody else's") << u"foreign"_s;
}

void TestDiskFailures::unusableRecoveryFolder_isReplacedByTheTemporaryOne()
{
    QFETCH(const QString, obstacle);
    QVERIFY(QDir(m_folder->path()).mkdir(u"otra"_s));
    QVERIFY(QDir(m_folder->path()).mkdir(u"temporal"_s));
    if (obstacle == u"link"_s)
        QVERIFY(QFile::link(path(u"otra"_s), path(u"copias"_s)));
    else if (obstacle == u"file"_s)
        put(path(u"copias"_s), "x");
    else if (!QDir(m_folder->path()).mkdir(u"copias"_s)
             || chown(QFile::encodeName(path(u"copias"_s)).constData(), 4711, 4711) != 0)
        QSKIP("Only root can give a folder away");
    QCOMPARE(link(QFile::encodeName(path(u"gira.rig"_s)).constData(),
                  QFile::encodeName(path(u"b.rig"_s)).constData()),
             0);

    const QByteArray temporary = qgetenv("TMPDIR");
    qputenv("TMPDIR", QFile::encodeName(path(u"temporal"_s)));
    const bool saved = save({Call::SyncFile, 2, FOR_EVER});
    qputenv("TMPDIR", temporary);
    QVERIFY(!saved);
    QVERIFY(entries(u"otra"_s).isEmpty());
    QVERIFY(entries(u"copias"_s).isEmpty());
    const QStringList copies = entries(u"temporal"_s);
    QCOMPARE(copies.size(), 1);
    QCOMPARE(contentOf(path(u"temporal/"_s + copies.at(0))), OLD);
}

void TestDiskFailures::folderOfTheFile_isSynced_data()
{
    QTest::addColumn<bool>("isRelative");
    QTest::newRow("whole path") << false;
    QTest::newRow("name in the working folder") << true;
}

void TestDiskFailures::folderOfTheFile_isSynced()
{
    QFETCH(const bool, isRelative);
    const QString before = QDir::currentPath();
    if (isRelative)
        QVERIFY(QDir::setCurrent(m_folder->path()));
    syncedFolder = 0;
    const bool saved = SafeFile::save(isRelative ? u"gira.rig"_s : path(u"gira.rig"_s), NEW);
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(saved);
    struct stat folder
    {
    };
    QCOMPARE(stat(QFile::encodeName(m_folder->path()).constData(), &folder), 0);
    QCOMPARE(syncedFolder, folder.st_ino);
    QCOMPARE(contentOf(path(u"gira.rig"_s)), NEW);
}

// The new file is there, but its name may be lost with the current.
void TestDiskFailures::unsyncedFolder_isTold()
{
    QVERIFY(!save({Call::SyncFolder, 1, 1}));
    QCOMPARE(contentOf(path(u"gira.rig"_s)), NEW);
}

void TestDiskFailures::folderThatCannotBeSynced_isNoFailure_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("EINVAL") << EINVAL;
    QTest::newRow("ENOTSUP") << ENOTSUP;
}

void TestDiskFailures::folderThatCannotBeSynced_isNoFailure()
{
    QFETCH(const int, error);
    QVERIFY(save({Call::SyncFolder, 1, FOR_EVER, error}));
    QCOMPARE(m_seen, 1);
    QCOMPARE(contentOf(path(u"gira.rig"_s)), NEW);
}

void TestDiskFailures::folderThatRefusesTheReplacement_isWrittenInPlace_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("EACCES") << EACCES;
    QTest::newRow("EPERM") << EPERM;
    QTest::newRow("EROFS") << EROFS;
}

void TestDiskFailures::folderThatRefusesTheReplacement_isWrittenInPlace()
{
    QFETCH(const int, error);
    QFile reader(path(u"gira.rig"_s));
    QVERIFY(reader.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    QVERIFY(save({Call::Rename, 1, FOR_EVER, error}));
    QCOMPARE(reader.readAll(), NEW);
    QCOMPARE(entries(QString()), QStringList(u"gira.rig"_s));
    QVERIFY(entries(u"copias"_s).isEmpty());
}

void TestDiskFailures::diskWithoutAttributes_letsTheFileBeReplaced()
{
    QFile reader(path(u"gira.rig"_s));
    QVERIFY(reader.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    QVERIFY(save({Call::ListAttributes, 1, FOR_EVER, ENOTSUP}));
    QCOMPARE(reader.readAll(), OLD);
    QCOMPARE(contentOf(path(u"gira.rig"_s)), NEW);
}

void TestDiskFailures::unknownAttributes_areKeptByWritingInPlace_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::newRow("names") << Fault{Call::ListAttributes, 1, FOR_EVER};
    QTest::newRow("names, the second time") << Fault{Call::ListAttributes, 2, FOR_EVER};
    QTest::newRow("value") << Fault{Call::GetAttribute, 1, FOR_EVER};
    QTest::newRow("value, the second time") << Fault{Call::GetAttribute, 2, FOR_EVER};
}

void TestDiskFailures::unknownAttributes_areKeptByWritingInPlace()
{
    QFETCH(const Fault, fault);
    if (setxattr(QFile::encodeName(path(u"gira.rig"_s)).constData(), "user.comment", "gira", 4, 0) != 0)
        QSKIP("No such attributes on this disk");
    QFile reader(path(u"gira.rig"_s));
    QVERIFY(reader.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    QVERIFY(save(fault));
    QVERIFY(m_seen >= fault.from);
    QCOMPARE(reader.readAll(), NEW);
}

void TestDiskFailures::shortWrites_areContinued()
{
    QVERIFY(save({Call::WriteAll, 1, 3}));
    QVERIFY(m_seen > 3);
    QCOMPARE(contentOf(path(u"gira.rig"_s)), NEW);
}

void TestDiskFailures::interruptedCalls_areRepeated_data()
{
    QTest::addColumn<Fault>("fault");
    QTest::newRow("write") << Fault{Call::Write, 1, 2, EINTR};
    QTest::newRow("sync") << Fault{Call::SyncFile, 1, 2, EINTR};
    QTest::newRow("sync folder") << Fault{Call::SyncFolder, 1, 2, EINTR};
}

void TestDiskFailures::interruptedCalls_areRepeated()
{
    QFETCH(const Fault, fault);
    QVERIFY(save(fault));
    QCOMPARE(m_seen, 3);
    QCOMPARE(contentOf(path(u"gira.rig"_s)), NEW);
}

void TestDiskFailures::failedPublication_leavesNothing_data()
{
    failure_leavesTheOldFile_data();
}

void TestDiskFailures::failedPublication_leavesNothing()
{
    QFETCH(const Fault, fault);
    bool published = true;
    {
        const FailingDisk disk(fault);
        published = SafeFile::publish(path(u"gira.rig"_s), NEW);
    }
    QVERIFY(!published);
    QVERIFY(entries(QString()).isEmpty());
}

QTEST_GUILESS_MAIN(TestDiskFailures)
#include "tst_diskfailures.moc"
