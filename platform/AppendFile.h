// AppendFile: lines added to the end of a file that others may be adding to as well.
#pragma once

#include <cstdint>
#include <string_view>

namespace zvuti {

/// The file is open as long as the object lives. Each Append reaches the end of the file as one piece, so
/// what several threads or processes append never mixes and is never lost to each other.
class AppendFile {
 public:
  /// Opens the file at `path`. Creates the file if it is missing, but not its folder. A pipe that nobody
  /// reads does not open; nothing here waits for a reader.
  explicit AppendFile(const char* path);
  ~AppendFile();
  AppendFile(const AppendFile&) = delete;
  AppendFile& operator=(const AppendFile&) = delete;

  bool IsOpen() const;
  /// Adds text, with line ends as the system's text files have them. A failure is silent: it raises no
  /// signal either.
  /// REQUIRES: IsOpen().
  void Append(std::string_view text);

 private:
  std::intptr_t handle_;  // the system's number of the open file, -1 for none
};

}  // namespace zvuti
