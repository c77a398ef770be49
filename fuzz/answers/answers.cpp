// answers [COUNT]: prints a digest of the library's answers to random inputs, one line per property and
// thousand. answers PROPERTY NUMBER: prints one input and its answers instead.
//
// The inputs are the same in every build, so two systems that answer alike print the same lines: ./run
// windows compares them. Only calls that promise the same on both systems belong here.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "fuzz/answers/Properties.h"

namespace {

using namespace answers;

// FNV-1a.
std::uint64_t Hash(std::uint64_t hash, const std::string& text) {
  for (const char byte : text) hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3u;
  return hash;
}

}  // namespace

int main(int argc, char** argv) {
  const std::vector<Property> properties = AllProperties();
  if (argc == 3 || argc == 4) {
    for (const Property& property : properties) {
      if (std::strcmp(property.name, argv[1]) != 0) continue;
      const auto first = static_cast<unsigned>(std::strtoul(argv[2], nullptr, 10));
      const auto end = argc == 4 ? static_cast<unsigned>(std::strtoul(argv[3], nullptr, 10)) : first + 1;
      for (unsigned number = first; number < end; ++number)
        std::printf("%u: %s\n", number, Answer(property, number).c_str());
      return 0;
    }
  }
  const unsigned long count = argc == 1 ? 4000 : argc == 2 ? std::strtoul(argv[1], nullptr, 10) : 0;
  if (count < 1000) {
    std::fputs("usage: answers [COUNT, at least 1000] | answers PROPERTY NUMBER [END]\n", stderr);
    return 2;
  }
  constexpr unsigned kBlock = 1000;
  for (const Property& property : properties) {
    for (unsigned start = 0; start + kBlock <= count; start += kBlock) {
      std::uint64_t digest = 0xCBF29CE484222325u;
      for (unsigned i = start; i < start + kBlock; ++i) digest = Hash(digest, Answer(property, i));
      std::printf("%s %u %016llx\n", property.name, start, static_cast<unsigned long long>(digest));
    }
  }
  return 0;
}
