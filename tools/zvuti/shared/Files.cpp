#include "shared/Files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <memory>

#include "shared/Terminal.h"

namespace tool {
namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

bool IsStandard(const std::string& path) { return path.empty() || path == "-"; }

}  // namespace

std::string NameOf(const std::string& path) { return IsStandard(path) ? "standard input" : path; }

std::string ReadAll(const std::string& path) {
  struct stat status {};
  if (!IsStandard(path) && stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode)) {
    throw Failure("cannot read " + path + ": it is a folder");
  }
  const File file(IsStandard(path) ? stdin : std::fopen(path.c_str(), "rb"),
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
    std::cout.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return;
  }
  File file(std::fopen(path.c_str(), "wb"), std::fclose);
  const bool isWritten = file && std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() &&
                         std::fclose(file.release()) == 0;
  if (!isWritten) throw Failure("cannot write " + path + ": " + std::strerror(errno));
}

void ReplaceFile(const std::string& path, std::string_view bytes) {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (IsStandard(path) || (fs::exists(status) && !fs::is_regular_file(status))) return WriteAll(path, bytes);
  const fs::path target = fs::exists(status) ? fs::canonical(path, error) : fs::path(path);
  std::string beside = target.string() + ".XXXXXX";
  const int descriptor = mkstemp(beside.data());
  if (descriptor < 0) throw Failure("cannot write beside " + path + ": " + std::strerror(errno));
  // A new file gets the mode that the shell's mask allows, as any other one.
  const mode_t mask = umask(0);
  umask(mask);
  const mode_t mode = fs::exists(status) ? static_cast<mode_t>(status.permissions()) : 0666 & ~mask;
  const bool isAllowed = fchmod(descriptor, mode) == 0;
  close(descriptor);
  try {
    WriteAll(beside, bytes);
    if (!isAllowed || std::rename(beside.c_str(), target.c_str()) != 0) {
      throw Failure("cannot write " + path + ": " + std::strerror(errno));
    }
  } catch (const Failure&) {
    std::remove(beside.c_str());
    throw;
  }
}

TemporaryFile::TemporaryFile(std::string_view bytes)
    : path_((std::filesystem::temp_directory_path() / "zvuti.XXXXXX").string()) {
  const int descriptor = mkstemp(path_.data());
  if (descriptor < 0) throw Failure("cannot make a temporary file: " + std::string(std::strerror(errno)));
  close(descriptor);
  try {
    WriteAll(path_, bytes);
  } catch (const Failure&) {
    std::remove(path_.c_str());
    throw;
  }
}
TemporaryFile::~TemporaryFile() { std::remove(path_.c_str()); }

bool IsPipe(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_fifo(path, error);
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
