#include "engine/SecondOpinionText.h"
#include "engine/Statics.h"
#include "io/ProjectFile.h"
#include "io/SheetBeam.h"
#include "io/SheetLever.h"
#include "io/SheetStress.h"
#include "io/SheetText.h"
#include "support/Layouts.h"
#include "support/SheetChecks.h"

#include <QTest>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace
{

constexpr int PROJECTS = 200;

ProjectState example(const QString& name)
{
    return ProjectFile::read(QStringLiteral(VELMORA_SOURCE_DIR "/examples/") + name + u".rig"_s).project;
}

/// Motors and loads at places and of masses as people enter them: two decimals, now and then a screen.
ProjectState randomProject(Layouts::Generator& random)
{
    const Layouts::Layout layout = random.next();
    const auto entered = [&random](float low, float high) {
        return static_cast<float>(random.integer(int(low * 100.0F), int(high * 100.0F))) / 100.0F;
    };
    ProjectState project;
    project.tabName = u"Prueba"_s;
    project.trussLength = layout.length;
    project.trussSelfWeight = layout.selfWeight;
    project.limitCPL = layout.cpl;
    for (const float x : layout.motors) {
        Motor motor;
        motor.id = int(project.motors.size()) + 1;
        motor.modelName = u"Polipasto"_s;
        motor.positionX = random.integer(0, 1) == 0 ? x : entered(0.0F, layout.length);
        motor.capacity = float(random.integer(1, 8)) * 250.0F;
        motor.selfWeight = entered(10.0F, 60.0F);
        project.motors.append(motor);
    }
    for (const Layouts::Load& placed : layout.loads) {
        ActiveLoad load;
        load.name = u"Foco"_s;
        load.mass = placed.mass;
        load.positionX = random.integer(0, 1) == 0 ? placed.x : entered(0.0F, layout.length);
        project.loads.append(load);
    }
    if (random.integer(0, 2) == 0) {
        const int count = random.integer(2, 9);
        const float start = entered(0.0F, layout.length / 2.0F);
        for (int i = 0; i < count; ++i) {
            ActiveLoad segment;
            segment.name = u"LED"_s;
            segment.groupId = 100;
            segment.mass = 69.55F;
            segment.positionX = std::min(layout.length, start + 0.5F * float(i));
            project.loads.append(segment);
        }
    }
    return project;
}

QString plain(const QString& html)
{
    QTextDocument document;
    document.setHtml(html);
    return document.toPlainText();
}

} // namespace

class SheetTextTest : public QObject
{
    Q_OBJECT

private slots:
    void everyNumber_followsFromOthers_data();
    void everyNumber_followsFromOthers();
    void randomProjects_everyNumberFollowsFromOthers();
    void figures_areThoseOfTheProgram();
    void calculator_findsWrongNumbers();
    void names_areEscapedAndKeptShort();
    void loadAndMotor_ofTheExample();
    void manyLoads_areSummedUp();
    void manyMotors_areNotAllDerived();
    void twoMotorsAtOnePlace_haveNoFigure();
    void withoutCpl_saysSo();
    void tipping_hasItsMarginAndNoEquations();
};

void SheetTextTest::everyNumber_followsFromOthers_data()
{
    QTest::addColumn<QString>("name");
    for (const char* name : {"concierto", "galeria", "pantalla", "pasarela", "voladizo", "vuelca"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void SheetTextTest::everyNumber_followsFromOthers()
{
    QFETCH(QString, name);
    const ProjectState project = example(name);
    const QString text = plain(SheetText::of(project).html);
    QVERIFY2(Pocket::equations(Pocket::tokens(text)).size() > 10, qPrintable(text));
    QCOMPARE(SheetChecks::fault(text, project), QString());
}

void SheetTextTest::randomProjects_everyNumberFollowsFromOthers()
{
    Layouts::Generator random(20240611);
    int derived = 0;
    for (int i = 0; i < PROJECTS; ++i) {
        const ProjectState project = randomProject(random);
        const QString text = plain(SheetText::of(project).html);
        const QString wrong = SheetChecks::fault(text, project);
        QVERIFY2(wrong.isEmpty(), qPrintable(u"project %1: "_s.arg(i) + wrong + u"\n"_s + text));
        derived += text.contains(u"Todos los motores nivelados"_s) ? 1 : 0;
    }
    QVERIFY2(derived > PROJECTS / 4, qPrintable(QString::number(derived)));
}

/// The derivations lead to what window and command line show.
void SheetTextTest::figures_areThoseOfTheProgram()
{
    Layouts::Generator random(7);
    for (int i = 0; i < PROJECTS; ++i) {
        const ProjectState solved = Statics::solved(randomProject(random));
        const SheetProject project = SheetProject::of(solved);
        for (std::size_t k = 0; k < project.motors.size(); ++k) {
            const double derived = SheetLever::sum(SheetLever::shares(project, k));
            const auto shown = static_cast<double>(solved.motors.at(qsizetype(k)).staticLoad);
            QVERIFY(std::isnan(shown) ? std::isnan(derived) : std::abs(derived - shown) < 0.01);
        }
        double percent = 0.0;
        for (const SheetStress::Candidate& candidate : SheetStress::candidates(project))
            percent = std::max(percent, candidate.percent());
        if (!solved.isUnstable)
            QVERIFY(std::abs(percent - double(solved.trussStressPercentage)) <= 0.001 + percent * 1e-5);
        const SecondOpinion::Opinion opinion = SheetText::of(solved).opinion;
        if (opinion.state != SecondOpinion::State::Level)
            continue;
        const SheetBeam beam = SheetBeam::of(project);
        QVERIFY(beam.level.has_value());
        for (std::size_t p = 0; p < beam.show.points.size(); ++p) {
            for (const std::size_t m : beam.show.points[p].motors)
                QVERIFY(std::abs(beam.pushing.reactions[p] * beam.show.share(p) - *opinion.motors[m].pushing)
                        < 0.05);
        }
        for (std::size_t j = 0; j < beam.level->carrying.size(); ++j) {
            const std::size_t p = beam.level->carrying[j];
            for (const std::size_t m : beam.show.points[p].motors)
                QVERIFY(std::abs(beam.level->reactions[j] * beam.show.share(p) - *opinion.motors[m].level)
                        < 0.05);
        }
    }
}

void SheetTextTest::calculator_findsWrongNumbers()
{
    const ProjectState project = example(u"concierto"_s);
    const QString text = plain(SheetText::of(project).html);
    QVERIFY(text.contains(u"450.00"_s));
    QVERIFY(!SheetChecks::fault(QString(text).replace(u"450.00"_s, u"450.03"_s), project).isEmpty());
    QVERIFY(!SheetChecks::fault(QString(text).replace(u"527.5"_s, u"527.8"_s), project).isEmpty());
    QVERIFY(!SheetChecks::fault(QString(text).replace(u"− 1) / "_s, u"− 2) / "_s), project).isEmpty());
    const std::vector<Pocket::Token> tokens = Pocket::tokens(u"así: W = 2 × (3 − (−1))² / 4 + 1 = 9.0 kg"_s);
    QCOMPARE(Pocket::equations(tokens).size(), 1U);
    QCOMPARE(Pocket::equations(tokens).front().calculated, 9.0);
}

void SheetTextTest::names_areEscapedAndKeptShort()
{
    ProjectState project = example(u"pantalla"_s);
    project.tabName = u"<img src='file:///etc/passwd'> & \uE000"_s;
    project.motors.first().modelName = u"<h1>uno</h1>"_s + QString(500, u'x');
    project.loads.first().name = u"<table>\n\u0007"_s;
    const SheetText text = SheetText::of(project);
    for (const QString& markup : {u"<img"_s, u"<h1>uno"_s, u"<table>\n"_s, QString(100, u'x')})
        QVERIFY2(!text.html.contains(markup), qPrintable(markup));
    QCOMPARE(text.html.count(QChar(u'\uE000')), 1); // the drawing's place
    QVERIFY(plain(text.html).contains(u"<img src='file:///etc/passwd'> &"_s));
}

// 380 kg at 0 m and 10 kg/m over 1 m hang left of the motor at 1 m, half of the span's 6 m on it.
void SheetTextTest::loadAndMotor_ofTheExample()
{
    const QString text = plain(SheetText::of(example(u"concierto"_s)).html);
    for (const QString& piece :
         {u"Array izq., entera\n380 =\n380.0000"_s, u"10 × (7 − 1) / 2 =\n30.0000"_s,
          u"60 × (7 − 4) / (7 − 1) =\n30.0000"_s, u"suma de las 4 filas =\n450.00"_s,
          u"450.00 + 50 = 500.00 kg"_s, u"1.25 × 500.00 = 625.0 kg"_s, u"14 × 2000 / 4 = 7000 kg·m"_s,
          u"100 × 385.00 / 3500 = 11.0 %"_s, u"0.45 × 14 = 6.3 m"_s})
        QVERIFY2(text.contains(piece), qPrintable(piece + u"\n"_s + text));
}

void SheetTextTest::manyLoads_areSummedUp()
{
    ProjectState project = example(u"concierto"_s);
    for (int i = 0; i < 5000; ++i) {
        ActiveLoad load = project.loads.first();
        load.name = u"Foco"_s;
        load.mass = 0.5F;
        load.positionX = 14.0F * float(i) / 5000.0F;
        project.loads.append(load);
    }
    const QString text = plain(SheetText::of(project).html);
    QVERIFY2(text.size() < 60'000, qPrintable(QString::number(text.size())));
    QVERIFY(text.contains(u"Cargas sin listar (4945 de 4945)"_s));
    const std::vector<Pocket::Token> tokens = Pocket::tokens(SheetChecks::withoutNames(text, project));
    QCOMPARE(SheetChecks::wrongEquation(tokens, Pocket::equations(tokens)), QString());
    QCOMPARE(SheetChecks::wrongCase(SheetChecks::casesOf(tokens), project), QString());
}

void SheetTextTest::manyMotors_areNotAllDerived()
{
    ProjectState project = example(u"concierto"_s);
    for (int i = 0; i < 500; ++i) {
        Motor motor = project.motors.first();
        motor.positionX = 14.0F * float(i) / 500.0F;
        project.motors.append(motor);
    }
    const QString text = plain(SheetText::of(project).html);
    QVERIFY2(text.size() < 60'000, qPrintable(QString::number(text.size())));
    QVERIFY(text.contains(u"Se desarrollan los 16 motores más cercanos a su capacidad, de 503 que hay"_s));
}

void SheetTextTest::twoMotorsAtOnePlace_haveNoFigure()
{
    ProjectState project = example(u"concierto"_s);
    project.motors.append(project.motors.at(1));
    project.motors.last().modelName = u"Doble"_s;
    const QString text = plain(SheetText::of(project).html);
    QVERIFY(text.contains(u"Hay dos motores en el mismo punto y una carga justo ahí"_s));
    QVERIFY(text.contains(u"SIN CIFRA"_s));
    QVERIFY(!text.contains(u"nan"_s));
}

void SheetTextTest::withoutCpl_saysSo()
{
    ProjectState project = example(u"concierto"_s);
    project.limitCPL = 0.0F;
    const QString text = plain(SheetText::of(project).html);
    QVERIFY(text.contains(u"no hay estrés que medir"_s));
    QCOMPARE(SheetChecks::fault(text, project), QString());
}

void SheetTextTest::tipping_hasItsMarginAndNoEquations()
{
    const QString text = plain(SheetText::of(example(u"voladizo"_s)).html);
    QVERIFY(text.contains(u"VUELCA"_s));
    QVERIFY(text.contains(u"Si uno de los dos es negativo, el truss vuelca."_s));
    QVERIFY(!text.contains(u"Todos los motores nivelados"_s));
}

QTEST_MAIN(SheetTextTest)
#include "tst_sheettext.moc"
