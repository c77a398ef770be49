// The lobby program's report: converts GBK text to UTF-8, prints it, and counts the things done.
#pragma once

#include <string>

#include <ZvUtiLib/ZvUtiLib.h>

class Report {
 public:
  /// Prints the heading of the next numbered section.
  void Section(const char* title);
  /// Formats a line like CString::Format and prints it indented. Texts are GBK.
  void Line(const char* format, ...);
  /// Adds `things` to the number of things done.
  void Did(int things = 1) { done_ += things; }
  int Done() const { return done_; }

 private:
  int sections_ = 0;
  int done_ = 0;
};

/// `text`, padded with spaces to `width` columns. A GBK byte takes one column.
std::string Padded(const std::string& text, std::size_t width);
