// A record as JSON and back: objects for records and for maps (keys as text), arrays for sequences,
// numbers as they are, texts with the escapes of Describe.h. A map that no writer makes is an array of
// pairs of key and value where its keys do not rise, and its count alone where that is below 0.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include <ZvUtiLib/records/Describe.h>

namespace tool {

using Json = nlohmann::ordered_json;

/// The fields that a dump shows, in wire order.
Json ToJson(const std::string& record, const zvuti::RecordDump& dump);

/// Whether a writer, too, would make these bytes of the values that the dump shows: maps with rising keys,
/// and counted as they are.
bool IsAsWritten(const std::string& record, const zvuti::RecordDump& dump, std::string_view bytes);

/// What to fill a record with. Throws Failure where a value cannot be one of its field.
std::vector<zvuti::NamedValue> ToValues(const std::string& record, const Json& json);

/// The bytes of the record that the JSON describes. Throws Failure.
std::string ToBytes(const std::string& record, const Json& json);

}  // namespace tool
