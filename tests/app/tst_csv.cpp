#include "app/ContrastSummary.h"
#include "app/Csv.h"
#include "app/CsvSummary.h"
#include "app/Summary.h"
#include "engine/ProjectOpinion.h"
#include "engine/Statics.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

using Contrast = CsvSummary::Contrast;

namespace
{

/// 12 m of 8.4 kg/m under motors at 0 and 7 m, 200 kg at the end, one of them in a screen.
ProjectState tipping()
{
    ProjectState project;
    project.tabName = u"Gira, 2ª \"noche\""_s;
    Motor motor;
    motor.modelName = u"A"_s;
    project.motors.append(motor);
    motor.modelName = u"B"_s;
    motor.positionX = 7.0F;
    project.motors.append(motor);
    ActiveLoad load;
    load.mass = 150.0F;
    load.positionX = 12.0F;
    load.name = u"=1+1"_s;
    project.loads.append(load);
    load.mass = 50.0F;
    load.name = u"LED"_s;
    load.groupId = 0;
    project.loads.append(load);
    return project;
}

QJsonObject objectOf(const ProjectState& project, ContrastSummary::Levelling levelling)
{
    const ProjectState solved = Statics::solved(project);
    QJsonObject object = Summary::json(u"a.rig"_s, Figures::ofSolved(solved));
    object[u"contraste"_s] = ContrastSummary::json(ProjectOpinion::of(solved, 15.0), levelling);
    return object;
}

/// The records of a document none of whose fields holds a line end or, behind the first, a comma.
QList<QStringList> recordsOf(const QString& document)
{
    QList<QStringList> records;
    const QStringList lines = document.split(u"\r\n"_s, Qt::SkipEmptyParts);
    for (const QString& line : lines)
        records.append(line.split(u','));
    return records;
}

QString cell(const QList<QStringList>& records, qsizetype record, const QString& column)
{
    return records.at(record).value(records.at(0).indexOf(column), u"no such column"_s);
}

} // namespace

class TestCsv : public QObject
{
    Q_OBJECT

private slots:
    void table_isWrittenByTheBook();
    void table_hasNoMoreThanItsColumns();
    void numbers_haveTwoDecimals_data();
    void numbers_haveTwoDecimals();
    void words_areNoFormulas_data();
    void words_areNoFormulas();
    void summary_tellsTrussMotorsAndLoads();
    void summary_withContrast();
    void summary_withLevelling();
    void summary_ofUnknownFigures_hasDashes();
    void summary_ofSeveralProjects_isOneTable();
};

void TestCsv::table_isWrittenByTheBook()
{
    Csv table({u"uno"_s, u"dos, o más"_s});
    table.add({{u"uno"_s, u"llano"_s}, {u"dos, o más"_s, u"con \"comillas\""_s}});
    table.add({{u"dos, o más"_s, u"a\r\nb"_s}});
    QCOMPARE(table.text(),
             u"\uFEFFuno,\"dos, o más\"\r\nllano,\"con \"\"comillas\"\"\"\r\n,\"a\r\nb\"\r\n"_s);
}

void TestCsv::table_hasNoMoreThanItsColumns()
{
    Csv table({u"uno"_s});
    table.add({{u"otro"_s, u"x"_s}});
    QCOMPARE(table.text(), u"\uFEFFuno\r\n\r\n"_s);
}

void TestCsv::numbers_haveTwoDecimals_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("expected");
    QTest::newRow("whole") << 450.0 << u"450.00"_s;
    QTest::newRow("negative") << -6.0 << u"-6.00"_s;
    QTest::newRow("three decimals") << 62.126 << u"62.13"_s;
    QTest::newRow("no negative zero") << -0.001 << u"0.00"_s;
    QTest::newRow("thousands") << 1234567.5 << u"1234567.50"_s;
    QTest::newRow("none") << std::numeric_limits<double>::quiet_NaN() << u"—"_s;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << u"—"_s;
}

void TestCsv::numbers_haveTwoDecimals()
{
    QFETCH(const double, value);
    QFETCH(const QString, expected);
    QCOMPARE(Csv::number(value), expected);
}

void TestCsv::words_areNoFormulas_data()
{
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("expected");
    QTest::newRow("empty") << QString() << QString();
    QTest::newRow("usual") << u"PA izq. = L+R"_s << u"PA izq. = L+R"_s;
    QTest::newRow("equals") << u"=HYPERLINK(\"http://x\")"_s << u"'=HYPERLINK(\"http://x\")"_s;
    QTest::newRow("plus") << u"+1"_s << u"'+1"_s;
    QTest::newRow("minus") << u"-1"_s << u"'-1"_s;
    QTest::newRow("at") << u"@SUM(A1)"_s << u"'@SUM(A1)"_s;
    QTest::newRow("controls") << u"\t=1\r\n"_s << u"\uFFFD=1\uFFFD\uFFFD"_s;
}

void TestCsv::words_areNoFormulas()
{
    QFETCH(const QString, words);
    QFETCH(const QString, expected);
    QCOMPARE(Csv::words(words), expected);
}

void TestCsv::summary_tellsTrussMotorsAndLoads()
{
    ProjectState project = tipping();
    project.tabName = u"Gira"_s;
    const QString text =
        CsvSummary::text({objectOf(project, ContrastSummary::Levelling::Told)}, Contrast::None);
    QCOMPARE(
        text,
        u"\uFEFFproyecto,archivo,elemento,nombre,posicion_m,masa_kg,grupo,en_punto_kg,estatica_kg,"
        "dinamica_kg,capacidad_kg,peso_propio_kg,veredicto,longitud_m,peso_kg_m,cpl_kg,estres_pct,estable,"
        "calculable,apto\r\n"
        "Gira,a.rig,truss,,,100.80,,,,,,,,12.00,8.40,1600.00,46.04,sí,sí,sí\r\n"
        "Gira,a.rig,motor,A,-6.00,,,29.40,79.40,99.25,1000.00,50.00,ok,,,,,,,\r\n"
        "Gira,a.rig,motor,B,1.00,,,271.40,321.40,401.75,1000.00,50.00,ok,,,,,,,\r\n"
        "Gira,a.rig,carga,'=1+1,6.00,150.00,,,,,,,,,,,,,,\r\n"
        "Gira,a.rig,carga,LED,6.00,50.00,0,,,,,,,,,,,,,\r\n"_s);
}

void TestCsv::summary_withContrast()
{
    ProjectState project = tipping();
    project.tabName = u"Gira"_s;
    const QJsonObject tips = objectOf(project, ContrastSummary::Levelling::Told);
    project.loads.clear();
    const QJsonObject holds = objectOf(project, ContrastSummary::Levelling::Told);
    const QList<QStringList> records = recordsOf(CsvSummary::text({tips, holds}, Contrast::Columns));
    QCOMPARE(records.size(), 1 + 5 + 3);
    for (const QStringList& record : records)
        QCOMPARE(record.size(), 20 + 19);
    for (qsizetype i = 1; i <= 5; ++i)
        QCOMPARE(cell(records, i, u"estado"_s), u"vuelca"_s);
    QCOMPARE(cell(records, 1, u"centro_de_gravedad_m"_s), u"3.99"_s);
    QCOMPARE(cell(records, 1, u"margen_vuelco_m"_s), u"-2.99"_s);
    QCOMPARE(cell(records, 1, u"momento_pct"_s), u"—"_s);
    QCOMPARE(cell(records, 2, u"palanca_kg"_s), u"29.40"_s);
    QCOMPARE(cell(records, 2, u"nivelado_kg"_s), u"—"_s);
    QCOMPARE(cell(records, 2, u"flojo"_s), u"—"_s);
    QCOMPARE(cell(records, 4, u"nivelado_kg"_s), QString());

    // The truss alone: 100.8 kg at 6 m, so B carries 6/7 of it, and without B it tips.
    QCOMPARE(cell(records, 6, u"estado"_s), u"ok"_s);
    QCOMPARE(cell(records, 8, u"nivelado_kg"_s), u"86.40"_s);
    QCOMPARE(cell(records, 8, u"imprescindible"_s), u"sí"_s);
    QCOMPARE(cell(records, 8, u"flojo"_s), u"no"_s);
    QCOMPARE(cell(records, 8, u"veredicto_nivelado"_s), u"ok"_s);
    QCOMPARE(cell(records, 8, u"kg_por_mm"_s), u"no such column"_s);
}

void TestCsv::summary_withLevelling()
{
    ProjectState project = tipping();
    project.tabName = u"Gira"_s;
    project.loads.clear();
    Motor motor;
    motor.positionX = 12.0F;
    project.motors.append(motor);
    const QList<QStringList> records = recordsOf(CsvSummary::text(
        {objectOf(project, ContrastSummary::Levelling::Told)}, Contrast::ColumnsAndLevelling));
    for (const QStringList& record : records)
        QCOMPARE(record.size(), 20 + 19 + 2);
    // Three motors: one millimetre counts 3·EI·L/(s²·t²) in the middle, EI = 1600·12³/(48·0.015).
    const double stiffness = 1600.0 * 12.0 * 12.0 * 12.0 / (48.0 * 0.015);
    const double perMillimetre = 3.0 * stiffness * 12.0 / (49.0 * 25.0) / 1000.0;
    QCOMPARE(cell(records, 3, u"kg_por_mm"_s), QString::number(perMillimetre, 'f', 2));
    QVERIFY(cell(records, 3, u"un_flojo_cual"_s) == "1"_L1 || cell(records, 3, u"un_flojo_cual"_s) == "3"_L1);
}

void TestCsv::summary_ofUnknownFigures_hasDashes()
{
    Figures figures;
    figures.title = u"Gira"_s;
    figures.trussLength = std::numeric_limits<float>::infinity();
    figures.motors.append(Figures::MotorFigures());
    figures.motors[0].dynamicLoad = std::numeric_limits<float>::quiet_NaN();
    const QList<QStringList> records =
        recordsOf(CsvSummary::text({Summary::json(u"a.rig"_s, figures)}, Contrast::None));
    QCOMPARE(cell(records, 1, u"longitud_m"_s), u"—"_s);
    QCOMPARE(cell(records, 1, u"masa_kg"_s), u"—"_s);
    QCOMPARE(cell(records, 1, u"calculable"_s), u"no"_s);
    QCOMPARE(cell(records, 2, u"dinamica_kg"_s), u"—"_s);
}

void TestCsv::summary_ofSeveralProjects_isOneTable()
{
    const QJsonObject object = objectOf(tipping(), ContrastSummary::Levelling::Untold);
    const QString text = CsvSummary::text({object, object}, Contrast::None);
    QCOMPARE(text.count(u"proyecto,archivo"_s), 1);
    QCOMPARE(text.count(u'\uFEFF'), 1);
    QCOMPARE(text.count(u"\r\n\"Gira, 2ª \"\"noche\"\"\",a.rig,"_s), 10);
    QVERIFY(CsvSummary::text({}, Contrast::Columns).startsWith(u"\uFEFFproyecto,"_s));
}

QTEST_GUILESS_MAIN(TestCsv)
#include "tst_csv.moc"
