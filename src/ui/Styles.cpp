#include "ui/Styles.h"

#include "fields/AccentColour.h"
using namespace Qt::StringLiterals;

QString Styles::headerButton(const QString& accent, const QString& background, const QString& hoverText)
{
    return uR"(
        QPushButton {
            background: %2;
            color: %1;
            border: 1px solid %1;
            border-radius: 15px;
            font-weight: bold;
            font-size: 10px;
        }
        QPushButton:hover { background: %1; color: %3; }
    )"_s.arg(accent, background, hoverText);
}

QString Styles::propertyPanel(const QString& accent)
{
    return uR"(
        QGroupBox {
            border: 1px solid %1;
            border-radius: 6px;
            padding: 10px;
            margin-top: 5px;
        }
    )"_s.arg(accent);
}

QString Styles::panelTitle(const QString& accent)
{
    return u"color: %1; font-weight: bold; font-size: 12px; border: none;"_s.arg(accent);
}

QString Styles::stressBar(const QString& colour)
{
    return u"QProgressBar { border: 1px solid #444; background: #222; border-radius: 3px; height: 12px; }"
           "QProgressBar::chunk { background-color: %1; }"_s.arg(colour);
}

const QString Styles::TITLE = u"font-size: 18px; font-weight: bold; color: " ACCENT_COLOUR ";"_s;

const QString Styles::TAB_BAR = uR"(
    QTabBar::tab {
        background: #333;
        color: #aaa;
        padding: 8px 20px;
        border-top-left-radius: 4px;
        border-top-right-radius: 4px;
        margin-right: 2px;
        min-width: 100px;
    }
    QTabBar::tab:selected { background: #444; color: )" ACCENT_COLOUR uR"(; border-bottom: 2px solid )" ACCENT_COLOUR uR"(; }
    QTabBar::tab:hover { background: #3a3a3a; }
)"_s;

const QString Styles::ADD_TAB_BUTTON = uR"(
    QPushButton {
        background: #444;
        color: white;
        border: none;
        border-radius: 15px;
        font-weight: bold;
        font-size: 16px;
    }
    QPushButton:hover { background: #555; color: )" ACCENT_COLOUR uR"(; }
)"_s;

const QString Styles::HYPERSTATIC_WARNING =
    u"color: #FFAF00; font-weight: bold; border: 1px solid #FFAF00; background: rgba(255,175,0,0.1); padding: 5px;"_s;

const QString Styles::REPORT_BUTTON = uR"(
    QPushButton {
        background: rgba(255,175,0,0.1);
        color: #FFAF00;
        border: 1px solid #FFAF00;
        border-radius: 4px;
        font-weight: bold;
        font-size: 13px;
        letter-spacing: 1px;
    }
    QPushButton:hover { background: #FFAF00; color: black; }
)"_s;

const QString Styles::CONTROL_COLUMN = u"background: transparent;"_s;

const QString Styles::DELETE_BUTTON = uR"(
    QPushButton {
        background: transparent;
        color: #FF5050;
        border: 1px solid #FF5050;
        border-radius: 4px;
        font-size: 10px;
        font-weight: bold;
    }
    QPushButton:hover { background: #FF5050; color: white; }
)"_s;

const QString Styles::COUNT_BOX = u"color: white; background: #333;"_s;
const QString Styles::STRESS_LABEL = u"color: #39FF14; font-weight: bold; margin-top: 5px;"_s;
const QString Styles::SCREEN_COUNT_BOX = u"color: #00FFFF; background: #333; font-weight: bold;"_s;
const QString Styles::SCREEN_WEIGHT = u"color: #00FFFF; font-weight: bold;"_s;
const QString Styles::ADD_SCREEN_BUTTON = u"background-color: #008888; color: white; font-weight: bold;"_s;
const QString Styles::UNUSABLE_FIELD = u"border: 1px solid #FF5555; background: #2a1a1a; color: white;"_s;

const QString Styles::DIALOG =
    u"background-color: #1E1E1E; color: #E0E0E0; font-family: 'Segoe UI', Arial;"_s;

const QString Styles::CLOSE_BUTTON = u"QPushButton { background-color: #444; color: white; border: none; "
                                     u"padding: 8px 20px; border-radius: 4px; "
                                     "font-weight: bold; }QPushButton:hover { background-color: #555; }"_s;

/// For a row of many.
const QString Styles::NARROW_BUTTON =
    u"QPushButton { background-color: #444; color: white; border: none; padding: 8px 10px; "
    "border-radius: 4px; font-weight: bold; }QPushButton:hover { background-color: #555; }"_s;

const QString Styles::INFO_CLOSE_BUTTON =
    Styles::CLOSE_BUTTON + u"QPushButton:pressed { background-color: #333; }"_s;

const QString Styles::FACTOR_EXPLANATION =
    u"color: #FFAF00; font-size: 12px; padding: 10px; border: 1px solid #FFAF00; border-radius: 4px; "
    "background: rgba(255,175,0,0.08);"_s;

const QString Styles::FACTOR_TABLE =
    u"QTableWidget { background-color: #2D2D2D; border: 1px solid #444; gridline-color: #444; }"
    "QHeaderView::section { background-color: #333; color: " ACCENT_COLOUR
    "; font-weight: bold; border: 1px solid "
    "#444; "
    "padding: 6px; }QTableWidget::item { padding: 6px; }"_s;

const QString Styles::FACTOR_SUMMARY =
    u"color: " ACCENT_COLOUR "; font-size: 12px; font-weight: bold; padding: 8px;"_s;

const QString Styles::LEGAL_BROWSER =
    u"background-color: #2D2D2D; border: 1px solid #444; border-radius: 4px; padding: 10px; line-height: 1.5;"_s;

const QString Styles::CONTRAST_TABLE =
    u"QTableWidget { background-color: #2D2D2D; border: 1px solid #444; gridline-color: #444; }"
    "QHeaderView::section { background-color: #333; color: " ACCENT_COLOUR
    "; font-weight: bold; border: 1px solid "
    "#444; padding: 4px; }QTableWidget::item:selected { background: #3A4A55; }"_s;

/// The current cell has a frame, selected or not: keys act on it.
const QString Styles::LIST_TABLE =
    u"QTableView { background-color: #2D2D2D; color: #E0E0E0; border: 1px solid #444; gridline-color: #444; }"
    "QHeaderView { background-color: #333; }"
    "QHeaderView::section { background-color: #333; color: " ACCENT_COLOUR
    "; font-weight: bold; border: 1px solid #444; padding: 4px; }"
    "QTableView::item:selected { background: #12384A; color: white; }"
    "QTableView::item:focus { border: 1px solid " ACCENT_COLOUR "; }"
    "QLineEdit { background-color: #111; color: white; }"_s;

const QString Styles::PLAIN_HEADING = u"color: " ACCENT_COLOUR "; font-size: 14px; font-weight: bold;"_s;
const QString Styles::PLAIN_TEXT = u"color: #E0E0E0; font-size: 12px;"_s;
const QString Styles::CONTRADICTION = u"color: #FF5050; font-size: 12px; font-weight: bold;"_s;
const QString Styles::SMALL_PRINT = u"color: #AAAAAA; font-size: 11px;"_s;
