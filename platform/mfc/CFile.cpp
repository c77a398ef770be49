#include "platform/mfc/CFile.h"

#include <string>

#include "platform/OpenFile.h"

namespace {

constexpr int kEndOfText = 0x1A;

std::FILE* Opened(std::FILE* file) {
  if (!file) throw CFileException("no file is open.");
  return file;
}

}  // namespace

CFileException::CFileException(const char* what) : std::runtime_error(what) {}
CFileException::~CFileException() = default;

CFile::~CFile() { CFile::Close(); }

int CFile::Open(const char* path, unsigned flags) {
  Close();
  file_ = zvuti::OpenForReading(path, (flags & shareDenyNone) != 0);
  isText_ = (flags & typeText) != 0;
  return file_ ? 1 : 0;
}

std::uint64_t CFile::GetLength() const {
  const std::int64_t length = zvuti::LengthOf(Opened(file_));
  if (length < 0) throw CFileException("the file's length cannot be determined.");
  return static_cast<std::uint64_t>(length);
}

unsigned CFile::Read(void* out, unsigned count) {
  const std::size_t read = std::fread(out, 1, count, Opened(file_));
  if (read < count && std::ferror(file_)) throw CFileException("the file cannot be read.");
  return static_cast<unsigned>(read);
}

void CFile::Close() {
  if (file_) std::fclose(file_);
  file_ = nullptr;
}

int CStdioFile::ReadString(CString& line) {
  std::FILE* file = Opened(file_);
  std::string text;
  const int end = zvuti::ReadUntil(file, isText_ ? kEndOfText : '\n', text);
  if (end == kEndOfText) std::ungetc(end, file);  // so that later calls stop here, too
  if (end == EOF && std::ferror(file)) throw CFileException("the file cannot be read.");
  const bool isRead = end == '\n' || !text.empty();
  if (end == '\n' && !text.empty() && text.back() == '\r') text.pop_back();
  line = text.c_str();
  return isRead ? 1 : 0;
}
