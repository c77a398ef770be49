// Everything in the library that reads a file, in one table.
#pragma once

#include <new>
#include <string>

#include <ZvUtiLib/ZvUtiLib.h>

#include "tests/support/DoorsGuard.h"

namespace test {

/// A loader reads the file of its name in a folder, whose path ends in a slash and which stands for the
/// program's own, and says what it got out of it.
struct Loader {
  const char* fileName;
  std::string (*load)(const std::string& folder);
  const char* good;       ///< content of a sound file
  const char* whenGood;   ///< what is read from that
  const char* whenEmpty;  ///< from a file of no bytes
  const char* whenNone;   ///< where there is no file that could be read
};

// Texts are longer than what a string holds inside itself.
inline constexpr Loader kLoaders[] = {
    {"levels.txt",
     [](const std::string& folder) {
       CUtiExpLevel table;
       const int result = table.LoadLevelConfig(folder + "levels.txt");
       return std::to_string(result) + ":" + std::to_string(table.GetExpByLevel(2));
     },
     "1 0\n2 100\n3 1000\n", "1:100", "1:0", "0:0"},
    {"Rank.ini",
     [](const std::string&) {
       CUtiRank table;
       const bool result =
           table.LoadRankConfig(0);  // a game of no name, so its files lie in the folder itself
       return std::to_string(result) + ":" + table.GetRank(0);
     },
     "first_of_the_ranks 0 second 100 third 1000", "1:first_of_the_ranks", "1:", "0:"},
    {"Task.ini",
     [](const std::string&) {
       CUtiTaskAuto table;
       table.Load(0);
       return std::string(table.GetName(1).GetString());
     },
     "[AutoTask]\n1=a task with a name", "a task with a name", "", ""},
    {"words.txt",
     [](const std::string& folder) {
       CUtiBlackList list;
       const int result = list.Load((folder + "words.txt").c_str());
       return std::to_string(result) + ":" + std::to_string(list.IsMatched("a word"));
     },
     "word", "1:1", "1:0", "0:0"},
    {"number",
     [](const std::string& folder) {
       return std::to_string(CUtiIO::ReadDWordFromFile((folder + "number").c_str()));
     },
     "\x01\x01\x01\x01", "16843009", "0", "0"},
    {"a.xml",
     [](const std::string& folder) {
       CUtiXmlParser parser((folder + "a.xml").c_str());
       return std::string(parser.GetRootElement() ? parser.GetRootElement()->GetText().GetString() : "none");
     },
     "<a>text</a>", "text", "none", "none"},
};

/// What a loader gives, or "no memory", or "no file" for the exceptions that stand for these.
inline std::string LoadOrThrow(const Loader& loader, const std::string& folder) {
  static std::string programFolder;
  programFolder = folder + "/";
  DoorsGuard doors;
  doors->applicationFolder = [] { return programFolder; };
  try {
    return loader.load(programFolder);
  } catch (const std::bad_alloc&) {
    return "no memory";
  } catch (const CFileException&) {
    return "no file";
  }
}

}  // namespace test
