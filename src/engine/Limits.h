#pragma once

/// Every limit and factor that a load, a motor or the truss is judged by, and the verdicts
/// themselves.
namespace Limits
{

/// What a load grows by while its motors start and stop (DGUV V17/18), without a unit.
inline constexpr float DYNAMIC_FACTOR = 1.25F;
/// From this share of its capacity on a motor is near its limit.
inline constexpr float NEAR_CAPACITY_SHARE = 0.8F;
/// From here on the truss is overstressed [%].
inline constexpr float FULL_STRESS = 100.0F;
/// From here on it is near that [%].
inline constexpr float HIGH_STRESS = 80.0F;
/// An overhang longer than this share of the truss makes the layout unstable.
inline constexpr float LARGEST_OVERHANG_SHARE = 0.45F;

/// How close something is to its limit.
enum class Level
{
    Within,
    Near,
    Exceeded
};

/// `stress` [%] against `HIGH_STRESS` and `FULL_STRESS`, both counting as reached.
[[nodiscard]] Level stressLevel(float stress);

enum class MotorVerdict
{
    Fits,
    StaticOverload, ///< what hangs on the motor exceeds its capacity
    DynamicOverload ///< starting and stopping exceeds it, the motor's own weight included
};

/// What a motor of `selfWeight` [kg] pulls at its suspension on start and stop while `atPoint` [kg]
/// hang on it: (atPoint + selfWeight) × 1.25 [kg].
[[nodiscard]] float dynamicLoad(float atPoint, float selfWeight);

/// The static test leaves the motor's own weight out, the dynamic one has it in. Both are strict:
/// a load equal to `capacity` [kg] fits, and so does what is not a number.
[[nodiscard]] MotorVerdict motorVerdict(float atPoint, float selfWeight, float capacity);

/// Exceeded where the verdict is not that it fits, near where the dynamic load reaches 80 % of
/// `capacity` [kg].
[[nodiscard]] Level motorLevel(float atPoint, float selfWeight, float capacity);

} // namespace Limits
