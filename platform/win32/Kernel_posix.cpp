#include "platform/win32/Kernel.h"

#include <pthread.h>

#include <chrono>
#include <climits>
#include <condition_variable>
#include <mutex>
#include <new>
#include <utility>

namespace {

using zvuti::KernelObject;

// Each handle is a block of its own, so that closing one twice shows under a sanitizer.
struct Handle {
  const std::shared_ptr<KernelObject> object;
};

// Null, without an exception, when there is no memory.
template <class Object, class... Arguments>
std::shared_ptr<Object> Make(Arguments... arguments) {
  try {
    return std::make_shared<Object>(arguments...);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

template <class Object>
std::shared_ptr<Object> ObjectOfKind(HANDLE handle) {
  return std::dynamic_pointer_cast<Object>(zvuti::ObjectOf(handle));
}

class Waitable : public KernelObject {
 public:
  Waitable(bool manualReset, bool signalled) : manualReset_(manualReset), signalled_(signalled) {}

  void Signal() {
    const std::lock_guard lock(mutex_);
    signalled_ = true;
    changed_.notify_all();
  }

  virtual bool Wait(std::uint32_t milliseconds) {
    std::unique_lock lock(mutex_);
    const auto signalled = [this] { return signalled_; };
    if (milliseconds == INFINITE) {
      changed_.wait(lock, signalled);
    } else if (!changed_.wait_for(lock, std::chrono::milliseconds(milliseconds), signalled)) {
      return false;
    }
    if (!manualReset_) signalled_ = false;
    return true;
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  const bool manualReset_;
  bool signalled_;
};

class Event : public Waitable {
 public:
  using Waitable::Waitable;
};

// Counts as ended when a thread of the platform would: after its thread_local objects are destroyed. When its
// entry returns, or leaves by pthread_exit, the host system destroys the thread's thread_local objects and
// then, in up to PTHREAD_DESTRUCTOR_ITERATIONS rounds, the values of its keys. A key of our own comes back
// for each round and signals in the last but one; the last is where heaps and sanitizers take leave of a
// thread. A wait that saw the signal then joins, so nothing of the thread runs after the wait.
class Thread : public Waitable {
 public:
  Thread(LPTHREAD_START_ROUTINE entry, void* argument)
      : Waitable(true, false), entry_(entry), argument_(argument) {}

  // Closing a handle waits for nothing.
  ~Thread() override {
    if (isStarted_ && !isJoined_) pthread_detach(thread_);
  }

  static bool Start(const std::shared_ptr<Thread>& thread) {
    thread->self_ = thread;
    thread->isStarted_ = pthread_create(&thread->thread_, nullptr, &Thread::Run, thread.get()) == 0;
    if (!thread->isStarted_) thread->self_.reset();
    return thread->isStarted_;
  }

  bool Wait(std::uint32_t milliseconds) override {
    if (!Waitable::Wait(milliseconds)) return false;
    Join();
    return true;
  }

  std::uint32_t ExitCode() { return Wait(0) ? exitCode_ : STILL_ACTIVE; }

 private:
  static void* Run(void* object) {
    auto* const thread = static_cast<Thread*>(object);
    // Without a key, the end of the entry counts as the end of the thread, also when it leaves by
    // pthread_exit.
    struct EndOfEntry {
      Thread* thread;
      ~EndOfEntry() {
        if (thread) thread->End();
      }
    } const end{KeepForKey(thread) ? nullptr : thread};
    const auto code = static_cast<std::uint32_t>(thread->entry_(thread->argument_));
    return reinterpret_cast<void*>(std::uintptr_t{code});
  }

  // Has EndRound called with `thread` in the next round of this system's thread. Where the system refuses
  // that, a thread signals at the end of its entry, and the join alone waits for the rest, whatever limit
  // there is. The key stays to the end of the process: a static object that is destroyed late may still wait
  // for a thread.
  static bool KeepForKey(Thread* thread) {
    static pthread_key_t key;
    static const bool isMade = pthread_key_create(&key, &Thread::EndRound) == 0;
    return isMade && pthread_setspecific(key, thread) == 0;
  }

  static void EndRound(void* object) {
    auto* const thread = static_cast<Thread*>(object);
    if (++thread->rounds_ == PTHREAD_DESTRUCTOR_ITERATIONS - 1 || !KeepForKey(thread)) thread->End();
  }

  void End() {
    const std::shared_ptr<Thread> self = std::move(self_);
    Signal();
  }

  void Join() {
    // The thread itself must not take the lock: another thread may hold it while it waits for this one's end.
    if (pthread_equal(thread_, pthread_self())) return;
    const std::lock_guard lock(joining_);
    if (isJoined_) return;
    void* result = nullptr;
    pthread_join(thread_, &result);
    isJoined_ = true;
    exitCode_ = static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(result));
  }

  const LPTHREAD_START_ROUTINE entry_;
  void* const argument_;
  pthread_t thread_{};
  bool isStarted_ = false;
  int rounds_ = 0;
  std::shared_ptr<Thread> self_;  // keeps the object of a running thread until End
  std::mutex joining_;
  bool isJoined_ = false;
  std::uint32_t exitCode_ = STILL_ACTIVE;
};

}  // namespace

namespace zvuti {

KernelObject::~KernelObject() = default;

HANDLE HandleTo(std::shared_ptr<KernelObject> object) { return new (std::nothrow) Handle{std::move(object)}; }

std::shared_ptr<KernelObject> ObjectOf(HANDLE handle) {
  return handle && handle != INVALID_HANDLE_VALUE ? static_cast<Handle*>(handle)->object : nullptr;
}

}  // namespace zvuti

HANDLE CreateEventA(SECURITY_ATTRIBUTES*, int manualReset, int initialState, const char*) {
  auto event = Make<Event>(manualReset != 0, initialState != 0);
  return event ? zvuti::HandleTo(std::move(event)) : nullptr;
}

HANDLE CreateThread(SECURITY_ATTRIBUTES*, std::size_t, LPTHREAD_START_ROUTINE entry, void* argument, DWORD,
                    DWORD*) {
  const auto thread = Make<Thread>(entry, argument);
  if (!thread) return nullptr;
  // The handle comes first: a thread that runs can't be taken back.
  std::unique_ptr<Handle> handle(new (std::nothrow) Handle{thread});
  return handle && Thread::Start(thread) ? handle.release() : nullptr;
}

int SetEvent(HANDLE handle) {
  const auto event = ObjectOfKind<Event>(handle);
  if (!event) return 0;
  event->Signal();
  return 1;
}

DWORD WaitForSingleObject(HANDLE handle, DWORD milliseconds) {
  const auto object = ObjectOfKind<Waitable>(handle);
  if (!object) return WAIT_FAILED;
  return object->Wait(static_cast<std::uint32_t>(milliseconds)) ? WAIT_OBJECT_0 : WAIT_TIMEOUT;
}

int GetExitCodeThread(HANDLE handle, DWORD* exitCode) {
  const auto thread = ObjectOfKind<Thread>(handle);
  if (!thread) return 0;
  *exitCode = thread->ExitCode();
  return 1;
}

int CloseHandle(HANDLE handle) {
  if (!handle || handle == INVALID_HANDLE_VALUE) return 0;
  delete static_cast<Handle*>(handle);
  return 1;
}

int DuplicateHandle(HANDLE, HANDLE source, HANDLE, HANDLE* copy, DWORD, int, DWORD) {
  auto object = zvuti::ObjectOf(source);
  *copy = object ? zvuti::HandleTo(std::move(object)) : nullptr;
  return *copy ? 1 : 0;
}

HANDLE GetCurrentProcess() { return INVALID_HANDLE_VALUE; }
