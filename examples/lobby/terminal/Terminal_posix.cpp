#include <iconv.h>

#include <stdexcept>

#include "terminal/Terminal.h"

std::string TerminalText(const std::string& gbk) {
  const iconv_t converter = iconv_open("UTF-8", "GB18030");
  if (converter == reinterpret_cast<iconv_t>(-1))
    throw std::runtime_error("this system cannot convert GBK text");
  std::string in = gbk;
  std::string out(in.size() * 4 + 16, '\0');
  char* from = in.data();
  char* to = out.data();
  std::size_t left = in.size();
  std::size_t room = out.size();
  while (left > 0 && iconv(converter, &from, &left, &to, &room) == static_cast<std::size_t>(-1)) {
    *to++ = '?';
    ++from;
    --left;
    --room;
  }
  iconv_close(converter);
  out.resize(out.size() - room);
  return out;
}

void PrepareThreadForXml() {}
