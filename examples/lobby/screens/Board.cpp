#include <cstdio>
#include <stdexcept>
#include <vector>

#include "Files.h"
#include "Screens.h"
#include "terminal/Terminal.h"

namespace {

constexpr int kEvenTicks = 50;   // spent at top speed before the wheel is asked to stop
constexpr int kMaxTicks = 2000;  // of one spin

// The prize wheel. Records the angle and speed at every tick, and the ticks at which the motion changes.
class PrizeWheel : public CUtiTurnTable {
 public:
  struct Tick {
    double angle, speed;
  };

  PrizeWheel() { TurnTable_Initial(); }

  // Spins the wheel until it stops in `slot`.
  void Spin(int slot) {
    TurnTable_Start();
    while (state != TurnStateIdle && tick_ < kMaxTicks) {
      ++tick_;
      TurnTable_Update(0);
      ticks.push_back({TurnTable_GetCurAngle(), curSpeed});
      if (evenTick > 0 && tick_ == evenTick + kEvenTicks) TurnTable_End(slot);
    }
  }
  double Low(int slot) const { return slotRanges[slot].low; }
  double High(int slot) const { return slotRanges[slot].high; }
  double TopSpeed() const { return maxSpeed; }

  int startTick = -1, evenTick = -1, endTick = -1;
  std::vector<Tick> ticks;

 protected:
  int OnTurnTableStart() override {
    startTick = tick_;
    return 1;
  }
  int OnSpeedReachEven() override {
    evenTick = tick_;
    return 1;
  }
  int OnTurnTableEnd() override {
    endTick = tick_;
    return 1;
  }

 private:
  int tick_ = 0;
};

// An SVG image of two curves, angle and speed over time, with the range of the slot as a bar.
std::string SvgOf(const PrizeWheel& wheel, int slot) {
  constexpr double kFullTurn = 6.283185307179586;
  constexpr double kHeight = 160;
  const auto width = static_cast<double>(wheel.ticks.size());
  const auto curve = [&](const char* colour, double scale, auto value) {
    std::string points;
    for (std::size_t i = 0; i < wheel.ticks.size(); ++i) {
      CString point;
      point.Format("%d,%.1f ", static_cast<int>(i), kHeight - kHeight * value(wheel.ticks[i]) / scale);
      points += point.GetString();
    }
    return std::string("<polyline fill=\"none\" stroke=\"") + colour + "\" points=\"" + points + "\"/>\n";
  };
  CString head;
  head.Format(
      "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"-10 -30 %.0f 220\">\n"
      "<text x=\"0\" y=\"-12\" font-size=\"14\">spin to slot %d: angle (grey), speed (red)</text>\n"
      "<rect x=\"0\" y=\"%.1f\" width=\"%.0f\" height=\"%.1f\" fill=\"#cfe8cf\"/>\n",
      width + 20, slot, kHeight - kHeight * wheel.High(slot) / kFullTurn, width,
      kHeight * (wheel.High(slot) - wheel.Low(slot)) / kFullTurn);
  return head.GetString() + curve("#888", kFullTurn, [](const auto& tick) { return tick.angle; }) +
         curve("#c22", wheel.TopSpeed(), [](const auto& tick) { return tick.speed; }) + "</svg>\n";
}

void SpinTo(Report& report, int slot) {
  PrizeWheel wheel;
  wheel.Spin(slot);
  report.Line("wheel to slot %d: starts at tick %d, reaches top speed at tick %d, stops at tick %d", slot,
              wheel.startTick, wheel.evenTick, wheel.endTick);
  report.Line("angle %.6f, the slot extends from %.6f to %.6f", wheel.TurnTable_GetCurAngle(),
              wheel.Low(slot), wheel.High(slot));
  const std::string svg = SvgOf(wheel, slot);
  WriteBytes("outbox/wheel.svg", svg.data(), svg.size());
  report.Line("drawn in outbox/wheel.svg");
  report.Did(3);
}

}  // namespace

void ShowBoard(Report& report) {
  report.Section("Notice board");
  PrepareThreadForXml();
  CUtiXmlParser parser(AppFile("notices.xml").c_str());
  const CUtiXmlElement* board = parser.GetRootElement();
  if (!board) throw std::runtime_error("cannot read " + AppFile("notices.xml"));
  report.Line("%s, %d notices", board->GetAttribute("hall").GetString(), board->GetAttributeInt("count"));

  CUtiXmlNodeList notices;
  board->GetChildNodes(&notices);
  int slot = 0;
  for (int i = 0; i < notices.GetLength(); ++i) {
    CUtiXmlElement notice;
    notices.GetItem(i, &notice);
    if (notice.GetNodeName() != "notice") continue;
    report.Line("%d%s %s: %s", notice.GetAttributeInt("id"), notice.GetAttributeInt("top") ? " (top)" : "",
                notice.GetChildText("title").GetString(), notice.GetChildText("text").GetString());
    if (notice.IsHasChild("prize[@slot]")) slot = notice.GetChildAttributeInt("prize", "slot");
    report.Did();
  }
  SpinTo(report, slot);
}
