#include "app/Appearance.h"
#include "canvas/CanvasMenu.h"
#include "support/Contrast.h"
#include "support/Dialogs.h"
#include "support/Warnings.h"

#include <QComboBox>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QMainWindow>
#include <QStyledItemDelegate>
#include <QTemporaryDir>
#include <QToolTip>
#include <QTreeView>

#include <memory>

using namespace Qt::StringLiterals;
using Support::contrast;
using Support::mostFrequentColour;
using Support::strongestContrast;

namespace
{

/// The tool tip that is shown, or nothing.
QWidget* shownTip()
{
    const auto widgets = QApplication::topLevelWidgets();
    for (QWidget* widget : widgets) {
        if (widget->inherits("QTipLabel") && widget->isVisible())
            return widget;
    }
    return nullptr;
}

/// What the list of `dialog` shows in its column of kinds for each file, in the list's order.
QStringList shownKinds(const QFileDialog& dialog)
{
    struct Reader : QStyledItemDelegate
    {
        using QStyledItemDelegate::initStyleOption;
    };
    const auto* list = dialog.findChild<QTreeView*>(u"treeView"_s);
    QStringList kinds;
    for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row) {
        const QModelIndex index = list->model()->index(row, 2, list->rootIndex());
        QStyleOptionViewItem option;
        // A protected member of any delegate, called as the view's drawing does.
        (static_cast<QStyledItemDelegate*>(list->itemDelegateForColumn(2))->*(&Reader::initStyleOption))(
            &option, index);
        kinds.append(option.text);
    }
    kinds.sort();
    return kinds;
}

} // namespace

/// What Qt opens over the program's widgets can be read.
class TestLegibility : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        Support::failOnWarnings();
        m_window = std::make_unique<QMainWindow>();
        m_window->show();
    }
    void cleanup()
    {
        m_window.reset();
    }

    void menu_showsItsCurrentEntry_data();
    void menu_showsItsCurrentEntry();
    void menu_hasAFrame();
    void menuOfTheCanvas_isOneOfThem();
    void tip_isReadable_data();
    void tip_isReadable();
    void tipThatMoves_staysReadable();
    void comboList_showsItsCurrentEntry();
    void fileDialog_namesKindsInSpanish();

private:
    std::unique_ptr<QMainWindow> m_window;
};

void TestLegibility::menu_showsItsCurrentEntry_data()
{
    QTest::addColumn<QString>("sheet");
    QTest::newRow("of the dark window") << QString();
    QTest::newRow("of a white page") << u"background-color: white;"_s;
    QTest::newRow("of a column without background") << u"background: transparent;"_s;
}

void TestLegibility::menu_showsItsCurrentEntry()
{
    QFETCH(QString, sheet);
    m_window->setStyleSheet(sheet);
    QMenu menu(m_window.get());
    QAction* first = menu.addAction(u"Editar"_s);
    QAction* second = menu.addAction(u"Eliminar"_s);
    menu.popup(QPoint(0, 0));
    menu.setActiveAction(second);
    const QImage picture = menu.grab().toImage();
    const QRect plain = menu.actionGeometry(first);
    const QRect current = menu.actionGeometry(second);
    const QColor plainGround = mostFrequentColour(picture, plain);
    const QColor currentGround = mostFrequentColour(picture, current);
    QVERIFY(contrast(plainGround, currentGround) >= 3.0);
    QVERIFY(strongestContrast(picture, plain.adjusted(3, 3, -3, -3), plainGround) >= 4.5);
    QVERIFY(strongestContrast(picture, current.adjusted(3, 3, -3, -3), currentGround) >= 4.5);
}

void TestLegibility::menu_hasAFrame()
{
    QMenu menu(m_window.get());
    menu.addAction(u"Editar"_s);
    menu.popup(QPoint(0, 0));
    const QImage picture = menu.grab().toImage();
    const QColor ground = mostFrequentColour(picture, picture.rect());
    for (const QPoint& edge : {QPoint(picture.width() / 2, 0), QPoint(0, picture.height() / 2),
                               QPoint(picture.width() - 1, picture.height() / 2)})
        QVERIFY(contrast(picture.pixelColor(edge), ground) >= 3.0);
}

void TestLegibility::menuOfTheCanvas_isOneOfThem()
{
    QString sheet;
    const Support::Answer<QMenu> look([&sheet](QMenu& menu) {
        sheet = menu.styleSheet();
        menu.close();
    });
    QCOMPARE(CanvasMenu::choose(m_window.get(), {u"Eliminar Carga"_s}, QPoint(0, 0), [] {}), -1);
    QVERIFY(look.given());
    QVERIFY(sheet.contains(u"QMenu::item:selected"_s));
}

void TestLegibility::tip_isReadable_data()
{
    menu_showsItsCurrentEntry_data();
}

void TestLegibility::tip_isReadable()
{
    QFETCH(QString, sheet);
    QLabel under(u"Motor"_s);
    m_window->setCentralWidget(&under);
    under.setStyleSheet(sheet);
    QToolTip::showText(QPoint(5, 5), u"Motor de la izquierda"_s, &under);
    QTRY_VERIFY(shownTip() != nullptr);
    const QImage picture = shownTip()->grab().toImage();
    const QColor ground = mostFrequentColour(picture, picture.rect());
    QVERIFY(ground.alpha() == 255 && contrast(ground, Qt::white) >= 7.0);
    QVERIFY(strongestContrast(picture, picture.rect().adjusted(2, 2, -2, -2), ground) >= 4.5);
    QToolTip::hideText();
    QTRY_VERIFY(shownTip() == nullptr);
    m_window->takeCentralWidget();
}

// From one widget to the next the same tip is used again, with the sheet of the other.
void TestLegibility::tipThatMoves_staysReadable()
{
    QWidget around;
    QLabel dark(u"Motor"_s, &around);
    QLabel white(u"Carga"_s, &around);
    white.setStyleSheet(u"background-color: white;"_s);
    around.show();
    QToolTip::showText(QPoint(5, 5), u"Motor de la izquierda"_s, &dark);
    QTRY_VERIFY(shownTip() != nullptr);
    QToolTip::showText(QPoint(25, 5), u"Carga de la derecha"_s, &white);
    QTRY_VERIFY(shownTip() != nullptr);
    const QImage picture = shownTip()->grab().toImage();
    const QColor ground = mostFrequentColour(picture, picture.rect());
    QVERIFY(contrast(ground, Qt::white) >= 7.0);
    QVERIFY(strongestContrast(picture, picture.rect().adjusted(2, 2, -2, -2), ground) >= 4.5);
    QToolTip::hideText();
}

void TestLegibility::comboList_showsItsCurrentEntry()
{
    QComboBox box;
    box.addItems({u"Rigging Project (*.rig)"_s, u"JSON File (*.json)"_s});
    box.resize(300, 30);
    box.show();
    box.showPopup();
    QAbstractItemView* list = box.view();
    QTRY_VERIFY(list->isVisible());
    const QImage picture = list->viewport()->grab().toImage();
    const QRect current = list->visualRect(list->model()->index(0, 0));
    const QRect other = list->visualRect(list->model()->index(1, 0));
    const QColor ground = mostFrequentColour(picture, current);
    QVERIFY(contrast(ground, mostFrequentColour(picture, other)) >= 3.0);
    QVERIFY(strongestContrast(picture, current.adjusted(2, 2, -2, -2), ground) >= 4.5);
    box.hidePopup();
}

void TestLegibility::fileDialog_namesKindsInSpanish()
{
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(u"sub"_s));
    for (const QString& name : {u"a.rig"_s, u"b.json"_s, u"c"_s}) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    QFileDialog dialog(m_window.get(), QString(), folder.path());
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setViewMode(QFileDialog::Detail);
    dialog.show();
    QTRY_COMPARE(shownKinds(dialog), QStringList({u"Archivo"_s, u"Archivo JSON"_s, u"Carpeta"_s,
                                                  u"Proyecto de Velmora Master"_s}));
}

int main(int argc, char* argv[])
{
    Appearance::chooseStyle();
    QApplication application(argc, argv);
    Appearance::apply(application);
    TestLegibility test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_legibility.moc"
