// crowd SECONDS: eight threads ask everything, each on objects of its own, while the heap refuses at random.
// Fails if an answer is wrong or a block of memory is kept.
//
// crowd log FOLDER NAME LINES: four threads write LINES lines each to the log in FOLDER; NAME is in each
// line.
//
// crowd check FOLDER NAMES [LEAST]: fails unless all lines of these processes (A, B, ...) are whole and in
// order, and at least LEAST of each thread are there. A line for which the disk had no room may be missing or
// cut.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <map>
#include <new>
#include <string_view>
#include <thread>

#include <ZvUtiLib/CDebug.h>
#include <ZvUtiLib/CUtiBase.h>
#include <ZvUtiLib/CUtiMacInfo.h>
#include <ZvUtiLib/CUtiThread.h>

#include "fuzz/answers/Properties.h"
#include "platform/Doors.h"
#include "tests/support/HeapFaults.h"

namespace {

using namespace answers;
using Clock = std::chrono::steady_clock;

constexpr unsigned kThreads = 8, kNumbers = 50, kMostAllocations = 400, kLogThreads = 4;

// What has no answer that could be compared: it must not crash, race or keep memory.
void UseTheRest(unsigned thread) {
  struct Once : CUtiThread {
    ~Once() override {
      if (stopEvent) SetEvent(stopEvent);
      if (threadHandle) WaitForSingleObject(threadHandle, INFINITE);
    }
    unsigned long ThreadBody() override { return 0; }
    using CUtiThread::StartThread;
  } once;
  once.StartThread();
  unsigned char addresses[60];
  int length = 0;
  CUtiMacInfo::GetAllMacAddress2(addresses, sizeof addresses, &length);
  CUtiBase::CopyToClipboard("text");
  CDebug::LogOut("thread %u", thread);
}

struct Crowd {
  std::vector<Property> properties = AllProperties();
  std::vector<std::string> known;  // the answers, by property and number
  std::atomic<unsigned long> asked{0}, refused{0}, wrong{0};

  Crowd() {
    for (const Property& property : properties) {
      for (unsigned number = 0; number < kNumbers; ++number) known.push_back(Answer(property, number));
    }
  }

  void Run(unsigned thread, Clock::time_point end) {
    Random random(thread);
    while (Clock::now() < end) {
      const unsigned choice = random.Below(static_cast<unsigned>(known.size()));
      const Property& property = properties[choice / kNumbers];
      const bool isPoor = random.Below(2) == 0;
      const std::int64_t nth = isPoor ? 1 + random.Below(kMostAllocations) : 0;
      ++asked;
      try {
        const test::HeapFaults faults(nth, random.Below(4) == 0);
        if (random.Below(16) == 0) UseTheRest(thread);
        const std::string answer = Answer(property, choice % kNumbers);
        // With a full heap, answers may be failure values.
        if (!isPoor && answer != known[choice]) {
          std::fprintf(stderr, "crowd: %s %u has another answer\n", property.name, choice % kNumbers);
          ++wrong;
        }
      } catch (const std::bad_alloc&) {
        ++refused;
      }
    }
  }
};

void RunThreads(Crowd& crowd, std::chrono::milliseconds time) {
  const auto end = Clock::now() + time;
  std::vector<std::thread> threads;
  for (unsigned i = 0; i < kThreads; ++i) threads.emplace_back([&crowd, i, end] { crowd.Run(i, end); });
  for (std::thread& thread : threads) thread.join();
}

int RunCrowd(std::chrono::milliseconds time) {
  Crowd crowd;
  RunThreads(crowd, time / 4);  // fills what is kept on purpose
  const std::int64_t blocks = test::LiveBlocksOfAllThreads();
  RunThreads(crowd, time - time / 4);
  const std::int64_t kept = test::LiveBlocksOfAllThreads() - blocks;
  std::printf(
      "crowd: %lu questions by %u threads, %lu ended by the heap, %lu wrong answers, %ld blocks kept\n",
      crowd.asked.load(), kThreads, crowd.refused.load(), crowd.wrong.load(), static_cast<long>(kept));
  return crowd.wrong == 0 && crowd.refused > 0 && kept == 0 ? 0 : 1;
}

// A line of a thread; its tail is of another length for each.
std::string Line(const std::string& writer, unsigned long count) {
  return writer + " " + std::to_string(count) + " " +
         std::string((count * 7 + writer.back()) % 200, writer[0]) + ".";
}

std::string logFolder;

int WriteLog(const std::string& name, unsigned long lines) {
  zvuti::TheDoors().applicationFolder = [] { return logFolder; };
  CDebug::LogInit();
  std::vector<std::thread> threads;
  for (unsigned i = 0; i < kLogThreads; ++i) {
    threads.emplace_back([&name, lines, i] {
      const std::string writer = name + std::to_string(i);
      for (unsigned long count = 0; count < lines; ++count) CDebug::LogOut("%s", Line(writer, count).c_str());
    });
  }
  for (std::thread& thread : threads) thread.join();
  return 0;
}

int CheckLog(const std::string& names, unsigned long least) {
  constexpr std::size_t kStamp = std::string_view("2013-08-29 01:02:03,004 ").size();
  std::ifstream in(logFolder + "log/lobby.log", std::ios::binary);
  std::map<std::string, unsigned long> next, whole;
  unsigned long cut = 0;
  for (std::string line; std::getline(in, line);) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    const std::string text = line.size() > kStamp ? line.substr(kStamp) : "";
    const std::string writer = text.substr(0, 2);
    const unsigned long count =
        std::strtoul(text.c_str() + std::min<std::size_t>(text.size(), 2), nullptr, 10);
    if (text != Line(writer.empty() ? "?" : writer, count)) {
      ++cut;  // it has to be explained by a full disk
    } else if (count < next[writer]) {
      std::fprintf(stderr, "crowd: out of order: %s\n", text.c_str());
      return 1;
    } else {
      next[writer] = count + 1;
      ++whole[writer];
    }
  }
  std::printf("crowd: %zu writers, %lu lines cut\n", whole.size(), cut);
  int result = whole.size() == names.size() * kLogThreads ? 0 : 1;
  for (const auto& [writer, count] : whole) {
    std::printf("  %s: %lu whole lines\n", writer.c_str(), count);
    if (count < least || (least > 0 && next[writer] == 0)) result = 1;
  }
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string command = argc > 1 ? argv[1] : "";
  if (argc > 3) logFolder = std::string(argv[2]) + "/";
  if (command == "log" && argc == 5) return WriteLog(argv[3], std::strtoul(argv[4], nullptr, 10));
  if (command == "check" && argc >= 4)
    return CheckLog(argv[3], argc > 4 ? std::strtoul(argv[4], nullptr, 10) : 0);
  const unsigned long seconds = std::strtoul(command.c_str(), nullptr, 10);
  if (argc == 2 && seconds > 0) return RunCrowd(std::chrono::seconds(seconds));
  std::fputs("usage: crowd SECONDS | crowd log FOLDER NAME LINES | crowd check FOLDER NAMES [LEAST]\n",
             stderr);
  return 2;
}
