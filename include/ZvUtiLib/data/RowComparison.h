// How the condition of a row of a record compares a field with a constant.
#pragma once

#include <cstdint>

namespace zvuti {

/// The field on the left, the constant on the right.
enum class RowComparison : std::uint8_t { kLess, kLessOrEqual, kEqual, kNotEqual, kGreaterOrEqual, kGreater };

}  // namespace zvuti
