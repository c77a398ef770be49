#include "wheel/Svg.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace tool {
namespace {

constexpr double kWidth = 960, kLeft = 84, kRight = 936;
constexpr double kHeight = 800;
constexpr std::size_t kMostPoints = 2000;  // per curve; the picture is 960 pixels wide

template <class... Values>
std::string Formatted(const char* format, Values... values) {
  char text[512];
  std::snprintf(text, sizeof text, format, values...);
  return text;
}

// Returns a round distance between grid lines, 1, 2 or 5 times a power of ten, for about `wanted` lines over
// `span`.
double StepFor(double span, int wanted) {
  const double rough = span / wanted;
  const double power = std::pow(10.0, std::floor(std::log10(rough)));
  const double lead = rough / power;
  return power * (lead < 1.5 ? 1 : lead < 3.5 ? 2 : lead < 7.5 ? 5 : 10);
}

class Panel {
 public:
  Panel(std::string& out, double top, double bottom, std::size_t firstTick, std::size_t lastTick, double most)
      : out_(out),
        top_(top),
        bottom_(bottom),
        first_(static_cast<double>(firstTick)),
        last_(static_cast<double>(std::max(lastTick, firstTick + 1))),
        most_(most) {}

  double X(double tick) const { return kLeft + (tick - first_) / (last_ - first_) * (kRight - kLeft); }
  double Y(double value) const { return bottom_ - value / most_ * (bottom_ - top_); }

  void Frame(const char* title, const char* unit, double step, const char* format) {
    out_ += Formatted("<text class='head' x='%.1f' y='%.1f'>%s</text>\n", kLeft, top_ - 10, title);
    const int rows = static_cast<int>(most_ * 1.0001 / step);
    for (int row = 0; row <= rows; ++row) {
      const double value = row * step;
      out_ += Formatted("<path class='grid' d='M%.1f %.1fH%.1f'/>", kLeft, Y(value), kRight);
      out_ += "<text class='side' x='" + Formatted("%.1f' y='%.1f'>", kLeft - 8, Y(value) + 4) +
              Formatted(format, value) + "</text>\n";
    }
    const double tickStep = std::max(1.0, StepFor(last_ - first_, 10));
    const int lastColumn = static_cast<int>(last_ / tickStep);
    for (int column = static_cast<int>(std::ceil(first_ / tickStep)); column <= lastColumn; ++column) {
      const double tick = column * tickStep;
      out_ += Formatted(
          "<path class='grid' d='M%.1f %.1fV%.1f'/><text class='foot' x='%.1f' y='%.1f'>%.0f</text>\n",
          X(tick), top_, bottom_, X(tick), bottom_ + 16, tick);
    }
    out_ += Formatted("<path class='axis' d='M%.1f %.1fV%.1fH%.1f'/>\n", kLeft, top_, bottom_, kRight);
    out_ += Formatted("<text class='unit' transform='translate(%.1f %.1f) rotate(-90)'>%s</text>\n", 24.0,
                      (top_ + bottom_) / 2, unit);
  }

  // Draws a vertical line at the tick, with the text `mark` at its foot, on the side where there is room.
  void Mark(std::size_t tick, const char* mark) {
    const double x = X(static_cast<double>(tick));
    const bool isRight = x > kRight - 170;
    out_ += Formatted(
        "<path class='mark' d='M%.1f %.1fV%.1f'/><text class='note%s' x='%.1f' y='%.1f'>%s</text>\n", x, top_,
        bottom_, isRight ? " end" : "", isRight ? x - 6 : x + 6, bottom_ - 8, mark);
  }

  template <class ValueOf>
  void Curve(const Spin& spin, ValueOf valueOf) {
    const auto first = static_cast<std::size_t>(first_),
               last = std::min(static_cast<std::size_t>(last_), spin.ticks.size() - 1);
    const std::size_t stride = std::max<std::size_t>(1, (last - first) / kMostPoints);
    std::string points;
    double before = -1;
    for (std::size_t tick = first; tick <= last;
         tick = tick == last ? last + 1 : std::min(tick + stride, last)) {
      const double value = valueOf(spin.ticks[tick]);
      points += Formatted(value < before || points.empty() ? "M%.2f %.2f" : "L%.2f %.2f",
                          X(static_cast<double>(tick)), Y(value));
      before = isAngle_ ? value : -1;
    }
    out_ += "<path class='curve' d='" + points + "'/>\n";
  }

  void Band(double low, double high, const std::string& label) {
    out_ += Formatted("<rect class='slot' x='%.1f' y='%.1f' width='%.1f' height='%.1f'/>", kLeft, Y(high),
                      kRight - kLeft, Y(low) - Y(high));
    out_ += Formatted("<text class='note' x='%.1f' y='%.1f'>%s</text>\n", kLeft + 8,
                      (Y(low) + Y(high)) / 2 + 4, label.c_str());
  }

  void Stop(std::size_t tick, double value) {
    out_ += Formatted("<circle class='stop' cx='%.1f' cy='%.1f' r='5'/>\n", X(static_cast<double>(tick)),
                      Y(value));
  }

  void BreakWhereItFalls() { isAngle_ = true; }

 private:
  std::string& out_;
  double top_, bottom_, first_, last_, most_;
  bool isAngle_ = false;
};

constexpr char kStyle[] =
    "<style>text{font:13px "
    "sans-serif;fill:#333}.title{font-size:19px;font-weight:bold}.head{font-weight:bold}"
    ".side,.end{text-anchor:end}.foot,.unit{text-anchor:middle}.grid{stroke:#e4e4e4}.axis{stroke:#555;fill:"
    "none}"
    ".curve{stroke:#1f6fb4;stroke-width:1.8;fill:none}.mark{stroke:#b35c00;stroke-dasharray:4 3}"
    ".slot{fill:#f6d88c;fill-opacity:.75}.stop{fill:#c0252b}</style>\n";

}  // namespace

std::string DrawSpin(const SpinOptions& options, const Spin& spin) {
  const std::size_t last = spin.ticks.size() - 1;
  const Tick& stop = spin.ticks.back();
  std::string out = Formatted(
      "<svg xmlns='http://www.w3.org/2000/svg' width='%.0f' height='%.0f' viewBox='0 0 %.0f %.0f'>\n", kWidth,
      kHeight, kWidth, kHeight);
  out += kStyle;
  out += "<rect width='100%' height='100%' fill='#fff'/>\n";
  out += Formatted(
      "<text class='title' x='%.0f' y='32'>Spin into slot %d of %d: stops after %zu ticks and %.2f turns, at "
      "%.4f rad</text>\n",
      kLeft, options.slot, options.slots, last, stop.turned / kFullTurn, stop.angle);

  const auto frame = [&](Panel& panel, bool hasNames) {
    panel.Mark(spin.evenAt, hasNames ? "top speed" : "");
    panel.Mark(spin.runOutAt, hasNames ? "slot chosen" : "");
  };
  Panel speed(out, 76, 236, 0, last, options.topSpeed);
  speed.Frame("Speed", "radians per tick", StepFor(options.topSpeed, 4), "%.4g");
  frame(speed, true);
  speed.Curve(spin, [](const Tick& tick) { return tick.speed; });
  speed.Stop(last, 0);

  Panel turns(out, 306, 466, 0, last, stop.turned / kFullTurn);
  turns.Frame("Distance", "turns", StepFor(stop.turned / kFullTurn, 4), "%.4g");
  frame(turns, false);
  turns.Curve(spin, [](const Tick& tick) { return tick.turned / kFullTurn; });
  turns.Stop(last, stop.turned / kFullTurn);

  // Only the last turn and a half, where the wheel is slow enough for the slot to be visible.
  std::size_t from = last;
  while (from > 0 && stop.turned - spin.ticks[from].turned < 1.5 * kFullTurn) --from;
  Panel angle(out, 536, 756, from, last, kFullTurn);
  angle.Frame("Angle at the end", "radians", kFullTurn / 4, "%.2f");
  angle.Band(spin.slotLow, spin.slotHigh, "slot " + std::to_string(options.slot));
  angle.BreakWhereItFalls();
  angle.Curve(spin, [](const Tick& tick) { return tick.angle; });
  angle.Mark(last, "stop");
  angle.Stop(last, stop.angle);
  out += Formatted("<text class='foot' x='%.1f' y='792'>tick</text>\n</svg>\n", (kLeft + kRight) / 2);
  return out;
}

}  // namespace tool
