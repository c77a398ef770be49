#include <atomic>
#include <stdexcept>
#include <vector>

#include "Files.h"
#include "Screens.h"

namespace {

// Scans the chat transcript again and again on its own thread until it is asked to stop.
class ChatScanner : public CUtiThread {
 public:
  ~ChatScanner() override { Stop(); }

  bool Start() {
    // Read the file here, since no exception may leave ThreadBody.
    lines_ = ReadTable("chat.txt", 2);
    return words_.Load(AppFile("words.txt").c_str()) && StartThread();
  }
  // Waits until the transcript has been scanned once. Returns false if the thread ended before that.
  bool WaitForFirstRound() const {
    while (rounds_ == 0) {
      if (WaitForSingleObject(threadHandle, 1) != WAIT_TIMEOUT) return rounds_ > 0;
    }
    return true;
  }
  // Tells the thread to stop, waits for it and returns its exit code.
  unsigned long Stop() {
    DWORD code = 0;
    if (stopEvent) SetEvent(stopEvent);
    if (threadHandle) {
      WaitForSingleObject(threadHandle, INFINITE);
      GetExitCodeThread(threadHandle, &code);
    }
    return code;
  }
  int Lines() const { return static_cast<int>(lines_.size()); }
  int Hits() const { return hits_; }

 private:
  unsigned long ThreadBody() override {
    while (WaitForSingleObject(stopEvent, 0) == WAIT_TIMEOUT) {
      int hits = 0;
      for (const Fields& line : lines_) hits += words_.IsMatched(line[1].c_str());
      hits_ = hits;
      ++rounds_;
    }
    return 1;
  }

  CUtiBlackList words_;
  std::vector<Fields> lines_;
  std::atomic<int> rounds_ = 0;
  std::atomic<int> hits_ = 0;
};

}  // namespace

void ShowWorker(Report& report) {
  report.Section("Background worker");
  ChatScanner scanner;
  if (!scanner.Start()) throw std::runtime_error("the worker does not start");
  const bool isScanned = scanner.WaitForFirstRound();
  const unsigned long code = scanner.Stop();
  report.Line("progress: %s", isScanned ? "every line scanned at least once" : "the thread ended too early");
  report.Line("scanned %d lines of chat on a second thread, %d with forbidden words", scanner.Lines(),
              isScanned ? scanner.Hits() : 0);
  report.Line("stopped through its event, exit code %lu", code);
  report.Did(2);
}

void ShowAdapters(Report& report) {
  report.Section("Network adapters");
  constexpr int kEntry = 6;
  unsigned char addresses[16 * kEntry];
  int length = 0;
  const int isRead = CUtiMacInfo::GetAllMacAddress2(addresses, sizeof addresses, &length);
  report.Line("list %s, %d addresses", isRead ? "read" : "not available", length / kEntry);
  for (int i = 0; i + kEntry <= length; i += kEntry) {
    const unsigned char* a = addresses + i;
    report.Line("%02X-%02X-%02X-%02X-%02X-%02X", a[0], a[1], a[2], a[3], a[4], a[5]);
  }
  report.Did();
}
