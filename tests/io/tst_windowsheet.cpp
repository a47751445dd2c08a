#include "engine/ProjectOpinion.h"
#include "engine/SecondOpinionText.h"
#include "io/ProjectFile.h"
#include "support/Browser.h"
#include "support/Dialogs.h"
#include "support/Files.h"
#include "support/FullDisk.h"
#include "support/TemporaryDirectory.h"
#include "support/Window.h"
#include "ui/ContrastDialog.h"

#include <QFileDialog>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;

using Support::Answer;
using Support::BoxAnswer;
using Support::Browser;
using Support::FileAnswer;
using Support::TemporaryDirectory;
using Support::TestWindow;

namespace
{

const QString EXAMPLES = QStringLiteral(VELMORA_SOURCE_DIR "/examples/");

QString textOf(const QString& pdf)
{
    QProcess process;
    process.start(u"pdftotext"_s, {u"-raw"_s, pdf, u"-"_s});
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput());
}

} // namespace

/// The calculation sheet and the printed contrast, from a real window.
class WindowSheetTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_viewer.urls.clear();
        m_test.emplace();
        QVERIFY(m_test->activate());
        m_test->window.openProjectFile(EXAMPLES + u"concierto.rig"_s);
    }
    void cleanup()
    {
        m_test.reset();
    }

    void keys_writeASheetOfAllTabs();
    void button_writesIt();
    void suffix_isAdded();
    void cancelledDialog_writesNothing();
    void existingFile_isReplacedOnlyAfterYes_data();
    void existingFile_isReplacedOnlyAfterYes();
    void fullDisk_isTold();
    void missingViewer_isTold();
    void print_showsWhatTheDialogShows();
    void printTwice_makesTwoFiles();
    void printOnFullDisk_isTold();
    void sheet_leavesTheProjectAlone();

private:
    ContrastDialog* openDialog();

    std::optional<TestWindow> m_test;
    TemporaryDirectory m_folder;
    Browser m_viewer;
};

ContrastDialog* WindowSheetTest::openDialog()
{
    QTest::keyClick(&m_test->window, Qt::Key_F8);
    return m_test->window.findChild<ContrastDialog*>();
}

void WindowSheetTest::keys_writeASheetOfAllTabs()
{
    m_test->window.onAddTab();
    m_test->tabBar()->setTabText(0, u"Sala / Norte"_s);
    m_test->tabBar()->setTabText(1, u"Patio"_s);
    const QString path = m_folder.path(u"show.pdf"_s);
    const FileAnswer file(path);
    QTest::keyClick(&m_test->window, Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(file.given());
    QCOMPARE(file.title, u"Guardar memoria de cálculo"_s);
    QCOMPARE(file.mode, QFileDialog::AcceptSave);
    QCOMPARE(file.filters, QStringList{u"PDF (*.pdf)"_s});
    QCOMPARE(file.offered, u"memoria_Patio.pdf"_s);
    QCOMPARE(m_viewer.urls.takeLast(), QUrl::fromLocalFile(path));
    const QString text = textOf(path);
    QVERIFY(text.contains(u"Memoria de cálculo: Sala / Norte"_s));
    QVERIFY(text.contains(u"Memoria de cálculo: Patio"_s));
    QVERIFY(text.contains(u"527.5"_s));
}

void WindowSheetTest::button_writesIt()
{
    const QString path = m_folder.path(u"boton.pdf"_s);
    const FileAnswer file(path);
    openDialog();
    m_test->button(u"MEMORIA DE CÁLCULO (PDF)"_s)->click();
    QVERIFY(file.given());
    QVERIFY(Support::contentOf(path).startsWith("%PDF-"));
}

void WindowSheetTest::suffix_isAdded()
{
    const FileAnswer file(m_folder.path(u"sin punto"_s));
    m_test->window.onSheetClicked();
    QVERIFY(file.given());
    QVERIFY(m_folder.files().contains(u"sin punto.pdf"_s));
}

void WindowSheetTest::cancelledDialog_writesNothing()
{
    const QStringList before = m_folder.files();
    const qsizetype shown = m_viewer.urls.size();
    const FileAnswer cancelled{QString()};
    m_test->window.onSheetClicked();
    QVERIFY(cancelled.given());
    QCOMPARE(m_folder.files(), before);
    QCOMPARE(m_viewer.urls.size(), shown);
}

void WindowSheetTest::existingFile_isReplacedOnlyAfterYes_data()
{
    QTest::addColumn<bool>("agreed");
    QTest::newRow("yes") << true;
    QTest::newRow("no") << false;
}

void WindowSheetTest::existingFile_isReplacedOnlyAfterYes()
{
    QFETCH(bool, agreed);
    const QString path = m_folder.path(u"vieja.pdf"_s);
    Support::put(path, "mine");
    const FileAnswer file(path);
    const Answer<QMessageBox> question([agreed](QMessageBox& box) {
        QTimer::singleShot(0, box.parentWidget(), [dialog = qobject_cast<QDialog*>(box.parentWidget())] {
            if (dialog->isVisible()) // a No leaves it open
                dialog->reject();
        });
        box.button(agreed ? QMessageBox::Yes : QMessageBox::No)->click();
    });
    m_test->window.onSheetClicked();
    QVERIFY(file.given() && question.given());
    QCOMPARE(Support::contentOf(path).startsWith("%PDF-"), agreed);
    QCOMPARE(Support::contentOf(path) == "mine", !agreed);
}

void WindowSheetTest::fullDisk_isTold()
{
    const QString path = m_folder.path(u"llena.pdf"_s);
    const qsizetype shown = m_viewer.urls.size();
    const FileAnswer file(path);
    const BoxAnswer box(QMessageBox::Ok);
    {
        const Support::FullDisk full(1000);
        m_test->window.onSheetClicked();
    }
    QVERIFY(file.given() && box.given());
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(box.title, u"Error de Escritura"_s);
    QCOMPARE(box.text, u"No se pudo crear el archivo PDF en:\n"_s + path);
    QVERIFY(!m_folder.files().contains(u"llena.pdf"_s));
    QCOMPARE(m_viewer.urls.size(), shown);
}

void WindowSheetTest::missingViewer_isTold()
{
    if (QGuiApplication::platformName() != u"offscreen"_s) // which does not even look for one
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Unable to detect a launcher for "_s));
    const QByteArray programs = qgetenv("PATH");
    qputenv("PATH", "/no/such/folder");
    QDesktopServices::unsetUrlHandler(u"file"_s);
    const QString path = m_folder.path(u"sola.pdf"_s);
    const FileAnswer file(path);
    const BoxAnswer box(QMessageBox::Ok);
    m_test->window.onSheetClicked();
    qputenv("PATH", programs);
    QDesktopServices::setUrlHandler(u"file"_s, &m_viewer, "open");
    QVERIFY(file.given() && box.given());
    QCOMPARE(box.title, u"PDF guardado"_s);
    QCOMPARE(box.text, u"No se pudo abrir el visor de PDF.\n\nBusque el archivo en: "_s + path);
}

void WindowSheetTest::print_showsWhatTheDialogShows()
{
    m_test->tabBar()->setTabText(0, u"Concierto"_s);
    ContrastDialog* dialog = openDialog();
    QApplication::setActiveWindow(dialog);
    QTest::keyClicks(dialog->findChild<QLineEdit*>(u"tableDeflection"_s), u"8.4"_s);
    QTest::keyClick(dialog->findChild<QLineEdit*>(u"tableDeflection"_s), Qt::Key_P, Qt::ControlModifier);
    QTRY_VERIFY(!m_viewer.urls.isEmpty());
    const QString path = m_viewer.urls.takeLast().toLocalFile();
    QCOMPARE(QFileInfo(path).absolutePath(), m_folder.path(QString()));
    const QString text = textOf(path).simplified();
    QVERIFY(text.contains(u"Contraste de reparto: Concierto"_s));
    QVERIFY(!text.contains(u"Memoria"_s));
    const QStringList sentences =
        SecondOpinionText::sentences(ProjectOpinion::of(LoadLogic::Snapshot(), dialog->tableDeflection()));
    QVERIFY(sentences.size()
            > SecondOpinionText::sentences(ProjectOpinion::of(LoadLogic::Snapshot())).size());
    for (const QString& sentence : sentences)
        QVERIFY2(text.contains(sentence.simplified()), qPrintable(sentence));
}

void WindowSheetTest::printTwice_makesTwoFiles()
{
    openDialog();
    m_test->window.onPrintContrastClicked();
    m_test->window.onPrintContrastClicked();
    QVERIFY(m_viewer.urls.size() >= 2);
    QVERIFY(m_viewer.urls.takeLast() != m_viewer.urls.takeLast());
}

void WindowSheetTest::printOnFullDisk_isTold()
{
    openDialog();
    const BoxAnswer box(QMessageBox::Ok);
    {
        const Support::FullDisk full(1000);
        m_test->window.onPrintContrastClicked();
    }
    QVERIFY(box.given());
    QCOMPARE(box.title, u"Error de Escritura"_s);
}

void WindowSheetTest::sheet_leavesTheProjectAlone()
{
    const QByteArray before = ProjectFile::toBytes(LoadLogic::Snapshot());
    const qsizetype steps = static_cast<qsizetype>(m_test->window.undoStack.size());
    const FileAnswer file(m_folder.path(u"igual.pdf"_s));
    m_test->window.onSheetClicked();
    QVERIFY(file.given());
    QCOMPARE(ProjectFile::toBytes(LoadLogic::Snapshot()), before);
    QCOMPARE(static_cast<qsizetype>(m_test->window.undoStack.size()), steps);
}

QTEST_MAIN(WindowSheetTest)
#include "tst_windowsheet.moc"
