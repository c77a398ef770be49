// What the lobby program needs from the host system.
#pragma once

#include <string>

/// Converts GBK to UTF-8. Bytes that are not part of a character become question marks.
std::string TerminalText(const std::string& gbk);

/// Call this on a thread before it reads XML. Initialises COM on Windows.
void PrepareThreadForXml();
