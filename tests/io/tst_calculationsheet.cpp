#include "io/CalculationSheet.h"
#include "io/ProjectFile.h"
#include "io/SheetText.h"
#include "support/Files.h"
#include "support/FullDisk.h"
#include "support/SheetChecks.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace
{

const QStringList EXAMPLES{u"concierto"_s, u"pantalla"_s, u"pasarela"_s,
                           u"voladizo"_s,  u"galeria"_s,  u"vuelca"_s};

QString examplePath(const QString& name)
{
    return QStringLiteral(VELMORA_SOURCE_DIR "/examples/") + name + u".rig"_s;
}

CalculationSheet::Item exampleItem(const QString& name)
{
    return {ProjectFile::read(examplePath(name)).project, Support::contentOf(examplePath(name))};
}

CalculationSheet::Request requestOf(const QList<CalculationSheet::Item>& items, const QString& folder)
{
    const QString path = folder + u'/' + CalculationSheet::fileName(u"prueba"_s);
    return {items, path, u"9.8.7"_s, QDateTime({2031, 2, 3}, {14, 5}), false};
}

QByteArray output(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    return process.waitForFinished() && process.exitCode() == 0 ? process.readAllStandardOutput()
                                                                : QByteArray();
}

/// The text of a PDF in the order in which it was written, a string for each page.
QStringList pagesOf(const QString& path)
{
    QStringList pages = QString::fromUtf8(output(u"pdftotext"_s, {u"-raw"_s, path, u"-"_s})).split(u'\f');
    pages.removeLast();
    return pages;
}

/// The text without what stands above and below it on each page.
QString bodyOf(const QString& page)
{
    QStringList lines = page.split(u'\n');
    lines.removeIf([](const QString& line) {
        return line.startsWith(u"Memoria de cálculo · "_s) || line.startsWith(u"SHA-256 del proyecto: "_s)
               || line.startsWith(u"Velmora Master "_s) || line.startsWith(u"Página "_s);
    });
    return lines.join(u'\n');
}

} // namespace

class CalculationSheetTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void pdf_everyNumberFollowsFromOthers_data();
    void pdf_everyNumberFollowsFromOthers();
    void everyPage_tellsProjectDateVersionAndDigest();
    void file_isSmallAndItsFontsAreEmbedded();
    void words_areFoundAsTheyStand();
    void everyWord_isOnThePages();
    void headings_areFollowedByTheirText();
    void manyLoads_makeASmallFile();
    void existingFile_isLeftAlone();
    void existingFile_isReplacedWhereAsked();
    void newFile_isForItsOwnerAlone();
    void fullDisk_leavesNothing();
    void missingFolder_isTold();
    void fileNames();
    void strangeProjects_data();
    void strangeProjects();

private:
    QString write(const QList<CalculationSheet::Item>& items);

    std::unique_ptr<QTemporaryDir> m_folder;
};

void CalculationSheetTest::initTestCase()
{
    QVERIFY2(!QStandardPaths::findExecutable(u"pdftotext"_s).isEmpty(), "poppler-utils");
}

void CalculationSheetTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

QString CalculationSheetTest::write(const QList<CalculationSheet::Item>& items)
{
    const CalculationSheet::Request request = requestOf(items, m_folder->path());
    return CalculationSheet::write(request) == CalculationSheet::Status::Written ? request.path : QString();
}

void CalculationSheetTest::pdf_everyNumberFollowsFromOthers_data()
{
    QTest::addColumn<QString>("name");
    for (const QString& name : EXAMPLES)
        QTest::newRow(qPrintable(name)) << name;
}

void CalculationSheetTest::pdf_everyNumberFollowsFromOthers()
{
    QFETCH(QString, name);
    const CalculationSheet::Item item = exampleItem(name);
    const QStringList pages = pagesOf(write({item}));
    QVERIFY(pages.size() >= 2);
    QString text;
    for (const QString& page : pages)
        text += bodyOf(page) + u'\n';
    QVERIFY(Pocket::equations(Pocket::tokens(text)).size() > 20);
    QCOMPARE(SheetChecks::fault(text, item.project), QString());
    for (const Motor& motor : item.project.motors)
        QVERIFY(text.contains(Project::motorTitle(motor)));
}

void CalculationSheetTest::everyPage_tellsProjectDateVersionAndDigest()
{
    const QList<CalculationSheet::Item> items{exampleItem(u"pantalla"_s),
                                              {exampleItem(u"voladizo"_s).project, {}}};
    const QStringList pages = pagesOf(write(items));
    const auto digestOf = [](const QByteArray& bytes) {
        return QString::fromLatin1(QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex());
    };
    const QString first = digestOf(items.at(0).bytes);
    const QString second = digestOf(ProjectFile::toBytes(items.at(1).project));
    int ofFirst = 0;
    for (qsizetype i = 0; i < pages.size(); ++i) {
        const QString& page = pages.at(i);
        const bool isFirst = page.contains(first);
        ofFirst += isFirst ? 1 : 0;
        QVERIFY(page.contains(u"Memoria de cálculo · "_s + items.at(isFirst ? 0 : 1).project.tabName));
        QVERIFY(isFirst || page.contains(second));
        QVERIFY(page.contains(u"03/02/2031 14:05"_s));
        QVERIFY(page.contains(u"Velmora Master 9.8.7"_s));
        QVERIFY(
            page.contains(u"Página %1 de %2"_s.arg(QString::number(i + 1), QString::number(pages.size()))));
    }
    QVERIFY(ofFirst > 0 && ofFirst < pages.size());
}

void CalculationSheetTest::file_isSmallAndItsFontsAreEmbedded()
{
    QList<CalculationSheet::Item> items;
    for (const QString& name : EXAMPLES)
        items.append(exampleItem(name));
    const QString path = write(items);
    QVERIFY2(QFileInfo(path).size() < 1'000'000, qPrintable(QString::number(QFileInfo(path).size())));
    const QStringList fonts =
        QString::fromUtf8(output(u"pdffonts"_s, {path})).split(u'\n', Qt::SkipEmptyParts);
    QVERIFY(fonts.size() > 2);
    for (const QString& font : fonts.mid(2)) {
        const QStringList columns = font.simplified().split(u' ');
        QVERIFY2(columns.at(columns.size() - 5) == "yes"_L1, qPrintable(font)); // emb
        QVERIFY2(columns.at(columns.size() - 3) == "yes"_L1, qPrintable(font)); // uni: its text can be read
    }
    QVERIFY(output(u"pdfimages"_s, {u"-list"_s, path}).count('\n') <= 2); // lines, not pictures
    QVERIFY(output(u"pdfinfo"_s, {path}).contains("A4"));
}

void CalculationSheetTest::words_areFoundAsTheyStand()
{
    CalculationSheet::Item item = exampleItem(u"pantalla"_s);
    item.project.tabName = u"Oficina: flujo y afinación"_s; // letters that fonts like to join
    const QString text = pagesOf(write({item})).join(u'\n');
    for (const QString& word : {u"Oficina: flujo y afinación"_s, u"Clapeyron"_s, u"cifras"_s,
                                u"LONGITUD TOTAL: 12.0m"_s, u"Firma"_s})
        QVERIFY2(text.contains(word), qPrintable(word));
}

/// What does not fit a page comes on the next one, and nothing is lost between.
void CalculationSheetTest::everyWord_isOnThePages()
{
    for (int more = 0; more < 12; more += 2) {
        CalculationSheet::Item item = exampleItem(u"pasarela"_s);
        for (int k = 0; k < more; ++k)
            item.project.loads.append(item.project.loads.first());
        const QString path = write({item});
        QString printed = pagesOf(path).join(u' ');
        QVERIFY(QFile::remove(path));
        printed.remove(QRegularExpression(u"\\s"_s));
        QTextDocument document;
        document.setHtml(SheetText::of(item.project).html);
        for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
            QString text = block.text();
            text.remove(QRegularExpression(u"[\\s\u00A0\u2028\uE000-\uE002]"_s));
            // A paragraph may go on behind a page's foot and head.
            const qsizetype half = text.size() / 2;
            QVERIFY2(printed.contains(text.left(half)) || printed.contains(text.mid(half)),
                     qPrintable(block.text()));
        }
    }
}

/// No page ends with a heading, nor with a table's head.
void CalculationSheetTest::headings_areFollowedByTheirText()
{
    QList<CalculationSheet::Item> items;
    for (const QString& name : EXAMPLES)
        items.append(exampleItem(name));
    for (int i = 0; i < 8; ++i) { // more loads move all headings down, a row each
        CalculationSheet::Item item = exampleItem(u"pasarela"_s);
        for (int k = 0; k < i; ++k)
            item.project.loads.append(item.project.loads.first());
        items.append({item.project, {}});
    }
    const QStringList pages = pagesOf(write(items));
    QVERIFY(pages.size() > 50);
    static const QRegularExpression HEADING(
        u"^(\\d+\\. \\D.*|Motor \\d+ · .*|K del motor.*|Flojo el .*|Decide: .*|Todos los motores nivelados|"
        "Las cadenas solo tiran|Qué cuelga Cuenta kg.*|kg|kg·m|kg·m²|R \\(kg\\)|.*R \\(kg\\))$"_s);
    for (const QString& page : pages) {
        const QStringList lines = bodyOf(page).split(u'\n', Qt::SkipEmptyParts);
        QVERIFY(!lines.isEmpty());
        QVERIFY2(!HEADING.match(lines.constLast()).hasMatch(), qPrintable(page));
    }
}

void CalculationSheetTest::manyLoads_makeASmallFile()
{
    CalculationSheet::Item item{exampleItem(u"concierto"_s).project, {}};
    for (int i = 0; i < 20'000; ++i) {
        ActiveLoad load = item.project.loads.first();
        load.mass = 0.25F;
        load.positionX = 14.0F * float(i) / 20'000.0F;
        item.project.loads.append(load);
    }
    const QString path = write({item});
    QVERIFY2(QFileInfo(path).size() < 1'000'000, qPrintable(QString::number(QFileInfo(path).size())));
    QVERIFY(pagesOf(path).size() < 20);
}

void CalculationSheetTest::existingFile_isLeftAlone()
{
    const QString path = m_folder->filePath(u"memoria_prueba.pdf"_s);
    Support::put(path, "mine");
    const auto request = requestOf({exampleItem(u"pantalla"_s)}, m_folder->path());
    QCOMPARE(request.path, path);
    QCOMPARE(CalculationSheet::write(request), CalculationSheet::Status::Exists);
    QCOMPARE(Support::contentOf(path), QByteArray("mine"));

    QVERIFY(QFile::remove(path));
    QVERIFY(QFile::link(m_folder->filePath(u"nowhere"_s), path));
    QCOMPARE(CalculationSheet::write(request), CalculationSheet::Status::Exists);
    QVERIFY(!QFileInfo::exists(m_folder->filePath(u"nowhere"_s)));
}

void CalculationSheetTest::existingFile_isReplacedWhereAsked()
{
    const QString path = m_folder->filePath(u"memoria_prueba.pdf"_s);
    Support::put(path, "mine");
    auto request = requestOf({exampleItem(u"pantalla"_s)}, m_folder->path());
    request.overwrite = true;
    QCOMPARE(CalculationSheet::write(request), CalculationSheet::Status::Written);
    QVERIFY(Support::contentOf(path).startsWith("%PDF-"));

    // A link is one of the user's own where the user chose it, and may be a stranger's elsewhere.
    const QString target = m_folder->filePath(u"ajeno"_s);
    for (const bool isPrivate : {true, false}) {
        Support::put(target, "ajeno");
        QVERIFY(QFile::remove(path));
        QVERIFY(QFile::link(target, path));
        request.isPrivate = isPrivate;
        QCOMPARE(CalculationSheet::write(request), CalculationSheet::Status::Written);
        QCOMPARE(QFileInfo(path).isSymLink(), !isPrivate);
        QCOMPARE(Support::contentOf(target) == "ajeno", isPrivate);
        QVERIFY(Support::contentOf(path).startsWith("%PDF-"));
    }
}

void CalculationSheetTest::newFile_isForItsOwnerAlone()
{
    const QString path = write({exampleItem(u"pantalla"_s)});
    const QFile::Permissions others =
        QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    QVERIFY(!(QFile::permissions(path) & others));
}

void CalculationSheetTest::fullDisk_leavesNothing()
{
    const auto request = requestOf({exampleItem(u"pantalla"_s)}, m_folder->path());
    CalculationSheet::Status status = CalculationSheet::Status::Written;
    {
        const Support::FullDisk full(1000);
        status = CalculationSheet::write(request);
    }
    QCOMPARE(status, CalculationSheet::Status::NotWritten);
    QVERIFY(QDir(m_folder->path()).isEmpty());
}

void CalculationSheetTest::missingFolder_isTold()
{
    const auto request = requestOf({exampleItem(u"pantalla"_s)}, m_folder->filePath(u"none"_s));
    QCOMPARE(CalculationSheet::write(request), CalculationSheet::Status::NotWritten);
}

void CalculationSheetTest::fileNames()
{
    QCOMPARE(CalculationSheet::fileName(u"concierto"_s), u"memoria_concierto.pdf"_s);
    QCOMPARE(CalculationSheet::fileName(u"Fiesta 2/3: «año»"_s), u"memoria_Fiesta_2_3___año_.pdf"_s);
    QCOMPARE(CalculationSheet::fileName(u"../../etc/x"_s), u"memoria_______etc_x.pdf"_s);
    QCOMPARE(CalculationSheet::fileName(QString()), u"memoria_proyecto.pdf"_s);
    QVERIFY(CalculationSheet::fileName(QString(500, u'ñ')).toUtf8().size() < 255);
}

void CalculationSheetTest::strangeProjects_data()
{
    QTest::addColumn<float>("length");
    QTest::addColumn<float>("mass");
    QTest::addColumn<float>("position");
    const float huge = std::numeric_limits<float>::max();
    QTest::newRow("nothing") << 0.0F << 0.0F << 0.0F;
    QTest::newRow("huge") << huge << huge << huge;
    QTest::newRow("negative") << -5.0F << -100.0F << -3.0F;
    QTest::newRow("tiny") << 1e-30F << 1e-30F << 1e-31F;
    QTest::newRow("long") << 1e9F << 5e5F << 1e8F;
    QTest::newRow("infinite") << std::numeric_limits<float>::infinity() << 1.0F << 1.0F;
    QTest::newRow("no number") << 12.0F << std::nanf("") << 1.0F;
}

void CalculationSheetTest::strangeProjects()
{
    QFETCH(float, length);
    QFETCH(float, mass);
    QFETCH(float, position);
    CalculationSheet::Item item{exampleItem(u"pasarela"_s).project, {}};
    item.project.trussLength = length;
    item.project.loads.first().mass = mass;
    item.project.loads.last().positionX = position;
    const QStringList pages = pagesOf(write({item}));
    QVERIFY(!pages.isEmpty() && pages.size() < 20);
    const QString all = pages.join(u' ');
    QVERIFY2(!all.contains(QRegularExpression(u"\\b(nan|inf)\\b"_s)), qPrintable(all));
}

QTEST_MAIN(CalculationSheetTest)
#include "tst_calculationsheet.moc"
