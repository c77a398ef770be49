#include "shared/WordFile.h"

#include <algorithm>

namespace tool {

WordFile ParseWords(std::string_view bytes) {
  WordFile file;
  const std::size_t end = bytes.find('\x1A');
  if (end != bytes.npos) {
    file.endLine = 1 + static_cast<std::size_t>(
                           std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
    bytes = bytes.substr(0, end);
  }
  for (std::size_t line = 1; !bytes.empty(); ++line) {
    const std::size_t length = std::min(bytes.find('\n'), bytes.size());
    std::string_view text = bytes.substr(0, length);
    if (length < bytes.size() && !text.empty() && text.back() == '\r') text.remove_suffix(1);
    bytes.remove_prefix(std::min(length + 1, bytes.size()));
    const std::string_view whole = text;
    text = text.substr(0, text.find('\0'));
    if (text.empty() && text.size() == whole.size()) continue;
    CString folded(text);
    folded.MakeUpper();
    file.words.push_back({line, std::string(text), folded, text.size() < whole.size()});
  }
  return file;
}

std::size_t Occurrences(const CString& foldedText, const CString& word) {
  std::size_t count = 0;
  if (word.IsEmpty()) return 0;
  for (int at = 0; (at = foldedText.Find(word, at)) >= 0; at += word.GetLength()) ++count;
  return count;
}

}  // namespace tool
