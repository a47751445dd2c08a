#pragma once

#include "engine/Figures.h"

#include <QList>
#include <QWidget>

class QBoxLayout;
class QLabel;
class QPushButton;
class QScrollArea;
class QTableWidget;
class TrussView;

/// The page that shows the report of all projects: the drawing of the current one, one table for
/// all, and the certificate with its conclusion. Black on white, as it will be printed.
class ReportPage : public QWidget
{
    Q_OBJECT

public: // construction
    explicit ReportPage(QWidget* parent = nullptr);

public: // queries
    /// The parts of the page.
    [[nodiscard]] TrussView* drawing() const;
    [[nodiscard]] QTableWidget* table() const;
    [[nodiscard]] QLabel* certificate() const;

public: // commands
    /// Empties the table.
    void clear();
    /// Shows `projects` instead of what the page showed before.
    void fill(const QList<Figures>& projects);

signals:
    /// The user wants to go back to the design (the button, the Escape key), or the report written as a
    /// document.
    void backClicked();
    void printClicked();

private: // set-up, from the outside in as `MainWindow::setupUI`
    void buildCanvas();
    void buildTitleBar(QBoxLayout* page);
    void buildDrawingFrame(QBoxLayout* page);
    void buildTableBlock(QBoxLayout* page);
    void buildCertificateBox(QBoxLayout* page);
    void buildBottomBar(QBoxLayout* page);

private: // helpers
    /// Scrolls the page to the cell that the keys have come to.
    void showCurrentCell();

private: // data
    QScrollArea* m_area = nullptr;
    TrussView* m_drawing = nullptr;
    QTableWidget* m_table = nullptr;
    QLabel* m_certificate = nullptr;
};
