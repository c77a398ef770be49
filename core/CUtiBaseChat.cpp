#include <ZvUtiLib/CUtiBase.h>
#include <ZvUtiLib/CUtiBlackList.h>

int CUtiBase::IsChatValid(const char* text) {
  static CUtiBlackList words;  // made at the first call, which the language guards
  return words.IsMatched(text) ? 0 : 1;
}
