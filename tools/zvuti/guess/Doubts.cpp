#include "guess/Doubts.h"

#include "shared/GbkText.h"
#include "shared/RecordJson.h"

namespace tool {

using zvuti::RowForm;

namespace {

std::string PlaceAndPath(const char* what, const zvuti::DumpRow& row) {
  return std::string(what) + " in " + row.path;
}

}  // namespace

std::vector<std::string> DoubtsOf(const std::string& record, const zvuti::RecordDump& dump,
                                  std::string_view bytes) {
  std::vector<std::string> doubts;
  bool isTagKnown = true, isTextSound = true, isReservedClear = true;
  for (const zvuti::DumpRow& row : dump.rows) {
    if (isTagKnown && row.isUnknownTag) {
      doubts.push_back(row.value + " in " + row.path);
      isTagKnown = false;
    } else if (isTextSound && row.type.form == RowForm::kText &&
               (FindBroken(row.value) != std::string::npos || row.value.find("\\x") != std::string::npos)) {
      doubts.push_back(PlaceAndPath("bytes that are not text", row));
      isTextSound = false;
    } else if (isReservedClear && row.type.form == RowForm::kReserved &&
               row.value.find_first_not_of("0 ") != std::string::npos) {
      doubts.push_back(PlaceAndPath("reserved bytes that are not zero", row));
      isReservedClear = false;
    }
  }
  if (isTagKnown && !IsAsWritten(record, dump, bytes))
    doubts.emplace_back("encoding it again gives other bytes");
  return doubts;
}

}  // namespace tool
