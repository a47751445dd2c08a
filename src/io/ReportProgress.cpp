#include "io/ReportProgress.h"

#include <QGuiApplication>
#include <QProgressDialog>

using namespace Qt::StringLiterals;

namespace
{

/// A report that takes less needs no dialog [ms].
constexpr qint64 PATIENCE = 2000;

} // namespace

ReportProgress::ReportProgress(QWidget* window, qsizetype total)
    : m_window(window)
    , m_total(static_cast<int>(total))
{
    m_clock.start();
    QGuiApplication::setOverrideCursor(Qt::BusyCursor);
}

ReportProgress::~ReportProgress()
{
    QGuiApplication::restoreOverrideCursor();
}

bool ReportProgress::advance(qsizetype done)
{
    if (m_dialog == nullptr) {
        if (m_clock.elapsed() < PATIENCE || done >= m_total)
            return true;
        m_dialog = std::make_unique<QProgressDialog>(u"Preparando el informe de los proyectos…"_s,
                                                     u"Cancelar"_s, 0, m_total, m_window);
        m_dialog->setWindowTitle(u"Generando Informe"_s);
        m_dialog->setWindowModality(Qt::WindowModal);
        m_dialog->setMinimumDuration(0);
    }

    m_dialog->setValue(static_cast<int>(done)); // also handles the click on "Cancelar"
    return !m_dialog->wasCanceled();
}
