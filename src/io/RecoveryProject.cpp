#include "io/RecoveryProject.h"

#include "engine/Edits.h"
#include "engine/Numbers.h"
#include "io/ProjectFile.h"

#include <QJsonArray>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>

using namespace Qt::StringLiterals;

namespace
{

/// A number of a record, by the name that it has in the file.
template <typename Record>
struct Number
{
    QLatin1StringView key;
    float Record::*value;
};

template <typename Record, std::size_t N>
using NumberTable = std::array<Number<Record>, N>;

constexpr NumberTable<ProjectState, 9> PROJECT_NUMBERS{{
    {"trussLength"_L1, &ProjectState::trussLength},
    {"trussSelfWeight"_L1, &ProjectState::trussSelfWeight},
    {"limitCPL"_L1, &ProjectState::limitCPL},
    {"screenWidth"_L1, &ProjectState::screenWidth},
    {"screenHeight"_L1, &ProjectState::screenHeight},
    {"screenWeightM2"_L1, &ProjectState::screenWeightM2},
    {"bumperWeightPerMeter"_L1, &ProjectState::bumperWeightPerMeter},
    {"cableWeightPercent"_L1, &ProjectState::cableWeightPercent},
    {"ledTotalWeight"_L1, &ProjectState::ledTotalWeight},
}};

constexpr NumberTable<Motor, 3> MOTOR_NUMBERS{{
    {"positionX"_L1, &Motor::positionX},
    {"capacity"_L1, &Motor::capacity},
    {"selfWeight"_L1, &Motor::selfWeight},
}};

constexpr NumberTable<ActiveLoad, 7> LOAD_NUMBERS{{
    {"mass"_L1, &ActiveLoad::mass},
    {"positionX"_L1, &ActiveLoad::positionX},
    {"screenWidth"_L1, &ActiveLoad::screenWidth},
    {"screenHeight"_L1, &ActiveLoad::screenHeight},
    {"screenWeightM2"_L1, &ActiveLoad::screenWeightM2},
    {"bumperWeightPerMeter"_L1, &ActiveLoad::bumperWeightPerMeter},
    {"cableWeightPercent"_L1, &ActiveLoad::cableWeightPercent},
}};

std::uint32_t bitsOf(float value)
{
    std::uint32_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

float fromBits(std::uint32_t bits)
{
    float value = 0.0F;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

bool isSameNumber(float a, float b)
{
    return bitsOf(a) == bitsOf(b);
}

template <typename Record, std::size_t N>
bool areNumbersSame(const NumberTable<Record, N>& numbers, const Record& a, const Record& b)
{
    return std::all_of(numbers.begin(), numbers.end(), [&](const Number<Record>& number) {
        return isSameNumber(a.*number.value, b.*number.value);
    });
}

/// JSON has neither infinities nor not-a-number, and Qt writes the negative zero as the other one.
bool isInJson(float value)
{
    return std::isfinite(value) && !(value == 0.0F && std::signbit(value));
}

// What a project file does not keep

/// Appends `list`, `index`, name and bits of each number of `record` that JSON does not have.
template <typename Record, std::size_t N>
void noteBits(const NumberTable<Record, N>& numbers, const Record& record, QLatin1StringView list,
              qsizetype index, QJsonArray& notes)
{
    for (const Number<Record>& number : numbers) {
        const float value = record.*number.value;
        if (!isInJson(value))
            notes.append(QJsonArray{list, index, number.key, static_cast<qint64>(bitsOf(value))});
    }
}

QJsonArray bitNotes(const ProjectState& project)
{
    QJsonArray notes;
    noteBits(PROJECT_NUMBERS, project, "project"_L1, 0, notes);
    for (qsizetype i = 0; i < project.motors.size(); ++i)
        noteBits(MOTOR_NUMBERS, project.motors.at(i), "motors"_L1, i, notes);
    for (qsizetype i = 0; i < project.loads.size(); ++i)
        noteBits(LOAD_NUMBERS, project.loads.at(i), "loads"_L1, i, notes);
    return notes;
}

template <typename Record, std::size_t N>
void putBits(const NumberTable<Record, N>& numbers, const QJsonArray& note, Record& record)
{
    const QString key = note.at(2).toString();
    for (const Number<Record>& number : numbers) {
        if (key == number.key)
            record.*number.value = fromBits(static_cast<std::uint32_t>(note.at(3).toInteger()));
    }
}

template <typename Record, std::size_t N>
void putBits(const NumberTable<Record, N>& numbers, const QJsonArray& note, QList<Record>& records)
{
    const qint64 index = note.at(1).toInteger(-1);
    if (index >= 0 && index < records.size())
        putBits(numbers, note, records[index]);
}

void readBitNotes(const QJsonArray& notes, ProjectState& project)
{
    for (const auto& value : notes) {
        const QJsonArray note = value.toArray();
        const QString list = note.at(0).toString();
        if (list == "project"_L1)
            putBits(PROJECT_NUMBERS, note, project);
        else if (list == "motors"_L1)
            putBits(MOTOR_NUMBERS, note, project.motors);
        else if (list == "loads"_L1)
            putBits(LOAD_NUMBERS, note, project.loads);
    }
}

bool isSameKind(const ActiveLoad& a, const ActiveLoad& b)
{
    return a.type == b.type && isSameNumber(a.screenHeight, b.screenHeight)
           && isSameNumber(a.screenWeightM2, b.screenWeightM2)
           && isSameNumber(a.bumperWeightPerMeter, b.bumperWeightPerMeter);
}

QJsonObject kindObject(const ActiveLoad& load, qsizetype count)
{
    return {
        {u"count"_s, count},
        {u"type"_s, load.type},
        {u"screenHeight"_s, static_cast<double>(load.screenHeight)},
        {u"screenWeightM2"_s, static_cast<double>(load.screenWeightM2)},
        {u"bumperWeightPerMeter"_s, static_cast<double>(load.bumperWeightPerMeter)},
    };
}

/// The kinds of the loads in their order, once for each row of the same: the segments of a screen have
/// one in common.
QJsonArray kinds(const QList<ActiveLoad>& loads)
{
    QJsonArray rows;
    for (auto first = loads.cbegin(); first != loads.cend();) {
        const auto last = std::find_if_not(first, loads.cend(),
                                           [&](const ActiveLoad& load) { return isSameKind(*first, load); });
        rows.append(kindObject(*first, last - first));
        first = last;
    }
    return rows;
}

float number(const QJsonObject& object, QLatin1StringView key, float fallback)
{
    return Numbers::toSingle(object[key].toDouble(static_cast<double>(fallback)));
}

void readKinds(const QJsonArray& rows, QList<ActiveLoad>& loads)
{
    qsizetype next = 0;
    for (const auto& value : rows) {
        const QJsonObject row = value.toObject();
        const qsizetype end = next + qBound<qint64>(0, row["count"_L1].toInteger(), loads.size() - next);
        for (; next < end; ++next) {
            ActiveLoad& load = loads[next];
            load.type = row["type"_L1].toString();
            load.screenHeight = number(row, "screenHeight"_L1, 0.0F);
            load.screenWeightM2 = number(row, "screenWeightM2"_L1, 0.0F);
            load.bumperWeightPerMeter = number(row, "bumperWeightPerMeter"_L1, 0.0F);
        }
    }
}

QJsonObject screenObject(const ProjectState& project)
{
    return {
        {u"width"_s, static_cast<double>(project.screenWidth)},
        {u"height"_s, static_cast<double>(project.screenHeight)},
        {u"weightM2"_s, static_cast<double>(project.screenWeightM2)},
    };
}

void readScreen(const QJsonObject& object, ProjectState& project)
{
    const ProjectState usual;
    project.screenWidth = number(object, "width"_L1, usual.screenWidth);
    project.screenHeight = number(object, "height"_L1, usual.screenHeight);
    project.screenWeightM2 = number(object, "weightM2"_L1, usual.screenWeightM2);
}

bool isSameMotor(const Motor& a, const Motor& b)
{
    return a.id == b.id && areNumbersSame(MOTOR_NUMBERS, a, b) && a.modelName == b.modelName;
}

bool isSameLoad(const ActiveLoad& a, const ActiveLoad& b)
{
    return a.id == b.id && a.groupId == b.groupId && areNumbersSame(LOAD_NUMBERS, a, b) && a.type == b.type
           && a.name == b.name;
}

template <typename Record>
bool areSame(const QList<Record>& a, const QList<Record>& b,
             bool (*isSameRecord)(const Record&, const Record&))
{
    return a.constData() == b.constData()
               ? a.size() == b.size()
               : std::equal(a.cbegin(), a.cend(), b.cbegin(), b.cend(), isSameRecord);
}

} // namespace

QJsonObject RecoveryProject::toJson(const ProjectState& project)
{
    return {
        {u"project"_s, ProjectFile::toJson(project)},
        {u"kinds"_s, kinds(project.loads)},
        {u"screen"_s, screenObject(project)},
        {u"bits"_s, bitNotes(project)},
    };
}

ProjectState RecoveryProject::fromJson(const QJsonObject& object)
{
    ProjectState project = ProjectFile::fromJson(object["project"_L1].toObject());
    readKinds(object["kinds"_L1].toArray(), project.loads);
    readScreen(object["screen"_L1].toObject(), project);
    readBitNotes(object["bits"_L1].toArray(), project);
    return project;
}

bool RecoveryProject::isSame(const ProjectState& a, const ProjectState& b)
{
    return areNumbersSame(PROJECT_NUMBERS, a, b) && areSame(a.motors, b.motors, isSameMotor)
           && areSame(a.loads, b.loads, isSameLoad);
}

bool RecoveryProject::isUntouched(const ProjectState& project)
{
    constexpr std::array FRESH_MOTOR_WEIGHTS{25.0F, 50.0F}; // [kg], in a new tab and after a reset
    return std::any_of(FRESH_MOTOR_WEIGHTS.begin(), FRESH_MOTOR_WEIGHTS.end(), [&](float weight) {
        const ProjectState fresh = Edits::freshProject(project.tabName, weight);
        return isSameNumber(project.trussLength, fresh.trussLength)
               && isSameNumber(project.trussSelfWeight, fresh.trussSelfWeight)
               && isSameNumber(project.limitCPL, fresh.limitCPL)
               && areSame(project.motors, fresh.motors, isSameMotor) && project.loads.isEmpty();
    });
}
