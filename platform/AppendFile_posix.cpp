#include <fcntl.h>
#include <pthread.h>
#include <signal.h>  // NOLINT(modernize-deprecated-headers): sigtimedwait is in no other
#include <unistd.h>

#include <cerrno>

#include "platform/AppendFile.h"
#include "platform/Path.h"

namespace zvuti {
namespace {

// While alive, SIGPIPE and SIGXFSZ wait instead of ending the process. A write raises them for its own
// thread: the one where a pipe has lost its reader, the other at a file size limit.
class SignalsWait {
 public:
  SignalsWait() {
    sigemptyset(&both_);
    sigaddset(&both_, SIGPIPE);
    sigaddset(&both_, SIGXFSZ);
    pthread_sigmask(SIG_BLOCK, &both_, &maskBefore_);
    sigpending(&waitingBefore_);
  }
  ~SignalsWait() { pthread_sigmask(SIG_SETMASK, &maskBefore_, nullptr); }
  SignalsWait(const SignalsWait&) = delete;
  SignalsWait& operator=(const SignalsWait&) = delete;

  // Takes `signal` back, which a write has raised, unless one is the client's: a thread that has blocked it
  // before may have had one waiting.
  void TakeBack(int signal) const {
    if (sigismember(&maskBefore_, signal) == 1 && sigismember(&waitingBefore_, signal) == 1) return;
    sigset_t one;
    sigemptyset(&one);
    sigaddset(&one, signal);
    constexpr timespec kNow{};
    sigtimedwait(&one, nullptr, &kNow);
  }

 private:
  sigset_t both_, maskBefore_, waitingBefore_;
};

}  // namespace

// Not blocking: where a pipe stands at this path, neither the open nor a write must wait for its reader.
AppendFile::AppendFile(const char* path)
    : handle_(open(WithNativeSeparators(path).c_str(),
                   O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NOCTTY | O_NONBLOCK, 0666)) {}

// close() is a cancellation point. A cancelled thread unwinds, and must not do that out of a destructor.
AppendFile::~AppendFile() {
  if (!IsOpen()) return;
  int before = 0;
  pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before);
  close(static_cast<int>(handle_));
  pthread_setcancelstate(before, nullptr);
}

bool AppendFile::IsOpen() const { return handle_ >= 0; }

void AppendFile::Append(std::string_view text) {
  const SignalsWait signals;
  // One call, since the system moves to the end and writes in one step only within one call.
  if (write(static_cast<int>(handle_), text.data(), text.size()) >= 0) return;
  if (errno == EPIPE) signals.TakeBack(SIGPIPE);
  if (errno == EFBIG) signals.TakeBack(SIGXFSZ);
}

}  // namespace zvuti
