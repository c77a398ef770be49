#include "gameconfig/TableFile.h"

#include <algorithm>
#include <fstream>
#include <locale>

#include "platform/Path.h"

namespace zvuti {
namespace {

// A file's text up to the byte 1A, which ends text files on Windows.
class TextBuffer : public std::filebuf {
 protected:
  int_type underflow() override {
    if (isEnded_ || traits_type::eq_int_type(std::filebuf::underflow(), traits_type::eof())) {
      return traits_type::eof();
    }
    char* const end = std::find(gptr(), egptr(), '\x1A');
    isEnded_ = end != egptr();
    setg(eback(), gptr(), end);
    return gptr() == end ? traits_type::eof() : traits_type::to_int_type(*gptr());
  }

 private:
  bool isEnded_ = false;
};

}  // namespace

bool ReadTableFile(const char* path, const std::function<void(std::istream&)>& read) {
  if (!IsRegularFile(path)) return false;  // opening a folder succeeds; only reading it fails
  TextBuffer buffer;
  if (!buffer.open(WithNativeSeparators(path), std::ios_base::in)) return false;
  std::istream file(&buffer);
  file.imbue(std::locale::classic());
  // Without this the stream would catch exceptions, and the file would seem to end there.
  file.exceptions(std::ios_base::badbit);
  try {
    read(file);
  } catch (const std::ios_base::failure&) {
    return false;
  }
  return true;
}

}  // namespace zvuti
