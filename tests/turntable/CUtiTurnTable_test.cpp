#include <ZvUtiLib/CUtiTurnTable.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "tests/support/HeapFaults.h"

namespace {

constexpr double kTurn = 6.283185307179586;
constexpr int kSlots = 12;
using Calls = std::vector<std::pair<std::string, int>>;  // notifications, each with the state that it sees

// Opens the protected members, and records the notifications.
struct Wheel : CUtiTurnTable {
  using CUtiTurnTable::acceleration, CUtiTurnTable::curAngle, CUtiTurnTable::curSpeed,
      CUtiTurnTable::deceleration, CUtiTurnTable::endSlot, CUtiTurnTable::maxSpeed, CUtiTurnTable::slotCount,
      CUtiTurnTable::slotRanges, CUtiTurnTable::state;
  using CUtiTurnTable::TurnTable_End, CUtiTurnTable::TurnTable_Initial, CUtiTurnTable::TurnTable_Start,
      CUtiTurnTable::TurnTable_Uninitial;

  int Tick(int times = 1) {
    int result = 1;
    while (times-- > 0) result = TurnTable_Update(static_cast<float>(times));
    return result;
  }
  void Spin(int ticks) {
    TurnTable_Initial();
    TurnTable_Start();
    Tick(ticks);
  }
  // Ticks until the wheel rests; returns how many there were.
  int RunOut() {
    int ticks = 0;
    for (; state != TurnStateIdle && ticks < 1'000'000; ++ticks) Tick();
    return ticks;
  }

  Calls calls;
  int answer = 1;

 private:
  int Answer(const char* call) {
    calls.emplace_back(call, state);
    return answer;
  }
  int OnTurnTableStart() override { return Answer("start"); }
  int OnSpeedReachEven() override { return Answer("even"); }
  int OnTurnTableEnd() override { return Answer("end"); }
};

const Calls kWholeSpin{{"start", TurnStateAccelerate}, {"even", TurnStateEven}, {"end", TurnStateIdle}};

TEST(CUtiTurnTable, MakesTheWorkedSpin) {
  Wheel wheel;
  wheel.Spin(0);
  const struct {
    int tick, state;
    double speed, angle;
  } moments[] = {{0, 1, 0, 0},           {1, 1, 0.004, 0.002},      {2, 1, 0.008, 0.008},
                 {3, 1, 0.012, 0.018},   {199, 1, 0.796, 3.803776}, {200, 2, 0.8, 4.601776},
                 {250, 2, 0.8, 0.619479}};
  int tick = 0;
  for (const auto& m : moments) {
    for (; tick < m.tick; ++tick) ASSERT_EQ(wheel.Tick(), 1);
    EXPECT_EQ(wheel.state, m.state) << tick;
    EXPECT_NEAR(wheel.curSpeed, m.speed, 1e-12) << tick;
    EXPECT_NEAR(wheel.TurnTable_GetCurAngle(), m.angle, 5e-7) << tick;
  }
  ASSERT_EQ(wheel.TurnTable_End(5), 1);
  EXPECT_NEAR(wheel.deceleration, 0.00250661, 5e-9);
  EXPECT_EQ(wheel.RunOut(), 320);
  EXPECT_NEAR(wheel.curAngle, 2.618159, 5e-7);
  EXPECT_EQ(wheel.curSpeed, 0.0);
  EXPECT_EQ(wheel.calls, kWholeSpin);
}

TEST(CUtiTurnTable, ASpeedMetExactlyIsMet) {
  Wheel wheel;
  wheel.Spin(0);
  wheel.maxSpeed = 1.0;
  wheel.acceleration = wheel.deceleration = 0.25;  // without rounding
  wheel.Tick(4);
  EXPECT_EQ(wheel.state, TurnStateEven);
  wheel.state = TurnStateDecelerate;
  wheel.Tick(4);
  EXPECT_EQ(wheel.curAngle, 4.0);
  EXPECT_EQ(wheel.calls, kWholeSpin);
}

TEST(CUtiTurnTable, RestsAfterTwentyTurnsJustAfterTheLowerBoundOfTheSlot) {
  for (const double speed : {0.004, 0.05, 0.8, 3.5, 10.0, 32.0}) {
    // A way of whole ticks leaves only rounding errors, which may stop the wheel before the bound.
    const double whole = std::ceil(40 * kTurn / speed) * speed / 2 - 20 * kTurn;
    for (int slot = 0; slot < kSlots; ++slot) {
      for (const double way : {whole, 1.0, 6.0}) {
        SCOPED_TRACE(testing::Message() << "speed " << speed << ", slot " << slot << ", way " << way);
        Wheel wheel;
        wheel.TurnTable_Initial();
        const double low = wheel.slotRanges[slot].low;
        wheel.curSpeed = speed;
        wheel.curAngle = std::fmod(low - way + kTurn, kTurn);
        ASSERT_EQ(wheel.TurnTable_End(slot), 1);
        const int ticks = wheel.RunOut();
        EXPECT_GE(ticks, static_cast<int>(251 / speed));
        EXPECT_LE(ticks, std::ceil(264 / speed));
        const double beyond = std::remainder(wheel.curAngle - low, kTurn);
        EXPECT_GE(beyond, -1e-9);
        EXPECT_LT(beyond, std::min(kTurn / kSlots, speed * speed / 2000 + 1e-9));
      }
    }
  }
}

TEST(CUtiTurnTable, TakesTheMiddleOfARangeThroughZero) {
  // The middle shows in the deceleration: the wheel stops half of a slot's width before it.
  const struct { double low, high, middle; } ranges[] = {{1, 3, 2}, {6, 1, (7 + kTurn) / 2}, {2, 2, 0}};
  for (const auto& r : ranges) {
    Wheel wheel;
    wheel.TurnTable_Initial();
    wheel.slotRanges[0] = {r.low, r.high};
    wheel.curSpeed = 1.0;
    ASSERT_EQ(wheel.TurnTable_End(0), 1);
    const double stop = std::fmod(r.middle - kTurn / kSlots / 2 + kTurn, kTurn);
    EXPECT_NEAR(0.5 / wheel.deceleration, 20 * kTurn + stop, 1e-9);
  }
}

TEST(CUtiTurnTable, AStopOneTurnAheadAddsATurn) {
  Wheel wheel;
  wheel.TurnTable_Initial();
  const double half = kTurn / kSlots / 2;
  wheel.slotRanges[0] = {kTurn + half - 1, kTurn + half + 1};
  wheel.curSpeed = 1.0;
  ASSERT_EQ(wheel.TurnTable_End(0), 1);
  EXPECT_NEAR(0.5 / wheel.deceleration, (20 + 1) * kTurn, 1e-9);
}

TEST(CUtiTurnTable, RefusesSlotsThatItDoesNotHave) {
  Wheel wheel;
  EXPECT_EQ(wheel.TurnTable_End(0), 0);
  wheel.Spin(5);
  for (const int slot : {kSlots, -1, INT_MIN, INT_MAX}) EXPECT_EQ(wheel.TurnTable_End(slot), 0) << slot;
  EXPECT_EQ(wheel.state, TurnStateAccelerate);
  EXPECT_EQ(wheel.TurnTable_End(11), 1);
  EXPECT_EQ(wheel.TurnTable_Uninitial(), 1);
  EXPECT_EQ(wheel.slotCount, 12);
  EXPECT_EQ(wheel.TurnTable_End(3), 0);
  EXPECT_EQ(wheel.endSlot, 11);
}

TEST(CUtiTurnTable, WithoutSpeedItEndsWhereItStands) {
  Wheel wheel;
  wheel.TurnTable_Initial();
  wheel.curAngle = kTurn;
  EXPECT_EQ(wheel.Tick(), 1);
  EXPECT_EQ(wheel.TurnTable_Start(), 1);
  ASSERT_EQ(wheel.TurnTable_End(4), 1);
  EXPECT_EQ(wheel.deceleration, 0.0);
  EXPECT_EQ(wheel.Tick(), 1);
  EXPECT_EQ(wheel.curAngle, kTurn);  // a full turn stays, too
  EXPECT_EQ(wheel.endSlot, 4);
  ASSERT_EQ(wheel.TurnTable_End(7), 1);  // at rest now
  EXPECT_EQ(wheel.Tick(), 1);
  EXPECT_EQ(wheel.curAngle, kTurn);
  EXPECT_EQ(wheel.calls,
            (Calls{{"start", TurnStateAccelerate}, {"end", TurnStateIdle}, {"end", TurnStateIdle}}));
}

TEST(CUtiTurnTable, AVetoShowsAndLeavesTheWrapToTheNextTick) {
  Wheel wheel;
  wheel.answer = 0;
  wheel.TurnTable_Initial();
  EXPECT_EQ(wheel.TurnTable_Start(), 0);
  EXPECT_EQ(wheel.Tick(199), 1);
  wheel.curAngle = kTurn;
  EXPECT_EQ(wheel.Tick(), 0);
  EXPECT_NEAR(wheel.curAngle, kTurn + 0.798, 1e-9);
  EXPECT_EQ(wheel.Tick(), 1);
  EXPECT_NEAR(wheel.curAngle, 1.598, 1e-9);
  wheel.TurnTable_Start();  // at the top: reaches it again
  EXPECT_EQ(wheel.Tick(), 0);
  EXPECT_EQ(wheel.calls, (Calls{{"start", TurnStateAccelerate},
                                {"even", TurnStateEven},
                                {"start", TurnStateAccelerate},
                                {"even", TurnStateEven}}));
  wheel.state = TurnStateDecelerate;
  wheel.deceleration = 0.8;
  EXPECT_EQ(wheel.Tick(), 0);
  EXPECT_EQ(wheel.state, TurnStateIdle);
}

TEST(CUtiTurnTable, ItsOwnNotificationsLetASpinGoOn) {
  struct Plain : CUtiTurnTable {
    using CUtiTurnTable::OnSpeedReachEven, CUtiTurnTable::OnTurnTableEnd, CUtiTurnTable::OnTurnTableStart;
  } plain;
  EXPECT_EQ(plain.OnTurnTableStart(), 1);
  EXPECT_EQ(plain.OnSpeedReachEven(), 1);
  EXPECT_EQ(plain.OnTurnTableEnd(), 1);
}

TEST(CUtiTurnTable, UpToAMillionFullTurnsAreSubtractedOneByOne) {
  Wheel wheel;
  wheel.TurnTable_Initial();
  double angle = wheel.curAngle = 1e6;
  while (angle > kTurn) angle -= kTurn;
  EXPECT_EQ(wheel.Tick(), 1);
  EXPECT_EQ(wheel.curAngle, angle);  // with the same rounding
}

TEST(CUtiTurnTable, SpeedsBeyondReasonDoNotHang) {
  for (const double speed : {3e6, 1e300, std::numeric_limits<double>::infinity()}) {
    Wheel wheel;
    wheel.state = TurnStateEven;
    wheel.curSpeed = speed;
    EXPECT_EQ(wheel.Tick(3), 1);
    EXPECT_FALSE(wheel.curAngle > kTurn);
    if (speed < 1e9) {
      EXPECT_NEAR(wheel.curAngle, std::fmod(3 * speed, kTurn), 1e-6);
    }
  }
}

TEST(CUtiTurnTable, CopiesOwnTheirSlotsAndGoOnAlike) {
  Wheel wheel, assigned;
  wheel.Spin(230);
  ASSERT_EQ(wheel.TurnTable_End(7), 1);
  const Wheel copy(wheel);
  assigned.TurnTable_Initial();
  assigned = wheel;
  assigned = static_cast<const Wheel&>(assigned);
  const int ticks = wheel.RunOut();
  wheel.TurnTable_Uninitial();
  for (Wheel each : {copy, assigned}) {
    EXPECT_EQ(each.endSlot, 7);
    EXPECT_EQ(each.RunOut(), ticks);
    EXPECT_EQ(each.curAngle, wheel.curAngle);
    EXPECT_EQ(each.TurnTable_End(7), 1);
  }
}

TEST(CUtiTurnTable, HasNoSlotsBeforeInitialAndWhereItIsRefused) {
  Wheel idle, wheel, copy(idle);
  EXPECT_EQ(copy.TurnTable_End(0), 0);
  EXPECT_EQ(idle.TurnTable_Initial(), 1);
  idle.slotCount = 0;
  EXPECT_EQ(Wheel(idle).slotRanges, nullptr);
  struct Stuck : Wheel {
    int TurnTable_Uninitial() override { return 0; }
  } stuck;
  EXPECT_EQ(stuck.TurnTable_Initial(), 0);
  EXPECT_EQ(stuck.slotRanges, nullptr);

  wheel.TurnTable_Initial();
  const test::HeapFaults faults(1, true);
  copy.CUtiTurnTable::operator=(wheel);
  EXPECT_EQ(copy.TurnTable_End(0), 0);
  EXPECT_EQ(wheel.TurnTable_Initial(), 0);
  EXPECT_EQ(wheel.slotRanges, nullptr);
}

}  // namespace
