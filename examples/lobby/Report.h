// The report of the lobby host: GBK text in, the terminal's UTF-8 out, and a count of what was done.
#pragma once

#include <string>

#include <ZvUtiLib/ZvUtiLib.h>

class Report {
 public:
  /// Begins a numbered section.
  void Section(const char* title);
  /// Prints an indented line, with the conversions of CString::Format. Texts are GBK.
  void Line(const char* format, ...);
  /// Adds to the number of things done.
  void Did(int things = 1) { done_ += things; }
  int Done() const { return done_; }

 private:
  int sections_ = 0;
  int done_ = 0;
};

/// `text` filled up with blanks to `width` columns; a GBK byte takes one column.
std::string Padded(const std::string& text, std::size_t width);
