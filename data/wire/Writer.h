// Writer: the walk over a record's rows that writes them into a sink.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <vector>

#include "data/wire/Exactly.h"
#include "data/wire/Rows.h"
#include "data/wire/Sinks.h"

namespace zvuti::wire {

template <class Sink>
ZV_INLINE Sink PutText(Sink sink, const std::string& text) {
  const auto count = static_cast<std::uint16_t>(text.size());
  sink.Put(&count, sizeof count);
  if (count > 0) sink.Put(text.data(), count);
  return sink;
}

template <class Sink>
Sink PutList(Sink sink, const std::vector<std::string>& texts) {
  const auto count = static_cast<std::uint16_t>(texts.size());
  sink.Put(&count, sizeof count);
  for (std::uint16_t i = 0; i < count; ++i) sink = PutText(sink, texts[i]);
  return sink;
}

template <class Sink, class R>
Sink PutList(Sink sink, const std::vector<R>& records) {
  return Codec<R>::PutList(sink, records);
}

template <class Sink>
class Writer {
 public:
  static constexpr bool kReads = false;

  explicit Writer(Sink sink) : sink_(sink) {}
  Sink Done() const { return sink_; }

  template <class T>
  ZV_INLINE void bits8(const char*, const T& value) {
    Number<1>(value);
  }
  template <class T>
  ZV_INLINE void bits16(const char*, const T& value) {
    Number<2>(value);
  }
  template <class T>
  ZV_INLINE void bits32(const char*, const T& value) {
    Number<4>(value);
  }
  ZV_INLINE void packedTime(const char*, std::uint32_t value) { Number<4>(value); }
  template <class T>
  ZV_INLINE void bits64(const char*, const T& value) {
    Number<8>(value);
  }

  template <class T>
  ZV_INLINE void code(const char*, const T& value) {
    static_assert(sizeof(T) == 4, "a byte code is a 32-bit field");
    Number<1>(static_cast<std::uint8_t>(value));
  }

  template <class E>
  ZV_INLINE void tag(const char*, const E& member) {
    if (const std::uint32_t* tag = kTags<E>.TagOf(member)) {
      Number<4>(*tag);
    } else if (kTags<E>.unknownThrows) {
      sink_.Fail();
    }
  }

  ZV_INLINE void text(const char*, const std::string& value) { sink_ = PutText(sink_, value); }

  template <class T>
  void list(const char*, const std::vector<T>& items) {
    sink_ = PutList(sink_, items);
  }

  template <class Map>
  void map(const char*, const Map& entries) {
    Count32(entries.size());
    if constexpr (kCounts) {
      sink_.Put(nullptr, entries.size() * 8);
    } else {
      for (const auto& [key, value] : entries) {
        Number<4>(key);
        Number<4>(value);
      }
    }
  }

  template <class Map, class KeyOf>
  void blockMap(const char*, const Map& entries, KeyOf) {
    Count32(entries.size());
    if constexpr (kCounts) {
      sink_.Put(nullptr, entries.size() * sizeof(typename Map::mapped_type));
    } else {
      for (const auto& [key, block] : entries) Block<sizeof block>(block);
    }
  }

  template <class T>
  void block64(const char*, const T& block) {
    Block<64>(block);
  }

  template <class R>
  void record(const char*, const R& nested) {
    sink_ = Codec<R>::Put(sink_, nested);
  }
  template <class R>
  void base(const R& part) {
    sink_ = Codec<R>::Put(sink_, part);
  }

  template <class T>
  void virtualPart(const char*, const T& part) {
    if constexpr (std::is_same_v<Sink, AppendSink>) {
      *sink_.out << Present(part);
    } else if (IsExactly(part)) {
      sink_ = Codec<T>::Put(sink_, part);
    } else if constexpr (kCounts) {
      sink_.isOpen = true;  // so this record is never stored raw
    }
  }

  template <class T>
  ZV_INLINE void local(const char*, const T&) {}

  template <class R>
  ZV_INLINE bool onlyIf(const Condition&, const R& record, bool (R::*holds)() const) {
    return (record.*holds)();
  }

 protected:
  Sink sink_;

 private:
  // Walking a map costs more than writing it, so counting skips the walk.
  static constexpr bool kCounts = std::is_same_v<Sink, CountSink>;

  template <std::size_t kWidth, class T>
  ZV_INLINE void Number(const T& value) {
    static_assert(sizeof(T) == kWidth && kIsNumber<T>, "the field's width differs from the row's");
    sink_.Put(&value, kWidth);
  }
  template <std::size_t kWidth, class T>
  ZV_INLINE void Block(const T& block) {
    static_assert(kIsBlock<T, kWidth>);
    sink_.Put(&block, kWidth);
  }
  void Count32(std::size_t size) { Number<4>(static_cast<std::uint32_t>(size)); }
};

/// Writes a record that contains parts with a virtual Write. It reserves room up to the next such part, lets
/// the part append itself, then reserves room for the following rows.
template <class R>
class VirtualPartWriter : public Writer<AppendSink> {
 public:
  VirtualPartWriter(CStreamWriter& out, const R& record) : Writer(AppendSink{&out}), record_(record) {
    MakeRoom();
  }

  template <class T>
  void virtualPart(const char*, const T& part) {
    *sink_.out << Present(part);
    ++part_;
    MakeRoom();
  }

 private:
  // Counts the rows between two virtual parts.
  class Span : public Writer<CountSink> {
   public:
    explicit Span(int wanted) : Writer(CountSink{}), left_(wanted) {}
    template <class T>
    void virtualPart(const char*, const T&) {
      if (left_-- == 0) size_ = sink_.Total();
      sink_ = {};
    }
    std::uint64_t Size() const { return left_ < 0 ? size_ : sink_.Total(); }

   private:
    int left_;
    std::uint64_t size_ = 0;
  };

  // A failed allocation is not an error: fields are appended as far as memory allows.
  void MakeRoom() {
    Span span(part_);
    Rows(span, record_);
    constexpr std::uint64_t kLargest = std::numeric_limits<std::int32_t>::max();
    sink_.out->Reserve(static_cast<int>(std::min(span.Size(), kLargest)), GrowRounded);
  }

  const R& record_;
  int part_ = 0;
};

}  // namespace zvuti::wire
