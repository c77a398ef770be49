#include "tests/support/UnreadableFile.h"

namespace test {

std::FILE* OpenUnreadable(const char* path) { return std::fopen(path, "w"); }

}  // namespace test
