#include "support/Window.h"
#include "ui/DynamicFactorDialog.h"

#include <QHelpEvent>
#include <QTableWidget>
#include <QToolTip>

#include <optional>

using namespace Qt::StringLiterals;

namespace
{

const QString LONG_NAME =
    u"Motor de la izquierda <b>del fondo</b> & el de al lado, el que va junto a la torre"_s;

/// What the tip over `point` of `widget` reads, empty where there is none.
QString tipOver(QWidget* widget, const QPoint& point)
{
    QToolTip::hideText();
    if (!QTest::qWaitFor([] { return !QToolTip::isVisible(); }))
        qFatal("the last tip stays");
    QHelpEvent event(QEvent::ToolTip, point, widget->mapToGlobal(point));
    QCoreApplication::sendEvent(widget, &event);
    return QToolTip::isVisible() ? QToolTip::text() : QString();
}

QString plain(const QString& text)
{
    return u"<qt>"_s + text.toHtmlEscaped() + u"</qt>"_s;
}

} // namespace

/// What is cut off for want of room is read in a tool tip.
class TestCutTexts : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_test.emplace();
        m_test->window.resize(1200, 900);
        QVERIFY(m_test->activate());
    }
    void cleanup()
    {
        QToolTip::hideText();
        m_test.reset();
    }

    void titleOfThePanel_isToldWhereItIsCut();
    void field_isToldWhereItIsCut();
    void cellOfATable_isToldWhereItIsCut();

private:
    std::optional<Support::TestWindow> m_test;
};

void TestCutTexts::titleOfThePanel_isToldWhereItIsCut()
{
    const auto title = [this] { return m_test->motorPanel()->findChild<QLabel*>(); };
    m_test->window.showMotorProperties(0);
    QTest::qWait(0);
    QCOMPARE(title()->text(), u"Propiedades Motor (Motor)"_s);
    QCOMPARE(tipOver(title(), QPoint(3, 3)), QString());
    LoadLogic::MotorList[0].modelName = LONG_NAME;
    m_test->window.showMotorProperties(0);
    QCOMPARE(tipOver(title(), QPoint(3, 3)), plain(u"Propiedades Motor ("_s + LONG_NAME + u')'));
}

void TestCutTexts::field_isToldWhereItIsCut()
{
    m_test->window.showMotorProperties(0);
    QTest::qWait(0);
    for (const char* name : {"motorName", "newLoadName"}) {
        QLineEdit* field = m_test->field(name);
        QCOMPARE(tipOver(field, QPoint(3, 3)), QString());
        field->setText(LONG_NAME);
        QCOMPARE(tipOver(field, QPoint(3, 3)), plain(LONG_NAME));
    }
}

void TestCutTexts::cellOfATable_isToldWhereItIsCut()
{
    LoadLogic::MotorList[0].modelName = LONG_NAME;
    DynamicFactorDialog dialog(LoadLogic::MotorList, nullptr);
    dialog.show();
    const auto* table = dialog.findChild<QTableWidget*>();
    const auto tip = [table](int row) {
        return tipOver(table->viewport(), table->visualItemRect(table->item(row, 0)).center());
    };
    QCOMPARE(tip(0), plain(LONG_NAME));
    QCOMPARE(tip(1), QString());
}

QTEST_MAIN(TestCutTexts)
#include "tst_cuttexts.moc"
