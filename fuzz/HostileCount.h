// Finds counts without the bytes for them. They make thousands of elements or long texts, and cost a hundred
// to a thousand times what other inputs do.
#pragma once

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>

#include "data/wire/RecordType.h"
#include "fuzz/Input.h"

namespace fuzz {

/// Walks over a record's bytes as a reader would, but makes one element of each sequence only.
class CountWalk : public zvuti::wire::RowVisitor {
 public:
  explicit CountWalk(std::string_view bytes) : bytes_(bytes) {}

  /// After the walk: how many elements and how many bytes of texts are missing.
  std::size_t MissingElements() const { return missingElements_; }
  std::size_t MissingText() const { return missingText_; }

  void Number(const char*, zvuti::wire::NumberRef field) override { Take(field.at, field.bytes); }
  void Code(const char*, zvuti::wire::NumberRef field) override { field.Set(Count(1)); }
  void Tag(const char*, zvuti::wire::NumberRef, const zvuti::wire::TagTable&) override { Skip(4); }
  void Text(const char*, std::string&) override {
    const std::size_t count = Count(2);
    missingText_ += count - std::min(count, bytes_.size());
    Skip(count);
  }
  void List(const char*, zvuti::wire::ListRef& items) override {
    const std::uint32_t count = Count(2);
    if (count == 0) return;
    items.Resize(1);
    for (std::uint32_t i = 0; i < count; ++i) {
      if (bytes_.empty()) {
        missingElements_ += count - i;
        return;
      }
      if (!items.elements) {
        Text("", text_);
      } else {
        Record("", *items.elements, items.At(0), zvuti::wire::Embedding::kNested);
      }
    }
  }
  void Map(const char*, zvuti::wire::MapRef& entries) override {
    const std::size_t size = entries.blocks ? entries.blocks->blockBytes : 8;
    const auto count = static_cast<std::int32_t>(Count(4));
    if (count > 0) Skip(static_cast<std::size_t>(count) * size);
  }
  void Reserved(const char*, void*, std::size_t) override {}
  void Record(const char*, const zvuti::wire::RecordType& type, void* record,
              zvuti::wire::Embedding) override {
    type.blockBytes > 0 ? Take(record, type.blockBytes) : type.walk(*this, record);
  }
  bool OnlyIf(const zvuti::wire::Condition&, bool holds) override { return holds; }

 private:
  void Skip(std::size_t count) { bytes_.remove_prefix(std::min(count, bytes_.size())); }
  void Take(void* out, std::size_t count) {
    if (bytes_.size() >= count) std::memcpy(out, bytes_.data(), count);
    Skip(count);
  }
  std::uint32_t Count(std::size_t bytes) {
    std::uint32_t count = 0;
    Take(&count, bytes);
    return count;
  }

  std::string_view bytes_;
  std::string text_;
  std::size_t missingElements_ = 0, missingText_ = 0;
};

/// True for most inputs with such counts, by their hash: a few of them will do.
inline bool IsPassedOver(const zvuti::wire::RecordType& type, std::string_view bytes) {
  if (!type.walk) return false;
  CountWalk counts(bytes);
  counts.Record("", type, type.make().get(), zvuti::wire::Embedding::kNested);
  return (counts.MissingElements() > 200 && !IsChosen(bytes, 1024)) ||
         (counts.MissingText() > 2'000 && !IsChosen(bytes, 64));
}

}  // namespace fuzz
