#include "support/Program.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;

using Support::put;
using Support::Result;
using Support::run;
using Support::withoutDisplay;

namespace
{

const QString EXAMPLES = u"" VELMORA_SOURCE_DIR "/examples/"_s;
const QString SOUND = EXAMPLES + u"concierto.rig"_s;
const QString TIPPING = EXAMPLES + u"vuelca.rig"_s;
const QString OVERLOADED_AT_LEVEL = EXAMPLES + u"galeria.rig"_s;

const QString TIPS =
    u"  Contraste: VUELCA: el centro de gravedad (+3.99m) queda 2.99 m fuera de los motores; ningún "
    "reparto lo sostiene.\n"_s;
const QString TITLE = u"Contraste (viga continua; no sustituye al cálculo de un técnico)"_s;

QJsonObject documentOf(const Result& result)
{
    return QJsonDocument::fromJson(result.bytes).object();
}

QStringList filesIn(const QTemporaryDir& folder)
{
    return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

/// What a shell makes of `command`, in which "$0" is the program.
Result shell(const QString& command)
{
    QProcess program;
    program.setProcessEnvironment(withoutDisplay());
    program.start(u"bash"_s, {u"-c"_s, command, QStringLiteral(VELMORA_EXECUTABLE)});
    if (!program.waitForFinished(60'000))
        return {};
    return {program.exitCode(),
            QString::fromUtf8(program.readAllStandardOutput()),
            QString::fromUtf8(program.readAllStandardError()),
            {}};
}

} // namespace

/// What the program tells of the second opinion, what it reads and what it does not overwrite.
class TestContrastProgram : public QObject
{
    Q_OBJECT

private slots:
    void summary_withoutAContradiction_isAsBefore();
    void summary_ofWhatTips_saysSoAndExitsWithOne();
    void summary_ofAnOverloadAtLevel_saysSoAndExitsWithOne();
    void summary_ofWhatCannotBeCalculated_saysSoAndExitsWithOne();
    void summary_withoutContrast_isAsBefore();
    void report_tellsContradictionsUnderTheVerdict();
    void contrast_impliesTheSummaryAndTellsEverything();
    void contrast_ofSoundProjects_exitsWithZero();
    void deflection_addsTheLevelling();
    void json_hasTheContrastWhereItContradicts();
    void json_hasTheContrastWhereItIsAskedFor();
    void csv_isOneTable();
    void csv_tellsContradictionsOnStandardError();
    void withoutDisplay_tellsContradictions();
    void pipes_areRead();
    void pipe_isReadOnceForSummaryAndReport();
    void terminal_isNotWaitedFor();
    void report_besideAnOlderOne_isRefused();
    void report_overDrawings_isRefused_data();
    void report_overDrawings_isRefused();
    void report_mayOverwriteWhereItIsTold();
    void report_inTheTemporaryFolder_isWrittenBesideOthers();
};

void TestContrastProgram::summary_withoutAContradiction_isAsBefore()
{
    const Result result = run({u"--resumen"_s, SOUND});
    QCOMPARE(result.code, 0);
    QVERIFY(!result.out.contains(u"Contraste"_s));
    QCOMPARE(result.bytes, run({u"--resumen"_s, u"--sin-contraste"_s, SOUND}).bytes);
    const Result json = run({u"--resumen"_s, u"--json"_s, SOUND});
    QCOMPARE(json.bytes, run({u"--resumen"_s, u"--json"_s, u"--sin-contraste"_s, SOUND}).bytes);
}

void TestContrastProgram::summary_ofWhatTips_saysSoAndExitsWithOne()
{
    const Result result = run({u"--resumen"_s, TIPPING, SOUND});
    QCOMPARE(result.code, 1);
    QCOMPARE(result.err, QString());
    const QString figures = run({u"--resumen"_s, u"--sin-contraste"_s, TIPPING}).out;
    QVERIFY(figures.endsWith(u"  Resultado: APTO: Dentro de márgenes.\n"_s));
    QVERIFY2(result.out.startsWith(figures + TIPS + u'\n' + SOUND), qPrintable(result.out));
}

void TestContrastProgram::summary_ofAnOverloadAtLevel_saysSoAndExitsWithOne()
{
    const Result result = run({u"--resumen"_s, OVERLOADED_AT_LEVEL});
    QCOMPARE(result.code, 1);
    QVERIFY(result.out.endsWith(
        u"  Resultado: APTO: Dentro de márgenes.\n"
        "  Contraste: Bien nivelado, M2 lleva 404.0 kg (palanca: 336.0): EXCESO DINÁMICO.\n"
        "  Contraste: Bien nivelado, M4 lleva 404.0 kg (palanca: 336.0): EXCESO DINÁMICO.\n"_s));
    // The sentence about the middle motor of this one is no contradiction: the lever refuses it too.
    const Result agreed = run({u"--resumen"_s, EXAMPLES + u"pasarela.rig"_s});
    QCOMPARE(agreed.code, 1);
    QVERIFY(!agreed.out.contains(u"Contraste"_s));
}

void TestContrastProgram::summary_ofWhatCannotBeCalculated_saysSoAndExitsWithOne()
{
    const QTemporaryDir folder;
    const QString path = put(folder, u"a.rig"_s, R"({"trussLength": -5, "motors": [{}]})");
    QCOMPARE(run({u"--resumen"_s, u"--sin-contraste"_s, path}).code, 0);
    const Result result = run({u"--resumen"_s, path});
    QCOMPARE(result.code, 1);
    QVERIFY(result.out.endsWith(
        u"  Contraste: NO SE PUEDE CALCULAR: hay una longitud, una masa o un peso negativo.\n"_s));
    QCOMPARE(run({u"--informe"_s, u"--salida"_s, folder.path(), path}).code, 1);
}

void TestContrastProgram::summary_withoutContrast_isAsBefore()
{
    for (const QString& path : {TIPPING, OVERLOADED_AT_LEVEL}) {
        const Result result = run({u"--resumen"_s, u"--sin-contraste"_s, path});
        QCOMPARE(result.code, 0);
        QVERIFY(!result.out.contains(u"Contraste"_s));
        QVERIFY(result.out.endsWith(u"  Resultado: APTO: Dentro de márgenes.\n"_s));
    }
}

void TestContrastProgram::report_tellsContradictionsUnderTheVerdict()
{
    const QTemporaryDir folder;
    const Result result = run({u"--informe"_s, u"--salida"_s, folder.path(), TIPPING, SOUND});
    QCOMPARE(result.code, 1);
    const QString expected =
        TIPPING + u": APTO: Dentro de márgenes.\n"_s + TIPS + SOUND + u": APTO: Dentro de márgenes.\n"_s;
    QVERIFY2(result.out.endsWith(u".html\n"_s + expected), qPrintable(result.out));
    const QString html = QString::fromUtf8(contentOf(folder.filePath(filesIn(folder).constFirst())));
    QVERIFY(html.contains(u"APTO"_s));
    QVERIFY(!html.contains(u"VUELCA"_s));

    const QTemporaryDir silent;
    const Result without =
        run({u"--informe"_s, u"--sin-contraste"_s, u"--salida"_s, silent.path(), TIPPING, SOUND});
    QCOMPARE(without.code, 0);
    QVERIFY(!without.out.contains(u"Contraste"_s));
}

void TestContrastProgram::contrast_impliesTheSummaryAndTellsEverything()
{
    const Result result = run({u"--contraste"_s, OVERLOADED_AT_LEVEL, TIPPING});
    QCOMPARE(result.code, 1);
    QVERIFY(result.out.startsWith(run({u"--resumen"_s, u"--sin-contraste"_s, OVERLOADED_AT_LEVEL}).out
                                  + u"  "_s + TITLE + u"\n    Motor  Posición  Palanca (kg)"_s));
    QCOMPARE(result.out.count(TITLE), 2);
    QVERIFY(result.out.contains(
        u"\n    Si se afloja M1, M2 llega a 669.2 kg, más que sus 500, y el truss al 16.8 % de su momento.\n"_s));
    QVERIFY(result.out.contains(u"\n    VUELCA: "_s));
    QCOMPARE(result.out.count(u"    Supone cadenas verticales"_s), 2);
    QVERIFY(!result.out.contains(u"1 mm de desnivel"_s));
}

// One slack motor would overload another here, which is a warning and no verdict.
void TestContrastProgram::contrast_ofSoundProjects_exitsWithZero()
{
    const Result result = run({u"--contraste"_s, SOUND, EXAMPLES + u"pantalla.rig"_s});
    QCOMPARE(result.code, 0);
    QVERIFY(result.out.contains(u"    Si se afloja PA izq., Centro llega a 1080.0 kg, más que sus 1000"_s));
    QVERIFY(result.out.contains(u" es imprescindible: sin él, el truss vuelca.\n"_s));
}

void TestContrastProgram::deflection_addsTheLevelling()
{
    const Result result = run({u"--contraste"_s, u"--flecha"_s, u"15"_s, SOUND});
    QVERIFY(result.out.contains(
        u"    1 mm de desnivel de Centro cambia su carga en unos 212 kg; queda flojo si baja 0.12 mm.\n"_s));
    QCOMPARE(result.bytes, run({u"--contraste"_s, u"--flecha=15,0"_s, SOUND}).bytes);
    const QJsonObject json = documentOf(run({u"--contraste"_s, u"--json"_s, u"--flecha"_s, u"15"_s, SOUND}));
    const QJsonValue centre = json[u"proyectos"_s][0][u"contraste"_s][u"motores"_s][1];
    QCOMPARE(centre[u"kg_por_mm"_s].toDouble(), 211.728);
    QCOMPARE(centre[u"flojo_a_mm"_s].toDouble(), 0.118);
}

void TestContrastProgram::json_hasTheContrastWhereItContradicts()
{
    const Result result = run({u"--resumen"_s, u"--json"_s, TIPPING, SOUND});
    QCOMPARE(result.code, 1);
    const QJsonObject document = documentOf(result);
    QCOMPARE(document[u"proyectos"_s][0][u"contraste"_s][u"estado"_s].toString(), u"vuelca"_s);
    QCOMPARE(document[u"proyectos"_s][0][u"apto"_s].toBool(), true);
    QVERIFY(document[u"proyectos"_s][1][u"contraste"_s].isUndefined());

    const Result without = run({u"--resumen"_s, u"--json"_s, u"--sin-contraste"_s, TIPPING});
    QCOMPARE(without.code, 0);
    QVERIFY(documentOf(without)[u"proyectos"_s][0][u"contraste"_s].isUndefined());
}

void TestContrastProgram::json_hasTheContrastWhereItIsAskedFor()
{
    const Result result = run({u"--contraste"_s, u"--json"_s, SOUND});
    QCOMPARE(result.code, 0);
    const QJsonValue project = documentOf(result)[u"proyectos"_s][0];
    QCOMPARE(project[u"contraste"_s][u"momento_un_flojo_pct"_s].toDouble(), 44.071);
    QCOMPARE(project[u"contraste"_s][u"motores"_s][0][u"nivelado_kg"_s].toDouble(), 527.5);
    QVERIFY(project[u"contraste"_s][u"motores"_s][0][u"kg_por_mm"_s].isUndefined());
    QCOMPARE(project[u"motores"_s][0][u"posicion_m"_s].toDouble(), -6.0);
    QCOMPARE(project[u"cargas"_s].toArray().size(), 5);
}

void TestContrastProgram::csv_isOneTable()
{
    const Result result = run({u"--contraste"_s, u"--csv"_s, SOUND, EXAMPLES + u"pantalla.rig"_s});
    QCOMPARE(result.code, 0);
    QCOMPARE(result.err, QString());
    QVERIFY(result.bytes.startsWith("\xEF\xBB\xBFproyecto,archivo,elemento,"));
    QVERIFY(result.bytes.contains(",nivelado_kg,"));
    QVERIFY(!result.bytes.contains(",kg_por_mm"));
    QCOMPARE(result.bytes.count("\r\n"), 1 + (1 + 3 + 5) + (1 + 2 + 8));
    QCOMPARE(result.bytes.count('\n'), result.bytes.count("\r\n"));
    QVERIFY(result.bytes.contains("\r\nConcierto de plaza,"));
    QVERIFY(result.bytes.contains(",527.50,"));
    QVERIFY(run({u"--contraste"_s, u"--csv"_s, u"--flecha"_s, u"15"_s, SOUND})
                .bytes.contains(",kg_por_mm,flojo_a_mm\r\n"));
    QVERIFY(!run({u"--resumen"_s, u"--csv"_s, SOUND}).bytes.contains("nivelado_kg"));
}

void TestContrastProgram::csv_tellsContradictionsOnStandardError()
{
    const Result result = run({u"--resumen"_s, u"--csv"_s, TIPPING});
    QCOMPARE(result.code, 1);
    QCOMPARE(result.err, u"velmora-master: "_s + TIPPING + u": "_s + TIPS.trimmed() + u'\n');
    QVERIFY(!result.out.contains(u"VUELCA"_s));
    const Result contrast = run({u"--contraste"_s, u"--csv"_s, TIPPING});
    QCOMPARE(contrast.code, 1);
    QCOMPARE(contrast.err, QString());
    QVERIFY(contrast.out.contains(u",vuelca,"_s));
    const Result without = run({u"--resumen"_s, u"--csv"_s, u"--sin-contraste"_s, TIPPING});
    QCOMPARE(without.code, 0);
    QCOMPARE(without.err, QString());
}

void TestContrastProgram::withoutDisplay_tellsContradictions()
{
    const QTemporaryDir folder;
    QProcessEnvironment environment = withoutDisplay();
    environment.insert(u"TMPDIR"_s, folder.path());
    const Result result = run({TIPPING}, environment);
    QCOMPARE(result.code, 1);
    QCOMPARE(result.out.count(TIPS), 2);
}

void TestContrastProgram::pipes_areRead()
{
#ifdef Q_OS_UNIX
    const QString figures = run({u"--resumen"_s, SOUND}).out.section(u": "_s, 1);
    const Result substituted = shell(u"\"$0\" --resumen <(cat '%1')"_s.arg(SOUND));
    QCOMPARE(substituted.err, QString());
    QCOMPARE(substituted.code, 0);
    QCOMPARE(substituted.out.section(u": "_s, 1), figures);
    const Result piped = shell(u"(sleep 0.3; cat '%1') | \"$0\" --resumen /dev/stdin"_s.arg(SOUND));
    QCOMPARE(piped.out, u"/dev/stdin: "_s + figures);
    const Result redirected = shell(u"\"$0\" --resumen /dev/stdin < '%1'"_s.arg(SOUND));
    QCOMPARE(redirected.out, u"/dev/stdin: "_s + figures);
    const Result empty = shell(u"true | \"$0\" --resumen /dev/stdin"_s);
    QCOMPARE(empty.code, 2);
    QCOMPARE(empty.err, u"velmora-master: /dev/stdin: Formato de archivo inválido.\n"_s);
#else
    QSKIP("No such pipes here");
#endif
}

void TestContrastProgram::pipe_isReadOnceForSummaryAndReport()
{
#ifdef Q_OS_UNIX
    const QTemporaryDir folder;
    const Result result =
        shell(u"cat '%1' | \"$0\" --resumen --informe --salida '%2' /dev/stdin"_s.arg(SOUND, folder.path()));
    QCOMPARE(result.err, QString());
    QCOMPARE(result.code, 0);
    QVERIFY(result.out.contains(u"/dev/stdin: Concierto de plaza\n"_s));
    QVERIFY(result.out.contains(u"/dev/stdin: APTO: Dentro de márgenes.\n"_s));
    QCOMPARE(filesIn(folder).size(), 2);
#else
    QSKIP("No such pipes here");
#endif
}

// "script" gives the program a terminal, on which nobody types.
void TestContrastProgram::terminal_isNotWaitedFor()
{
#ifdef Q_OS_LINUX
    const Result result = shell(u"sleep 20 | script -qec \"'$0' --resumen /dev/stdin\" /dev/null"_s);
    if (result.code == 127)
        QSKIP("No script(1) here");
    QCOMPARE(result.code, 2);
    QVERIFY2(result.out.contains(u"/dev/stdin: No se pudo leer el archivo."_s), qPrintable(result.out));
#else
    QSKIP("Another script(1) here");
#endif
}

void TestContrastProgram::report_besideAnOlderOne_isRefused()
{
    const QTemporaryDir folder;
    QCOMPARE(run({u"--informe"_s, u"--salida"_s, folder.path(), SOUND}).code, 0);
    const QStringList before = filesIn(folder);
    QCOMPARE(before.size(), 2);
    const QByteArray drawing = contentOf(folder.filePath(u"truss_schema_0.jpg"_s));

    const Result result =
        run({u"--resumen"_s, u"--informe"_s, u"--salida"_s, folder.path(), EXAMPLES + u"pantalla.rig"_s});
    QCOMPARE(result.code, 2);
    QCOMPARE(result.err, u"velmora-master: "_s + folder.path() + u": Ya hay un informe ("_s + before.at(0)
                             + u"), que enseñaría los dibujos de este; con --sobrescribir se escribe "
                               "igualmente.\n"_s);
    QVERIFY(result.out.contains(u"Resultado: APTO"_s)); // the summary is printed all the same
    QVERIFY(!result.out.contains(u".html"_s));
    QCOMPARE(filesIn(folder), before);
    QVERIFY(contentOf(folder.filePath(u"truss_schema_0.jpg"_s)) == drawing);
}

void TestContrastProgram::report_overDrawings_isRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("code");
    QTest::newRow("a report that lost its drawings") << u"informe_rigging_20240229_120000.html"_s << 2;
    QTest::newRow("the first drawing") << u"truss_schema_0.jpg"_s << 2;
    QTest::newRow("the last drawing") << u"truss_schema_1.jpg"_s << 2;
    QTest::newRow("a drawing that stays") << u"truss_schema_2.jpg"_s << 0;
    QTest::newRow("something else") << u"informe.html"_s << 0;
}

void TestContrastProgram::report_overDrawings_isRefused()
{
    QFETCH(const QString, name);
    QFETCH(const int, code);
    const QTemporaryDir folder;
    put(folder, name, "x");
    const Result result =
        run({u"--informe"_s, u"--salida"_s, folder.path(), SOUND, EXAMPLES + u"pantalla.rig"_s});
    QCOMPARE(result.code, code);
    QCOMPARE(result.err.contains(name), code != 0);
    QCOMPARE(contentOf(folder.filePath(name)), QByteArray("x"));
    QCOMPARE(filesIn(folder).size(), code == 0 ? 4 : 1);
}

void TestContrastProgram::report_mayOverwriteWhereItIsTold()
{
    const QTemporaryDir folder;
    put(folder, u"informe_rigging_20240229_120000.html"_s, "x");
    put(folder, u"truss_schema_0.jpg"_s, "x");
    const Result result = run({u"--informe"_s, u"--salida"_s, folder.path(), u"--sobrescribir"_s, SOUND});
    QCOMPARE(result.err, QString());
    QCOMPARE(result.code, 0);
    QCOMPARE(filesIn(folder).size(), 3);
    QVERIFY(contentOf(folder.filePath(u"truss_schema_0.jpg"_s)) != "x");
    QCOMPARE(contentOf(folder.filePath(u"informe_rigging_20240229_120000.html"_s)), QByteArray("x"));
}

void TestContrastProgram::report_inTheTemporaryFolder_isWrittenBesideOthers()
{
    const QTemporaryDir folder;
    put(folder, u"informe_rigging_20240229_120000.html"_s, "x");
    put(folder, u"truss_schema_0.jpg"_s, "x");
    QProcessEnvironment environment = withoutDisplay();
    environment.insert(u"TMPDIR"_s, folder.path());
    QCOMPARE(run({u"--informe"_s, SOUND}, environment).code, 0);
    QCOMPARE(filesIn(folder).size(), 3);
}

QTEST_GUILESS_MAIN(TestContrastProgram)
#include "tst_contrastprogram.moc"
