#include "engine/LoadLogic.h"
#include "io/HtmlReport.h"
#include "io/SafeFile.h"

#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace
{

const QString BROWSER = u"/usr/bin/chromium"_s;

/// What the browser made of a page.
struct Visit
{
    QString page;    ///< the document after everything in it had its chance to run
    QString console; ///< what the page complained about
};

/// Loads `path` in a browser with a profile of its own, which asks nobody for anything.
Visit visit(const QString& path, const QStringList& more)
{
    const QTemporaryDir profile;
    QProcess browser;
    QStringList arguments{u"--headless"_s,
                          u"--no-sandbox"_s,
                          u"--disable-gpu"_s,
                          u"--disable-dev-shm-usage"_s,
                          u"--no-first-run"_s,
                          u"--disable-background-networking"_s,
                          u"--disable-component-update"_s,
                          u"--disable-sync"_s,
                          u"--enable-logging=stderr"_s,
                          u"--user-data-dir="_s + profile.path()};
    browser.start(BROWSER, arguments + more + QStringList(QUrl::fromLocalFile(path).toString()));
    constexpr int PATIENCE = 90'000; // [ms]
    if (!browser.waitForFinished(PATIENCE)) {
        browser.kill();
        browser.waitForFinished();
        return {};
    }
    QStringList complaints;
    const QStringList lines = QString::fromUtf8(browser.readAllStandardError()).split(u'\n');
    for (const QString& line : lines) {
        if (line.contains(u":CONSOLE"_s))
            complaints.append(line);
    }
    return {QString::fromUtf8(browser.readAllStandardOutput()), complaints.join(u'\n')};
}

Figures figures(const QString& motorName)
{
    LoadLogic::ProjectState project;
    project.tabName = u"Sala"_s;
    LoadLogic::Motor motor;
    motor.modelName = motorName;
    project.motors = {motor};
    return Figures::of(project);
}

/// A report of one project in `folder`, with a drawing all of one colour.
QString writeReport(const QTemporaryDir& folder, const QString& html)
{
    QImage drawing(2000, 800, QImage::Format_RGB32);
    drawing.fill(QColor(0, 0, 255));
    if (!drawing.save(folder.filePath(HtmlReport::drawingName(0)), "JPG"))
        qFatal("no drawing");
    const QString path = folder.filePath(u"informe.html"_s);
    if (!SafeFile::publish(path, html.toUtf8()))
        qFatal("no report");
    return path;
}

QString documentWith(const QString& motorName)
{
    return HtmlReport::document({figures(motorName)}, u"Sala"_s, QDateTime::currentDateTime());
}

QString withoutPolicy(const QString& html)
{
    QString plain = html;
    const qsizetype begin = plain.indexOf(u"<meta http-equiv"_s);
    return plain.remove(begin, plain.indexOf(u'>', begin) + 1 - begin);
}

QImage screenshot(const QString& path, const QTemporaryDir& folder)
{
    const QString picture = folder.filePath(u"foto.png"_s);
    QFile::remove(picture);
    visit(path, {u"--window-size=900,1500"_s, u"--hide-scrollbars"_s, u"--screenshot="_s + picture});
    return QImage(picture);
}

/// Pixels of the drawing's colour.
int bluePixels(const QImage& picture)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QRgb pixel = picture.pixel(x, y);
            count += qBlue(pixel) > 230 && qRed(pixel) < 25 && qGreen(pixel) < 25 ? 1 : 0;
        }
    }
    return count;
}

/// Writes a mark into the page as soon as it is loaded.
const QString HANDLER = u"<img src='no.jpg' onerror=\"document.title='SE EJECUTÓ'\">"
                        "<script>document.title='SE EJECUTÓ'</script>"_s;

} // namespace

/// The written report in a real browser.
class TestBrowser : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void report_loadsWithoutComplaint();
    void report_showsItsDrawing();
    void policy_changesNothingThatIsSeen();
    void markupInAName_runsNothing();
};

void TestBrowser::initTestCase()
{
    if (!QFileInfo(BROWSER).isExecutable())
        QSKIP("Chromium is not installed");
}

void TestBrowser::report_loadsWithoutComplaint()
{
    const QTemporaryDir folder;
    const Visit visited = visit(writeReport(folder, documentWith(u"D8+"_s)), {u"--dump-dom"_s});
    QCOMPARE(visited.console, QString());
    QVERIFY(visited.page.contains(u"<td>D8+</td>"_s));
    QVERIFY(visited.page.contains(u"VALIDACIÓN OBLIGATORIA"_s));
}

void TestBrowser::report_showsItsDrawing()
{
    const QTemporaryDir folder;
    const QImage picture = screenshot(writeReport(folder, documentWith(u"D8+"_s)), folder);
    QVERIFY(!picture.isNull());
    // 780 pixels wide at most, in the ratio of 2000 × 800.
    QVERIFY2(bluePixels(picture) > 200'000, QByteArray::number(bluePixels(picture)).constData());
}

void TestBrowser::policy_changesNothingThatIsSeen()
{
    const QTemporaryDir folder;
    const QString html = documentWith(u"D8+"_s);
    const QImage with = screenshot(writeReport(folder, html), folder);
    const QImage without = screenshot(writeReport(folder, withoutPolicy(html)), folder);
    QVERIFY(!with.isNull());
    QCOMPARE(with, without);
}

void TestBrowser::markupInAName_runsNothing()
{
    const QTemporaryDir folder;
    const QString html = documentWith(HANDLER);
    const Visit guarded = visit(writeReport(folder, html), {u"--dump-dom"_s});
    QVERIFY(guarded.page.contains(u"VALIDACIÓN OBLIGATORIA"_s));
    QVERIFY(!guarded.page.contains(u"<title>"_s));
    QVERIFY(guarded.console.contains(u"Content Security Policy"_s));

    // Without the policy it does run: the browser would have obeyed.
    const Visit open = visit(writeReport(folder, withoutPolicy(html)), {u"--dump-dom"_s});
    QVERIFY(open.page.contains(u"<title>SE EJECUTÓ</title>"_s));
}

QTEST_MAIN(TestBrowser)
#include "tst_browser.moc"
