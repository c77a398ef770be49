// How the condition of a row of a record compares a field with a constant.
#pragma once

namespace zvuti {

/// The field on the left, the constant on the right.
enum class RowComparison { kLess, kLessOrEqual, kEqual, kNotEqual, kGreaterOrEqual, kGreater };

}  // namespace zvuti
