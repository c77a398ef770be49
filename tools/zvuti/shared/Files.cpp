#include "shared/Files.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <memory>

#include "shared/HostFiles.h"
#include "shared/Terminal.h"

namespace tool {
namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

bool IsStandard(const std::string& path) { return path.empty() || path == "-"; }

}  // namespace

std::string NameOf(const std::string& path) { return IsStandard(path) ? "standard input" : path; }

std::string ReadAll(const std::string& path) {
  std::error_code error;
  if (!IsStandard(path) && std::filesystem::is_directory(PathOf(path), error)) {
    throw Failure("cannot read " + path + ": it is a folder");
  }
  if (IsStandard(path)) {
    if (std::optional<std::string> typed = ReadTyped()) return std::move(*typed);
  }
  const File file(IsStandard(path) ? stdin : OpenFile(path, "rb"),
                  IsStandard(path) ? [](std::FILE*) { return 0; } : std::fclose);
  if (!file) throw Failure("cannot read " + path + ": " + std::strerror(errno));
  std::string bytes;
  std::array<char, 65536> chunk;
  while (const std::size_t count = std::fread(chunk.data(), 1, chunk.size(), file.get())) {
    bytes.append(chunk.data(), count);
  }
  if (std::ferror(file.get())) throw Failure("cannot read " + NameOf(path) + ": " + std::strerror(errno));
  return bytes;
}

void WriteAll(const std::string& path, std::string_view bytes) {
  if (IsStandard(path)) {
    PrintBytes(bytes);
    return;
  }
  File file(OpenFile(path, "wb"), std::fclose);
  const bool isWritten = file && std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() &&
                         std::fclose(file.release()) == 0;
  if (!isWritten) throw Failure("cannot write " + path + ": " + std::strerror(errno));
}

void ReplaceFile(const std::string& path, std::string_view bytes) {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::file_status status = fs::status(PathOf(path), error);
  if (IsStandard(path) || (fs::exists(status) && !fs::is_regular_file(status))) return WriteAll(path, bytes);
  const std::string target = fs::exists(status) ? TextOf(fs::canonical(PathOf(path), error)) : path;
  const std::string beside = MakeFile(target + ".");
  if (beside.empty()) throw Failure("cannot write beside " + path + ": " + std::strerror(errno));
  try {
    WriteAll(beside, bytes);
    if (!PutInPlace(beside, target)) throw Failure("cannot write " + path + ": " + std::strerror(errno));
  } catch (const Failure&) {
    fs::remove(PathOf(beside), error);
    throw;
  }
}

TemporaryFile::TemporaryFile(std::string_view bytes)
    : path_(MakeFile(TextOf(std::filesystem::temp_directory_path() / "zvuti."))) {
  if (path_.empty()) throw Failure("cannot make a temporary file: " + std::string(std::strerror(errno)));
  try {
    WriteAll(path_, bytes);
  } catch (const Failure&) {
    Remove();
    throw;
  }
}
TemporaryFile::~TemporaryFile() { Remove(); }
void TemporaryFile::Remove() const {
  std::error_code error;
  std::filesystem::remove(PathOf(path_), error);
}

LibraryFile::LibraryFile(const std::string& path, std::string_view bytes) {
  std::error_code error;
  std::optional<std::string> own = PathForLibrary(path);
  if (!own || std::filesystem::is_fifo(PathOf(path), error)) {
    copy_.emplace(bytes);
    own = PathForLibrary(copy_->Path());
    if (!own)
      throw Failure("the library cannot open a file in the folder of temporary files, " + copy_->Path());
  }
  path_ = *own;
}

std::string ToHex(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) {
    char digits[8];
    std::snprintf(digits, sizeof digits, "%02X ", static_cast<unsigned>(static_cast<unsigned char>(byte)));
    text += digits;
  }
  if (!text.empty()) text.pop_back();
  return text;
}

}  // namespace tool
