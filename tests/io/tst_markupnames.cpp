#include "io/MarkupNames.h"

#include <QTest>

using namespace Qt::StringLiterals;

class TestMarkupNames : public QObject
{
    Q_OBJECT

private slots:
    void isMarkup_data();
    void isMarkup();
    void first_isOfTitleThenMotorsThenLoads();
};

void TestMarkupNames::isMarkup_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("markup");
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("plain") << u"PA izq."_s << false;
    QTest::newRow("ampersand") << u"R&B &amp; más"_s << false;
    QTest::newRow("less than") << u"a < b"_s << false;
    QTest::newRow("less than a number") << u"<3 m"_s << false;
    QTest::newRow("less than at the end") << u"carga <"_s << false;
    QTest::newRow("greater than") << u"-> centro"_s << false;
    QTest::newRow("element") << u"<link rel=preconnect href=http://x>"_s << true;
    QTest::newRow("upper case") << u"<META http-equiv=refresh>"_s << true;
    QTest::newRow("end") << u"</td>"_s << true;
    QTest::newRow("comment") << u"<!-- "_s << true;
    QTest::newRow("instruction") << u"<?xml"_s << true;
    QTest::newRow("second sign") << u"< <b"_s << true;
    QTest::newRow("last letter") << u"<z"_s << true;
    QTest::newRow("first upper letter") << u"<A"_s << true;
    QTest::newRow("last upper letter") << u"<Z"_s << true;
    QTest::newRow("before the letters") << u"<@"_s << false;
    QTest::newRow("after the letters") << u"<["_s << false;
    QTest::newRow("after the small letters") << u"<{"_s << false;
    QTest::newRow("before the small letters") << u"<`"_s << false;
}

void TestMarkupNames::isMarkup()
{
    QFETCH(QString, name);
    QTEST(MarkupNames::isMarkup(name), "markup");
}

void TestMarkupNames::first_isOfTitleThenMotorsThenLoads()
{
    ProjectState project;
    project.tabName = u"Gira"_s;
    project.motors.append(Motor());
    project.loads.append(ActiveLoad());
    QCOMPARE(MarkupNames::first(project), std::nullopt);
    project.loads[0].name = u"<b>carga"_s;
    QCOMPARE(MarkupNames::first(project), u"<b>carga"_s);
    project.motors[0].modelName = u"<b>motor"_s;
    QCOMPARE(MarkupNames::first(project), u"<b>motor"_s);
    project.tabName = u"<b>gira"_s;
    QCOMPARE(MarkupNames::first(project), u"<b>gira"_s);
}

QTEST_GUILESS_MAIN(TestMarkupNames)
#include "tst_markupnames.moc"
