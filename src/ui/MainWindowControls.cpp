#include "canvas/TrussView.h"
#include "engine/Numbers.h"
#include "ui/ControlsGroup.h"
#include "ui/LedGroup.h"
#include "ui/MainWindow.h"

#include <QHash>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr float SHORTEST_TRUSS = 1.0F; // [m]
/// Smaller changes of a truss value are no edit.
constexpr float SMALLEST_CHANGE = 0.01F;
/// Loads that follow a change of length stay this far inside the truss [m].
constexpr float END_CLEARANCE = 0.01F;
constexpr float USUAL_MASS = 500.0F; // [kg]

/// The mean position [m] of the loads of each array.
QHash<int, float> groupCentres()
{
    struct Sum
    {
        double positions = 0.0;
        int count = 0;
    };
    QHash<int, Sum> sums;
    for (const LoadLogic::ActiveLoad& load : std::as_const(LoadLogic::ActiveLoads)) {
        if (load.groupId == -1)
            continue;
        Sum& sum = sums[load.groupId];
        sum.positions += static_cast<double>(load.positionX);
        ++sum.count;
    }

    QHash<int, float> centres;
    for (auto sum = sums.cbegin(); sum != sums.cend(); ++sum)
        centres.insert(sum.key(), static_cast<float>(sum->positions / sum->count));
    return centres;
}

/// The factor that positions grow by with the truss; a truss that had no length has no proportions
/// to keep.
float lengthRatio(float newLength, float oldLength)
{
    const float ratio = newLength / oldLength;
    return std::isfinite(ratio) && ratio > 0.0F ? ratio : 1.0F;
}

/// The value of `text` if it is a new one for a field that reads `current`.
std::optional<float> editedValue(const QString& text, float current, float smallest)
{
    const float value = Numbers::parseNumber(text);
    if (!(value >= smallest) || std::abs(value - current) <= SMALLEST_CHANGE)
        return std::nullopt;
    return value;
}

} // namespace

void MainWindow::onTrussLengthChanged(const QString& text)
{
    if (isRestoring)
        return;
    const std::optional<float> length = editedValue(text, LoadLogic::TrussLength, SHORTEST_TRUSS);
    if (!length)
        return;

    pushUndoState();
    const float ratio = lengthRatio(*length, LoadLogic::TrussLength);
    LoadLogic::TrussLength = *length;
    for (LoadLogic::Motor& motor : LoadLogic::MotorList)
        motor.positionX *= ratio;
    scaleLoads(ratio);
    showSelectedScreenSize();
    updateCalculations();
}

// An array keeps the spacing of its segments; only its centre follows the truss.
void MainWindow::scaleLoads(float ratio)
{
    const QHash<int, float> centres = groupCentres();
    const float rightmost = LoadLogic::TrussLength - END_CLEARANCE;
    for (LoadLogic::ActiveLoad& load : LoadLogic::ActiveLoads) {
        float scaled = load.positionX * ratio;
        if (load.groupId != -1) {
            const float centre = centres.value(load.groupId);
            scaled = centre * ratio + (load.positionX - centre);
        }
        load.positionX = std::max(END_CLEARANCE, std::min(scaled, rightmost));
    }
}

// The first field's handler may build the array again, so both values are read beforehand.
void MainWindow::showSelectedScreenSize()
{
    const auto selected = std::find_if(LoadLogic::ActiveLoads.cbegin(), LoadLogic::ActiveLoads.cend(),
                                       [this](const LoadLogic::ActiveLoad& load) {
                                           return load.id == selectedLoadId && load.type == "Video"_L1;
                                       });
    if (selectedLoadId == -1 || selected == LoadLogic::ActiveLoads.cend())
        return;
    const QString width = Numbers::fixed(selected->screenWidth, 2);
    const QString height = Numbers::fixed(selected->screenHeight, 2);
    m_led->typeWidth(width);
    m_led->typeHeight(height);
}

void MainWindow::onTrussWeightChanged(const QString& text)
{
    editTrussValue(text, LoadLogic::TrussSelfWeight);
}

void MainWindow::onCPLChanged(const QString& text)
{
    editTrussValue(text, LoadLogic::Limit_CPL);
}

void MainWindow::editTrussValue(const QString& text, float& value)
{
    if (isRestoring)
        return;
    const std::optional<float> edited = editedValue(text, value, 0.0F);
    if (!edited)
        return;
    pushUndoState();
    value = *edited;
    updateCalculations();
}

void MainWindow::onAddMotorClicked()
{
    pushUndoState();
    LoadLogic::AddMotor(LoadLogic::TrussLength * 0.5F);
    updateCalculations();
}

void MainWindow::onAddLoadClicked()
{
    pushUndoState();
    const float typed = m_controls->mass();
    const QString name = m_controls->name().trimmed();
    placeLoads(typed <= 0.0F ? USUAL_MASS : typed, name.isEmpty() ? u"Carga"_s : name, m_controls->count());

    const LoadLogic::ActiveLoad& last = LoadLogic::ActiveLoads.constLast();
    selectLoad(last.id);
    isRestoring = true;
    m_controls->setMassText(Numbers::general(last.mass));
    isRestoring = false;
    updateCalculations();
}

// One load hangs in the middle; several are spread with equal gaps, the truss's ends included.
void MainWindow::placeLoads(float mass, const QString& name, int count)
{
    LoadLogic::ActiveLoad load;
    load.mass = mass;
    load.type = u"Audio"_s;
    const float spacing = LoadLogic::TrussLength / static_cast<float>(count + 1);
    for (int i = 1; i <= count; ++i) {
        load.name = count > 1 ? name + u' ' + QString::number(i) : name;
        load.positionX = count > 1 ? static_cast<float>(i) * spacing : LoadLogic::TrussLength * 0.5F;
        LoadLogic::PlaceLoad(load);
    }
}

void MainWindow::onMassChanged(const QString& text)
{
    if (LoadLogic::ActiveLoad* load = LoadLogic::FindLoad(selectedLoadId)) {
        load->mass = Numbers::parseNumber(text);
        refreshLoadPanel();
    }
    updateCalculations();
}

void MainWindow::onLoadNameChanged(const QString& text)
{
    if (isRestoring || selectedLoadId == -1)
        return;
    if (LoadLogic::ActiveLoad* load = LoadLogic::FindLoad(selectedLoadId)) {
        load->name = text;
        refreshLoadPanel();
    }
    m_canvas->update();
}
