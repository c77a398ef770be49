#include "tests/support/Wine.h"

namespace test {

bool IsWine() { return false; }

}  // namespace test
