#include "app/CommandLine.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestCommandLine : public QObject
{
    Q_OBJECT

private slots:
    void nothing_opensTheWindow();
    void files_keepTheirOrder();
    void summary_takesFiles();
    void recovery_needsNoFiles();
    void json_accompaniesTheSummary();
    void report_takesAFolder_data();
    void report_takesAFolder();
    void summaryAndReport_goTogether();
    void helpAndVersion_haveShortForms();
    void contrast_impliesTheSummary();
    void contrast_takesADeflection_data();
    void contrast_takesADeflection();
    void report_mayOverwrite();
    void doubleDash_endsTheOptions();
    void singleDash_isAFile();
    void mistakes_areTold_data();
    void mistakes_areTold();
    void usage_namesEveryOption();
};

void TestCommandLine::nothing_opensTheWindow()
{
    const CommandLine line = CommandLine::parse({});
    QVERIFY(line.error.isEmpty());
    QVERIFY(!line.isBatch());
    QVERIFY(line.files.isEmpty());
}

void TestCommandLine::files_keepTheirOrder()
{
    const CommandLine line = CommandLine::parse({u"b.rig"_s, u"a con espacios.json"_s});
    QCOMPARE(line.files, QStringList({u"b.rig"_s, u"a con espacios.json"_s}));
    QVERIFY(!line.isBatch());
}

void TestCommandLine::summary_takesFiles()
{
    const CommandLine line = CommandLine::parse({u"a.rig"_s, u"--resumen"_s, u"b.rig"_s});
    QVERIFY(line.error.isEmpty());
    QVERIFY(line.summary);
    QVERIFY(line.isBatch());
    QVERIFY(!line.report);
    QCOMPARE(line.files, QStringList({u"a.rig"_s, u"b.rig"_s}));
}

void TestCommandLine::recovery_needsNoFiles()
{
    const CommandLine window = CommandLine::parse({u"--recuperar"_s});
    QVERIFY(window.error.isEmpty());
    QVERIFY(window.recover);
    QVERIFY(!window.isBatch());
    const CommandLine summary = CommandLine::parse({u"--recuperar"_s, u"--resumen"_s, u"--json"_s});
    QVERIFY(summary.error.isEmpty());
    QVERIFY(summary.recover && summary.isBatch());
    QVERIFY(!CommandLine::parse({u"a.rig"_s}).recover);
}

void TestCommandLine::json_accompaniesTheSummary()
{
    const CommandLine line = CommandLine::parse({u"--resumen"_s, u"--json"_s, u"a.rig"_s});
    QVERIFY(line.error.isEmpty());
    QVERIFY(line.asJson);
}

void TestCommandLine::report_takesAFolder_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("folder");
    QTest::newRow("none") << QStringList{u"--informe"_s, u"a.rig"_s} << QString();
    QTest::newRow("next") << QStringList{u"--informe"_s, u"--salida"_s, u"una carpeta"_s, u"a.rig"_s}
                          << u"una carpeta"_s;
    QTest::newRow("equals") << QStringList{u"a.rig"_s, u"--salida=x=y"_s, u"--informe"_s} << u"x=y"_s;
    QTest::newRow("looks like an option")
        << QStringList{u"--informe"_s, u"--salida"_s, u"-x"_s, u"a.rig"_s} << u"-x"_s;
    QTest::newRow("twice") << QStringList{u"--informe"_s, u"--salida=x"_s, u"--salida=y"_s, u"a.rig"_s}
                           << u"y"_s;
}

void TestCommandLine::report_takesAFolder()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, folder);
    const CommandLine line = CommandLine::parse(arguments);
    QCOMPARE(line.error, QString());
    QVERIFY(line.report);
    QCOMPARE(line.reportFolder, folder);
    QCOMPARE(line.files, QStringList(u"a.rig"_s));
}

void TestCommandLine::summaryAndReport_goTogether()
{
    const CommandLine line = CommandLine::parse({u"--resumen"_s, u"--informe"_s, u"a.rig"_s});
    QVERIFY(line.error.isEmpty());
    QVERIFY(line.summary && line.report);
}

void TestCommandLine::helpAndVersion_haveShortForms()
{
    QVERIFY(CommandLine::parse({u"--help"_s}).help);
    QVERIFY(CommandLine::parse({u"-h"_s}).help);
    QVERIFY(CommandLine::parse({u"--version"_s}).version);
    QVERIFY(CommandLine::parse({u"-v"_s}).version);
}

void TestCommandLine::contrast_impliesTheSummary()
{
    const CommandLine line = CommandLine::parse({u"--contraste"_s, u"a.rig"_s});
    QCOMPARE(line.error, QString());
    QVERIFY(line.contrast && line.summary && line.isBatch());
    QVERIFY(!line.tableDeflection);
    QVERIFY(CommandLine::parse({u"--json"_s, u"--contraste"_s, u"a.rig"_s}).error.isEmpty());
    QVERIFY(CommandLine::parse({u"--csv"_s, u"--contraste"_s, u"a.rig"_s}).asCsv);
    QVERIFY(CommandLine::parse({u"--contraste"_s, u"--informe"_s, u"a.rig"_s}).error.isEmpty());
    const CommandLine without = CommandLine::parse({u"--informe"_s, u"--sin-contraste"_s, u"a.rig"_s});
    QCOMPARE(without.error, QString());
    QVERIFY(without.withoutContrast && !without.contrast && !without.summary);
}

void TestCommandLine::contrast_takesADeflection_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<double>("deflection");
    QTest::newRow("next") << QStringList{u"--flecha"_s, u"12.5"_s} << 12.5;
    QTest::newRow("equals") << QStringList{u"--flecha=12.5"_s} << 12.5;
    QTest::newRow("comma") << QStringList{u"--flecha"_s, u"12,5"_s} << 12.5;
    QTest::newRow("twice") << QStringList{u"--flecha=3"_s, u"--flecha=4"_s} << 4.0;
}

void TestCommandLine::contrast_takesADeflection()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const double, deflection);
    const CommandLine line = CommandLine::parse(QStringList{u"--contraste"_s, u"a.rig"_s} + arguments);
    QCOMPARE(line.error, QString());
    QCOMPARE(line.tableDeflection.value_or(0.0), deflection);
    QCOMPARE(line.files, QStringList(u"a.rig"_s));
}

void TestCommandLine::report_mayOverwrite()
{
    const CommandLine line =
        CommandLine::parse({u"--informe"_s, u"--sobrescribir"_s, u"--salida=x"_s, u"a.rig"_s});
    QCOMPARE(line.error, QString());
    QVERIFY(line.overwrite);
    QVERIFY(!CommandLine::parse({u"--informe"_s, u"--salida=x"_s, u"a.rig"_s}).overwrite);
}

void TestCommandLine::doubleDash_endsTheOptions()
{
    const CommandLine line = CommandLine::parse({u"--resumen"_s, u"--"_s, u"--informe"_s, u"--"_s});
    QVERIFY(line.error.isEmpty());
    QVERIFY(!line.report);
    QCOMPARE(line.files, QStringList({u"--informe"_s, u"--"_s}));
}

void TestCommandLine::singleDash_isAFile()
{
    QCOMPARE(CommandLine::parse({u"-"_s}).files, QStringList(u"-"_s));
}

void TestCommandLine::mistakes_areTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("error");
    QTest::newRow("unknown") << QStringList{u"--volar"_s} << u"Opción desconocida: --volar"_s;
    QTest::newRow("unknown short") << QStringList{u"-x"_s} << u"Opción desconocida: -x"_s;
    QTest::newRow("unknown beside help")
        << QStringList{u"--help"_s, u"--volar"_s} << u"Opción desconocida: --volar"_s;
    QTest::newRow("flag with a value")
        << QStringList{u"--resumen=1"_s} << u"Opción desconocida: --resumen=1"_s;
    QTest::newRow("no files") << QStringList{u"--resumen"_s} << u"Falta al menos un archivo de proyecto"_s;
    QTest::newRow("no files for the report")
        << QStringList{u"--informe"_s} << u"Falta al menos un archivo de proyecto"_s;
    QTest::newRow("folder missing") << QStringList{u"--informe"_s, u"a.rig"_s, u"--salida"_s}
                                    << u"Falta la carpeta de --salida"_s;
    QTest::newRow("folder empty") << QStringList{u"--informe"_s, u"a.rig"_s, u"--salida="_s}
                                  << u"Falta la carpeta de --salida"_s;
    QTest::newRow("folder without report") << QStringList{u"--salida"_s, u"x"_s, u"a.rig"_s}
                                           << u"--salida solo acompaña a --informe o --memoria"_s;
    QTest::newRow("recovery with files")
        << QStringList{u"--recuperar"_s, u"a.rig"_s} << u"--recuperar no admite archivos"_s;
    QTest::newRow("recovery, summary and files")
        << QStringList{u"--resumen"_s, u"a.rig"_s, u"--recuperar"_s} << u"--recuperar no admite archivos"_s;
    QTest::newRow("json alone") << QStringList{u"--json"_s, u"a.rig"_s}
                                << u"--json solo acompaña a --resumen"_s;
    QTest::newRow("json beside a report")
        << QStringList{u"--json"_s, u"--resumen"_s, u"--informe"_s, u"a.rig"_s}
        << u"--json solo acompaña a --resumen"_s;
    QTest::newRow("csv alone") << QStringList{u"--csv"_s, u"a.rig"_s} << u"--csv solo acompaña a --resumen"_s;
    QTest::newRow("csv beside a report")
        << QStringList{u"--csv"_s, u"--contraste"_s, u"--informe"_s, u"a.rig"_s}
        << u"--csv solo acompaña a --resumen"_s;
    QTest::newRow("json and csv") << QStringList{u"--resumen"_s, u"--json"_s, u"--csv"_s, u"a.rig"_s}
                                  << u"--json y --csv se excluyen"_s;
    QTest::newRow("with and without contrast")
        << QStringList{u"--contraste"_s, u"--sin-contraste"_s, u"a.rig"_s}
        << u"--contraste y --sin-contraste se excluyen"_s;
    QTest::newRow("without contrast in the window")
        << QStringList{u"--sin-contraste"_s, u"a.rig"_s}
        << u"--sin-contraste solo acompaña a --resumen o --informe"_s;
    QTest::newRow("contrast without files")
        << QStringList{u"--contraste"_s} << u"Falta al menos un archivo de proyecto"_s;
    QTest::newRow("deflection without contrast") << QStringList{u"--resumen"_s, u"--flecha=15"_s, u"a.rig"_s}
                                                 << u"--flecha solo acompaña a --contraste"_s;
    QTest::newRow("deflection missing")
        << QStringList{u"--contraste"_s, u"a.rig"_s, u"--flecha"_s} << u"Faltan los milímetros de --flecha"_s;
    const QString noDeflection = u"La flecha de --flecha tiene que ser un número de milímetros mayor que 0"_s;
    for (const auto* text : {"0", "-3", "nan", "inf", "1e99", "quince", "15mm", "1.2.3"}) {
        QTest::newRow(text) << QStringList{u"--contraste"_s, u"--flecha"_s, QString::fromLatin1(text),
                                           u"a.rig"_s}
                            << noDeflection;
    }
    QTest::newRow("overwriting the temporary folder")
        << QStringList{u"--informe"_s, u"--sobrescribir"_s, u"a.rig"_s}
        << u"--sobrescribir solo acompaña a --salida o --memoria"_s;
}

void TestCommandLine::mistakes_areTold()
{
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, error);
    QCOMPARE(CommandLine::parse(arguments).error, error);
}

void TestCommandLine::usage_namesEveryOption()
{
    const QString usage = CommandLine::usage();
    for (const QString& option :
         {u"--resumen"_s, u"--json"_s, u"--informe"_s, u"--salida"_s, u"--help"_s, u"--csv"_s,
          u"--contraste"_s, u"--sin-contraste"_s, u"--flecha"_s, u"--sobrescribir"_s, u"--memoria"_s,
          u"--recuperar"_s, u"--version"_s, u"-h"_s, u"-v"_s})
        QVERIFY2(usage.contains(option), qPrintable(option));
    const QStringList lines = usage.split(u'\n');
    for (const QString& line : lines)
        QVERIFY2(line.size() <= 80, qPrintable(line));
}

QTEST_GUILESS_MAIN(TestCommandLine)
#include "tst_commandline.moc"
