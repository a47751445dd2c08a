#pragma once

#include "engine/TrussBeam.h"

#include <vector>

/// What each motor can carry at all: over every levelling, every stiffness of truss, chains and roof
/// and every path of the load, as long as chains only pull.
///
/// The most of R_k over R ≥ 0, Σ R = W, Σ R·x = W·c is a linear programme with two equations, so that at
/// its corners two motors carry everything (c: centre of gravity, W: whole weight):
///   x_k < c: W·(x_N − c) / (x_N − x_k);   x_k > c: W·(c − x₁) / (x_k − x₁);   x_k = c: W
/// The least is 0, but for the only motor on its side of c: its share against the nearest motor
/// on the other side. Each of these values can occur.
namespace AnyLevelling
{

struct Range
{
    double most;  ///< [kg]
    double least; ///< [kg]
};

/// The range of each support of `beam`, two at least, between whose outermost the centre of gravity lies.
std::vector<Range> ranges(const TrussBeam& beam);

} // namespace AnyLevelling
