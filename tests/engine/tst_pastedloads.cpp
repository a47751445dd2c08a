#include "engine/PastedLoads.h"

#include <QLocale>
#include <QTest>

using namespace Qt::StringLiterals;

namespace
{

constexpr float LENGTH = 12.0F; // [m]

/// What becomes of the row "Foco", `mass`, `position`.
PastedLoads rowOf(const QString& mass, const QString& position)
{
    return PastedLoads::of(u"Foco\t"_s + mass + u'\t' + position, LENGTH);
}

} // namespace

class PastedLoadsTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup()
    {
        QLocale::setDefault(QLocale::c());
    }

    void row_isALoad();
    void numbers_areReadInEachForm_data();
    void numbers_areReadInEachForm();
    void numbers_areTheSameOnASpanishDesktop();
    void faultyRow_isToldAndNoLoad_data();
    void faultyRow_isToldAndNoLoad();
    void goodRowsAmongFaultyOnes_areLoads();
    void lineEnds_areThoseOfAnySystem();
    void emptyRows_arePassedOver();
    void quotedCell_isReadAsTheSpreadsheetMeantIt();
    void quotationMarkOfInches_isPartOfTheName();
    void name_isKeptAndAnEmptyOneIsTheUsual();
    void longCell_isQuotedInPart();
    void trussWithoutLength_takesOnlyTheMiddle();
};

void PastedLoadsTest::row_isALoad()
{
    const PastedLoads pasted = PastedLoads::of(u"PA\t350\t-4,5\n"_s, LENGTH);
    QCOMPARE(pasted.faults, QStringList());
    QCOMPARE(pasted.loads.size(), 1);
    const ActiveLoad& load = pasted.loads.constFirst();
    QCOMPARE(load.name, u"PA"_s);
    QCOMPARE(load.mass, 350.0F);
    QCOMPARE(load.positionX, 1.5F); // 6 - 4.5
    QCOMPARE(load.groupId, -1);
    QVERIFY(!Project::isScreen(load));
}

void PastedLoadsTest::numbers_areReadInEachForm_data()
{
    QTest::addColumn<QString>("mass");
    QTest::addColumn<QString>("position");
    QTest::addColumn<float>("kilograms");
    QTest::addColumn<float>("metres");
    QTest::newRow("integers") << u"350"_s << u"2"_s << 350.0F << 8.0F;
    QTest::newRow("points") << u"35.5"_s << u"2.25"_s << 35.5F << 8.25F;
    QTest::newRow("commas") << u"35,5"_s << u"2,25"_s << 35.5F << 8.25F;
    QTest::newRow("one of each") << u"35,5"_s << u"-2.25"_s << 35.5F << 3.75F;
    QTest::newRow("as the drawing writes it") << u"35.5"_s << u"+1.50m"_s << 35.5F << 7.5F;
    QTest::newRow("units") << u"35,5 kg"_s << u"1,5 m"_s << 35.5F << 7.5F;
    QTest::newRow("blanks") << u" 35,5 "_s << u" 1,5 "_s << 35.5F << 7.5F;
    QTest::newRow("millimetres") << u"35"_s << u"1,125"_s << 35.0F << 7.125F;
    QTest::newRow("minus sign") << u"35"_s << u"\u22121,5"_s << 35.0F << 4.5F;
    QTest::newRow("three decimals below 1 kg") << u"0,125"_s << u"0"_s << 0.125F << 6.0F;
    QTest::newRow("nothing weighs nothing") << u"0"_s << u"0"_s << 0.0F << 6.0F;
    QTest::newRow("the ends") << u"50000"_s << u"-6"_s << 50000.0F << 0.0F;
    QTest::newRow("an end, rounded") << u"1"_s << u"6.005"_s << 1.0F << 12.0F;
}

void PastedLoadsTest::numbers_areReadInEachForm()
{
    QFETCH(QString, mass);
    QFETCH(QString, position);
    const PastedLoads pasted = rowOf(mass, position);
    QCOMPARE(pasted.faults, QStringList());
    QTEST(pasted.loads.constFirst().mass, "kilograms");
    QTEST(pasted.loads.constFirst().positionX, "metres");
}

void PastedLoadsTest::numbers_areTheSameOnASpanishDesktop()
{
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
    QCOMPARE(rowOf(u"35,5"_s, u"1,5"_s).loads.constFirst().mass, 35.5F);
    QCOMPARE(rowOf(u"35.5"_s, u"1.5"_s).loads.constFirst().mass, 35.5F);
    QVERIFY(rowOf(u"1.234,5"_s, u"0"_s).loads.isEmpty());
}

void PastedLoadsTest::faultyRow_isToldAndNoLoad_data()
{
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("fault");
    const QString columns = u"(nombre, masa, posición)."_s;
    QTest::newRow("one cell") << u"Foco"_s << u"faltan columnas "_s + columns;
    QTest::newRow("no position") << u"Foco\t12"_s << u"faltan columnas "_s + columns;
    QTest::newRow("empty position") << u"Foco\t12\t"_s << u"«» no es una posición."_s;
    QTest::newRow("more cells") << u"Foco\t12\t1\tPantalla"_s << u"sobran columnas "_s + columns;
    QTest::newRow("heading") << u"Nombre\tMasa\tPosición"_s << u"«Masa» no es una masa."_s;
    QTest::newRow("word") << u"Foco\tdoce\t1"_s << u"«doce» no es una masa."_s;
    QTest::newRow("empty mass") << u"Foco\t\t1"_s << u"«» no es una masa."_s;
    QTest::newRow("not a number") << u"Foco\tnan\t1"_s << u"«nan» no es una masa."_s;
    QTest::newRow("endless") << u"Foco\t1e99\t1"_s << u"«1e99» no es una masa."_s;
    QTest::newRow("groups") << u"Foco\t1.234,5\t1"_s << u"«1.234,5» no es una masa."_s;
    QTest::newRow("two readings") << u"Foco\t1.200\t1"_s
                                  << u"«1.200» puede ser una masa con decimales o de miles."_s;
    QTest::newRow("two readings, comma")
        << u"Foco\t12,500 kg\t1"_s << u"«12,500 kg» puede ser una masa con decimales o de miles."_s;
    QTest::newRow("negative") << u"Foco\t-5\t1"_s << u"«-5» no es una masa de 0 a 50000 kg."_s;
    QTest::newRow("too much") << u"Foco\t50001\t1"_s << u"«50001» no es una masa de 0 a 50000 kg."_s;
    QTest::newRow("no place") << u"Foco\t5\tcentro"_s << u"«centro» no es una posición."_s;
    QTest::newRow("beside the truss") << u"Foco\t5\t6,02"_s << u"«6,02» está fuera del truss."_s;
    QTest::newRow("beside it on the left") << u"Foco\t5\t-7"_s << u"«-7» está fuera del truss."_s;
    QTest::newRow("place holders") << u"%1\t%2 %1\t1"_s << u"«%2 %1» no es una masa."_s;
}

void PastedLoadsTest::faultyRow_isToldAndNoLoad()
{
    QFETCH(QString, row);
    QFETCH(QString, fault);
    const PastedLoads pasted = PastedLoads::of(row, LENGTH);
    QVERIFY(pasted.loads.isEmpty());
    QCOMPARE(pasted.faults, QStringList(u"Fila 1: "_s + fault));
}

void PastedLoadsTest::goodRowsAmongFaultyOnes_areLoads()
{
    const PastedLoads pasted = PastedLoads::of(u"Nombre\tkg\tm\nA\t1\t0\nB\tx\t0\nC\t3\t0"_s, LENGTH);
    QCOMPARE(pasted.loads.size(), 2);
    QCOMPARE(pasted.loads.at(0).name, u"A"_s);
    QCOMPARE(pasted.loads.at(1).name, u"C"_s);
    QCOMPARE(pasted.faults.size(), 2);
    QVERIFY(pasted.faults.at(0).startsWith(u"Fila 1: "_s));
    QVERIFY(pasted.faults.at(1).startsWith(u"Fila 3: "_s));
}

void PastedLoadsTest::lineEnds_areThoseOfAnySystem()
{
    for (const QString& end : {u"\n"_s, u"\r\n"_s, u"\r"_s}) {
        const PastedLoads pasted = PastedLoads::of(u"A\t1\t0"_s + end + u"B\t2\t1"_s + end, LENGTH);
        QCOMPARE(pasted.faults, QStringList());
        QCOMPARE(pasted.loads.size(), 2);
        QCOMPARE(pasted.loads.at(1).positionX, 7.0F);
    }
}

void PastedLoadsTest::emptyRows_arePassedOver()
{
    const PastedLoads pasted = PastedLoads::of(u"\n\t\t\nA\t1\t0\n \n\n"_s, LENGTH);
    QCOMPARE(pasted.loads.size(), 1);
    QCOMPARE(pasted.faults, QStringList());
    QVERIFY(PastedLoads::of({}, LENGTH).loads.isEmpty());
    QVERIFY(PastedLoads::of({}, LENGTH).faults.isEmpty());
}

void PastedLoadsTest::quotedCell_isReadAsTheSpreadsheetMeantIt()
{
    const PastedLoads pasted =
        PastedLoads::of(u"\"dos\nlíneas y \"\"comillas\"\"\"\t\"1\"\t0\nB\t2\t1"_s, LENGTH);
    QCOMPARE(pasted.faults, QStringList());
    QCOMPARE(pasted.loads.at(0).name, u"dos líneas y \"comillas\""_s);
    QCOMPARE(pasted.loads.at(1).name, u"B"_s);
}

void PastedLoadsTest::quotationMarkOfInches_isPartOfTheName()
{
    const PastedLoads pasted = PastedLoads::of(u"\"15 pulgadas\t1\t0\nPA 15\"\t2\t0\n\"\"\t3\t0"_s, LENGTH);
    QCOMPARE(pasted.faults, QStringList());
    QCOMPARE(pasted.loads.at(0).name, u"\"15 pulgadas"_s);
    QCOMPARE(pasted.loads.at(1).name, u"PA 15\""_s);
    QCOMPARE(pasted.loads.at(2).name, ActiveLoad().name);
}

void PastedLoadsTest::name_isKeptAndAnEmptyOneIsTheUsual()
{
    QCOMPARE(PastedLoads::of(u" 50 % %1 <b> \t1\t0"_s, LENGTH).loads.at(0).name, u"50 % %1 <b>"_s);
    QCOMPARE(PastedLoads::of(u"\t1\t0"_s, LENGTH).loads.at(0).name, ActiveLoad().name);
}

void PastedLoadsTest::longCell_isQuotedInPart()
{
    const QString fault = rowOf(QString(5000, u'x'), u"0"_s).faults.constFirst();
    QCOMPARE(fault, u"Fila 1: «"_s + QString(24, u'x') + u"…» no es una masa."_s);
}

void PastedLoadsTest::trussWithoutLength_takesOnlyTheMiddle()
{
    QCOMPARE(PastedLoads::of(u"A\t1\t0"_s, 0.0F).loads.at(0).positionX, 0.0F);
    QCOMPARE(PastedLoads::of(u"A\t1\t1"_s, 0.0F).faults.size(), 1);
    QCOMPARE(PastedLoads::of(u"A\t1\t1"_s, std::numeric_limits<float>::quiet_NaN()).faults.size(), 1);
}

QTEST_APPLESS_MAIN(PastedLoadsTest)
#include "tst_pastedloads.moc"
