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

  // Content by format. What changes it, or gives it away, serves the thread that has the clipboard open.
  bool Has(unsigned format) {
    const std::lock_guard lock(mutex_);
    return contents_.count(format) > 0;
  }
  bool Empty() {
    const std::lock_guard lock(mutex_);
    if (!IsMine()) return false;
    contents_.clear();
    return true;
  }
  bool Set(unsigned format, void* block) {
    const std::lock_guard lock(mutex_);
    if (!block || !IsMine()) return false;
    contents_[format].reset(block);
    return true;
  }
  void* Get(unsigned format) {
    const std::lock_guard lock(mutex_);
    if (!IsMine()) return nullptr;
    const auto found = contents_.find(format);
    return found != contents_.end() ? found->second.get() : nullptr;
  }

 private:
  bool IsMine() const { return user_ == std::this_thread::get_id(); }

  std::mutex mutex_;
  std::thread::id user_;
  std::map<unsigned, std::unique_ptr<void, FreeBlock>> contents_;
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

int IsClipboardFormatAvailable(unsigned format) { return TheClipboard().Has(format) ? 1 : 0; }

int OpenClipboard(void*) { return TheClipboard().Open() ? 1 : 0; }
int CloseClipboard() { return TheClipboard().Close() ? 1 : 0; }

int EmptyClipboard() { return TheClipboard().Empty() ? 1 : 0; }

HANDLE SetClipboardData(unsigned format, HANDLE block) try {
  return TheClipboard().Set(format, block) ? block : nullptr;
} catch (const std::bad_alloc&) {
  return nullptr;
}

HANDLE GetClipboardData(unsigned format) { return TheClipboard().Get(format); }
