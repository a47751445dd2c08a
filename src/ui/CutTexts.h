#pragma once

#include <QObject>

class QHelpEvent;

/// Shows in a tool tip what a title, a field or a cell of a table has no room for: names are as long as
/// users make them. What is seen whole gets none, and a text stays plain whatever it holds.
class CutTexts : public QObject
{
    Q_OBJECT

public: // construction
    /// Owned by `parent`.
    explicit CutTexts(QObject* parent);
    /// Watches over the application, once for each application object.
    static void install();

public: // overrides
    bool eventFilter(QObject* watched, QEvent* event) override;

private: // helpers
    static bool tell(QWidget* widget, const QString& text, const QHelpEvent& event);
};
