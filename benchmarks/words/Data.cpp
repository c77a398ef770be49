#include "benchmarks/words/Data.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

#include <unistd.h>

#include "benchmarks/Random.h"

namespace bench {
namespace {

std::string Latin(std::mt19937& random) {
  std::string word;
  for (unsigned length = 5 + Below(random, 5); length > 0; --length) {
    word += static_cast<char>('A' + Below(random, 26));
  }
  return word;
}

std::vector<std::string> MakeWords(std::size_t count) {
  std::mt19937 random(5);
  std::set<std::string> known;
  std::vector<std::string> words;
  while (words.size() < count) {
    std::string word = words.size() % 20 == 19 ? Latin(random) : Hanzi(random, 2 + Below(random, 5));
    if (known.insert(word).second) words.push_back(std::move(word));
  }
  return words;
}

std::vector<std::string> MakeCleanLines(std::size_t count, unsigned bytes) {
  std::mt19937 random(bytes);
  std::vector<std::string> lines;
  while (lines.size() < 64) {
    std::string line = Hanzi(random, bytes / 2);
    if (CountHits(Words(count), line) == 0) lines.push_back(std::move(line));
  }
  return lines;
}

HitLines MakeLinesWithHit(std::size_t count, unsigned bytes) {
  std::mt19937 random(7);
  HitLines result;
  for (const std::string& clean : CleanLines(count, bytes)) {
    std::string line;
    std::size_t at = 0, size = 0;
    do {
      const std::string& word = Words(count)[Below(random, static_cast<unsigned>(count))];
      size = word.size();
      at = Below(random, static_cast<unsigned>((bytes - size) / 2)) * 2;
      line = clean.substr(0, at) + word + clean.substr(at + size);
      if (size % 2 != 0) line[at + size] = ' ';  // overwrites the remaining half of a character
    } while (CountHits(Words(count), line) != 1);
    result.masked.push_back(line.substr(0, at) + std::string(size, '*') + line.substr(at + size));
    result.lines.push_back(std::move(line));
  }
  return result;
}

std::string MakeNearMisses(std::size_t count, unsigned bytes) {
  constexpr std::size_t kLongest = 12;
  const std::set<std::string_view> known(Words(count).begin(), Words(count).end());
  std::mt19937 random(8);
  std::string text;
  // Whether a whole word appeared when `size` bytes were appended to `text`.
  const auto isHit = [&](std::size_t size) {
    for (std::size_t at = text.size() - std::min(text.size(), size + kLongest); at < text.size(); ++at) {
      for (std::size_t length = 4; length <= kLongest; ++length) {
        if (known.count(std::string_view(text).substr(at, length)) > 0) return true;
      }
    }
    return false;
  };
  while (text.size() < bytes) {
    const std::string& word = Words(count)[Below(random, static_cast<unsigned>(count))];
    const bool isLatin = static_cast<unsigned char>(word[0]) < 0x80;
    const std::size_t size = word.size() - (isLatin ? 1 : 2);
    text.append(word, 0, size);
    if (isHit(size)) text.resize(text.size() - size);
  }
  text.resize(bytes);
  return text;
}

// The result of kMake(count, bytes), computed once for each pair of arguments.
template <auto kMake>
const auto& Cached(std::size_t count, unsigned bytes) {
  static std::map<std::pair<std::size_t, unsigned>, decltype(kMake(count, bytes))> all;
  auto found = all.find({count, bytes});
  if (found == all.end()) found = all.emplace(std::pair(count, bytes), kMake(count, bytes)).first;
  return found->second;
}

class TemporaryFile {
 public:
  explicit TemporaryFile(std::size_t count)
      : path_((std::filesystem::temp_directory_path() /
               ("zvutilib_words_" + std::to_string(getpid()) + "_" + std::to_string(count)))
                  .string()) {
    std::ofstream out(path_, std::ios::binary);
    for (const std::string& word : Words(count)) out << word << '\n';
  }
  ~TemporaryFile() { std::remove(path_.c_str()); }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

}  // namespace

const std::vector<std::string>& Words(std::size_t count) {
  static std::map<std::size_t, std::vector<std::string>> lists;
  auto found = lists.find(count);
  if (found == lists.end()) found = lists.emplace(count, MakeWords(count)).first;
  return found->second;
}

std::size_t CountHits(const std::vector<std::string>& words, std::string_view text) {
  std::size_t hits = 0;
  for (const std::string& word : words) {
    for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) ++hits;
  }
  return hits;
}

const std::vector<std::string>& CleanLines(std::size_t count, unsigned bytes) {
  return Cached<MakeCleanLines>(count, bytes);
}

const HitLines& LinesWithHit(std::size_t count, unsigned bytes) {
  return Cached<MakeLinesWithHit>(count, bytes);
}

const std::string& NearMisses(std::size_t count, unsigned bytes) {
  return Cached<MakeNearMisses>(count, bytes);
}

std::string CleanText(std::size_t count, unsigned bytes) {
  const std::vector<std::string>& lines = CleanLines(count, 60);
  std::string text;
  for (std::size_t i = 0; text.size() < bytes; ++i) text += lines[i % lines.size()] + ",";
  text.resize(bytes, ',');
  return text;
}

const std::string& WordFile(std::size_t count) {
  static std::map<std::size_t, TemporaryFile> files;
  return files.try_emplace(count, count).first->second.Path();
}

void LoadWords(CUtiBlackList& list, std::size_t count) { list.Load(WordFile(count).c_str()); }

}  // namespace bench
