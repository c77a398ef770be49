#include "shared/Progress.h"

#include <iostream>
#include <string>

#include "shared/Terminal.h"

namespace tool {

namespace {

constexpr std::size_t kLeastWork = 1u << 20;
constexpr std::size_t kBarWidth = 40;

}  // namespace

Progress::Progress(std::size_t bytes) : all_(bytes), isShown_(bytes >= kLeastWork && IsErrorTerminal()) {}

Progress::~Progress() {
  if (isShown_) std::cerr << '\r' << std::string(kBarWidth + 24, ' ') << '\r' << std::flush;
}

void Progress::Reach(std::size_t bytes) {
  const std::size_t percent =
      all_ == 0 ? 100
                : static_cast<std::size_t>(100.0 * static_cast<double>(bytes) / static_cast<double>(all_));
  if (!isShown_ || percent == percent_) return;
  percent_ = percent;
  const std::size_t done = percent * kBarWidth / 100;
  std::cerr << "\r[" << std::string(done, '=') << std::string(kBarWidth - done, ' ') << "] " << percent
            << "% of " << (all_ >> 20) << " MB" << std::flush;
}

}  // namespace tool
