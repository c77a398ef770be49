#include "guess/Scan.h"

#include <algorithm>
#include <cstdint>
#include <map>

#include <ZvUtiLib/records/Describe.h>

#include "guess/Doubts.h"
#include "input/ByteReader.h"
#include "shared/Progress.h"
#include "shared/RecordJson.h"
#include "shared/Shape.h"

namespace tool {
namespace {

using zvuti::RowForm;

constexpr std::size_t kFirstLook = 512;                  // bytes of the first dump at an offset
constexpr std::size_t kLongest = std::size_t{64} << 10;  // bytes of the second one
constexpr std::size_t kLongLooks = 16;                   // for each byte and record: bytes of second dumps
constexpr std::size_t kTextLook = 64;  // bytes of a text that are looked at before the first dump
constexpr std::size_t kMostHits = 1'000'000;
constexpr unsigned kLeastEvidence = 8;  // for a find

constexpr std::size_t kLeastPart = 8;  // of an entry whose count stands apart: a key and a number

// What the bytes at a fixed offset of a record must be.
struct Check {
  std::size_t at = 0;
  RowForm form = RowForm::kReserved;  ///< reserved, tag, text, sequence or map
  std::size_t size = 0;               ///< of reserved bytes, or the least of an element
  std::vector<std::uint32_t> tags;
  bool isPlain = false;  ///< the elements are numbers alone, so that only a whole record has evidence
};

struct Pattern {
  std::string record;
  std::size_t least = 0;
  std::vector<Check> checks;
  std::size_t longLooks = 0;  ///< bytes of second dumps that are left
};

std::size_t LeastElement(const zvuti::RowType& type) {
  if (type.element == RowForm::kRecord) return WidthOf(type.name).least;
  return type.form == RowForm::kMap ? 8 : 2;
}

bool Collect(const std::string& record, std::size_t& at, std::vector<Check>& checks);

bool HasPlainElements(const zvuti::RowType& type) {
  if (type.element != RowForm::kRecord) return type.form == RowForm::kMap;
  std::size_t size = 0;
  std::vector<Check> checks;
  return Collect(std::string(type.name), size, checks) && checks.empty();
}

// Collects the checks of a record from `at` on. Returns false after the first row whose size is not fixed.
bool Collect(const std::string& record, std::size_t& at, std::vector<Check>& checks) {
  for (const zvuti::RecordRow& row : RowsOf(record)) {
    if (row.role == zvuti::RowRole::kCount) {
      checks.push_back({at, RowForm::kMap, kLeastPart, {}, false});
      at += row.type.bits / 8;
      continue;
    }
    if (row.condition || row.role != zvuti::RowRole::kField) return false;
    const zvuti::RowType& type = row.type;
    Check check{at, type.form, type.bits / 8u, {}, false};
    switch (type.form) {
      case RowForm::kRecord:
      case RowForm::kBase:
      case RowForm::kBlock:
        if (!Collect(std::string(type.name), at, checks)) return false;
        continue;
      case RowForm::kSequence:
      case RowForm::kMap:
        check.size = LeastElement(type);
        check.isPlain = HasPlainElements(type);
        [[fallthrough]];
      case RowForm::kText:
        checks.push_back(check);
        return false;
      case RowForm::kTag:
        for (const zvuti::RowTag& tag : row.tags) check.tags.push_back(tag.tag);
        [[fallthrough]];
      case RowForm::kReserved:
        checks.push_back(check);
        break;
      default:
        break;
    }
    at += type.bits / 8;
  }
  return true;
}

bool HasNoControls(std::string_view text) {
  return std::none_of(text.begin(), text.end(), [](char c) { return (c >= 0 && c < ' ') || c == 0x7F; });
}

bool Passes(const Check& check, const ByteReader& bytes, std::size_t start) {
  const std::size_t at = start + check.at, left = bytes.Size() - at;  // the least size of the record is there
  switch (check.form) {
    case RowForm::kTag: {
      const std::uint32_t tag = bytes.U32(at);
      return std::find(check.tags.begin(), check.tags.end(), tag) != check.tags.end();
    }
    case RowForm::kReserved:
      return bytes.Bytes(at, check.size).find_first_not_of('\0') == std::string_view::npos;
    case RowForm::kText: {
      const std::size_t size = bytes.U16(at);
      return left - 2 >= size && HasNoControls(bytes.Bytes(at + 2, std::min(size, kTextLook)));
    }
    case RowForm::kSequence:
      return (check.isPlain ? std::min(left, kFirstLook) : left) - 2 >= bytes.U16(at) * check.size;
    default:  // a map
      return bytes.U32(at) <= ((check.isPlain ? std::min(left, kFirstLook) : left) - 4) / check.size;
  }
}

// Returns the evidence of the rows so far, or 0 if one of them speaks against the record.
unsigned EvidenceOf(const zvuti::RecordDump& dump) {
  constexpr unsigned kTag = 20, kList = 6, kText = 4, kMostText = 40, kDate = 4, kMostReserved = 8;
  unsigned evidence = 0, reserved = 0;
  for (const zvuti::DumpRow& row : dump.rows) {
    switch (row.type.form) {
      case RowForm::kTag:
        if (row.isUnknownTag) return 0;
        evidence += kTag;
        break;
      case RowForm::kText:
        if (row.value.find("\\x") != row.value.npos) return 0;
        if (row.size > 2)
          evidence += kText + static_cast<unsigned>(std::min<std::size_t>(row.size - 2, kMostText));
        break;
      case RowForm::kSequence:
      case RowForm::kMap:
        if (row.value[0] == '-') return 0;
        if (row.value != "0") evidence += kList;
        break;
      case RowForm::kReserved:
        if (row.value.find_first_not_of("0 ") != row.value.npos) return 0;
        reserved = std::min(reserved + 1, kMostReserved);
        break;
      default:
        if (!row.type.isPackedTime || row.value == "0") break;
        if (DateOf(row).empty()) return 0;
        evidence += kDate;
    }
  }
  return evidence == 0 ? 0 : evidence + reserved;
}

// Returns false for a record of numbers alone, which cannot have enough evidence.
bool CanBeFound(const std::string& record) {
  const auto& rows = RowsOf(record);
  return std::any_of(rows.begin(), rows.end(), [](const zvuti::RecordRow& row) {
    switch (row.type.form) {
      case RowForm::kTag:
      case RowForm::kText:
      case RowForm::kSequence:
      case RowForm::kMap:
        return true;
      case RowForm::kRecord:
      case RowForm::kBase:
      case RowForm::kBlock:
        return CanBeFound(std::string(row.type.name));
      default:
        return row.role != zvuti::RowRole::kField;
    }
  });
}

std::vector<Pattern> Patterns(std::size_t bytes) {
  std::vector<Pattern> patterns;
  for (const std::string& record : zvuti::RecordNames()) {
    if (!CanBeFound(record)) continue;
    Pattern pattern;
    pattern.record = record;
    pattern.least = WidthOf(record).least;
    pattern.longLooks = kLongLooks * bytes + kLongest;
    std::size_t at = 0;
    Collect(record, at, pattern.checks);
    patterns.push_back(std::move(pattern));
  }
  return patterns;
}

// Looks for one record at one offset, before which the caller made sure that its least size is there. Returns
// its evidence, 0 if it is not there, and its size.
unsigned Look(Pattern& pattern, const ByteReader& bytes, std::size_t at, std::size_t& size,
              ScanLimits& limits) {
  const auto passes = [&](const Check& check) { return Passes(check, bytes, at); };
  if (!std::all_of(pattern.checks.begin(), pattern.checks.end(), passes)) return 0;
  zvuti::RecordDump dump;
  std::string_view rest = bytes.Bytes(at, std::min(kFirstLook, bytes.Size() - at));
  zvuti::DumpRecord(pattern.record, rest.data(), rest.size(), dump);
  unsigned evidence = EvidenceOf(dump);
  if (!dump.isWhole && rest.size() == kFirstLook && evidence >= kLeastEvidence) {
    rest = bytes.Bytes(at, std::min(kLongest, bytes.Size() - at));
    if (pattern.longLooks < rest.size()) {
      limits.isCut = true;
      return 0;
    }
    pattern.longLooks -= rest.size();
    zvuti::DumpRecord(pattern.record, rest.data(), rest.size(), dump);
    evidence = EvidenceOf(dump);
  }
  size = dump.size;
  if (!dump.isWhole || evidence < kLeastEvidence) return 0;
  return DoubtsOf(pattern.record, dump, rest.substr(0, size)).empty() ? evidence : 0;
}

// Of all hits, those that do not overlap a better one.
std::vector<Hit> WithoutOverlaps(std::vector<Hit> hits) {
  std::stable_sort(hits.begin(), hits.end(), [](const Hit& a, const Hit& b) {
    return a.evidence != b.evidence ? a.evidence > b.evidence : a.size > b.size;
  });
  std::vector<Hit> kept;
  std::map<std::size_t, std::size_t> ends;  // by start
  for (Hit& hit : hits) {
    const auto next = ends.lower_bound(hit.offset);
    const bool isFree = (next == ends.end() || next->first >= hit.offset + hit.size) &&
                        (next == ends.begin() || std::prev(next)->second <= hit.offset);
    if (!isFree) continue;
    ends[hit.offset] = hit.offset + hit.size;
    kept.push_back(std::move(hit));
  }
  return kept;
}

}  // namespace

std::vector<Hit> Scan(std::string_view bytes, ScanLimits& limits) {
  const ByteReader reader(bytes, false);
  std::vector<Pattern> patterns = Patterns(bytes.size());
  std::vector<Hit> hits;
  Progress progress(bytes.size());
  std::size_t nextSet = 0;  // the next byte that is not zero
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    if (nextSet <= at) nextSet = std::min(bytes.find_first_not_of('\0', at), bytes.size());
    const std::size_t first = hits.size();
    for (Pattern& pattern : patterns) {
      // Where all counts are zero, nothing is evidence.
      if (bytes.size() - at < pattern.least || nextSet - at >= pattern.least) continue;
      std::size_t size = 0;
      const unsigned evidence = Look(pattern, reader, at, size, limits);
      if (evidence == 0) continue;
      if (hits.size() == kMostHits) limits.isCut = true;
      const auto same =
          std::find_if(hits.begin() + static_cast<std::ptrdiff_t>(first), hits.end(),
                       [&](const Hit& hit) { return hit.evidence == evidence && hit.size == size; });
      if (same != hits.end()) {
        same->records.push_back(pattern.record);
      } else if (hits.size() < kMostHits) {
        hits.push_back({at, size, evidence, {pattern.record}});
      }
    }
    progress.Reach(at);
  }
  return WithoutOverlaps(std::move(hits));
}

std::vector<Hit> Best(const std::vector<Hit>& hits, std::size_t most) {
  std::vector<Hit> best(hits.begin(),
                        hits.begin() + static_cast<std::ptrdiff_t>(std::min(most, hits.size())));
  std::sort(best.begin(), best.end(), [](const Hit& a, const Hit& b) { return a.offset < b.offset; });
  return best;
}

}  // namespace tool
