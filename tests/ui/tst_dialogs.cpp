#include "support/Dialogs.h"
#include "support/Window.h"
#include "ui/DynamicFactorDialog.h"
#include "ui/InfoWindow.h"

#include <QHeaderView>
#include <QStackedWidget>
#include <QTableWidget>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <functional>
#include <optional>

using namespace Qt::StringLiterals;

namespace
{

const QColor RED(0xFF, 0x50, 0x50);
const QColor GREEN(0x39, 0xFF, 0x14);

/// A dialog over the engine's motors, and its parts.
struct FactorDialog
{
    DynamicFactorDialog dialog{LoadLogic::MotorList, nullptr};
    QTableWidget* table = dialog.findChild<QTableWidget*>();
    QList<QLabel*> labels = dialog.findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly);

    [[nodiscard]] QString cell(int row, int column) const
    {
        return table->item(row, column)->text();
    }
};

/// Makes motor `index` carry `staticLoad` [kg] as far as the dialog can see.
void carry(qsizetype index, float staticLoad)
{
    LoadLogic::MotorList[index].staticLoad = staticLoad;
}

} // namespace

/// The dynamic-factor dialog, the legal information, and the reset.
class TestDialogs : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_test.emplace();
    }
    void cleanup()
    {
        m_test.reset();
    }

    void factor_isLaidOut();
    void factor_explanationIsExact();
    void factor_table_listsEachMotor();
    void factor_rowOfAMotor();
    void factor_atCapacity_isWithin();
    void factor_aboveCapacity_exceeds();
    void factor_withoutName_showsTheId();
    void factor_namesArePlain();
    void factor_summaryAddsUp();
    void factor_withoutMotors_isEmpty();
    void factor_calculatesFirst();
    void factor_closesByItsButton();
    void factor_closesWithEscape();
    void info_isLaidOut();
    void info_textIsExact();
    void info_isModalAndGoes();
    void info_closesWithEscape();
    void reset_asks();
    void reset_answeredNo_changesNothing_data();
    void reset_answeredNo_changesNothing();
    void reset_makesAFreshProject();
    void reset_writesTheFields();
    void reset_keepsWhatIsNotTheProjects();
    void reset_showsTheDesignPage();
    void reset_thenUndo_goesBackBeforeTheLastEdit();
    void windowDestroyedUnderADialog_doesNotCrash();

private:
    void reset()
    {
        const Support::BoxAnswer yes(QMessageBox::Yes);
        m_test->window.onResetProjectClicked();
        QVERIFY(yes.given());
    }

    std::optional<Support::TestWindow> m_test;
};

void TestDialogs::factor_isLaidOut()
{
    const FactorDialog f;
    QCOMPARE(f.dialog.windowTitle(), u"Factor Dinámico de Arranque/Frenado"_s);
    QCOMPARE(f.dialog.minimumSize(), QSize(700, 450));
    QCOMPARE(f.dialog.styleSheet(),
             u"background-color: #1E1E1E; color: #E0E0E0; font-family: 'Segoe UI', Arial;"_s);
    const auto* layout = qobject_cast<QVBoxLayout*>(f.dialog.layout());
    QCOMPARE(layout->contentsMargins(), QMargins(20, 20, 20, 20));
    QCOMPARE(layout->count(), 4);
    QCOMPARE(layout->itemAt(1)->widget(), f.table);
    const auto* close = qobject_cast<QPushButton*>(layout->itemAt(3)->widget());
    QCOMPARE(close->text(), u"CERRAR"_s);
    QCOMPARE(layout->itemAt(3)->alignment(), Qt::AlignRight);
    QCOMPARE(close->cursor().shape(), Qt::PointingHandCursor);
    QCOMPARE(close->styleSheet(), u"QPushButton { background-color: #444; color: white; border: none; "
                                  u"padding: 8px 20px; border-radius: "
                                  "4px; font-weight: bold; }QPushButton:hover { background-color: #555; }"_s);
}

void TestDialogs::factor_explanationIsExact()
{
    const FactorDialog f;
    const QLabel* label = f.labels.at(0);
    QCOMPARE(label->text(),
             u"⚠️ <b>Factor Dinámico de Seguridad (DGUV V17/18)</b><br>Según la normativa para eventos "
             u"sobre personas, "
             "se aplica un factor <b>1.25 (25%)</b> adicional sobre la carga estática para cubrir esfuerzos "
             "durante el "
             "arranque y parada de los motores.<br><i>Tolerancia Cero: Los motores deben soportar este valor "
             "dinámico.</i>"_s);
    QCOMPARE(label->textFormat(), Qt::RichText);
    QVERIFY(label->wordWrap());
    QCOMPARE(
        label->styleSheet(),
        u"color: #FFAF00; font-size: 12px; padding: 10px; border: 1px solid #FFAF00; border-radius: 4px; "
        "background: rgba(255,175,0,0.08);"_s);
}

void TestDialogs::factor_table_listsEachMotor()
{
    const FactorDialog f;
    const QStringList expected{
        u"Motor"_s,          u"Modelo"_s, u"Carga Estática (kg)"_s, u"Carga Dinámica (kg)"_s,
        u"Capacidad (kg)"_s, u"Estado"_s};
    QCOMPARE(f.table->columnCount(), 6);
    for (int column = 0; column < 6; ++column) {
        QCOMPARE(f.table->horizontalHeaderItem(column)->text(), expected.at(column));
        QCOMPARE(f.table->horizontalHeader()->sectionResizeMode(column), QHeaderView::Stretch);
    }
    QVERIFY(f.table->horizontalHeader()->stretchLastSection());
    QCOMPARE(f.table->editTriggers(), QAbstractItemView::NoEditTriggers);
    QCOMPARE(f.table->selectionMode(), QAbstractItemView::NoSelection);
    QCOMPARE(f.table->styleSheet(),
             u"QTableWidget { background-color: #2D2D2D; border: 1px solid #444; gridline-color: #444; "
             "}QHeaderView::section { background-color: #333; color: #00BFFF; font-weight: bold; border: 1px "
             "solid "
             "#444; padding: 6px; }QTableWidget::item { padding: 6px; }"_s);
}

void TestDialogs::factor_rowOfAMotor()
{
    carry(0, 100.0F);
    const FactorDialog f;
    QCOMPARE(f.table->rowCount(), 2);
    const QStringList expected{u"Motor"_s, u"1000 kg"_s, u"100.0"_s, u"125.0"_s, u"1000"_s, u"✅ OK"_s};
    for (int column = 0; column < 6; ++column) {
        QCOMPARE(f.cell(0, column), expected.at(column));
        QCOMPARE(f.table->item(0, column)->textAlignment(), static_cast<int>(Qt::AlignCenter));
    }
    QCOMPARE(f.table->item(0, 0)->foreground().style(), Qt::NoBrush); // as the theme has it
}

// 800 × 1.25 = 1000, the capacity
void TestDialogs::factor_atCapacity_isWithin()
{
    carry(0, 800.0F);
    const FactorDialog f;
    QCOMPARE(f.cell(0, 3), u"1000.0"_s);
    QCOMPARE(f.cell(0, 5), u"✅ OK"_s);
    QCOMPARE(f.table->item(0, 3)->foreground().color(), GREEN);
    QCOMPARE(f.table->item(0, 5)->foreground().color(), GREEN);
    QCOMPARE(f.table->item(0, 5)->background().style(), Qt::NoBrush);
}

// 800.1 × 1.25 = 1000.125
void TestDialogs::factor_aboveCapacity_exceeds()
{
    carry(0, 800.1F);
    const FactorDialog f;
    QCOMPARE(f.cell(0, 3), u"1000.1"_s);
    QCOMPARE(f.cell(0, 5), u"⚠️ EXCEDE"_s);
    QCOMPARE(f.table->item(0, 3)->foreground().color(), RED);
    QCOMPARE(f.table->item(0, 5)->foreground().color(), RED);
    QCOMPARE(f.table->item(0, 5)->background().color(), QColor(68, 0, 0));
    QCOMPARE(f.table->item(0, 3)->background().style(), Qt::NoBrush);
}

void TestDialogs::factor_withoutName_showsTheId()
{
    LoadLogic::MotorList[1].modelName.clear();
    const FactorDialog f;
    QCOMPARE(f.cell(1, 0), u"M2"_s);
}

void TestDialogs::factor_namesArePlain()
{
    LoadLogic::MotorList[1].modelName = u"<b>50%1</b>"_s;
    const FactorDialog f;
    QCOMPARE(f.cell(1, 0), u"<b>50%1</b>"_s);
}

// 100 + 60 = 160, 160 × 1.25 = 200. The text names another factor, as it always has.
void TestDialogs::factor_summaryAddsUp()
{
    carry(0, 100.0F);
    carry(1, 60.0F);
    const FactorDialog f;
    QCOMPARE(f.labels.at(1)->text(),
             u"Total Estático: 160.0 kg  |  Total Dinámico (×1.15): 200.0 kg  |  Diferencia: +40.0 kg"_s);
    QCOMPARE(f.labels.at(1)->styleSheet(),
             u"color: #00BFFF; font-size: 12px; font-weight: bold; padding: 8px;"_s);
}

void TestDialogs::factor_withoutMotors_isEmpty()
{
    LoadLogic::MotorList.clear();
    const FactorDialog f;
    QCOMPARE(f.table->rowCount(), 0);
    QCOMPARE(f.labels.at(1)->text(),
             u"Total Estático: 0.0 kg  |  Total Dinámico (×1.15): 0.0 kg  |  Diferencia: +0.0 kg"_s);
}

void TestDialogs::factor_calculatesFirst()
{
    std::swap(LoadLogic::MotorList[0].positionX, LoadLogic::MotorList[1].positionX);
    LoadLogic::MotorList[0].modelName = u"Derecho"_s;
    QStringList names;
    const Support::Answer<DynamicFactorDialog> look([&names](DynamicFactorDialog& dialog) {
        const auto* table = dialog.findChild<QTableWidget*>();
        for (int row = 0; row < table->rowCount(); ++row)
            names.append(table->item(row, 0)->text());
        dialog.reject();
    });
    m_test->window.onDynamicFactorClicked();
    QVERIFY(look.given());
    QCOMPARE(names, QStringList({u"Motor"_s, u"Derecho"_s})); // left to right
}

void TestDialogs::factor_closesByItsButton()
{
    QWidget* parent = nullptr;
    const Support::Answer<DynamicFactorDialog> press([&parent](DynamicFactorDialog& dialog) {
        parent = dialog.parentWidget();
        QVERIFY(dialog.isModal());
        dialog.findChild<QPushButton*>()->click();
    });
    m_test->button(u"⚡ FACTOR DINÁMICO"_s)->click();
    QVERIFY(press.given());
    QCOMPARE(parent, &m_test->window);
    QVERIFY(m_test->window.findChild<DynamicFactorDialog*>() == nullptr);
}

void TestDialogs::factor_closesWithEscape()
{
    const Support::Answer<DynamicFactorDialog> escape(
        [](DynamicFactorDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    m_test->window.onDynamicFactorClicked();
    QVERIFY(escape.given());
    QVERIFY(m_test->window.findChild<DynamicFactorDialog*>() == nullptr);
}

void TestDialogs::info_isLaidOut()
{
    const InfoWindow info;
    QCOMPARE(info.windowTitle(), u"Información Legal y Normativa"_s);
    QCOMPARE(info.minimumSize(), QSize(600, 550));
    QCOMPARE(info.styleSheet(),
             u"background-color: #1E1E1E; color: #E0E0E0; font-family: 'Segoe UI', Arial;"_s);
    QCOMPARE(info.layout()->contentsMargins(), QMargins(20, 20, 20, 20));
    const auto* browser = info.findChild<QTextBrowser*>();
    QVERIFY(browser->isReadOnly());
    QVERIFY(browser->openExternalLinks());
    QCOMPARE(browser->styleSheet(),
             u"background-color: #2D2D2D; border: 1px solid #444; border-radius: 4px; padding: "
             "10px; line-height: 1.5;"_s);
    const auto* close = qobject_cast<QPushButton*>(info.layout()->itemAt(1)->widget());
    QCOMPARE(close->text(), u"CERRAR"_s);
    QCOMPARE(info.layout()->itemAt(1)->alignment(), Qt::AlignRight);
    QCOMPARE(close->styleSheet(),
             u"QPushButton { background-color: #444; color: white; border: none; padding: 8px 20px; "
             u"border-radius: "
             "4px; font-weight: bold; }QPushButton:hover { background-color: #555; }QPushButton:pressed { "
             "background-color: #333; }"_s);
}

void TestDialogs::info_textIsExact()
{
    const InfoWindow info;
    const QString expected = u"1. METODOLOGÍA DE CÁLCULO\n"
                             "Esta aplicación emplea el Principio de Superposición y la Teoría de Vigas "
                             "Continuas de Euler-Bernoulli para "
                             "el análisis estático. Las cargas se procesan mediante discretización para "
                             "obtener el Momento Flector y las "
                             "Reacciones de Apoyo. Estos cálculos son modelos matemáticos teóricos basados "
                             "en condiciones ideales.\n"
                             "2. MARCO NORMATIVO Y SEGURIDAD\n"
                             "Los algoritmos aplican coeficientes de seguridad basados en estándares como el "
                             "Eurocódigo 9 y la normativa "
                             "DGUV V17/18. Sin embargo, el cumplimiento normativo final de un montaje "
                             "depende enteramente de la ejecución "
                             "física y la certificación de los elementos de elevación utilizados.\n"
                             "3. EXENCIÓN DE RESPONSABILIDAD (DISCLAIMER)\n"
                             "AVISO CRÍTICO: El uso de estos cálculos en montajes reales es responsabilidad "
                             "exclusiva y absoluta del "
                             "usuario."_s;
    auto* browser = info.findChild<QTextBrowser*>();
    QCOMPARE(browser->toPlainText(), expected);
    QTextCursor warning = browser->document()->find(u"AVISO"_s);
    QCOMPARE(warning.charFormat().foreground().color(), QColor(0xFF, 0xAF, 0x00));
    QVERIFY(warning.charFormat().fontItalic());
    QVERIFY(warning.charFormat().fontWeight() >= QFont::Bold);
    QCOMPARE(browser->document()->find(u"MARCO"_s).charFormat().foreground().color(),
             QColor(0x00, 0xBF, 0xFF));
    QVERIFY(browser->document()->find(u"Euler"_s).charFormat().fontWeight() >= QFont::Bold);
}

void TestDialogs::info_isModalAndGoes()
{
    const Support::Answer<InfoWindow> press([this](InfoWindow& info) {
        QVERIFY(info.isModal());
        QCOMPARE(info.parentWidget(), &m_test->window);
        info.findChild<QPushButton*>()->click();
    });
    m_test->button(u"⚖️ INFO LEGAL"_s)->click();
    QVERIFY(press.given());
    QVERIFY(m_test->window.findChild<InfoWindow*>() == nullptr);
}

void TestDialogs::info_closesWithEscape()
{
    const Support::Answer<InfoWindow> escape(
        [](InfoWindow& info) { QTest::keyClick(&info, Qt::Key_Escape); });
    m_test->window.onInfoClicked();
    QVERIFY(escape.given());
}

void TestDialogs::reset_asks()
{
    const Support::BoxAnswer no(QMessageBox::No);
    m_test->button(u"🔄 RESTAURAR PROYECTO"_s)->click();
    QVERIFY(no.given());
    QCOMPARE(no.title, u"Restaurar Proyecto"_s);
    QCOMPARE(no.text,
             u"¿Estás seguro de que deseas resetear el proyecto?\nSe perderán todos los motores, cargas y "
             "pantallas actuales."_s);
    QCOMPARE(no.icon, QMessageBox::Question);
    QCOMPARE(no.buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(no.defaultButton, QMessageBox::No);
    QCOMPARE(no.parent.data(), &m_test->window);
    QVERIFY(m_test->window.findChild<QMessageBox*>() == nullptr);
}

void TestDialogs::reset_answeredNo_changesNothing_data()
{
    QTest::addColumn<int>("button");
    QTest::newRow("no") << static_cast<int>(QMessageBox::No);
    QTest::newRow("closed") << static_cast<int>(QMessageBox::NoButton);
}

void TestDialogs::reset_answeredNo_changesNothing()
{
    QFETCH(int, button);
    m_test->setText("trussLength", u"20"_s);
    const int id = m_test->addScreen();
    const Support::BoxAnswer no(static_cast<QMessageBox::StandardButton>(button));
    m_test->window.onResetProjectClicked();
    QVERIFY(no.given());
    QCOMPARE(LoadLogic::TrussLength, 20.0F);
    QCOMPARE(LoadLogic::ActiveLoads.size(), 8);
    QCOMPARE(m_test->window.selectedLoadId, id);
    QCOMPARE(m_test->text("trussLength"), u"20"_s);
}

void TestDialogs::reset_makesAFreshProject()
{
    m_test->setText("trussLength", u"20"_s);
    m_test->setText("trussWeight", u"12"_s);
    m_test->setText("limitCPL", u"900"_s);
    m_test->setText("screenWidth", u"9"_s);
    m_test->setText("bumperWeight", u"9"_s);
    m_test->window.onAddMotorClicked();
    m_test->addScreen();
    reset();
    QCOMPARE(LoadLogic::TrussLength, 12.0F);
    QCOMPARE(LoadLogic::TrussSelfWeight, 8.4F);
    QCOMPARE(LoadLogic::Limit_CPL, 1600.0F);
    QCOMPARE(LoadLogic::Screen_Width, 4.0F);
    QCOMPARE(LoadLogic::Screen_Height, 3.0F);
    QCOMPARE(LoadLogic::Screen_Weight_M2, 40.0F);
    QCOMPARE(LoadLogic::Bumper_Weight_Per_Meter, 10.0F);
    QCOMPARE(LoadLogic::LED_TotalWeight, 0.0F);
    QCOMPARE(LoadLogic::TrussStress_Percentage, 3.15F); // 151.2 of 4800
    QVERIFY(!LoadLogic::isUnstable);
    QVERIFY(LoadLogic::ActiveLoads.isEmpty());
    QCOMPARE(LoadLogic::MotorList.size(), 2);
    QCOMPARE(LoadLogic::MotorList.at(0).positionX, 0.0F);
    QCOMPARE(LoadLogic::MotorList.at(1).positionX, 12.0F);
    QCOMPARE(LoadLogic::MotorList.at(0).id, 1);
    QCOMPARE(LoadLogic::MotorList.at(1).selfWeight, 50.0F);
    QCOMPARE(m_test->window.selectedLoadId, -1);
    QVERIFY(m_test->label("hyperstaticWarning")->isHidden());
}

void TestDialogs::reset_writesTheFields()
{
    for (const char* name : {"trussLength", "trussWeight", "limitCPL", "screenWidth", "screenHeight",
                             "screenWeightM2", "bumperWeight", "cablePercent", "newLoadMass"})
        m_test->setText(name, u"x"_s);
    reset();
    QCOMPARE(m_test->text("trussLength"), u"12"_s);
    QCOMPARE(m_test->text("trussWeight"), u"8.4"_s);
    QCOMPARE(m_test->text("limitCPL"), u"1600"_s);
    QCOMPARE(m_test->text("screenWidth"), u"4.00"_s);
    QCOMPARE(m_test->text("screenHeight"), u"3.00"_s);
    QCOMPARE(m_test->text("screenWeightM2"), u"40.0"_s);
    QCOMPARE(m_test->text("bumperWeight"), u"10.0"_s);
    QCOMPARE(m_test->text("cablePercent"), u"7.0"_s);
    QCOMPARE(m_test->text("newLoadMass"), u"5"_s);
    QCOMPARE(m_test->label("screenWeight")->text(), u"Peso Total Array: 0.0 kg (+7.0% cable)"_s);
    for (const char* name : {"trussLength", "screenWidth", "newLoadMass"})
        QCOMPARE(m_test->field(name)->styleSheet(), QString());
    QCOMPARE(m_test->button(u"AÑADIR PANTALLA"_s)->objectName(), u"addScreenButton"_s);
}

void TestDialogs::reset_keepsWhatIsNotTheProjects()
{
    m_test->window.onAddTab();
    m_test->setText("newLoadName", u"Mi carga"_s);
    m_test->box("loadCount")->setValue(7);
    m_test->box("screenCount")->setValue(8);
    const LoadLogic::ProjectState other = m_test->window.projects.constFirst();
    reset();
    QCOMPARE(m_test->text("newLoadName"), u"Mi carga"_s);
    QCOMPARE(m_test->box("loadCount")->value(), 7);
    QCOMPARE(m_test->box("screenCount")->value(), 8);
    QCOMPARE(m_test->tabBar()->count(), 2);
    QCOMPARE(m_test->tabBar()->tabText(1), u"Proyecto 2"_s);
    QCOMPARE(m_test->window.projects.constFirst().motors.size(), other.motors.size());
    QCOMPARE(m_test->undoDepth(), 0);
    QCOMPARE(LoadLogic::MotorList.at(0).selfWeight, 50.0F); // no longer the 25 kg of a new tab
}

void TestDialogs::reset_showsTheDesignPage()
{
    auto* pages = qobject_cast<QStackedWidget*>(m_test->window.centralWidget());
    m_test->window.onGenerateReportClicked();
    QCOMPARE(pages->currentIndex(), 1);
    reset();
    QCOMPARE(pages->currentIndex(), 0);
}

void TestDialogs::reset_thenUndo_goesBackBeforeTheLastEdit()
{
    m_test->setText("trussLength", u"20"_s);
    m_test->setText("trussLength", u"30"_s);
    reset();
    m_test->window.undo();
    QCOMPARE(LoadLogic::TrussLength, 20.0F);
}

void TestDialogs::windowDestroyedUnderADialog_doesNotCrash()
{
    using Open = std::function<void(MainWindow&)>;
    const QList<Open> opens{
        [](MainWindow& w) { w.onInfoClicked(); },
        [](MainWindow& w) { w.onDynamicFactorClicked(); },
        [](MainWindow& w) { w.onResetProjectClicked(); },
        [](MainWindow& w) { w.onRenameTab(0); },
        [](MainWindow& w) {
            auto* tabs = w.findChild<QTabBar*>();
            emit tabs->customContextMenuRequested(tabs->tabRect(0).center());
        },
    };
    for (const Open& open : opens) {
        const QPointer<MainWindow> window = new MainWindow;
        const Support::Answer<QWidget> destroy([window](QWidget& /*open*/) { delete window; });
        open(*window);
        QVERIFY(destroy.given());
        QVERIFY(window.isNull());
    }
}

QTEST_MAIN(TestDialogs)
#include "tst_dialogs.moc"
