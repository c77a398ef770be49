// Reads the text files of the tables in this folder.
#pragma once

#include <functional>
#include <istream>

namespace zvuti {

/// Opens the text file at `path` and passes it to `read`, which reads formatted numbers in plain decimal
/// form, independent of the host's locale. The byte 1A ends the text, as it does in all text files. The file
/// is opened for reading only, so it may be read-only. Returns false if the file does not exist, is a folder
/// or may not be read, or if reading fails midway; `read` then has only part of the file. Throws what `read`
/// throws, and std::bad_alloc if an allocation fails while the stream reads.
bool ReadTableFile(const char* path, const std::function<void(std::istream&)>& read);

}  // namespace zvuti
