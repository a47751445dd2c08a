#include "app/Appearance.h"
#include "app/CommandLine.h"
#include "engine/Figures.h"
#include "engine/Numbers.h"
#include "engine/ProjectOpinion.h"
#include "engine/SecondOpinionText.h"
#include "engine/Statics.h"
#include "io/ProjectFile.h"
#include "ui/DynamicFactorDialog.h"
#include "ui/InfoWindow.h"
#include "ui/ListDialog.h"
#include "ui/MainWindow.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QSet>
#include <QTableWidget>
#include <QTest>
#include <QXmlStreamReader>

#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

QByteArray read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString source(const char* name)
{
    return QStringLiteral(VELMORA_SOURCE_DIR) + u'/' + QLatin1StringView(name);
}

/// Blanks count as one, and every number as any other: those in the window change with the project.
QString normalised(const QString& text)
{
    static const QRegularExpression number(u"[0-9]+(\\.[0-9]+)?"_s);
    return QString(text).replace(number, u"0"_s).simplified();
}

/// The guide's worked example, before the bigger motor: 12 m, motors 5 m to both sides of the
/// centre, PA of 350 kg at 4 m to both sides, a spotlight of 120 kg at +3 m, and a screen of 572 kg
/// in 8 segments around the centre.
LoadLogic::ProjectState workedExample()
{
    LoadLogic::ProjectState project;
    for (const float x : {1.0F, 11.0F}) {
        LoadLogic::Motor motor;
        motor.positionX = x;
        project.motors.append(motor);
    }
    const auto hang = [&project](float mass, float x) {
        LoadLogic::ActiveLoad load;
        load.mass = mass;
        load.positionX = x;
        project.loads.append(load);
    };
    hang(350.0F, 2.0F);
    hang(350.0F, 10.0F);
    hang(120.0F, 9.0F);
    for (int segment = 0; segment < 8; ++segment)
        hang(71.5F, 4.25F + 0.5F * static_cast<float>(segment));
    return project;
}

LoadLogic::ProjectState example(const char* name)
{
    return ProjectFile::read(source("examples/") + QLatin1StringView(name)).project;
}

SecondOpinion::Opinion opinionOf(const LoadLogic::ProjectState& project,
                                 std::optional<double> tableDeflection = {})
{
    return ProjectOpinion::of(Statics::solved(project), tableDeflection);
}

} // namespace

/// The user guide is one file that needs nothing else, and tells of every control.
class TestGuide : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void document_isWellFormedAndSpanish();
    void document_staysSmall();
    void document_refersToNothingOutside();
    void document_runsNothing();
    void anchors_areUniqueAndAllResolve();
    void pictures_haveSizeAndDescription();
    void guide_isMadeFromTheSourceAsItStands();
    void guide_liesBesideTheExecutable();
    void example_hasTheFiguresOfTheProgram();
    void contrast_hasTheFiguresOfTheProgram();
    void contrast_hasTheSentencesOfTheProgram();
    void overhang_isToldAsItIs();
    void guide_namesEveryControlOfTheWindow();
    void guide_namesEveryColumnAndButtonOfTheDialogs();
    void guide_namesEveryColumnAndButtonOfTheList();

private: // helpers
    struct Element
    {
        QString name;
        QXmlStreamAttributes attributes;
    };
    void parse();
    [[nodiscard]] QStringList values(const QString& attribute) const;
    /// Of `texts`, those that the guide does not have.
    [[nodiscard]] QStringList missing(const QStringList& texts) const;

private: // data
    QByteArray m_bytes;
    QString m_error; ///< of the parser, empty for none
    QList<Element> m_elements;
    QString m_rawText; ///< what the reader sees
    QString m_text;    ///< the same, normalised
    QString m_style;
};

void TestGuide::initTestCase()
{
    Appearance::apply(*qApp);
    m_bytes = read(source("resources/user_guide.html"));
    QVERIFY(!m_bytes.isEmpty());
    parse();
}

void TestGuide::parse()
{
    QXmlStreamReader reader(m_bytes);
    QStringList open;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isStartElement()) {
            open.append(reader.name().toString());
            m_elements.append({open.constLast(), reader.attributes()});
        } else if (reader.isEndElement()) {
            open.removeLast();
        } else if (reader.isCharacters()) {
            (open.constLast() == "style"_L1 ? m_style : m_rawText) += reader.text();
        }
    }
    m_text = normalised(m_rawText);
    if (reader.hasError())
        m_error = u"line %1: %2"_s.arg(QString::number(reader.lineNumber()), reader.errorString());
}

QStringList TestGuide::values(const QString& attribute) const
{
    QStringList found;
    for (const Element& element : m_elements) {
        if (element.attributes.hasAttribute(attribute))
            found.append(element.attributes.value(attribute).toString());
    }
    return found;
}

QStringList TestGuide::missing(const QStringList& texts) const
{
    QStringList left;
    for (const QString& text : texts) {
        if (!m_text.contains(normalised(text)))
            left.append(text);
    }
    return left;
}

void TestGuide::document_isWellFormedAndSpanish()
{
    QVERIFY2(m_error.isEmpty(), qPrintable(m_error));
    QVERIFY(m_bytes.startsWith("<!DOCTYPE html>\n"));
    QCOMPARE(m_elements.constFirst().name, u"html"_s);
    QCOMPARE(m_elements.constFirst().attributes.value("lang"_L1), u"es"_s);
    QVERIFY(values(u"charset"_s).contains(u"utf-8"_s));
    QVERIFY(values(u"name"_s).contains(u"viewport"_s));
}

void TestGuide::document_staysSmall()
{
    QVERIFY2(m_bytes.size() < 2'000'000, qPrintable(QString::number(m_bytes.size())));
}

void TestGuide::document_refersToNothingOutside()
{
    for (const QString& address : values(u"href"_s))
        QVERIFY2(address.startsWith(u'#'), qPrintable(address));
    for (const QString& address : values(u"src"_s))
        QVERIFY2(address.startsWith("data:image/png;base64,"_L1), qPrintable(address.left(80)));
    for (const auto name : {"srcset"_L1, "action"_L1, "data"_L1, "poster"_L1, "background"_L1})
        QVERIFY2(values(name).isEmpty(), name.data());
    QVERIFY(!m_style.contains("url("_L1));
    QVERIFY(!m_style.contains("@import"_L1));
}

void TestGuide::document_runsNothing()
{
    static const QSet<QString> running{u"script"_s, u"link"_s,  u"base"_s, u"iframe"_s,
                                       u"object"_s, u"embed"_s, u"form"_s};
    for (const Element& element : std::as_const(m_elements)) {
        QVERIFY2(!running.contains(element.name), qPrintable(element.name));
        for (const QXmlStreamAttribute& attribute : element.attributes) {
            const QString name = attribute.name().toString();
            QVERIFY2(!name.startsWith("on"_L1) && name != "http-equiv"_L1, qPrintable(name));
        }
    }
}

void TestGuide::anchors_areUniqueAndAllResolve()
{
    const QStringList ids = values(u"id"_s);
    const QSet<QString> known(ids.cbegin(), ids.cend());
    QCOMPARE(known.size(), ids.size());
    const QStringList links = values(u"href"_s);
    QVERIFY(links.size() > 20);
    for (const QString& link : links)
        QVERIFY2(known.contains(link.mid(1)), qPrintable(link));
}

void TestGuide::pictures_haveSizeAndDescription()
{
    int pictures = 0;
    for (const Element& element : std::as_const(m_elements)) {
        if (element.name != "img"_L1)
            continue;
        ++pictures;
        const QString description = element.attributes.value("alt"_L1).toString();
        QVERIFY2(description.size() > 15, qPrintable(description));
        QVERIFY2(element.attributes.value("width"_L1).toInt() > 0, qPrintable(description));
        QVERIFY2(element.attributes.value("height"_L1).toInt() > 0, qPrintable(description));
    }
    QVERIFY(pictures > 15);
}

void TestGuide::guide_isMadeFromTheSourceAsItStands()
{
    static const QRegularExpression embedded(u"src=\"data:[^\"]*\" width=\"\\d+\" height=\"\\d+\""_s);
    static const QRegularExpression placeholder(u"src=\"@picture:\\w+@\""_s);
    const QString guide = QString::fromUtf8(m_bytes).replace(embedded, u"src"_s);
    const QString made =
        QString::fromUtf8(read(source("docs/guide/user_guide.src.html"))).replace(placeholder, u"src"_s);
    QVERIFY(!made.isEmpty());
    QVERIFY2(guide == made, "run tools/guide.sh");
}

void TestGuide::guide_liesBesideTheExecutable()
{
    const QString path = QCoreApplication::applicationDirPath() + u"/user_guide.html"_s;
    QVERIFY2(QFile::exists(path), qPrintable(path));
    QVERIFY(read(path) == m_bytes);
}

// Each motor: half of the truss, 12 × 8.4 / 2 = 50.4, of the PA, 350, and of the screen, 286; of the
// spotlight at 8 of 10 m from the left one 24 and 96.
void TestGuide::example_hasTheFiguresOfTheProgram()
{
    LoadLogic::ProjectState project = workedExample();
    const Figures small = Figures::of(project);
    project.motors[1].capacity = 2000.0F;
    project.motors[1].selfWeight = 80.0F;
    const Figures big = Figures::of(project);

    QVERIFY(small.motors.at(1).verdict == Figures::Verdict::DynamicOverload);
    QVERIFY(!small.fits());
    QVERIFY(big.fits());
    const QList<std::pair<float, QString>> figures{
        {small.motors.at(0).atPoint, u"710.4"_s},
        {small.motors.at(1).atPoint, u"782.4"_s},
        {small.motors.at(0).staticLoad, u"760.4"_s},
        {small.motors.at(1).staticLoad, u"832.4"_s},
        {small.motors.at(0).dynamicLoad, u"950.5"_s},
        {small.motors.at(1).dynamicLoad, u"1040.5"_s},
        {big.motors.at(1).staticLoad, u"862.4"_s},
        {big.motors.at(1).dynamicLoad, u"1078.0"_s},
        {big.stress, u"35.9"_s}, // 1724.7 / 4800
    };
    for (const auto& [figure, text] : figures) {
        QCOMPARE(Numbers::fixed(figure, 1), text);
        QVERIFY2(m_rawText.contains(text), qPrintable(text));
    }
}

void TestGuide::contrast_hasTheFiguresOfTheProgram()
{
    QStringList texts;
    const SecondOpinion::Opinion concert = opinionOf(example("concierto.rig"));
    for (const SecondOpinion::MotorOpinion& told : concert.motors) {
        for (const auto figure : {&SecondOpinion::MotorOpinion::lever, &SecondOpinion::MotorOpinion::level,
                                  &SecondOpinion::MotorOpinion::oneSlack, &SecondOpinion::MotorOpinion::most})
            texts.append(SecondOpinionText::mass(told.*figure));
    }
    QCOMPARE(texts.size(), 12);
    const qsizetype table = m_rawText.indexOf(u"concierto.rig, en kg"_s);
    QVERIFY(table > 0);
    qsizetype place = table;
    for (const QString& text : std::as_const(texts)) {
        place = m_rawText.indexOf(text, place);
        QVERIFY2(place > 0 && place < table + 500, qPrintable(text));
        place += text.size();
    }

    const Figures tipping = Figures::of(example("vuelca.rig"));
    QVERIFY(tipping.fits());
    QVERIFY(m_rawText.contains(u"La palanca dice A "_s + Numbers::fixed(tipping.motors.at(0).atPoint, 1)
                               + u" kg, B "_s + Numbers::fixed(tipping.motors.at(1).atPoint, 1) + u" kg"_s));
}

void TestGuide::contrast_hasTheSentencesOfTheProgram()
{
    const QStringList concert = SecondOpinionText::sentences(opinionOf(example("concierto.rig"), 15.0));
    const QStringList tipping = SecondOpinionText::sentences(opinionOf(example("vuelca.rig")));
    QCOMPARE(concert.size(), 4); // one motor slack, and what a millimetre counts of each
    QCOMPARE(tipping.size(), 1);
    for (const QString& sentence : concert.first(3) + tipping)
        QVERIFY2(m_rawText.contains(sentence), qPrintable(sentence));
}

// 12 m of 8.4 kg/m, motors at 5.3 and 6.7 m, 400 kg at 0 m: a lever of (400·6.7 + 100.8·0.7) / 1.4.
void TestGuide::overhang_isToldAsItIs()
{
    LoadLogic::ProjectState project;
    for (const float x : {5.3F, 6.7F}) {
        LoadLogic::Motor motor;
        motor.positionX = x;
        project.motors.append(motor);
    }
    LoadLogic::ActiveLoad load;
    load.mass = 400.0F;
    project.loads.append(load);
    const Figures figures = Figures::of(project);
    QVERIFY(figures.fits());
    const double left = (400.0 * 6.7 + 100.8 * 0.7) / 1.4;
    const QStringList texts{Numbers::fixed(figures.motors.at(0).atPoint, 1), QString::number(left, 'f', 1),
                            QString::number(left - 500.8, 'f', 1)};
    QCOMPARE(texts, QStringList({u"450.4"_s, u"1964.7"_s, u"1463.9"_s}));
    for (const QString& text : texts) {
        QVERIFY2(m_rawText.contains(text), qPrintable(text));
        QVERIFY2(CommandLine::usage().contains(text), qPrintable(text));
        for (const char* page :
             {"README.md", "packaging/man/velmora-master.1.in", "packaging/man/velmora-master.es.1.in"})
            QVERIFY2(read(source(page)).contains(text.toUtf8()), page);
    }
    QVERIFY(opinionOf(project).state == SecondOpinion::State::Tips);
}

void TestGuide::guide_namesEveryControlOfTheWindow()
{
    const MainWindow window;
    QStringList texts;
    for (const auto* button : window.findChildren<QAbstractButton*>())
        texts.append(button->text());
    for (const auto* label : window.findChildren<QLabel*>())
        texts.append(label->text());
    for (const auto* group : window.findChildren<QGroupBox*>())
        texts.append(group->title());
    for (const auto* table : window.findChildren<QTableWidget*>()) {
        for (int column = 0; column < table->columnCount(); ++column)
            texts.append(table->horizontalHeaderItem(column)->text());
    }
    QVERIFY(texts.contains(u"📂 ABRIR"_s));
    QVERIFY(texts.contains(u"CPL Máx:"_s));
    QVERIFY(texts.contains(u"DINÁMICA (kg)"_s));
    QCOMPARE(missing(texts), QStringList());
}

void TestGuide::guide_namesEveryColumnAndButtonOfTheDialogs()
{
    const DynamicFactorDialog dynamic({}, nullptr);
    const InfoWindow info(nullptr);
    QStringList texts{dynamic.windowTitle(), info.windowTitle()};
    const auto* table = dynamic.findChild<QTableWidget*>();
    for (int column = 0; column < table->columnCount(); ++column)
        texts.append(table->horizontalHeaderItem(column)->text());
    for (const QWidget* dialog :
         {static_cast<const QWidget*>(&dynamic), static_cast<const QWidget*>(&info)}) {
        for (const auto* button : dialog->findChildren<QAbstractButton*>())
            texts.append(button->text());
    }
    QVERIFY(texts.contains(u"CERRAR"_s));
    QCOMPARE(missing(texts), QStringList());
}

void TestGuide::guide_namesEveryColumnAndButtonOfTheList()
{
    const ListDialog list;
    QStringList texts{list.windowTitle()};
    for (const auto* table : list.findChildren<QTableView*>()) {
        for (int column = 0; column < table->model()->columnCount(); ++column)
            texts.append(table->model()->headerData(column, Qt::Horizontal).toString());
    }
    for (const auto* button : list.findChildren<QPushButton*>())
        texts.append(button->text());
    QVERIFY(texts.contains(u"Peso motor (kg)"_s));
    QVERIFY(texts.contains(u"PEGAR CARGAS"_s));
    QCOMPARE(missing(texts), QStringList());
}

QTEST_MAIN(TestGuide)
#include "tst_guide.moc"
