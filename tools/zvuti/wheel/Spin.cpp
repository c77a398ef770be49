#include "wheel/Spin.h"

#include <cmath>
#include <string>

#include <ZvUtiLib/CUtiTurnTable.h>

#include "shared/Terminal.h"

namespace tool {
namespace {

constexpr std::size_t kMostTicks = 1'000'000;
constexpr int kMostSlots = 1000;

class Wheel : public CUtiTurnTable {
 public:
  explicit Wheel(const SpinOptions& options) {
    TurnTable_Initial();
    if (options.slots != slotCount) Divide(options.slots);
    maxSpeed = options.topSpeed;
    acceleration = options.gain;
    curAngle = options.start;
  }

  Spin Run(const SpinOptions& options) {
    Spin spin;
    spin.slotLow = slotRanges[options.slot].low;
    spin.slotHigh = slotRanges[options.slot].high;
    Note(spin);
    TurnTable_Start();
    while (state == TurnStateAccelerate) Step(spin);
    spin.evenAt = spin.ticks.size() - 1;
    for (int i = 0; i < options.even; ++i) Step(spin);
    spin.runOutAt = spin.ticks.size() - 1;
    TurnTable_End(options.slot);
    spin.deceleration = deceleration;
    while (state != TurnStateIdle) Step(spin);
    return spin;
  }

 private:
  void Divide(int count) {
    TurnTable_Uninitial();
    slotRanges = new SlotRange[static_cast<std::size_t>(count)];
    slotCount = count;
    double low = 0.0;
    for (int i = 0; i < count; ++i) {
      slotRanges[i] = {low, low + kFullTurn / count};
      low = slotRanges[i].high;
    }
  }

  void Step(Spin& spin) {
    if (spin.ticks.size() > kMostTicks) throw Failure("the spin would take more than a million ticks");
    TurnTable_Update(0.0F);
    Note(spin);
  }

  void Note(Spin& spin) {
    double turned = 0.0;
    if (!spin.ticks.empty()) {
      const Tick& last = spin.ticks.back();
      const double step = curAngle - last.angle;
      turned = last.turned + (step < 0 ? step + kFullTurn : step);
    }
    spin.ticks.push_back({curAngle, turned, curSpeed});
  }
};

void Require(bool holds, const std::string& what) {
  if (!holds) throw Failure(what);
}

}  // namespace

Spin MakeSpin(const SpinOptions& options) {
  Require(options.slots >= 1 && options.slots <= kMostSlots,
          "--slots is 1 up to " + std::to_string(kMostSlots));
  Require(options.slot >= 0 && options.slot < options.slots, "--slot " + std::to_string(options.slot) +
                                                                 ": the slots of this wheel are 0 to " +
                                                                 std::to_string(options.slots - 1));
  // A tick of more than a turn would be seen as a shorter one.
  Require(options.topSpeed > 0 && options.topSpeed < kFullTurn,
          "--top-speed is above 0 and below a turn, 6.283 radians per tick");
  Require(std::isfinite(options.gain) && options.gain > 0, "--gain is above 0");
  Require(options.start >= 0 && options.start <= kFullTurn, "--start is 0 up to a turn, 6.283 radians");
  Require(options.even >= 0, "--even is 0 or more");
  return Wheel(options).Run(options);
}

}  // namespace tool
