#include "engine/LoadLogic.h"
#include "io/HtmlReport.h"
#include "support/ReportDocument.h"

#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

using ProjectState = LoadLogic::ProjectState;
using Support::ReportDocument;

namespace
{

QDateTime when()
{
    return {QDate(2026, 3, 9), QTime(7, 5, 4)};
}

LoadLogic::Motor motorAt(int id, float position, float capacity, const QString& name)
{
    LoadLogic::Motor motor;
    motor.id = id;
    motor.positionX = position;
    motor.capacity = capacity;
    motor.modelName = name;
    return motor;
}

LoadLogic::ActiveLoad loadAt(int id, float position, float mass, const QString& name)
{
    LoadLogic::ActiveLoad load;
    load.id = id;
    load.positionX = position;
    load.mass = mass;
    load.type = u"Audio"_s;
    load.name = name;
    return load;
}

LoadLogic::ActiveLoad segmentAt(int id, float position, int groupId)
{
    LoadLogic::ActiveLoad segment = loadAt(id, position, 69.55F, u"LED Segment"_s);
    segment.type = u"Video_Segment"_s;
    segment.groupId = groupId;
    segment.screenWidth = 4.0F;
    segment.screenHeight = 3.0F;
    segment.screenWeightM2 = 40.0F;
    segment.bumperWeightPerMeter = 10.0F;
    return segment;
}

/// Within all limits.
ProjectState fittingProject()
{
    ProjectState project;
    project.tabName = u"Sala A"_s;
    project.motors = {motorAt(1, 0.0F, 1000.0F, u"D8+"_s), motorAt(2, 12.0F, 1000.0F, QString())};
    project.loads = {loadAt(1, 6.0F, 100.0F, u"Focos"_s), segmentAt(2, 4.25F, 100), segmentAt(3, 4.75F, 100)};
    return project;
}

/// One motor beside the middle: unstable.
ProjectState unstableProject()
{
    ProjectState project;
    project.tabName = u"Voladizo"_s;
    project.motors = {motorAt(1, 3.0F, 1000.0F, u"Solo"_s)};
    return project;
}

/// The load in the middle exceeds the CPL, and the motors' dynamic capacity.
ProjectState overloadedProject()
{
    ProjectState project;
    project.tabName = u"Sobrecarga"_s;
    project.motors = {motorAt(1, 0.0F, 900.0F, u"Pequeño"_s), motorAt(2, 12.0F, 1200.0F, u"Mediano"_s)};
    project.loads = {loadAt(9, 6.0F, 1800.0F, QString())};
    return project;
}

QString documentOf(const QList<ProjectState>& projects)
{
    QList<Figures> figures;
    for (const ProjectState& project : projects)
        figures.append(Figures::of(project));
    return HtmlReport::document(figures, u"Sala A"_s, when());
}

} // namespace

class TestHtmlReport : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void wholeDocument_isTheGoldenOne();
    void document_isWellFormed();
    void head_endsWithThePolicyAfterTheStyles();
    void summary_countsTheProjects();
    void headline_isTheCurrentTitle();
    void generationDate_isGiven();
    void motorRow_hasAllColumns();
    void motorVerdicts_data();
    void motorVerdicts();
    void noArray_noTableOfScreens();
    void arrays_areListedWithTheirDimensions();
    void loadRows_nameSegmentsByTheirArray();
    void untypedSegment_isOfArrayZero();
    void loadRows_shareTheTrussVerdict();
    void twoUnstableProjects_giveTheAdviceTwice();
    void stressOfExactlyHundred_givesAdviceAndNoApto();
    void allWithinLimits_isGloballyFit();
    void unstableProjectWithSoundMotors_isNoAptoInestable();
    void oneBadProject_makesTheWholeRisky();
    void noProjects_isAFitDocument();
    void namesWithPlaceholders_stayAsTyped();
    void markupInNames_staysAsTyped();
    void files_areNamedByIndexAndTime();
};

void TestHtmlReport::init()
{
    LoadLogic::MakeCurrent(ProjectState());
}

void TestHtmlReport::wholeDocument_isTheGoldenOne()
{
    QFile golden(QStringLiteral(VELMORA_SOURCE_DIR "/tests/io/data/informe.html"));
    QVERIFY(golden.open(QIODevice::ReadOnly));
    const QString expected = QString::fromUtf8(golden.readAll());
    const QString actual = documentOf({fittingProject(), unstableProject(), overloadedProject()});

    const QStringList expectedLines = expected.split(u'\n');
    const QStringList actualLines = actual.split(u'\n');
    for (qsizetype i = 0; i < qMin(expectedLines.size(), actualLines.size()); ++i)
        QCOMPARE(actualLines.at(i), expectedLines.at(i));
    QCOMPARE(actual, expected);
}

void TestHtmlReport::document_isWellFormed()
{
    const ReportDocument document(documentOf({fittingProject(), unstableProject(), overloadedProject()}));
    QCOMPARE(document.error(), QString());
    QCOMPARE(document.charset, u"UTF-8"_s);
    QCOMPARE(document.images,
             QStringList({u"truss_schema_0.jpg"_s, u"truss_schema_1.jpg"_s, u"truss_schema_2.jpg"_s}));
    QVERIFY(!document.elements.contains(u"script"_s));
}

void TestHtmlReport::head_endsWithThePolicyAfterTheStyles()
{
    const QString html = documentOf({});
    QVERIFY(html.contains(u"</style><meta http-equiv='Content-Security-Policy' content=\"default-src 'none'; "
                          "img-src 'self' file: data:; style-src 'unsafe-inline'; frame-src 'none'; "
                          "connect-src 'none'; base-uri 'none'; form-action 'none'\">"
                          "<meta name='referrer' content='no-referrer'>"
                          "<meta http-equiv='x-dns-prefetch-control' content='off'></head>"_s));
    QVERIFY(html.startsWith(u"\n<html><head><meta charset='UTF-8'><style>"_s));
}

void TestHtmlReport::summary_countsTheProjects()
{
    const ReportDocument document(documentOf({fittingProject(), unstableProject()}));
    QVERIFY(document.results.contains(
        u"Este informe agrupa 2 proyectos independientes analizados para este evento."_s));
}

void TestHtmlReport::headline_isTheCurrentTitle()
{
    const ReportDocument document(documentOf({unstableProject()}));
    QCOMPARE(document.headings.at(0), u"INFORME: Sala A"_s);
    QCOMPARE(document.headings.at(2), u"PROYECTO: Voladizo"_s);
}

void TestHtmlReport::generationDate_isGiven()
{
    const ReportDocument document(documentOf({}));
    QCOMPARE(document.results.at(0), u"Fecha Generación: 09/03/2026 07:05"_s);
}

void TestHtmlReport::motorRow_hasAllColumns()
{
    const ReportDocument document(documentOf({fittingProject()}));
    const ReportDocument::Table& motors = document.tables.at(0);
    QCOMPARE(motors.head, QStringList({u"ID / Motor"_s, u"POS (m)"_s, u"CAPACIDAD MOTOR"_s, u"PESO MOTOR"_s,
                                       u"TOTAL EN PUNTO"_s, u"ESTÁTICA"_s, u"DINÁMICA"_s, u"ESTADO"_s}));
    // 50.4 of truss, 50 of the load, of the segments at 4.25 and 4.75 m (7.75 + 7.25) / 12 · 69.55.
    QCOMPARE(motors.rows.at(0).cells, QStringList({u"D8+"_s, u"-6.00m"_s, u"1000.0"_s, u"50.0"_s, u"187.3"_s,
                                                   u"237.3"_s, u"296.7"_s, u"OK"_s}));
    QCOMPARE(motors.rows.at(0).lastClass, u"status-ok"_s);
    QCOMPARE(motors.rows.at(1).cells.at(0), u"M2"_s);
}

void TestHtmlReport::motorVerdicts_data()
{
    QTest::addColumn<float>("capacity");
    QTest::addColumn<QString>("verdict");
    QTest::addColumn<QString>("status");
    // A motor of 50 kg that carries 780 kg: 830 static, 1037.5 dynamic.
    QTest::newRow("enough") << 1037.5F << u"OK"_s << u"status-ok"_s;
    QTest::newRow("not when starting") << 1000.0F << u"SOBRECARGA DINÁMICA"_s << u"status-error"_s;
    QTest::newRow("not with its own weight") << 780.0F << u"SOBRECARGA DINÁMICA"_s << u"status-error"_s;
    QTest::newRow("not at rest") << 779.0F << u"SOBRECARGA ESTÁTICA"_s << u"status-error"_s;
}

void TestHtmlReport::motorVerdicts()
{
    QFETCH(const float, capacity);
    QFETCH(const QString, verdict);
    QFETCH(const QString, status);
    ProjectState project = fittingProject();
    project.trussSelfWeight = 0.0F;
    project.motors[0].capacity = capacity;
    project.loads = {loadAt(1, 0.0F, 780.0F, u"Focos"_s)};
    const ReportDocument document(documentOf({project}));
    const ReportDocument::Row& row = document.tables.at(0).rows.at(0);
    QCOMPARE(row.cells.at(7), verdict);
    QCOMPARE(row.lastClass, status);
    QCOMPARE(document.results.at(2).contains(u"NO APTO: Superación de carga."_s),
             status == "status-error"_L1);
}

void TestHtmlReport::noArray_noTableOfScreens()
{
    const ReportDocument document(documentOf({overloadedProject()}));
    QCOMPARE(document.tables.size(), 2);
    QVERIFY(!document.headings.contains(u"ESPECIFICACIONES TÉCNICAS: PANTALLAS LED"_s));
}

void TestHtmlReport::arrays_areListedWithTheirDimensions()
{
    const ReportDocument document(documentOf({fittingProject()}));
    QVERIFY(document.headings.contains(u"ESPECIFICACIONES TÉCNICAS: PANTALLAS LED"_s));
    const ReportDocument::Table& arrays = document.tables.at(1);
    QCOMPARE(arrays.head,
             QStringList({u"Array ID"_s, u"Dimensiones"_s, u"Construcción"_s, u"Cables"_s, u"Peso Total"_s}));
    QCOMPARE(arrays.rows.at(0).cells,
             QStringList({u"LED Array (1)"_s, u"4.0m x 3.0m"_s, u"40.0 kg/m² + 10.0 kg/m bumper"_s,
                          u"+7.0%"_s, u"139.1 kg"_s}));
}

void TestHtmlReport::loadRows_nameSegmentsByTheirArray()
{
    ProjectState project = fittingProject();
    project.loads.append(segmentAt(8, 9.0F, 40));
    project.loads[0].name.clear();
    const ReportDocument document(documentOf({project}));
    const ReportDocument::Table& loads = document.tables.at(2);
    QCOMPARE(loads.head, QStringList({u"Nombre de Carga"_s, u"POS (m)"_s, u"Masa (kg)"_s, u"Tipo"_s,
                                      u"Total (kg)"_s, u"-"_s, u"Estado"_s}));
    QCOMPARE(loads.rows.at(0).cells, QStringList({u"Carga 1"_s, u"0.00m"_s, u"100.0 kg"_s, u"Puntual"_s,
                                                  u"100.0 kg"_s, u"-"_s, u"OK"_s}));
    QCOMPARE(loads.rows.at(1).cells.at(0), u"Segment LED (Array 2)"_s); // group 100 comes after 40
    QCOMPARE(loads.rows.at(1).cells.at(3), u"Segmento LED"_s);
    QCOMPARE(loads.rows.at(3).cells.at(0), u"Segment LED (Array 1)"_s);
}

void TestHtmlReport::untypedSegment_isOfArrayZero()
{
    ProjectState project = fittingProject();
    project.loads[1].type.clear();
    project.loads[2].type.clear();
    const ReportDocument document(documentOf({project}));
    QCOMPARE(document.tables.size(), 2);
    QCOMPARE(document.tables.at(1).rows.at(1).cells.at(0), u"Segment LED (Array 0)"_s);
}

void TestHtmlReport::loadRows_shareTheTrussVerdict()
{
    const ReportDocument document(documentOf({overloadedProject()}));
    QCOMPARE(document.tables.at(1).rows.at(0).cells.at(6), u"SOBRECARGA"_s);
    QCOMPARE(document.tables.at(1).rows.at(0).lastClass, u"status-error"_s);
}

void TestHtmlReport::twoUnstableProjects_giveTheAdviceTwice()
{
    const ReportDocument document(documentOf({unstableProject(), fittingProject(), unstableProject()}));
    const QString advice =
        u"Error de estabilidad por voladizo (Cantilever). Reubicar los motores más hacia los "
        "extremos del truss."_s;
    QCOMPARE(document.listItems, QStringList({advice, advice}));
    QVERIFY(document.headings.contains(u"⚠️ RECOMENDACIONES TÉCNICAS"_s));
}

void TestHtmlReport::stressOfExactlyHundred_givesAdviceAndNoApto()
{
    ProjectState project = overloadedProject();
    project.trussSelfWeight = 0.0F;
    project.loads[0].mass = 1600.0F; // the CPL itself
    project.motors[0].capacity = project.motors[1].capacity = 1e6F;
    const ReportDocument document(documentOf({project}));
    QCOMPARE(document.results.at(2), u"Resultado Parcial: NO APTO: Superación de carga. | Stress: 100.0%"_s);
    QCOMPARE(document.listItems,
             QStringList(u"El diseño supera el 100% de estrés estructural. Reforzar con viga de "
                         "mayor CPL o reducir la luz entre apoyos."_s));
}

void TestHtmlReport::allWithinLimits_isGloballyFit()
{
    const QString html = documentOf({fittingProject(), fittingProject()});
    QVERIFY(html.contains(u"<h2 class='status-ok'>✅ CONFIGURACIÓN GLOBAL APTA</h2>"_s));
    QVERIFY(html.contains(u"<span class='status-ok'>APTO</span>: Dentro de márgenes. | Stress: "_s));
    QVERIFY(ReportDocument(html).listItems.isEmpty());
    QVERIFY(!html.contains(u"<div class='recommendation-box'>"_s));
}

void TestHtmlReport::unstableProjectWithSoundMotors_isNoAptoInestable()
{
    const QString html = documentOf({unstableProject()});
    QVERIFY(html.contains(
        u"<span class='status-error'>NO APTO (INESTABLE)</span>: Error de voladizo. | Stress: 0.0%"_s));
    QVERIFY(html.contains(u"<h2 class='status-error'>❌ CONFIGURACIÓN GLOBAL CON RIESGOS</h2>"_s));
}

void TestHtmlReport::oneBadProject_makesTheWholeRisky()
{
    const QString html = documentOf({fittingProject(), overloadedProject(), fittingProject()});
    QVERIFY(html.contains(u"CONFIGURACIÓN GLOBAL CON RIESGOS"_s));
}

void TestHtmlReport::noProjects_isAFitDocument()
{
    const ReportDocument document(documentOf({}));
    QCOMPARE(document.error(), QString());
    QVERIFY(document.headings.contains(u"✅ CONFIGURACIÓN GLOBAL APTA"_s));
    QVERIFY(document.tables.isEmpty());
}

void TestHtmlReport::namesWithPlaceholders_stayAsTyped()
{
    const QString name = u"50%1 \"A\" %9 %L2 %%"_s;
    ProjectState project = fittingProject();
    project.tabName = name;
    project.motors[0].modelName = name;
    project.loads[0].name = name;
    const ReportDocument document(documentOf({project}));
    QCOMPARE(document.error(), QString());
    QCOMPARE(document.tables.at(0).rows.at(0).cells.at(0), name);
    QCOMPARE(document.tables.at(2).rows.at(0).cells.at(0), name);
    QVERIFY(document.headings.contains(u"PROYECTO: "_s + name));
}

void TestHtmlReport::markupInNames_staysAsTyped()
{
    ProjectState project = fittingProject();
    project.motors[0].modelName = u"<b>negrita</b> & <i onclick='x()'>"_s;
    project.tabName = u"<u>A</u>"_s;
    const QString html = documentOf({project});
    QVERIFY(html.contains(u"<tr><td><b>negrita</b> & <i onclick='x()'></td><td>-6.00m</td>"_s));
    QVERIFY(html.contains(u"<h3>PROYECTO: <u>A</u></h3>"_s));
    QVERIFY(html.contains(u"alt='Esquema <u>A</u>'"_s));
}

void TestHtmlReport::files_areNamedByIndexAndTime()
{
    QCOMPARE(HtmlReport::drawingName(0), u"truss_schema_0.jpg"_s);
    QCOMPARE(HtmlReport::drawingName(12), u"truss_schema_12.jpg"_s);
    QCOMPARE(HtmlReport::reportName(when()), u"informe_rigging_20260309_070504.html"_s);
}

QTEST_GUILESS_MAIN(TestHtmlReport)
#include "tst_htmlreport.moc"
