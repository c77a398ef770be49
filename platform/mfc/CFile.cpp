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
  if (length < 0) throw CFileException("the file's length cannot be told.");
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
  bool isAnyRead = false;
  int byte;
  while ((byte = zvuti::NextByte(file)) != EOF && byte != '\n') {
    if (isText_ && byte == kEndOfText) {
      std::ungetc(byte, file);  // so that every later call ends here, too
      break;
    }
    isAnyRead = true;
    text += static_cast<char>(byte);
  }
  if (byte == EOF && std::ferror(file)) throw CFileException("the file cannot be read.");
  if (byte == '\n' && !text.empty() && text.back() == '\r') text.pop_back();
  line = text.c_str();
  return isAnyRead || byte == '\n' ? 1 : 0;
}
