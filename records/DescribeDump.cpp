#include <cstdio>
#include <cstring>
#include <utility>

#include "records/DescribeTypes.h"
#include "records/DescribeWalks.h"

namespace zvuti::wire {

namespace {

std::string Element(const char* name, const std::string& index) {
  return std::string(name).append("[").append(index).append("]");
}

// Shows the fields of a block that was read as a whole, each at its offset in memory.
class BlockWalk : public RowVisitor {
 public:
  BlockWalk(const void* block, std::size_t offset, std::string prefix, std::vector<DumpRow>& rows)
      : block_(static_cast<const char*>(block)), offset_(offset), prefix_(std::move(prefix)), rows_(rows) {}

  void Number(const char* name, NumberRef field) override {
    Show(field.at, field.bytes, name, RowTypeOf(field), Decimal(field));
  }
  void Reserved(const char* name, void* bytes, std::size_t count) override {
    Show(bytes, count, name, RowTypeOfReserved(count), Hex(bytes, count));
  }
  void Record(const char*, const RecordType& type, void* record, Embedding) override {
    type.walk(*this, record);
  }

  // A memory image contains none of these.
  void Code(const char*, NumberRef) override {}
  void Tag(const char*, NumberRef, const TagTable&) override {}
  void Text(const char*, std::string&) override {}
  void List(const char*, ListRef&) override {}
  void Map(const char*, MapRef&) override {}
  bool OnlyIf(const Condition&, bool holds) override { return holds; }

 private:
  void Show(const void* at, std::size_t size, const char* name, const RowType& type, std::string value) {
    const auto place = static_cast<std::size_t>(static_cast<const char*>(at) - block_);
    rows_.push_back({offset_ + place, size, prefix_ + name, type, RowRole::kField, false, std::move(value)});
  }

  const char* block_;
  std::size_t offset_;
  std::string prefix_;
  std::vector<DumpRow>& rows_;
};

}  // namespace

void DumpWalk::Stop(const std::string& problem) {
  dump_.problem = problem;
  isEnded_ = true;
}

bool DumpWalk::Take(const std::string& name, void* out, std::size_t count) {
  if (isEnded_) return false;
  if (count_ - at_ < count) {
    // A block is read before its fields are named; the path then ends with a point or is empty.
    std::string place = Path(name);
    if (!place.empty() && place.back() == '.') place.pop_back();
    Stop("the bytes end in " + (place.empty() ? "the block" : place) + " at offset " + std::to_string(at_) +
         ": " + std::to_string(count) + " needed, " + std::to_string(count_ - at_) + " left");
    return false;
  }
  if (count > 0) std::memcpy(out, bytes_ + at_, count);
  at_ += count;
  return true;
}

DumpRow& DumpWalk::Show(std::size_t size, const std::string& name, const RowType& type, std::string value) {
  dump_.rows.push_back({at_ - size, size, Path(name), type, RowRole::kField, false, std::move(value)});
  dump_.size = at_;
  return dump_.rows.back();
}

void DumpWalk::Inside(const std::string& name, const RecordType& type, void* record) {
  if (isEnded_) return;
  const std::string outer = std::exchange(prefix_, name.empty() ? prefix_ : Path(name) + ".");
  if (type.framing) {
    type.framing->dump(*this);
  } else if (type.blockBytes == 0) {
    type.walk(*this, record);
  } else if (const std::size_t start = at_; Take("", record, type.blockBytes)) {
    BlockWalk fields(record, start, prefix_, dump_.rows);
    type.walk(fields, record);
    dump_.size = at_;
  }
  prefix_ = outer;
}

void DumpWalk::Number(const char* name, NumberRef field) {
  if (Take(name, field.at, field.bytes)) Show(field.bytes, name, RowTypeOf(field), Decimal(field));
}

void DumpWalk::Part(const std::string& name, RowRole role, NumberRef field) {
  if (Take(name, field.at, field.bytes))
    Show(field.bytes, name, RowTypeOf(field), Decimal(field)).role = role;
}

void DumpWalk::Code(const char* name, NumberRef field) {
  std::uint8_t byte = 0;
  if (!Take(name, &byte, 1)) return;
  field.Set(byte);
  Show(1, name, RowTypeOfCode(), std::to_string(byte));
}

void DumpWalk::Tag(const char* name, NumberRef field, const TagTable& tags) {
  std::uint32_t tag = 0;
  if (!Take(name, &tag, sizeof tag)) return;
  const std::uint32_t member = tags.MemberOf(tag);
  char digits[16];
  std::snprintf(digits, sizeof digits, "0x%08X", static_cast<unsigned>(tag));
  const std::string unknown = std::string(kUnknownTag) + digits;
  const bool isUnknown = member == tags.count;
  if (!isUnknown) field.Set(member);
  Show(sizeof tag, name, RowTypeOf(tags), isUnknown ? unknown : MemberName(tags, member)).isUnknownTag =
      isUnknown;
  if (isUnknown && tags.unknownThrows) Stop(unknown + " in " + Path(name));
}

void DumpWalk::Text(const char* name, std::string& field) {
  std::uint16_t count = 0;
  if (!Take(name, &count, sizeof count)) return;
  field.resize(count);
  if (Take(name, field.data(), count)) Show(sizeof count + count, name, RowTypeOfText(), Escaped(field));
}

void DumpWalk::List(const char* name, ListRef& items) {
  std::uint16_t count = 0;
  if (!Take(name, &count, sizeof count)) return;
  Show(sizeof count, name, RowTypeOf(items), std::to_string(count));
  for (std::uint16_t i = 0; i < count && !isEnded_; ++i) {
    const std::string element = Element(name, std::to_string(i));
    const std::size_t index = items.Size();
    items.Resize(index + 1);
    if (items.elements) {
      Inside(element, *items.elements, items.At(index));
    } else {
      Text(element.c_str(), *static_cast<std::string*>(items.At(index)));
    }
  }
}

void DumpWalk::Map(const char* name, MapRef& entries) {
  std::int32_t count = 0;
  if (!Take(name, &count, sizeof count)) return;
  Show(sizeof count, name, RowTypeOf(entries), std::to_string(count));
  for (std::int32_t i = 0; i < count && !isEnded_; ++i) {
    if (entries.blocks) {
      const auto block = entries.blocks->make();
      if (count_ - at_ < entries.blocks->blockBytes) {
        Take(name, block.get(), entries.blocks->blockBytes);
        return;
      }
      std::memcpy(block.get(), bytes_ + at_, entries.blocks->blockBytes);
      Inside(Element(name, std::to_string(entries.KeyOf(block.get()))), *entries.blocks, block.get());
    } else {
      std::uint32_t entry[2] = {};
      if (!Take(name, entry, sizeof entry)) return;
      const NumberRef key{&entry[0], 4, entries.hasSignedKeys}, value{&entry[1], 4, entries.hasSignedValues};
      Show(sizeof entry, Element(name, Decimal(key)), RowTypeOfEntry(entries), Decimal(value));
    }
  }
}

void DumpWalk::Reserved(const char* name, void* bytes, std::size_t count) {
  if (Take(name, bytes, count)) Show(count, name, RowTypeOfReserved(count), Hex(bytes, count));
}

void DumpWalk::Record(const char* name, const RecordType& type, void* record, Embedding as) {
  Inside(as == Embedding::kBase ? "" : name, type, record);
}

bool DumpWalk::OnlyIf(const Condition&, bool holds) { return holds; }

}  // namespace zvuti::wire
