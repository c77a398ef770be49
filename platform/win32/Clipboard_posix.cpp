#include "platform/win32/Clipboard.h"

#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <thread>

namespace {

struct FreeBlock {
  void operator()(void* block) const { GlobalFree(block); }
};

class Clipboard {
 public:
  bool Open() {
    const std::lock_guard lock(mutex_);
    const std::thread::id self = std::this_thread::get_id();
    if (user_ != std::thread::id() && user_ != self) return false;
    user_ = self;
    return true;
  }
  bool Close() {
    const std::lock_guard lock(mutex_);
    if (user_ != std::this_thread::get_id()) return false;
    user_ = {};
    return true;
  }
  bool IsMine() {
    const std::lock_guard lock(mutex_);
    return user_ == std::this_thread::get_id();
  }

  // By format. Only the thread that has the clipboard open uses it.
  std::map<unsigned, std::unique_ptr<void, FreeBlock>> contents;

 private:
  std::mutex mutex_;
  std::thread::id user_;
};

Clipboard& TheClipboard() {
  static Clipboard clipboard;
  return clipboard;
}

}  // namespace

HGLOBAL GlobalAlloc(unsigned, std::size_t size) { return ::operator new(size, std::nothrow); }
void* GlobalLock(HGLOBAL block) { return block; }
int GlobalUnlock(HGLOBAL) { return 0; }
HGLOBAL GlobalFree(HGLOBAL block) {
  ::operator delete(block);
  return nullptr;
}

int OpenClipboard(void*) { return TheClipboard().Open() ? 1 : 0; }
int CloseClipboard() { return TheClipboard().Close() ? 1 : 0; }

int EmptyClipboard() {
  if (!TheClipboard().IsMine()) return 0;
  TheClipboard().contents.clear();
  return 1;
}

HANDLE SetClipboardData(unsigned format, HANDLE block) try {
  if (!block || !TheClipboard().IsMine()) return nullptr;
  TheClipboard().contents[format].reset(block);
  return block;
} catch (const std::bad_alloc&) {
  return nullptr;
}

HANDLE GetClipboardData(unsigned format) {
  if (!TheClipboard().IsMine()) return nullptr;
  const auto& contents = TheClipboard().contents;
  const auto found = contents.find(format);
  return found != contents.end() ? found->second.get() : nullptr;
}
