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
          "--slots must be 1 to " + std::to_string(kMostSlots));
  Require(options.slot >= 0 && options.slot < options.slots, "--slot " + std::to_string(options.slot) +
                                                                 ": this wheel has slots 0 to " +
                                                                 std::to_string(options.slots - 1));
  // Note() sees only the angle, so it would count a tick of more than a turn as less than one.
  Require(options.topSpeed > 0 && options.topSpeed < kFullTurn,
          "--top-speed must be above 0 and below a full turn, 6.283 radians per tick");
  Require(std::isfinite(options.gain) && options.gain > 0, "--gain must be above 0");
  Require(options.start >= 0 && options.start <= kFullTurn,
          "--start must be 0 to a full turn, 6.283 radians");
  Require(options.even >= 0, "--even must be 0 or more");
  return Wheel(options).Run(options);
}

}  // namespace tool
