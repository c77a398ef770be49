// LogLines: the lines that many threads write to one log, and how many of them are there.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

namespace test {

/// A line of a thread; its tail is of another length and letter for each.
inline std::string LogLine(std::size_t thread, std::int64_t count) {
  const std::string tail(thread * 40, static_cast<char>('a' + thread));
  return std::to_string(thread) + " " + std::to_string(count) + " " + tail + ".";
}

/// Lines for each of the threads, all of them whole and in their order.
inline std::vector<std::int64_t> LogLinesOf(const std::string& log, std::size_t threads) {
  std::vector<std::int64_t> next(threads);
  std::istringstream in(log);
  for (std::string line; std::getline(in, line);) {
    line.erase(0, std::string("2013-08-29 01:02:03,004 ").size());
    const auto thread = static_cast<std::size_t>(std::atoi(line.c_str()));
    if (thread >= threads || line != LogLine(thread, next[thread]++)) {
      ADD_FAILURE() << "torn, lost or out of order: " << line;
      break;
    }
  }
  return next;
}

}  // namespace test
