// Many threads at full work, each on objects of its own: nothing mixes and nothing piles up.
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
#include "tests/support/GoldenRecords.h"
#include "tests/support/HeapFaults.h"
#include "tests/support/ResourceLimits.h"
#include "tests/support/TempFolder.h"
#include "tests/support/WireBytes.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kThreads = 8;

std::chrono::milliseconds SoakTime() {
  const char* const seconds = std::getenv("ZVUTILIB_SOAK_SECONDS");
  return std::chrono::seconds(seconds ? std::max(1, std::atoi(seconds)) : 2);
}

struct Done {
  std::int64_t rounds = 0, wrong = 0, grown = 0;
};

// Uses everything once. Returns whether the results are right.
bool IsRoundRight(const CUtiBlackList& words, std::mt19937& random) {
  const std::string number = std::to_string(random() % 1'000'000'000);
  CString masked, separated, joined;
  words.ReplaceBlackWord(("say CHEAP " + number + " \xB0\xA1\xB0\xA2").c_str(), masked);  // 啊阿
  CUtiNumber::InsertSeparator(number.c_str(), separated);
  CUtiNumber::RemoveSeparator(separated, joined);
  CTextString text;
  text.Format("%s|%d", joined, 7);

  const test::Golden& golden = test::GoldenRecords()[random() % test::GoldenRecords().size()];
  const auto& type = *zvuti::wire::FindRecord(golden.record);
  const auto record = type.make();
  CStreamReader stream(golden.Bytes());
  type.read(stream, record.get());
  type.write(stream, record.get());

  const unsigned long word = random() & 0xFFFFFFFF;
  return masked == ("say ***** " + number + " ****").c_str() && text == (number + "|7").c_str() &&
         test::Bytes(stream) == golden.Bytes() && CKxTime::String2DWord(CKxTime::DWord2String(word)) == word;
}

// Works until `end`. Blocks that are kept after `warm` count as grown.
Done RunUntil(Clock::time_point warm, Clock::time_point end, unsigned seed, const std::string& wordFile) {
  CUtiBlackList words;
  words.Load(wordFile.c_str());
  std::mt19937 random(seed);
  Done done;
  const auto workUntil = [&](Clock::time_point stop) {
    for (; Clock::now() < stop; ++done.rounds) done.wrong += IsRoundRight(words, random) ? 0 : 1;
  };
  workUntil(warm);
  const std::int64_t blocks = test::LiveBlocks();
  workUntil(end);
  done.grown = test::LiveBlocks() - blocks;
  return done;
}

TEST(Soak, ManyThreadsLoseNothingAndKeepNothing) {
  const test::TempFolder folder;
  const std::string words = folder.Write("words", "cheap\n\xB0\xA1\xB0\xA2\n");
  test::GoldenRecords();  // read once, before the threads
  const auto begin = Clock::now(), warm = begin + SoakTime() / 4, end = begin + SoakTime();
  std::vector<Done> done(kThreads);
  std::vector<std::thread> threads;
  for (unsigned number = 0; number < kThreads; ++number)
    threads.emplace_back([&, number] { done[number] = RunUntil(warm, end, number, words); });
  std::this_thread::sleep_until(warm);
  const std::size_t resident = test::ResidentBytes();
  std::this_thread::sleep_until(end - std::chrono::milliseconds(100));
  const std::size_t residentAtEnd = test::ResidentBytes();
  for (std::thread& thread : threads) thread.join();

  std::int64_t rounds = 0;
  for (const Done& one : done) {
    EXPECT_GT(one.rounds, 0);
    EXPECT_EQ(one.wrong, 0);
    EXPECT_EQ(one.grown, 0) << "blocks that were not given back";
    rounds += one.rounds;
  }
  // Heaps and sanitizers keep some of what they were given back.
  EXPECT_LT(residentAtEnd, resident + resident / 4 + (std::size_t{16} << 20));
  std::cout << "soak: " << rounds << " rounds, " << (resident >> 20) << " MB resident when warm, "
            << (residentAtEnd >> 20) << " MB at the end\n";
}

}  // namespace
