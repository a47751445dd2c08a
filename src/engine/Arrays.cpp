#include "engine/Arrays.h"

namespace
{

/// The mean of positions [m], summed in double precision.
class MeanPosition
{
public: // commands
    void add(float position)
    {
        m_sum += static_cast<double>(position);
        ++m_count;
    }

public: // queries
    /// Nothing without positions.
    [[nodiscard]] std::optional<float> value() const
    {
        if (m_count == 0)
            return std::nullopt;
        return static_cast<float>(m_sum / m_count);
    }

private: // data
    double m_sum = 0.0;
    int m_count = 0;
};

} // namespace

ArraySummaries Arrays::summarize(const QList<ActiveLoad>& loads, int selectedLoadId)
{
    QHash<int, MeanPosition> means;
    ArraySummaries arrays;
    for (const ActiveLoad& load : loads) {
        means[load.groupId].add(load.positionX);
        ArraySummary& array = arrays[load.groupId];
        if (array.width == 0.0F)
            array.width = load.screenWidth;
        array.selected = array.selected || (selectedLoadId != -1 && load.id == selectedLoadId);
    }
    for (auto mean = means.cbegin(); mean != means.cend(); ++mean)
        arrays[mean.key()].centre = mean->value().value_or(0.0F);
    return arrays;
}

std::optional<float> Arrays::centreOfScreen(const QList<ActiveLoad>& loads, int groupId)
{
    MeanPosition mean;
    for (const ActiveLoad& load : loads) {
        if (load.groupId == groupId && Project::isScreen(load))
            mean.add(load.positionX);
    }
    return mean.value();
}
