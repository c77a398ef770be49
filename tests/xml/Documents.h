// Documents: what tests ask of XML documents, in one step each.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include <ZvUtiLib/CUtiXmlParser.h>

namespace test {

inline bool Loads(const std::string& text) {
  return CUtiXmlParser(text.c_str(), 0).GetRootElement() != nullptr;
}
/// The root of a document that has to load.
inline CUtiXmlElement RootOf(const std::string& text) {
  CUtiXmlParser parser(text.c_str(), 0);
  EXPECT_NE(parser.GetRootElement(), nullptr) << text.substr(0, 200);
  return parser.GetRootElement() ? *parser.GetRootElement() : CUtiXmlElement();
}

/// The text of the document in a file, "(none)" where it does not load.
inline CString TextOfFile(const std::string& path) {
  CUtiXmlParser parser(path.c_str());
  return parser.GetRootElement() ? parser.GetRootElement()->GetText() : CString("(none)");
}
inline bool LoadsFile(const std::string& path) { return TextOfFile(path) != "(none)"; }

/// A document that declares an encoding.
inline std::string Declared(const std::string& encoding, const std::string& text) {
  return "<?xml version='1.0' encoding='" + encoding + "'?><a>" + text + "</a>";
}

inline std::string Repeat(const std::string& text, int count) {
  std::string all;
  all.reserve(text.size() * static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

}  // namespace test
