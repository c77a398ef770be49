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
  /// The heap refusing a block may look like no file; elsewhere it is std::bad_alloc or the whole file.
  bool mayLackMemory = false;
};

// Each shows all of what it has read, so that a part is not taken for the whole. Texts are longer than
// what a string holds inside itself.
inline constexpr Loader kLoaders[] = {
    {"levels.txt",
     [](const std::string& folder) {
       CUtiExpLevel table;
       std::string all = std::to_string(table.LoadLevelConfig(folder + "levels.txt"));
       for (const int level : {2, 3, 4}) (all += ':') += std::to_string(table.GetExpByLevel(level));
       return all;
     },
     "1 0\n2 100\n3 1000\n4 10000\n", "1:100:1000:10000", "1:0:0:0", "0:0:0:0"},
    {"Rank.ini",
     [](const std::string&) {
       CUtiRank table;
       // a game of no name, so its files lie in the folder itself
       std::string all = std::to_string(table.LoadRankConfig(0));
       for (const int score : {0, 100, 200}) (all += ':') += table.GetRank(score);
       return all;
     },
     "first_of_the_ranks 0 second 1 third_of_all_the_ranks 2",
     "1:first_of_the_ranks:second:third_of_all_the_ranks", "1:::", "0:::"},
    {"Task.ini",
     [](const std::string&) {
       CUtiTaskAuto table;
       table.Load(0);
       std::string all;
       for (const int task : {1, 2, 3}) (all += ':') += table.GetName(task).GetString();
       return all;
     },
     "[AutoTask]\n1=a task with a name\n2=two\n3=another task with a name",
     ":a task with a name:two:another task with a name", ":::", ":::"},
    {"words.txt",
     [](const std::string& folder) {
       CUtiBlackList list;
       std::string all = std::to_string(list.Load((folder + "words.txt").c_str()));
       for (const char* text : {"a word", "two", "a word of many letters"})
         (all += ':') += std::to_string(list.IsMatched(text));
       return all;
     },
     "a word\ntwo\nword of many letters", "1:1:1:1", "1:0:0:0", "0:0:0:0"},
    {"number",
     [](const std::string& folder) {
       return std::to_string(CUtiIO::ReadDWordFromFile((folder + "number").c_str()));
     },
     "\x01\x01\x01\x01", "16843009", "0", "0"},
    {"a.xml",
     [](const std::string& folder) {
       CUtiXmlParser parser((folder + "a.xml").c_str());
       const CString text = parser.GetRootElement() ? parser.GetRootElement()->GetText() : CString();
       return std::string(text.IsEmpty() ? "none" : text.GetString());
     },
     "<a>a text of some length &amp; its end</a>", "a text of some length & its end", "none", "none", true},
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
