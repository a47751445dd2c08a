#include "io/SaveWay.h"

#include <QTest>

namespace
{

/// A file of this user's own, in a folder of this user's own.
FileFacts ownFile()
{
    FileFacts file;
    file.exists = true;
    file.isRegular = true;
    file.mayBeWritten = true;
    return file;
}

FileFacts but(bool FileFacts::*fact, FileFacts file = ownFile())
{
    file.*fact = !(file.*fact);
    return file;
}

FileFacts missing(bool folderRefuses)
{
    FileFacts file;
    file.folderRefuses = folderRefuses;
    return file;
}

/// Everything that asks for writing in place, at once.
FileFacts sharedFile()
{
    FileFacts file = ownFile();
    file.hasOtherNames = true;
    file.folderRefuses = true;
    file.ownerWouldChange = true;
    file.groupWouldChange = true;
    file.permissionsWouldChange = true;
    file.attributesWouldChange = true;
    return file;
}

} // namespace

Q_DECLARE_METATYPE(FileFacts)
Q_DECLARE_METATYPE(SaveWay)

class TestSaveWay : public QObject
{
    Q_OBJECT

private slots:
    void way_changesNothingButTheContent_data();
    void way_changesNothingButTheContent();
};

void TestSaveWay::way_changesNothingButTheContent_data()
{
    QTest::addColumn<FileFacts>("file");
    QTest::addColumn<SaveWay>("way");
    QTest::newRow("nothing there") << missing(false) << SaveWay::Replace;
    QTest::newRow("nothing there, none may be made") << missing(true) << SaveWay::Refuse;
    QTest::newRow("own file") << ownFile() << SaveWay::Replace;
    QTest::newRow("second name") << but(&FileFacts::hasOtherNames) << SaveWay::InPlace;
    QTest::newRow("folder refuses") << but(&FileFacts::folderRefuses) << SaveWay::InPlace;
    QTest::newRow("other owner") << but(&FileFacts::ownerWouldChange) << SaveWay::InPlace;
    QTest::newRow("other group") << but(&FileFacts::groupWouldChange) << SaveWay::InPlace;
    QTest::newRow("other permissions") << but(&FileFacts::permissionsWouldChange) << SaveWay::InPlace;
    QTest::newRow("other attributes") << but(&FileFacts::attributesWouldChange) << SaveWay::InPlace;
    QTest::newRow("all of these") << sharedFile() << SaveWay::InPlace;
    QTest::newRow("pipe or folder") << but(&FileFacts::isRegular) << SaveWay::Refuse;
    QTest::newRow("not to be written") << but(&FileFacts::mayBeWritten) << SaveWay::Refuse;
    QTest::newRow("shared pipe") << but(&FileFacts::isRegular, sharedFile()) << SaveWay::Refuse;
    QTest::newRow("shared, not to be written")
        << but(&FileFacts::mayBeWritten, sharedFile()) << SaveWay::Refuse;
}

void TestSaveWay::way_changesNothingButTheContent()
{
    QFETCH(const FileFacts, file);
    QFETCH(const SaveWay, way);
    QCOMPARE(chooseWay(file), way);
}

QTEST_GUILESS_MAIN(TestSaveWay)
#include "tst_saveway.moc"
