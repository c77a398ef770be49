// Everything in the library that reads a file, in one table.
#pragma once

#include <new>
#include <string>
#include <vector>

#include <ZvUtiLib/ZvUtiLib.h>

#include "tests/support/DoorsGuard.h"

namespace test {

/// A loader reads the file of its name in a folder and says what it got out of it.
struct Loader {
  const char* fileName;
  std::string (*load)(const std::string& folder);
  const char* good;       ///< content of a sound file
  const char* whenGood;   ///< what is read from that
  const char* whenEmpty;  ///< from a file of no bytes
  const char* whenNone;   ///< where there is no file that could be read
};

inline const std::vector<Loader>& Loaders() {
  // Of no name, so its files lie in the program's folder itself.
  static constexpr unsigned long kGame = 0;
  static std::string programFolder;
  static const std::vector<Loader> all = {
      {"levels.txt",
       [](const std::string& folder) {
         CUtiExpLevel table;
         const int result = table.LoadLevelConfig(folder + "/levels.txt");
         return std::to_string(result) + ":" + std::to_string(table.GetExpByLevel(2));
       },
       "1 0\n2 100\n", "1:100", "1:0", "0:0"},
      {"Rank.ini",
       [](const std::string& folder) {
         const DoorsGuard guard;
         programFolder = folder + "/";
         zvuti::TheDoors().applicationFolder = [] { return programFolder; };
         CUtiRank table;
         const bool result = table.LoadRankConfig(kGame);
         return std::to_string(result) + ":" + table.GetRank(0);
       },
       "first 0 second 100", "1:first", "1:", "0:"},
      {"Task.ini",
       [](const std::string& folder) {
         const DoorsGuard guard;
         programFolder = folder + "/";
         zvuti::TheDoors().applicationFolder = [] { return programFolder; };
         CUtiTaskAuto table;
         table.Load(kGame);
         return std::string(table.GetName(1).GetString());
       },
       "[AutoTask]\n1=task", "task", "", ""},
      {"words.txt",
       [](const std::string& folder) {
         CUtiBlackList list;
         const int result = list.Load((folder + "/words.txt").c_str());
         return std::to_string(result) + ":" + std::to_string(list.IsMatched("a word"));
       },
       "word", "1:1", "1:0", "0:0"},
      {"number",
       [](const std::string& folder) {
         return std::to_string(CUtiIO::ReadDWordFromFile((folder + "/number").c_str()));
       },
       "\x01\x01\x01\x01", "16843009", "0", "0"},
      {"a.xml",
       [](const std::string& folder) {
         CUtiXmlParser parser((folder + "/a.xml").c_str());
         return std::string(parser.GetRootElement() ? parser.GetRootElement()->GetText().GetString()
                                                    : "none");
       },
       "<a>text</a>", "text", "none", "none"},
  };
  return all;
}

/// What a loader gives, or "no memory", or "no file" for the exceptions that stand for these.
inline std::string LoadOrThrow(const Loader& loader, const std::string& folder) {
  try {
    return loader.load(folder);
  } catch (const std::bad_alloc&) {
    return "no memory";
  } catch (const CFileException&) {
    return "no file";
  }
}

}  // namespace test
