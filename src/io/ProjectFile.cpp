#include "io/ProjectFile.h"

#include "engine/Numbers.h"
#include "io/SafeFile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <cstddef>
#include <utility>

using namespace Qt::StringLiterals;

using Motor = Motor;
using ActiveLoad = ActiveLoad;
using ProjectState = ProjectState;

namespace
{

/// No project comes near 128 MiB; a larger file is not read further [bytes].
constexpr qint64 LARGEST_DOCUMENT = 134'217'728;

QJsonValue number(float value)
{
    return static_cast<double>(value);
}

float readNumber(const QJsonObject& object, QLatin1StringView key, float fallback)
{
    return Numbers::toSingle(object[key].toDouble(static_cast<double>(fallback)));
}

QJsonObject motorObject(const Motor& motor)
{
    return {
        {u"id"_s, motor.id},
        {u"positionX"_s, number(motor.positionX)},
        {u"capacity"_s, number(motor.capacity)},
        {u"modelName"_s, motor.modelName},
        {u"selfWeight"_s, number(motor.selfWeight)},
    };
}

constexpr std::size_t LOAD_MEMBERS = 8;

/// In the order of the alphabet, in which a JSON object keeps them: so the values of each of many loads
/// are put in one after the other, without looking for their places.
constexpr std::array<QLatin1StringView, LOAD_MEMBERS> LOAD_KEYS{
    "cableWeightPercent"_L1, "groupId"_L1,     "id"_L1,   "mass"_L1, "name"_L1,
    "positionX"_L1,          "screenWidth"_L1, "type"_L1,
};

using LoadValues = std::array<QJsonValue, LOAD_MEMBERS>;

LoadValues loadValues(const ActiveLoad& load)
{
    return {number(load.cableWeightPercent),
            load.groupId,
            load.id,
            number(load.mass),
            load.name,
            number(load.positionX),
            number(load.screenWidth),
            load.type};
}

/// Puts those of `values` into `object` that differ from what it holds, `held`.
void putDifferent(QJsonObject& object, const LoadValues& held, const LoadValues& values)
{
    QJsonObject::iterator member = object.begin();
    for (std::size_t i = 0; i < LOAD_MEMBERS; ++i, ++member) {
        if (values[i] != held[i])
            *member = values[i];
    }
}

/// Each object begins as a copy of the first: loads share most of their values, the segments of a
/// screen all but two.
QJsonArray loadObjects(const QList<ActiveLoad>& loads)
{
    const LoadValues firstValues = loads.isEmpty() ? LoadValues() : loadValues(loads.constFirst());
    QJsonObject first;
    for (std::size_t i = 0; i < LOAD_MEMBERS; ++i)
        first.insert(LOAD_KEYS[i], firstValues[i]);

    QJsonArray objects;
    for (const ActiveLoad& load : loads) {
        QJsonObject object = first;
        putDifferent(object, firstValues, loadValues(load));
        objects.append(object);
    }
    return objects;
}

Motor readMotor(const QJsonObject& object)
{
    Motor motor;
    motor.id = object["id"_L1].toInt();
    motor.positionX = readNumber(object, "positionX"_L1, 0.0F);
    motor.capacity = readNumber(object, "capacity"_L1, 1000.0F);
    motor.modelName = object["modelName"_L1].toString(u"Motor"_s);
    motor.selfWeight = readNumber(object, "selfWeight"_L1, 50.0F);
    return motor;
}

ActiveLoad readLoad(const QJsonObject& object)
{
    ActiveLoad load;
    load.id = object["id"_L1].toInt();
    load.groupId = object["groupId"_L1].toInt();
    load.positionX = readNumber(object, "positionX"_L1, 0.0F);
    load.mass = readNumber(object, "mass"_L1, 0.0F);
    load.type = u""_s;
    load.name = object["name"_L1].toString();
    load.screenWidth = readNumber(object, "screenWidth"_L1, 0.0F);
    load.cableWeightPercent = readNumber(object, "cableWeightPercent"_L1, 7.0F);
    return load;
}

void readLists(const QJsonObject& object, ProjectState& project)
{
    const QJsonArray motors = object["motors"_L1].toArray();
    project.motors.reserve(motors.size());
    for (const auto& motor : motors)
        project.motors.append(readMotor(motor.toObject()));

    const QJsonArray loads = object["loads"_L1].toArray();
    project.loads.reserve(loads.size());
    for (const auto& load : loads)
        project.loads.append(readLoad(load.toObject()));
}

/// What those `bytes` hold that could be read.
ProjectFile::Content contentOf(const std::optional<QByteArray>& bytes, const Truss& fallback)
{
    using Failure = ProjectFile::Failure;
    if (!bytes)
        return {Failure::Unreadable, {}};

    std::optional<ProjectState> project = ProjectFile::fromBytes(*bytes, fallback);
    if (!project)
        return {Failure::NotAProject, {}};
    return {Failure::None, *std::move(project)};
}

} // namespace

QJsonObject ProjectFile::toJson(const ProjectState& project)
{
    QJsonArray motors;
    for (const Motor& motor : project.motors)
        motors.append(motorObject(motor));

    return {
        {u"tabName"_s, project.tabName},
        {u"trussLength"_s, number(project.trussLength)},
        {u"trussSelfWeight"_s, number(project.trussSelfWeight)},
        {u"bumperWeightPerMeter"_s, number(project.bumperWeightPerMeter)},
        {u"cableWeightPercent"_s, number(project.cableWeightPercent)},
        {u"ledTotalWeight"_s, number(project.ledTotalWeight)},
        {u"limitCPL"_s, number(project.limitCPL)},
        {u"motors"_s, motors},
        {u"loads"_s, loadObjects(project.loads)},
    };
}

QByteArray ProjectFile::toBytes(const ProjectState& project)
{
    return QJsonDocument(toJson(project)).toJson(QJsonDocument::Indented);
}

std::optional<ProjectState> ProjectFile::fromBytes(const QByteArray& bytes, const Truss& fallback)
{
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject())
        return std::nullopt;
    return fromJson(document.object(), fallback);
}

ProjectState ProjectFile::fromJson(const QJsonObject& object, const Truss& fallback)
{
    ProjectState project;
    project.tabName = object["tabName"_L1].toString(u"Proyecto Cargado"_s);
    project.trussLength = readNumber(object, "trussLength"_L1, 12.0F);
    project.trussSelfWeight = readNumber(object, "trussSelfWeight"_L1, fallback.selfWeight);
    project.bumperWeightPerMeter = readNumber(object, "bumperWeightPerMeter"_L1, 10.0F);
    project.cableWeightPercent = readNumber(object, "cableWeightPercent"_L1, 7.0F);
    project.ledTotalWeight = readNumber(object, "ledTotalWeight"_L1, 0.0F);
    project.limitCPL = readNumber(object, "limitCPL"_L1, fallback.limitCPL);
    readLists(object, project);
    return project;
}

ProjectFile::Content ProjectFile::read(const QString& path, const Truss& fallback)
{
    return contentOf(SafeFile::read(path, LARGEST_DOCUMENT), fallback);
}

ProjectFile::Content ProjectFile::readOnce(const QString& path, int patience)
{
    return contentOf(SafeFile::readOnce(path, LARGEST_DOCUMENT, patience), {});
}

bool ProjectFile::write(const QString& path, const ProjectState& project)
{
    return SafeFile::save(path, toBytes(project));
}
