#include "io/ProjectFile.h"
#include "support/Names.h"
#include "support/Program.h"
#include "support/ReportDocument.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

using Support::put;
using Support::ReportDocument;
using Support::Result;
using Support::run;
using Support::withoutDisplay;

namespace
{

const QString EXAMPLES = u"" VELMORA_SOURCE_DIR "/examples/"_s;

QStringList htmlFiles(const QTemporaryDir& folder)
{
    return QDir(folder.path()).entryList({u"informe_rigging_*.html"_s}, QDir::Files);
}

} // namespace

/// The program as its user starts it, in a process of its own.
class TestProgram : public QObject
{
    Q_OBJECT

private slots:
    void help_isSpanishAndNeedsNoDisplay();
    void version_isTold();
    void unknownOption_isOneLineAndTheUsage();
    void summary_ofSoundProjects_exitsWithZero();
    void summary_ofAnUnsoundProject_exitsWithOne();
    void summary_ofBadFiles_treatsTheOthersAndExitsWithTwo();
    void summary_isTheSameInEveryLocale_data();
    void summary_isTheSameInEveryLocale();
    void summary_ofWhatCannotBeCalculated_warnsAndExitsWithOne();
    void summary_asJson_isOneDocument();
    void summary_afterADoubleDash_takesAnyName();
    void files_mayHaveAnyName_data();
    void files_mayHaveAnyName();
    void summary_ofHostileFiles_staysAlive_data();
    void summary_ofHostileFiles_staysAlive();
    void fullOutput_exitsWithTwo();
    void report_isWrittenWithItsDrawings();
    void report_goesToTheTemporaryDirectory();
    void report_ofSoundProjects_exitsWithZero();
    void report_withABadFile_treatsTheOthers();
    void report_ofNothingReadable_writesNothing();
    void report_intoAMissingFolder_exitsWithTwo();
    void report_withMarkupForAName_tellsItBefore();
    void report_withoutASessionFolder_leavesNone();
    void tooFewFiles_areToldAtOnce();
    void summaryAndReport_areBothWritten();
    void windowWithoutDisplay_saysSoInOneLine();
    void windowWithoutDisplay_onADesktopPlatform_doesNotAbort_data();
    void windowWithoutDisplay_onADesktopPlatform_doesNotAbort();
    void windowWithoutDisplay_tellsTheFiguresAndWritesTheReport();
    void windowOffScreen_opens();
    void program_cannotReachANetwork();
};

void TestProgram::help_isSpanishAndNeedsNoDisplay()
{
    for (const QString& option : {u"--help"_s, u"-h"_s}) {
        const Result result = run({option});
        QCOMPARE(result.code, 0);
        QVERIFY(result.out.startsWith(u"Uso: velmora-master"_s));
        QCOMPARE(result.err, QString());
    }
}

void TestProgram::version_isTold()
{
    const Result result = run({u"--version"_s});
    QCOMPARE(result.code, 0);
    QVERIFY(QRegularExpression(u"^Velmora Master \\d+\\.\\d+\\.\\d+\\n$"_s).match(result.out).hasMatch());
    QCOMPARE(result.err, QString());
}

void TestProgram::unknownOption_isOneLineAndTheUsage()
{
    const Result result = run({u"--volar"_s});
    QCOMPARE(result.code, 2);
    QCOMPARE(result.out, QString());
    QVERIFY(result.err.startsWith(u"velmora-master: Opción desconocida: --volar\nUso: velmora-master"_s));
}

void TestProgram::summary_ofSoundProjects_exitsWithZero()
{
    const Result result = run({u"--resumen"_s, EXAMPLES + u"concierto.rig"_s, EXAMPLES + u"pantalla.rig"_s});
    QCOMPARE(result.code, 0);
    QCOMPARE(result.err, QString());
    QVERIFY(result.out.contains(u"Concierto de plaza\n"_s));
    QVERIFY(result.out.contains(
        u"  Centro      0.00m          180.0          230.0          287.5          1000.0  "
        "OK ✅\n"_s));
    QVERIFY(result.out.contains(u"Estrés: 18.8 %\n"_s));
    QCOMPARE(result.out.count(u"Resultado: APTO"_s), 2);
}

void TestProgram::summary_ofAnUnsoundProject_exitsWithOne()
{
    const Result overloaded =
        run({u"--resumen"_s, EXAMPLES + u"pasarela.rig"_s, EXAMPLES + u"concierto.rig"_s});
    QCOMPARE(overloaded.code, 1);
    QVERIFY(overloaded.out.contains(u"EXCESO DINÁMICO ❌"_s));

    const Result unstable = run({u"--resumen"_s, EXAMPLES + u"voladizo.rig"_s});
    QCOMPARE(unstable.code, 1);
    QVERIFY(unstable.out.contains(u"Estabilidad: INESTABLE"_s));
}

void TestProgram::summary_ofBadFiles_treatsTheOthersAndExitsWithTwo()
{
    const QTemporaryDir folder;
    const QString bad = put(folder, u"malo.rig"_s, "[]");
    const QString missing = folder.filePath(u"nada.rig"_s);
    const Result result =
        run({u"--resumen"_s, bad, EXAMPLES + u"voladizo.rig"_s, missing, EXAMPLES + u"concierto.rig"_s});
    QCOMPARE(result.code, 2);
    QCOMPARE(result.err, u"velmora-master: "_s + bad + u": Formato de archivo inválido.\nvelmora-master: "_s
                             + missing + u": No se pudo leer el archivo.\n"_s);
    QVERIFY(result.out.contains(u"Voladizo sobre el público"_s));
    QVERIFY(result.out.contains(u"Concierto de plaza"_s));
}

void TestProgram::summary_isTheSameInEveryLocale_data()
{
    QTest::addColumn<QString>("locale");
    QTest::newRow("C") << u"C"_s;
    QTest::newRow("Spanish") << u"es_ES.UTF-8"_s;
    QTest::newRow("German") << u"de_DE.UTF-8"_s;
    QTest::newRow("not UTF-8") << u"es_ES.ISO-8859-1"_s;
    QTest::newRow("none") << QString();
}

void TestProgram::summary_isTheSameInEveryLocale()
{
    QFETCH(const QString, locale);
    const QTemporaryDir folder;
    const QString path = put(folder, u"ñandú €.rig"_s, ProjectFile::toBytes(ProjectState()));
    QProcessEnvironment environment = withoutDisplay();
    environment.remove(u"LC_ALL"_s);
    environment.remove(u"LANG"_s);
    if (!locale.isEmpty())
        environment.insert(u"LC_ALL"_s, locale);
    const Result result = run({u"--resumen"_s, path}, environment);
    QCOMPARE(result.code, 0);
    QCOMPARE(result.err, QString());
    QVERIFY(result.out.startsWith(path + u": Proyecto\n  Viga: 12.00 m, 8.4 kg/m, CPL 1600.0 kg\n"_s));
}

void TestProgram::summary_ofWhatCannotBeCalculated_warnsAndExitsWithOne()
{
    const QTemporaryDir folder;
    const QString path = put(folder, u"a.rig"_s, R"({"motors": [{}, {"positionX": 6}, {"positionX": 6},
        {"positionX": 12}], "loads": [{"positionX": 6, "mass": 10}]})");
    const Result result = run({u"--resumen"_s, path});
    QCOMPARE(result.code, 1);
    QVERIFY(result.out.contains(u"Aviso: hay motores cuya carga no se puede calcular"_s));

    const Result report = run({u"--informe"_s, u"--salida"_s, folder.path(), path});
    QCOMPARE(report.code, 1);
    QVERIFY(report.out.contains(u"Aviso: hay motores cuya carga no se puede calcular"_s));
}

void TestProgram::summary_asJson_isOneDocument()
{
    const QTemporaryDir folder;
    const QString missing = folder.filePath(u"nada.rig"_s);
    const Result result = run(
        {u"--resumen"_s, u"--json"_s, EXAMPLES + u"voladizo.rig"_s, missing, EXAMPLES + u"concierto.rig"_s});
    QCOMPARE(result.code, 2);
    const QJsonObject document = QJsonDocument::fromJson(result.out.toUtf8()).object();
    QCOMPARE(document.keys(), QStringList({u"errores"_s, u"proyectos"_s, u"version"_s}));
    const QJsonArray projects = document[u"proyectos"_s].toArray();
    QCOMPARE(projects.size(), 2);
    QCOMPARE(projects[0][u"estable"_s].toBool(true), false);
    QCOMPARE(projects[1][u"motores"_s][0][u"en_punto_kg"_s].toDouble(), 450.0);
    QCOMPARE(projects[1][u"estres_pct"_s].toDouble(), 11.0);
    QCOMPARE(document[u"errores"_s][0][u"archivo"_s].toString(), missing);
    QCOMPARE(document[u"errores"_s][0][u"motivo"_s].toString(), u"No se pudo leer el archivo."_s);
}

void TestProgram::summary_afterADoubleDash_takesAnyName()
{
    const Result result = run({u"--resumen"_s, u"--"_s, u"--no-es-una-opción"_s});
    QCOMPARE(result.code, 2);
    QCOMPARE(result.err, u"velmora-master: --no-es-una-opción: No se pudo leer el archivo.\n"_s);
}

void TestProgram::files_mayHaveAnyName_data()
{
    Support::awkwardNames();
}

void TestProgram::files_mayHaveAnyName()
{
    QFETCH(QString, name);
    const QTemporaryDir folder;
    const QString output = folder.filePath(name);
    QVERIFY(QDir().mkdir(output));
    const QString file = put(folder, name + u".rig"_s, ProjectFile::toBytes(ProjectState()));
    const Result result = run({u"--resumen"_s, u"--informe"_s, u"--salida"_s, output, file});
    QCOMPARE(result.err, QString());
    QCOMPARE(result.code, 0);
    QVERIFY(result.out.contains(file + u": Proyecto\n"_s));
    const QStringList written = QDir(output).entryList(QDir::Files | QDir::Hidden);
    QCOMPARE(written.size(), 2);
    QVERIFY(result.out.contains(output + u'/' + written.at(0) + u'\n'));
    QCOMPARE(written.at(1), u"truss_schema_0.jpg"_s);
    QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 2);
}

void TestProgram::summary_ofHostileFiles_staysAlive_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("code");
    QTest::newRow("empty") << QByteArray() << 2;
    QTest::newRow("binary") << QByteArray(5000, '\xfe') << 2;
    QTest::newRow("nested") << QByteArray(1'000'000, '[') << 2;
    QTest::newRow("no length") << QByteArray(R"({"trussLength": 0, "motors": [{}]})") << 0;
    // A truss that ends before it begins overhangs nowhere: the motor at 0 stands right of 45 % of −5 m.
    QTest::newRow("negative length") << QByteArray(R"({"trussLength": -5, "motors": [{}]})") << 0;
    QTest::newRow("enormous") << QByteArray(
        R"({"trussLength": 1e39, "motors": [{}], "loads": [{"mass": 1e39}]})")
                              << 1;
    QTest::newRow("control characters") << QByteArray(R"({"tabName": "\u001b[2J\n\u0000"})") << 0;
}

void TestProgram::summary_ofHostileFiles_staysAlive()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const int, code);
    const QTemporaryDir folder;
    const QString path = put(folder, u"a.rig"_s, bytes);
    const Result result = run({u"--resumen"_s, u"--sin-contraste"_s, path});
    QCOMPARE(result.code, code);
    QVERIFY(!result.out.contains(u'\x1b'));
    QCOMPARE(run({u"--informe"_s, u"--sin-contraste"_s, u"--salida"_s, folder.path(), path}).code, code);
}

void TestProgram::fullOutput_exitsWithTwo()
{
    if (!QFile::exists(u"/dev/full"_s))
        QSKIP("No such device here");
    QProcess program;
    program.setProcessEnvironment(withoutDisplay());
    program.setStandardOutputFile(u"/dev/full"_s, QIODevice::Append);
    program.start(QStringLiteral(VELMORA_EXECUTABLE), {u"--resumen"_s, EXAMPLES + u"concierto.rig"_s});
    QVERIFY(program.waitForFinished());
    QCOMPARE(program.exitCode(), 2);
}

void TestProgram::report_isWrittenWithItsDrawings()
{
    const QTemporaryDir folder;
    const Result result = run({u"--informe"_s, u"--sin-contraste"_s, u"--salida"_s, folder.path(),
                               EXAMPLES + u"concierto.rig"_s, EXAMPLES + u"voladizo.rig"_s});
    QCOMPARE(result.code, 1);
    QCOMPARE(result.err, QString());
    const QStringList html = htmlFiles(folder);
    QCOMPARE(html.size(), 1);
    const QStringList lines = result.out.split(u'\n');
    QCOMPARE(
        lines,
        QStringList({folder.filePath(html.at(0)), EXAMPLES + u"concierto.rig: APTO: Dentro de márgenes."_s,
                     EXAMPLES + u"voladizo.rig: NO APTO (INESTABLE): Error de voladizo."_s, QString()}));

    QFile file(folder.filePath(html.at(0)));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const ReportDocument document(QString::fromUtf8(file.readAll()));
    QCOMPARE(document.error(), QString());
    QVERIFY(document.headings.contains(u"PROYECTO: Voladizo sobre el público"_s));
    QCOMPARE(document.headings.at(0), u"INFORME: Concierto de plaza"_s);
    for (const QString& image : std::as_const(document.images))
        QCOMPARE(QImage(folder.filePath(image)).size(), QSize(2000, 800));
}

void TestProgram::report_goesToTheTemporaryDirectory()
{
    const QTemporaryDir folder;
    QProcessEnvironment environment = withoutDisplay();
    environment.insert(u"TMPDIR"_s, folder.path());
    QCOMPARE(run({u"--informe"_s, EXAMPLES + u"concierto.rig"_s}, environment).code, 0);
    QCOMPARE(htmlFiles(folder).size(), 1);
}

void TestProgram::report_ofSoundProjects_exitsWithZero()
{
    const QTemporaryDir folder;
    QCOMPARE(run({u"--informe"_s, u"--salida="_s + folder.path(), EXAMPLES + u"pantalla.rig"_s}).code, 0);
}

void TestProgram::report_withABadFile_treatsTheOthers()
{
    const QTemporaryDir folder;
    const Result result = run({u"--informe"_s, u"--salida"_s, folder.path(), folder.filePath(u"nada.rig"_s),
                               EXAMPLES + u"concierto.rig"_s});
    QCOMPARE(result.code, 2);
    QVERIFY(result.err.contains(u"nada.rig: No se pudo leer el archivo."_s));
    QVERIFY(result.out.contains(u"concierto.rig: APTO"_s));
    QCOMPARE(htmlFiles(folder).size(), 1);
}

void TestProgram::report_ofNothingReadable_writesNothing()
{
    const QTemporaryDir folder;
    const Result result = run({u"--informe"_s, u"--salida"_s, folder.path(), folder.filePath(u"nada.rig"_s)});
    QCOMPARE(result.code, 2);
    QCOMPARE(result.out, QString());
    QVERIFY(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).isEmpty());
}

void TestProgram::report_intoAMissingFolder_exitsWithTwo()
{
    const QTemporaryDir folder;
    const Result result =
        run({u"--informe"_s, u"--salida"_s, folder.filePath(u"no/existe"_s), EXAMPLES + u"concierto.rig"_s});
    QCOMPARE(result.code, 2);
    QVERIFY(result.err.contains(u": No se pudo crear el archivo del informe.\n"_s));
    QVERIFY(!result.out.contains(u".html"_s));
}

void TestProgram::report_withMarkupForAName_tellsItBefore()
{
    const QTemporaryDir folder;
    ProjectState project;
    project.tabName = u"<b>Gira"_s;
    const QString file = put(folder, u"gira.rig"_s, ProjectFile::toBytes(project));
    const Result result = run({u"--informe"_s, u"--salida"_s, folder.path(), file});
    QCOMPARE(result.code, 0);
    QCOMPARE(result.err,
             u"velmora-master: "_s + file
                 + u": «<b>Gira» es código HTML: el navegador lo toma como tal, y al abrir el informe puede "
                   "pedir páginas de otros.\n"_s);
    QCOMPARE(run({u"--resumen"_s, file}).err, QString());
}

void TestProgram::report_withoutASessionFolder_leavesNone()
{
    const QTemporaryDir folder;
    QProcessEnvironment environment = withoutDisplay();
    environment.insert(u"TMPDIR"_s, folder.path());
    for (const QString& option : {u"--informe"_s, u"--memoria"_s}) {
        const Result result = run({option, EXAMPLES + u"pantalla.rig"_s}, environment);
        QCOMPARE(result.code, 0);
        QCOMPARE(result.err, QString());
    }
    QCOMPARE(QDir(folder.path()).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
}

// With a handful Qt would end the program, and whoever called it would take that for a crash.
void TestProgram::tooFewFiles_areToldAtOnce()
{
#ifdef __SANITIZE_ADDRESS__
    QSKIP("What watches memory opens files itself");
#endif
#ifdef Q_OS_UNIX
    for (const int files : {5, 6, 10}) {
        QProcess shell;
        shell.setProcessEnvironment(withoutDisplay());
        shell.start(u"sh"_s, {u"-c"_s, u"ulimit -n \"$1\"; exec \"$2\" --informe \"$3\""_s, u"sh"_s,
                              QString::number(files), QStringLiteral(VELMORA_EXECUTABLE),
                              EXAMPLES + u"pantalla.rig"_s});
        QVERIFY(shell.waitForFinished());
        QCOMPARE(shell.exitStatus(), QProcess::NormalExit);
        QCOMPARE(shell.exitCode(), 2);
        QCOMPARE(QString::fromUtf8(shell.readAllStandardError()),
                 u"velmora-master: No se pueden abrir bastantes archivos (ulimit -n).\n"_s);
    }
#endif
}

void TestProgram::summaryAndReport_areBothWritten()
{
    const QTemporaryDir folder;
    const Result result =
        run({u"--resumen"_s, u"--informe"_s, u"--salida"_s, folder.path(), EXAMPLES + u"voladizo.rig"_s});
    QCOMPARE(result.code, 1);
    QVERIFY(result.out.contains(u"  Viga: 10.00 m"_s));
    QVERIFY(result.out.contains(u"informe_rigging_"_s));
    QCOMPARE(htmlFiles(folder).size(), 1);
}

void TestProgram::windowWithoutDisplay_saysSoInOneLine()
{
    const Result result = run({});
    QCOMPARE(result.code, 2);
    QCOMPARE(result.out, QString());
    QVERIFY(result.err.startsWith(u"velmora-master: No hay pantalla"_s));
    QCOMPARE(result.err.count(u'\n'), 1);
}

void TestProgram::windowWithoutDisplay_onADesktopPlatform_doesNotAbort_data()
{
    QTest::addColumn<QString>("platform");
    QTest::newRow("X11") << u"xcb"_s;
    QTest::newRow("Wayland, then X11") << u"wayland;xcb"_s;
    QTest::newRow("Wayland by EGL") << u"wayland-egl"_s;
}

void TestProgram::windowWithoutDisplay_onADesktopPlatform_doesNotAbort()
{
    QFETCH(const QString, platform);
    QProcessEnvironment environment = withoutDisplay();
    environment.insert(u"QT_QPA_PLATFORM"_s, platform);
    const Result result = run({}, environment);
    QCOMPARE(result.code, 2);
    QVERIFY(result.err.startsWith(u"velmora-master: No hay pantalla"_s));
    QCOMPARE(result.err.count(u'\n'), 1);
}

void TestProgram::windowWithoutDisplay_tellsTheFiguresAndWritesTheReport()
{
    const QTemporaryDir folder;
    QProcessEnvironment environment = withoutDisplay();
    environment.insert(u"TMPDIR"_s, folder.path());
    const Result result = run({EXAMPLES + u"concierto.rig"_s}, environment);
    QCOMPARE(result.code, 0);
    QVERIFY(result.err.startsWith(u"velmora-master: No hay pantalla"_s));
    QCOMPARE(result.err.count(u'\n'), 1);
    QVERIFY(result.out.contains(u"  Estrés: 11.0 %\n"_s));
    QCOMPARE(htmlFiles(folder).size(), 1);
    QVERIFY(result.out.contains(folder.filePath(htmlFiles(folder).at(0))));
}

void TestProgram::windowOffScreen_opens()
{
    QProcessEnvironment environment = withoutDisplay();
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    QProcess program;
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(VELMORA_EXECUTABLE), {EXAMPLES + u"voladizo.rig"_s});
    QVERIFY(program.waitForStarted());
    constexpr int A_FEW_BLINKS = 1200; // [ms]; it stays until it is closed
    QVERIFY(!program.waitForFinished(A_FEW_BLINKS));
    program.kill();
    QVERIFY(program.waitForFinished());
    QVERIFY(!program.readAllStandardError().contains("velmora-master:"));
}

// Neither Qt's network library nor the system's look-up of addresses is linked.
void TestProgram::program_cannotReachANetwork()
{
    QFile program(QStringLiteral(VELMORA_EXECUTABLE));
    QVERIFY(program.open(QIODevice::ReadOnly));
    const QByteArray code = program.readAll();
    QVERIFY(code.contains("Qt6Widgets"));
    QVERIFY(!code.contains("Qt6Network"));
    QVERIFY(!code.contains("getaddrinfo"));
    QVERIFY(!code.contains("gethostby"));
}

QTEST_GUILESS_MAIN(TestProgram)
#include "tst_program.moc"
