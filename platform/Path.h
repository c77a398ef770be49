// Gives paths the host system's separators.
//
// Callers separate folders with both backslashes and slashes. All code that opens, tests or creates a file or
// folder passes its path through WithNativeSeparators. On Linux the encoding of a path is not converted.
#pragma once

#include <string>
#include <string_view>

namespace zvuti {

/// The path with the host system's separators. On Linux backslashes become slashes, except those that are
/// trail bytes of GBK characters, and all other bytes stay as they are. Returns "" for null.
std::string WithNativeSeparators(const char* path);

/// The part of `path` up to and including its last separator of either kind, or "" if it has none.
std::string_view FolderOf(std::string_view path);

/// True if `path` names an existing regular file.
bool IsRegularFile(const char* path);

/// True if `path` names an existing folder.
bool IsFolder(const char* path);

/// Creates the folder `path`, whose parent must exist. True if the folder exists afterwards.
bool MakeFolder(const char* path);

}  // namespace zvuti
