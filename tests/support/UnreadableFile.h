// OpenUnreadable: an open file that cannot be read.
#pragma once

#include <cstdio>

namespace test {

/// Creates a file at `path` and opens it so that reading fails with an error. The caller closes it.
std::FILE* OpenUnreadable(const char* path);

}  // namespace test
