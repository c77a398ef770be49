// Checks that the library loads an XML document. If it does not, the parser that it uses on this system reads
// the document again, to find the reason and the position.
#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

#include <ZvUtiLib/CUtiXmlParser.h>
#include <ZvUtiLib/gbk/Conversion.h>

#include "check/Report.h"
#include "check/XmlReason.h"
#include "shared/Encoding.h"
#include "shared/Files.h"
#include "shared/GbkText.h"

namespace tool {
namespace {

std::string DeclaredEncoding(std::string_view bytes) {
  if (bytes.substr(0, 5) != "<?xml") return {};
  const std::string_view head = bytes.substr(0, bytes.find("?>"));
  const std::size_t word = head.find("encoding");
  const std::size_t quote = word == head.npos ? word : head.find_first_of("'\"", word);
  if (quote == head.npos) return {};
  const std::string_view name = head.substr(quote + 1);
  return std::string(name.substr(0, name.find(head[quote])));
}

bool IsGbkName(std::string name) {
  for (char& c : name) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c;
  return name.find("gb") == 0 || name == "cp936" || name == "x-gbk";
}

// Returns the document in UTF-8. If it cannot be converted, sets the message, and the position if that is
// known.
std::optional<std::string> InUtf8(const std::string& bytes, Place& place, std::string& message) {
  const std::string_view view = bytes;
  if (view.substr(0, 3) == kUtf8Mark) return bytes.substr(3);
  std::string utf8;
  if (view.substr(0, 2) == "\xFF\xFE" || view.substr(0, 2) == "\xFE\xFF") {
    if (FromNamed("utf-16", view, utf8)) return utf8;
    message = "invalid UTF-16";
    return std::nullopt;
  }
  if (const std::size_t zero = view.substr(0, 2).find('\0'); zero != view.npos) {
    const bool isText = FromNamed(zero == 1 ? "utf-16le" : "utf-16be", view, utf8);
    if (isText && !DeclaredEncoding(utf8).empty()) return utf8;
    message = "UTF-16 without a byte order mark needs an encoding declaration";
    return std::nullopt;
  }
  const std::string name = DeclaredEncoding(view);
  if (name.empty() || name == "UTF-8" || name == "utf-8") {
    if (zvuti::IsValidUtf8(view) || !zvuti::IsValidGbk(view)) return bytes;
    message = std::string("this document is ") + (EncodingOf(view) == "big5" ? "probably Big5" : "GBK") +
              (name.empty() ? ", but does not declare it" : ", but declares UTF-8");
    return std::nullopt;
  }
  if (IsGbkName(name)) {
    if (LooksLikeUtf8(view)) message = "this document is UTF-8, but declares " + name;
    const std::size_t broken = FindBroken(view);
    if (broken == view.npos) return Shown(view);
    const std::string before = Shown(view.substr(0, broken));
    place.line = LineAt(before, before.size());
    place.column = ColumnAt(before, before.size());
    message = "the bytes " + ToHex(view.substr(broken, 2)) + " are not a character of " + name;
    return std::nullopt;
  }
  if (FromNamed(name, view, utf8)) return utf8;
  message = "the declared encoding " + name + " is unknown, or the bytes are invalid in it";
  return std::nullopt;
}

// The library converts all texts to GBK. Reports characters that are not in it, at most one per line.
void CheckCharacters(Report& report, const std::string& file, std::string_view utf8) {
  for (std::string_view rest = utf8; !rest.empty();) {
    const std::size_t foreign = FindForeign(rest);
    if (foreign == rest.npos) return;
    const std::size_t at = utf8.size() - rest.size() + foreign;
    report.Add({file, LineAt(utf8, at), ColumnAt(utf8, at)}, "xml",
               NameOfFirst(rest.substr(foreign)) +
                   " is not in GBK; the library replaces it with a similar character or ?");
    const std::size_t lineEnd = rest.find('\n', foreign);  // one per line is enough
    rest.remove_prefix(lineEnd == rest.npos ? rest.size() : lineEnd);
  }
}

}  // namespace

std::size_t LineAt(std::string_view text, std::size_t at) {
  return 1 + static_cast<std::size_t>(
                 std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
}

// Continuation bytes of UTF-8 do not count.
std::size_t ColumnAt(std::string_view utf8, std::size_t at) {
  const std::size_t lineEnd = utf8.substr(0, at).rfind('\n');
  const std::size_t begin = lineEnd == utf8.npos ? 0 : lineEnd + 1;
  const auto line = utf8.substr(begin, at - begin);
  return 1 + static_cast<std::size_t>(
                 std::count_if(line.begin(), line.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

void CheckXml(Report& report, const std::string& file, const std::string& bytes) {
  report.Read("XML document");
  Place place{file, 1, 1};
  std::string message;
  const std::optional<std::string> utf8 = InUtf8(bytes, place, message);
  PrepareForXml();
  const LibraryFile library(file, bytes);
  const bool isLoaded = CUtiXmlParser(library.Path()).GetRootElement() != nullptr;
  if (isLoaded) {
    if (!message.empty()) report.Add(place, "encoding", message);
    if (utf8) CheckCharacters(report, file, *utf8);
    return;
  }
  if (utf8) ExplainRefusal(file, *utf8, place, message);
  report.Add(place, "xml", message);
}

}  // namespace tool
