// OpenUnreadable: a file that is open, and fails when it is read.
#pragma once

#include <cstdio>

namespace test {

/// Makes the file at `path`. The caller closes it.
std::FILE* OpenUnreadable(const char* path);

}  // namespace test
