// Initialises COM on the thread that runs the tests, as a host program does on each thread that reads XML.
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
