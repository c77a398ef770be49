// Converts records to JSON and back. Records are objects, sequences are arrays, numbers are numbers, and
// texts have the escapes of Describe.h. A map is an object with its keys as strings. Two kinds of maps that
// no writer produces have their own form: one with unsorted or repeated keys is an array of [key, value]
// pairs, and one with a negative count is that number. A packed time is a date, "2013-08-29
// 12:34:56", or a number if it is not set or no date that exists.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include <ZvUtiLib/records/Describe.h>

namespace tool {

using Json = nlohmann::ordered_json;

/// Returns the date of a row that is a packed time, or "".
std::string DateOf(const zvuti::DumpRow& row);

/// Converts a dump to JSON, with the fields in wire order.
Json ToJson(const std::string& record, const zvuti::RecordDump& dump);

/// Returns true if a writer would produce exactly `bytes` from the values in the dump. It would not if, for
/// example, the keys of a map are not sorted.
bool IsAsWritten(const std::string& record, const zvuti::RecordDump& dump, std::string_view bytes);

/// Converts JSON to values for FillRecord. Throws Failure if a value has the wrong kind for its field.
std::vector<zvuti::NamedValue> ToValues(const std::string& record, const Json& json);

/// Returns the bytes of the record that the JSON describes. Throws Failure.
std::string ToBytes(const std::string& record, const Json& json);

}  // namespace tool
