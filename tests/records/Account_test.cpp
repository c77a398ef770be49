#include <ZvUtiLib/records/Account.h>

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <ZvUtiLib/data/Containers.h>

namespace {

using namespace std::string_literals;

std::string Bytes(const CByteBuffer& buffer) {
  return {reinterpret_cast<const char*>(buffer.Data()), static_cast<std::size_t>(buffer.Length())};
}

std::string Written(const AccountRecord& record) {
  CStreamReader stream;
  stream << record;
  return Bytes(stream);
}

TEST(AccountRecord, ADefaultRecordIsZeroButForOneByte) {
  AccountRecord record;
  record.LocalText = "does not travel";
  std::string bytes(133, '\0');
  bytes[14] = 1;
  EXPECT_EQ(Written(record), bytes);
}

// A host's state, with a mark behind what every state has on the wire.
class MarkedState : public CUtiDailyState {
 public:
  void Write(CStreamWriter& out) const override {
    CUtiDailyState::Write(out);
    out << std::uint16_t{0xEEEE};
  }
  void Read(CStreamReader& in) override {
    given = Bytes(in);
    std::uint16_t mark = 0;
    CUtiDailyState::Read(in);
    in >> mark;
  }
  static std::string given;
};
std::string MarkedState::given;
static_assert(sizeof(MarkedState) == sizeof(CUtiDailyState));

// Takes fields one by one: by widths in bytes, t for a text, l for a list of texts, m for a map.
void TakeLiterally(CStreamReader& in, const char* rows) {
  for (; *rows != '\0'; ++rows) {
    std::string text;
    std::vector<std::string> list;
    std::map<int, int> map;
    char number[8];
    switch (*rows) {
      case 't':
        in >> text;
        break;
      case 'l':
        in >> list;
        break;
      case 'm':
        in >> map;
        break;
      default:
        in.Read(number, *rows - '0');
    }
  }
}

TEST(AccountRecord, ADerivedStateTakesPartWhereverTheStreamEnds) {
  AccountRecord record;
  std::destroy_at(&record.State);
  new (&record.State) MarkedState;
  record.Text2 = "two";
  record.TextList = {"aa", "bcd"};
  record.State.GetTable().SetCounter(1, 2);
  record.State.SetFlag(3, FlagScopeDaily);
  record.Text4 = "four";
  const std::string bytes = Written(record);
  EXPECT_EQ(bytes.substr(bytes.size() - 40),
            "\1\0\0\0\1\0\0\0\2\0\0\0\1\0\0\0\3\0\0\0\1\0\0\0\0\0\0\0\xEE\xEE\4\0four\0\0\0\0"s);

  for (std::size_t length = 0; length <= bytes.size(); ++length) {
    CStreamReader literal(bytes.substr(0, length)), stream(bytes.substr(0, length));
    TakeLiterally(literal, "44ttt11144488881ttt11tttttttt111484l8");
    const std::string given = Bytes(literal);
    TakeLiterally(literal, "mmm2t4");
    stream >> record;
    ASSERT_EQ(MarkedState::given, given) << length;
    ASSERT_EQ(Bytes(stream), Bytes(literal)) << length;
  }
}

}  // namespace
