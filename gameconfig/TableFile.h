// How the tables of this folder open their files.
#pragma once

#include <fstream>

namespace zvuti {

/// Opens the text file at `path` for formatted reading of numbers in plain decimal form, whatever the
/// host's locale is. The tables never write, so a file that may only be read will do. The stream is
/// in its failed state when there is no such file, it is a folder, or it may not be read.
std::ifstream OpenTableFile(const char* path);

}  // namespace zvuti
