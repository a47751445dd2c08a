#pragma once

#include <QObject>

/// What the pointer does to fields. The wheel turns a spin box only while the box has the focus: a column
/// that is scrolled must not change a number that passes under the pointer. And a file that is dragged
/// over a field is left to the window, which opens it; a text is the field's.
class FieldPointer : public QObject
{
    Q_OBJECT

public: // construction
    /// Owned by `parent`.
    explicit FieldPointer(QObject* parent);
    /// Watches over the application, once for each application object.
    static void install();

public: // overrides
    bool eventFilter(QObject* watched, QEvent* event) override;
};
