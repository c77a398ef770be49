// The wire format in the languages of other programs, made from the rows that Describe.h lists.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <ZvUtiLib/records/Describe.h>

namespace tool {

/// A Wireshark plugin in Lua with a protocol for each record.
std::string WiresharkDissector();

/// The names and contents of files.
using NamedFiles = std::vector<std::pair<std::string, std::string>>;
/// Kaitai Struct descriptions, one of each record and one of a text.
NamedFiles KaitaiDescriptions();

/// Splits the rows of a record into those that stand alone and those that repeat together: the rows of an
/// entry in a record with its own framing, of which the first is the key.
std::vector<std::vector<zvuti::RecordRow>> PartsOf(const std::vector<zvuti::RecordRow>& rows);

}  // namespace tool
