// Key operations for counting instructions: counts OPERATION does one of them within Counted and checks it.
//
// Counting begins and ends with Counted, so what prepares and checks an operation is not counted.
#include <cstdio>
#include <cstring>
#include <functional>

#include <ZvUtiLib/data/CStringDict.h>

#include "benchmarks/records/Data.h"
#include "benchmarks/words/Data.h"

extern "C" [[gnu::noipa]] void Counted(const std::function<void()>& operation) { operation(); }

namespace {

using namespace bench;

bool DecodeItems() {
  const Items items = MakeItems(1000);
  CStreamReader stream;
  stream << items;
  Items read;
  Counted([&] { stream >> read; });
  return IsSame(items, read);
}

bool MaskLines() {
  constexpr std::size_t kWords = 10000;
  CUtiBlackList list;
  LoadWords(list, kWords);
  const HitLines& hit = LinesWithHit(kWords, 60);
  CString result;
  bool isRight = true;
  for (std::size_t i = 0; i < hit.lines.size(); ++i) {
    Counted([&] { list.ReplaceBlackWord(hit.lines[i].c_str(), result); });
    isRight = isRight && hit.masked[i] == result.GetString();
  }
  return isRight;
}

bool ParseDictionary() {
  struct Pairs {
    void Count(const char*, const char*) { ++count; }
    unsigned count = 0;
  } pairs;
  std::string text;
  for (int i = 0; i < 1000; ++i) text += "Key" + std::to_string(i * 7919) + "=" + std::to_string(i) + "&";
  CStringDict dict;
  Counted([&] { dict.Parse(text.c_str(), "=&"); });
  dict.Visit(&pairs, &Pairs::Count);
  return pairs.count == 1000;
}

constexpr struct {
  const char* name;
  bool (*run)();
} kOperations[] = {
    {"decode-items", DecodeItems}, {"mask-lines", MaskLines}, {"parse-dictionary", ParseDictionary}};

}  // namespace

int main(int argc, char** argv) {
  for (const auto& operation : kOperations) {
    if (argc != 2 || std::strcmp(argv[1], operation.name) != 0) continue;
    if (operation.run()) return 0;
    std::fprintf(stderr, "counts: %s gives a wrong result\n", operation.name);
    return 1;
  }
  std::fputs("usage: counts OPERATION, one of:\n", stderr);
  for (const auto& operation : kOperations) std::fprintf(stderr, "  %s\n", operation.name);
  return 2;
}
