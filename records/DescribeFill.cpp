#include <charconv>
#include <cstring>
#include <limits>
#include <optional>
#include <utility>

#include "platform/CodePage936.h"
#include "records/DescribeWalks.h"

namespace zvuti::wire {

namespace {

constexpr const char kNotANumber[] = "not a number that the field can hold";

// The digits of a magnitude, decimal or behind 0x, whole text.
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

// A number of `bytes` bytes; its bits, extended by its sign.
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

// Undoes what the dump does to control bytes and backslashes.
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

// Looks for one field and sets it. Once it is found, the rest of the walk passes by.
class FillWalk : public RowVisitor {
 public:
  FillWalk(std::string_view path, const std::string& value) : path_(path), value_(value) {}

  bool IsFound() const { return isFound_; }
  const std::string& Problem() const { return problem_; }

  void Number(const char* name, NumberRef field) override {
    if (IsLeaf(name)) Set(field, kNotANumber);
  }
  void Code(const char* name, NumberRef field) override { Number(name, field); }

  void Tag(const char* name, NumberRef field, const TagTable& tags) override {
    if (!IsLeaf(name)) return;
    for (std::uint32_t member = 0; member < tags.count; ++member) {
      if (value_ == tags.name + std::to_string(member)) return field.Set(member);
    }
    problem_ = std::string("not a member of ") + tags.name;
  }

  void Text(const char* name, std::string& field) override {
    if (IsLeaf(name)) SetText(field);
  }

  void List(const char* name, ListRef& items) override {
    if (IsLeaf(name)) {
      const auto size = ParseNumber(value_, 2, false);
      if (!size) return Refuse("not a number of elements up to 65535");
      return items.Resize(static_cast<std::size_t>(*size));
    }
    std::string_view rest;
    const auto index = Index(name, 2, false, rest);
    if (!index) return;
    if (*index > 65534) return Refuse("a sequence has up to 65535 elements");
    const auto place = static_cast<std::size_t>(*index);
    if (items.Size() <= place) items.Resize(place + 1);
    if (items.elements) {
      Into(*items.elements, items.At(place), rest);
    } else if (rest.empty()) {
      SetText(*static_cast<std::string*>(items.At(place)));
    } else {
      Refuse("a text has no fields");
    }
  }

  void Map(const char* name, MapRef& entries) override {
    if (IsLeaf(name)) return Refuse("a map is filled by its entries, as in Name[5]");
    std::string_view rest;
    const auto key = Index(name, 4, entries.hasSignedKeys, rest);
    if (!key) return;
    if (entries.blocks) {
      Into(*entries.blocks, entries.Entry(*key), rest);
    } else if (rest.empty()) {
      Set({entries.Entry(*key), 4, entries.hasSignedValues}, kNotANumber);
    } else {
      Refuse("a number has no fields");
    }
  }

  void Reserved(const char* name, void* bytes, std::size_t count) override {
    if (!IsLeaf(name)) return;
    std::string parsed;
    for (std::size_t i = 0; i < value_.size(); i += 3) {
      const auto byte = ParseHexByte(std::string_view(value_).substr(i));
      if (!byte || (i + 2 < value_.size() && value_[i + 2] != ' ')) break;
      parsed += static_cast<char>(*byte);
    }
    if (parsed.size() != count || value_.size() != 3 * count - 1) {
      return Refuse("not " + std::to_string(count) + " bytes, as in 00 FF");
    }
    std::memcpy(bytes, parsed.data(), count);
  }

  void Record(const char* name, const RecordType& type, void* record, Place place) override {
    if (isFound_) return;
    if (place == Place::kBase) {
      type.walk(*this, record);
    } else if (IsHead(name) && path_.substr(std::strlen(name), 1) == ".") {
      isFound_ = true;
      problem_ = FillField(type, record, path_.substr(std::strlen(name) + 1), value_);
    }
  }

  // A field may be set before the one that decides whether it travels.
  bool OnlyIf(const char*, bool) override { return true; }

 private:
  bool IsHead(const char* name) const { return path_.substr(0, std::strlen(name)) == name; }

  bool IsLeaf(const char* name) {
    if (isFound_ || path_ != name) return false;
    isFound_ = true;
    return true;
  }

  // The number behind `name` in brackets, and the path behind it without its point.
  std::optional<std::int64_t> Index(const char* name, unsigned bytes, bool isSigned, std::string_view& rest) {
    const std::size_t length = std::strlen(name);
    if (isFound_ || !IsHead(name) || path_.substr(length, 1) != "[") return std::nullopt;
    isFound_ = true;
    const std::size_t close = path_.find(']', length);
    const auto number = close == path_.npos
                            ? std::nullopt
                            : ParseNumber(path_.substr(length + 1, close - length - 1), bytes, isSigned);
    if (!number) {
      problem_ = "no such element";
      return std::nullopt;
    }
    rest = path_.substr(close + 1);
    if (!rest.empty()) {
      if (rest.front() != '.') {
        problem_ = "no such field";
        return std::nullopt;
      }
      rest.remove_prefix(1);
    }
    return number;
  }

  void Into(const RecordType& type, void* record, std::string_view path) {
    problem_ = FillField(type, record, path, value_);
  }

  void Set(NumberRef field, const char* problem) {
    if (const auto number = ParseNumber(value_, field.bytes, field.isSigned)) {
      field.Set(*number);
    } else {
      problem_ = problem;
    }
  }

  void SetText(std::string& field) {
    if (auto text = Unescaped(value_)) {
      field = *std::move(text);
    } else {
      problem_ = "a backslash stands before x and two digits, or before another one";
    }
  }

  void Refuse(std::string problem) { problem_ = std::move(problem); }

  std::string_view path_;
  const std::string& value_;
  bool isFound_ = false;
  std::string problem_;
};

}  // namespace

std::string FillField(const RecordType& type, void* record, std::string_view path, const std::string& value) {
  if (type.own) return type.own->fill(record, path, value);
  FillWalk walk(path, value);
  type.walk(walk, record);
  return walk.IsFound() ? walk.Problem() : std::string("there is no such field in ") + type.name;
}

}  // namespace zvuti::wire
