// Bytes as the parts of a layout.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

#include "decode/Layout.h"
#include "shared/RecordJson.h"

namespace tool {

/// One record, or one integer between records.
struct Message {
  std::string name;  ///< of the record or the integer
  bool isRecord = true;
  std::size_t offset = 0;  ///< of its first byte
  zvuti::RecordDump dump;  ///< of an integer: one row without a path
};

/// What was found, up to the first message that is not whole.
struct Messages {
  std::vector<Message> all;
  bool isLone = false;   ///< one record; paths then have no number in front
  std::size_t size = 0;  ///< bytes used by the rows
  std::string problem;   ///< "" if everything in the layout is there
};

/// The path of message `index` of several: "[1]".
std::string PathOf(std::size_t index);

/// Shows bytes as a layout. Throws a Failure for more than a million messages.
Messages ReadMessages(const Layout& layout, std::string_view bytes);

/// Returns the rows of all messages, in order, with the offset from the first byte of all and the whole path:
/// "Items[2].Count", or "[1].Items[2].Count" in message 1 of several.
std::vector<zvuti::DumpRow> RowsOf(const Messages& messages);

/// Converts messages to JSON: one record as ToJson does, several as an array, with integers as numbers.
Json ToJson(const Messages& messages);

/// Returns the bytes of the messages that the JSON describes, in the form of ToJson. Throws Failure.
std::string ToBytes(const Layout& layout, const Json& json);

}  // namespace tool
