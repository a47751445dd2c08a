// The plain start that the program's is compared with: an empty window of the same size and style.

#include "app/Appearance.h"

#include <QApplication>
#include <QMainWindow>
#include <QScreen>

#include "FirstFrame.h"

int main(int argc, char* argv[])
{
    Appearance::chooseStyle();
    QApplication application(argc, argv);
    Appearance::apply(application);
    QMainWindow window;
    window.setCentralWidget(new QWidget);
    window.resize(QGuiApplication::primaryScreen()->availableSize());
    return FirstFrame::report(window);
}
