// Starts as the program does and ends after the first picture.

#include "app/Appearance.h"
#include "ui/MainWindow.h"

#include <QApplication>

#include "FirstFrame.h"

int main(int argc, char* argv[])
{
    Appearance::chooseStyle();
    QApplication application(argc, argv);
    Appearance::apply(application);
    MainWindow window;
    return FirstFrame::report(window);
}
