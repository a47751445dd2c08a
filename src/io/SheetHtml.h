#pragma once

#include <QList>
#include <QString>
#include <QStringList>

/// The pieces that the text of the calculation sheet is put together from. They are HTML as QTextDocument
/// reads it; names go through `name`, everything else is the program's own.
namespace SheetHtml
{

/// What the drawing, the moments and the shear stand for in the text, until they are painted in.
constexpr QChar DRAWING = u'\uE000';
constexpr QChar MOMENTS = u'\uE001';
constexpr QChar SHEAR = u'\uE002';

/// A name from a project without control characters and pictures' places, cut where it is long. Not HTML yet.
QString plainName(const QString& text);

/// The same as HTML that shows it.
QString name(const QString& text);

/// A heading of `level` 1 (the project), 2 (a section) or 3 (a part of it).
QString heading(int level, const QString& html);

/// A paragraph of `html`.
QString paragraph(const QString& html);

/// A paragraph in small type.
QString note(const QString& html);

/// A place for a picture.
QString picture(QChar which);

/// A table whose head is repeated on each page. The columns named in `wide` take what room there is and are
/// aligned left, the others right.
QString table(const QStringList& head, const QList<QStringList>& rows, const QList<int>& wide);

} // namespace SheetHtml
