#pragma once

#include <QKeySequence>
#include <QList>
#include <QStringList>

#include <functional>

class QPoint;
class QWidget;

namespace CanvasMenu
{

/// Shows a menu of `entries` at `position` [px, global] over `canvas`; returns the index of the chosen
/// one, -1 for none. Calls `released` whenever a mouse button is released over the menu. `keys` stand
/// beside the entries, in their order, to be read: those that do the same with what is selected. The canvas
/// may be destroyed meanwhile.
int choose(QWidget* canvas, const QStringList& entries, const QPoint& position,
           const std::function<void()>& released, const QList<QKeySequence>& keys = {});

} // namespace CanvasMenu
