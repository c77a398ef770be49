// File operations that differ between the host systems. Paths and their text are in UTF-8 on Windows, and in
// the file system's own encoding elsewhere.
#pragma once

#include <cstdio>
#include <filesystem>
#include <optional>
#include <string>

namespace tool {

std::filesystem::path PathOf(const std::string& text);
std::string TextOf(const std::filesystem::path& path);

/// As fopen. Returns null and sets errno on failure.
std::FILE* OpenFile(const std::string& path, const char* mode);

/// Makes an empty file that only this user may read. Its name is `start` and six more characters. Returns its
/// path, or
/// "" with errno set.
std::string MakeFile(const std::string& start);

/// Renames `file` to `target`, which keeps its rights if it exists, and gets those of any new file if not.
/// Returns false, with errno set, if that fails or `target` may not be written.
bool PutInPlace(const std::string& file, const std::string& target);

/// A path under which the library finds a file, or nothing. On Windows the library opens only paths in code
/// page 936, so the others need a short name of the file system.
std::optional<std::string> PathForLibrary(const std::string& path);

}  // namespace tool
