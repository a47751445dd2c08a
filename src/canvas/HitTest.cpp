#include "canvas/HitTest.h"

#include "engine/Arrays.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <set>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

using HitTest::Target;
using Box = std::function<QRect(const ActiveLoad& segment, float centre)>;

/// Hits arrays, each once and through the first of its loads that is asked about. The arrays are
/// summed up when the first one is.
class ArrayProbe
{
public: // construction
    ArrayProbe(const QList<ActiveLoad>& loads, Box box, QPoint point)
        : m_loads(loads)
        , m_box(std::move(box))
        , m_point(point)
    {
    }

public: // queries
    bool hits(const ActiveLoad& load)
    {
        if (!m_tried.insert(load.groupId).second)
            return false;
        if (!m_arrays)
            m_arrays = Arrays::summarize(m_loads, -1);
        return m_box(load, m_arrays->value(load.groupId).centre).contains(m_point);
    }

private: // data
    const QList<ActiveLoad>& m_loads;
    Box m_box;
    QPoint m_point;
    std::optional<ArraySummaries> m_arrays;
    std::set<int> m_tried;
};

ArrayProbe bodyProbe(const Scene& scene, const TrussGeometry& g, QPoint point)
{
    return {scene.loads, [&g](const ActiveLoad& load, float centre) { return g.arrayBox(load, centre); },
            point};
}

ArrayProbe menuProbe(const Scene& scene, const TrussGeometry& g, QPoint point)
{
    return {scene.loads, [&g](const ActiveLoad& load, float centre) { return g.arrayMenuBox(load, centre); },
            point};
}

int motorBodyAt(const Scene& scene, const TrussGeometry& g, QPoint point)
{
    const auto found = std::find_if(scene.motors.cbegin(), scene.motors.cend(), [&](const Motor& motor) {
        return g.motorBodyBox(motor, scene.motorBoxSize).contains(point);
    });
    return found == scene.motors.cend() ? -1 : static_cast<int>(found - scene.motors.cbegin());
}

Target loadTargetAt(const Scene& scene, const TrussGeometry& g, QPoint point)
{
    ArrayProbe probe = bodyProbe(scene, g, point);
    for (qsizetype i = 0; i < scene.loads.size(); ++i) {
        const ActiveLoad& load = scene.loads.at(i);
        if (Project::isArraySegment(load)) {
            if (probe.hits(load))
                return HitTest::ArrayBody{i};
            continue;
        }
        if (g.loadLabelBox(load).contains(point))
            return HitTest::LoadLabel{i};
        if (g.loadBodyBox(load).contains(point))
            return HitTest::LoadBody{i};
    }
    return std::monostate();
}

} // namespace

Target HitTest::targetAt(const Scene& scene, const TrussGeometry& geometry, QPoint point)
{
    for (int i = 0; i < scene.motors.size(); ++i) {
        const Motor& motor = scene.motors.at(i);
        if (geometry.motorLabelBox(motor).contains(point))
            return MotorLabel{i};
        if (geometry.motorBodyBox(motor, scene.motorBoxSize).contains(point))
            return MotorBody{i};
    }
    return loadTargetAt(scene, geometry, point);
}

Target HitTest::menuTargetAt(const Scene& scene, const TrussGeometry& geometry, QPoint point)
{
    if (const int motor = motorBodyAt(scene, geometry, point); motor != -1)
        return MotorBody{motor};
    ArrayProbe probe = menuProbe(scene, geometry, point);
    for (qsizetype i = 0; i < scene.loads.size(); ++i) {
        if (Project::isArraySegment(scene.loads.at(i)) && probe.hits(scene.loads.at(i)))
            return ArrayBody{i};
    }
    for (qsizetype i = 0; i < scene.loads.size(); ++i) {
        if (geometry.loadMenuBox(scene.loads.at(i)).contains(point))
            return LoadBody{i};
    }
    return {};
}

bool HitTest::isOverGrip(const Scene& scene, const TrussGeometry& geometry, QPoint point)
{
    if (motorBodyAt(scene, geometry, point) != -1)
        return true;
    ArrayProbe probe = bodyProbe(scene, geometry, point);
    return std::any_of(scene.loads.cbegin(), scene.loads.cend(), [&probe](const ActiveLoad& load) {
        return load.type == "Video"_L1 && probe.hits(load);
    });
}
