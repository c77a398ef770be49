// Prints what only a real Windows can tell: what basic operations of the system cost there, and what the
// library does when another process has the clipboard open. Costs are the fastest of several rounds, in
// nanoseconds.
#include <ZvUtiLib/platform/Windows.h>

#include <ZvUtiLib/CDebug.h>
#include <ZvUtiLib/CUtiBase.h>
#include <ZvUtiLib/CUtiNumber.h>
#include <ZvUtiLib/data/CStream.h>
#include <ZvUtiLib/records/Items.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

template <class Operation>
void Measure(const char* what, int count, Operation operation) {
  using Clock = std::chrono::steady_clock;
  double best = 1e18;
  for (int round = 0; round < 5; ++round) {
    const auto start = Clock::now();
    for (int i = 0; i < count; ++i) operation();
    const std::chrono::duration<double, std::nano> taken = Clock::now() - start;
    best = std::min(best, taken.count() / count);
  }
  std::printf("%-44s %10.1f ns\n", what, best);
}

// The compiler must neither move these calls out of the loop nor compute them itself.
template <class Value>
Value Hidden(Value value) {
  asm volatile("" : "+r"(value) : : "memory");
  return value;
}

void MeasureSystem() {
  const std::string text(1000, 'x');
  Measure("strlen of 1,000 bytes", 100000, [&] { Hidden(std::strlen(Hidden(text.c_str()))); });
  Measure("heap: 64 bytes, allocated and freed", 100000, [] { std::free(Hidden(std::malloc(64))); });
  Measure("heap: 4,096 bytes, allocated and freed", 100000, [] { std::free(Hidden(std::malloc(4096))); });
  const char* const path = "facts.tmp";
  std::fclose(std::fopen(path, "wb"));
  Measure("file opened for reading and closed", 200, [&] { std::fclose(std::fopen(path, "rb")); });
  std::remove(path);
}

void MeasureLibrary() {
  CString separated;
  Measure("InsertSeparator of ten digits", 20000,
          [&] { CUtiNumber::InsertSeparator(1234567890LL, separated); });
  Measure("an item written and read", 20000, [] {
    ItemRecord item;
    CStreamReader stream;
    stream << item;
    stream >> item;
  });
  CDebug::LogInit();
  Measure("a line of the log", 200, [] { CDebug::LogOut("%d of %s", 1, "facts"); });
}

// Another process keeps the clipboard open: this program, started again.
int Hold() {
  if (!OpenClipboard(nullptr)) return 1;
  Sleep(INFINITE);
  return 0;
}

bool IsClipboardFree() { return OpenClipboard(nullptr) != 0 && CloseClipboard() != 0; }

void TryClipboard() {
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION holder{};
  char line[] = "facts.exe hold";
  if (!CreateProcessA(nullptr, line, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &holder)) return;
  for (int i = 0; i < 200 && IsClipboardFree(); ++i) Sleep(50);
  const char* const state = IsClipboardFree() ? "free" : "held by another process";
  const DWORD before = GetTickCount(), sequence = GetClipboardSequenceNumber();
  CUtiBase::CopyToClipboard("facts");
  std::printf("%-44s %s, %s after %lu ms\n", "clipboard", state,
              GetClipboardSequenceNumber() == sequence ? "unchanged" : "changed", GetTickCount() - before);
  TerminateProcess(holder.hProcess, 0);
  CloseHandle(holder.hThread);
  CloseHandle(holder.hProcess);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && std::strcmp(argv[1], "hold") == 0) return Hold();
  TryClipboard();
  MeasureSystem();
  MeasureLibrary();
  return 0;
}
