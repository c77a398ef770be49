// RefuseEach: one operation with each of its allocations refused in turn.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <string>

#include "tests/support/HeapFaults.h"

namespace test {

/// An object under test, made anew for every try: what is done to it, and what is to be seen of it.
struct Subject {
  std::function<void()> operate;
  std::function<std::string()> state;
};

/// What holds after a refused block.
enum class AfterRefusal {
  kAllOrNothing,  ///< std::bad_alloc and the state as before, or success
  kFailure,       ///< std::bad_alloc or a failure, and the state as before, or success
  kSilent,        ///< no exception; the state as before or as after success
  kUsable,        ///< std::bad_alloc or not; the state can be asked and let go
  kUsableSilent,  ///< the same without an exception
};

/// Refuses the 1st, 2nd ... allocation, alone and with all later ones, until none is refused any more.
/// Nothing may leak, and where nothing was refused the operation has to do all that it does on a large heap.
/// Returns how often the heap refused.
inline int RefuseEach(const std::string& what, AfterRefusal promise, const std::function<Subject()>& make) {
  SCOPED_TRACE(what);
  std::string before, after;
  {
    const Subject subject = make();
    before = subject.state();
    subject.operate();  // also lets the library set up what it keeps for good
    after = subject.state();
  }
  int refusals = 0;
  const auto sweep = [&](bool andAllAfter) {
    bool isRefused = true;
    for (int nth = 1; isRefused && !testing::Test::HasFatalFailure(); ++nth) {
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
        if (!isRefused) {
          ASSERT_TRUE(!hasThrown && state == after) << "with all the heap it needs: " << state;
        } else if (promise == AfterRefusal::kAllOrNothing) {
          ASSERT_EQ(state, hasThrown ? before : after) << "allocation " << nth;
        } else if (promise == AfterRefusal::kFailure) {
          ASSERT_TRUE(state == before || (!hasThrown && state == after))
              << "allocation " << nth << ": " << state;
        } else if (promise == AfterRefusal::kSilent) {
          ASSERT_TRUE(!hasThrown && (state == before || state == after))
              << "allocation " << nth << ": " << state;
        } else if (promise == AfterRefusal::kUsableSilent) {
          ASSERT_FALSE(hasThrown) << "allocation " << nth;
        }
        refusals += isRefused ? 1 : 0;
      }
      ASSERT_EQ(LiveBlocks(), live) << "leaked after allocation " << nth;
    }
  };
  sweep(false);
  sweep(true);
  return refusals;
}

/// The same for an object of type T: `prepare` brings it to where `operate` begins, `look` shows it.
template <class T>
void RefuseEachOf(const std::string& what, AfterRefusal promise, std::function<void(T&)> prepare,
                  std::function<void(T&)> operate, std::function<std::string(T&)> look) {
  const int refusals = RefuseEach(what, promise, [=] {
    auto object = std::make_shared<T>();
    if (prepare) prepare(*object);
    return Subject{[=] { operate(*object); }, [=] { return look(*object); }};
  });
  EXPECT_GT(refusals, 0) << what << " asks the heap for nothing";
}

}  // namespace test
