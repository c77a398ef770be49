// Crc16: checksum of bytes.
#pragma once

#include <ZvUtiLib/Export.h>

/// The CRC-16 of `length` bytes with the polynomial 0x1021, most significant bit first, without
/// reflection and without a final XOR: CRC-16/XMODEM for an `init` of 0. A result, 0 to 65535, can be
/// the `init` of the bytes that follow. With a length of 0 the result is `init` as it came.
ZVUTILIB_API unsigned Crc16(unsigned init, const void* data, unsigned length);
