// The constants of the stand-ins have the values that Windows gives them; there this looks at the system's
// headers.
#include <gtest/gtest.h>

#include <ZvUtiLib/platform/Clipboard.h>
#include <ZvUtiLib/platform/Handles.h>
#include <ZvUtiLib/platform/XmlDom.h>

#include <cstdint>

namespace {

TEST(Platform, ConstantsAreThoseOfWindows) {
  const struct {
    std::int64_t constant, value;
  } constants[] = {{INFINITE, 0xFFFFFFFF},
                   {WAIT_OBJECT_0, 0},
                   {WAIT_TIMEOUT, 258},
                   {WAIT_FAILED, 0xFFFFFFFF},
                   {STILL_ACTIVE, 259},
                   {CF_TEXT, 1},
                   {S_FALSE, 1},
                   {E_NOINTERFACE, std::int32_t(0x80004002)},
                   {E_POINTER, std::int32_t(0x80004003)},
                   {E_FAIL, std::int32_t(0x80004005)},
                   {E_OUTOFMEMORY, std::int32_t(0x8007000E)},
                   {E_INVALIDARG, std::int32_t(0x80070057)},
                   {REGDB_E_CLASSNOTREG, std::int32_t(0x80040154)},
                   {VARIANT_TRUE, -1},
                   {VT_EMPTY, 0},
                   {VT_NULL, 1},
                   {VT_I4, 3},
                   {VT_BSTR, 8}};
  for (const auto& c : constants) EXPECT_EQ(c.constant, c.value);
}

}  // namespace
