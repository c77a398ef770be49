// A record as JSON and back: objects for records and for maps (keys as text), arrays for sequences,
// numbers as they are, texts with the escapes of Describe.h.
#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include <ZvUtiLib/records/Describe.h>

namespace tool {

using Json = nlohmann::ordered_json;

/// The fields that a dump shows, in wire order.
Json ToJson(const std::string& record, const zvuti::RecordDump& dump);

/// What to fill a record with. Throws Failure where a value cannot be one of its field.
std::vector<zvuti::NamedValue> ToValues(const std::string& record, const Json& json);

/// The bytes of the record that the JSON describes. Throws Failure.
std::string ToBytes(const std::string& record, const Json& json);

}  // namespace tool
