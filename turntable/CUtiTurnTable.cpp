// Results are exact to the last bit. So the order of each sum and product matters, and this file is compiled
// without fused multiply-add.
#include <ZvUtiLib/CUtiTurnTable.h>

#include <algorithm>
#include <cmath>
#include <new>

namespace {

constexpr int kSlots = 12;
constexpr double kTopSpeed = 0.8;
constexpr double kGain = 0.004;
constexpr double kFullTurn = 6.283185307179586;
constexpr double kRunOut = 125.66370614359172;  // twenty full turns

// Above this angle repeated subtraction takes too long, and at infinity it never ends. Only speeds set by a
// derived class can lead there.
constexpr double kFarAngle = 1e6;

SlotRange* CopyOf(const SlotRange* ranges, int count) {
  if (!ranges || count <= 0) return nullptr;
  auto* copy = new (std::nothrow) SlotRange[static_cast<unsigned>(count)];
  if (copy) std::copy_n(ranges, count, copy);
  return copy;
}

}  // namespace

CUtiTurnTable::CUtiTurnTable(const CUtiTurnTable& other)
    : slotRanges(CopyOf(other.slotRanges, other.slotCount)),
      slotCount(other.slotCount),
      curAngle(other.curAngle),
      curSpeed(other.curSpeed),
      maxSpeed(other.maxSpeed),
      acceleration(other.acceleration),
      deceleration(other.deceleration),
      state(other.state),
      endSlot(other.endSlot) {}

CUtiTurnTable& CUtiTurnTable::operator=(const CUtiTurnTable& other) {
  if (this == &other) return *this;
  delete[] slotRanges;
  slotRanges = CopyOf(other.slotRanges, other.slotCount);
  slotCount = other.slotCount;
  curAngle = other.curAngle;
  curSpeed = other.curSpeed;
  maxSpeed = other.maxSpeed;
  acceleration = other.acceleration;
  deceleration = other.deceleration;
  state = other.state;
  endSlot = other.endSlot;
  return *this;
}

CUtiTurnTable::~CUtiTurnTable() { delete[] slotRanges; }

int CUtiTurnTable::TurnTable_Update(float) {
  // Each tick advances by the mean of the speeds at its start and its end: the area under the speed curve.
  switch (state) {
    case TurnStateAccelerate: {
      const double next = curSpeed + acceleration;
      if (next < maxSpeed) {
        curAngle += (2 * curSpeed + acceleration) * 0.5;
        curSpeed = next;
        break;
      }
      state = TurnStateEven;
      curAngle += (maxSpeed + curSpeed) * 0.5;
      curSpeed = maxSpeed;
      if (OnSpeedReachEven() == 0) return 0;
      break;
    }
    case TurnStateEven:
      curAngle += curSpeed;
      break;
    case TurnStateDecelerate:
      if (curSpeed > deceleration) {
        curAngle += (2 * curSpeed - deceleration) * 0.5;
        curSpeed -= deceleration;
        break;
      }
      state = TurnStateIdle;
      curAngle += curSpeed * 0.5;
      curSpeed = 0.0;
      if (OnTurnTableEnd() == 0) return 0;
      break;
    default:
      break;
  }
  if (curAngle > kFarAngle) curAngle = std::fmod(curAngle, kFullTurn);
  while (curAngle > kFullTurn) curAngle -= kFullTurn;
  return 1;
}

int CUtiTurnTable::TurnTable_Initial() {
  if (TurnTable_Uninitial() == 0) return 0;
  slotCount = kSlots;
  delete[] slotRanges;  // an override of TurnTable_Uninitial may have left them
  slotRanges = new (std::nothrow) SlotRange[kSlots];
  if (!slotRanges) return 0;
  // Use running sums, not products. The last bound may differ from the full turn in the last bit.
  double low = 0.0;
  for (int i = 0; i < slotCount; ++i) {
    slotRanges[i].low = low;
    slotRanges[i].high = kFullTurn / slotCount + low;
    low = slotRanges[i].high;
  }
  state = TurnStateIdle;
  endSlot = 0;
  curAngle = 0.0;
  curSpeed = 0.0;
  maxSpeed = kTopSpeed;
  acceleration = kGain;
  return 1;
}

int CUtiTurnTable::TurnTable_Uninitial() {
  delete[] slotRanges;
  slotRanges = nullptr;
  return 1;
}

int CUtiTurnTable::TurnTable_Start() {
  state = TurnStateAccelerate;
  return OnTurnTableStart() != 0 ? 1 : 0;
}

int CUtiTurnTable::TurnTable_End(int slot) {
  if (slot < 0 || slot >= slotCount || !slotRanges) return 0;
  endSlot = slot;
  state = TurnStateDecelerate;
  const double mid = GetAngleAverage(slotRanges[slot].low, slotRanges[slot].high);
  double stop = mid - (kFullTurn / slotCount) * 0.5;
  if (stop > kFullTurn) stop -= kFullTurn;
  const double forward = stop >= curAngle ? stop - curAngle : kFullTurn - (curAngle - stop);
  const double distance = forward + kRunOut;
  deceleration = curSpeed / (2 * (distance / curSpeed));  // v^2 / 2d; yields 0 at rest
  return 1;
}

int CUtiTurnTable::OnTurnTableStart() { return 1; }
int CUtiTurnTable::OnSpeedReachEven() { return 1; }
int CUtiTurnTable::OnTurnTableEnd() { return 1; }

double CUtiTurnTable::GetAngleAverage(double first, double second) {
  if (second > first) return (first + second) * 0.5;
  if (first > second) return (first + second + kFullTurn) * 0.5;
  return 0.0;
}
