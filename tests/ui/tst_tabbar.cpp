#include "support/Window.h"
#include "ui/ProjectTabBar.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestTabBar : public QObject
{
    Q_OBJECT

private slots:
    void ampersand_isShown();
    void plainTitle_isShownAsEver();
    void window_showsItsProjectsOnIt();
};

namespace
{

QImage pictureOf(QTabBar& bar, const QString& title)
{
    bar.addTab(title);
    bar.resize(bar.sizeHint());
    return bar.grab().toImage();
}

} // namespace

// Two marks stand for one character where marks are read.
void TestTabBar::ampersand_isShown()
{
    ProjectTabBar bar;
    QTabBar reading;
    QCOMPARE(pictureOf(bar, u"Luz & sonido"_s), pictureOf(reading, u"Luz && sonido"_s));
    QCOMPARE(bar.tabText(0), u"Luz & sonido"_s);
}

void TestTabBar::plainTitle_isShownAsEver()
{
    ProjectTabBar bar;
    QTabBar usual;
    QCOMPARE(pictureOf(bar, u"Proyecto 1"_s), pictureOf(usual, u"Proyecto 1"_s));
}

void TestTabBar::window_showsItsProjectsOnIt()
{
    const Support::TestWindow test;
    QVERIFY(qobject_cast<ProjectTabBar*>(test.tabBar()) != nullptr);
}

QTEST_MAIN(TestTabBar)
#include "tst_tabbar.moc"
