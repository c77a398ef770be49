#include <ZvUtiLib/gbk/Conversion.h>

#include "terminal/Terminal.h"

std::string TerminalText(const std::string& gbk) { return zvuti::GbkToUtf8(gbk).text; }

void PrepareThreadForXml() {}
