#include "engine/SecondOpinionText.h"
#include "support/Shows.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace Qt::StringLiterals;
using SecondOpinion::Layout;
using SecondOpinion::MotorOpinion;
using SecondOpinion::Opinion;
using SecondOpinion::State;
using SecondOpinion::Verdict;

namespace
{

QStringList sentencesOf(const Layout& layout)
{
    return SecondOpinionText::sentences(SecondOpinion::of(layout));
}

/// Under 10 kg/m on 12 m and 600 kg in the middle of it, motors at its ends and its middle: 720 kg hang from
/// the middle when an end is slack, and the middle of a level truss carries 600 + 5/8·120 = 675 kg.
Layout middle()
{
    return Shows::show(12.0, 10.0, {0.0, 6.0, 12.0}, {{6.0, 600.0}});
}

/// A truss whose motors have more than enough capacity.
Layout easy()
{
    Layout layout = middle();
    for (SecondOpinion::Motor& motor : layout.motors)
        motor.capacity = 2000.0;
    return layout;
}

const QString ANY_LEVELLING = u"Con cualquier nivelado, ningún motor pasa de su capacidad."_s;

} // namespace

class SecondOpinionTextTest : public QObject
{
    Q_OBJECT

private slots:
    void table_isInOrder();
    void table_showsDashesForWhatIsNotKnown();
    void positions_areRelativeToTheMiddle();
    void masses_haveOneDecimal();
    void screenOnThreeMotors_isToldInFull();
    void truss_tellsBothCases();
    void truss_withoutLimitHasNoPercent();
    void truss_isSilentWhereNothingBends();
    void tipping_isTold();
    void tippingByMillimetres_isToldInMillimetres();
    void edge_namesTheMotorAtIt();
    void emptyStates_areTold();
    void oneMotor_isTold();
    void problems_areTold();
    void unsolved_isTold();
    void excess_isTold();
    void slack_isTold();
    void oneSlack_isTold();
    void oneSlackThatFitsAtRest_namesTheVerdict();
    void indispensable_isTold();
    void trussBeyondItsMoment_isTold();
    void closeMotors_areTold();
    void levelling_isTold();
    void contradictions_areTheUnsafeSentencesAlone();
    void names_standAsTheyWereTyped();
    void motorsOfOneName_areToldApart();
    void keys_areThoseOfTheDocument();
    void smallPrint_isThere();
};

void SecondOpinionTextTest::table_isInOrder()
{
    QCOMPARE(SecondOpinionText::title(),
             u"Contraste (viga continua; no sustituye al cálculo de un técnico)"_s);
    QCOMPARE(SecondOpinionText::columns(),
             (QStringList{u"Motor"_s, u"Posición"_s, u"Palanca (kg)"_s, u"Nivelado (kg)"_s,
                          u"Con un motor flojo (kg)"_s, u"Máximo posible (kg)"_s, u"Veredicto nivelado"_s}));
    Layout layout = middle();
    layout.motors[1].lever = 660.0;
    layout.motors[1].capacity = 800.0;
    const QList<QStringList> rows = SecondOpinionText::rows(SecondOpinion::of(layout));
    QCOMPARE(rows.size(), 3);
    QCOMPARE(rows[1], (QStringList{u"B"_s, u"0.00m"_s, u"660.0"_s, u"675.0"_s, u"720.0"_s, u"720.0"_s,
                                   u"EXCESO DINÁMICO"_s}));
    QCOMPARE(rows[2],
             (QStringList{u"C"_s, u"+6.00m"_s, u"0.0"_s, u"22.5"_s, u"360.0"_s, u"360.0"_s, u"OK"_s}));
}

void SecondOpinionTextTest::table_showsDashesForWhatIsNotKnown()
{
    Layout layout = Shows::show(12.0, 8.4, {0.0, 7.0}, {{12.0, 200.0}});
    layout.motors[0].lever = std::nan("");
    layout.motors[1].lever = 271.4;
    const QList<QStringList> rows = SecondOpinionText::rows(SecondOpinion::of(layout));
    QCOMPARE(rows[0], (QStringList{u"A"_s, u"-6.00m"_s, u"—"_s, u"—"_s, u"—"_s, u"—"_s, u"—"_s}));
    QCOMPARE(rows[1], (QStringList{u"B"_s, u"+1.00m"_s, u"271.4"_s, u"—"_s, u"—"_s, u"—"_s, u"—"_s}));
}

void SecondOpinionTextTest::positions_areRelativeToTheMiddle()
{
    QCOMPARE(SecondOpinionText::position(9.99, 12.0), u"+3.99m"_s);
    QCOMPARE(SecondOpinionText::position(2.01, 12.0), u"-3.99m"_s);
    QCOMPARE(SecondOpinionText::position(6.0, 12.0), u"0.00m"_s);
    QCOMPARE(SecondOpinionText::position(6.0009, 12.0), u"0.00m"_s);
    QCOMPARE(SecondOpinionText::position(5.9991, 12.0), u"0.00m"_s);
    QCOMPARE(SecondOpinionText::position(6.0061, 12.0), u"+0.01m"_s);
    QCOMPARE(SecondOpinionText::position(std::nan(""), 12.0), u"—"_s);
    QCOMPARE(SecondOpinionText::position(1.0, std::numeric_limits<double>::infinity()), u"—"_s);
}

void SecondOpinionTextTest::masses_haveOneDecimal()
{
    QCOMPARE(SecondOpinionText::mass(300.84), u"300.8"_s);
    QCOMPARE(SecondOpinionText::mass(-1e-13), u"0.0"_s);
    QCOMPARE(SecondOpinionText::mass(-0.051), u"-0.1"_s);
    QCOMPARE(SecondOpinionText::mass(0.051), u"0.1"_s);
    QCOMPARE(SecondOpinionText::mass(std::nullopt), u"—"_s);
}

// A screen of 600 kg in twelve segments all along 12 m of 8.4 kg/m, on three motors of 500 kg; the table
// gives 70 mm under the CPL.
void SecondOpinionTextTest::screenOnThreeMotors_isToldInFull()
{
    Layout layout = Shows::show(12.0, 8.4, {0.0, 6.0, 12.0}, {});
    for (int i = 0; i < 12; ++i)
        layout.loads.push_back({0.5 + i, 50.0});
    for (SecondOpinion::Motor& motor : layout.motors)
        motor.capacity = 500.0;
    layout.motors[1].lever = 350.4;
    layout.tableDeflection = 70.0;
    const QStringList told = sentencesOf(layout);
    QVERIFY(told.contains(u"Bien nivelado, B lleva 439.0 kg (palanca: 350.4): EXCESO DINÁMICO."_s));
    QVERIFY(told.contains(
        u"Si se afloja A, B llega a 700.8 kg, más que sus 500, y el truss al 21.9 % de su momento."_s));
    QVERIFY(
        told.contains(u"1 mm de desnivel de B cambia su carga en unos 23 kg; queda flojo si baja 19 mm."_s));
}

void SecondOpinionTextTest::truss_tellsBothCases()
{
    const Opinion opinion = SecondOpinion::of(Shows::example(u"concierto"_s, {450.0, 180.0, 450.0}));
    QCOMPARE(SecondOpinionText::truss(opinion),
             u"Truss bien nivelado: momento de -385.0 a 80.0 kg·m (5.5 %), cortante de 390.0 kg; con PA izq. "
             u"flojo: "
             "momento de -3085.0 a 0.0 kg·m (44.1 %), cortante de 510.0 kg."_s);
}

void SecondOpinionTextTest::truss_withoutLimitHasNoPercent()
{
    Layout layout = Shows::show(10.0, 8.0, {0.0, 10.0}, {});
    layout.limitCPL = 0.0;
    QCOMPARE(SecondOpinionText::truss(SecondOpinion::of(layout)),
             u"Truss bien nivelado: momento de 0.0 a 100.0 kg·m, cortante de 40.0 kg."_s);
}

void SecondOpinionTextTest::truss_isSilentWhereNothingBends()
{
    QCOMPARE(SecondOpinionText::truss(SecondOpinion::of(Shows::show(12.0, 8.4, {3.0}, {}))), QString());
}

void SecondOpinionTextTest::tipping_isTold()
{
    const Layout layout = Shows::show(12.0, 8.4, {0.0, 7.0}, {{12.0, 200.0}});
    QCOMPARE(sentencesOf(layout),
             QStringList(u"VUELCA: el centro de gravedad (+3.99m) queda 2.99 m fuera de los motores; ningún "
                         "reparto lo sostiene."_s));
    QCOMPARE(sentencesOf(Shows::mirrored(layout)),
             QStringList(u"VUELCA: el centro de gravedad (-3.99m) queda 2.99 m fuera de los motores; ningún "
                         "reparto lo sostiene."_s));
}

void SecondOpinionTextTest::tippingByMillimetres_isToldInMillimetres()
{
    const QStringList told = sentencesOf(Shows::show(12.0, 0.0, {0.0, 7.0}, {{7.004, 200.0}}));
    QVERIFY(told.first().contains(u"queda 0.004 m fuera"_s));
    QVERIFY(sentencesOf(Shows::show(12.0, 0.0, {0.0, 7.0}, {{7.11, 200.0}}))
                .first()
                .contains(u"queda 0.11 m fuera"_s));
}

void SecondOpinionTextTest::edge_namesTheMotorAtIt()
{
    const Layout layout = Shows::show(12.0, 0.0, {2.0, 0.0, 7.0}, {{7.0, 200.0}});
    QCOMPARE(sentencesOf(layout),
             QStringList(u"AL BORDE DEL VUELCO: el centro de gravedad (+1.00m) está en C, "
                         "el motor de fuera; cualquier cambio lo vuelca."_s));
    QVERIFY(sentencesOf(Shows::show(12.0, 0.0, {2.0, 1.0, 7.0}, {{1.0, 200.0}}))
                .first()
                .contains(u"(-5.00m) está en B,"_s));
}

void SecondOpinionTextTest::emptyStates_areTold()
{
    QCOMPARE(sentencesOf(Shows::show(12.0, 8.4, {}, {})),
             QStringList(u"Sin motores no hay nada que contrastar."_s));
    QCOMPARE(sentencesOf(Shows::show(12.0, 0.0, {0.0, 12.0}, {})),
             QStringList(u"Ni el truss ni las cargas pesan nada."_s));
}

void SecondOpinionTextTest::oneMotor_isTold()
{
    Layout layout = Shows::show(12.0, 8.4, {4.0}, {{12.0, 200.0}});
    layout.motors[0].capacity = 300.0;
    layout.motors[0].lever = 300.8;
    QCOMPARE(sentencesOf(layout),
             (QStringList{u"Un solo punto de colgado (A): lleva los 300.8 kg, y el truss cuelga inclinado."_s,
                          u"Bien nivelado, A lleva 300.8 kg (palanca: 300.8): EXCESO ESTÁTICO."_s}));
    const Layout two = Shows::show(12.0, 8.4, {4.0, 4.0}, {});
    QCOMPARE(
        sentencesOf(two),
        (QStringList{u"Un solo punto de colgado (A y B): lleva los 100.8 kg, y el truss cuelga inclinado."_s,
                     u"A y B están a 0.000 m: entre los dos cuentan su suma (100.8 kg) y el máximo, no el "
                     "reparto."_s,
                     ANY_LEVELLING}));
    const Layout three = Shows::show(12.0, 8.4, {4.0, 4.0, 4.0}, {});
    QVERIFY(sentencesOf(three).first().startsWith(u"Un solo punto de colgado (A, B y C): "_s));
}

void SecondOpinionTextTest::problems_areTold()
{
    Layout layout = middle();
    layout.loads[0].mass = std::nan("");
    QCOMPARE(sentencesOf(layout),
             QStringList(u"NO SE PUEDE CALCULAR: hay un dato que no es un número finito."_s));
    layout.loads[0].mass = -1.0;
    QCOMPARE(sentencesOf(layout),
             QStringList(u"NO SE PUEDE CALCULAR: hay una longitud, una masa o un peso negativo."_s));
    layout.loads[0] = {12.5, 1.0};
    QCOMPARE(sentencesOf(layout),
             QStringList(u"NO SE PUEDE CALCULAR: hay un motor o una carga fuera del truss."_s));
    layout.loads[0] = {1.0, 1e308};
    QCOMPARE(sentencesOf(layout),
             QStringList(u"NO SE PUEDE CALCULAR: los pesos o la longitud son demasiado grandes."_s));
}

void SecondOpinionTextTest::unsolved_isTold()
{
    const Opinion opinion = SecondOpinion::of(middle(), 0);
    QCOMPARE(SecondOpinionText::sentences(opinion),
             QStringList(u"SIN SOLUCIÓN: el cálculo no ha convergido y no da ningún reparto."_s));
}

void SecondOpinionTextTest::excess_isTold()
{
    Layout layout = middle();
    layout.motors[1].lever = 660.0;
    layout.motors[1].capacity = 900.0; // (675 + 50)·1.25 = 906.25
    QVERIFY(sentencesOf(layout).contains(
        u"Bien nivelado, B lleva 675.0 kg (palanca: 660.0): EXCESO DINÁMICO."_s));
    layout.motors[1].lever = std::nan("");
    layout.motors[1].capacity = 670.0;
    QVERIFY(
        sentencesOf(layout).contains(u"Bien nivelado, B lleva 675.0 kg (palanca: —): EXCESO ESTÁTICO."_s));
    QVERIFY(!sentencesOf(layout).contains(ANY_LEVELLING));
}

void SecondOpinionTextTest::slack_isTold()
{
    const QStringList told = sentencesOf(Shows::show(12.0, 0.0, {0.0, 6.0, 12.0}, {{3.0, 320.0}}));
    QVERIFY(told.contains(u"Bien nivelado, C queda flojo: no lleva nada."_s));
    QCOMPARE(told.filter(u"queda flojo: no"_s).size(), 1);
}

// 720 kg in the middle when an end is slack: either half of the truss bends it by 10·6²/2 = 180 kg·m of 4800.
void SecondOpinionTextTest::oneSlack_isTold()
{
    Layout layout = middle();
    layout.motors[1].capacity = 700.0;
    QVERIFY(sentencesOf(layout).contains(
        u"Si se afloja A, B llega a 720.0 kg, más que sus 700, y el truss al 3.8 % de su momento."_s));
    layout.limitCPL = 0.0;
    layout.motors[1].capacity = 700.5;
    QVERIFY(sentencesOf(layout).contains(u"Si se afloja A, B llega a 720.0 kg, más que sus 700.5."_s));
}

// (720 + 50)·1.25 = 962.5
void SecondOpinionTextTest::oneSlackThatFitsAtRest_namesTheVerdict()
{
    Layout layout = middle();
    layout.motors[1].capacity = 960.0;
    const QStringList told = sentencesOf(layout);
    QVERIFY(told.contains(
        u"Si se afloja A, B llega a 720.0 kg (EXCESO DINÁMICO), y el truss al 3.8 % de su momento."_s));
    QVERIFY(told.filter(u"Bien nivelado"_s).isEmpty());
    layout.motors[1].capacity = 963.0;
    QCOMPARE(sentencesOf(layout), QStringList(ANY_LEVELLING));
}

void SecondOpinionTextTest::indispensable_isTold()
{
    QCOMPARE(sentencesOf(Shows::show(10.0, 10.0, {1.0, 9.0}, {})),
             (QStringList{u"A es imprescindible: sin él, el truss vuelca."_s,
                          u"B es imprescindible: sin él, el truss vuelca."_s, ANY_LEVELLING}));
}

// Without the middle motor P·L/4 + w·L²/8 = 1800 + 180 kg·m; with all of them w·s²/8 = 45 kg·m.
void SecondOpinionTextTest::trussBeyondItsMoment_isTold()
{
    Layout layout = easy();
    layout.limitCPL = 660.0; // 1980 = 660·12/4
    QCOMPARE(sentencesOf(layout),
             (QStringList{u"Si se afloja B, el truss llega al 100.0 % de su momento."_s, ANY_LEVELLING}));
    layout.limitCPL = 661.0;
    QCOMPARE(sentencesOf(layout), QStringList(ANY_LEVELLING));
    layout.limitCPL = 15.0;
    QVERIFY(sentencesOf(layout).contains(u"Bien nivelado, el truss llega al 100.0 % de su momento."_s));
}

void SecondOpinionTextTest::closeMotors_areTold()
{
    Layout layout = easy();
    layout.motors.push_back(layout.motors[1]);
    layout.motors[3].title = u"D"_s;
    layout.motors[3].position = 6.75;
    const Opinion opinion = SecondOpinion::of(layout);
    const QString sum = QString::number(*opinion.motors[1].level + *opinion.motors[3].level, 'f', 1);
    QCOMPARE(
        SecondOpinionText::sentences(opinion).filter(u" están a "_s),
        QStringList(
            u"B y D están a 0.75 m: entre los dos cuentan su suma (%1 kg) y el máximo, no el reparto."_s.arg(
                sum)));
    layout.motors[3].position = 7.0;
    QVERIFY(sentencesOf(layout).filter(u" están a "_s).isEmpty());
}

// 6EI/s³ in the middle, a quarter of it at the ends; EI = 1600·12³/48/f.
void SecondOpinionTextTest::levelling_isTold()
{
    Layout layout = easy();
    layout.tableDeflection = 70.0; // 22.857 and 5.714 kg/mm; 675 and 22.5 kg
    const QStringList told = sentencesOf(layout);
    QVERIFY(
        told.contains(u"1 mm de desnivel de B cambia su carga en unos 23 kg; queda flojo si baja 30 mm."_s));
    QVERIFY(told.contains(
        u"1 mm de desnivel de A cambia su carga en unos 5.7 kg; queda flojo si baja 3.9 mm."_s));
    QCOMPARE(told.filter(u"1 mm"_s).size(), 3);
}

void SecondOpinionTextTest::contradictions_areTheUnsafeSentencesAlone()
{
    Layout layout = middle();
    layout.motors[1].capacity = 900.0;
    layout.motors[1].lever = 660.0; // (660 + 50)·1.25 = 887.5 passes
    QCOMPARE(SecondOpinionText::contradictions(SecondOpinion::of(layout)),
             QStringList(u"Bien nivelado, B lleva 675.0 kg (palanca: 660.0): EXCESO DINÁMICO."_s));
    // Whom today's figures do not pass either is not named.
    layout.motors[0].capacity = 20.0;
    layout.motors[0].lever = 30.0;
    QCOMPARE(SecondOpinionText::contradictions(SecondOpinion::of(layout)).size(), 1);
    layout.motors[1].lever = 700.0;
    QCOMPARE(SecondOpinionText::contradictions(SecondOpinion::of(layout)), QStringList());
    QCOMPARE(SecondOpinionText::contradictions(SecondOpinion::of(Shows::show(12.0, 8.4, {}, {}))),
             QStringList());

    const Opinion tips = SecondOpinion::of(Shows::show(12.0, 8.4, {0.0, 7.0}, {{12.0, 200.0}}));
    QCOMPARE(SecondOpinionText::contradictions(tips), SecondOpinionText::sentences(tips));
    const Opinion unsolved = SecondOpinion::of(middle(), 0);
    QCOMPARE(SecondOpinionText::contradictions(unsolved), SecondOpinionText::sentences(unsolved));

    Layout one = Shows::show(12.0, 8.4, {4.0}, {});
    one.motors[0].capacity = 100.0;
    QCOMPARE(SecondOpinionText::contradictions(SecondOpinion::of(one)),
             QStringList(u"Bien nivelado, A lleva 100.8 kg (palanca: 0.0): EXCESO ESTÁTICO."_s));
}

void SecondOpinionTextTest::names_standAsTheyWereTyped()
{
    Layout layout = middle();
    layout.motors[0].title = u"%2 <b>"_s;
    layout.motors[1].title = u"%1%3&"_s;
    layout.motors[1].capacity = 670.0;
    const QStringList told = sentencesOf(layout);
    QVERIFY(told.contains(u"Bien nivelado, %1%3& lleva 675.0 kg (palanca: 0.0): EXCESO ESTÁTICO."_s));
    QVERIFY(told.contains(
        u"Si se afloja %2 <b>, %1%3& llega a 720.0 kg, más que sus 670, y el truss al 3.8 % de su momento."_s));
    QCOMPARE(SecondOpinionText::rows(SecondOpinion::of(layout))[0][0], u"%2 <b>"_s);
    Layout edge = Shows::show(12.0, 0.0, {0.0, 7.0}, {{7.0, 200.0}});
    edge.motors[1].title = u"%1"_s;
    QVERIFY(sentencesOf(edge).first().contains(u"está en %1,"_s));
}

void SecondOpinionTextTest::motorsOfOneName_areToldApart()
{
    Layout layout = middle();
    layout.motors[0].title = u"Motor"_s;
    layout.motors[2].title = u"Motor"_s;
    layout.motors[1].capacity = 670.0;
    const SecondOpinion::Opinion opinion = SecondOpinion::of(layout);
    const QStringList told = SecondOpinionText::sentences(opinion);
    QVERIFY(told.contains(u"Bien nivelado, B lleva 675.0 kg (palanca: 0.0): EXCESO ESTÁTICO."_s));
    QVERIFY2(told.contains(u"Si se afloja Motor (-6.00m), B llega a 720.0 kg, más que sus 670, y el truss al "
                           "3.8 % de su momento."_s),
             qPrintable(told.join(u'\n')));
    QCOMPARE(SecondOpinionText::rows(opinion)[0][0], u"Motor"_s); // beside its position

    for (SecondOpinion::Motor* motor : {&layout.motors[0], &layout.motors[2]}) {
        motor->capacity = 10.0;
        motor->selfWeight = 0.0;
    }
    const SecondOpinion::Opinion twice = SecondOpinion::of(layout);
    const QStringList contradictions = SecondOpinionText::contradictions(twice);
    QCOMPARE(contradictions.size(), 3);
    QVERIFY(contradictions[0].startsWith(u"Bien nivelado, Motor (-6.00m) lleva 22.5 kg"_s));
    QVERIFY(contradictions[2].startsWith(u"Bien nivelado, Motor (+6.00m) lleva 22.5 kg"_s));
    layout.motors[1].title = u"Motor"_s;
    QVERIFY(SecondOpinionText::truss(SecondOpinion::of(layout)).contains(u"con Motor (0.00m) flojo: "_s));
}

void SecondOpinionTextTest::keys_areThoseOfTheDocument()
{
    QCOMPARE(SecondOpinionText::stateKey(State::NoMotors), u"sin_motores"_s);
    QCOMPARE(SecondOpinionText::stateKey(State::NoLoad), u"sin_carga"_s);
    QCOMPARE(SecondOpinionText::stateKey(State::OneMotor), u"un_motor"_s);
    QCOMPARE(SecondOpinionText::stateKey(State::NotCalculable), u"no_calculable"_s);
    QCOMPARE(SecondOpinionText::stateKey(State::Tips), u"vuelca"_s);
    QCOMPARE(SecondOpinionText::stateKey(State::OnEdge), u"al_borde"_s);
    QCOMPARE(SecondOpinionText::stateKey(State::NotConverged), u"no_converge"_s);
    QCOMPARE(SecondOpinionText::stateKey(State::Level), u"ok"_s);
    QCOMPARE(SecondOpinionText::verdictKey(Verdict::Fits), u"ok"_s);
    QCOMPARE(SecondOpinionText::verdictKey(Verdict::StaticOverload), u"exceso_estatico"_s);
    QCOMPARE(SecondOpinionText::verdictKey(Verdict::DynamicOverload), u"exceso_dinamico"_s);
}

void SecondOpinionTextTest::smallPrint_isThere()
{
    QCOMPARE(
        SecondOpinionText::limits(),
        u"Supone cadenas verticales, un solo truss recto de sección constante, cargas quietas y las masas "
        "dadas. Ganchos, techo y lo que ceden las cadenas solo entran en el máximo posible. Un motor que se "
        "rompe es un golpe dinámico: flojo no es roto."_s);
}

QTEST_GUILESS_MAIN(SecondOpinionTextTest)
#include "tst_secondopiniontext.moc"
