// Why bytes that fit a record may not be one.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

namespace tool {

/// Returns what a program is unlikely to have written in these bytes, which are a whole record; only the
/// first of each kind.
std::vector<std::string> DoubtsOf(const std::string& record, const zvuti::RecordDump& dump,
                                  std::string_view bytes);

}  // namespace tool
