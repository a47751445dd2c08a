#pragma once

#include <QObject>

class QLineEdit;
class QMenu;
class QMouseEvent;

/// Lets what is pasted into a field for numbers or a spin box be read as if it were typed: a comma becomes
/// a point, and the line feed that a spreadsheet's cell brings along goes. Works for the keys, for the
/// field's menu and for the middle button where the desktop pastes with it.
class FieldPaste : public QObject
{
    Q_OBJECT

public: // construction
    /// Owned by `parent`.
    explicit FieldPaste(QObject* parent);
    /// Watches over the application, once for each application object.
    static void install();

public: // queries
    /// `text` as it would read if it were typed into a field for numbers.
    [[nodiscard]] static QString asTyped(const QString& text);

public: // overrides
    bool eventFilter(QObject* watched, QEvent* event) override;

private: // helpers
    static void paste(QLineEdit* field);
    static bool pasteSelection(QLineEdit* field, const QMouseEvent& release);
    static void redirect(QMenu* menu, QLineEdit* field);
};
