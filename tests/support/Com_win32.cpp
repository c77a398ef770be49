// A host initialises COM on the thread that reads XML; here it is the thread of all tests.
#include <gtest/gtest.h>

#include <ZvUtiLib/platform/Windows.h>

#include <objbase.h>

namespace {

class Com : public testing::Environment {
 public:
  void SetUp() override { ASSERT_EQ(CoInitialize(nullptr), S_OK); }
  void TearDown() override { CoUninitialize(); }
};

[[maybe_unused]] const testing::Environment* const com = testing::AddGlobalTestEnvironment(new Com);

}  // namespace
