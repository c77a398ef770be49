#include <iconv.h>

#include <array>
#include <cerrno>

#include "shared/Encoding.h"

namespace tool {

bool FromForeign(const std::string& encoding, std::string_view bytes, std::string& utf8) {
  const iconv_t converter = iconv_open("UTF-8", encoding.c_str());
  if (converter == reinterpret_cast<iconv_t>(-1)) return false;
  char* from = const_cast<char*>(bytes.data());  // iconv takes char* but does not write to it
  std::size_t left = bytes.size();
  bool isSound = true;
  while (isSound && left > 0) {
    std::array<char, 4096> buffer;
    char* to = buffer.data();
    std::size_t room = buffer.size();
    isSound = iconv(converter, &from, &left, &to, &room) != static_cast<std::size_t>(-1) || errno == E2BIG;
    utf8.append(buffer.data(), to);
  }
  iconv_close(converter);
  return isSound;
}

}  // namespace tool
