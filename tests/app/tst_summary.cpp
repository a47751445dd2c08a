#include "app/Console.h"
#include "app/JsonNumber.h"
#include "app/Summary.h"
#include "app/TextTable.h"
#include "engine/LoadLogic.h"

#include <QJsonArray>
#include <QTest>

#include <cmath>
#include <limits>
#include <optional>

using namespace Qt::StringLiterals;

using ProjectState = LoadLogic::ProjectState;

namespace
{

/// 12 m of 8.4 kg/m under two motors at its ends, 500 kg in the middle: 300.4 kg each.
Figures usualFigures()
{
    ProjectState project;
    project.tabName = u"Sala"_s;
    LoadLogic::Motor motor;
    motor.id = 1;
    project.motors.append(motor);
    motor.positionX = 12.0F;
    motor.modelName = u"Motor de detrás"_s;
    motor.capacity = 400.0F;
    project.motors.append(motor);
    LoadLogic::ActiveLoad load;
    load.positionX = 6.0F;
    project.loads.append(load);
    return Figures::of(project);
}

} // namespace

class TestSummary : public QObject
{
    Q_OBJECT

private slots:
    void text_isAlignedAndComplete();
    void text_ofAnUnstableProject_saysSo();
    void text_ofWhatCannotBeCalculated_warns();
    void text_withoutMotors_saysSo();
    void text_keepsNamesHarmlessAndShort();
    void json_hasTheDocumentedMembers();
    void json_listsTheLoads();
    void json_ofWhatCannotBeCalculated_isNull();
    void jsonNumbers_areRounded_data();
    void jsonNumbers_areRounded();
    void names_areShortened();
    void withinLimits_needsKnownFigures();
    void table_alignsByDisplayWidth();
    void emptyTable_isEmpty();
    void displayWidth_ofLetters_data();
    void displayWidth_ofLetters();
    void printable_replacesWhatCommandsATerminal();
};

void TestSummary::text_isAlignedAndComplete()
{
    // 300.4 + 50 = 350.4, · 1.25 = 438; (151.2 + 1500) / 4800 = 34.4 %.
    const QString expected = uR"(sala.rig: Sala
  Viga: 12.00 m, 8.4 kg/m, CPL 1600.0 kg
  Motor            Posición  En punto (kg)  Estática (kg)  Dinámica (kg)  Capacidad (kg)  Veredicto
  Motor              -6.00m          300.4          350.4          438.0          1000.0  OK ✅
  Motor de detrás    +6.00m          300.4          350.4          438.0           400.0  EXCESO DINÁMICO ❌
  Estrés: 34.4 %
  Estabilidad: estable
  Resultado: NO APTO: Superación de carga.
)"_s;
    QCOMPARE(Summary::text(u"sala.rig"_s, usualFigures()), expected);
}

void TestSummary::text_ofAnUnstableProject_saysSo()
{
    Figures figures = usualFigures();
    figures.isUnstable = true;
    const QString text = Summary::text(u"a"_s, figures);
    QVERIFY(text.contains(u"Estabilidad: INESTABLE, voladizo de más del 45 % de la longitud\n"_s));
    QVERIFY(text.contains(u"Resultado: NO APTO (INESTABLE): Error de voladizo.\n"_s));
}

void TestSummary::text_ofWhatCannotBeCalculated_warns()
{
    Figures figures = usualFigures();
    figures.motors[0].dynamicLoad = std::numeric_limits<float>::quiet_NaN();
    QVERIFY(
        Summary::text(u"a"_s, figures).contains(u"\n  Aviso: hay motores cuya carga no se puede calcular"_s));
    QVERIFY(!Summary::text(u"a"_s, usualFigures()).contains(u"Aviso"_s));
}

void TestSummary::text_withoutMotors_saysSo()
{
    QVERIFY(Summary::text(u"a"_s, Figures()).contains(u"\n  Sin motores\n"_s));
}

void TestSummary::text_keepsNamesHarmlessAndShort()
{
    Figures figures = usualFigures();
    figures.motors[0].title = u"\x1B[2JM\n"_s + QString(1000, u'x');
    const QString text = Summary::text(u"a"_s, figures);
    QVERIFY(!text.contains(u'\x1B'));
    QCOMPARE(text.count(u'\n'), Summary::text(u"a"_s, usualFigures()).count(u'\n'));
    const QStringList lines = text.split(u'\n');
    for (const QString& line : lines)
        QVERIFY(line.size() < 150);
}

void TestSummary::json_hasTheDocumentedMembers()
{
    const QJsonObject object = Summary::json(u"sala.rig"_s, usualFigures());
    QCOMPARE(object.keys(),
             QStringList({u"apto"_s, u"archivo"_s, u"calculable"_s, u"cargas"_s, u"cpl_kg"_s, u"estable"_s,
                          u"estres_pct"_s, u"longitud_m"_s, u"motores"_s, u"peso_kg_m"_s, u"proyecto"_s}));
    QCOMPARE(object[u"archivo"_s].toString(), u"sala.rig"_s);
    QCOMPARE(object[u"proyecto"_s].toString(), u"Sala"_s);
    QCOMPARE(object[u"peso_kg_m"_s].toDouble(), 8.4);
    QCOMPARE(object[u"estres_pct"_s].toDouble(), 34.4);
    QCOMPARE(object[u"estable"_s].toBool(), true);
    QCOMPARE(object[u"calculable"_s].toBool(), true);
    QCOMPARE(object[u"apto"_s].toBool(true), false);

    const QJsonObject motor = object[u"motores"_s][1].toObject();
    QCOMPARE(motor.keys(),
             QStringList({u"capacidad_kg"_s, u"dinamica_kg"_s, u"en_punto_kg"_s, u"estatica_kg"_s,
                          u"nombre"_s, u"peso_propio_kg"_s, u"posicion"_s, u"posicion_m"_s, u"veredicto"_s}));
    QCOMPARE(motor[u"en_punto_kg"_s].toDouble(), 300.4);
    QCOMPARE(motor[u"estatica_kg"_s].toDouble(), 350.4);
    QCOMPARE(motor[u"dinamica_kg"_s].toDouble(), 438.0);
    QCOMPARE(motor[u"posicion"_s].toString(), u"+6.00m"_s);
    QCOMPARE(motor[u"posicion_m"_s].toDouble(), 6.0);
    QCOMPARE(object[u"motores"_s][0][u"posicion_m"_s].toDouble(), -6.0);
    QCOMPARE(motor[u"veredicto"_s].toString(), u"exceso_dinamico"_s);
    QCOMPARE(object[u"motores"_s][0][u"veredicto"_s].toString(), u"ok"_s);
}

void TestSummary::json_listsTheLoads()
{
    ProjectState project;
    LoadLogic::ActiveLoad load;
    load.id = 7;
    load.mass = 62.1254F;
    load.positionX = 4.5F;
    load.name = u"PA"_s;
    project.loads.append(load);
    load.name.clear();
    load.positionX = 8.0F;
    load.groupId = 3;
    project.loads.append(load);

    const QJsonArray loads = Summary::json(u"a"_s, Figures::of(project))[u"cargas"_s].toArray();
    QCOMPARE(loads.size(), 2);
    QCOMPARE(loads[0].toObject(), QJsonObject({{u"nombre"_s, u"PA"_s},
                                               {u"masa_kg"_s, 62.125},
                                               {u"posicion_m"_s, -1.5},
                                               {u"grupo"_s, QJsonValue::Null}}));
    QCOMPARE(loads[1][u"nombre"_s].toString(), u"Carga 7"_s);
    QCOMPARE(loads[1][u"posicion_m"_s].toDouble(), 2.0);
    QCOMPARE(loads[1][u"grupo"_s].toInteger(), 3);
}

void TestSummary::jsonNumbers_areRounded_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QJsonValue>("expected");
    QTest::newRow("usual") << 1.23449 << QJsonValue(1.234);
    QTest::newRow("half") << -0.0625 << QJsonValue(-0.063);
    QTest::newRow("nothing below zero") << -0.0004 << QJsonValue(0.0);
    QTest::newRow("beyond three decimals") << 1e307 << QJsonValue(1e307);
    QTest::newRow("none") << std::numeric_limits<double>::quiet_NaN() << QJsonValue(QJsonValue::Null);
    QTest::newRow("infinite") << -std::numeric_limits<double>::infinity() << QJsonValue(QJsonValue::Null);
}

void TestSummary::jsonNumbers_areRounded()
{
    QFETCH(const double, value);
    QFETCH(const QJsonValue, expected);
    const QJsonValue rounded = JsonNumber::rounded(value);
    QCOMPARE(rounded, expected);
    QVERIFY(!std::signbit(rounded.toDouble()) || rounded.toDouble() < 0.0);
    QCOMPARE(JsonNumber::rounded(std::optional(value)), expected);
    QCOMPARE(JsonNumber::rounded(std::optional<double>()), QJsonValue(QJsonValue::Null));
}

void TestSummary::names_areShortened()
{
    QCOMPARE(Console::shortened(QString(40, u'x')), QString(40, u'x'));
    QCOMPARE(Console::shortened(QString(41, u'x')), QString(39, u'x') + u'…');
    QCOMPARE(Console::shortened(u"a\nb"_s), u"a\uFFFDb"_s);
}

void TestSummary::json_ofWhatCannotBeCalculated_isNull()
{
    Figures figures = usualFigures();
    figures.motors[0].dynamicLoad = std::numeric_limits<float>::quiet_NaN();
    const QJsonObject object = Summary::json(u"a"_s, figures);
    QCOMPARE(object[u"calculable"_s].toBool(true), false);
    QVERIFY(!object[u"motores"_s][0][u"dinamica_kg"_s].isString());
    QVERIFY(object[u"motores"_s][0][u"dinamica_kg"_s].isNull());
}

void TestSummary::withinLimits_needsKnownFigures()
{
    Figures figures = usualFigures();
    QVERIFY(!Summary::isWithinLimits(figures));
    figures.motors.removeLast(); // the small one
    QVERIFY(Summary::isWithinLimits(figures));
    figures.motors[0].dynamicLoad = std::numeric_limits<float>::quiet_NaN();
    QVERIFY(!Summary::isWithinLimits(figures));
}

void TestSummary::table_alignsByDisplayWidth()
{
    TextTable table;
    table.add({u"a"_s, u"1"_s, u"fin"_s});
    table.add({u"電動"_s, u"100"_s, u"y"_s});
    table.add({u"n\u0303o"_s, u"✅"_s, u"z"_s});
    QCOMPARE(table.text(u"> "_s), u"> a       1  fin\n> 電動  100  y\n> n\u0303o     ✅  z\n"_s);
}

void TestSummary::emptyTable_isEmpty()
{
    QCOMPARE(TextTable().text(u"  "_s), QString());
}

void TestSummary::displayWidth_ofLetters_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("width");
    QTest::newRow("empty") << QString() << 0;
    QTest::newRow("latin") << u"Estática ñ"_s << 10;
    QTest::newRow("combining") << u"e\u0301"_s << 1;
    QTest::newRow("chinese") << u"电机"_s << 4;
    QTest::newRow("emoji beyond the first plane") << u"🔊"_s << 2;
    QTest::newRow("marks of the verdicts") << u"✅❌"_s << 4;
    QTest::newRow("joiner") << u"a\u200Db"_s << 2;
}

void TestSummary::displayWidth_ofLetters()
{
    QFETCH(const QString, text);
    QFETCH(const int, width);
    QCOMPARE(Console::displayWidth(text), width);
}

void TestSummary::printable_replacesWhatCommandsATerminal()
{
    QCOMPARE(Console::printable(u"a\x1B[31mb\u202Ec\u0085d\te"_s), u"a\uFFFD[31mb\uFFFDc\uFFFDd\uFFFDe"_s);
    QCOMPARE(Console::printable(u"Año ✅ 🔊 <b>%1"_s), u"Año ✅ 🔊 <b>%1"_s);
}

QTEST_GUILESS_MAIN(TestSummary)
#include "tst_summary.moc"
