#include "Report.h"

#include <cstdarg>
#include <cstdio>

#include "terminal/Terminal.h"

void Report::Section(const char* title) { std::printf("\n%d. %s\n", ++sections_, title); }

void Report::Line(const char* format, ...) {
  CString line;
  va_list arguments;
  va_start(arguments, format);
  line.FormatV(format, arguments);
  va_end(arguments);
  std::printf("   %s\n", TerminalText(line.GetString()).c_str());
}

std::string Padded(const std::string& text, std::size_t width) {
  return text.size() < width ? text + std::string(width - text.size(), ' ') : text;
}
