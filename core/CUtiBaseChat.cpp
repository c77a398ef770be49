#include <ZvUtiLib/CUtiBase.h>
#include <ZvUtiLib/CUtiBlackList.h>

int CUtiBase::IsChatValid(const char* text) {
  static CUtiBlackList words;  // constructed once, at the first call; thread-safe by the language
  return words.IsMatched(text) ? 0 : 1;
}
