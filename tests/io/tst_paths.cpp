#include "io/ProjectFile.h"
#include "support/Browser.h"
#include "support/Dialogs.h"
#include "support/Files.h"
#include "support/Names.h"
#include "support/ReportDocument.h"
#include "support/Window.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <optional>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

using Support::Answer;
using Support::BoxAnswer;
using Support::Browser;
using Support::contentOf;
using Support::FileAnswer;
using Support::put;
using Support::ReportDocument;
using Support::TestWindow;

namespace
{

QByteArray projectOf(float length)
{
    LoadLogic::ProjectState project;
    project.trussLength = length;
    return ProjectFile::toBytes(project);
}

QStringList entries(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

/// The folder of the reports, for as long as it lives.
class ReportsGoTo
{
public:
    explicit ReportsGoTo(const QString& folder)
        : m_before(qgetenv("TMPDIR"))
    {
        qputenv("TMPDIR", QFile::encodeName(folder));
    }
    ~ReportsGoTo()
    {
        qputenv("TMPDIR", m_before);
    }
    ReportsGoTo(const ReportsGoTo&) = delete;
    ReportsGoTo& operator=(const ReportsGoTo&) = delete;

private:
    QByteArray m_before;
};

} // namespace

/// Projects and reports in files and folders of any name, behind symbolic links, and among links that
/// somebody else planted.
class TestPaths : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void project_isSavedAndOpened_data();
    void project_isSavedAndOpened();
    void report_isHandedToTheBrowser_data();
    void report_isHandedToTheBrowser();
    void browser_isGivenTheReportAsOneWord_data();
    void browser_isGivenTheReportAsOneWord();
    void linkedFile_isOpened();
    void linkedFile_isSavedAndStaysALink_data();
    void linkedFile_isSavedAndStaysALink();
    void linkedFolder_holdsProjectAndReport();
    void linksPlantedForAReport_areNotFollowed();
    void reportFiles_areForTheirOwnerAlone();
    void cleanupTestCase();

private:
    void save(const QString& path);
    void open(const QString& path);
    void report();
    [[nodiscard]] QString path(const QString& name) const
    {
        return m_folder->filePath(name);
    }

    QTemporaryDir m_desktop; ///< holds the browser
    QByteArray m_commands;
    std::unique_ptr<QTemporaryDir> m_folder;
};

// The desktop's command that shows a file notes what it is given: how many words, and which.
void TestPaths::initTestCase()
{
#ifndef Q_OS_LINUX
    QSKIP("The commands, links and rights of Linux");
#endif
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QString browser = m_desktop.filePath(u"xdg-open"_s);
    put(browser, "#!/bin/sh\nprintf '%s\\n' \"$#\" \"$@\" >\"$0.part\" && mv \"$0.part\" \"$0.given\"\n");
    QVERIFY(QFile::setPermissions(browser, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    m_commands = qgetenv("PATH");
    qputenv("PATH", QFile::encodeName(m_desktop.path()) + ':' + m_commands);
}

void TestPaths::cleanupTestCase()
{
    if (!m_commands.isEmpty())
        qputenv("PATH", m_commands);
}

void TestPaths::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    QFile::remove(m_desktop.filePath(u"xdg-open.given"_s));
}

void TestPaths::save(const QString& path)
{
    TestWindow test;
    test.setText("trussLength", u"17"_s);
    const FileAnswer file(path);
    std::optional<BoxAnswer> saved;
    std::optional<Answer<QMessageBox>> overwrite;
    if (QFileInfo::exists(path)) {
        overwrite.emplace([&saved](QMessageBox& box) {
            box.button(QMessageBox::Yes)->click();
            saved.emplace(QMessageBox::Ok);
        });
    } else {
        saved.emplace(QMessageBox::Ok);
    }
    test.window.onSaveProjectClicked();
    QVERIFY(file.given());
    QVERIFY(saved->given());
    QCOMPARE(saved->title, u"Guardado"_s);
}

void TestPaths::open(const QString& path)
{
    TestWindow test;
    const FileAnswer file(path);
    test.window.onLoadProjectClicked();
    QVERIFY(file.given());
    QCOMPARE(LoadLogic::TrussLength, 17.0F);
}

void TestPaths::report()
{
    TestWindow test;
    const BoxAnswer box(QMessageBox::Ok);
    test.window.onPrintReportClicked();
    QVERIFY(box.given());
    QCOMPARE(box.title, u"Informe Generado"_s);
}

void TestPaths::project_isSavedAndOpened_data()
{
    Support::awkwardNames();
}

void TestPaths::project_isSavedAndOpened()
{
    QFETCH(QString, name);
    QVERIFY(QDir(m_folder->path()).mkdir(name));
    const QString file = path(name) + u'/' + name + u".rig"_s;
    if (name.contains(u'"')) // Qt's own dialog takes them for the ends of names; desktops bring another
        QVERIFY(ProjectFile::write(file, ProjectFile::fromBytes(projectOf(17.0F)).value()));
    else
        save(file);
    QCOMPARE(entries(path(name)), QStringList(name + u".rig"_s));
    QCOMPARE(ProjectFile::read(file).project.trussLength, 17.0F);

    if (!name.contains(u'"'))
        open(file);
    TestWindow test;
    test.window.openProjectFiles({file, file}); // as from the command line
    QCOMPARE(LoadLogic::TrussLength, 17.0F);
    QCOMPARE(test.tabBar()->count(), 2);
    QCOMPARE(entries(m_folder->path()), QStringList(name)); // nothing was run
}

void TestPaths::report_isHandedToTheBrowser_data()
{
    Support::awkwardNames();
}

void TestPaths::report_isHandedToTheBrowser()
{
    QFETCH(QString, name);
    QVERIFY(QDir(m_folder->path()).mkdir(name));
    const ReportsGoTo folder(path(name));
    const Browser browser;
    report();
    const QStringList files = entries(path(name));
    QCOMPARE(files.size(), 2);
    const QString html = path(name) + u'/' + files.at(0);
    QCOMPARE(browser.urls.size(), 1);
    const QByteArray url = browser.urls.at(0).toEncoded();
    QCOMPARE(QUrl::fromEncoded(url, QUrl::StrictMode).toLocalFile(), html);
    const ReportDocument document(QString::fromUtf8(contentOf(html)));
    QCOMPARE(document.images, QStringList(files.at(1)));
    QVERIFY(!QImage(path(name) + u'/' + files.at(1)).isNull());
    QCOMPARE(entries(m_folder->path()), QStringList(name)); // nothing was run
}

void TestPaths::browser_isGivenTheReportAsOneWord_data()
{
    Support::awkwardNames();
}

void TestPaths::browser_isGivenTheReportAsOneWord()
{
    if (QGuiApplication::platformName() == u"offscreen"_s)
        QSKIP("Off screen no browser is started; tools/xvfb.sh runs this on a screen");
    QFETCH(QString, name);
    QVERIFY(QDir(m_folder->path()).mkdir(name));
    const ReportsGoTo folder(path(name));
    report();
    const QString given = m_desktop.filePath(u"xdg-open.given"_s);
    QTRY_VERIFY(QFile::exists(given));
    const QStringList words = QString::fromUtf8(contentOf(given)).split(u'\n');
    QCOMPARE(words.at(0), u"1"_s);
    QCOMPARE(QUrl(words.at(1), QUrl::StrictMode).toLocalFile(),
             path(name) + u'/' + entries(path(name)).at(0));
    QCOMPARE(entries(m_folder->path()), QStringList(name)); // nothing else was run
}

void TestPaths::linkedFile_isOpened()
{
    put(path(u"gira.rig"_s), projectOf(17.0F));
    QVERIFY(QFile::link(path(u"gira.rig"_s), path(u"enlace.rig"_s)));
    open(path(u"enlace.rig"_s));
}

void TestPaths::linkedFile_isSavedAndStaysALink_data()
{
    QTest::addColumn<QStringList>("targets"); // of the links a, b, c …
    QTest::newRow("one link") << QStringList{u"gira.rig"_s};
    QTest::newRow("a link to a link") << QStringList{u"b"_s, u"gira.rig"_s};
    QTest::newRow("three in a row") << QStringList{u"b"_s, u"c"_s, u"gira.rig"_s};
    QTest::newRow("through another folder") << QStringList{u"otra/../gira.rig"_s};
}

void TestPaths::linkedFile_isSavedAndStaysALink()
{
    QFETCH(QStringList, targets);
    QVERIFY(QDir(m_folder->path()).mkdir(u"otra"_s));
    put(path(u"gira.rig"_s), projectOf(5.0F));
    for (qsizetype i = 0; i < targets.size(); ++i)
        QVERIFY(QFile::link(targets.at(i), path(QChar(u'a' + static_cast<char16_t>(i)))));
    const QStringList before = entries(m_folder->path());
    save(path(u"a"_s));
    QCOMPARE(entries(m_folder->path()), before);
    for (qsizetype i = 0; i < targets.size(); ++i)
        QVERIFY(QFileInfo(path(QChar(u'a' + static_cast<char16_t>(i)))).isSymLink());
    QVERIFY(!QFileInfo(path(u"gira.rig"_s)).isSymLink());
    open(path(u"gira.rig"_s));
}

void TestPaths::linkedFolder_holdsProjectAndReport()
{
    const QTemporaryDir disk;
    const QString linked = path(u"al disco"_s);
    QVERIFY(QFile::link(disk.path(), linked));
    save(linked + u"/gira.rig"_s);
    QCOMPARE(entries(disk.path()), QStringList(u"gira.rig"_s));
    open(linked + u"/gira.rig"_s);

    const ReportsGoTo folder(linked);
    const Browser browser;
    report();
    QCOMPARE(entries(disk.path()).size(), 3);
    QVERIFY(QFileInfo(linked).isSymLink());
}

// The names of reports can be foretold: they are made of the time.
void TestPaths::linksPlantedForAReport_areNotFollowed()
{
    const QTemporaryDir elsewhere;
    const QString victim = elsewhere.filePath(u"ajeno"_s);
    put(victim, "de otro");
    const QString missing = elsewhere.filePath(u"nuevo"_s);
    QVERIFY(QFile::link(victim, path(u"truss_schema_0.jpg"_s)));
    QVERIFY(QFile::link(missing, path(u"truss_schema_1.jpg"_s)));
    const QDateTime now = QDateTime::currentDateTime();
    constexpr int SECONDS = 600;
    for (int i = 0; i < SECONDS; ++i) {
        const QString name =
            u"informe_rigging_"_s + now.addSecs(i).toString(u"yyyyMMdd_HHmmss"_s) + u".html"_s;
        QVERIFY(QFile::link(i % 2 == 0 ? victim : missing, path(name)));
    }
    const ReportsGoTo folder(m_folder->path());
    const Browser browser;
    TestWindow test;
    test.window.onAddTab();
    const BoxAnswer box(QMessageBox::Ok);
    test.window.onPrintReportClicked();
    QVERIFY(box.given());

    QCOMPARE(contentOf(victim), QByteArray("de otro"));
    QCOMPARE(entries(elsewhere.path()), QStringList(u"ajeno"_s));
    int written = 0;
    const QFileInfoList files = QDir(m_folder->path()).entryInfoList(QDir::Files | QDir::System);
    for (const QFileInfo& file : files)
        written += file.isSymLink() ? 0 : 1;
    QCOMPARE(written, 3);
}

void TestPaths::reportFiles_areForTheirOwnerAlone()
{
#ifdef Q_OS_UNIX
    put(path(u"truss_schema_0.jpg"_s), "viejo"); // readable by all
    QVERIFY(QFile::setPermissions(path(u"truss_schema_0.jpg"_s), QFile::ReadOwner | QFile::WriteOwner
                                                                     | QFile::ReadGroup | QFile::ReadOther));
    const ReportsGoTo folder(m_folder->path());
    const Browser browser;
    const mode_t usual = umask(0);
    report();
    umask(usual);
    const QStringList files = entries(m_folder->path());
    QCOMPARE(files.size(), 2);
    for (const QString& file : files) {
        struct stat status
        {
        };
        QCOMPARE(stat(QFile::encodeName(path(file)).constData(), &status), 0);
        QCOMPARE(status.st_mode & 07777U, 0600U);
    }
#endif
}

QTEST_MAIN(TestPaths)
#include "tst_paths.moc"
