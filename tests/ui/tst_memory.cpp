#include "support/Window.h"

#include <QFile>

namespace
{

/// Rounds until fonts, styles and caches are there, and rounds that may not add to them.
constexpr int WARM_UP = 50;
constexpr int ROUNDS = 1000;

/// What the process may grow over all rounds [kB]: a small cache may, but
/// a forgotten widget or snapshot (a kilobyte or more) adds up beyond it.
constexpr qint64 LARGEST_GROWTH = 4 * 1024;

/// What the process holds in memory [kB], or -1 where that cannot be told.
qint64 residentMemory()
{
    constexpr qint64 PAGE = 4; // [kB]
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    const QByteArrayList pages = file.readAll().split(' ');
    return pages.size() > 1 ? pages.at(1).toLongLong() * PAGE : -1;
}

} // namespace

class TestMemory : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void thousandTabs_leaveNothing();
    void thousandReports_leaveNothing();

private:
    /// The growth [kB] over `ROUNDS` times `round`.
    template <class Round>
    static qint64 growth(const Round& round)
    {
        for (int i = 0; i < WARM_UP; ++i)
            round();
        const qint64 before = residentMemory();
        for (int i = 0; i < ROUNDS; ++i)
            round();
        return residentMemory() - before;
    }
};

void TestMemory::initTestCase()
{
#if defined(__SANITIZE_ADDRESS__)
    QSKIP("The address sanitizer keeps freed memory; it looks for leaks itself.");
#endif
    if (Support::toolSlowness() > 1)
        QSKIP("What runs this program keeps freed memory too, and looks for leaks itself.");
    if (residentMemory() < 0)
        QSKIP("This system does not tell the memory of a process.");
}

void TestMemory::thousandTabs_leaveNothing()
{
    Support::TestWindow test;
    test.window.onAddMotorClicked();
    const qint64 grown = growth([&test] {
        test.window.onAddTab();
        test.window.onAddMotorClicked();
        test.window.onAddLEDLoadClicked();
        test.window.onCloseTab(test.tabBar()->count() - 1);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    });
    QCOMPARE(test.tabBar()->count(), 1);
    QVERIFY2(grown < LARGEST_GROWTH, qPrintable(QString::number(grown)));
}

void TestMemory::thousandReports_leaveNothing()
{
    Support::TestWindow test;
    test.window.onAddMotorClicked();
    test.window.onAddLEDLoadClicked();
    const qint64 grown = growth([&test] {
        test.window.onGenerateReportClicked();
        test.window.onBackToDesignClicked();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    });
    QVERIFY2(grown < LARGEST_GROWTH, qPrintable(QString::number(grown)));
}

QTEST_MAIN(TestMemory)
#include "tst_memory.moc"
