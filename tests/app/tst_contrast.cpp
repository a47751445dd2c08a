#include "app/Console.h"
#include "app/ContrastSummary.h"
#include "engine/SecondOpinionText.h"
#include "support/Shows.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

using ContrastSummary::Levelling;
using SecondOpinion::Layout;
using SecondOpinion::Opinion;

Q_DECLARE_METATYPE(Layout)

namespace
{

/// 12 m of 8.4 kg/m that tip over B, at 7 m: 200 kg hang at the end.
Layout tipping()
{
    Layout layout = Shows::show(12.0, 8.4, {0.0, 7.0}, {{12.0, 200.0}});
    layout.motors[0].lever = 29.4;
    layout.motors[1].lever = 271.4;
    return layout;
}

/// Five motors, four spans of 5 m under 11.2 kg/m, 280 kg in the middle of each. By the tables for
/// four equal spans a motor takes 11, 32, 26, 32, 11 of 28 parts of w·s = 56 kg, and of the loads 19/56,
/// 17/14, 25/28, 17/14, 19/56.
Layout fiveMotors()
{
    Layout layout = Shows::show(20.0, 11.2, {0.0, 5.0, 10.0, 15.0, 20.0},
                                {{2.5, 280.0}, {7.5, 280.0}, {12.5, 280.0}, {17.5, 280.0}}, 1000.0);
    for (SecondOpinion::Motor& motor : layout.motors) {
        motor.capacity = 500.0;
        motor.selfWeight = 35.0;
        motor.lever = 336.0;
    }
    layout.motors.front().lever = 168.0;
    layout.motors.back().lever = 168.0;
    return layout;
}

Layout concierto()
{
    Layout layout =
        Shows::show(14.0, 10.0, {1.0, 7.0, 13.0},
                    {{0.0, 380.0}, {4.0, 60.0}, {7.0, 60.0}, {10.0, 60.0}, {14.0, 380.0}}, 2000.0);
    layout.motors[0].lever = 450.0;
    layout.motors[1].lever = 180.0;
    layout.motors[2].lever = 450.0;
    return layout;
}

QJsonObject jsonOf(const Layout& layout, Levelling levelling = Levelling::Untold)
{
    return ContrastSummary::json(SecondOpinion::of(layout), levelling);
}

} // namespace

class TestContrast : public QObject
{
    Q_OBJECT

private slots:
    void text_ofFiveMotors_isAlignedAndComplete();
    void text_ofWhatTips_hasDashes();
    void text_namesStayHarmlessAndShort();
    void text_fitsItsColumns();
    void warnings_areTheContradictions();
    void warnings_ofWhatAgrees_areNone();
    void json_ofConcierto();
    void json_countsTheSlackMotorFromOne();
    void json_ofWhatTips_hasNulls();
    void json_tellsTheLevellingWhereItIsWanted();
    void everyState_answers_data();
    void everyState_answers();
};

void TestContrast::text_ofFiveMotors_isAlignedAndComplete()
{
    // 11/28·56 + 19/56·280 = 22 + 95; 64 + 340; 52 + 250. Most: 1344 kg at the middle, the furthest
    // motor on the other side: ·10/20, ·10/15, all. (404 + 35)·1.25 = 548.75 of 500.
    const QString expected = uR"(  Contraste (viga continua; no sustituye al cálculo de un técnico)
    Motor  Posición  Palanca (kg)  Nivelado (kg)  Con un motor flojo (kg)  Máximo posible (kg)  Veredicto nivelado
    A       -10.00m         168.0          117.0                    266.3                672.0  OK
    B        -5.00m         336.0          404.0                    669.2                896.0  EXCESO DINÁMICO
    C         0.00m         336.0          302.0                    688.4               1344.0  OK
    D        +5.00m         336.0          404.0                    669.2                896.0  EXCESO DINÁMICO
    E       +10.00m         168.0          117.0                    266.3                672.0  OK
    Truss bien nivelado: momento de -255.0 a 257.5 kg·m (5.1 %), cortante de
    219.0 kg; con A flojo: momento de -840.0 a 238.0 kg·m (16.8 %), cortante de
    336.0 kg.
    Bien nivelado, B lleva 404.0 kg (palanca: 336.0): EXCESO DINÁMICO.
    Bien nivelado, D lleva 404.0 kg (palanca: 336.0): EXCESO DINÁMICO.
    Si se afloja A, B llega a 669.2 kg, más que sus 500, y el truss al 16.8 % de su momento.
    Si se afloja B, C llega a 688.4 kg, más que sus 500, y el truss al 13.9 % de su momento.
    Si se afloja E, D llega a 669.2 kg, más que sus 500, y el truss al 16.8 % de su momento.
    Supone cadenas verticales, un solo truss recto de sección constante, cargas
    quietas y las masas dadas. Ganchos, techo y lo que ceden las cadenas solo
    entran en el máximo posible. Un motor que se rompe es un golpe dinámico:
    flojo no es roto.
)"_s;
    QCOMPARE(ContrastSummary::text(SecondOpinion::of(fiveMotors())), expected);
}

void TestContrast::text_ofWhatTips_hasDashes()
{
    const QString text = ContrastSummary::text(SecondOpinion::of(tipping()));
    QVERIFY(text.contains(u"    B        +1.00m         271.4              —                        —"
                          "                    —  —\n"_s));
    QVERIFY(text.contains(u"\n    VUELCA: el centro de gravedad (+3.99m) queda 2.99 m fuera de los motores; "
                          "ningún reparto lo sostiene.\n"_s));
    QVERIFY(text.endsWith(u"flojo no es roto.\n"_s));
}

void TestContrast::text_namesStayHarmlessAndShort()
{
    Layout layout = fiveMotors();
    layout.motors[1].title = u"\x1B[2J\n"_s + QString(5000, u'x');
    const QString text = ContrastSummary::text(SecondOpinion::of(layout));
    QVERIFY(!text.contains(u'\x1B'));
    QCOMPARE(text.count(u'\n'), ContrastSummary::text(SecondOpinion::of(fiveMotors())).count(u'\n'));
    QVERIFY(!text.contains(QString(41, u'x')));
    QVERIFY(!ContrastSummary::warnings(SecondOpinion::of(layout)).contains(QString(41, u'x')));
}

void TestContrast::text_fitsItsColumns()
{
    const QStringList lines = ContrastSummary::text(SecondOpinion::of(concierto())).split(u'\n');
    for (const QString& line : lines)
        QVERIFY2(Console::displayWidth(line) <= 120, qPrintable(line));
    const qsizetype limits =
        lines.indexOf(u"    Supone cadenas verticales, un solo truss recto de sección constante, cargas"_s);
    QVERIFY(limits > 0);
    for (qsizetype i = limits; i < lines.size(); ++i)
        QVERIFY2(Console::displayWidth(lines.at(i)) <= 80, qPrintable(lines.at(i)));
}

void TestContrast::warnings_areTheContradictions()
{
    QCOMPARE(ContrastSummary::warnings(SecondOpinion::of(tipping())),
             u"  Contraste: VUELCA: el centro de gravedad (+3.99m) queda 2.99 m fuera de los motores; "
             "ningún reparto lo sostiene.\n"_s);
    QCOMPARE(ContrastSummary::warnings(SecondOpinion::of(fiveMotors())),
             u"  Contraste: Bien nivelado, B lleva 404.0 kg (palanca: 336.0): EXCESO DINÁMICO.\n"
             "  Contraste: Bien nivelado, D lleva 404.0 kg (palanca: 336.0): EXCESO DINÁMICO.\n"_s);
}

void TestContrast::warnings_ofWhatAgrees_areNone()
{
    QCOMPARE(ContrastSummary::warnings(SecondOpinion::of(concierto())), QString());
}

// The figures of the show in the examples: two equal spans of 6 m with overhangs of 1 m.
void TestContrast::json_ofConcierto()
{
    const QJsonObject object = jsonOf(concierto());
    QCOMPARE(object[u"estado"_s].toString(), u"ok"_s);
    QCOMPARE(object[u"centro_de_gravedad_m"_s].toDouble(-1.0), 0.0);
    QCOMPARE(object[u"margen_vuelco_m"_s].toDouble(), 6.0);
    QCOMPARE(object[u"peso_total_kg"_s].toDouble(), 1080.0);
    QCOMPARE(object[u"momento_max_kgm"_s].toDouble(), 80.0);
    QCOMPARE(object[u"momento_min_kgm"_s].toDouble(), -385.0);
    QCOMPARE(object[u"cortante_max_kg"_s].toDouble(), 390.0);
    QCOMPARE(object[u"momento_pct"_s].toDouble(), 5.5);
    QCOMPARE(object[u"momento_un_flojo_pct"_s].toDouble(), 44.071);
    const QJsonArray motors = object[u"motores"_s].toArray();
    QCOMPARE(motors.size(), 3);
    QCOMPARE(motors[0].toObject(), QJsonObject({{u"palanca_kg"_s, 450.0},
                                                {u"nivelado_kg"_s, 527.5},
                                                {u"empujando_kg"_s, 527.5},
                                                {u"flojo"_s, false},
                                                {u"un_flojo_kg"_s, 540.0},
                                                {u"un_flojo_cual"_s, 2},
                                                {u"maximo_kg"_s, 540.0},
                                                {u"minimo_kg"_s, 0.0},
                                                {u"imprescindible"_s, false},
                                                {u"veredicto_nivelado"_s, u"ok"_s}}));
    QCOMPARE(motors[1][u"nivelado_kg"_s].toDouble(), 25.0);
    QCOMPARE(motors[1][u"un_flojo_kg"_s].toDouble(), 1080.0);
}

void TestContrast::json_countsTheSlackMotorFromOne()
{
    const QJsonArray motors = jsonOf(fiveMotors())[u"motores"_s].toArray();
    QCOMPARE(motors[1][u"un_flojo_cual"_s].toInteger(), 1);
    QCOMPARE(motors[3][u"un_flojo_cual"_s].toInteger(), 5);
    QCOMPARE(motors[1][u"veredicto_nivelado"_s].toString(), u"exceso_dinamico"_s);
}

void TestContrast::json_ofWhatTips_hasNulls()
{
    const QJsonObject object = jsonOf(tipping());
    QCOMPARE(object[u"estado"_s].toString(), u"vuelca"_s);
    QCOMPARE(object[u"centro_de_gravedad_m"_s].toDouble(), 3.989);
    QCOMPARE(object[u"margen_vuelco_m"_s].toDouble(), -2.989);
    QCOMPARE(object[u"peso_total_kg"_s].toDouble(), 300.8);
    for (const QString& member : {u"momento_max_kgm"_s, u"momento_min_kgm"_s, u"cortante_max_kg"_s,
                                  u"momento_pct"_s, u"momento_un_flojo_pct"_s})
        QVERIFY2(object[member].isNull(), qPrintable(member));
    const QJsonObject motor = object[u"motores"_s][1].toObject();
    QCOMPARE(motor.size(), 10);
    QCOMPARE(motor[u"palanca_kg"_s].toDouble(), 271.4);
    for (auto member = motor.begin(); member != motor.end(); ++member)
        QVERIFY2(member->isNull() || member.key() == "palanca_kg"_L1, qPrintable(member.key()));
}

// K of the middle of two equal spans is 6·EI/s³, with EI = CPL·L³/(48·f).
void TestContrast::json_tellsTheLevellingWhereItIsWanted()
{
    Layout layout = concierto();
    layout.tableDeflection = 15.0;
    const QJsonArray motors = jsonOf(layout, Levelling::Told)[u"motores"_s].toArray();
    const double stiffness = 2000.0 * 14.0 * 14.0 * 14.0 / (48.0 * 0.015);
    const double perMillimetre = 6.0 * stiffness / (6.0 * 6.0 * 6.0) / 1000.0;
    QVERIFY(std::abs(motors[1][u"kg_por_mm"_s].toDouble() - perMillimetre) <= 0.0005 + 1e-9);
    QVERIFY(std::abs(motors[1][u"flojo_a_mm"_s].toDouble() - 25.0 / perMillimetre) <= 0.0005 + 1e-9);

    const QJsonObject untold = jsonOf(layout)[u"motores"_s][1].toObject();
    QVERIFY(!untold.contains(u"kg_por_mm"_s));
    QVERIFY(!untold.contains(u"flojo_a_mm"_s));
    const QJsonObject tips = jsonOf(tipping(), Levelling::Told)[u"motores"_s][0].toObject();
    QVERIFY(tips[u"kg_por_mm"_s].isNull() && tips[u"flojo_a_mm"_s].isNull());
}

void TestContrast::everyState_answers_data()
{
    QTest::addColumn<Layout>("layout");
    QTest::addColumn<QString>("state");
    QTest::addColumn<QString>("word");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("no motors") << Shows::show(12.0, 8.4, {}, {}) << u"sin_motores"_s << u"Sin motores"_s;
    QTest::newRow("no load") << Shows::show(12.0, 0.0, {1.0, 9.0}, {}) << u"sin_carga"_s << u"pesan nada"_s;
    QTest::newRow("one motor") << Shows::show(12.0, 8.4, {6.0}, {}) << u"un_motor"_s << u"Un solo punto"_s;
    QTest::newRow("tips") << tipping() << u"vuelca"_s << u"VUELCA"_s;
    QTest::newRow("on the edge") << Shows::show(12.0, 8.4, {0.0, 6.0}, {}) << u"al_borde"_s << u"AL BORDE"_s;
    QTest::newRow("not a number") << Shows::show(12.0, 8.4, {0.0, 6.0}, {{3.0, nan}}) << u"no_calculable"_s
                                  << u"NO SE PUEDE CALCULAR"_s;
    QTest::newRow("infinite") << Shows::show(12.0, std::numeric_limits<double>::infinity(), {0.0, 6.0}, {})
                              << u"no_calculable"_s << u"NO SE PUEDE CALCULAR"_s;
    QTest::newRow("negative") << Shows::show(12.0, -1.0, {0.0, 6.0}, {}) << u"no_calculable"_s
                              << u"NO SE PUEDE CALCULAR"_s;
    QTest::newRow("outside") << Shows::show(12.0, 1.0, {0.0, 16.0}, {}) << u"no_calculable"_s
                             << u"NO SE PUEDE CALCULAR"_s;
    QTest::newRow("overflow") << Shows::show(1e308, 1e308, {0.0, 1e308}, {}) << u"no_calculable"_s
                              << u"NO SE PUEDE CALCULAR"_s;
    QTest::newRow("too long for its spans")
        << Shows::show(1e7, 8.4, {0.0, 1.0, 1e7}, {}) << u"no_converge"_s << u"SIN SOLUCIÓN"_s;
    QTest::newRow("level") << concierto() << u"ok"_s << u"Truss bien nivelado"_s;
}

void TestContrast::everyState_answers()
{
    QFETCH(const Layout, layout);
    QFETCH(const QString, state);
    QFETCH(const QString, word);
    const Opinion opinion = SecondOpinion::of(layout);
    const QString text = ContrastSummary::text(opinion);
    QVERIFY2(text.contains(word), qPrintable(text));
    QVERIFY(text.startsWith(u"  Contraste (viga continua"_s));
    QVERIFY(text.endsWith(u"flojo no es roto.\n"_s));
    const QJsonObject object = ContrastSummary::json(opinion, Levelling::Told);
    QCOMPARE(object[u"estado"_s].toString(), state);
    QCOMPARE(object.size(), 10);
    QCOMPARE(object[u"motores"_s].toArray().size(), static_cast<qsizetype>(layout.motors.size()));
    const QString document = QString::fromUtf8(QJsonDocument(object).toJson());
    for (const QString& bad : {u"nan"_s, u"inf"_s, u"\"\""_s}) {
        QVERIFY2(!document.contains(bad), qPrintable(document));
        QVERIFY2(!text.contains(bad), qPrintable(text));
    }
    QCOMPARE(ContrastSummary::warnings(opinion).isEmpty(), !opinion.contradicts());
}

QTEST_GUILESS_MAIN(TestContrast)
#include "tst_contrast.moc"
