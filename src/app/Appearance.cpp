#include "app/Appearance.h"

#include "app/CommandLine.h"
#include "app/Legibility.h"
#include "fields/AccentColour.h"

#include <QApplication>
#include <QColor>
#include <QIcon>
#include <QLibraryInfo>
#include <QLocale>
#include <QPalette>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace
{

const QString FONT_FAMILY = u"SF Pro Display, Helvetica Neue, Arial"_s;

const QString WINDOW_STYLE =
    u"QMainWindow, QWidget { background-color: #121212; color: white; font-family: '%1'; }"_s;

const QString WIDGET_STYLE =
    u"QGroupBox { border: 1px solid #333333; margin-top: 15px; color: " ACCENT_COLOUR "; font-weight: bold; "
    u"border-radius: "
    "4px; }QGroupBox::title { subcontrol-origin: margin; left: 10px; padding: 0 3px; }QLineEdit, QSpinBox { "
    "background-color: #1a1a1a; border: 1px solid #333333; color: white; padding: 4px; border-radius: 2px; "
    "}QSlider::groove:horizontal { border: 1px solid #333333; height: 4px; background: #1a1a1a; margin: 2px "
    "0; "
    "}QSlider::handle:horizontal { background: " ACCENT_COLOUR "; border: 1px solid " ACCENT_COLOUR
    "; width: 14px; margin: -5px "
    "0; "
    "border-radius: 7px; }QProgressBar { border: 1px solid #333; background: #222; border-radius: 3px; "
    "text-align: center; color: white; }QProgressBar::chunk { background-color: #39FF14; width: 10px; "
    "}QTabBar::tab { background: #1a1a1a; color: #888; padding: 6px 15px; border-top-left-radius: 4px; "
    "border-top-right-radius: 4px; border: 1px solid #333; margin-right: 2px; }QTabBar::tab:selected { "
    "background: #333; color: " ACCENT_COLOUR "; border-bottom: none; }"_s;

QPalette darkPalette()
{
    const QColor window(0x12, 0x12, 0x12);
    const QColor accent = accentColour();

    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, Qt::white);
    palette.setColor(QPalette::Base, QColor(0x1a, 0x1a, 0x1a));
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::ToolTipBase, Qt::white);
    palette.setColor(QPalette::ToolTipText, Qt::white);
    palette.setColor(QPalette::Text, Qt::white);
    palette.setColor(QPalette::Button, QColor(0x2d, 0x2d, 0x2d));
    palette.setColor(QPalette::ButtonText, Qt::white);
    palette.setColor(QPalette::BrightText, Qt::red);
    palette.setColor(QPalette::Link, accent);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, Qt::black);
    return palette;
}

/// The texts of Qt's own dialogs, for files above all.
void translateDialogs(QApplication& application)
{
    auto* translator = new QTranslator(&application);
    if (translator->load(u"qtbase_es"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(translator);
}

} // namespace

void Appearance::chooseStyle()
{
    QApplication::setStyle(u"Fusion"_s);
}

void Appearance::nameProgram()
{
    QCoreApplication::setApplicationName(u"VelmoraMaster"_s);
    QCoreApplication::setOrganizationName(u"Velmora"_s);
    QCoreApplication::setApplicationVersion(CommandLine::versionNumber());
}

void Appearance::apply(QApplication& application)
{
    // The point is the decimal sign everywhere; a comma locale would read a typed 0.5 as 5.
    QLocale::setDefault(QLocale::c());
    translateDialogs(application);
    Legibility::install(application);

    nameProgram();
    // Wayland finds the icon of a window through the desktop entry of this name.
    QApplication::setDesktopFileName(u"velmora-master"_s);
    QApplication::setWindowIcon(QIcon(u":/icono-app.ico"_s));
    QApplication::setPalette(darkPalette());
    application.setStyleSheet(WINDOW_STYLE.arg(FONT_FAMILY) + WIDGET_STYLE);
}
