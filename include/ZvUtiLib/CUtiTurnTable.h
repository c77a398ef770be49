// CUtiTurnTable: simulates the motion of a prize wheel that stops in a chosen slot.
//
// This base class does not handle drawing or prizes. A derived class drives the ticks, chooses the slot and
// is notified of the three turning points. Angles are in radians and speeds in radians per tick. Each
// TurnTable_Update is one tick. Use an object from one thread at a time.
#pragma once

#include <ZvUtiLib/Export.h>

/// The angles at which a slot of the wheel begins and ends.
struct SlotRange {
  double low;   ///< start of the slot, in radians
  double high;  ///< end of the slot, in radians
};

/// What the wheel does on a tick.
enum TurnState : int {
  TurnStateIdle = 0,        ///< at rest
  TurnStateAccelerate = 1,  ///< speeds up to the top speed
  TurnStateEven = 2,        ///< keeps its speed
  TurnStateDecelerate = 3,  ///< slows down to rest
};

/// Usage: construct, then call TurnTable_Initial. For each spin call TurnTable_Start, tick, call
/// TurnTable_End with the slot, and tick until OnTurnTableEnd. The next spin begins where the last one ended.
class ZVUTILIB_API CUtiTurnTable {
 public:
  /// A wheel without slots, at rest at angle 0.
  CUtiTurnTable() = default;
  /// The copy has the same slots, in its own array, and the same motion. If the array can't be allocated, the
  /// copy has none, and every TurnTable_End returns 0.
  CUtiTurnTable(const CUtiTurnTable& other);
  CUtiTurnTable& operator=(const CUtiTurnTable& other);
  virtual ~CUtiTurnTable();

  /// Returns the current angle. Between ticks it lies between 0 and a full turn, both included. During a
  /// notification, and after a tick whose notification returned 0, it may exceed a full turn by up to one
  /// tick's movement.
  double TurnTable_GetCurAngle() const { return curAngle; }

 protected:
  /// Advances the wheel by one tick; the argument is ignored. Returns 1, or 0 if a notification returned 0.
  /// In that case the state has already changed, and the angle is not reduced by a full turn until the next
  /// tick.
  virtual int TurnTable_Update(float elapsed);
  /// Creates a wheel of 12 equal slots at rest, with a top speed of 0.8 and a gain of 0.004 per tick. Returns
  /// 0, without slots, if they can't be allocated. Also returns 0 if TurnTable_Uninitial returned 0.
  virtual int TurnTable_Initial();
  /// Frees the slots; returns 1.
  virtual int TurnTable_Uninitial();
  /// Starts to speed up the wheel from its current speed. Returns 1, or 0 if OnTurnTableStart returned 0.
  virtual int TurnTable_Start();
  /// Lets the wheel run out into `slot`, counted from 0. The wheel makes twenty full turns plus the way to
  /// the slot's low bound, losing speed evenly. May be called in any state, and again while the wheel is
  /// running out. When called within a notification, the twenty turns are short by up to one tick's movement.
  /// With v, the speed at the call:
  /// - The wheel stops less than v * v / 2000 + 1e-9 beyond the bound (0.0004 for v up to 0.8), and at most
  ///   1e-9 before it, due to rounding. So it stops in the slot, or that little before it, for v from 0.004
  ///   to 32. On a wheel with n slots, 12 < n <= 1000, it does so for v from 0.004 to 112 / sqrt(n).
  /// - It takes 251 / v to 264 / v ticks, rounded up. That is 315 to 330 for v = 0.8, but millions for the
  ///   low speeds near the end of a run-out, so a second call there can take that long.
  /// - At v = 0 (at rest, and before the first tick after TurnTable_Start) the call returns 1 and sets
  ///   endSlot, but the next tick ends the run-out at the current angle.
  /// Returns 0 and changes nothing if the wheel does not have that slot.
  virtual int TurnTable_End(int slot);

  /// Notifications: the spin begins, the top speed is reached, the wheel has run out. They are called after
  /// the state has changed. If an override returns 0, the call that caused the change returns 0.
  virtual int OnTurnTableStart();
  virtual int OnSpeedReachEven();
  virtual int OnTurnTableEnd();

 private:
  /// Returns the middle of the range from `first` to `second`, which passes through zero if `second` is the
  /// smaller one. The result may then exceed a full turn. Returns 0 for an empty range.
  virtual double GetAngleAverage(double first, double second);

 protected:
  SlotRange* slotRanges = nullptr;  ///< `slotCount` slots from new[], owned by this object, or null
  int slotCount = 0;                ///< 12 after TurnTable_Initial
  double curAngle = 0.0;            ///< radians, 0 to a full turn
  double curSpeed = 0.0;            ///< radians per tick
  double maxSpeed = 0.0;            ///< speed in TurnStateEven, radians per tick
  double acceleration = 0.0;        ///< speed gained per tick
  double deceleration = 0.0;        ///< speed lost per tick when running out
  int state = TurnStateIdle;        ///< a TurnState
  int endSlot = 0;                  ///< slot of the last successful TurnTable_End; not the current position
};
