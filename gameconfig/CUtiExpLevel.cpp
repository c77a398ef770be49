#include <ZvUtiLib/CUtiExpLevel.h>

#include "gameconfig/TableFile.h"
#include "platform/win32/PathFileExists.h"

namespace {

// A partial mark is an error: the table is empty, as if the file began with any other byte that is not part
// of a number.
void SkipUtf8Mark(std::istream& file) {
  constexpr int kMark[] = {0xEF, 0xBB, 0xBF};
  if (file.peek() != kMark[0]) return;
  for (const int byte : kMark) {
    if (file.get() != byte) file.setstate(std::ios_base::failbit);
  }
}

}  // namespace

CUtiExpLevel::~CUtiExpLevel() = default;
CUtiExpLevel::CUtiExpLevel() = default;
CUtiExpLevel::CUtiExpLevel(const CUtiExpLevel& other) = default;
CUtiExpLevel& CUtiExpLevel::operator=(const CUtiExpLevel& other) = default;

int CUtiExpLevel::LoadLevelConfig(const std::string& path) {
  std::vector<ExpLevelEntry>().swap(entries_);
  if (!PathFileExistsA(path.c_str())) return 0;
  std::vector<ExpLevelEntry> entries;
  const bool isRead = zvuti::ReadTableFile(path.c_str(), [&entries](std::istream& file) {
    SkipUtf8Mark(file);
    for (ExpLevelEntry entry; file >> entry.level >> entry.exp;) entries.push_back(entry);
  });
  if (!isRead) return 0;
  entries_.swap(entries);
  return 1;
}

int CUtiExpLevel::GetLevelByExp(std::int64_t exp) const {
  if (entries_.empty()) return 1;
  const ExpLevelEntry* match = nullptr;
  for (const ExpLevelEntry& entry : entries_) {
    if (entry.exp <= exp) {
      match = &entry;
    } else if (match) {
      break;
    }
  }
  return match ? match->level : entries_.front().level;
}

std::int64_t CUtiExpLevel::GetExpByLevel(int level) const {
  if (level < 1 || static_cast<std::size_t>(level) > entries_.size()) return 0;
  return entries_[static_cast<std::size_t>(level) - 1].exp;
}
