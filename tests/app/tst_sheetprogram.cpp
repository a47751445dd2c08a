#include "support/Files.h"
#include "support/Program.h"

#include <QCryptographicHash>
#include <QDir>
#include <QTest>

using Support::Result;
using Support::run;
using namespace Qt::StringLiterals;

namespace
{

QString example(const QString& name)
{
    return QStringLiteral(VELMORA_SOURCE_DIR "/examples/") + name + u".rig"_s;
}

QString textOf(const QString& path)
{
    QProcess process;
    process.start(u"pdftotext"_s, {u"-raw"_s, path, u"-"_s});
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput());
}

} // namespace

class SheetProgramTest : public QObject
{
    Q_OBJECT

private slots:
    void sheet_isWrittenWithoutADisplay();
    void digest_isThatOfTheFile();
    void severalFiles_makeOneSheet();
    void exitCode_tellsTheVerdict_data();
    void exitCode_tellsTheVerdict();
    void badFile_fails_andTheRestIsWritten();
    void existingSheet_isToldAndLeftAlone();
    void missingFolder_fails();
    void withoutFiles_isRefused();
    void pipe_hasTheDigestOfWhatWouldBeSaved();
};

void SheetProgramTest::sheet_isWrittenWithoutADisplay()
{
    const QTemporaryDir folder;
    const Result result = run({u"--memoria"_s, u"--salida"_s, folder.path(), example(u"pantalla"_s)});
    const QString path = folder.filePath(u"memoria_pantalla.pdf"_s);
    QCOMPARE(result.code, 0);
    QCOMPARE(result.err, QString());
    QVERIFY(result.out.startsWith(path + u'\n'));
    QVERIFY(result.out.contains(u"pantalla.rig: APTO"_s));
    QVERIFY(Support::contentOf(path).startsWith("%PDF-"));
    QVERIFY(textOf(path).contains(u"Memoria de cálculo: Pantalla de congreso"_s));
}

void SheetProgramTest::digest_isThatOfTheFile()
{
    const QTemporaryDir folder;
    QCOMPARE(run({u"--memoria"_s, u"--salida"_s, folder.path(), example(u"pantalla"_s)}).code, 0);
    const QByteArray bytes = Support::contentOf(example(u"pantalla"_s));
    const QByteArray digest = QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
    QVERIFY(textOf(folder.filePath(u"memoria_pantalla.pdf"_s)).contains(QString::fromLatin1(digest)));
}

void SheetProgramTest::severalFiles_makeOneSheet()
{
    const QTemporaryDir folder;
    const QStringList files{example(u"pantalla"_s), example(u"voladizo"_s)};
    QCOMPARE(run(QStringList{u"--memoria"_s, u"--salida"_s, folder.path()} + files).code, 1);
    QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{u"memoria_pantalla.pdf"_s});
    const QString text = textOf(folder.filePath(u"memoria_pantalla.pdf"_s));
    QVERIFY(text.contains(u"Memoria de cálculo: Pantalla de congreso"_s));
    QVERIFY(text.contains(u"Memoria de cálculo: Voladizo sobre el público"_s));
}

void SheetProgramTest::exitCode_tellsTheVerdict_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("more");
    QTest::addColumn<int>("code");
    QTest::newRow("within limits") << u"pantalla"_s << QStringList() << 0;
    QTest::newRow("unstable") << u"voladizo"_s << QStringList() << 1;
    QTest::newRow("only the second opinion tips") << u"vuelca"_s << QStringList() << 1;
    QTest::newRow("… which is not asked") << u"vuelca"_s << QStringList{u"--sin-contraste"_s} << 0;
}

void SheetProgramTest::exitCode_tellsTheVerdict()
{
    QFETCH(QString, name);
    QFETCH(QStringList, more);
    QFETCH(int, code);
    const QTemporaryDir folder;
    const Result result =
        run(more + QStringList{u"--memoria"_s, u"--salida"_s, folder.path(), example(name)});
    QCOMPARE(result.code, code);
    // The same as the report's.
    const Result report =
        run(more + QStringList{u"--informe"_s, u"--salida"_s, folder.path(), example(name)});
    QCOMPARE(report.code, code);
}

void SheetProgramTest::badFile_fails_andTheRestIsWritten()
{
    const QTemporaryDir folder;
    const QString bad = Support::put(folder, u"roto.rig"_s, "[]");
    const Result result = run({u"--memoria"_s, u"--salida"_s, folder.path(), bad, example(u"pantalla"_s)});
    QCOMPARE(result.code, 2);
    QVERIFY(result.err.contains(u"roto.rig: Formato de archivo inválido."_s));
    QVERIFY(QFile::exists(folder.filePath(u"memoria_pantalla.pdf"_s)));
    QCOMPARE(run({u"--memoria"_s, u"--salida"_s, folder.path(), bad}).code, 2);
}

void SheetProgramTest::existingSheet_isToldAndLeftAlone()
{
    const QTemporaryDir folder;
    const QString path = Support::put(folder, u"memoria_pantalla.pdf"_s, "mine");
    const QStringList arguments{u"--memoria"_s, u"--salida"_s, folder.path(), example(u"pantalla"_s)};
    const Result result = run(arguments);
    QCOMPARE(result.code, 2);
    QVERIFY2(result.err.contains(path + u": Ya existe y no se toca; con --sobrescribir se reemplaza."_s),
             qPrintable(result.err));
    QCOMPARE(Support::contentOf(path), QByteArray("mine"));

    QCOMPARE(run(arguments + QStringList{u"--sobrescribir"_s}).code, 0);
    QVERIFY(Support::contentOf(path).startsWith("%PDF-"));
}

void SheetProgramTest::missingFolder_fails()
{
    const QTemporaryDir folder;
    const Result result =
        run({u"--memoria"_s, u"--salida"_s, folder.filePath(u"none"_s), example(u"pantalla"_s)});
    QCOMPARE(result.code, 2);
    QVERIFY(result.err.contains(u"No se pudo crear el archivo de la memoria."_s));
}

void SheetProgramTest::withoutFiles_isRefused()
{
    const Result result = run({u"--memoria"_s});
    QCOMPARE(result.code, 2);
    QVERIFY(result.err.contains(u"Falta al menos un archivo de proyecto"_s));
    QCOMPARE(run({u"--memoria"_s, u"--resumen"_s, u"--json"_s, u"a.rig"_s}).code, 2);
}

void SheetProgramTest::pipe_hasTheDigestOfWhatWouldBeSaved()
{
    const QTemporaryDir folder;
    QProcess shell;
    shell.setProcessEnvironment(Support::withoutDisplay());
    shell.start(u"bash"_s,
                {u"-c"_s, u"'%1' --memoria --salida '%2' <(cat '%3')"_s.arg(
                              QStringLiteral(VELMORA_EXECUTABLE), folder.path(), example(u"pantalla"_s))});
    QVERIFY(shell.waitForFinished());
    QCOMPARE(shell.exitCode(), 0);
    const QStringList files = QDir(folder.path()).entryList(QDir::Files);
    QCOMPARE(files.size(), 1);
    QVERIFY(textOf(folder.filePath(files.constFirst())).contains(u"SHA-256 del proyecto: "_s));
}

QTEST_MAIN(SheetProgramTest)
#include "tst_sheetprogram.moc"
