#include <fcntl.h>
#include <unistd.h>

#include "platform/AppendFile.h"
#include "platform/Path.h"

namespace zvuti {

// Not blocking: where a pipe stands at this path, the open must not wait for its reader.
AppendFile::AppendFile(const char* path)
    : handle_(open(NativePath(path).c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666)) {}

AppendFile::~AppendFile() {
  if (IsOpen()) close(static_cast<int>(handle_));
}

bool AppendFile::IsOpen() const { return handle_ >= 0; }

void AppendFile::Append(std::string_view text) {
  // One call, since the system moves to the end and writes in one step only within one call.
  [[maybe_unused]] const ssize_t written = write(static_cast<int>(handle_), text.data(), text.size());
}

}  // namespace zvuti
