#include "canvas/TrussView.h"
#include "engine/Numbers.h"
#include "ui/ControlsGroup.h"
#include "ui/LedGroup.h"
#include "ui/MainWindow.h"
#include "ui/PanelSync.h"

#include <QScopedValueRollback>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr float SHORTEST_TRUSS = 1.0F; // [m]
/// Smaller changes of a truss value are no edit.
constexpr float SMALLEST_CHANGE = 0.01F;
constexpr float USUAL_MASS = 500.0F; // [kg]

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

    edit([this, length] {
        LoadLogic::ResizeTruss(*length);
        showSelectedScreenSize();
    });
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
    edit([&value, edited] { value = *edited; });
}

void MainWindow::onAddMotorClicked()
{
    edit([] { LoadLogic::AddMotor(LoadLogic::TrussLength * 0.5F); });
}

void MainWindow::onAddLoadClicked()
{
    edit([this] {
        LoadLogic::SpreadLoads(typedLoad(), m_controls->count());
        const LoadLogic::ActiveLoad& last = LoadLogic::ActiveLoads.constLast();
        selectLoad(last.id);
        const QScopedValueRollback<bool> filling(isRestoring, true);
        m_controls->setMassText(Numbers::general(last.mass));
    });
}

/// The load that the fields describe.
LoadLogic::ActiveLoad MainWindow::typedLoad() const
{
    const float mass = m_controls->mass();
    const QString name = m_controls->name().trimmed();
    LoadLogic::ActiveLoad load;
    load.mass = mass <= 0.0F ? USUAL_MASS : mass;
    load.type = u"Audio"_s;
    if (!name.isEmpty())
        load.name = name;
    return load;
}

void MainWindow::onMassChanged(const QString& text)
{
    if (LoadLogic::ActiveLoad* load = LoadLogic::FindLoad(selectedLoadId)) {
        load->mass = Numbers::parseNumber(text);
        m_panels->refreshLoad(load);
    }
    updateCalculations();
}

void MainWindow::onLoadNameChanged(const QString& text)
{
    if (isRestoring || selectedLoadId == -1)
        return;
    if (LoadLogic::ActiveLoad* load = LoadLogic::FindLoad(selectedLoadId)) {
        load->name = text;
        m_panels->refreshLoad(load);
    }
    m_canvas->update();
}
