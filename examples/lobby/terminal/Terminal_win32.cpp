#include <stdexcept>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <objbase.h>

#include <ZvUtiLib/gbk/Conversion.h>

#include "terminal/Terminal.h"

std::string TerminalText(const std::string& gbk) {
  static const BOOL isSet = SetConsoleOutputCP(CP_UTF8);  // fails if the output is not a console
  static_cast<void>(isSet);
  return zvuti::GbkToUtf8(gbk).text;
}

void PrepareThreadForXml() {
  if (FAILED(CoInitialize(nullptr))) throw std::runtime_error("COM cannot be initialised");
}
