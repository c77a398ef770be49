#include "tests/support/GoldenRecords.h"

#include <sstream>

#include "gbk/CodePage936.h"

namespace test {

namespace {

constexpr const char* kFixture =
#include "tests/records/golden_records.txt"
    ;

std::string FromHex(const std::string& hex) {
  std::istringstream in(hex);
  std::string bytes;
  for (int byte = 0; in >> std::hex >> byte;) bytes += static_cast<char>(byte);
  return bytes;
}

std::vector<Golden> ReadFixture() {
  std::vector<Golden> all;
  std::istringstream in(kFixture);
  for (std::string line; std::getline(in, line);) {
    if (line.substr(0, 2) == "# ") {
      Golden golden;
      std::istringstream(line.substr(2)) >> golden.record >> golden.kind;
      all.push_back(golden);
    } else if (const std::size_t bar = line.find(" | "); bar != std::string::npos) {
      const std::size_t second = line.find(" | ", bar + 3);
      all.back().rows.push_back({FromHex(line.substr(0, bar)), line.substr(bar + 3, second - bar - 3),
                                 zvuti::gbk::FromUtf8(line.substr(second + 3))});
    }
  }
  return all;
}

}  // namespace

const std::vector<Golden>& GoldenRecords() {
  static const std::vector<Golden> all = ReadFixture();
  return all;
}

}  // namespace test
