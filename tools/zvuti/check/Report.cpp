#include "check/Report.h"

#include <algorithm>

#include "shared/Encoding.h"
#include "shared/Files.h"
#include "shared/GbkText.h"

namespace tool {
namespace {

constexpr std::size_t kMostQuoted = 60;  // bytes

}  // namespace

void Report::Add(const Place& place, const std::string& kind, const std::string& message) {
  findings_.push_back({place, kind, message});
}

std::size_t Report::CountOf(const std::string& what) const {
  const auto found = read_.find(what);
  return found == read_.end() ? 0 : found->second;
}

std::string Quoted(std::string_view gbk) {
  std::string quoted = "\"";
  quoted.append(Shown(gbk.substr(0, kMostQuoted)));
  return quoted.append(gbk.size() > kMostQuoted ? "...\"" : "\"");
}

bool CheckForeign(Report& report, const std::string& file, std::string_view bytes) {
  const std::string foreign = ForeignEncoding(bytes);
  if (foreign.empty()) return true;
  report.Add({file, 1}, "encoding", "this file " + foreign);
  return false;
}

bool CheckEncoding(Report& report, const std::string& file, std::string_view bytes) {
  if (!CheckForeign(report, file, bytes)) return false;
  for (std::size_t line = 1; !bytes.empty(); ++line) {
    const std::size_t length = std::min(bytes.find('\n'), bytes.size());
    const std::string_view text = bytes.substr(0, length);
    const std::size_t broken = FindBroken(text);
    if (broken != text.npos) {
      report.Add({file, line}, "encoding",
                 "the bytes " + ToHex(text.substr(broken, 2)) + " after " + Quoted(text.substr(0, broken)) +
                     " are not a GBK character");
    }
    bytes.remove_prefix(std::min(length + 1, bytes.size()));
  }
  return true;
}

}  // namespace tool
