#pragma once

#include "app/Appearance.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>

/// What the fuzz targets share.
namespace Fuzzing
{

/// Ends the program, so that the fuzzer keeps the input, when `holds` is false.
inline void check(bool holds, const char* what)
{
    if (holds)
        return;
    std::fprintf(stderr, "Broken: %s\n", what);
    std::abort();
}

/// The one application object, off screen; it lives as long as the process.
inline void startApplication(int& argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Appearance::chooseStyle();
    static QApplication application(argc, argv);
    Appearance::apply(application);
}

} // namespace Fuzzing
