#include <algorithm>
#include <charconv>
#include <cstring>
#include <optional>
#include <utility>

#include "gbk/CodePage936.h"
#include "records/DescribeTypes.h"
#include "records/DescribeWalks.h"

namespace zvuti::wire {

namespace {

constexpr std::size_t kMostInSequence = 65'535;
constexpr std::size_t kMostInText = 65'535;

// Parses the whole text as an unsigned number: decimal, or hexadecimal after 0x.
std::optional<std::uint64_t> ParseDigits(std::string_view text) {
  int base = 10;
  if (text.substr(0, 2) == "0x" || text.substr(0, 2) == "0X") {
    base = 16;
    text.remove_prefix(2);
  }
  std::uint64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

// Parses a number of `bytes` bytes. Returns its bits, extended by its sign.
std::optional<std::int64_t> ParseNumber(std::string_view text, unsigned bytes, bool isSigned) {
  const bool isNegative = !text.empty() && text.front() == '-';
  if (isNegative) text.remove_prefix(1);
  const auto magnitude = ParseDigits(text);
  if (!magnitude) return std::nullopt;
  const unsigned bits = 8 * bytes;
  const std::uint64_t top = std::uint64_t{1} << (bits - 1);
  const std::uint64_t largest = isSigned ? top - 1 : top - 1 + top;
  const std::uint64_t lowest = isSigned ? top : 0;
  if (*magnitude > (isNegative ? lowest : largest)) return std::nullopt;
  return static_cast<std::int64_t>(isNegative ? ~*magnitude + 1 : *magnitude);
}

std::optional<unsigned char> ParseHexByte(std::string_view text) {
  unsigned char byte = 0;
  if (text.size() < 2) return std::nullopt;
  const auto [end, error] = std::from_chars(text.data(), text.data() + 2, byte, 16);
  if (error != std::errc() || end != text.data() + 2) return std::nullopt;
  return byte;
}

// Reverses the dump's escapes for control bytes and backslashes.
std::optional<std::string> Unescaped(const std::string& shown) {
  std::string text;
  for (std::size_t i = 0; i < shown.size();) {
    const std::size_t length = gbk::CharLength(shown, i);
    if (shown[i] != '\\') {
      text.append(shown, i, length);
      i += length;
    } else if (shown.compare(i, 2, "\\\\") == 0) {
      text += '\\';
      i += 2;
    } else {
      if (shown.compare(i, 2, "\\x") != 0) return std::nullopt;
      const auto byte = ParseHexByte(std::string_view(shown).substr(i + 2));
      if (!byte) return std::nullopt;
      text += static_cast<char>(*byte);
      i += 4;
    }
  }
  return text;
}

// Removes a number in brackets from the front of a path and returns it.
std::int64_t TakeNumber(Given& value, unsigned bytes, bool isSigned) {
  const std::size_t close = value.rest.find(']');
  if (value.rest.substr(0, 1) != "[" || close == value.rest.npos) Refuse(value, "no such element");
  const auto number = ParseNumber(value.rest.substr(1, close - 1), bytes, isSigned);
  if (!number) Refuse(value, "no such element");
  value.rest.remove_prefix(close + 1);
  if (!value.rest.empty() && value.rest.front() != '.' && value.rest.front() != '[')
    Refuse(value, "no such field");
  return *number;
}

// The entries of a map whose count is given, in the given order.
std::vector<Entry> InOrder(const Values& values, bool hasSignedKeys) {
  std::vector<Entry> entries;
  std::map<std::int64_t, std::size_t> last;  // of each key
  for (Given value : values) {
    const std::int64_t key = TakeNumber(value, 4, hasSignedKeys);
    const auto [place, isNew] = last.try_emplace(key, entries.size());
    if (!isNew && entries[place->second].first == value.rest) place->second = entries.size();
    if (place->second == entries.size()) entries.push_back({key, value.rest, {}});
    entries[place->second].values.push_back(value);
  }
  return entries;
}

// The values of a row with brackets: those of its elements and those of its size.
struct Bracketed {
  explicit Bracketed(const Values& all) {
    for (const Given& value : all) (value.rest.empty() ? sizes : elements).push_back(value);
  }
  Values sizes, elements;
};

// Appends row by row. Also stores the values in the record, so that conditions hold as they do for a writer.
// A block is appended from the record after all its rows.
class FillWalk : public RowVisitor {
 public:
  FillWalk(const RecordType& type, const Values& values, std::string& bytes)
      : type_(type), fields_(values), bytes_(bytes) {}

  void RefuseRest() const { fields_.RefuseRest(type_.name); }

  void Number(const char* name, NumberRef field) override {
    Values values;
    if (!Begin(name, values)) return;
    if (const Given* value = OnlyOne(values, NoField()))
      field.Set(NumberOf(*value, field.bytes, field.isSigned));
    Put(field.at, field.bytes);
  }

  void Code(const char* name, NumberRef field) override {
    Values values;
    if (!Begin(name, values)) return;
    if (const Given* value = OnlyOne(values, NoField())) field.Set(NumberOf(*value, 1, false));
    const auto byte = static_cast<std::uint8_t>(field.Get());
    Put(&byte, sizeof byte);
  }

  void Tag(const char* name, NumberRef field, const TagTable& tags) override {
    Values values;
    if (!Begin(name, values)) return;
    if (const Given* value = OnlyOne(values, NoField())) {
      const std::uint32_t tag = TagOf(*value, tags);
      if (const std::uint32_t member = tags.MemberOf(tag); member < tags.count) field.Set(member);
      Put(&tag, sizeof tag);
    } else if (const std::uint32_t* tag = tags.TagOf(field.Get())) {
      Put(tag, sizeof *tag);
    }
  }

  void Text(const char* name, std::string& field) override {
    Values values;
    if (Begin(name, values)) PutText(OnlyOne(values, NoField()), field);
  }

  void List(const char* name, ListRef& items) override {
    Values values;
    if (!Begin(name, values)) return;
    const Bracketed given(values);
    const std::vector<Entry> elements = ByNumber(given.elements, 2, false);
    const auto count = static_cast<std::uint16_t>(SizeOf(elements, given.sizes, kMostInSequence));
    Put(&count, sizeof count);
    std::string byDefault;  // the bytes of a default element, once one has been written
    auto element = elements.begin();
    for (std::uint16_t i = 0; i < count; ++i) {
      const bool isGiven = element != elements.end() && element->key == i;
      if (!isGiven && !byDefault.empty()) {
        bytes_ += byDefault;
        continue;
      }
      const std::size_t start = bytes_.size();
      PutElement(items.elements, isGiven ? (element++)->values : Values());
      if (!isGiven) byDefault = bytes_.substr(start);
    }
  }

  void Map(const char* name, MapRef& map) override {
    Values values;
    if (!Begin(name, values)) return;
    const Bracketed given(values);
    const Entries entries(given.elements, given.sizes, map.hasSignedKeys);
    Put(&entries.count, sizeof entries.count);
    for (const Entry& entry : entries.entries) {
      if (map.blocks) {
        PutBlock(map, entry);
      } else {
        const Given* value = OnlyOne(entry.values, "a number has no fields");
        const std::int64_t number = NumberOf(*value, 4, map.hasSignedValues);
        Put(&entry.key, 4);
        Put(&number, 4);
      }
    }
  }

  void Reserved(const char* name, void* bytes, std::size_t count) override {
    Values values;
    if (!Begin(name, values)) return;
    if (const Given* value = OnlyOne(values, NoField())) {
      const std::string given = ReservedOf(*value, count);
      std::memcpy(bytes, given.data(), count);
    }
    Put(bytes, count);
  }

  void Record(const char* name, const RecordType& type, void* record, Embedding as) override {
    if (as == Embedding::kBase) return type.walk(*this, record);
    Values values;
    if (Begin(name, values)) PutRows(type, record, BehindPoint(values, NoField()), bytes_);
  }

  bool OnlyIf(const Condition& condition, bool holds) override {
    if (!holds) missing_ = TextOf(condition);
    return true;
  }

 private:
  std::string NoField() const { return std::string("there is no such field in ") + type_.name; }

  // Takes the values of a row. Returns false for a row that is not on the wire; it must have no values.
  bool Begin(const char* name, Values& values) {
    values = fields_.Take(name);
    const std::string condition = std::exchange(missing_, {});
    if (!condition.empty() && !values.empty()) Refuse(values[0], "only on the wire if " + condition);
    return condition.empty();
  }

  void Put(const void* bytes, std::size_t count) {
    if (type_.blockBytes == 0) bytes_.append(static_cast<const char*>(bytes), count);
  }

  void PutElement(const RecordType* type, const Values& values) {
    if (type) {
      PutRows(*type, type->make().get(), BehindPoint(values, NoField()), bytes_);
    } else {
      PutText(OnlyOne(values, "a text has no fields"), {});
    }
  }

  void PutText(const Given* value, const std::string& byDefault) {
    std::optional<std::string> text = value ? Unescaped(value->named->value) : byDefault;
    if (!text) Refuse(*value, "a backslash stands before x and two digits, or before another one");
    if (text->size() > kMostInText) {
      Refuse(*value, "a text has up to " + std::to_string(kMostInText) + " bytes, not " +
                         std::to_string(text->size()));
    }
    const auto count = static_cast<std::uint16_t>(text->size());
    Put(&count, sizeof count);
    Put(text->data(), count);
  }

  // The map creates the block, because only the map knows where a block stores its key.
  void PutBlock(MapRef& map, const Entry& entry) {
    void* const block = map.Entry(entry.key);
    std::memcpy(block, map.blocks->make().get(), map.blocks->blockBytes);
    map.Entry(entry.key);
    PutRows(*map.blocks, block, BehindPoint(entry.values, NoField()), bytes_);
    if (map.KeyOf(block) != entry.key)
      Refuse(entry.values[0], "the key in the entry is " + std::to_string(map.KeyOf(block)));
  }

  static std::uint32_t TagOf(const Given& value, const TagTable& tags) {
    const std::string_view given = value.named->value;
    for (std::uint32_t member = 0; member < tags.count; ++member) {
      if (given == tags.name + std::to_string(member)) return tags.tags[member];
    }
    if (!tags.unknownThrows && given.substr(0, kUnknownTag.size()) == kUnknownTag) {
      const auto tag = ParseNumber(given.substr(kUnknownTag.size()), 4, false);
      if (tag && tags.MemberOf(static_cast<std::uint32_t>(*tag)) == tags.count)
        return static_cast<std::uint32_t>(*tag);
    }
    Refuse(value, std::string("not a member of ") + tags.name);
  }

  static std::string ReservedOf(const Given& value, std::size_t count) {
    const std::string_view given = value.named->value;
    std::string parsed;
    for (std::size_t i = 0; i < given.size(); i += 3) {
      const auto byte = ParseHexByte(given.substr(i));
      if (!byte || (i + 2 < given.size() && given[i + 2] != ' ')) break;
      parsed += static_cast<char>(*byte);
    }
    if (parsed.size() != count || given.size() != 3 * count - 1)
      Refuse(value, "not " + std::to_string(count) + " bytes, as in 00 FF");
    return parsed;
  }

  const RecordType& type_;
  Fields fields_;
  std::string& bytes_;
  std::string missing_;  // the condition that the next row fails
};

}  // namespace

void Refuse(const Given& value, const std::string& reason) {
  throw Refusal(value.named->path + ": " + reason);
}

std::int64_t NumberOf(const Given& value, unsigned bytes, bool isSigned) {
  const auto number = ParseNumber(value.named->value, bytes, isSigned);
  if (!number) Refuse(value, "not a number that the field can hold");
  return *number;
}

const Given* OnlyOne(const Values& values, const std::string& problem) {
  for (const Given& value : values) {
    if (!value.rest.empty()) Refuse(value, problem);
    if (value.named->value != values[0].named->value) Refuse(value, "given twice, with different values");
  }
  return values.empty() ? nullptr : values.data();
}

Values BehindPoint(Values values, const std::string& problem) {
  for (Given& value : values) {
    if (value.rest.substr(0, 1) != ".") Refuse(value, problem);
    value.rest.remove_prefix(1);
  }
  return values;
}

Fields::Fields(const Values& values) {
  for (Given value : values) {
    const std::size_t end = std::min(value.rest.find_first_of(".["), value.rest.size());
    const std::string_view name = value.rest.substr(0, end);
    value.rest.remove_prefix(end);
    byName_[name].push_back(value);
  }
}

Values Fields::Take(std::string_view name) {
  const auto found = byName_.find(name);
  if (found == byName_.end()) return {};
  Values values = std::move(found->second);
  byName_.erase(found);
  return values;
}

void Fields::RefuseRest(const char* record) const {
  if (!byName_.empty())
    Refuse(byName_.begin()->second[0], std::string("there is no such field in ") + record);
}

std::vector<Entry> ByNumber(const Values& values, unsigned bytes, bool isSigned) {
  std::map<std::int64_t, Values> byNumber;
  for (Given value : values) {
    const std::int64_t number = TakeNumber(value, bytes, isSigned);
    byNumber[number].push_back(value);
  }
  std::vector<Entry> entries;
  entries.reserve(byNumber.size());
  for (auto& [number, own] : byNumber) entries.push_back({number, own[0].rest, std::move(own)});
  return entries;
}

std::size_t SizeOf(const std::vector<Entry>& elements, const Values& sizes, std::size_t most) {
  const std::string limit = std::to_string(most);
  const auto indexOf = [](const Entry& element) { return static_cast<std::size_t>(element.key); };
  if (!elements.empty() && indexOf(elements.back()) >= most)
    Refuse(elements.back().values[0], "a sequence has up to " + limit + " elements");
  if (const Given* given = OnlyOne(sizes, "no such field")) {
    const auto size = ParseNumber(given->named->value, 4, false);
    if (!size || static_cast<std::size_t>(*size) > most)
      Refuse(*given, "not a number of elements up to " + limit);
    if (!elements.empty() && elements.back().key >= *size)
      Refuse(elements.back().values[0], "beyond the number of elements given, " + std::to_string(*size));
    return static_cast<std::size_t>(*size);
  }
  for (std::size_t i = 0; i < elements.size(); ++i) {
    if (indexOf(elements[i]) != i) {
      Refuse(elements[i].values[0],
             "neither element " + std::to_string(i) + " nor the number of elements is given");
    }
  }
  return elements.size();
}

Entries::Entries(const Values& values, const Values& counts, bool hasSignedKeys) {
  const Given* given = OnlyOne(counts, "no such field");
  entries = given ? InOrder(values, hasSignedKeys) : ByNumber(values, 4, hasSignedKeys);
  count = given ? static_cast<std::int32_t>(NumberOf(*given, 4, true))
                : static_cast<std::int32_t>(entries.size());
  if (static_cast<std::size_t>(std::max(count, 0)) != entries.size())
    Refuse(*given, "not the number of the entries given, " + std::to_string(entries.size()));
}

void PutRows(const RecordType& type, void* record, const Values& values, std::string& bytes) {
  if (type.framing) return type.framing->fill(values, bytes);
  FillWalk walk(type, values, bytes);
  type.walk(walk, record);
  walk.RefuseRest();
  bytes.append(static_cast<const char*>(record), type.blockBytes);
}

}  // namespace zvuti::wire
