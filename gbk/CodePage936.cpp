#include "gbk/CodePage936.h"

#include <cstring>

namespace zvuti::gbk {
namespace {

template <char (*kFoldByte)(char)>
void Fold(char* text, std::size_t length) {
  const std::string_view view(text, length);
  for (std::size_t i = 0; i < length; i += CharLength(view, i)) text[i] = kFoldByte(text[i]);
}

}  // namespace

std::string_view CutWhole(std::string_view text, std::size_t limit) {
  if (text.size() <= limit) return text;
  std::size_t end = 0;
  for (std::size_t step; end + (step = CharLength(text, end)) <= limit;) end += step;
  return text.substr(0, end);
}

std::size_t Find(std::string_view text, std::string_view word, std::size_t start) {
  for (std::size_t i = start; i <= text.size() && text.size() - i >= word.size();) {
    if (word.empty() || std::memcmp(text.data() + i, word.data(), word.size()) == 0) return i;
    i += CharLength(text, i);
  }
  return std::string_view::npos;
}

void FoldToUpper(char* text, std::size_t length) { Fold<ToUpper>(text, length); }
void FoldToLower(char* text, std::size_t length) { Fold<ToLower>(text, length); }

}  // namespace zvuti::gbk
