#include <ZvUtiLib/platform/Windows.h>

#include "tests/support/Wine.h"

namespace test {

bool IsWine() { return GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr; }

}  // namespace test
