#include "tests/support/RecordComparison.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <random>
#include <string>

#include "tests/support/HeapFaults.h"

namespace test {

// For the messages of tests.
static std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
  return out << "thrown '" << outcome.thrown << "', capacity " << outcome.capacity << ", "
             << testing::PrintToString(outcome.bytes) << ", " << outcome.state;
}

namespace {

class Comparison {
 public:
  Comparison(const RecordType& type, unsigned seed) : type_(type), random_(seed) {}

  void Round() {
    const auto record = Random(Next());
    const std::string before(Next() % 3 == 0 ? Next() % 2100 : 1024 * (1 + Next() % 3) - Next() % 40, 'b');
    Write(record.get(), before);
    CStreamReader stream;
    OutcomeOf(stream, [&] { WriteLiterally(type_, stream, record.get()); });
    const std::string bytes(reinterpret_cast<const char*>(stream.Data()),
                            static_cast<std::size_t>(stream.Length()));
    const std::size_t step = bytes.size() / 150 + 1;
    for (std::size_t length = 0; length <= bytes.size(); length += step) Read(bytes.substr(0, length));
    Read(bytes + "tail");
    for (int i = 0; i < 50 && !bytes.empty(); ++i) {
      std::string changed = bytes;
      for (unsigned n = Next() % 6 + 1; n > 0; --n) {
        const unsigned value = Next() % 500 == 0 ? 0x80u : Next() % 4;
        changed[Next() % (n % 2 == 0 ? changed.size() : std::min<std::size_t>(changed.size(), 64))] =
            static_cast<char>(value);
      }
      Read(changed.substr(0, Next() % 2 == 0 ? changed.size() : Next() % changed.size()));
    }
  }

 private:
  RecordType::Object Random(unsigned seed) const {
    auto record = type_.make();
    std::mt19937 random(seed);
    FillRandomly(type_, record.get(), random);
    return record;
  }

  void Write(void* record, const std::string& before) {
    for (const int refused : {0, 1, 2}) {
      CStreamReader engine(before), literal(before);
      const auto write = [&](CStreamReader& stream, bool isLiteral) {
        return OutcomeOf(stream, [&] {
          // One refused block costs the engine its single reservation, not a field (unless the record
          // is one field); a full heap costs both the fields that find no room.
          const bool isSpared = isLiteral && refused == 1 && type_.blockBytes == 0;
          const test::HeapFaults faults(isSpared ? 0 : std::min(refused, 1), refused == 2);
          isLiteral ? WriteLiterally(type_, stream, record) : type_.write(stream, record);
        });
      };
      const Outcome seen = write(engine, false);
      ASSERT_EQ(seen, write(literal, true)) << type_.name << ", refused " << refused;
    }
  }

  // Into a default record and into a filled one in turn.
  void Read(const std::string& bytes) {
    isFilled_ = !isFilled_;
    const unsigned seed = Next();
    const auto read = [&](bool isLiteral) {
      const auto record = isFilled_ ? Random(seed) : type_.make();
      CStreamReader stream(bytes);
      Outcome outcome = OutcomeOf(stream, [&] {
        isLiteral ? ReadLiterally(type_, stream, record.get()) : type_.read(stream, record.get());
      });
      outcome.state = StateOf(type_, record.get());
      return outcome;
    };
    const Outcome seen = read(false);
    // A count read from the wrong place gives tens of thousands of elements; a few of these will do.
    if (seen.state.size() > 50'000 && ++huge_ > 2) return;
    ASSERT_EQ(seen, read(true)) << type_.name << " from " << testing::PrintToString(bytes);
  }

  unsigned Next() { return static_cast<unsigned>(random_()); }

  const RecordType& type_;
  std::mt19937 random_;
  bool isFilled_ = false;
  int huge_ = 0;
};

}  // namespace

void ExpectLiteralResults(const RecordType& type, unsigned seed, int rounds) {
  Comparison comparison(type, seed);
  for (int round = 0; round < rounds && !testing::Test::HasFatalFailure(); ++round) comparison.Round();
}

}  // namespace test
