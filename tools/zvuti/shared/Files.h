// Input and output: files, standard input and output, bytes as hexadecimal text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace tool {

/// Returns all bytes of a file, or of standard input if the path is "" or "-". Throws Failure.
std::string ReadAll(const std::string& path);
/// Returns the name of a file for messages: its path or "standard input".
std::string NameOf(const std::string& path);

/// Writes a file, or to standard output if the path is "" or "-". Throws Failure.
void WriteAll(const std::string& path, std::string_view bytes);

/// Writes a file as a whole or not at all: on failure an old file stays as it was. Keeps its mode, and the
/// link if it is one. A path that is "", "-", or neither missing nor a regular file, is written to as
/// WriteAll does. Throws Failure.
void ReplaceFile(const std::string& path, std::string_view bytes);

/// A regular file with these bytes, which is deleted with the object. Throws Failure.
class TemporaryFile {
 public:
  explicit TemporaryFile(std::string_view bytes);
  ~TemporaryFile();
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  const std::string& Path() const { return path_; }

 private:
  void Remove() const;
  std::string path_;
};

/// A path from which the library can read a file with these bytes: its own, or that of a temporary copy. The
/// library reads no pipes, such as the one of <(command) in a shell, and on Windows only paths in code page
/// 936. Throws Failure.
class LibraryFile {
 public:
  LibraryFile(const std::string& path, std::string_view bytes);
  const char* Path() const { return path_.c_str(); }

 private:
  std::optional<TemporaryFile> copy_;
  std::string path_;
};

/// Formats bytes as "01 FF".
std::string ToHex(std::string_view bytes);

}  // namespace tool
