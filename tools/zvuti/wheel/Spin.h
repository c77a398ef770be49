// One spin of the prize wheel, tick by tick, as the library performs it.
#pragma once

#include <cstddef>
#include <vector>

namespace tool {

struct SpinOptions {
  int slot = 0;
  int slots = 12;
  double topSpeed = 0.8;  ///< radians per tick
  double gain = 0.004;    ///< speed gained per tick while the wheel speeds up
  double start = 0.0;     ///< angle at the start, in radians
  int even = 60;          ///< ticks at top speed before the slot is chosen
};

struct Tick {
  double angle = 0.0;   ///< within a turn, in radians
  double turned = 0.0;  ///< since the start, in radians
  double speed = 0.0;   ///< radians per tick
};

struct Spin {
  std::vector<Tick> ticks;    ///< starts with the wheel at rest
  std::size_t evenAt = 0;     ///< the tick that reached top speed
  std::size_t runOutAt = 0;   ///< the tick at which the slot was chosen
  double deceleration = 0.0;  ///< speed lost per tick from then on
  double slotLow = 0.0, slotHigh = 0.0;
};

inline constexpr double kFullTurn = 6.283185307179586;

/// Spins the wheel until it stops. Throws Failure if an option is out of range or the spin takes more than a
/// million ticks.
Spin MakeSpin(const SpinOptions& options);

}  // namespace tool
