// IsWine: for the few tests that Wine fails where the system that it stands for would not.
#pragma once

namespace test {

bool IsWine();

}  // namespace test
