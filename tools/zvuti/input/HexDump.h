// Dumps with an offset at the start of each line, and perhaps characters at its end.
#pragma once

#include <string>
#include <string_view>

namespace tool {

/// Returns true if the first line of a text looks like one of a dump: "00000010: 0500 0c00  ...." (xxd),
/// "00000010  05 00 0c 00  |....|" (hexdump -C), "0x0010:  0500 0c00" (tcpdump), "0010  05 00 0c" (a packet
/// as text), "000010 05 00 0c" (od -A x -t x1). Where no colon and only one space follow, the offset must be
/// 0.
bool IsHexDump(std::string_view text);

/// Returns the bytes of a dump. The offsets say how many bytes a line has, so that characters at its end are
/// never taken for digits; they start anywhere. A line "*" stands for lines like the one before, at most 64
/// MB of them. Throws a Failure that names `what`, the source of the text, and the place.
std::string FromHexDump(std::string_view text, const std::string& what);

}  // namespace tool
