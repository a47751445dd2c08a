#include "engine/ProjectOpinion.h"
#include "engine/Statics.h"
#include "support/Warnings.h"
#include "ui/Notices.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

namespace
{

using Kind = Notice::Kind;

Motor motorAt(float x, const QString& name, float capacity = 1000.0F)
{
    Motor motor;
    motor.id = name.isEmpty() ? 1 : name.back().unicode();
    motor.modelName = name;
    motor.positionX = x;
    motor.capacity = capacity;
    return motor;
}

ActiveLoad loadAt(float mass, float x)
{
    ActiveLoad load;
    load.id = 7;
    load.mass = mass;
    load.positionX = x;
    load.name = u"Movil 6"_s;
    return load;
}

/// 12 m of 8.4 kg/m on motors at both ends.
ProjectState quietProject()
{
    ProjectState project;
    project.motors = {motorAt(0.0F, u"A"_s), motorAt(12.0F, u"B"_s)};
    return project;
}

Notices::Facts factsOf(const ProjectState& project)
{
    const ProjectState solved = Statics::solved(project);
    return {solved, ProjectOpinion::of(solved), {}, {}};
}

QStringList textsOf(const QList<Notice>& notices)
{
    QStringList texts;
    for (const Notice& notice : notices)
        texts.append(notice.text);
    return texts;
}

QStringList textsOf(const ProjectState& project)
{
    return textsOf(Notices::of(factsOf(project)));
}

} // namespace

/// What the window has to say, of facts as values.
class TestNotices : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        Support::failOnWarnings();
    }
    void quietProject_hasNothingToSay();
    void tipping_isToldWhereTheDrawingCallsItStable();
    void tipping_isLeftToTheDrawingWhereThatTellsIt();
    void levelOverload_namesMotorLevelAndLever();
    void levelOverload_isNotToldOfARedLabel();
    void motorsAtOnePlace_areTold();
    void figureThatIsNoNumber_isTold();
    void noCPL_isTold();
    void fields_areUsed_data();
    void fields_areUsed();
    void unusedField_tellsWhatCounts();
    void emptyCPL_isToldOnce();
    void editedLoad_isNamed();
    void order_isThatOfUrgency();
    void manyMotors_areNotAllTold();
    void names_standInOneLine();
    void savedFile_isToldUnlessListed_data();
    void savedFile_isToldUnlessListed();
};

void TestNotices::quietProject_hasNothingToSay()
{
    QCOMPARE(textsOf(quietProject()), QStringList());
}

// 100.8 kg at 6 m and 200 kg at 12 m: (100.8 × 6 + 200 × 12) / 300.8 = 9.99 m, 2.99 m beyond 7 m. The
// overhang of 5 m is less than 45 % of 12 m.
void TestNotices::tipping_isToldWhereTheDrawingCallsItStable()
{
    ProjectState project = quietProject();
    project.motors[1].positionX = 7.0F;
    project.loads = {loadAt(200.0F, 12.0F)};
    QCOMPARE(textsOf(project), QStringList{u"VUELCA: el centro de gravedad (+3.99m) queda 2.99 m fuera de "
                                           "los motores; ningún reparto lo sostiene."_s});
    QCOMPARE(Notices::of(factsOf(project)).constFirst().urgency(), Notice::Urgency::Alarm);
    project.loads[0].mass = 20.0F; // (604.8 + 240) / 120.8 = 6.99 m
    QCOMPARE(textsOf(project), QStringList());
}

void TestNotices::tipping_isLeftToTheDrawingWhereThatTellsIt()
{
    ProjectState project = quietProject();
    project.motors[1].positionX = 6.0F;
    project.loads = {loadAt(200.0F, 12.0F)};
    QVERIFY(factsOf(project).solved.isUnstable);
    QCOMPARE(textsOf(project), QStringList());
}

// Two spans of 6 m without self-weight, 480 kg in the middle of each: by the lever the motor between them
// takes 480 kg, as part of the continuous beam 2 × 11/16 × 480 = 660; (660 + 50) × 1.25 = 887.5 > 700, and
// (480 + 50) × 1.25 = 662.5 is not.
void TestNotices::levelOverload_namesMotorLevelAndLever()
{
    ProjectState project = quietProject();
    project.trussSelfWeight = 0.0F;
    project.motors.insert(1, motorAt(6.0F, u"M"_s, 700.0F));
    project.loads = {loadAt(480.0F, 3.0F), loadAt(480.0F, 9.0F)};
    QCOMPARE(textsOf(project),
             QStringList{u"Bien nivelado, M lleva 660.0 kg (palanca: 480.0): EXCESO DINÁMICO."_s});
    project.motors[1].capacity = 887.5F;
    QCOMPARE(textsOf(project), QStringList());
}

void TestNotices::levelOverload_isNotToldOfARedLabel()
{
    ProjectState project = quietProject();
    project.motors.insert(1, motorAt(6.0F, u"M"_s, 400.0F));
    project.loads = {loadAt(480.0F, 3.0F), loadAt(480.0F, 9.0F)};
    QCOMPARE(textsOf(project), QStringList());
}

void TestNotices::motorsAtOnePlace_areTold()
{
    ProjectState project = quietProject();
    project.motors.insert(1, motorAt(12.0F, u"C"_s));
    QCOMPARE(textsOf(project), QStringList{u"C y B están en el mismo sitio (+6.00m): lo que cuelga ahí no "
                                           "se puede repartir entre ellos."_s});
    project.motors[1].positionX = 11.9F;
    QCOMPARE(textsOf(project), QStringList());
}

// A load between two motors at one place has no answer by the lever: (b − x) / (b − a) is 0 / 0.
void TestNotices::figureThatIsNoNumber_isTold()
{
    ProjectState project = quietProject();
    project.motors.insert(1, motorAt(12.0F, u"C"_s));
    project.loads = {loadAt(100.0F, 12.0F)};
    const QStringList texts = textsOf(project);
    QCOMPARE(texts.value(0), u"Lo que lleva C no es un número: su etiqueta no vale."_s);
    QCOMPARE(texts.value(1), u"Lo que lleva B no es un número: su etiqueta no vale."_s);

    ProjectState infinite = quietProject();
    infinite.loads = {loadAt(std::numeric_limits<float>::infinity(), 6.0F)};
    QVERIFY(textsOf(infinite).contains(u"NO SE PUEDE CALCULAR: hay un dato que no es un número finito."_s));
}

void TestNotices::noCPL_isTold()
{
    ProjectState project = quietProject();
    const QString told = u"Sin CPL no hay estrés: escriba en «CPL Máx» la carga puntual central del truss."_s;
    for (const float cpl : {0.0F, 0.01F, -1.0F, std::numeric_limits<float>::quiet_NaN()}) {
        project.limitCPL = cpl;
        QVERIFY2(textsOf(project).contains(told), qPrintable(QString::number(double(cpl))));
    }
    project.limitCPL = 1.0F;
    QVERIFY(!textsOf(project).contains(told));
}

void TestNotices::fields_areUsed_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<float>("counted");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<bool>("used");
    QTest::newRow("the same") << u"12.5"_s << 12.5F << 1 << true;
    QTest::newRow("rounded by the program") << u"12.3"_s << 12.34F << 1 << true;
    QTest::newRow("in the short notation") << u"1e+06"_s << 1e6F << 0 << true;
    QTest::newRow("no edit") << u"12.009"_s << 12.0F << 1 << true;
    QTest::newRow("another number") << u"0.5"_s << 12.0F << 1 << false;
    QTest::newRow("rounded by nobody") << u"12.2"_s << 12.34F << 1 << false;
    QTest::newRow("empty, and 0 counts") << u""_s << 0.0F << 1 << false;
    QTest::newRow("does not parse") << u"8,4"_s << 0.0F << 1 << false;
    QTest::newRow("infinite") << u"inf"_s << 0.0F << 1 << false;
    QTest::newRow("what counts is no number")
        << u"1"_s << std::numeric_limits<float>::quiet_NaN() << 1 << false;
}

void TestNotices::fields_areUsed()
{
    QFETCH(QString, text);
    QFETCH(float, counted);
    QFETCH(int, decimals);
    QFETCH(bool, used);
    QCOMPARE(Notices::isUsed({u"id"_s, u"Campo"_s, text, counted, decimals}), used);
}

void TestNotices::unusedField_tellsWhatCounts()
{
    Notices::Facts facts = factsOf(quietProject());
    facts.fields = {{u"trussLength"_s, u"Longitud (m)"_s, u"0.5"_s, 12.0F, 1},
                    {u"trussWeight"_s, u"Peso (kg/m)"_s, u" "_s, 0.0F, 1},
                    {u"limitCPL"_s, u"CPL Máx"_s, u"1600"_s, 1600.0F, 0}};
    QCOMPARE(textsOf(Notices::of(facts)), (QStringList{u"Longitud (m): «0.5» no se usa; cuenta 12."_s,
                                                       u"Peso (kg/m): está vacío; cuenta 0."_s}));
    QCOMPARE(Notices::of(facts).constFirst().id, u"field/trussLength"_s);
}

void TestNotices::emptyCPL_isToldOnce()
{
    ProjectState project = quietProject();
    project.limitCPL = 0.0F;
    Notices::Facts facts = factsOf(project);
    facts.fields = {{u"limitCPL"_s, u"CPL Máx"_s, QString(), 0.0F, 0}};
    QCOMPARE(Notices::of(facts).size(), 1);
    QCOMPARE(Notices::of(facts).constFirst().kind, Kind::NoRating);
}

void TestNotices::editedLoad_isNamed()
{
    ProjectState project = quietProject();
    project.loads = {loadAt(10.0F, 6.0F)};
    QCOMPARE(textsOf(project), QStringList());
    project.selectedLoadId = 7;
    QCOMPARE(textsOf(project), QStringList{u"Editando: Movil 6 — Esc la suelta"_s});
    project.loads[0].name.clear();
    QCOMPARE(textsOf(project), QStringList{u"Editando: L7 — Esc la suelta"_s});
    project.selectedLoadId = 8;
    QCOMPARE(textsOf(project), QStringList());
}

void TestNotices::order_isThatOfUrgency()
{
    ProjectState project = quietProject();
    project.motors = {motorAt(0.0F, u"A"_s), motorAt(7.0F, u"C"_s), motorAt(7.0F, u"B"_s)};
    project.loads = {loadAt(200.0F, 12.0F), loadAt(10.0F, 7.0F)};
    project.limitCPL = 0.0F;
    project.selectedLoadId = 7;
    Notices::Facts facts = factsOf(project);
    facts.fields = {{u"trussLength"_s, u"Longitud (m)"_s, u"0.5"_s, 12.0F, 1}};
    facts.standing = {*Notices::savedFile(u"gira"_s),
                      Notices::draggedTabs(),
                      {Kind::Names, u"names"_s, u"Nombres"_s},
                      {Kind::Recovery, u"recovery"_s, u"Recuperar"_s}};
    QList<Kind> kinds;
    const QList<Notice> told = Notices::of(facts);
    for (const Notice& notice : told) {
        if (kinds.isEmpty() || kinds.constLast() != notice.kind)
            kinds.append(notice.kind);
    }
    QCOMPARE(kinds, (QList<Kind>{Kind::Tips, Kind::NoFigure, Kind::MotorsTogether, Kind::NoRating,
                                 Kind::UnusedField, Kind::Recovery, Kind::Names, Kind::EditedLoad,
                                 Kind::DraggedTabs, Kind::UnlistedFile}));
}

void TestNotices::manyMotors_areNotAllTold()
{
    ProjectState project = quietProject();
    for (int i = 0; i < 1000; ++i)
        project.motors.append(motorAt(12.0F, QString()));
    QVERIFY(textsOf(project).size() <= 20);
}

void TestNotices::names_standInOneLine()
{
    QCOMPARE(Notices::shortName(u" a\nb\t c "_s), u"a b c"_s);
    QCOMPARE(Notices::shortName(QString(40, u'x')), QString(40, u'x'));
    QCOMPARE(Notices::shortName(QString(41, u'x')), QString(20, u'x') + u'…' + QString(19, u'x'));
    const QString emoji = u"😀"_s.repeated(30);
    const QString cut = Notices::shortName(u'a' + emoji);
    QVERIFY(!cut.toUtf8().contains("\xEF\xBF\xBD") && cut.isValidUtf16());
}

void TestNotices::savedFile_isToldUnlessListed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("told");
    QTest::newRow("none") << u"gira"_s << true;
    QTest::newRow("another") << u"gira.v2"_s << true;
    QTest::newRow("rig") << u"gira.rig"_s << false;
    QTest::newRow("json") << u"gira.json"_s << false;
    QTest::newRow("capitals") << u"GIRA.RIG"_s << false;
}

void TestNotices::savedFile_isToldUnlessListed()
{
    QFETCH(QString, name);
    QFETCH(bool, told);
    const std::optional<Notice> notice = Notices::savedFile(name);
    QCOMPARE(notice.has_value(), told);
    if (told)
        QCOMPARE(notice->text,
                 u"«%1» se guardó sin la extensión .rig: ABRIR no lo mostrará en su lista."_s.arg(name));
}

QTEST_MAIN(TestNotices)
#include "tst_notices.moc"
