// How two values compare, by all operators.
#pragma once

namespace test {

/// -1, 0 or 1 for an `a` below, equal to or above `b`; 2 if the six operators contradict each other.
template <class A, class B>
int OrderOf(const A& a, const B& b) {
  const bool isBelow = a < b;
  const bool isEqual = a == b;
  const bool isAbove = a > b;
  const bool agree = isBelow + isEqual + isAbove == 1 && (a != b) == !isEqual && (a <= b) == !isAbove &&
                     (a >= b) == !isBelow;
  return agree ? isAbove - isBelow : 2;
}

}  // namespace test
