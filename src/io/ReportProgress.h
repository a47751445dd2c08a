#pragma once

#include <QElapsedTimer>

#include <memory>

class QProgressDialog;
class QWidget;

/// Shows that a report is being made: a busy pointer for as long as this lives, and from two
/// seconds on a dialog in which the user can cancel.
class ReportProgress
{
public: // construction
    /// For `total` projects; the dialog is modal to `window`.
    ReportProgress(QWidget* window, qsizetype total);
    ~ReportProgress();
    ReportProgress(const ReportProgress&) = delete;
    ReportProgress& operator=(const ReportProgress&) = delete;

public: // commands
    /// `done` projects are finished. Returns false once the user has cancelled.
    bool advance(qsizetype done);

private: // data
    QWidget* m_window;
    int m_total;
    QElapsedTimer m_clock;
    std::unique_ptr<QProgressDialog> m_dialog;
};
