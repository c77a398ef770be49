#include <ZvUtiLib/records/Account.h>

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

// A host's state: it looks at the stream, and puts a mark behind what every state has on the wire.
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
    if (isMarked) in >> mark;
    if (mark != 0xEEEE) throw std::runtime_error("no mark");
  }
  static inline std::string given;
  static inline bool isMarked = true;
};
static_assert(sizeof(MarkedState) == sizeof(CUtiDailyState));

std::unique_ptr<AccountRecord> MarkedAccount() {
  auto record = std::make_unique<AccountRecord>();
  std::destroy_at(&record->State);
  new (&record->State) MarkedState;
  return record;
}

TEST(AccountRecord, ADerivedStateTakesPart) {
  const auto record = MarkedAccount();
  record->State.GetTable().SetCounter(1, 2);
  record->State.SetFlag(3, FlagScopeDaily);
  record->Text2.assign(2000, 'x');
  record->Text4 = "four";
  const std::string state = "\1\0\0\0\1\0\0\0\2\0\0\0\1\0\0\0\3\0\0\0\1\0\0\0\0\0\0\0"s,
                    behind = "\4\0four\0\0\0\0"s;
  CStreamReader whole;
  whole << *record;
  EXPECT_EQ(whole.Capacity(), 3 * 1024);  // no more than what is written needs
  const std::string bytes = Bytes(whole);
  EXPECT_EQ(bytes.substr(bytes.size() - 40), state + "\xEE\xEE" + behind);
  CStreamReader stream(bytes + "!"), unmarked(std::string(bytes).replace(bytes.size() - 12, 2, "--"));
  stream >> *record;
  EXPECT_EQ(MarkedState::given, state + "\xEE\xEE" + behind + "!");
  EXPECT_EQ(Bytes(stream), "!");
  EXPECT_THROW(unmarked >> *record, std::runtime_error);
  EXPECT_EQ(Bytes(unmarked), behind);
}

TEST(AccountRecord, ASequenceIsWrittenInOneBlockButForDerivedStates) {
  std::vector<AccountRecord> accounts(3);
  for (AccountRecord& account : accounts) account.State.GetTable().SetCounter(1, 2);
  accounts[2].Text4.assign(3000, 'x');
  const std::string first = Written(accounts[0]), last = Written(accounts[2]);
  CStreamReader one, all, mixed;
  {
    const test::HeapFaults heap(0);
    one << accounts[0];
    all << accounts;
    EXPECT_EQ(heap.Tried(), 2);
  }
  EXPECT_EQ(Bytes(one), first);
  EXPECT_EQ(Bytes(all), "\3\0"s + first + first + last);

  std::destroy_at(&accounts[1].State);
  new (&accounts[1].State) MarkedState;
  mixed << accounts;
  const std::string marked = Written(accounts[1]);
  EXPECT_EQ(marked.substr(marked.size() - 20), std::string(12, '\0') + "\xEE\xEE" + std::string(6, '\0'));
  EXPECT_EQ(Bytes(mixed), "\3\0"s + first + marked + last);
  EXPECT_EQ(mixed.Capacity(), 4096);
}

TEST(AccountRecord, ADerivedStateIsAskedWhereverTheStreamEnds) {
  AccountRecord record;
  record.Text2 = "two";
  record.TextList = {"aa", "bcd"};
  record.State.GetTable().SetCounter(1, 2);
  record.Text4 = "four";
  const std::string bytes = Written(record);
  const auto* type = zvuti::wire::FindRecord("AccountRecord");
  MarkedState::isMarked = false;
  for (std::size_t length = 0; length <= bytes.size(); ++length) {
    CStreamReader stream(bytes.substr(0, length)), plainStream(bytes.substr(0, length));
    const auto seen = MarkedAccount(), plain = std::make_unique<AccountRecord>();
    MarkedState::given = "not asked";
    stream >> *seen;
    test::ReadLiterally(*type, plainStream, plain.get());
    ASSERT_NE(MarkedState::given, "not asked") << length;
    ASSERT_EQ(test::StateOf(*type, seen.get()), test::StateOf(*type, plain.get())) << length;
    ASSERT_EQ(Bytes(stream), Bytes(plainStream)) << length;
  }
  MarkedState::isMarked = true;
}

}  // namespace
