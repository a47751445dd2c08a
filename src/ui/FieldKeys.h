#pragma once

#include <QObject>

class QInputMethodEvent;
class QKeyEvent;

/// Keys that mean the same in every field of the application.
///
/// A comma typed into a field for numbers or into a spin box becomes a point: on a Spanish keyboard
/// 8,4 must neither become 84 nor be refused. And "Ctrl+Z" in a field of the window is left to the
/// window, which undoes the project, instead of to the field's own text; in dialogs the field keeps it.
class FieldKeys : public QObject
{
    Q_OBJECT

public: // construction
    /// Owned by `parent`.
    explicit FieldKeys(QObject* parent);
    /// Watches over the application, once for each application object.
    static void install();

public: // overrides
    bool eventFilter(QObject* watched, QEvent* event) override;

private: // helpers
    static bool typePoint(QObject* field, const QKeyEvent& comma);
    static bool commitPoint(QObject* field, const QInputMethodEvent& comma);
};
