#pragma once

#include "engine/RowEdits.h"

#include <QDialog>

#include <optional>

class ListTable;
class QBoxLayout;
class QLabel;
template <class Row>
class RowModel;
struct ListedLoad;
struct ListedMotor;

/// "Lista": all motors and loads of a project in two tables that can be edited. Stays open beside the
/// window while the project changes; whoever opened it shows it each new state, and makes the changes that
/// it asks for.
class ListDialog : public QDialog
{
    Q_OBJECT

public: // construction
    explicit ListDialog(QWidget* parent = nullptr);
    ~ListDialog() override;

public: // commands
    /// Shows `solved`, a calculated project, and selects what it has selected: its load, or the motor at
    /// `selectedMotor` of its list, -1 for none.
    void follow(const ProjectState& solved, int selectedMotor);

signals:
    /// The project may have changed since it was last shown; it is to be shown now.
    void followRequested();
    /// The user wants this change, as one step.
    void changeRequested(const RowEdits::Change& change);
    void undoRequested();
    /// The user selected a motor, a load, or nothing.
    void motorPicked(const RowKey& key);
    void loadPicked(const RowKey& key);
    void nothingPicked();

protected: // overrides
    void changeEvent(QEvent* event) override;

private: // types
    /// What is selected in the window and here.
    struct Picked
    {
        ListTable* table = nullptr; ///< none where nothing is selected
        RowKey key;
    };

private: // set-up
    void buildTables(QBoxLayout* column);
    void buildWords(QBoxLayout* column);
    void buildButtons(QBoxLayout* column);
    void addButton(QBoxLayout* row, const QString& text, const QKeySequence& keys, void (ListDialog::*act)());
    void addKeys(QWidget* widget, Qt::ShortcutContext context, const QKeySequence& keys,
                 void (ListDialog::*act)());

private: // selection
    [[nodiscard]] Picked pickedIn(const ProjectState& project, int selectedMotor) const;
    [[nodiscard]] bool isTold(const Picked& picked) const;
    void showPicked(const Picked& picked);
    void onPicked(ListTable* table);
    void tell(const Picked& picked);
    template <class Row>
    void followIn(ListTable* table, RowModel<Row>* model, const QList<Row>& rows);

private: // what keys and buttons do (ListDialogActions.cpp)
    void duplicate();
    void mirror();
    void remove();
    void copy();
    void paste();
    void sort();
    void undoProject();
    /// The table with the selected rows, after the project is shown as it stands; none without selected
    /// rows, which is said.
    [[nodiscard]] ListTable* actingTable();
    void changeMotor(const RowKey& key, int column, const QString& text);
    void changeLoad(const RowKey& key, int column, const QString& text);
    /// Asks for `change` and selects the rows that came with it into `table`; returns how many.
    qsizetype addRows(ListTable* table, const RowEdits::Change& change);
    void say(const QString& text);

private: // data
    RowModel<ListedMotor>* m_motorModel = nullptr;
    RowModel<ListedLoad>* m_loadModel = nullptr;
    ListTable* m_motors = nullptr;
    ListTable* m_loads = nullptr;
    QLabel* m_motorHeading = nullptr;
    QLabel* m_loadHeading = nullptr;
    QLabel* m_words = nullptr;
    Picked m_told;              ///< what the window was told last, or told itself
    bool m_isFollowing = false; ///< rows are selected by the project, not by the user
    float m_trussLength = 0.0F; ///< [m]
};
