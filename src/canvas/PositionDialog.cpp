#include "canvas/PositionDialog.h"

#include "engine/Numbers.h"
#include "engine/Project.h"

#include <QInputDialog>

using namespace Qt::StringLiterals;

std::optional<float> PositionDialog::ask(QWidget* parent, const QString& title, float position,
                                         float trussLength)
{
    const float half = trussLength * 0.5F;
    bool accepted = false;
    const double value = QInputDialog::getDouble(
        parent, title,
        u"Introduzca la coordenada relativa al centro (m):\n(Negativo = izquierda, Positivo = derecha)"_s,
        static_cast<double>(position - half), static_cast<double>(-half), static_cast<double>(half), 2,
        &accepted, Qt::WindowFlags(), 1.0);
    if (!accepted)
        return std::nullopt;
    return Project::clampToTruss(Numbers::toSingle(value) + half, trussLength);
}
