#include "io/RecoveryFolder.h"

#include <QStandardPaths>

using namespace Qt::StringLiterals;

QString RecoveryFolder::path()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + u"/recuperacion"_s;
}
