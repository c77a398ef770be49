// How the tables of this folder read their files.
#pragma once

#include <functional>
#include <istream>

namespace zvuti {

/// Opens the text file at `path` and hands it to `read`, for formatted reading of numbers in plain decimal
/// form, whatever the host's locale is. The tables never write, so a file that may only be read will do.
/// False when there is no such file, it is a folder or may not be read, and when reading it fails midway:
/// what `read` has got by then is a part of the file. Throws what `read` throws, and std::bad_alloc when
/// the heap refuses a block while the stream reads.
bool ReadTableFile(const char* path, const std::function<void(std::istream&)>& read);

}  // namespace zvuti
