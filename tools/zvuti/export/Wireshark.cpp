// The wire format as a Wireshark plugin: a table of the records in Lua, and the program of Dissector.h, which
// walks over it.
#include <sstream>
#include <string>
#include <vector>

#include "export/Dissector.h"
#include "export/Formats.h"
#include "shared/Shape.h"

namespace tool {
namespace {

using zvuti::RecordRow;
using zvuti::RowForm;
using zvuti::RowRole;

const char* NameOf(const RecordRow& row) {
  static constexpr const char* kRoles[] = {"", "count", "key", "length", "element", "value"};
  static constexpr const char* kForms[] = {"integer", "code",   "tag",  "text",   "sequence", "map",
                                           "",        "record", "base", "record", "reserved"};
  return row.role == RowRole::kField ? kForms[static_cast<std::size_t>(row.type.form)]
                                     : kRoles[static_cast<std::size_t>(row.role)];
}

void PutRow(std::ostream& out, const RecordRow& row) {
  const zvuti::RowType& type = row.type;
  const bool isMapOfIntegers = type.form == RowForm::kMap && type.element == RowForm::kInteger;
  out << "{ form = \"" << NameOf(row) << "\"";
  if (type.form != RowForm::kBase) out << ", name = \"" << row.field << "\"";
  if (type.bits > 0) out << ", bits = " << type.bits;
  if (type.form == RowForm::kInteger || isMapOfIntegers)
    out << ", signed = " << (type.isSigned ? "true" : "false");
  if (isMapOfIntegers) out << ", signed_keys = " << (type.hasSignedKeys ? "true" : "false");
  if (!type.name.empty() && type.form != RowForm::kTag) out << ", of = \"" << type.name << "\"";
  if (type.form == RowForm::kTag) {
    out << ", stops = " << (row.skipsUnknownTags ? "false" : "true") << ", tags = {";
    for (const zvuti::RowTag& tag : row.tags) out << " [" << tag.tag << "] = \"" << tag.name << "\",";
    out << " }";
  }
  if (row.condition) {
    const bool isNotEqual = row.condition->comparison == zvuti::RowComparison::kNotEqual;
    out << ", present = function(fields) return fields[\"" << row.condition->field << "\"] "
        << (isNotEqual ? "~=" : SignOf(row.condition->comparison)) << " " << row.condition->constant
        << " end";
  }
  out << " }";
}

void PutRecord(std::ostream& out, const std::string& record) {
  out << "  { name = \"" << record << "\", rows = {\n";
  for (const std::vector<RecordRow>& part : PartsOf(RowsOf(record))) {
    out << "    ";
    if (part.size() > 1) out << "{ form = \"entries\", name = \"" << part[0].field << "\", rows = { ";
    for (const RecordRow& row : part) {
      PutRow(out, row);
      if (part.size() > 1) out << ", ";
    }
    out << (part.size() > 1 ? "} },\n" : ",\n");
  }
  out << "  } },\n";
}

}  // namespace

std::string WiresharkDissector() {
  std::ostringstream out;
  out << kDissectorHead << "local records = {\n";
  for (const std::string& record : zvuti::RecordNames()) PutRecord(out, record);
  out << "}\n" << kDissectorProgram;
  return out.str();
}

}  // namespace tool
