#include "platform/win32/Kernel.h"

#include <pthread.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <new>
#include <utility>

namespace {

using zvuti::KernelObject;

std::atomic<std::int64_t> openHandles{0};
std::atomic<std::int64_t> liveObjects{0};

// Each handle is a block of its own, so that closing one twice shows under a sanitizer.
struct Handle {
  explicit Handle(std::shared_ptr<KernelObject> o) : object(std::move(o)) { ++openHandles; }
  ~Handle() { --openHandles; }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

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

  bool Wait(std::uint32_t milliseconds) {
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

class Thread : public Waitable {
 public:
  Thread(LPTHREAD_START_ROUTINE entry, void* argument)
      : Waitable(true, false), entry_(entry), argument_(argument) {}

  // The system's thread is gone when the object is, unless it is the thread itself that ends the object.
  ~Thread() override {
    if (!started_) return;
    if (pthread_equal(thread_, pthread_self())) {
      pthread_detach(thread_);
    } else {
      pthread_join(thread_, nullptr);
    }
  }

  static bool Start(const std::shared_ptr<Thread>& thread) {
    thread->self_ = thread;
    thread->started_ = pthread_create(&thread->thread_, nullptr, &Thread::Run, thread.get()) == 0;
    if (!thread->started_) thread->self_.reset();
    return thread->started_;
  }

  std::uint32_t ExitCode() const { return exitCode_.load(); }

 private:
  static void* Run(void* object) {
    const std::shared_ptr<Thread> self = std::move(static_cast<Thread*>(object)->self_);
    self->exitCode_ = static_cast<std::uint32_t>(self->entry_(self->argument_));
    self->Signal();
    return nullptr;
  }

  const LPTHREAD_START_ROUTINE entry_;
  void* const argument_;
  std::atomic<std::uint32_t> exitCode_{STILL_ACTIVE};
  pthread_t thread_{};
  bool started_ = false;
  std::shared_ptr<Thread> self_;  // what keeps a running thread's object, until Run has taken it over
};

}  // namespace

namespace zvuti {

KernelObject::KernelObject() { ++liveObjects; }
KernelObject::~KernelObject() { --liveObjects; }

HANDLE HandleTo(std::shared_ptr<KernelObject> object) { return new (std::nothrow) Handle(std::move(object)); }

std::shared_ptr<KernelObject> ObjectOf(HANDLE handle) {
  return handle && handle != INVALID_HANDLE_VALUE ? static_cast<Handle*>(handle)->object : nullptr;
}

std::int64_t OpenHandles() { return openHandles; }
std::int64_t LiveKernelObjects() { return liveObjects; }

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
  std::unique_ptr<Handle> handle(new (std::nothrow) Handle(thread));
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
