#include "tests/support/LiteralRecords.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "tests/support/GoldenRecords.h"
#include "tests/support/WireBytes.h"

namespace test {

namespace {

using namespace zvuti::wire;

class LiteralReader : public RowVisitor {
 public:
  explicit LiteralReader(CStreamReader& in) : in_(in) {}

  void Number(const char*, NumberRef field) override { in_.Read(field.at, static_cast<int>(field.bytes)); }
  void Code(const char*, NumberRef field) override {
    in_ >> code_;
    field.Set(code_);
  }
  void Tag(const char*, NumberRef field, const TagTable& tags) override {
    std::uint32_t tag = 0;
    in_ >> tag;
    const auto* const end = tags.tags + tags.count;
    const auto* const found = std::find(tags.tags, end, tag);
    if (found != end) return field.Set(found - tags.tags);
    if (tags.unknownThrows) throw std::runtime_error("unknown enumeration member.");
  }
  void Text(const char*, std::string& field) override { in_ >> field; }
  void List(const char*, ListRef& items) override {
    std::uint16_t count = 0;
    in_ >> count;
    for (; count > 0; --count) {
      const std::size_t index = items.Size();
      items.Resize(index + 1);
      if (items.elements) {
        Record("", *items.elements, items.At(index), Embedding::kNested);
      } else {
        Text("", *static_cast<std::string*>(items.At(index)));
      }
    }
  }
  void Map(const char*, MapRef& entries) override {
    std::int32_t count = 0;
    in_ >> count;
    std::string block(entries.blocks ? entries.blocks->blockBytes : 0, '\0');
    // After that many entries the stream is empty, and all further entries are equal.
    for (count = std::min(count, in_.Length() + 2); count > 0; --count) {
      if (entries.blocks) {
        in_.Read(block.data(), static_cast<int>(block.size()));
        std::memcpy(entries.Entry(entries.KeyOf(block.data())), block.data(), block.size());
      } else {
        std::int32_t key = 0, value = 0;
        in_ >> key >> value;
        std::memcpy(entries.Entry(key), &value, sizeof value);
      }
    }
  }
  void Reserved(const char*, void*, std::size_t) override {}  // in blocks only, which are read as a whole
  void Record(const char*, const RecordType& type, void* record, Embedding) override {
    ReadLiterally(type, in_, record);
  }
  bool OnlyIf(const Condition&, bool holds) override { return holds; }

 private:
  CStreamReader& in_;
  std::uint8_t code_ = 0;  // the last one in this record
};

}  // namespace

void ReadLiterally(const RecordType& type, CStreamReader& in, void* record) {
  if (type.blockBytes > 0) return in.Read(record, static_cast<int>(type.blockBytes));
  LiteralReader reader(in);
  type.walk(reader, record);
}

RecordType::Object FilledRecord(const RecordType& type) {
  auto record = type.make();
  for (const Golden& golden : GoldenRecords()) {
    if (golden.record != type.name || golden.kind != "filled") continue;
    CStreamReader stream(golden.Bytes());
    type.read(stream, record.get());
  }
  return record;
}

std::string StateOf(const RecordType& type, const void* record) {
  CStreamReader stream;
  type.write(stream, record);
  return Bytes(stream);
}

Outcome OutcomeOf(CStreamReader& stream, const std::function<void()>& operation) {
  Outcome outcome;
  try {
    operation();
  } catch (const std::exception& thrown) {
    outcome.thrown = thrown.what();
  }
  outcome.bytes = Bytes(stream);
  return outcome;
}

}  // namespace test
