#pragma once

#include <QObject>

class QApplication;
class QFileDialog;

/// Makes readable what Qt opens over the program's dark or white widgets: menus with a frame and a current
/// entry that is seen, tool tips, the lists of combo boxes, and the kinds of files in Spanish. Each gets a
/// sheet of its own, as it would otherwise take over that of the widget it is opened from.
class Legibility : public QObject
{
    Q_OBJECT

public: // construction
    /// Owned by `parent`.
    explicit Legibility(QObject* parent);
    /// Watches over `application`, once.
    static void install(QApplication& application);

public: // overrides
    bool eventFilter(QObject* watched, QEvent* event) override;

private: // helpers
    /// Names the kinds of files in the list of `dialog`, and gives its columns room for what they hold.
    static void nameKinds(QFileDialog* dialog);
};
