// A bar on standard error that shows how far a command has come, where that is a terminal.
#pragma once

#include <cstddef>

namespace tool {

class Progress {
 public:
  /// Shows nothing for fewer than a megabyte of work.
  explicit Progress(std::size_t bytes);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  void Reach(std::size_t bytes);

 private:
  std::size_t all_;
  std::size_t percent_ = 0;
  bool isShown_;
};

}  // namespace tool
