#pragma once

#include "engine/SecondOpinion.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

/// Layouts for the tests of the second opinion: written down, read from the examples, and random.
namespace Shows
{

/// Motors of 1000 kg capacity called A, B, C …; lever figures of 0.
inline SecondOpinion::Layout show(double length, double selfWeight, const std::vector<double>& motors,
                                  std::vector<PointMass> loads, double limitCPL = 1600.0)
{
    SecondOpinion::Layout layout;
    layout.length = length;
    layout.selfWeight = selfWeight;
    layout.limitCPL = limitCPL;
    layout.loads = std::move(loads);
    for (const double position : motors) {
        SecondOpinion::Motor motor;
        motor.title = QChar(static_cast<ushort>(u'A' + layout.motors.size() % 26));
        motor.position = position;
        motor.capacity = 1000.0;
        motor.selfWeight = 50.0;
        layout.motors.push_back(motor);
    }
    return layout;
}

/// An example of the program; `levers` are today's figures [kg], in the order of its motors.
inline SecondOpinion::Layout example(const QString& name, const std::vector<double>& levers)
{
    QFile file(QStringLiteral(VELMORA_SOURCE_DIR "/examples/") + name + QStringLiteral(".rig"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonObject project = QJsonDocument::fromJson(file.readAll()).object();
    const auto number = [](const QJsonValue& object, const char* key) {
        return object[QLatin1String(key)].toDouble();
    };
    SecondOpinion::Layout layout = show(number(project, "trussLength"), number(project, "trussSelfWeight"),
                                        {}, {}, number(project, "limitCPL"));
    const QJsonArray motors = project[QLatin1String("motors")].toArray();
    for (const QJsonValue& motor : motors) {
        layout.motors.push_back({motor[QLatin1String("modelName")].toString(), number(motor, "positionX"),
                                 number(motor, "capacity"), number(motor, "selfWeight"),
                                 levers.at(layout.motors.size())});
    }
    const QJsonArray loads = project[QLatin1String("loads")].toArray();
    for (const QJsonValue& load : loads)
        layout.loads.push_back({number(load, "positionX"), number(load, "mass")});
    return layout;
}

/// `layout` seen from behind the truss; its motors stay in the order of the list.
inline SecondOpinion::Layout mirrored(SecondOpinion::Layout layout)
{
    for (SecondOpinion::Motor& motor : layout.motors)
        motor.position = layout.length - motor.position;
    for (PointMass& load : layout.loads)
        load.position = layout.length - load.position;
    return layout;
}

/// Everything that `layout` weighs [kg].
inline double weightOf(const SecondOpinion::Layout& layout)
{
    double sum = layout.selfWeight * layout.length;
    for (const PointMass& load : layout.loads)
        sum += load.mass;
    return sum;
}

/// Whether the centre of gravity of `layout` lies more than 1 mm inside its outermost motors.
inline bool hangs(const SecondOpinion::Layout& layout)
{
    const double weight = weightOf(layout);
    double moment = layout.selfWeight * layout.length * layout.length / 2.0;
    for (const PointMass& load : layout.loads)
        moment += load.mass * load.position;
    const auto isLeft = [](const auto& a, const auto& b) { return a.position < b.position; };
    const auto [first, last] = std::minmax_element(layout.motors.begin(), layout.motors.end(), isLeft);
    return weight > 0.0 && moment > weight * (first->position + 0.001)
           && moment < weight * (last->position - 0.001);
}

/// Random layouts, the same for the same seed on every machine.
class Generator
{
public: // construction
    explicit Generator(std::uint32_t seed)
        : m_random(seed)
    {
    }

public: // queries
    /// An integer from `low` to `high`.
    int integer(int low, int high)
    {
        return low + static_cast<int>(m_random() % static_cast<std::uint32_t>(high - low + 1));
    }

    /// A number from `low` to `high`, in about a million steps.
    double real(double low, double high)
    {
        return low + (high - low) * integer(0, 1'000'000) * 1e-6;
    }

    /// A multiple of 1/8 m on a truss of `length` [m].
    double place(double length)
    {
        return integer(0, static_cast<int>(length * 8.0)) / 8.0;
    }

    /// A truss of 4 to 24 m on 2 to `mostMotors` motors at different places, with up to 8 loads. Loads hang
    /// at motors now and then.
    SecondOpinion::Layout next(int mostMotors)
    {
        const double length = integer(4, 24);
        std::vector<double> motors;
        const auto count = static_cast<std::size_t>(integer(2, mostMotors));
        while (motors.size() < count) {
            const double x = place(length);
            if (std::find(motors.begin(), motors.end(), x) == motors.end())
                motors.push_back(x);
        }
        SecondOpinion::Layout layout = show(length, integer(0, 3) == 0 ? 0.0 : real(0.0, 25.0), motors, {});
        for (int left = integer(0, 8); left > 0; --left) {
            const bool atMotor = integer(0, 4) == 0;
            const std::size_t motor = static_cast<std::size_t>(integer(0, 99)) % motors.size();
            layout.loads.push_back({atMotor ? motors[motor] : place(length), real(0.0, 900.0)});
        }
        return layout;
    }

    /// As `next`, but only those that hang on level motors: none that tips or weighs nothing.
    SecondOpinion::Layout nextHanging(int mostMotors)
    {
        for (;;) {
            SecondOpinion::Layout layout = next(mostMotors);
            if (hangs(layout))
                return layout;
        }
    }

private: // data
    std::mt19937 m_random;
};

} // namespace Shows
