#include "canvas/TrussView.h"
#include "ui/Boxes.h"
#include "ui/ControlsGroup.h"
#include "ui/DynamicFactorDialog.h"
#include "ui/InfoWindow.h"
#include "ui/LedGroup.h"
#include "ui/MainWindow.h"
#include "ui/PanelSync.h"
#include "ui/TrussGroup.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QScopedValueRollback>
#include <QStackedWidget>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace
{

/// The guide beside the program, else the one in the working directory, there or not.
QString guidePath()
{
    const QString name = u"/user_guide.html"_s;
    const QString installed = QCoreApplication::applicationDirPath() + name;
    return QFile::exists(installed) ? installed : QDir::currentPath() + name;
}

} // namespace

void MainWindow::onResetProjectClicked()
{
    if (!Boxes::confirm(this, u"Restaurar Proyecto"_s,
                        u"¿Estás seguro de que deseas resetear el proyecto?\n"
                        "Se perderán todos los motores, cargas y pantallas actuales."_s))
        return;

    keepResetProject();
    LoadLogic::Reset();
    LoadLogic::AddMotor(0.0F);
    LoadLogic::AddMotor(LoadLogic::TrussLength);
    selectedLoadId = -1;
    m_panels->forget();
    fillResetFields();

    m_pages->setCurrentIndex(0);
    updateCalculations();
    m_canvas->update();
}

void MainWindow::fillResetFields()
{
    const QScopedValueRollback<bool> filling(isRestoring, true);
    m_truss->setTexts(u"12"_s, u"8.4"_s, u"1600"_s);
    m_led->setTexts({u"4.00"_s, u"3.00"_s, u"40.0"_s, u"10.0"_s, u"7.0"_s});
    m_led->showWeight(0.0F);
    m_led->resetButton();
    m_controls->setMassText(u"5"_s);
}

void MainWindow::onOpenUserGuideClicked()
{
    const QString path = guidePath();
    if (QFile::exists(path))
        QDesktopServices::openUrl(QUrl::fromLocalFile(path));
    else
        Boxes::say(this, QMessageBox::Warning, u"Error"_s, u"No se pudo encontrar el archivo: "_s + path);
}

void MainWindow::onInfoClicked()
{
    // The window may be closed, and the dialog with it, while it is open.
    const QPointer<InfoWindow> info = new InfoWindow(this);
    info->exec();
    delete info;
}

void MainWindow::onDynamicFactorClicked()
{
    LoadLogic::CalcularReacciones();
    auto* dialog = new DynamicFactorDialog(LoadLogic::MotorList, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->exec();
}
