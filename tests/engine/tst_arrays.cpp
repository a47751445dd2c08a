#include "engine/Arrays.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

ActiveLoad loadAt(float x, int groupId, const QString& type = u"Video_Segment"_s)
{
    static int nextId = 1;
    ActiveLoad load;
    load.id = nextId++;
    load.positionX = x;
    load.groupId = groupId;
    load.type = type;
    return load;
}

} // namespace

class ArraysTest : public QObject
{
    Q_OBJECT

private slots:
    void centre_isTheMeanOfAllLoadsOfTheGroup();
    void width_isTheFirstThatIsNotZero();
    void selected_isTheArrayOfTheSelectedLoad();
    void noLoads_areNoArrays();
    void centreOfScreen_leavesOutWhatIsNoScreen();
    void centreOfScreenWithoutLoads_isNothing();
};

void ArraysTest::centre_isTheMeanOfAllLoadsOfTheGroup()
{
    const ArraySummaries arrays =
        Arrays::summarize({loadAt(2.0F, 100), loadAt(4.5F, 101, u"Audio"_s), loadAt(3.0F, 100)}, -1);
    QCOMPARE(arrays.size(), 2);
    QCOMPARE(arrays.value(100).centre, 2.5F);
    QCOMPARE(arrays.value(101).centre, 4.5F);
}

void ArraysTest::width_isTheFirstThatIsNotZero()
{
    QList<ActiveLoad> loads{loadAt(2.0F, 100), loadAt(3.0F, 100), loadAt(4.0F, 100)};
    loads[1].screenWidth = 6.0F;
    loads[2].screenWidth = 7.0F;
    QCOMPARE(Arrays::summarize(loads, -1).value(100).width, 6.0F);
}

void ArraysTest::selected_isTheArrayOfTheSelectedLoad()
{
    QList<ActiveLoad> loads{loadAt(2.0F, 100), loadAt(3.0F, 100), loadAt(4.0F, 101)};
    QVERIFY(Arrays::summarize(loads, loads.at(1).id).value(100).selected);
    QVERIFY(!Arrays::summarize(loads, loads.at(1).id).value(101).selected);
    // -1 is nobody's selection, even where a file gives a load that id.
    loads[0].id = -1;
    QVERIFY(!Arrays::summarize(loads, -1).value(100).selected);
}

void ArraysTest::noLoads_areNoArrays()
{
    const ArraySummaries arrays = Arrays::summarize({}, -1);
    QVERIFY(arrays.isEmpty());
    QCOMPARE(arrays.value(100).centre, 0.0F);
    QCOMPARE(arrays.value(100).width, 0.0F);
    QVERIFY(!arrays.value(100).selected);
}

void ArraysTest::centreOfScreen_leavesOutWhatIsNoScreen()
{
    const QList<ActiveLoad> loads{loadAt(2.0F, 100), loadAt(9.0F, 100, u"Audio"_s),
                                  loadAt(3.0F, 100, u"Video"_s), loadAt(5.0F, 101)};
    QCOMPARE(Arrays::centreOfScreen(loads, 100), std::optional<float>(2.5F));
}

void ArraysTest::centreOfScreenWithoutLoads_isNothing()
{
    QVERIFY(!Arrays::centreOfScreen({loadAt(9.0F, 100, u"Audio"_s)}, 100).has_value());
}

QTEST_GUILESS_MAIN(ArraysTest)
#include "tst_arrays.moc"
