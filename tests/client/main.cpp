// Calls the library as a host program does, and exits with 1 at the first wrong result.
#include <ZvUtiLib/ZvUtiLib.h>

#include <cstdio>
#include <exception>
#include <new>
#include <stdexcept>

namespace {

bool Expect(bool right, const char* what) {
  if (!right) std::fprintf(stderr, "client: wrong result of %s\n", what);
  return right;
}

// True if the library throws an Exception here, which has to cross its border.
template <class Exception, class Action>
bool Throws(Action action) {
  try {
    action();
  } catch (const Exception&) {
    return true;
  }
  return false;
}

bool ThrowsAcrossTheBorder() {
  // Only where memory ends before 4 GB.
  const bool isBounded =
      sizeof(void*) > 4 || Throws<std::bad_alloc>([] { CTextString().append(0xF0000000, 'x'); });
  CStreamReader stream;
  return isBounded && Throws<std::out_of_range>([] { CTextString("text").erase(5); }) &&
         Throws<std::exception>([&] { stream << static_cast<BinaryKind>(2); });
}

}  // namespace

int main() {
  CString separated;
  CUtiNumber::InsertSeparator(1234567LL, separated);
  CUtiXmlParser document("<board><notice id='7'>hi</notice></board>", 0);
  const CUtiXmlElement* board = document.GetRootElement();
  CUtiRank rank;
  CUtiRank copy(rank);
  const bool isRight = Expect(separated == "123,4567", "InsertSeparator") &&
                       Expect(CKxTime::String2DWord("2013-08-29 12:34:56") == 0x363AC8B8ul, "String2DWord") &&
                       Expect(GetGameCodeName(1) == "Maple", "GetGameCodeName") &&
                       Expect(!copy.LoadRankConfig(1) && copy.GetRank(100).empty(), "CUtiRank") &&
                       Expect(board && board->GetChildAttributeInt("notice", "id") == 7, "CUtiXmlParser") &&
                       Expect(CUtiBase::IsChatValid("hello") == 1, "IsChatValid") &&
                       Expect(ThrowsAcrossTheBorder(), "the border for exceptions");
  if (isRight) std::puts("client: all results are right");
  return isRight ? 0 : 1;
}
