#pragma once

#include <QStringList>

#include <functional>

class QPoint;
class QWidget;

namespace CanvasMenu
{

/// Shows a menu of `entries` at `position` [px, global] over `canvas`; returns the index of the chosen
/// one, -1 for none. Calls `released` whenever a mouse button is released over the menu. The canvas may
/// be destroyed meanwhile.
int choose(QWidget* canvas, const QStringList& entries, const QPoint& position,
           const std::function<void()>& released);

} // namespace CanvasMenu
