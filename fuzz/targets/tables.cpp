// The loaders of level, rank and task files. Input: one byte that selects the loader; the bytes of the file.
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <ZvUtiLib/CUtiExpLevel.h>
#include <ZvUtiLib/CUtiIO.h>
#include <ZvUtiLib/CUtiRank.h>
#include <ZvUtiLib/CUtiTaskAuto.h>

#include "fuzz/InputFile.h"
#include "platform/Doors.h"
#include "platform/Path.h"

namespace {

using Limits = std::numeric_limits<std::int64_t>;

const fuzz::InputFile& File() {
  static const fuzz::InputFile file;
  return file;
}

// A folder that the library takes for the program's folder, in memory if possible. The files of the tables
// are the input. The path of an unknown game is the folder itself.
constexpr unsigned long kUnknownGame = 0;
class AppFolder {
 public:
  AppFolder() {
    const std::filesystem::path memory = "/dev/shm";
    const auto above = std::filesystem::exists(memory) ? memory : std::filesystem::temp_directory_path();
    path_ = (above / ("zvuti-fuzz-" + std::to_string(std::random_device{}()))).string() + "/";
    zvuti::TheDoors().applicationFolder = [] { return path_; };
    for (const char* file : {"Rank.ini", "Task.ini"}) {
      const std::string path(zvuti::WithNativeSeparators(CUtiIO::GetGamePath(kUnknownGame, file)));
      std::filesystem::create_directories(std::filesystem::path(path).parent_path());
      File().AppearAs(path);
    }
  }
  ~AppFolder() { std::filesystem::remove_all(path_); }

 private:
  static inline std::string path_;
};

void Levels(std::string_view file) {
  CUtiExpLevel table;
  fuzz::Check(table.LoadLevelConfig(File().Path()) == 1, "a level file is loaded");
  constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
  const bool hasMark = file.substr(0, kUtf8Mark.size()) == kUtf8Mark;
  std::istringstream in{std::string(file.substr(hasMark ? kUtf8Mark.size() : 0))};
  std::vector<std::pair<int, std::int64_t>> records;
  int level = 0;
  for (std::int64_t exp = 0; in >> level >> exp;) {
    records.emplace_back(level, exp);
    const int index = static_cast<int>(records.size());
    fuzz::Check(table.GetExpByLevel(index) == exp, "a complete record is loaded");
  }
  fuzz::Check(table.GetExpByLevel(static_cast<int>(records.size()) + 1) == 0,
              "only complete records are loaded");
  fuzz::Check(table.GetExpByLevel(0) == 0, "levels count from 1");
  for (const std::int64_t exp : {Limits::min(), std::int64_t{0}, std::int64_t{1000}, Limits::max()}) {
    const int found = table.GetLevelByExp(exp);
    const auto isIt = [&](const auto& record) {
      return record.first == found && (record.second <= exp || &record == &records.front());
    };
    fuzz::Check(records.empty() ? found == 1 : std::any_of(records.begin(), records.end(), isIt),
                "the level found is the first of the file or one that the experience reaches");
  }
}

void Ranks() {
  CUtiRank table;
  fuzz::Check(table.LoadRankConfig(kUnknownGame), "a rank file is loaded");
  const bool isEmpty = table.GetRank(0).empty();
  for (const std::int64_t score : {Limits::min(), std::int64_t{-1}, std::int64_t{12'345}, Limits::max()})
    fuzz::Check(table.GetRank(score).empty() == isEmpty, "either every score has a rank or none has");
}

void Tasks() {
  CUtiTaskAuto table;
  table.Load(kUnknownGame);
  for (const int task : {0, 1, 2, 17, std::numeric_limits<int>::min()}) {
    const std::string name = table.GetName(task).GetString();
    fuzz::Check(name == table.GetName(task).GetString(), "a task's name does not change");
    fuzz::Check(name.find('\n') == std::string::npos, "a name does not extend beyond its line");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const AppFolder folder;
  if (size == 0) return 0;
  File().Write(fuzz::BytesOf(data + 1, size - 1));
  data[0] % 3 == 0 ? Levels(fuzz::BytesOf(data + 1, size - 1)) : data[0] % 3 == 1 ? Ranks() : Tasks();
  return 0;
}
