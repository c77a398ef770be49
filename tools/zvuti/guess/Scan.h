// Looks for records at every offset of bytes.
//
// Most bytes fit some record, because a record of numbers fits everything. So a find needs evidence: texts
// that are text, tags that exist, lists and maps whose counts fit, reserved bytes that are zero, dates.
//
// Cost: for each byte and each record a few comparisons with what the start of the record must have, and for
// the few that pass them a dump of at most 512 bytes. Longer records with evidence there are dumped once
// more, as long as these dumps take no more than 16 bytes for each byte and record.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

struct Hit {
  std::size_t offset = 0, size = 0;
  unsigned evidence = 0;
  std::vector<std::string> records;  ///< all that fit these bytes with this evidence
};

struct ScanLimits {
  bool isCut = false;  ///< not all records were looked for
};

/// Returns records that do not overlap, those with more evidence first. Empty if there is none.
std::vector<Hit> Scan(std::string_view bytes, ScanLimits& limits);

/// Returns the first `most` hits in the order of their offsets.
std::vector<Hit> Best(const std::vector<Hit>& hits, std::size_t most);

}  // namespace tool
