#include "io/ConsolidatedReport.h"
#include "io/HtmlReport.h"
#include "support/Files.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

using ConsolidatedReport::Outcome;
using ConsolidatedReport::Status;

namespace
{

/// Two projects, written into `folder`.
Outcome write(const QTemporaryDir& folder)
{
    const QDateTime noon(QDate(2024, 2, 29), QTime(12, 0));
    return ConsolidatedReport::write({{{}, {}}, u"Gira"_s, folder.path(), noon},
                                     [](qsizetype) { return true; });
}

} // namespace

class TestConsolidatedReport : public QObject
{
    Q_OBJECT

private slots:
    void writtenDrawings_areNotMissing();
    void drawingThatCannotBeSaved_isNamed();
    void documentThatCannotBeSaved_isNotWritten();
    void secondReportOfASecond_waitsForTheNext();
    void freeSecond_isNowWhereNothingIs();
};

void TestConsolidatedReport::writtenDrawings_areNotMissing()
{
    const QTemporaryDir folder;
    const Outcome outcome = write(folder);
    QCOMPARE(outcome.status, Status::Written);
    QCOMPARE(outcome.path, folder.filePath(u"informe_rigging_20240229_120000.html"_s));
    QCOMPARE(outcome.missingDrawings, QStringList());
    QCOMPARE(outcome.figures.size(), 2);
    QVERIFY(QFile::exists(folder.filePath(u"truss_schema_0.jpg"_s)));
    QVERIFY(QFile::exists(folder.filePath(u"truss_schema_1.jpg"_s)));
}

void TestConsolidatedReport::drawingThatCannotBeSaved_isNamed()
{
    const QTemporaryDir folder;
    const QString taken = folder.filePath(u"truss_schema_1.jpg"_s);
    QVERIFY(QDir().mkdir(taken));
    const Outcome outcome = write(folder);
    QCOMPARE(outcome.status, Status::Written);
    QCOMPARE(outcome.missingDrawings, QStringList(taken));
}

void TestConsolidatedReport::documentThatCannotBeSaved_isNotWritten()
{
    const QTemporaryDir folder;
    QVERIFY(QDir().mkdir(folder.filePath(u"informe_rigging_20240229_120000.html"_s)));
    QCOMPARE(write(folder).status, Status::NotWritten);
}

void TestConsolidatedReport::secondReportOfASecond_waitsForTheNext()
{
    const QTemporaryDir folder;
    const QDateTime now = QDateTime::currentDateTime();
    for (int i = 0; i < 2; ++i) // the second may end meanwhile
        Support::put(folder.filePath(HtmlReport::reportName(now.addSecs(i))), "earlier");
    const QDateTime free = ConsolidatedReport::freeSecond(folder.path());
    QVERIFY(!QFile::exists(folder.filePath(HtmlReport::reportName(free))));
    QVERIFY(free > now);
}

void TestConsolidatedReport::freeSecond_isNowWhereNothingIs()
{
    const QTemporaryDir folder;
    const QDateTime before = QDateTime::currentDateTime();
    const QDateTime free = ConsolidatedReport::freeSecond(folder.path());
    QVERIFY(before <= free && free <= QDateTime::currentDateTime());
}

QTEST_MAIN(TestConsolidatedReport)
#include "tst_consolidatedreport.moc"
