// IsWine: lets the few tests that fail under Wine but not on Windows skip themselves.
#pragma once

namespace test {

bool IsWine();

}  // namespace test
