#pragma once

#include <QGroupBox>

class QFormLayout;
class QLabel;
class QLineEdit;

/// What both property panels are made of: a coloured frame with a title, a form of fields and a
/// button that deletes what the panel shows. Hidden until something is selected.
class PropertyPanel : public QGroupBox
{
    Q_OBJECT

public: // construction
    /// `accent` colours frame and title.
    PropertyPanel(const QString& accent, const QString& title);

signals:
    /// The text of a field changed.
    void edited();
    void deleteRequested();

protected: // helpers
    /// Puts `field` into the form, with its label as buddy.
    void addField(const QString& label, QLineEdit* field);
    /// Ends the panel with its button; the Tab key comes to it after the fields that were added before.
    void addDeleteButton(const QString& text);
    void setPanelTitle(const QString& title);

private: // data
    QLabel* m_title = nullptr;
    QFormLayout* m_form = nullptr;
};
