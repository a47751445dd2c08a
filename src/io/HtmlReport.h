#pragma once

#include "engine/Figures.h"

#include <QDateTime>
#include <QList>
#include <QString>

/// The consolidated report as one HTML document.
///
/// Names and titles go in as they are, markup included. The document's content security policy
/// keeps what a stranger's project file may bring along from running or fetching anything.
namespace HtmlReport
{

/// The document: a section for each of `projects`, a global verdict, the recommendations of all.
/// `currentTitle` stands in the heading. It refers to each drawing by `drawingName`, so both must
/// lie in one folder.
QString document(const QList<Figures>& projects, const QString& currentTitle, const QDateTime& generated);

/// File name of the drawing of the project at `index`, counted from 0.
QString drawingName(qsizetype index);

/// File name of the report that is generated at `generated`.
QString reportName(const QDateTime& generated);

} // namespace HtmlReport
