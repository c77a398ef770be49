#include "tests/support/LiteralRecords.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <iterator>

#include "tests/support/WireBytes.h"

namespace test {

namespace {

using namespace zvuti::wire;

struct Unknown : std::exception {
  const char* what() const noexcept override { return "unknown enumeration member."; }
};

// The common base of the visitors below: descends into records and treats codes and tags as numbers.
class EachRow : public RowVisitor {
 public:
  void Code(const char* name, NumberRef field) override { Number(name, field); }
  void Tag(const char* name, NumberRef field, const TagTable&) override { Number(name, field); }
  void Reserved(const char*, void*, std::size_t) override {}
  void Record(const char*, const RecordType& type, void* record, Embedding) override {
    type.walk(*this, record);
  }
  bool OnlyIf(const char*, bool) override { return true; }

 protected:
  void Element(ListRef& items, std::size_t index) {
    if (items.elements) return Record("", *items.elements, items.At(index), Embedding::kNested);
    Text("text", *static_cast<std::string*>(items.At(index)));
  }
};

class LiteralReader : public EachRow {
 public:
  explicit LiteralReader(CStreamReader& in) : in_(in) {}

  void Number(const char*, NumberRef field) override { in_.Read(field.at, static_cast<int>(field.bytes)); }
  void Code(const char*, NumberRef field) override {
    in_.Read(&byte_, 1);
    field.Set(byte_);
  }
  void Tag(const char*, NumberRef field, const TagTable& tags) override {
    std::uint32_t word = 0;
    in_.Read(&word, 4);
    const auto* found = std::find(tags.tags, tags.tags + tags.count, word);
    if (found != tags.tags + tags.count) return field.Set(found - tags.tags);
    if (tags.unknownThrows) throw Unknown();
  }
  void Text(const char*, std::string& field) override {
    std::uint16_t count = 0;
    in_.Read(&count, 2);
    field.resize(count);
    in_.Read(field.data(), count);
  }
  void List(const char*, ListRef& items) override {
    std::uint16_t count = 0;
    in_.Read(&count, 2);
    for (std::uint16_t i = 0; i < count; ++i) {
      const std::size_t size = items.Size();
      items.Resize(size + 1);
      try {
        Element(items, size);
      } catch (...) {
        items.Resize(size);
        throw;
      }
    }
  }
  void Map(const char*, MapRef& entries) override {
    std::int32_t count = 0;
    in_.Read(&count, 4);
    const auto block = entries.blocks ? entries.blocks->make() : RecordType::Object(nullptr, [](void*) {});
    // After that many entries the stream is empty, and all further entries are equal.
    const std::int32_t enough = in_.Length() + 2;
    for (std::int32_t i = 0; i < std::min(count, enough); ++i) {
      if (entries.blocks) {
        in_.Read(block.get(), static_cast<int>(entries.blocks->blockBytes));
        std::memcpy(entries.Entry(entries.KeyOf(block.get())), block.get(), entries.blocks->blockBytes);
      } else {
        std::int32_t key = 0, value = 0;
        in_.Read(&key, 4);
        in_.Read(&value, 4);
        std::memcpy(entries.Entry(key), &value, 4);
      }
    }
  }
  bool OnlyIf(const char*, bool holds) override { return holds; }
  void Record(const char*, const RecordType& type, void* record, Embedding) override {
    if (type.blockBytes > 0) return in_.Read(record, static_cast<int>(type.blockBytes));
    LiteralReader reader(in_);
    type.walk(reader, record);
  }

 private:
  CStreamReader& in_;
  std::uint8_t byte_ = 0;
};

class LiteralWriter : public EachRow {
 public:
  explicit LiteralWriter(CStreamWriter& out) : out_(out) {}

  void Number(const char*, NumberRef field) override { out_.Append(field.at, field.bytes); }
  void Code(const char*, NumberRef field) override {
    const auto byte = static_cast<std::uint8_t>(field.Get());
    out_.Append(&byte, 1);
  }
  void Tag(const char*, NumberRef field, const TagTable& tags) override {
    const auto member = static_cast<std::uint32_t>(field.Get());
    if (member < tags.count) {
      out_.Append(&tags.tags[member], 4);
    } else if (tags.unknownThrows) {
      throw Unknown();
    }
  }
  void Text(const char*, std::string& field) override {
    const auto count = Count<std::uint16_t>(field.size());
    if (count > 0) out_.Append(field.data(), count);
  }
  void List(const char*, ListRef& items) override {
    const auto count = Count<std::uint16_t>(items.Size());
    for (std::uint16_t i = 0; i < count; ++i) Element(items, i);
  }
  void Map(const char*, MapRef& entries) override {
    Count<std::uint32_t>(entries.Size());
    entries.ForEach([&](std::int64_t key, void* value) {
      if (entries.blocks) return Record("", *entries.blocks, value, Embedding::kNested);
      const auto word = static_cast<std::uint32_t>(key);
      out_.Append(&word, 4);
      out_.Append(value, 4);
    });
  }
  bool OnlyIf(const char*, bool holds) override { return holds; }
  void Record(const char*, const RecordType& type, void* record, Embedding) override {
    if (type.blockBytes > 0) {
      out_.Append(record, static_cast<unsigned>(type.blockBytes));
    } else {
      type.walk(*this, record);
    }
  }

 private:
  template <class T>
  T Count(std::size_t size) {
    const auto count = static_cast<T>(size);
    out_.Append(&count, sizeof count);
    return count;
  }

  CStreamWriter& out_;
};

class RandomFill : public EachRow {
 public:
  explicit RandomFill(std::mt19937& random) : random_(random) {}

  void Number(const char*, NumberRef field) override {
    static constexpr std::int64_t kEdges[] = {0,         1, -1, 255, 256, 300, 999'999'999, 1'000'000'000,
                                              0x7FFFFFFF};
    const bool isEdge = random_() % 2 == 0;
    field.Set(isEdge ? kEdges[random_() % std::size(kEdges)]
                     : static_cast<std::int64_t>(random_() * std::uint64_t{0x9E3779B97F4A7C15}));
  }
  void Tag(const char*, NumberRef field, const TagTable& tags) override {
    field.Set(static_cast<std::int64_t>(random_() % (random_() % 4 == 0 ? tags.count + 2 : tags.count)));
  }
  void Text(const char*, std::string& field) override {
    field.assign(random_() % 3 == 0 ? 0 : random_() % (random_() % 8 == 0 ? 700 : 9),
                 static_cast<char>(random_() % 3));
  }
  void List(const char*, ListRef& items) override {
    items.Resize(random_() % 4);
    for (std::size_t i = 0; i < items.Size(); ++i) Element(items, i);
  }
  void Map(const char*, MapRef& entries) override {
    for (unsigned i = random_() % 4; i > 0; --i) {
      const auto key = static_cast<std::int64_t>(random_() % 2 == 0 ? random_() % 4 : random_());
      void* value = entries.Entry(static_cast<std::int32_t>(key));
      if (entries.blocks) {
        entries.blocks->walk(*this, value);
        entries.Entry(static_cast<std::int32_t>(key));  // restores the key, which walk overwrote
      } else {
        Number("", {value, 4, false});
      }
    }
  }
  void Reserved(const char*, void* bytes, std::size_t count) override {
    std::memset(bytes, static_cast<int>(random_() & 0xFF), count);
  }

 private:
  std::mt19937& random_;
};

class StateWalk : public EachRow {
 public:
  void Number(const char* name, NumberRef field) override { Add(name, std::to_string(field.Get())); }
  void Text(const char* name, std::string& field) override { Add(name, field); }
  void List(const char* name, ListRef& items) override {
    Add(name, std::to_string(items.Size()));
    for (std::size_t i = 0; i < items.Size(); ++i) {
      // Both ends and every 97th element are enough to detect a shift.
      if (i > kHuge / 2 && i + kHuge / 2 < items.Size() && i % 97 != 0) continue;
      Element(items, i);
    }
  }
  void Map(const char* name, MapRef& entries) override {
    Add(name, std::to_string(entries.Size()));
    entries.ForEach([&](std::int64_t key, void* value) {
      Add("key", std::to_string(key));
      if (entries.blocks) {
        entries.blocks->walk(*this, value);
      } else {
        Number("value", {value, 4, true});
      }
    });
  }
  void Reserved(const char* name, void* bytes, std::size_t count) override {
    Add(name, std::string(static_cast<const char*>(bytes), count));
  }

  std::string text;

 private:
  static constexpr std::size_t kHuge = 600;

  void Add(const char* name, const std::string& value) {
    text.append(name).append("=").append(value).append("\n");
  }
};

}  // namespace

void ReadLiterally(const RecordType& type, CStreamReader& in, void* record) {
  LiteralReader(in).Record("", type, record, Embedding::kNested);
}
void WriteLiterally(const RecordType& type, CStreamWriter& out, void* record) {
  LiteralWriter(out).Record("", type, record, Embedding::kNested);
}

void FillRandomly(const RecordType& type, void* record, std::mt19937& random) {
  RandomFill fill(random);
  type.walk(fill, record);
}

std::string StateOf(const RecordType& type, void* record) {
  StateWalk state;
  type.walk(state, record);
  return state.text;
}

Outcome OutcomeOf(CStreamReader& stream, const std::function<void()>& operation) {
  Outcome outcome;
  try {
    operation();
  } catch (const std::exception& thrown) {
    outcome.thrown = thrown.what();
  }
  outcome.bytes = Bytes(stream);
  outcome.capacity = stream.Capacity();
  return outcome;
}

}  // namespace test
