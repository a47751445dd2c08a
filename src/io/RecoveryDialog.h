#pragma once

#include "io/RecoveryList.h"

#include <QDialog>

class QPushButton;
class QTreeWidget;

/// Lists what can be brought back, one line for each project, to be ticked.
class RecoveryDialog : public QDialog
{
    Q_OBJECT

public: // construction
    /// Offers `entries`, none of them chosen yet.
    RecoveryDialog(const QList<RecoveryEntry>& entries, QWidget* parent);

public: // queries
    /// The ticked projects, in the order of the list.
    [[nodiscard]] QList<ProjectState> chosen() const;

private: // helpers
    [[nodiscard]] QTreeWidget* createList();
    [[nodiscard]] QWidget* createButtons();
    void followChoice();

private: // data
    QList<RecoveryEntry> m_entries;
    QTreeWidget* m_list = nullptr;
    QPushButton* m_open = nullptr;
};
