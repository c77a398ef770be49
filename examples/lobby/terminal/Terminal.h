// What the host asks of the system itself.
#pragma once

#include <string>

/// UTF-8 of GBK bytes; bytes that make no character become question marks.
std::string TerminalText(const std::string& gbk);

/// What the system wants done on a thread before it reads XML.
void PrepareThreadForXml();
