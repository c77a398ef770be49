// A progress bar on standard error, shown only if that is a terminal.
#pragma once

#include <cstddef>

namespace tool {

class Progress {
 public:
  /// Starts a bar for that many bytes of work. Shows nothing for less than a megabyte.
  explicit Progress(std::size_t bytes);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// Updates the bar: `bytes` are done so far.
  void Reach(std::size_t bytes);

 private:
  std::size_t all_;
  std::size_t percent_ = 0;
  bool isShown_;
};

}  // namespace tool
