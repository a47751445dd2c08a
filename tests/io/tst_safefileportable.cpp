#include "io/SafeFile.h"
#include "support/Files.h"
#ifdef Q_OS_UNIX
#include "support/Anybody.h"
#include "support/FullDisk.h"

#include <sys/stat.h>
#endif

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

using Support::contentOf;
using Support::put;

/// Files on systems without POSIX, as far as these can be tried elsewhere.
class TestSafeFilePortable : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void read_givesTheWholeFile();
    void read_givesNoMoreThanWanted();
    void read_ofWhatIsNoFile_fails();
    void read_thatBreaksOff_fails();
    void save_replacesTheFile();
    void save_followsALink();
    void save_overWhatIsNoFile_isRefused();
    void save_overAReadOnlyFile_isRefused();
    void save_whereNoFileMayBeMade_writesInPlace();
    void saveForOwner_makesFolderAndFile();
    void saveForOwner_refusesLinks();
    void publish_replacesFilesAndLinks();
    void publish_overAFolder_fails();
    void publish_intoAMissingFolder_fails();
    void onAFullDisk_failureIsTold_data();
    void onAFullDisk_failureIsTold();

private:
    [[nodiscard]] QString path(const QString& name) const
    {
        return m_folder->filePath(name);
    }
    [[nodiscard]] QStringList entries() const
    {
        return QDir(m_folder->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestSafeFilePortable::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    put(path(u"a.rig"_s), "viejo");
}

void TestSafeFilePortable::read_givesTheWholeFile()
{
    QCOMPARE(SafeFile::read(path(u"a.rig"_s), 1000), QByteArray("viejo"));
    const QByteArray large(300'000, 'g');
    put(path(u"grande"_s), large);
    QCOMPARE(SafeFile::read(path(u"grande"_s), 1'000'000), large);
}

void TestSafeFilePortable::read_givesNoMoreThanWanted()
{
    QCOMPARE(SafeFile::read(path(u"a.rig"_s), 5), QByteArray("viejo"));
    QCOMPARE(SafeFile::read(path(u"a.rig"_s), 4), QByteArray("viej"));
}

void TestSafeFilePortable::read_ofWhatIsNoFile_fails()
{
    QVERIFY(!SafeFile::read(path(u"nada"_s), 1000).has_value());
    QVERIFY(!SafeFile::read(m_folder->path(), 1000).has_value());
#ifdef Q_OS_UNIX
    QVERIFY(!SafeFile::read(u"/dev/zero"_s, 1000).has_value());
#endif
}

void TestSafeFilePortable::read_thatBreaksOff_fails()
{
#ifdef Q_OS_LINUX
    QVERIFY(!SafeFile::read(u"/proc/self/mem"_s, 1000).has_value());
#else
    QSKIP("No such file here");
#endif
}

void TestSafeFilePortable::save_replacesTheFile()
{
    QVERIFY(SafeFile::save(path(u"a.rig"_s), "nuevo"));
    QCOMPARE(contentOf(path(u"a.rig"_s)), QByteArray("nuevo"));
    QVERIFY(SafeFile::save(path(u"b.rig"_s), "otro"));
    QCOMPARE(contentOf(path(u"b.rig"_s)), QByteArray("otro"));
    QCOMPARE(entries().size(), 2);
}

void TestSafeFilePortable::save_followsALink()
{
    QVERIFY(QFile::link(path(u"a.rig"_s), path(u"enlace"_s)));
    QVERIFY(SafeFile::save(path(u"enlace"_s), "nuevo"));
    QCOMPARE(contentOf(path(u"a.rig"_s)), QByteArray("nuevo"));
    QVERIFY(QFileInfo(path(u"enlace"_s)).isSymLink());
}

void TestSafeFilePortable::save_overWhatIsNoFile_isRefused()
{
    QVERIFY(QFile::link(path(u"enlace"_s), path(u"enlace"_s)));
    QVERIFY(!SafeFile::save(path(u"enlace"_s), "nuevo"));
    QVERIFY(QFileInfo(path(u"enlace"_s)).isSymLink());
    QVERIFY(!SafeFile::save(m_folder->path(), "nuevo"));
#ifdef Q_OS_UNIX
    QCOMPARE(mkfifo(QFile::encodeName(path(u"tubo"_s)).constData(), 0600), 0);
    QVERIFY(!SafeFile::save(path(u"tubo"_s), "nuevo"));
    QVERIFY(!QFileInfo(path(u"tubo"_s)).isFile());
#endif
}

void TestSafeFilePortable::save_overAReadOnlyFile_isRefused()
{
    QVERIFY(QFile::setPermissions(path(u"a.rig"_s), QFile::ReadOwner));
    if (QFileInfo(path(u"a.rig"_s)).isWritable())
        QSKIP("Everything may be written by this user");
    QVERIFY(!SafeFile::save(path(u"a.rig"_s), "nuevo"));
    QCOMPARE(contentOf(path(u"a.rig"_s)), QByteArray("viejo"));
}

void TestSafeFilePortable::save_whereNoFileMayBeMade_writesInPlace()
{
#ifdef Q_OS_UNIX
    QCOMPARE(chmod(QFile::encodeName(path(u"a.rig"_s)).constData(), 0666), 0);
    QCOMPARE(chmod(QFile::encodeName(m_folder->path()).constData(), 0555), 0);
    bool saved = false;
    {
        const Support::Anybody user;
        saved = SafeFile::save(path(u"a.rig"_s), "nuevo");
    }
    QCOMPARE(chmod(QFile::encodeName(m_folder->path()).constData(), 0755), 0);
    QVERIFY(saved);
    QCOMPARE(contentOf(path(u"a.rig"_s)), QByteArray("nuevo"));
#else
    QSKIP("No such folder here");
#endif
}

void TestSafeFilePortable::saveForOwner_makesFolderAndFile()
{
    const QString own = path(u"datos/a.json"_s);
    for (const QByteArray& bytes : {QByteArray("largo"), QByteArray("otro")}) {
        QVERIFY(SafeFile::saveForOwner(own, bytes));
        QCOMPARE(contentOf(own), bytes);
    }
    QVERIFY(SafeFile::isOwnFile(own));
    QVERIFY(!SafeFile::isOwnFile(path(u"datos"_s)));
    QCOMPARE(QFile::permissions(own),
             QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser);
}

void TestSafeFilePortable::saveForOwner_refusesLinks()
{
    QVERIFY(QFile::link(path(u"a.rig"_s), path(u"enlace"_s)));
    QVERIFY(!SafeFile::isOwnFile(path(u"enlace"_s)));
    QVERIFY(!SafeFile::saveForOwner(path(u"enlace"_s), "x"));
    QCOMPARE(contentOf(path(u"a.rig"_s)), QByteArray("viejo"));
    QVERIFY(QDir(m_folder->path()).mkdir(u"otra"_s));
    QVERIFY(QFile::link(path(u"otra"_s), path(u"carpeta"_s)));
    QVERIFY(!SafeFile::saveForOwner(path(u"carpeta/a.json"_s), "x"));
}

void TestSafeFilePortable::publish_replacesFilesAndLinks()
{
    QVERIFY(SafeFile::publish(path(u"a.rig"_s), "nuevo"));
    QCOMPARE(contentOf(path(u"a.rig"_s)), QByteArray("nuevo"));
    for (const QString& target : {u"a.rig"_s, u"nada"_s}) {
        QVERIFY(QFile::link(path(target), path(u"enlace"_s)));
        QVERIFY(SafeFile::publish(path(u"enlace"_s), "dibujo"));
        QVERIFY(!QFileInfo(path(u"enlace"_s)).isSymLink());
        QCOMPARE(contentOf(path(u"enlace"_s)), QByteArray("dibujo"));
        QVERIFY(QFile::remove(path(u"enlace"_s)));
    }
    QCOMPARE(contentOf(path(u"a.rig"_s)), QByteArray("nuevo"));
    QCOMPARE(entries(), QStringList(u"a.rig"_s));
}

void TestSafeFilePortable::publish_overAFolder_fails()
{
    QVERIFY(QDir(m_folder->path()).mkdir(u"informe.html"_s));
    QVERIFY(!SafeFile::publish(path(u"informe.html"_s), "x"));
    QCOMPARE(entries().size(), 2);
}

void TestSafeFilePortable::publish_intoAMissingFolder_fails()
{
    QVERIFY(!SafeFile::publish(path(u"no/existe.html"_s), "x"));
}

void TestSafeFilePortable::onAFullDisk_failureIsTold_data()
{
    QTest::addColumn<int>("size"); // [bytes]
    QTest::newRow("small") << 100;
    QTest::newRow("large") << 1'000'000;
}

void TestSafeFilePortable::onAFullDisk_failureIsTold()
{
#ifdef Q_OS_UNIX
    QFETCH(const int, size);
    put(path(u"b.jpg"_s), "viejo");
    bool saved = true;
    bool published = true;
    {
        const Support::FullDisk disk;
        saved = SafeFile::save(path(u"a.rig"_s), QByteArray(size, 'n'));
        published = SafeFile::publish(path(u"b.jpg"_s), QByteArray(size, 'n'));
    }
    QVERIFY(!saved);
    QVERIFY(!published);
    QCOMPARE(contentOf(path(u"a.rig"_s)), QByteArray("viejo"));
    QCOMPARE(entries(), QStringList(u"a.rig"_s));
#else
    QSKIP("No such limit here");
#endif
}

QTEST_GUILESS_MAIN(TestSafeFilePortable)
#include "tst_safefileportable.moc"
