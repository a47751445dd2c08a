#pragma once

#include <QString>

/// The style sheets that widgets of the window wear, each in one place. Colours are texts that a
/// style sheet understands ("#FF5050", "rgba(0,191,255,0.1)").
namespace Styles
{

/// A rounded button of the header row.
QString headerButton(const QString& accent, const QString& background, const QString& hoverText);
/// The frame of a property panel.
QString propertyPanel(const QString& accent);
/// The title label of a property panel.
QString panelTitle(const QString& accent);
/// The stress bar with its chunk in `colour`.
QString stressBar(const QString& colour);

extern const QString TITLE;
extern const QString TAB_BAR;
extern const QString ADD_TAB_BUTTON;
extern const QString HYPERSTATIC_WARNING;
extern const QString REPORT_BUTTON;
extern const QString CONTROL_COLUMN;
extern const QString DELETE_BUTTON;
extern const QString COUNT_BOX;
extern const QString STRESS_LABEL;
extern const QString SCREEN_COUNT_BOX;
extern const QString SCREEN_WEIGHT;
extern const QString ADD_SCREEN_BUTTON;
extern const QString UNUSABLE_FIELD;
extern const QString DIALOG;
extern const QString CLOSE_BUTTON;
extern const QString NARROW_BUTTON;
extern const QString INFO_CLOSE_BUTTON;
extern const QString FACTOR_EXPLANATION;
extern const QString FACTOR_TABLE;
extern const QString FACTOR_SUMMARY;
extern const QString LEGAL_BROWSER;
extern const QString CONTRAST_TABLE;
extern const QString LIST_TABLE;
extern const QString PLAIN_HEADING;
extern const QString PLAIN_TEXT;
extern const QString CONTRADICTION;
extern const QString SMALL_PRINT;

} // namespace Styles
