#include "canvas/TrussView.h"
#include "ui/MainWindow.h"

#include <QLineEdit>

#include <cstdint>

#include "fuzz/Fuzzing.h"

// Texts into every field of a real window, with everything that follows them at once: the red
// marks, the calculation, the selected screen, the drawing.

namespace
{

constexpr qsizetype LARGEST_UNDO_DEPTH = 20;

/// A usual project: two motors, a load between them, a screen that is selected.
void startAnew(MainWindow& window)
{
    window.hidePropertyPanels();
    window.restoreProjectState({});
    window.undoStack.clear();
    LoadLogic::AddMotor(1.0F);
    LoadLogic::AddMotor(11.0F);
    LoadLogic::AddLoad(3.0F);
    window.onAddLEDLoadClicked();
}

/// Chooses what the fields speak of: the screen, the point load or a motor.
void select(MainWindow& window, int choice)
{
    if (choice == 1 && !LoadLogic::ActiveLoads.isEmpty())
        window.showLoadProperties(LoadLogic::ActiveLoads.constFirst().id);
    if (choice == 2)
        window.showMotorProperties(0);
    if (choice == 3)
        window.undo();
}

void checkInvariants(const MainWindow& window)
{
    Fuzzing::check(static_cast<qsizetype>(window.undoStack.size()) <= LARGEST_UNDO_DEPTH, "undo depth");
    Fuzzing::check(!window.isRestoring, "no restore is left open");
    Fuzzing::check(LoadLogic::MotorList.size() == 2, "fields neither add nor remove motors");
    Fuzzing::check(window.selectedLoadId == -1 || window.selectedMotorIndex == -1, "one thing is selected");
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    Fuzzing::startApplication(*argc, *argv);
    return 0;
}

/// Each line of the input is one entry: a byte for the selection, one for the field, and its text.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static MainWindow window;
    static TrussView* const canvas = window.findChild<TrussView*>();
    static const QList<QLineEdit*> fields = window.findChildren<QLineEdit*>();
    startAnew(window);

    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const QList<QByteArray> lines = bytes.split('\n');
    for (const QByteArray& line : lines) {
        if (line.size() < 2)
            continue;
        select(window, line.at(0) & 3);
        const auto field = static_cast<qsizetype>(static_cast<std::uint8_t>(line.at(1))) % fields.size();
        fields.at(field)->setText(QString::fromUtf8(line.mid(2)));
        checkInvariants(window);
    }
    canvas->renderToImage(400, 160);
    return 0;
}
