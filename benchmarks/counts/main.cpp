// counts OPERATION/SIZE: runs one key operation inside Counted and checks its result.
//
// ./run counts counts instructions only while Counted is on the stack, so the preparation and the check of an
// operation are excluded.
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <string_view>
#include <vector>

#include <ZvUtiLib/data/CStringDict.h>

#include "benchmarks/counts/Counts.h"
#include "benchmarks/records/Data.h"
#include "benchmarks/words/Data.h"
#include "tests/support/CollidingKeys.h"

extern "C" void Counted(const std::function<void()>& operation) { operation(); }

namespace {

using namespace bench;

bool DecodeItems(std::size_t count) {
  const Items items = MakeItems(count);
  CStreamReader stream;
  stream << items;
  Items read;
  Counted([&] { stream >> read; });
  return IsSame(items, read);
}

bool EncodeAccounts(std::size_t count) {
  const std::vector<AccountRecord> accounts(count, MakeAccount());
  CStreamReader one, stream;
  one << accounts.front();
  Counted([&] { stream << accounts; });
  return static_cast<std::size_t>(stream.Length()) == 2 + count * static_cast<std::size_t>(one.Length());
}

bool DecodeAccounts(std::size_t count) {
  const std::vector<AccountRecord> accounts(count, MakeAccount());
  CStreamReader stream;
  stream << accounts;
  std::vector<AccountRecord> read;
  Counted([&] { stream >> read; });
  return IsSame(accounts, read) && stream.Length() == 0;
}

// The entries of the bundle that is found lie the other way round; the one before it has another entry
// at its end.
bool FindBundle(std::size_t entries) {
  BundleRecord wanted;
  for (std::size_t i = 0; i < entries; ++i)
    wanted.Entries.push_back({{5, 1}, 0, static_cast<std::int32_t>(i)});
  BundleRecord stored = wanted;
  std::reverse(stored.Entries.begin(), stored.Entries.end());
  CUtiBundleTable table;
  table.SetBundle(7, stored);
  stored.Entries.back().Count = 2;
  table.SetBundle(6, stored);
  unsigned key = 0;
  Counted([&] { table.FindBundle(wanted, key); });
  return key == 7;
}

bool MaskLines(std::size_t wordCount) {
  CUtiBlackList list;
  LoadWords(list, wordCount);
  const HitLines& hit = LinesWithHit(wordCount, 60);
  CString result;
  bool isRight = true;
  for (std::size_t i = 0; i < hit.lines.size(); ++i) {
    Counted([&] { list.ReplaceBlackWord(hit.lines[i].c_str(), result); });
    isRight = isRight && hit.masked[i] == result.GetString();
  }
  return isRight;
}

bool Parse(const std::string& text, std::size_t count) {
  struct Pairs {
    void Count(const char*, const char*) { ++count; }
    std::size_t count = 0;
  } pairs;
  CStringDict dict;
  Counted([&] { dict.Parse(text.c_str(), "=&"); });
  dict.Visit(&pairs, &Pairs::Count);
  return pairs.count == count;
}

bool ParseDictionary(std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i)
    text += "Key" + std::to_string(i * 7919) + "=" + std::to_string(i) + "&";
  return Parse(text, count);
}

bool ParseCollidingKeys(std::size_t count) {
  std::string text;
  for (const std::string& key : test::CollidingKeys(count)) text += key + "=1&";
  return Parse(text, count);
}

// From the last key to the first.
bool ParseFallingKeys(std::size_t count) {
  std::string text;
  for (const std::string& key : test::CollidingKeys(count)) text.insert(0, key + "=1&");
  return Parse(text, count);
}

constexpr counts::Operation kOperations[] = {
    {"decode-items", DecodeItems},
    {"encode-accounts", EncodeAccounts},
    {"decode-accounts", DecodeAccounts},
    {"find-bundle", FindBundle},
    {"mask-lines", MaskLines},
    {"parse-dictionary", ParseDictionary},
    {"parse-colliding-keys", ParseCollidingKeys},
    {"parse-falling-keys", ParseFallingKeys},
};

}  // namespace

int main(int argc, char** argv) {
  const std::string_view wanted = argc == 2 ? argv[1] : "";
  const std::size_t slash = std::min(wanted.find('/'), wanted.size());
  std::size_t size = 0;
  std::from_chars(wanted.data() + std::min(slash + 1, wanted.size()), wanted.data() + wanted.size(), size);
  std::vector<counts::Operation> operations(std::begin(kOperations), std::end(kOperations));
  operations.insert(operations.end(), counts::kXmlOperations.begin(), counts::kXmlOperations.end());
  for (const counts::Operation& operation : operations) {
    if (size == 0 || wanted.substr(0, slash) != operation.name) continue;
    if (operation.run(size)) return 0;
    std::fprintf(stderr, "counts: %s returned a wrong result\n", argv[1]);
    return 1;
  }
  std::fputs("usage: counts OPERATION/SIZE, where the operation is one of:\n", stderr);
  for (const counts::Operation& operation : operations) std::fprintf(stderr, "  %s\n", operation.name);
  return 2;
}
