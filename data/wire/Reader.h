// Reader: the walk over a record's rows that fills it from a cursor.
//
// For any input, the record and the rest of the stream are as if each field had been read separately with
// CStreamReader::Read. The reader checks once, at the start of a run of fixed-width rows, that all bytes of
// the run are there. Only if they are not does each field check for itself.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

#include <ZvUtiLib/data/Cursor.h>

#include "data/wire/Exactly.h"
#include "data/wire/Rows.h"
#include "data/wire/Sinks.h"

namespace zvuti::wire {

/// The number of elements of a sequence that are made before they are filled. Those of a whole long sequence
/// would have left the nearest cache by then. Larger pieces are slower: while it makes elements, the
/// processor then waits for memory instead of filling others.
inline constexpr std::size_t kPiece = 32;

/// Asks for the memory of the elements that are made next, while the one at `element` is filled. It may lie
/// beyond the sequence, which has no effect.
ZV_INLINE void FetchAhead(const void* element) {
  constexpr std::uintptr_t kAhead = 3584;  // bytes; at 4096 loads would wait for the stores just made
  __builtin_prefetch(reinterpret_cast<const void*>(reinterpret_cast<std::uintptr_t>(element) + kAhead), 1);
}

/// Grows a sequence by `count` elements. `read` is called for each piece of them; it fills the elements from
/// its argument to the end of the sequence, and advances the argument. After an exception, the sequence has
/// the elements that reading one by one would have left.
template <class T, class Read>
void GrowBy(std::vector<T>& items, std::size_t count, Read read) {
  std::size_t done = items.size();
  const std::size_t end = done + count;
  // At least double: many small sequences may be read into one vector.
  if (end > items.capacity()) items.reserve(std::max(end, 2 * done));
  // Not in a destructor: if unwinding enters a loop, GCC 12 treats the stores of a Reader's destructor as
  // dead.
  try {
    while (done < end) {
      items.resize(std::min(end, done + kPiece));
      read(done);
    }
  } catch (...) {
    while (items.size() > done) items.pop_back();
    throw;
  }
}

void TakeList(Cursor& cursor, std::vector<std::string>& texts);

template <class R>
void TakeList(Cursor& cursor, std::vector<R>& records) {
  Codec<R>::ReadList(cursor, records);
}

class Reader {
 public:
  static constexpr bool kReads = true;

  /// `runs` are the runs of the record's shape.
  ZV_INLINE Reader(Cursor& cursor, const std::uint16_t* runs)
      : cursor_(cursor), at_(cursor.at), end_(cursor.end), runs_(runs) {
    StartRun();
  }
  ZV_INLINE ~Reader() { cursor_.at = at_; }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  /// Starts another record of the same type.
  ZV_INLINE void Restart(const std::uint16_t* runs) {
    word_ = 0;
    runs_ = runs;
    StartRun();
  }

  template <class T>
  ZV_INLINE void bits8(const char*, T& field) {
    Number<1>(field);
  }
  template <class T>
  ZV_INLINE void bits16(const char*, T& field) {
    Number<2>(field);
  }
  template <class T>
  ZV_INLINE void bits32(const char*, T& field) {
    Number<4>(field);
  }
  ZV_INLINE void packedTime(const char*, std::uint32_t& field) { Number<4>(field); }
  template <class T>
  ZV_INLINE void bits64(const char*, T& field) {
    Number<8>(field);
  }

  // The word is cleared once per record. If the bytes end between two codes, the second one gets the value of
  // the first.
  template <class T>
  ZV_INLINE void code(const char*, T& field) {
    static_assert(sizeof(T) == 4, "a byte code is a 32-bit field");
    auto byte = static_cast<std::uint8_t>(word_);
    TakeBytes<1>(&byte);
    word_ = byte;
    field = static_cast<T>(word_);
  }

  template <class E>
  ZV_INLINE void tag(const char*, E& field) {
    std::uint32_t word = 0;
    TakeBytes<4>(&word);
    const std::uint32_t member = kTags<E>.MemberOf(word);
    if (member < kTags<E>.count) {
      field = static_cast<E>(member);
    } else if (kTags<E>.unknownThrows) {
      throw UnknownMember();
    }
  }

  // Not inlined: records with many texts would make the compiler follow every path through all of them.
  void text(const char*, std::string& field) {
    std::uint16_t count = 0;
    TakeBytes<2>(&count);
    if (count > 0 && count <= Left()) {
      field.assign(reinterpret_cast<const char*>(at_), count);
      at_ += count;
    } else {
      field.resize(count);
    }
    StartRun();
  }

  template <class T>
  void list(const char*, std::vector<T>& items) {
    const Lend lend(*this);
    TakeList(cursor_, items);
  }

  template <class Map>
  void map(const char*, Map& entries) {
    const Lend lend(*this);
    TakeMap(cursor_, entries);
  }

  template <class Map, class KeyOf>
  void blockMap(const char*, Map& entries, KeyOf keyOf) {
    const Lend lend(*this);
    TakeBlockMap(cursor_, entries, keyOf);
  }

  template <class T>
  ZV_INLINE void block64(const char*, T& field) {
    Block<64>(field);
  }

  template <class R>
  void record(const char*, R& nested) {
    const Lend lend(*this);
    Codec<R>::Read(cursor_, nested);
  }
  template <class R>
  void base(R& part) {
    const Lend lend(*this);
    Codec<R>::Read(cursor_, part);
  }

  /// A part of a class derived from T reads from the stream itself, which then starts with the part's bytes.
  template <class T>
  void virtualPart(const char*, T& part) {
    const Lend lend(*this);
    if (IsExactly(part)) return Codec<T>::Read(cursor_, part);
    cursor_.Settle();
    struct Resumed {
      Cursor& cursor;
      ~Resumed() { cursor.Resume(); }
    } const resumed{cursor_};
    cursor_.Stream() >> Present(part);
  }

  template <class T>
  ZV_INLINE void local(const char*, T&) {}

  template <class R>
  ZV_INLINE bool onlyIf(const Condition&, const R& record, bool (R::*holds)() const) {
    return (record.*holds)();
  }

 private:
  // Stores the position in the cursor while other code reads, and loads it again afterwards.
  class Lend {
   public:
    ZV_INLINE explicit Lend(Reader& reader) : reader_(reader) { reader.cursor_.at = reader.at_; }
    ZV_INLINE ~Lend() {
      reader_.at_ = reader_.cursor_.at;
      reader_.end_ = reader_.cursor_.end;
      reader_.StartRun();
    }
    Lend(const Lend&) = delete;
    Lend& operator=(const Lend&) = delete;

   private:
    Reader& reader_;
  };

  ZV_INLINE std::size_t Left() const { return static_cast<std::size_t>(end_ - at_); }
  ZV_INLINE void StartRun() { isRoomy_ = Left() >= *runs_++; }

  template <std::size_t kBytes>
  ZV_INLINE void TakeBytes(void* out) {
    if (isRoomy_ || Left() >= kBytes) {
      std::memcpy(out, at_, kBytes);
      at_ += kBytes;
    }
  }
  template <std::size_t kWidth, class T>
  ZV_INLINE void Number(T& field) {
    static_assert(sizeof(T) == kWidth && kIsNumber<T>, "the field's width differs from the row's");
    TakeBytes<kWidth>(&field);
  }
  template <std::size_t kWidth, class T>
  ZV_INLINE void Block(T& field) {
    static_assert(kIsBlock<T, kWidth>);
    TakeBytes<kWidth>(&field);
  }

  Cursor& cursor_;
  const unsigned char* at_;
  const unsigned char* end_;
  const std::uint16_t* runs_;
  bool isRoomy_ = false;
  std::uint32_t word_ = 0;
};

inline void TakeList(Cursor& cursor, std::vector<std::string>& texts) {
  static constexpr std::uint16_t kRuns[] = {2, 0};
  std::uint16_t count = 0;
  cursor.Take(&count, sizeof count);
  GrowBy(texts, count, [&](std::size_t& done) {
    for (Reader v(cursor, kRuns); done < texts.size(); ++done) {
      v.Restart(kRuns);
      v.text("", texts[done]);
    }
  });
}

}  // namespace zvuti::wire
