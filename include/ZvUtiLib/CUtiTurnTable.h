// CUtiTurnTable: the motion of a prize wheel that comes to rest in a chosen slot.
//
// A base class without a picture and without prizes: a derived class drives the ticks, chooses the
// slot and hears of the three turning points. Angles are in radians, speeds in radians per tick, and
// each TurnTable_Update is one tick. All calls on one object come from one thread at a time.
#pragma once

#include <ZvUtiLib/Export.h>

/// The angles at which a slot of the wheel begins and ends.
struct SlotRange {
  double low;   ///< radians, where the slot begins
  double high;  ///< radians, where it ends
};

/// What the wheel does at a tick.
enum TurnState : int {
  TurnStateIdle = 0,        ///< at rest
  TurnStateAccelerate = 1,  ///< gains speed up to the top speed
  TurnStateEven = 2,        ///< keeps its speed
  TurnStateDecelerate = 3,  ///< loses speed down to rest
};

/// A life is: construct, TurnTable_Initial, then for each spin TurnTable_Start, ticks, TurnTable_End
/// with the slot, ticks until OnTurnTableEnd. The next spin begins where the last one ended.
class ZVUTILIB_API CUtiTurnTable {
 public:
  /// A wheel without slots, at rest at the angle 0.
  CUtiTurnTable() = default;
  /// The copy has the same slots, in an array of its own, and the same motion. If the heap has no room
  /// for the array, the copy has none and refuses every TurnTable_End.
  CUtiTurnTable(const CUtiTurnTable& other);
  CUtiTurnTable& operator=(const CUtiTurnTable& other);
  virtual ~CUtiTurnTable();

  /// The current angle, from 0 up to and including a full turn between ticks; a notification may see
  /// it up to one tick's turn above that.
  double TurnTable_GetCurAngle() const { return curAngle; }

 protected:
  /// One tick; the argument is not looked at. Returns 1, or 0 when a notification returned 0: the
  /// state has changed by then, and a full turn is taken off the angle at the next tick only.
  virtual int TurnTable_Update(float elapsed);
  /// Makes a wheel of 12 equal slots at rest, with the top speed 0.8 and a gain of 0.004 per tick.
  /// Returns 0, without slots, when the heap refuses them, and when TurnTable_Uninitial returned 0.
  virtual int TurnTable_Initial();
  /// Gives the slots away; returns 1.
  virtual int TurnTable_Uninitial();
  /// Speeds the wheel up from its present speed. Returns 1, or 0 when OnTurnTableStart returned 0.
  virtual int TurnTable_Start();
  /// Lets the wheel run out into `slot`, counted from 0: it makes twenty full turns and the way to the
  /// slot's low bound, losing speed evenly. May be called in any state and again while running out; within
  /// a notification up to one tick's turn is missing from the twenty. With v, the speed at the call:
  /// - It stops less than v * v / 2000 + 1e-9 beyond the bound (0.0004 for v up to 0.8), and not more than
  ///   1e-9 before it, which is rounding. So it stops in the slot for v from 0.004 to 32; on a wheel with
  ///   more than 12 slots, n of them, up to 1000, for v from 0.004 to 112 / sqrt(n).
  /// - It takes 251 / v to 264 / v ticks, rounded up: 315 to 330 for v = 0.8, but millions for the small
  ///   speeds near the end of a run-out, so a second call there can take that long.
  /// - At v = 0 (at rest, and before the first tick after TurnTable_Start) it returns 1 and sets endSlot, but
  ///   the next tick ends the run-out where the wheel stands.
  /// Returns 0, and changes nothing, for a slot that the wheel does not have.
  virtual int TurnTable_End(int slot);

  /// Turning points: the spin begins, the top speed is reached, the wheel has run out. Told after
  /// the state has changed; a derived class returns 0 to make the call that brought it there return 0.
  virtual int OnTurnTableStart();
  virtual int OnSpeedReachEven();
  virtual int OnTurnTableEnd();

 private:
  /// The middle of the range from `first` to `second`, through zero when `second` is the smaller one;
  /// may lie above a full turn then. 0 for an empty range.
  virtual double GetAngleAverage(double first, double second);

 protected:
  SlotRange* slotRanges = nullptr;  ///< `slotCount` slots from new[], owned by this object, or null
  int slotCount = 0;                ///< 12 after TurnTable_Initial
  double curAngle = 0.0;            ///< radians, 0 to a full turn
  double curSpeed = 0.0;            ///< radians per tick
  double maxSpeed = 0.0;            ///< of TurnStateEven, radians per tick
  double acceleration = 0.0;        ///< speed gained per tick
  double deceleration = 0.0;        ///< speed lost per tick when running out
  int state = TurnStateIdle;        ///< a TurnState
  int endSlot = 0;                  ///< slot of the last TurnTable_End that returned 1; not where it stands
};
