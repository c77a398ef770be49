// RefuseEach: runs an operation many times and makes each of its allocations fail in turn.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <string>

#include "tests/support/HeapFaults.h"

namespace test {

/// An object under test, created for each run: the operation on it, and its visible state as text.
struct Subject {
  std::function<void()> operate;
  std::function<std::string()> state;
};

/// What an operation promises if an allocation fails.
enum class AfterRefusal {
  kAllOrNothing,  ///< std::bad_alloc and the state from before, or success
  kFailure,       ///< std::bad_alloc or a failure, and the state from before; or success
  kSilent,        ///< no exception; the state is that from before or that after success
  kUsable,        ///< maybe std::bad_alloc; the object can still be read and destroyed
  kUsableSilent,  ///< the same without an exception
};

/// Makes the 1st, 2nd, 3rd ... allocation fail, alone and together with all later ones, until the operation
/// ends without reaching the failing one. Expects that `promise` holds, that nothing leaks, and that the last
/// run has the result of a run without faults. Returns the number of runs with a failed allocation.
inline int RefuseEach(const std::string& what, AfterRefusal promise, const std::function<Subject()>& make) {
  SCOPED_TRACE(what);
  std::string before, after;
  {
    const Subject subject = make();
    before = subject.state();
    subject.operate();  // also makes the allocations that the library keeps
    after = subject.state();
  }
  int refusals = 0;
  for (const bool andAllAfter : {false, true}) {
    bool isRefused = true;
    for (int nth = 1; isRefused && !testing::Test::HasFailure(); ++nth) {
      SCOPED_TRACE("allocation " + std::to_string(nth));
      const std::int64_t live = LiveBlocks();
      {
        const Subject subject = make();
        bool hasThrown = false;
        {
          const HeapFaults faults(nth, andAllAfter);
          try {
            subject.operate();
          } catch (const std::bad_alloc&) {
            hasThrown = true;
          }
          isRefused = faults.Refused();
        }
        const std::string state = subject.state();
        const bool isAsBefore = state == before, isAsAfter = state == after && !hasThrown;
        const bool isKept = !isRefused                               ? isAsAfter
                            : promise == AfterRefusal::kAllOrNothing ? isAsAfter || (isAsBefore && hasThrown)
                            : promise == AfterRefusal::kFailure      ? isAsAfter || isAsBefore
                            : promise == AfterRefusal::kSilent       ? isAsAfter || (isAsBefore && !hasThrown)
                            : promise == AfterRefusal::kUsableSilent ? !hasThrown
                                                                     : true;
        EXPECT_TRUE(isKept) << (isRefused ? "refused, " : "") << (hasThrown ? "thrown, " : "") << state;
        refusals += isRefused ? 1 : 0;
      }
      EXPECT_EQ(LiveBlocks(), live) << "leaked";
    }
  }
  return refusals;
}

/// The same for an object of type T: `prepare`, if any, sets it up, `operate` is the operation under test,
/// `look` returns the visible state.
template <class T>
void RefuseEachOf(const std::string& what, AfterRefusal promise, std::function<void(T&)> prepare,
                  std::function<void(T&)> operate, std::function<std::string(T&)> look) {
  const int refusals = RefuseEach(what, promise, [=] {
    auto object = std::make_shared<T>();
    if (prepare) prepare(*object);
    return Subject{[=] { operate(*object); }, [=] { return look(*object); }};
  });
  EXPECT_GT(refusals, 0) << what << " makes no allocation";
}

}  // namespace test
