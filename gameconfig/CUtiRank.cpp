#include <ZvUtiLib/CUtiIO.h>
#include <ZvUtiLib/CUtiRank.h>

#include <algorithm>

#include "gameconfig/TableFile.h"

CUtiRank::~CUtiRank() = default;
CUtiRank::CUtiRank() = default;
CUtiRank::CUtiRank(const CUtiRank& other) = default;
CUtiRank& CUtiRank::operator=(const CUtiRank& other) = default;

bool CUtiRank::LoadRankConfig(unsigned long gameId) {
  std::vector<RankEntry>().swap(entries_);
  const CString path = CUtiIO::GetGamePath(gameId, "Rank.ini");
  if (!CKxIOUti::IsFileExist(path)) return false;
  std::vector<RankEntry> entries;
  const bool isRead = zvuti::ReadTableFile(path, [&entries](std::istream& file) {
    RankEntry entry;
    while (file >> entry.name && entry.name != "[INTRODUCE]" && file >> entry.threshold) {
      entries.push_back(entry);
    }
  });
  if (!isRead) return false;
  entries_.swap(entries);
  return true;
}

std::string CUtiRank::GetRank(std::int64_t score) const {
  if (entries_.empty()) return {};
  const std::int64_t value = score / 100;
  const auto above = std::find_if(entries_.begin(), entries_.end(),
                                  [value](const RankEntry& entry) { return entry.threshold > value; });
  return above == entries_.begin() ? above->name : std::prev(above)->name;
}
