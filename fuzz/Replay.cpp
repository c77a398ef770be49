// replay FOLDER...: gives each fuzz target T the inputs in FOLDER/T. For builds without a fuzzer. Prints how
// many inputs there were; a target that finds a broken promise ends the program. Fails if a target has none.
#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

// ZV_FUZZ_TARGETS lists the targets, each as TARGET(name). Each defines the function Fuzz_name.
#define TARGET(name) extern "C" int Fuzz_##name(const std::uint8_t* data, std::size_t size);
ZV_FUZZ_TARGETS
#undef TARGET

namespace {

struct Target {
  const char* name;
  int (*run)(const std::uint8_t* data, std::size_t size);
};
#define TARGET(name) {#name, Fuzz_##name},
constexpr Target kTargets[] = {ZV_FUZZ_TARGETS};
#undef TARGET

// The input that is being tried, named when it ends the program.
std::string tried;
void NameTried(int) { std::fprintf(stderr, "replay: %s ended the program\n", tried.c_str()); }

int Replay(const Target& target, const std::filesystem::path& folder) {
  if (!std::filesystem::is_directory(folder)) return 0;
  int count = 0;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    std::ifstream file(entry.path(), std::ios::binary);
    const std::vector<char> content{std::istreambuf_iterator<char>(file), {}};
    // In a block of its own size, so that reading beyond its end is seen.
    const auto bytes = std::make_unique<std::uint8_t[]>(content.size());
    std::copy(content.begin(), content.end(), bytes.get());
    tried = entry.path().string();
    try {
      target.run(bytes.get(), content.size());
    } catch (const std::exception& thrown) {
      std::fprintf(stderr, "replay: %s threw: %s\n", tried.c_str(), thrown.what());
      std::exit(1);
    }
    ++count;
  }
  return count;
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 2) {
    std::fprintf(stderr, "usage: replay FOLDER...\n");
    return 1;
  }
  std::signal(SIGABRT, NameTried);
  int all = 0;
  for (const Target& target : kTargets) {
    int inputs = 0;
    for (int i = 1; i < count; ++i)
      inputs += Replay(target, std::filesystem::path(arguments[i]) / target.name);
    if (inputs == 0) {
      std::fprintf(stderr, "replay: there are no inputs for %s\n", target.name);
      return 1;
    }
    all += inputs;
  }
  std::printf("%d inputs replayed\n", all);
  return 0;
}
