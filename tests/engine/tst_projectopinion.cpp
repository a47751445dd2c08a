#include "engine/ProjectOpinion.h"
#include "engine/Statics.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

/// 12 m of 8.4 kg/m on motors at 0 and 7 m, 200 kg at its right end: it tips.
ProjectState tippingTruss()
{
    ProjectState project;
    project.motors = QList<Motor>(2);
    project.motors[0].id = 1;
    project.motors[1].id = 2;
    project.motors[1].modelName.clear();
    project.motors[1].positionX = 7.0F;
    project.motors[1].capacity = 500.0F;
    project.motors[1].selfWeight = 25.0F;
    project.loads = QList<ActiveLoad>(1);
    project.loads[0].positionX = 12.0F;
    project.loads[0].mass = 200.0F;
    return Statics::solved(project);
}

} // namespace

class ProjectOpinionTest : public QObject
{
    Q_OBJECT

private slots:
    void layout_holdsTheProjectAndItsFigures();
    void opinion_isThatOfTheLayout();
};

void ProjectOpinionTest::layout_holdsTheProjectAndItsFigures()
{
    const ProjectState project = tippingTruss();
    const SecondOpinion::Layout layout = ProjectOpinion::layoutOf(project, 30.0);
    QCOMPARE(layout.length, 12.0);
    QCOMPARE(layout.selfWeight, static_cast<double>(8.4F));
    QCOMPARE(layout.limitCPL, 1600.0);
    QCOMPARE(layout.tableDeflection, std::optional<double>(30.0));
    QCOMPARE(layout.motors.size(), std::size_t(2));
    QCOMPARE(layout.motors[0].title, u"Motor"_s);
    QCOMPARE(layout.motors[1].title, u"M2"_s);
    QCOMPARE(layout.motors[1].position, 7.0);
    QCOMPARE(layout.motors[1].capacity, 500.0);
    QCOMPARE(layout.motors[1].selfWeight, 25.0);
    // Half of 7 m · 8.4, the overhang's 5 m · 8.4 and the load.
    QCOMPARE(layout.motors[1].lever, static_cast<double>(project.motors.at(1).staticLoad));
    QVERIFY(std::abs(layout.motors[1].lever - 271.4) < 0.001);
    QCOMPARE(layout.loads.size(), std::size_t(1));
    QCOMPARE(layout.loads[0].position, 12.0);
    QCOMPARE(layout.loads[0].mass, 200.0);
}

void ProjectOpinionTest::opinion_isThatOfTheLayout()
{
    const SecondOpinion::Opinion opinion = ProjectOpinion::of(tippingTruss());
    QCOMPARE(opinion.state, SecondOpinion::State::Tips);
    QVERIFY(std::abs(opinion.tippingMargin.value() + 2.989) < 0.001);
}

QTEST_GUILESS_MAIN(ProjectOpinionTest)
#include "tst_projectopinion.moc"
