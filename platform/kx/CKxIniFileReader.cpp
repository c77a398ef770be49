// The rules are those of the platform's profile-string calls, applied to bytes: nothing is decoded, so
// unsound text comes back as it stands.
#include <ZvUtiLib/platform/CKxIniFileReader.h>

#include <string_view>
#include <utility>

#include "gbk/CodePage936.h"
#include "platform/Path.h"
#include "platform/mfc/CFile.h"

namespace {

using Keys = std::unordered_map<std::string, std::string>;
using Sections = std::unordered_map<std::string, Keys>;

/// All bytes of the file, "" where it cannot be read to its end.
std::string ReadWhole(const char* path) {
  CFile file;
  if (!file.Open(path, CFile::modeRead | CFile::shareDenyNone)) return {};
  try {
    std::string bytes;
    char chunk[16384];
    while (const unsigned count = file.Read(chunk, sizeof chunk)) bytes.append(chunk, count);
    return bytes;
  } catch (const CFileException&) {
    return {};
  }
}

/// GBK bytes of UTF-16 with the low byte first; half a unit at the end is dropped.
std::string FromUtf16Bytes(std::string_view bytes) {
  std::u16string units(bytes.size() / 2, u'\0');
  for (std::size_t i = 0; i < units.size(); ++i) {
    const unsigned low = static_cast<unsigned char>(bytes[2 * i]);
    const unsigned high = static_cast<unsigned char>(bytes[2 * i + 1]);
    units[i] = static_cast<char16_t>(low | high << 8);
  }
  return zvuti::gbk::FromUtf16(units);
}

/// The file's text in GBK, without a byte order mark.
std::string ReadText(const char* path) {
  std::string bytes = ReadWhole(path);
  if (bytes.compare(0, 2, "\xFF\xFE") == 0) return FromUtf16Bytes(std::string_view(bytes).substr(2));
  if (bytes.compare(0, 3, "\xEF\xBB\xBF") == 0) bytes.erase(0, 3);
  return bytes;
}

// The syntax has blanks, quotes, '=' and ';' below 0x40, where no GBK character has its trail byte.
std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\v\f";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

std::string_view Unquoted(std::string_view text) {
  const bool isQuoted =
      text.size() >= 2 && text.front() == text.back() && (text.front() == '"' || text.front() == '\'');
  return isQuoted ? text.substr(1, text.size() - 2) : text;
}

std::string Folded(std::string_view name) {
  std::string folded(name);
  zvuti::gbk::FoldToUpper(folded.data(), folded.size());
  return folded;
}

/// Takes the first line off `text`: up to a line end, or to a zero byte within it.
std::string_view TakeLine(std::string_view& text) {
  const std::string_view line = text.substr(0, text.find_first_of("\r\n"));
  text.remove_prefix(line.size() < text.size() ? line.size() + 1 : line.size());
  return line.substr(0, line.find('\0'));
}

/// The name in a line that begins with a bracket; one that is not closed goes to the line's end.
std::string_view SectionName(std::string_view line) {
  line.remove_prefix(1);
  return Trimmed(line.substr(0, zvuti::gbk::Find(line, "]")));
}

Sections Parse(std::string_view text) {
  Sections sections;
  Keys* keys = nullptr;  // of the section that the line belongs to, null in one that does not count
  while (!text.empty()) {
    const std::string_view line = Trimmed(TakeLine(text));
    if (line.empty() || line.front() == ';') continue;
    if (line.front() == '[') {
      const auto [section, isFirst] = sections.try_emplace(Folded(SectionName(line)));
      keys = isFirst ? &section->second : nullptr;
      continue;
    }
    const std::size_t equals = line.find('=');
    if (!keys || equals == std::string_view::npos) continue;
    keys->try_emplace(Folded(Trimmed(line.substr(0, equals))), Unquoted(Trimmed(line.substr(equals + 1))));
  }
  return sections;
}

}  // namespace

const char* CKxIniFileReader::GetString(const char* section, const char* key, const char* defaultValue) {
  if (section && key) {
    const auto keys = sections_.find(Folded(section));
    if (keys != sections_.end()) {
      const auto value = keys->second.find(Folded(key));
      if (value != keys->second.end()) return value->second.c_str();
    }
  }
  default_ = defaultValue ? defaultValue : "";
  return default_.c_str();
}

CKxIniFileReaderSuite::CKxIniFileReaderSuite() = default;
CKxIniFileReaderSuite::~CKxIniFileReaderSuite() = default;

CKxIniFileReader* CKxIniFileReaderSuite::FindIniFileReader(const char* path) {
  // This is the cache key only; opening the file converts the path again.
  std::unique_ptr<CKxIniFileReader>& reader = readers_[zvuti::WithNativeSeparators(path)];
  if (!reader) reader.reset(new CKxIniFileReader);
  reader->sections_ = Parse(ReadText(path));
  return reader.get();
}
