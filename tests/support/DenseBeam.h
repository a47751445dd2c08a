#pragma once

#include "engine/SecondOpinion.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

/// The stiffness method, written plainly and on its own: Euler-Bernoulli elements of EI = 1 between all
/// places where something happens, one full matrix, Gaussian elimination. Nothing of it is shared with the
/// program's three moments. Downwards is positive, for masses and deflections alike.
namespace DenseBeam
{

/// A full system of equations.
class Equations
{
public: // construction
    explicit Equations(std::size_t unknowns)
        : m_count(unknowns)
        , m_values(unknowns * (unknowns + 1), 0.0)
    {
    }

public: // commands
    double& at(std::size_t row, std::size_t column)
    {
        return m_values[row * (m_count + 1) + column];
    }

    double& rightSide(std::size_t row)
    {
        return at(row, m_count);
    }

    /// Gaussian elimination with the largest pivot of each column.
    std::vector<double> solved()
    {
        for (std::size_t k = 0; k < m_count; ++k) {
            bringLargestUp(k);
            for (std::size_t row = k + 1; row < m_count; ++row)
                eliminate(row, k);
        }
        std::vector<double> result(m_count, 0.0);
        for (std::size_t k = m_count; k-- > 0;) {
            double sum = rightSide(k);
            for (std::size_t column = k + 1; column < m_count; ++column)
                sum -= at(k, column) * result[column];
            result[k] = sum / at(k, k);
        }
        return result;
    }

private: // helpers
    void bringLargestUp(std::size_t k)
    {
        std::size_t largest = k;
        for (std::size_t row = k + 1; row < m_count; ++row) {
            if (std::abs(at(row, k)) > std::abs(at(largest, k)))
                largest = row;
        }
        for (std::size_t column = 0; column <= m_count; ++column)
            std::swap(at(k, column), at(largest, column));
    }

    void eliminate(std::size_t row, std::size_t k)
    {
        const double factor = at(row, k) / at(k, k);
        if (factor == 0.0)
            return;
        for (std::size_t column = k; column <= m_count; ++column)
            at(row, column) -= factor * at(k, column);
    }

private: // data
    std::size_t m_count;
    std::vector<double> m_values;
};

/// How a motor holds the truss.
struct Holder
{
    bool holds = true;       ///< false: the truss passes it freely
    double level = 0.0;      ///< how far its hook lies below the level, times EI [kg·m³]
    double stiffness = -1.0; ///< of a spring [1/m³, for EI = 1]; negative for a rigid hook
};

struct Answer
{
    std::vector<double> reactions;   ///< of each motor of the layout [kg]
    std::vector<double> deflections; ///< EI·y at each motor [kg·m³]
};

class Solver
{
public: // construction
    explicit Solver(const SecondOpinion::Layout& layout)
        : m_layout(layout)
    {
        m_nodes = {0.0, layout.length};
        for (const SecondOpinion::Motor& motor : layout.motors)
            m_nodes.push_back(motor.position);
        for (const PointMass& load : layout.loads)
            m_nodes.push_back(load.position);
        std::sort(m_nodes.begin(), m_nodes.end());
        m_nodes.erase(std::unique(m_nodes.begin(), m_nodes.end()), m_nodes.end());
    }

public: // queries
    /// One holder for each motor of the layout, in its order.
    Answer solve(const std::vector<Holder>& holders) const
    {
        const std::size_t nodes = 2 * m_nodes.size(); // deflection and slope of each
        Equations equations(nodes + holders.size());
        addElements(equations);
        for (const PointMass& load : m_layout.loads)
            equations.rightSide(2 * nodeAt(load.position)) += load.mass;
        for (std::size_t k = 0; k < holders.size(); ++k)
            addHolder(equations, holders[k], nodes + k, 2 * nodeAt(m_layout.motors[k].position));
        const std::vector<double> solution = equations.solved();

        Answer answer;
        for (std::size_t k = 0; k < holders.size(); ++k) {
            answer.reactions.push_back(solution[nodes + k]);
            answer.deflections.push_back(solution[2 * nodeAt(m_layout.motors[k].position)]);
        }
        return answer;
    }

private: // helpers
    std::size_t nodeAt(double position) const
    {
        return static_cast<std::size_t>(std::lower_bound(m_nodes.begin(), m_nodes.end(), position)
                                        - m_nodes.begin());
    }

    void addElements(Equations& equations) const
    {
        for (std::size_t node = 0; node + 1 < m_nodes.size(); ++node) {
            const double l = m_nodes[node + 1] - m_nodes[node];
            const double matrix[4][4] = {{12.0, 6.0 * l, -12.0, 6.0 * l},
                                         {6.0 * l, 4.0 * l * l, -6.0 * l, 2.0 * l * l},
                                         {-12.0, -6.0 * l, 12.0, -6.0 * l},
                                         {6.0 * l, 2.0 * l * l, -6.0 * l, 4.0 * l * l}};
            const double share = m_layout.selfWeight * l / 2.0;
            const double loads[4] = {share, share * l / 6.0, share, -share * l / 6.0};
            for (std::size_t i = 0; i < 4; ++i) {
                for (std::size_t j = 0; j < 4; ++j)
                    equations.at(2 * node + i, 2 * node + j) += matrix[i][j] / (l * l * l);
                equations.rightSide(2 * node + i) += loads[i];
            }
        }
    }

    /// The reaction is an unknown of its own: y = level, or R = stiffness·(y − level), or R = 0.
    static void addHolder(Equations& equations, const Holder& holder, std::size_t reaction,
                          std::size_t deflection)
    {
        equations.at(deflection, reaction) += 1.0;
        if (!holder.holds) {
            equations.at(reaction, reaction) = 1.0;
            return;
        }
        const bool isSpring = holder.stiffness >= 0.0;
        equations.at(reaction, deflection) = isSpring ? holder.stiffness : 1.0;
        equations.at(reaction, reaction) = isSpring ? -1.0 : 0.0;
        equations.rightSide(reaction) = isSpring ? holder.stiffness * holder.level : holder.level;
    }

private: // data
    SecondOpinion::Layout m_layout;
    std::vector<double> m_nodes; ///< [m]
};

} // namespace DenseBeam
