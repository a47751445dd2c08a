#include "io/SheetDialogs.h"

#include "io/CalculationSheet.h"
#include "ui/Boxes.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QGuiApplication>
#include <QUrl>

using namespace Qt::StringLiterals;

using CalculationSheet::Status;

namespace
{

const QString PDF_FILTER = u"PDF (*.pdf)"_s;

/// A busy pointer for as long as it lives.
class BusyPointer
{
public: // construction
    BusyPointer()
    {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    }
    ~BusyPointer()
    {
        QGuiApplication::restoreOverrideCursor();
    }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

CalculationSheet::Request requestOf(const QList<ProjectState>& projects, const QString& path)
{
    CalculationSheet::Request request;
    for (const ProjectState& project : projects)
        request.items.append({project, {}});
    request.path = path;
    request.version = QCoreApplication::applicationVersion();
    request.date = QDateTime::currentDateTime();
    return request;
}

/// A new file in the temporary folder, which nobody has chosen a place for.
QString printPath(const QDateTime& date)
{
    return QDir::tempPath() + u"/contraste_"_s + date.toString(u"yyyyMMdd_HHmmss_zzz"_s) + u".pdf"_s;
}

QString chosenPath(QWidget* window, const QString& title)
{
    QFileDialog dialog(window, u"Guardar memoria de cálculo"_s);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilter(PDF_FILTER);
    dialog.setDefaultSuffix(u"pdf"_s);
    dialog.selectFile(CalculationSheet::fileName(title));
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().constFirst() : QString();
}

void show(QWidget* window, Status status, const QString& path)
{
    if (status != Status::Written) {
        Boxes::say(window, QMessageBox::Critical, u"Error de Escritura"_s,
                   u"No se pudo crear el archivo PDF en:\n"_s + path);
    } else if (!QDesktopServices::openUrl(QUrl::fromLocalFile(path))) {
        Boxes::say(window, QMessageBox::Information, u"PDF guardado"_s,
                   u"No se pudo abrir el visor de PDF.\n\nBusque el archivo en: "_s + path);
    }
}

} // namespace

// The dialog has asked about a file that is there already.
void SheetDialogs::save(QWidget* window, const QList<ProjectState>& projects, const QString& title)
{
    const QString path = chosenPath(window, title);
    if (path.isEmpty())
        return;
    CalculationSheet::Request request = requestOf(projects, path);
    request.overwrite = true;
    request.isPrivate = false;
    const auto write = [&request] {
        const BusyPointer busy;
        return CalculationSheet::write(request);
    };
    show(window, write(), path);
}

void SheetDialogs::printContrast(QWidget* window, const ProjectState& project,
                                 std::optional<double> tableDeflection)
{
    const QString path = printPath(QDateTime::currentDateTime());
    show(window, CalculationSheet::writeContrast(requestOf({project}, path), tableDeflection), path);
}
