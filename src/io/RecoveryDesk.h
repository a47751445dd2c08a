#pragma once

#include "io/RecoveryKeeper.h"
#include "io/RecoveryStore.h"

/// What the window has for recovery, once it is switched on.
struct RecoveryDesk
{
    QString folder;
    RecoveryStore store;
    RecoveryKeeper keeper;
    std::optional<QString> notice;     ///< about work of earlier sessions, until it was shown
    bool isDesktopSessionOver = false; ///< the window goes because the user logs out
    std::optional<QString> told{};     ///< what the notice line says
};
