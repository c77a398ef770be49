// Crc16: a checksum of bytes.
#pragma once

#include <ZvUtiLib/Export.h>

/// The CRC-16 of `length` bytes with the polynomial 0x1021, most significant bit first, without
/// reflection and without a final XOR: CRC-16/XMODEM if `init` is 0. The result, 0 to 65535, can be passed
/// as the `init` for the bytes that follow. With a length of 0 the result is `init` unchanged.
ZVUTILIB_API unsigned Crc16(unsigned init, const void* data, unsigned length);
