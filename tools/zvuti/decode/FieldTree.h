// The fields of messages as lines, each record, sequence and map with its parts below it.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "decode/Messages.h"

namespace tool {

struct FieldLine {
  std::size_t depth = 0;
  std::string name;   ///< the last part of the path: "Count", "[2]"
  std::string type;   ///< "32-bit", "sequence of ItemRecord", the record that the lines below are part of
  std::string value;  ///< for people; empty for a heading
  bool isHeading = false;  ///< has no bytes of its own, other than the lines below it
  std::size_t offset = 0, size = 0;
};

/// Returns the lines of all messages, in wire order.
std::vector<FieldLine> LinesOf(const Messages& messages);

}  // namespace tool
