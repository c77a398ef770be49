// Many threads at full work, each on objects of its own: nothing is lost, nothing mixes, nothing piles up.
//
// Runs for two seconds, or as long as ZVUTILIB_SOAK_SECONDS says.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>
#include <thread>
#include <vector>

#include <ZvUtiLib/ZvUtiLib.h>

#include "records/Units.h"
#include "tests/reliability/LogLines.h"
#include "tests/support/AppFolder.h"
#include "tests/support/GoldenRecords.h"
#include "tests/support/HeapFaults.h"
#include "tests/support/ResourceLimits.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kThreads = 8;
constexpr std::int64_t kRoundsForALine = 16;  // the log of a long run has to fit the disk

std::chrono::milliseconds SoakTime() {
  const char* const seconds = std::getenv("ZVUTILIB_SOAK_SECONDS");
  return std::chrono::seconds(seconds ? std::max(1, std::atoi(seconds)) : 2);
}

struct Done {
  std::int64_t rounds = 0, lines = 0, wrong = 0, grown = 0;
};

class Worker {
 public:
  Worker(std::size_t number, const std::string& words)
      : number_(number), random_(static_cast<unsigned>(number)) {
    words_.Load(words.c_str());
  }

  // Works until `end`, and says whether blocks were kept since `warm`.
  Done RunUntil(Clock::time_point warm, Clock::time_point end) {
    while (Clock::now() < warm) Round();
    const std::int64_t blocks = test::LiveBlocks();
    while (Clock::now() < end) Round();
    done_.grown = test::LiveBlocks() - blocks;
    return done_;
  }

 private:
  // One round of everything; counts the results that are not what they have to be.
  void Round() {
    const std::string number = std::to_string(random_() % 1'000'000'000);
    CString masked, separated, joined;
    words_.ReplaceBlackWord(("say CHEAP " + number + " \xB0\xA1\xB0\xA2").c_str(), masked);  // 啊阿
    CUtiNumber::InsertSeparator(number.c_str(), separated);
    CUtiNumber::RemoveSeparator(separated, joined);
    CTextString text;
    text.Format("%s|%zu|%lld", number.c_str(), number_, static_cast<long long>(done_.rounds));
    bool isRight =
        masked == ("say ***** " + number + " ****").c_str() && joined == number.c_str() &&
        text == (number + "|" + std::to_string(number_) + "|" + std::to_string(done_.rounds)).c_str();

    const test::Golden& golden = test::GoldenRecords()[random_() % test::GoldenRecords().size()];
    const auto& type = *zvuti::wire::FindRecord(golden.record);
    const std::string bytes = golden.Bytes();
    const auto record = type.make();
    CStreamReader stream(bytes);
    type.read(stream, record.get());
    type.write(stream, record.get());
    isRight = isRight && std::string(reinterpret_cast<const char*>(stream.Data()),
                                     static_cast<std::size_t>(stream.Length())) == bytes;
    const unsigned long word = random_() & 0xFFFFFFFF;
    isRight = isRight && CKxTime::String2DWord(CKxTime::DWord2String(word)) == word;

    done_.wrong += isRight ? 0 : 1;
    if (done_.rounds++ % kRoundsForALine == 0)
      CDebug::LogOut("%s", test::LogLine(number_, done_.lines++).c_str());
  }

  const std::size_t number_;
  std::mt19937 random_;
  CUtiBlackList words_;
  Done done_;
};

TEST(Soak, ManyThreadsLoseNothingAndKeepNothing) {
  const test::AppFolder folder;
  const std::string words = folder.Write("words", "cheap\n\xB0\xA1\xB0\xA2\n");
  CDebug::LogInit();
  test::GoldenRecords();  // read once, before the threads
  const auto begin = Clock::now(), warm = begin + SoakTime() / 4, end = begin + SoakTime();
  std::vector<Done> done(kThreads);
  std::vector<std::thread> threads;
  threads.reserve(kThreads);
  for (std::size_t number = 0; number < kThreads; ++number) {
    threads.emplace_back([&, number] { done[number] = Worker(number, words).RunUntil(warm, end); });
  }
  std::this_thread::sleep_until(warm);
  const std::size_t resident = test::ResidentBytes();
  std::this_thread::sleep_until(end - std::chrono::milliseconds(100));
  const std::size_t residentAtEnd = test::ResidentBytes();
  for (std::thread& thread : threads) thread.join();

  const auto lines = test::LogLinesOf(folder.ReadText("log/lobby.log"), kThreads);
  Done all;
  for (std::size_t number = 0; number < kThreads; ++number) {
    const Done& mine = done[number];
    EXPECT_GT(mine.rounds, kRoundsForALine);
    EXPECT_EQ(mine.wrong, 0);
    EXPECT_EQ(mine.grown, 0) << "blocks that were not given back";
    EXPECT_EQ(lines[number], mine.lines);
    all.rounds += mine.rounds;
    all.lines += mine.lines;
  }
  // Heaps and sanitizers keep some of what they were given back.
  EXPECT_LT(residentAtEnd, resident + resident / 4 + (std::size_t{16} << 20));
  std::cout << "soak: " << all.rounds << " rounds, " << all.lines << " lines of the log, " << (resident >> 20)
            << " MB resident when warm, " << (residentAtEnd >> 20) << " MB at the end\n";
}

}  // namespace
