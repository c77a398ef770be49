// Loaders: what they read from files of random content.
#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <ZvUtiLib/CUtiBlackList.h>
#include <ZvUtiLib/CUtiExpLevel.h>
#include <ZvUtiLib/CUtiIO.h>
#include <ZvUtiLib/CUtiRank.h>
#include <ZvUtiLib/CUtiTaskAuto.h>
#include <ZvUtiLib/GameCatalogue.h>
#include <ZvUtiLib/platform/CKxIniFileReader.h>

#include "fuzz/answers/Properties.h"
#include "platform/Doors.h"

namespace answers {
namespace {

constexpr const char* kPieces[] = {"1",         "20",          "300",  "-4",   "99999999999999999999",
                                   " ",         "\n",          "\r\n", "\t",   "name",
                                   "[",         "]",           "=",    ";",    "[Task]\n",
                                   "Count=2\n", "1=first\n",   "Name", "\x1A", "\x81",
                                   "\xB7\xE3",  "[INTRODUCE]", "\"",   "a",    "A",
                                   "\\"};

// The program's folder; a new file of one name for each question.
class Folder {
 public:
  Folder()
      : path_(std::filesystem::temp_directory_path() /
              ("zvuti-answers-" + std::to_string(std::random_device{}()))) {
    for (const GameId game : kGames) std::filesystem::create_directories(path_ / GetGameCodeName(game));
    programFolder = path_.string() + "/";
    zvuti::TheDoors().applicationFolder = [] { return programFolder; };
  }
  ~Folder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  /// Games with a code name; as many threads can ask at a time.
  static constexpr GameId kGames[] = {1, 4, 9, 10, 11, 16, 17, 18, 19};

  /// The number of this thread.
  static unsigned Mine() {
    static std::atomic<unsigned> threads{0};
    thread_local const unsigned mine = threads++ % static_cast<unsigned>(std::size(kGames));
    return mine;
  }

  std::string Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(path_ / name, std::ios::binary) << bytes;
    return programFolder + name;
  }

 private:
  static inline std::string programFolder;
  std::filesystem::path path_;
};

}  // namespace

void AskFiles(Random& random, Report& report) {
  static const Folder folder;
  const std::string bytes = random.Text(kPieces, 40);
  const std::string path = folder.Write("file" + std::to_string(Folder::Mine()), bytes);
  report << bytes;

  CUtiExpLevel levels;
  report << levels.LoadLevelConfig(path);
  for (const int number : {0, 1, 20, 300})
    report << levels.GetLevelByExp(number) << levels.GetExpByLevel(number);

  const GameId id = Folder::kGames[Folder::Mine()];
  const std::string game = GetGameCodeName(id) + "/";
  folder.Write(game + "Rank.ini", bytes);
  CUtiRank ranks;
  report << ranks.LoadRankConfig(id);
  for (const std::int64_t score : {-1, 0, 100, 2000, 30000}) report << ranks.GetRank(score);

  folder.Write(game + "Task.ini", bytes);
  CUtiTaskAuto tasks;
  tasks.Load(id);
  for (int task = -4; task < 3; ++task) report << tasks.GetName(task).GetString();

  CUtiBlackList words;
  report << words.Load(path.c_str()) << words.IsLoaded();
  const std::string text = random.Text(kPieces, 20);
  CString masked;
  const int isMasked = words.ReplaceBlackWord(text.c_str(), masked);
  report << text << words.IsMatched(text.c_str()) << isMasked << masked.GetString();

  CKxIniFileReaderSuite suite;
  CKxIniFileReader* const reader = suite.FindIniFileReader(path.c_str());
  for (const char* section : {"Task", "", "name"}) {
    for (const char* key : {"Count", "1", "NAME", "a"}) report << reader->GetString(section, key, "none");
  }
  report << static_cast<std::uint32_t>(CUtiIO::ReadDWordFromFile(path.c_str()));
}

}  // namespace answers
