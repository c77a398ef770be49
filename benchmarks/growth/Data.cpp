// Texts, buffers, streams and dictionaries.
#include <memory>

#include <ZvUtiLib/data/CStream.h>
#include <ZvUtiLib/data/CStringDict.h>
#include <ZvUtiLib/data/CTextString.h>
#include <ZvUtiLib/data/Containers.h>
#include <ZvUtiLib/data/Crc16.h>
#include <ZvUtiLib/data/ParseInt.h>
#include <ZvUtiLib/platform/CString.h>
#include <ZvUtiLib/platform/CStringList.h>

#include "benchmarks/growth/Growth.h"
#include "tests/support/CollidingKeys.h"

namespace growth {
namespace {

Work Pairs(const std::string& text) {
  return {text.size(), [text] { CStringDict().Parse(text.c_str(), "=&"); }};
}

std::string Joined(const std::vector<std::string>& keys, bool isFalling) {
  std::string text;
  for (const std::string& key : keys) text.insert(isFalling ? 0 : text.size(), key + "=1&");
  return text;
}

std::string CountedKeys(std::size_t bytes) {
  std::string text;
  for (std::size_t i = 0; text.size() < bytes; ++i) text += std::to_string(i) + "=1&";
  return text;
}

Work SetOneKey(std::size_t count) {
  return {count * 4, [count] {
            CStringDict dict;
            for (std::size_t i = 0; i < count; ++i) dict.SetValue("key", "value");
          }};
}

Work Written(std::size_t count, void (*write)(CStreamReader& out)) {
  return {count, [count, write] {
            CStreamReader stream;
            for (std::size_t i = 0; i < count; ++i) write(stream);
          }};
}

template <class T>
Work Read(const std::string& bytes) {
  return {bytes.size(), [bytes] {
            CStreamReader stream(bytes);
            T value;
            stream >> value;
          }};
}

// A sequence of texts of three letters.
std::string Texts(std::size_t count) {
  CStreamReader stream;
  stream << std::vector<std::string>(count, "abc");
  return {reinterpret_cast<const char*>(stream.Data()), static_cast<std::size_t>(stream.Length())};
}

template <class Text>
Work OnText(std::size_t size, const std::string& text, void (*operate)(Text& text)) {
  return {size, [text, operate] {
            Text copy(text.c_str());
            operate(copy);
          }};
}

Work AppendOneByOne(std::size_t count) {
  return {count, [count] {
            CTextString text;
            for (std::size_t i = 0; i < count; ++i) text.append(1, 'x');
            CString string;
            for (std::size_t i = 0; i < count; ++i) string += 'x';
          }};
}

Work AddTexts(std::size_t count) {
  return {count * 4, [count] {
            CStringList list;
            for (std::size_t i = 0; i < count; ++i) list.AddTail("text");
            for (POSITION at = list.GetHeadPosition(); at;) list.GetNext(at);
          }};
}

template <class Text>
Work FormatOf(const std::string& format) {
  return {format.size(), [format] {
            Text text;
            text.Format(format.c_str(), 1, 2, 3);
          }};
}

}  // namespace

std::vector<Shape> DataShapes() {
  constexpr std::size_t kKeys = 2000, kText = 20'000;
  using namespace test;
  return {
      {"CStringDict::Parse/counted", kText, [](std::size_t n) { return Pairs(CountedKeys(n)); }},
      {"CStringDict::Parse/colliding", kKeys,
       [](std::size_t n) { return Pairs(Joined(CollidingKeys(n), false)); }},
      {"CStringDict::Parse/falling", kKeys,
       [](std::size_t n) { return Pairs(Joined(CollidingKeys(n), true)); }},
      {"CStringDict::Parse/separators", kText, [](std::size_t n) { return Pairs(Filled("=&", n)); }},
      {"CStringDict::Parse/blanks", kText, [](std::size_t n) { return Pairs(std::string(n, ' ') + "=1"); }},
      {"CStringDict::Parse/equal", kText, [](std::size_t n) { return Pairs(Filled("key=value&", n)); }},
      {"CStringDict::Parse/one-long", kText, [](std::size_t n) { return Pairs("k=" + std::string(n, 'v')); }},
      {"CStringDict::SetValue/one-key", kKeys, SetOneKey},
      {"CByteBuffer::Append/long", kText,
       [](std::size_t n) {
         return OnText<CString>(n, std::string(n, 'x'), [](CString& text) {
           CByteBuffer().Append(text.GetString(), static_cast<unsigned>(text.GetLength()));
         });
       }},
      {"CByteBuffer::AppendText/texts", kText,
       [](std::size_t n) { return Written(n, [](CStreamReader& out) { out.AppendText("x"); }); }},
      {"CByteBuffer::Reserve/rounded", kText,
       [](std::size_t n) { return Written(n, [](CStreamReader& out) { out.Reserve(1, GrowRounded); }); }},
      {"CStreamReader::operator>>/text", kText,
       [](std::size_t n) { return Read<std::string>(std::string(2, '\xFF') + std::string(n, 'x')); }},
      {"CStreamReader::operator>>/texts", kKeys,
       [](std::size_t n) { return Read<std::vector<std::string>>(Texts(n)); }},
      {"CStreamReader::operator>>/texts-in-sequences", kKeys,
       [](std::size_t n) { return Read<std::vector<std::vector<std::string>>>(std::string(n, '\xFF')); },
       35'000, 35'000},  // two bytes ask for 65,535 of them
      {"CTextString::append/bytes", kText, AppendOneByOne},
      {"CTextString::ReplaceAll/growing", kText,
       [](std::size_t n) {
         return OnText<CTextString>(n, std::string(n, 'x'), [](auto& text) { text.ReplaceAll("x", "yyyy"); });
       }},
      {"CTextString::ReplaceAll/shrinking", kText,
       [](std::size_t n) {
         return OnText<CTextString>(n, std::string(n, 'x'), [](auto& text) { text.ReplaceAll("xx", "y"); });
       }},
      {"CTextString::replace/middle", kText,
       [](std::size_t n) {
         return OnText<CTextString>(n, std::string(n, 'x'), [](auto& text) {
           text.replace(text.size() / 2, 1, text.data(), text.size());
           text.erase(1, 2);
         });
       }},
      {"CTextString::Format/percents", kText,
       [](std::size_t n) { return FormatOf<CTextString>(Filled("%%", n)); }},
      {"CTextString::Format/heads", kText,
       [](std::size_t n) { return FormatOf<CTextString>(Filled("%-+ #0", n)); }},
      {"CString::Format/text", kText, [](std::size_t n) { return FormatOf<CString>(Filled("ab\x81", n)); }},
      {"CString::Trim/blanks", kText,
       [](std::size_t n) {
         return OnText<CString>(n, std::string(n, ' '), [](CString& text) { text.Trim(); });
       }},
      {"CString::Find/half-characters", kText,
       [](std::size_t n) {
         return OnText<CString>(n, std::string(n, '\x81'), [](CString& text) { text.Find("\x81z"); });
       }},
      {"CString::MakeUpper/letters", kText,
       [](std::size_t n) {
         return OnText<CString>(n, std::string(n, 'a'), [](CString& text) { text.MakeUpper().MakeLower(); });
       }},
      {"CString::Mid/parts", kText,
       [](std::size_t n) {
         return OnText<CString>(n, std::string(n, '\x81'), [](CString& text) {
           text = text.Left(text.GetLength() - 1) + text.Right(9) + text.Mid(3);
           text.Replace('\x81', 'x');
         });
       }},
      {"CString::CompareNoCase/equal", kText,
       [](std::size_t n) {
         return OnText<CString>(n, std::string(n, 'a'), [](CString& text) {
           if (text.CompareNoCase(CString(text)) != 0) text.Empty();
         });
       }},
      {"CStringList::AddTail/texts", kText, AddTexts},
      {"ParseInt/digits", kText,
       [](std::size_t n) {
         return OnText<CString>(n, std::string(n, '1'), [](CString& text) {
           if (ParseInt(text.GetString(), 0xFFFFFFFF) == 0) text.Empty();
         });
       }},
      {"Crc16/bytes", kText,
       [](std::size_t n) {
         return OnText<CString>(n, std::string(n, 'x'), [](CString& text) {
           if (Crc16(0, text.GetString(), static_cast<unsigned>(text.GetLength())) == 1) text.Empty();
         });
       }},
  };
}

}  // namespace growth
