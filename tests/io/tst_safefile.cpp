#include "io/SafeFile.h"
#include "support/Files.h"
#ifdef Q_OS_UNIX
#include "support/Anybody.h"
#include "support/FullDisk.h"
#endif

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

using Support::contentOf;
using Support::put;
#ifdef Q_OS_UNIX
using Support::Anybody;
using Support::FullDisk;
#endif

namespace
{

/// A small file waits in a buffer until it is flushed, a large one is on its way to the disk at once:
/// each meets the full disk in another call.
void addSizes()
{
    QTest::addColumn<int>("size"); // [bytes]
    QTest::newRow("small") << 100;
    QTest::newRow("large") << 1'000'000;
}

QStringList entries(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

} // namespace

class TestSafeFile : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void read_givesNoMoreThanWanted();
    void save_replacesTheWholeContent();
    void save_followsALink();
    void save_onAFullDisk_failsAndKeepsTheOldFile_data();
    void save_onAFullDisk_failsAndKeepsTheOldFile();
    void save_overAFolder_fails();
    void save_whereNoFileMayBeMade_writesInPlace();
    void save_whereTheFolderMayNotBeListed_works();
    void saveForOwner_makesFolderAndFile();
    void saveForOwner_replacesALink();
    void saveForOwner_intoWhatIsNoOwnFolder_fails();
    void saveForOwner_onAFullDisk_failsAndKeepsTheOldFile();
    void isOwnFile_isNoLinkAndNoFolder();
    void publish_replacesTheWholeContent();
    void publish_doesNotFollowALink();
    void publish_isForTheOwnerAlone();
    void publish_onAFullDisk_failsAndLeavesNothing_data();
    void publish_onAFullDisk_failsAndLeavesNothing();
    void publish_intoAMissingFolder_fails();
    void publish_overAFolder_fails();
    void failures_leaveNothingBehind();

private:
    QTemporaryDir m_home; ///< for the copies of files that are written in place
};

void TestSafeFile::initTestCase()
{
    qputenv("XDG_DATA_HOME", QFile::encodeName(m_home.path()));
}

void TestSafeFile::read_givesNoMoreThanWanted()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    const QByteArray content(100'000, 'x');
    put(path, content);
    QCOMPARE(SafeFile::read(path, 100'001), content);
    QCOMPARE(SafeFile::read(path, 100'000), content);
    QCOMPARE(SafeFile::read(path, 99'999), content.chopped(1));
}

void TestSafeFile::save_replacesTheWholeContent()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    put(path, QByteArray(1000, 'x'));
    QVERIFY(SafeFile::save(path, "corto"));
    QCOMPARE(contentOf(path), QByteArray("corto"));
}

void TestSafeFile::save_followsALink()
{
    const QTemporaryDir folder;
    const QString target = folder.filePath(u"destino.rig"_s);
    put(target, "viejo");
    const QString link = folder.filePath(u"enlace.rig"_s);
    QVERIFY(QFile::link(target, link));
    QVERIFY(SafeFile::save(link, "nuevo"));
    QCOMPARE(contentOf(target), QByteArray("nuevo"));
    QVERIFY(QFileInfo(link).isSymLink());
}

void TestSafeFile::save_onAFullDisk_failsAndKeepsTheOldFile_data()
{
    addSizes();
}

void TestSafeFile::save_onAFullDisk_failsAndKeepsTheOldFile()
{
    QFETCH(const int, size);
#ifdef Q_OS_UNIX
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    put(path, "viejo");
    bool saved = true;
    {
        const FullDisk disk;
        saved = SafeFile::save(path, QByteArray(size, 'n'));
    }
    QVERIFY(!saved);
    QCOMPARE(contentOf(path), QByteArray("viejo"));
#else
    QSKIP("No such limit here");
#endif
}

void TestSafeFile::save_overAFolder_fails()
{
    const QTemporaryDir folder;
    QVERIFY(!SafeFile::save(folder.path(), "x"));
}

void TestSafeFile::save_whereNoFileMayBeMade_writesInPlace()
{
#ifdef Q_OS_UNIX
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.rig"_s);
    put(path, QByteArray(1000, 'x'));
    const QFile::Permissions reading = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
    const QFile::Permissions writing = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    const QFile::Permissions entering = QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;
    QVERIFY(QFile::setPermissions(path, reading | writing));
    QVERIFY(QFile::setPermissions(folder.path(), reading | entering));
    bool reached = false;
    bool saved = false;
    {
        const Anybody user;
        reached =
            contentOf(path).size() == 1000 && !QFile(folder.filePath(u"b.rig"_s)).open(QIODevice::WriteOnly);
        saved = SafeFile::save(path, "corto");
    }
    QVERIFY(QFile::setPermissions(folder.path(), reading | entering | QFile::WriteOwner));
    if (!reached)
        QSKIP("No user here who may not make files in this folder");
    QVERIFY(saved);
    QCOMPARE(contentOf(path), QByteArray("corto"));
#else
    QSKIP("No such folder here");
#endif
}

// Nor synced, then.
void TestSafeFile::save_whereTheFolderMayNotBeListed_works()
{
#ifdef Q_OS_UNIX
    const QTemporaryDir folder;
    const QFile::Permissions usual = QFile::permissions(folder.path());
    const QFile::Permissions writing = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    const QFile::Permissions entering = QFile::ExeOwner | QFile::ExeGroup | QFile::ExeOther;
    QVERIFY(QFile::setPermissions(folder.path(), writing | entering));
    bool saved = false;
    {
        const Anybody user;
        saved = SafeFile::save(folder.filePath(u"a.rig"_s), "nuevo");
    }
    QVERIFY(QFile::setPermissions(folder.path(), usual));
    QVERIFY(saved);
    QCOMPARE(contentOf(folder.filePath(u"a.rig"_s)), QByteArray("nuevo"));
#else
    QSKIP("No such folder here");
#endif
}

void TestSafeFile::saveForOwner_makesFolderAndFile()
{
    const QTemporaryDir folder;
    const QString inner = folder.filePath(u"datos/recuperacion"_s);
    const QString path = inner + u"/a.json"_s;
    for (const QByteArray& bytes : {QByteArray("largo"), QByteArray("otro")}) {
        QVERIFY(SafeFile::saveForOwner(path, bytes));
        QCOMPARE(contentOf(path), bytes);
    }
    QCOMPARE(entries(inner), QStringList(u"a.json"_s));
#ifdef Q_OS_UNIX
    const auto own = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    QCOMPARE(QFile::permissions(path), own);
    QCOMPARE(QFile::permissions(inner), own | QFile::ExeOwner | QFile::ExeUser);
#endif
}

void TestSafeFile::saveForOwner_replacesALink()
{
    const QTemporaryDir folder;
    const QString target = folder.filePath(u"ajeno"_s);
    const QString link = folder.filePath(u"a.json"_s);
    put(target, "ajeno");
    QVERIFY(QFile::link(target, link));
    QVERIFY(SafeFile::saveForOwner(link, "propio"));
    QCOMPARE(contentOf(target), QByteArray("ajeno"));
    QVERIFY(!QFileInfo(link).isSymLink());
    QCOMPARE(contentOf(link), QByteArray("propio"));
}

void TestSafeFile::saveForOwner_intoWhatIsNoOwnFolder_fails()
{
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(u"otra"_s));
    QVERIFY(QFile::link(folder.filePath(u"otra"_s), folder.filePath(u"enlace"_s)));
    QVERIFY(!SafeFile::makeOwnFolder(folder.filePath(u"enlace"_s)));
    QVERIFY(!SafeFile::saveForOwner(folder.filePath(u"enlace/a.json"_s), "x"));
    put(folder.filePath(u"archivo"_s), "");
    QVERIFY(!SafeFile::saveForOwner(folder.filePath(u"archivo/a.json"_s), "x"));
    QVERIFY(entries(folder.filePath(u"otra"_s)).isEmpty());
}

void TestSafeFile::saveForOwner_onAFullDisk_failsAndKeepsTheOldFile()
{
#ifdef Q_OS_UNIX
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.json"_s);
    QVERIFY(SafeFile::saveForOwner(path, "viejo"));
    {
        const FullDisk disk;
        QVERIFY(!SafeFile::saveForOwner(path, QByteArray(100'000, 'n')));
    }
    QCOMPARE(contentOf(path), QByteArray("viejo"));
    QCOMPARE(entries(folder.path()), QStringList(u"a.json"_s));
#else
    QSKIP("No such limit here");
#endif
}

void TestSafeFile::isOwnFile_isNoLinkAndNoFolder()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.json"_s);
    QVERIFY(!SafeFile::isOwnFile(path));
    put(path, "x");
    QVERIFY(SafeFile::isOwnFile(path));
    QVERIFY(!SafeFile::isOwnFile(folder.path()));
    QVERIFY(QFile::link(path, folder.filePath(u"enlace"_s)));
    QVERIFY(!SafeFile::isOwnFile(folder.filePath(u"enlace"_s)));
#ifdef Q_OS_UNIX
    const Anybody somebody;
    if (QFileInfo(folder.path()).ownerId() == 0)
        QVERIFY(!SafeFile::isOwnFile(path));
#endif
}

void TestSafeFile::publish_replacesTheWholeContent()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"informe.html"_s);
    put(path, QByteArray(1000, 'x'));
    QVERIFY(SafeFile::publish(path, "corto"));
    QCOMPARE(contentOf(path), QByteArray("corto"));
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden), QStringList(u"informe.html"_s));
}

void TestSafeFile::publish_doesNotFollowALink()
{
    const QTemporaryDir folder;
    const QString victim = folder.filePath(u"ajeno.txt"_s);
    put(victim, "de otro");
    const QString path = folder.filePath(u"truss_schema_0.jpg"_s);
    QVERIFY(QFile::link(victim, path));
    QVERIFY(SafeFile::publish(path, "dibujo"));
    QCOMPARE(contentOf(victim), QByteArray("de otro"));
    QVERIFY(!QFileInfo(path).isSymLink());
    QCOMPARE(contentOf(path), QByteArray("dibujo"));
}

void TestSafeFile::publish_isForTheOwnerAlone()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"informe.html"_s);
    QVERIFY(SafeFile::publish(path, "x"));
    const QFile::Permissions others =
        QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    QVERIFY(!(QFile::permissions(path) & others));
}

void TestSafeFile::publish_onAFullDisk_failsAndLeavesNothing_data()
{
    addSizes();
}

void TestSafeFile::publish_onAFullDisk_failsAndLeavesNothing()
{
    QFETCH(const int, size);
#ifdef Q_OS_UNIX
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"informe.html"_s);
    put(path, "viejo");
    bool published = true;
    {
        const FullDisk disk;
        published = SafeFile::publish(path, QByteArray(size, 'n'));
    }
    QVERIFY(!published);
    QVERIFY(entries(folder.path()).isEmpty());
#else
    QSKIP("No such limit here");
#endif
}

void TestSafeFile::publish_intoAMissingFolder_fails()
{
    const QTemporaryDir folder;
    QVERIFY(!SafeFile::publish(folder.filePath(u"no/existe.html"_s), "x"));
}

void TestSafeFile::publish_overAFolder_fails()
{
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(u"informe.html"_s));
    QVERIFY(!SafeFile::publish(folder.filePath(u"informe.html"_s), "x"));
}

void TestSafeFile::failures_leaveNothingBehind()
{
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(u"ocupado"_s));
    QVERIFY(!SafeFile::publish(folder.filePath(u"ocupado"_s), "x"));
    QVERIFY(!SafeFile::save(folder.filePath(u"ocupado"_s), "x"));
    QVERIFY(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).isEmpty());
}

QTEST_GUILESS_MAIN(TestSafeFile)
#include "tst_safefile.moc"
