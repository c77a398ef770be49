#include <ZvUtiLib/CUtiThread.h>

#include <gtest/gtest.h>

#include <memory>
#include <thread>

namespace {

// Its body leaves an object behind that the thread destroys, which then goes back to the worker.
struct Worker : CUtiThread {
  using CUtiThread::StartThread;
  Worker() = default;
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;
  ~Worker() override {
    SetEvent(stopEvent);
    WaitForSingleObject(threadHandle, INFINITE);
    EXPECT_EQ(farewells, 1);
  }

  struct Farewell {
    Worker* worker = nullptr;
    ~Farewell() {
      std::this_thread::yield();
      ++worker->farewells;
    }
  };
  unsigned long ThreadBody() override {
    thread_local Farewell farewell;
    farewell.worker = this;
    return 0;
  }

  int farewells = 0;
};

TEST(CUtiThread, TheDestructorsWaitCoversWhatTheBodyLeavesToItsThread) {
  for (int i = 0; i < 20; ++i) {
    const auto worker = std::make_unique<Worker>();
    ASSERT_EQ(worker->StartThread(), 1);
  }
}

}  // namespace
