#include "export/Formats.h"

namespace tool {

std::vector<std::vector<zvuti::RecordRow>> PartsOf(const std::vector<zvuti::RecordRow>& rows) {
  std::vector<std::vector<zvuti::RecordRow>> parts;
  for (const zvuti::RecordRow& row : rows) {
    const bool isInEntry = row.role == zvuti::RowRole::kLength || row.role == zvuti::RowRole::kElement ||
                           row.role == zvuti::RowRole::kValue;
    if (!isInEntry) parts.emplace_back();
    parts.back().push_back(row);
  }
  return parts;
}

}  // namespace tool
