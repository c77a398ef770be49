// Opening and reading files: the one way in for everything that reads.
#pragma once

#include <cstdint>
#include <cstdio>

namespace zvuti {

/// Opens the regular file at `path` for reading its bytes as they stand. Null when it is missing,
/// is a folder or anything else that is no regular file, or may not be read. `shared` lets others
/// keep it open in any way; systems without share modes pay no heed to it.
std::FILE* OpenForReading(const char* path, bool shared);

/// Length of an open file in bytes, -1 when the system does not tell it.
std::int64_t LengthOf(std::FILE* file);

/// The same as std::getc, without its lock. REQUIRES: no other thread uses the file.
inline int NextByte(std::FILE* file) {
#ifdef _WIN32
  return _getc_nolock(file);
#else
  return getc_unlocked(file);
#endif
}

}  // namespace zvuti
