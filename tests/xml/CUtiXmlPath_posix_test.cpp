// Paths with percent signs, which other systems read in other ways.
#include <ZvUtiLib/CUtiXmlParser.h>

#include <gtest/gtest.h>

#include "tests/support/TempFolder.h"

namespace {

TEST(CUtiXmlPath, ANameThatIsThereWinsOverWhatItWouldMean) {
  const test::TempFolder folder;
  const std::string literal = folder.Write("100%25.xml", "<literal/>");
  const std::string plain = folder.Write("plain.xml", "<plain/>");
  CUtiXmlParser parser(literal.c_str());
  ASSERT_NE(parser.GetRootElement(), nullptr);
  EXPECT_EQ(parser.GetRootElement()->GetNodeName(), "literal");
  EXPECT_EQ(CUtiXmlParser((plain + "%00").c_str()).GetRootElement(), nullptr);
}

}  // namespace
