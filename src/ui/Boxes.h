#pragma once

#include <QMessageBox>
#include <QString>

class QWidget;

/// Message boxes, modal to their window; what they show is plain text. The window may be destroyed while
/// one is open.
namespace Boxes
{

/// A box with the single button OK.
void say(QWidget* window, QMessageBox::Icon icon, const QString& title, const QString& text);

/// A question with Yes and No, where No is the default; returns whether it was Yes.
bool confirm(QWidget* window, const QString& title, const QString& text);

} // namespace Boxes
