#include "support/Dialogs.h"
#include "support/Window.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>
#include <QUrl>

using namespace Qt::StringLiterals;

/// Stands in for the browser: tells on standard output what it is asked to open.
class Browser : public QObject
{
    Q_OBJECT

public slots:
    void open(const QUrl& url)
    {
        QTextStream(stdout) << "open " << url.toString() << '\n';
    }
};

namespace
{

/// What the copy of this program does that stands in for the installed one.
int openGuide()
{
    Browser browser;
    QDesktopServices::setUrlHandler(u"file"_s, &browser, "open");
    MainWindow window;
    const Support::BoxAnswer ok(QMessageBox::Ok);
    window.onOpenUserGuideClicked();
    QTextStream out(stdout);
    if (ok.given())
        out << "box " << ok.icon << '|' << ok.title << '|' << ok.text << '|' << ok.buttons.toInt() << '\n';
    QDesktopServices::unsetUrlHandler(u"file"_s);
    return 0;
}

void touch(const QString& path)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
}

} // namespace

/// The user guide is looked for beside the program and then in the working directory. The program is a
/// copy of this test in a directory of its own.
class TestGuide : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void besideTheProgram_isOpened();
    void besideTheProgramAndInTheWorkingDirectory_isOpenedBesideTheProgram();
    void inTheWorkingDirectoryAlone_isOpened();
    void nowhere_isToldWithTheSecondPath();

private:
    [[nodiscard]] QString run();
    [[nodiscard]] QString programGuide() const
    {
        return m_folder.filePath(u"bin/user_guide.html"_s);
    }
    [[nodiscard]] QString workGuide() const
    {
        return m_folder.filePath(u"trabajo ñ/user_guide.html"_s);
    }

    QTemporaryDir m_folder;
    QString m_program;
};

void TestGuide::initTestCase()
{
    QVERIFY(m_folder.isValid());
    QVERIFY(QDir(m_folder.path()).mkpath(u"bin"_s));
    QVERIFY(QDir(m_folder.path()).mkpath(u"trabajo ñ"_s));
    m_program = m_folder.filePath(u"bin/programa"_s);
    QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), m_program));
}

void TestGuide::init()
{
    QFile::remove(programGuide());
    QFile::remove(workGuide());
}

QString TestGuide::run()
{
    QProcess process;
    process.setWorkingDirectory(m_folder.filePath(u"trabajo ñ"_s));
    process.start(m_program, {u"--open-guide"_s});
    if (!process.waitForFinished(60'000)) {
        process.kill();
        return u"did not end"_s;
    }
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

void TestGuide::besideTheProgram_isOpened()
{
    touch(programGuide());
    QCOMPARE(run(), u"open "_s + QUrl::fromLocalFile(programGuide()).toString());
}

void TestGuide::besideTheProgramAndInTheWorkingDirectory_isOpenedBesideTheProgram()
{
    touch(programGuide());
    touch(workGuide());
    QCOMPARE(run(), u"open "_s + QUrl::fromLocalFile(programGuide()).toString());
}

void TestGuide::inTheWorkingDirectoryAlone_isOpened()
{
    touch(workGuide());
    QCOMPARE(run(), u"open "_s + QUrl::fromLocalFile(workGuide()).toString());
}

void TestGuide::nowhere_isToldWithTheSecondPath()
{
    const QString expected = u"box "_s + QString::number(QMessageBox::Warning)
                             + u"|Error|No se pudo encontrar el archivo: "_s + workGuide() + u'|'
                             + QString::number(QMessageBox::Ok);
    QCOMPARE(run(), expected);
}

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    if (QCoreApplication::arguments().contains(u"--open-guide"_s))
        return openGuide();
    TestGuide test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_guide.moc"
