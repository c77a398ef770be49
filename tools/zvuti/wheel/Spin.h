// One spin of the prize wheel, tick by tick, as the library makes it.
#pragma once

#include <cstddef>
#include <vector>

namespace tool {

struct SpinOptions {
  int slot = 0;
  int slots = 12;
  double topSpeed = 0.8;  ///< radians per tick
  double gain = 0.004;    ///< speed gained per tick
  double start = 0.0;     ///< angle at which the wheel stands
  int even = 60;          ///< ticks at the top speed before the slot is known
};

struct Tick {
  double angle = 0.0;   ///< within a turn
  double turned = 0.0;  ///< since the start
  double speed = 0.0;
};

struct Spin {
  std::vector<Tick> ticks;    ///< the first one is the wheel at rest
  std::size_t evenAt = 0;     ///< the tick that reached the top speed
  std::size_t runOutAt = 0;   ///< the tick at which the slot was chosen
  double deceleration = 0.0;  ///< speed lost per tick from then on
  double slotLow = 0.0, slotHigh = 0.0;
};

inline constexpr double kFullTurn = 6.283185307179586;

/// Throws Failure for numbers with which no wheel turns, or for a spin of a million ticks and more.
Spin MakeSpin(const SpinOptions& options);

}  // namespace tool
