#pragma once

#include "io/RecoveryFile.h"

#include <QDir>
#include <QStringList>

#include <utility>

/// Projects and sessions for the tests of recovery.
namespace Support
{

/// A project named `name` with two motors and a load of `mass` [kg] in its middle.
inline ProjectState workOf(const QString& name, float mass = 250.0F)
{
    ProjectState project;
    project.tabName = name;
    project.motors = {Motor{1}, Motor{2}};
    project.motors[1].positionX = project.trussLength;
    ActiveLoad load;
    load.id = 1;
    load.mass = mass;
    load.positionX = 6.0F;
    project.loads = {load};
    return project;
}

/// The same with a screen of `segments` as well.
inline ProjectState screenOf(const QString& name, int segments)
{
    ProjectState project = workOf(name);
    for (int i = 0; i < segments; ++i) {
        ActiveLoad load;
        load.id = 2 + i;
        load.mass = 69.55F;
        load.positionX = 2.0F + 0.5F * static_cast<float>(i);
        load.type = QStringLiteral("Video_Segment");
        load.groupId = 100;
        load.screenWidth = 0.5F * static_cast<float>(segments);
        load.screenHeight = 3.1F;
        load.screenWeightM2 = 38.7F;
        load.bumperWeightPerMeter = 11.3F;
        load.cableWeightPercent = 6.9F;
        project.loads.append(load);
    }
    return project;
}

inline RecoverySession sessionOf(QList<ProjectState> tabs, QList<KeptProject> kept = {})
{
    RecoverySession session;
    session.time = QDateTime(QDate(2024, 2, 29), QTime(12, 34, 56, 789));
    session.tabs = std::move(tabs);
    session.kept = std::move(kept);
    return session;
}

/// The names in `folder`, sorted.
inline QStringList namesIn(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                  QDir::Name);
}

} // namespace Support
