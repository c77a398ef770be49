// Paths as callers give them, and as the system takes them.
//
// Callers join paths with backslashes and slashes alike. This is the one place where the two meet:
// everything that opens, tests or makes a file or folder goes through it.
#pragma once

#include <string>
#include <string_view>

namespace zvuti {

/// The path in the system's own separators. On Linux each backslash that is a character of its own
/// becomes a slash; a backslash that is the trail byte of a GBK character stays. Null gives "".
std::string NativePath(const char* path);

/// The part of `path` up to and with its last separator of either kind, "" where it has none.
std::string_view FolderOf(std::string_view path);

/// True when `path` names a regular file (not a folder) that exists.
bool IsRegularFile(const char* path);

/// True when `path` names a folder that exists.
bool IsFolder(const char* path);

/// Makes the folder, one level; true when it exists afterwards.
bool MakeFolder(const char* path);

}  // namespace zvuti
