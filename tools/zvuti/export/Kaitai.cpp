// The wire format as descriptions in Kaitai Struct, https://doc.kaitai.io/user_guide.html.
//
// A record is a type of its own file, named as Kaitai wants it: item_record for ItemRecord. A sequence or map
// "Items" is a field items_count and a repeated field items; the entries of a map are a type items_entry
// inside. A record that extends another one starts with a field "base".
#include <cctype>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "export/Formats.h"
#include "shared/Shape.h"

namespace tool {
namespace {

using zvuti::RecordRow;
using zvuti::RowForm;
using zvuti::RowRole;
using zvuti::RowType;

constexpr const char* kTextFile = R"(# Made by 'zvuti export kaitai'.
meta:
  id: gbk_text
  title: A text of ZvUtiLib's records
  endian: le
doc: Bytes in GBK, code page 936. Any bytes may occur, so decoding is left to whoever asks for `text`.
seq:
  - id: length
    type: u2
  - id: bytes
    size: length
instances:
  text:
    value: bytes.to_s("GBK")
)";

// "items_count" for "ItemsCount", "c_uti_bundle_table" for "CUtiBundleTable".
std::string IdOf(std::string_view name) {
  const auto isUpper = [&](std::size_t i) {
    return i < name.size() && std::isupper(static_cast<unsigned char>(name[i])) != 0;
  };
  std::string id;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const bool endsWord = i + 1 < name.size() && !isUpper(i + 1);
    if (i > 0 && isUpper(i) && (!isUpper(i - 1) || endsWord)) id += '_';
    id += static_cast<char>(std::tolower(static_cast<unsigned char>(name[i])));
  }
  return id;
}

std::string IntegerOf(unsigned bits, bool isSigned) {
  std::string type = isSigned ? "s" : "u";
  return type.append(std::to_string(bits / 8));
}

class Description {
 public:
  explicit Description(const std::string& record) : record_(record) {
    for (const auto& part : PartsOf(RowsOf(record))) part.size() > 1 ? AddEntries(part) : AddRow(part[0]);
  }

  std::string Text() const {
    std::ostringstream out;
    out << "# Made by 'zvuti export kaitai'.\nmeta:\n  id: " << IdOf(record_) << "\n  title: " << record_
        << "\n  endian: le\n";
    if (!imports_.empty()) out << "  imports:\n";
    for (const std::string& import : imports_) out << "    - " << import << "\n";
    out << "seq:\n" << fields_.str();
    if (!types_.str().empty()) out << "types:\n" << types_.str();
    if (!enums_.str().empty()) out << "enums:\n" << enums_.str();
    return out.str();
  }

 private:
  // One field of `seq`, at the indentation of the type that it belongs to.
  static void PutField(std::ostream& out, const std::string& indent, const std::string& id,
                       const std::string& type, const std::string& count = "") {
    out << indent << "  - id: " << id << "\n" << indent << "    " << type << "\n";
    if (!count.empty())
      out << indent << "    repeat: expr\n" << indent << "    repeat-expr: " << count << "\n";
  }

  static std::string CountOfMap(const std::string& count) {
    return std::string("'").append(count).append(" < 0 ? 0 : ").append(count).append("'");
  }

  std::string Imported(std::string_view record) {
    const std::string id = IdOf(record);
    imports_.insert(id);
    return "type: " + id;
  }

  std::string TypeOf(const RowType& type) {
    switch (type.form) {
      case RowForm::kText:
        return Imported("GbkText");
      case RowForm::kRecord:
      case RowForm::kBase:
      case RowForm::kBlock:
        return Imported(type.name);
      case RowForm::kReserved:
        return "size: " + std::to_string(type.bits / 8);
      case RowForm::kTag:
        return "type: u4\n    enum: " + IdOf(type.name);
      default:
        return "type: " + IntegerOf(type.bits, type.isSigned);
    }
  }

  std::string TypeOfElements(const RowType& type) {
    RowType element;
    element.form = type.element;
    element.name = type.name;
    return TypeOf(element);
  }

  void AddRow(const RecordRow& row) {
    const std::string id = row.type.form == RowForm::kBase ? "base" : IdOf(row.field);
    if (row.role == RowRole::kCount) {
      PutField(fields_, "", id + "_count", TypeOf(row.type));
    } else if (row.type.form == RowForm::kSequence) {
      PutField(fields_, "", id + "_count", "type: u2");
      PutField(fields_, "", id, TypeOfElements(row.type), id + "_count");
    } else if (row.type.form == RowForm::kMap) {
      PutField(fields_, "", id + "_count", "type: s4");
      const bool hasRecords = row.type.element == RowForm::kRecord;
      PutField(fields_, "", id, hasRecords ? Imported(row.type.name) : "type: " + id + "_entry",
               CountOfMap(id + "_count"));
      if (!hasRecords) {
        types_ << "  " << id << "_entry:\n    seq:\n";
        PutField(types_, "    ", "key", "type: " + IntegerOf(32, row.type.hasSignedKeys));
        PutField(types_, "    ", "value", "type: " + IntegerOf(32, row.type.isSigned));
      }
    } else {
      PutField(fields_, "", id, TypeOf(row.type));
      AddTags(row);
    }
    if (const auto& condition = row.condition) {
      fields_ << "    if: " << IdOf(condition->field) << " " << SignOf(condition->comparison) << " "
              << condition->constant << "\n";
    }
    if (row.type.form != RowForm::kBase) fields_ << "    -orig-id: " << row.name << "\n";
  }

  void AddTags(const RecordRow& row) {
    if (row.tags.empty()) return;
    enums_ << "  " << IdOf(row.type.name) << ":\n";
    for (const zvuti::RowTag& tag : row.tags) enums_ << "    " << tag.tag << ": " << IdOf(tag.name) << "\n";
  }

  void AddEntries(const std::vector<RecordRow>& rows) {
    const std::string id = IdOf(rows[0].field);
    PutField(fields_, "", id, "type: " + id + "_entry", CountOfMap(id + "_count"));
    fields_ << "    -orig-id: " << rows[0].field << "\n";
    types_ << "  " << id << "_entry:\n    seq:\n";
    for (const RecordRow& row : rows) {
      const bool isElement = row.role == RowRole::kElement;
      const char* const name = row.role == RowRole::kKey      ? "key"
                               : row.role == RowRole::kLength ? "length"
                               : isElement                    ? "elements"
                                                              : "value";
      PutField(types_, "    ", name, TypeOf(row.type), isElement ? "length" : "");
    }
  }

  std::string record_;
  std::set<std::string> imports_;
  std::ostringstream fields_, types_, enums_;
};

}  // namespace

NamedFiles KaitaiDescriptions() {
  NamedFiles files = {{"gbk_text.ksy", kTextFile}};
  for (const std::string& record : zvuti::RecordNames())
    files.emplace_back(IdOf(record) + ".ksy", Description(record).Text());
  return files;
}

}  // namespace tool
