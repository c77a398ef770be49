// RecordType: a run-time description of a record type, with a walk over its rows through one virtual
// interface. For operations that need not be fast: listing, dumping, filling by name, checking.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include <ZvUtiLib/data/CStream.h>

#include "data/wire/Rows.h"

namespace zvuti::wire {

class RowVisitor;
struct CustomFraming;

struct RecordType {
  using Object = std::unique_ptr<void, void (*)(void*)>;

  const char* name;
  std::size_t blockBytes;  ///< size of a record written as its memory image, otherwise 0

  Object (*make)();  ///< returns a default-constructed record
  void (*read)(CStreamReader& in, void* record);
  void (*write)(CStreamWriter& out, const void* record);
  bool (*areEqual)(const void* record, const void* other);
  void (*walk)(RowVisitor& rows, void* record);

  /// Lists, dumps and fills a record whose framing no row list can express; `walk` is then null.
  const CustomFraming* framing;
};

/// The record types of a unit or of the whole library.
using RecordList = std::vector<const RecordType*>;

/// An integer field.
struct NumberRef {
  void* at;
  unsigned bytes;
  bool isSigned;
  bool isPackedTime = false;

  template <class T>
  static NumberRef Of(T& field) {
    if constexpr (std::is_enum_v<T>) {
      return {&field, sizeof field, std::is_signed_v<std::underlying_type_t<T>>};
    } else {
      return {&field, sizeof field, std::is_signed_v<T>};
    }
  }

  /// Returns the value, extended to 64 bits by its sign.
  std::int64_t Get() const;
  /// Stores the low bytes of `value`.
  void Set(std::int64_t value) const;
};

/// A sequence of records, or of texts if `elements` is null.
class ListRef {
 public:
  explicit ListRef(const RecordType* elements_) : elements(elements_) {}
  virtual ~ListRef() = default;
  virtual std::size_t Size() const = 0;
  virtual void Resize(std::size_t size) = 0;
  virtual void* At(std::size_t index) = 0;

  const RecordType* const elements;
};

/// A map from 32-bit numbers to 32-bit numbers, or to blocks if `blocks` is not null.
class MapRef {
 public:
  MapRef(const RecordType* blocks_, bool hasSignedKeys_, bool hasSignedValues_)
      : blocks(blocks_), hasSignedKeys(hasSignedKeys_), hasSignedValues(hasSignedValues_) {}
  virtual ~MapRef() = default;
  virtual std::size_t Size() const = 0;
  /// Visits the entries in key order; `value` points to the block or the number.
  virtual void ForEach(const std::function<void(std::int64_t key, void* value)>& visit) = 0;
  /// Returns the value under a key (its low 32 bits); creates it if needed.
  virtual void* Entry(std::int64_t key) = 0;
  /// Returns the key stored in a block.
  virtual std::int64_t KeyOf(const void* block) const = 0;

  const RecordType* const blocks;
  const bool hasSignedKeys;
  const bool hasSignedValues;
};

/// How a record is contained in another one.
enum class Embedding {
  kNested,   ///< a field
  kBase,     ///< a base record; its fields are fields of the outer record
  kBlock,    ///< a field written as its memory image
  kVirtual,  ///< a field that reads and writes itself through virtual functions
};

class RowVisitor {
 public:
  virtual ~RowVisitor() = default;
  virtual void Number(const char* name, NumberRef field) = 0;
  virtual void Code(const char* name, NumberRef field) = 0;
  virtual void Tag(const char* name, NumberRef field, const TagTable& tags) = 0;
  virtual void Text(const char* name, std::string& field) = 0;
  virtual void List(const char* name, ListRef& items) = 0;
  virtual void Map(const char* name, MapRef& entries) = 0;
  virtual void Reserved(const char* name, void* bytes, std::size_t count) = 0;
  virtual void Record(const char* name, const RecordType& type, void* record, Embedding as) = 0;
  /// Returns whether to walk the next row, which is on the wire only if `holds` is true.
  virtual bool OnlyIf(const Condition& condition, bool holds) = 0;
};

}  // namespace zvuti::wire
