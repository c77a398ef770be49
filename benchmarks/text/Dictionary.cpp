// CStringDict::Parse and Visit, compared with a simple splitter that fills a std::unordered_map.
#include <ZvUtiLib/data/CStringDict.h>

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "benchmarks/Common.h"
#include "benchmarks/Random.h"

namespace bench {
namespace {

std::string MakePairs(std::size_t count) {
  std::mt19937 random(9);
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text += "Key" + std::to_string(i * 7919) + "=" + std::to_string(Below(random, 1u << 20)) + "&";
  }
  return text;
}

// Counts the visited pairs and their bytes.
struct Sum {
  void Add(const char* key, const char* value) {
    ++pairs;
    bytes += std::string_view(key).size() + std::string_view(value).size();
  }
  std::size_t pairs = 0, bytes = 0;
};

Sum ParseByLibrary(const std::string& text) {
  CStringDict dict;
  dict.Parse(text.c_str(), "=&");
  Sum sum;
  dict.Visit(&sum, &Sum::Add);
  return sum;
}

std::string_view Trim(std::string_view text) {
  const auto isSpace = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
  while (!text.empty() && isSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && isSpace(text.back())) text.remove_suffix(1);
  return text;
}

Sum ParseBySplitter(const std::string& text) {
  std::unordered_map<std::string, std::string> pairs;
  for (std::string_view rest = text; !rest.empty();) {
    const std::size_t end = std::min(rest.find('&'), rest.size());
    const std::string_view pair = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    const std::size_t mark = pair.find('=');
    if (mark == std::string_view::npos) continue;
    std::string key(Trim(pair.substr(0, mark)));
    if (key.empty()) continue;
    for (char& c : key) {
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
    }
    pairs[std::move(key)] = Trim(pair.substr(mark + 1));
  }
  Sum sum;
  for (const auto& [key, value] : pairs) sum.Add(key.c_str(), value.c_str());
  return sum;
}

void Add(const char* who, std::size_t count, Sum (*parse)(const std::string&)) {
  benchmark::RegisterBenchmark(Row("Dictionary", who, count).c_str(), [=](auto& state) {
    const std::string text = MakePairs(count);
    Measure(
        state, [&] { return parse(text); },
        [&](const Sum& sum) { return sum.pairs == count && sum.bytes == text.size() - 2 * count; });
  });
}

const bool kRegistered = [] {
  for (const std::size_t count : {10, 100, 1000, 10000}) {
    Add("library", count, ParseByLibrary);
    Add("splitter", count, ParseBySplitter);
  }
  return true;
}();

}  // namespace
}  // namespace bench
