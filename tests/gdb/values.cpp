// Values for the test of the pretty-printers. gdb stops in Look and prints them.
#include <ZvUtiLib/data/CStream.h>
#include <ZvUtiLib/data/CTextString.h>
#include <ZvUtiLib/platform/CString.h>
#include <ZvUtiLib/platform/CStringList.h>
#include <ZvUtiLib/platform/tag_KxTimeDWord.h>

#include <cstdint>
#include <cstdio>

namespace {

void Look(const void* values) { std::printf("%p\n", values); }

}  // namespace

int main() {
  struct {
    CString empty;
    CString maple{"\xB7\xE3\xD2\xB6"};  // 枫叶
    CString odd{"a\\\"\n\xFF"};
    CTextString shortText{"hi"};
    CTextString longText{"\xB7\xE3\xD2\xB6 0123456789 0123456789"};  // 枫叶
    CByteBuffer unused;
    CStreamReader stream;
    tag_KxTimeDWord time;
    CStringList list;
  } v;
  v.stream << std::uint8_t{1} << std::uint16_t{0xABCD};
  v.time.word = 0x363AC8B8;
  v.list.AddTail("one");
  v.list.AddTail("\xB7\xE3");  // 枫
  Look(&v);
  return 0;
}
