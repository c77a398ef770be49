// Opening and reading files. All code that reads a file opens it here, except gameconfig/TableFile.cpp, which
// reads numbers with a standard stream.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

namespace zvuti {

/// Opens the regular file at `path` for reading in binary mode. Returns null if it is missing, is not a
/// regular file, or may not be read. With `shared`, others may have the file open for reading and writing at
/// the same time; systems without share modes ignore it.
std::FILE* OpenForReading(const char* path, bool shared);

/// Length of an open file in bytes, or -1 if the system cannot determine it.
std::int64_t LengthOf(std::FILE* file);

/// Appends bytes to `text` up to the next line feed, `stop` or the end of the file. Returns the byte that it
/// stopped at, which is consumed but not appended, or EOF. REQUIRES: no other thread uses the file.
int ReadUntil(std::FILE* file, int stop, std::string& text);

}  // namespace zvuti
