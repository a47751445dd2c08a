#include "engine/Figures.h"
#include "engine/ProjectOpinion.h"
#include "engine/Statics.h"
#include "io/ProjectFile.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <optional>

using namespace Qt::StringLiterals;

using Verdict = Figures::Verdict;

namespace
{

const QString FOLDER = u"" VELMORA_SOURCE_DIR "/examples/"_s;

Figures figuresOf(const QString& name)
{
    const ProjectFile::Content content = ProjectFile::read(FOLDER + name);
    if (content.failure != ProjectFile::Failure::None)
        return {};
    return Figures::of(content.project);
}

SecondOpinion::Opinion opinionOf(const QString& name)
{
    return ProjectOpinion::of(Statics::solved(ProjectFile::read(FOLDER + name).project));
}

/// Equal within what single precision leaves of figures of some hundred kilograms.
bool isClose(float actual, double expected)
{
    return qAbs(static_cast<double>(actual) - expected) <= 1e-5 * qMax(1.0, qAbs(expected));
}

bool isClose(const std::optional<double>& actual, double expected)
{
    return actual && qAbs(*actual - expected) <= 1e-5 * qMax(1.0, qAbs(expected));
}

} // namespace

#define COMPARE_TOLD(actual, expected)                                                                       \
    QVERIFY2(isClose(actual, expected), qPrintable(QString::number((actual).value_or(-1.0), 'g', 9)))

#define COMPARE_FIGURE(actual, expected)                                                                     \
    QVERIFY2(isClose(actual, expected), qPrintable(QString::number(static_cast<double>(actual), 'g', 9)))

/// The projects of the folder `examples`, with figures worked out by hand.
class TestExamples : public QObject
{
    Q_OBJECT

private slots:
    void everyExample_isSavedAsItWasOpened_data();
    void everyExample_isSavedAsItWasOpened();
    void concierto_figures();
    void pantalla_figures();
    void pasarela_figures();
    void voladizo_figures();
    void vuelca_figures();
    void vuelca_tips();
    void galeria_figures();
    void galeria_atLevel();
    void galeria_ranges();
};

void TestExamples::everyExample_isSavedAsItWasOpened_data()
{
    QTest::addColumn<QString>("path");
    const QStringList names = QDir(FOLDER).entryList({u"*.rig"_s}, QDir::Files);
    QVERIFY(names.size() >= 4);
    for (const QString& name : names)
        QTest::newRow(qPrintable(name)) << FOLDER + name;
}

void TestExamples::everyExample_isSavedAsItWasOpened()
{
    QFETCH(const QString, path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QCOMPARE(ProjectFile::toBytes(ProjectFile::fromBytes(bytes).value()), bytes);
}

void TestExamples::concierto_figures()
{
    const Figures project = figuresOf(u"concierto.rig"_s);
    QCOMPARE(project.motors.size(), 3);
    // Left: its array 380, half of the 60 kg in the middle of its span 30, half a span of truss
    // 6·10/2 = 30, one metre of overhang 10. Right likewise.
    COMPARE_FIGURE(project.motors.at(0).atPoint, 380.0 + 30.0 + 30.0 + 10.0);
    COMPARE_FIGURE(project.motors.at(0).staticLoad, 500.0);
    COMPARE_FIGURE(project.motors.at(0).dynamicLoad, 625.0);
    QCOMPARE(project.motors.at(0).position, u"-6.00m"_s);
    COMPARE_FIGURE(project.motors.at(2).atPoint, 450.0);
    // Centre: the 60 kg on it, 30 from either side, two half spans of truss.
    COMPARE_FIGURE(project.motors.at(1).atPoint, 60.0 + 2 * 30.0 + 2 * 30.0);
    COMPARE_FIGURE(project.motors.at(1).dynamicLoad, (180.0 + 50.0) * 1.25);
    // The overhang: 380·1 + 10·1²/2 = 385 of half of 14·2000/4 = 7000.
    COMPARE_FIGURE(project.stress, 385.0 / 3500.0 * 100.0);
    QVERIFY(!project.isUnstable);
    QVERIFY(project.fits());
}

void TestExamples::pantalla_figures()
{
    const Figures project = figuresOf(u"pantalla.rig"_s);
    QCOMPARE(project.motors.size(), 2);
    const double screen = 1.07 * (4.0 * 10.0 + 4.0 * 3.0 * 40.0); // 556.4
    // Each motor: half the screen, half the span of 8 m, an overhang of 2 m.
    const double atPoint = screen / 2 + 8.0 * 8.4 / 2 + 2.0 * 8.4;
    for (const Figures::MotorFigures& motor : project.motors) {
        COMPARE_FIGURE(motor.atPoint, atPoint); // 328.6
        COMPARE_FIGURE(motor.dynamicLoad, (atPoint + 35.0) * 1.25);
        QCOMPARE(motor.verdict, Verdict::Fits);
    }
    // The middle of the span: 8.4·8²/8 of truss; from the screen R·4 − Σ m·(4 − d) over the four
    // segments at d = 2.25, 2.75, 3.25, 3.75 m.
    const double moment = 8.4 * 64.0 / 8.0 + screen / 2 * 4.0 - screen / 8 * (1.75 + 1.25 + 0.75 + 0.25);
    COMPARE_FIGURE(project.stress, moment / (12.0 * 1600.0 / 4.0) * 100.0);
    QVERIFY(project.fits());
    QVERIFY(project.arrays.isEmpty()); // segments from a file have no type word
    QCOMPARE(project.loads.size(), 8);
    QVERIFY(project.loads.at(0).isSegment);
    QCOMPARE(project.loads.at(0).arrayNumber, 0);
}

void TestExamples::pasarela_figures()
{
    const Figures project = figuresOf(u"pasarela.rig"_s);
    QCOMPARE(project.motors.size(), 3);
    // The panels at 2, 4, 6, 8 m leave (0.5 + 2.5 + 4.5 + 6.5) / 7.5 of 20 kg on the centre.
    const double toCentre = 20.0 * 14.0 / 7.5;
    const double halfSpan = 7.5 * 6.4 / 2;
    const double end = 80.0 - toCentre + halfSpan + 1.5 * 6.4;
    const double centre = 60.0 + 2 * toCentre + 2 * halfSpan;
    COMPARE_FIGURE(project.motors.at(0).atPoint, end);
    COMPARE_FIGURE(project.motors.at(1).atPoint, centre);
    COMPARE_FIGURE(project.motors.at(2).atPoint, end);
    COMPARE_FIGURE(project.motors.at(1).dynamicLoad, (centre + 18.0) * 1.25); // 250.83 of 250
    QCOMPARE(project.motors.at(0).verdict, Verdict::Fits);
    QCOMPARE(project.motors.at(1).verdict, Verdict::DynamicOverload);
    QCOMPARE(project.motors.at(2).verdict, Verdict::Fits);
    // The panel 4.5 m from the left motor: 6.4·4.5·3/2 of truss; R·4.5 − 20·(4 + 2) of panels.
    const double moment = 6.4 * 4.5 * 3.0 / 2 + (80.0 - toCentre) * 4.5 - 20.0 * 6.0;
    COMPARE_FIGURE(project.stress, moment / (18.0 * 1000.0 / 4.0) * 100.0);
    QVERIFY(!project.isTrussOverloaded());
    QVERIFY(!project.fits());
}

void TestExamples::voladizo_figures()
{
    const Figures project = figuresOf(u"voladizo.rig"_s);
    QCOMPARE(project.motors.size(), 2);
    const double halfSpan = 4.5 * 8.4 / 2;
    COMPARE_FIGURE(project.motors.at(0).atPoint, halfSpan + 0.5 * 8.4);
    COMPARE_FIGURE(project.motors.at(1).atPoint, 200.0 + halfSpan + 5.0 * 8.4);
    QVERIFY(project.areMotorsFit());
    QVERIFY(project.isUnstable); // 5 m of overhang on 10 m of truss
    QCOMPARE(project.stress, 0.0F);
    QVERIFY(!project.fits());
}

void TestExamples::vuelca_figures()
{
    const Figures project = figuresOf(u"vuelca.rig"_s);
    QCOMPARE(project.motors.size(), 2);
    // Half of the span of 7 m each; to the right one its overhang of 5 m and what hangs at its end.
    COMPARE_FIGURE(project.motors.at(0).atPoint, 3.5 * 8.4);
    COMPARE_FIGURE(project.motors.at(1).atPoint, 3.5 * 8.4 + 5.0 * 8.4 + 200.0);
    COMPARE_FIGURE(project.motors.at(1).dynamicLoad, (271.4 + 50.0) * 1.25);
    COMPARE_FIGURE(project.stress, (200.0 * 5.0 + 8.4 * 12.5) / 2400.0 * 100.0);
    QVERIFY(!project.isUnstable); // 5 m of 12 are 41.7 %
    QVERIFY(project.fits());
}

void TestExamples::vuelca_tips()
{
    const SecondOpinion::Opinion opinion = opinionOf(u"vuelca.rig"_s);
    QVERIFY(opinion.state == SecondOpinion::State::Tips);
    // 100.8 kg of truss at 6 m, 200 kg at 12 m.
    const double weight = 12.0 * 8.4 + 200.0;
    const double centre = (100.8 * 6.0 + 200.0 * 12.0) / weight;
    COMPARE_TOLD(opinion.weight, weight);
    COMPARE_TOLD(opinion.centre, centre); // 9.989
    COMPARE_TOLD(opinion.tippingMargin, 7.0 - centre);
    QVERIFY(opinion.contradicts());
}

void TestExamples::galeria_figures()
{
    const Figures project = figuresOf(u"galeria.rig"_s);
    QCOMPARE(project.motors.size(), 5);
    // Half of each neighbouring span: 2.5 m of truss and half a light.
    const double half = 2.5 * 11.2 + 140.0;
    for (qsizetype i = 0; i < 5; ++i) {
        const bool isOuter = i == 0 || i == 4;
        COMPARE_FIGURE(project.motors.at(i).atPoint, isOuter ? half : 2.0 * half);
        QCOMPARE(project.motors.at(i).verdict, Verdict::Fits);
    }
    COMPARE_FIGURE(project.motors.at(1).dynamicLoad, (336.0 + 35.0) * 1.25);
    COMPARE_FIGURE(project.stress, (280.0 * 5.0 / 4.0 + 11.2 * 25.0 / 8.0) / 5000.0 * 100.0);
    QVERIFY(project.fits());
}

void TestExamples::galeria_atLevel()
{
    const SecondOpinion::Opinion opinion = opinionOf(u"galeria.rig"_s);
    QVERIFY(opinion.state == SecondOpinion::State::Level);
    const double span = 11.2 * 5.0;
    const double outer = span * 11.0 / 28.0 + 280.0 * 19.0 / 56.0;
    const double second = span * 32.0 / 28.0 + 280.0 * 17.0 / 14.0;
    const double middle = span * 26.0 / 28.0 + 280.0 * 25.0 / 28.0;
    const QList<double> level{outer, second, middle, second, outer}; // 117, 404, 302, 404, 117
    for (std::size_t i = 0; i < 5; ++i)
        COMPARE_TOLD(opinion.motors[i].level, level.at(static_cast<qsizetype>(i)));
    QVERIFY(opinion.motors[0].levelVerdict == Verdict::Fits);
    QVERIFY(opinion.motors[1].levelVerdict == Verdict::DynamicOverload); // (404 + 35) · 1.25 = 548.75
    QVERIFY(opinion.motors[2].levelVerdict == Verdict::Fits);
    QVERIFY(opinion.contradicts());
    // 3/28·w·s² over the second motor, 9/56·P·s of the lights.
    COMPARE_TOLD(std::optional(-opinion.level->extremes.smallestMoment),
                 3.0 / 28.0 * 11.2 * 25.0 + 9.0 / 56.0 * 280.0 * 5.0);
}

void TestExamples::galeria_ranges()
{
    const SecondOpinion::Opinion opinion = opinionOf(u"galeria.rig"_s);
    // All 1344 kg act in the middle: from there to the furthest motor 10 m, to each of these 10, 5, 0.
    COMPARE_TOLD(opinion.motors[0].most, 1344.0 * 10.0 / 20.0);
    COMPARE_TOLD(opinion.motors[1].most, 1344.0 * 10.0 / 15.0);
    COMPARE_TOLD(opinion.motors[2].most, 1344.0);
    for (const SecondOpinion::MotorOpinion& told : opinion.motors) {
        COMPARE_TOLD(told.least, 0.0);
        QVERIFY(told.isIndispensable == false);
    }
    QVERIFY(!opinion.fitsAnyLevelling());
}

QTEST_GUILESS_MAIN(TestExamples)
#include "tst_examples.moc"
