#include <ZvUtiLib/records/Account.h>
#include <ZvUtiLib/records/Items.h>

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

#include "records/Units.h"
#include "tests/support/HeapFaults.h"
#include "tests/support/LiteralRecords.h"
#include "tests/support/WireBytes.h"

namespace {

using namespace std::string_literals;
using test::Bytes;
using test::Written;

// A state of the host's own: it writes a mark after what every state writes, and notes the bytes that it is
// given to read.
class MarkedState : public CUtiDailyState {
 public:
  void Write(CStreamWriter& out) const override {
    CUtiDailyState::Write(out);
    out << std::uint16_t{0xEEEE};
  }
  void Read(CStreamReader& in) override {
    given = Bytes(in);
    CUtiDailyState::Read(in);
    std::uint16_t mark = 0xEEEE;
    if (isMarkSent) in >> mark;
    if (mark != 0xEEEE) throw std::runtime_error("no mark");
  }
  static inline std::string given;
  static inline bool isMarkSent = true;
};
static_assert(sizeof(MarkedState) == sizeof(CUtiDailyState));

void Mark(AccountRecord& record) {
  std::destroy_at(&record.State);
  new (&record.State) MarkedState;
}

AccountRecord SampleAccount() {
  AccountRecord record;
  record.TextList = {"aa", "bcd"};
  record.Text4 = "four";
  return record;
}

const std::string kNoCounters(12, '\0'), kAfterState = "\4\0four\0\0\0\0"s;

TEST(AccountRecord, FieldsAndBitsThatDoNotTravelAreComparedToo) {
  AccountRecord text = SampleAccount(), code = text;
  text.LocalText = "mine";
  code.Code1 = 256;
  EXPECT_EQ(Written(text), Written(code));
  EXPECT_TRUE(text != code && text != SampleAccount() && code != SampleAccount());
  EXPECT_TRUE(
      (ItemRecord{{7, 1}, 0, 0, 0, 0, 1'000'000'000} != ItemRecord{{7, 2}, 0, 0, 0, 0, 1'000'000'000}));
}

TEST(AccountRecord, ADerivedStateTakesPart) {
  AccountRecord record = SampleAccount();
  record.Text2.assign(2000, 'x');
  Mark(record);
  record.State.GetTable().SetCounter(1, 2);
  record.State.SetFlag(3, FlagScopeDaily);
  const std::string state = "\1\0\0\0\1\0\0\0\2\0\0\0\1\0\0\0\3\0\0\0\1\0\0\0\0\0\0\0"s;
  CStreamReader whole;
  {
    const test::HeapFaults heap(0);
    whole << record;
    EXPECT_EQ(heap.Tried(), 1);
  }
  EXPECT_EQ(whole.Capacity(), 3 * 1024);  // no more than what is written needs
  const std::string bytes = Bytes(whole);
  EXPECT_EQ(bytes.substr(bytes.size() - 40), state + "\xEE\xEE" + kAfterState);
  CStreamReader stream(bytes + "!"), unmarked(std::string(bytes).replace(bytes.size() - 12, 2, "--"));
  stream >> record;
  EXPECT_EQ(MarkedState::given, state + "\xEE\xEE" + kAfterState + "!");
  EXPECT_EQ(Bytes(stream), "!");
  EXPECT_THROW(unmarked >> record, std::runtime_error);
  EXPECT_EQ(Bytes(unmarked), kAfterState);
}

TEST(AccountRecord, DerivedStatesTakePartInSequences) {
  std::vector<AccountRecord> accounts(3, SampleAccount());
  const std::string plain = Written(accounts[0]);
  EXPECT_EQ(Written(accounts), "\3\0"s + plain + plain + plain);
  Mark(accounts[1]);
  const std::string marked = Written(accounts[1]);
  EXPECT_EQ(marked.substr(marked.size() - 24), kNoCounters + "\xEE\xEE" + kAfterState);
  EXPECT_EQ(Written(accounts), "\3\0"s + plain + marked + plain);
}

TEST(AccountRecord, ADerivedStateIsAskedWhereverTheStreamEnds) {
  const std::string bytes = Written(SampleAccount());
  const auto* type = zvuti::wire::FindRecord("AccountRecord");
  MarkedState::isMarkSent = false;
  for (std::size_t length = 0; length <= bytes.size(); ++length) {
    CStreamReader stream(bytes.substr(0, length)), plainStream(bytes.substr(0, length));
    AccountRecord seen, plain;
    Mark(seen);
    MarkedState::given = "not asked";
    stream >> seen;
    test::ReadLiterally(*type, plainStream, &plain);
    ASSERT_NE(MarkedState::given, "not asked") << length;
    ASSERT_EQ(seen.TextList, plain.TextList) << length;
    ASSERT_EQ(seen.Text4, plain.Text4) << length;
    ASSERT_EQ(Bytes(stream), Bytes(plainStream)) << length;
  }
  MarkedState::isMarkSent = true;
}

}  // namespace
