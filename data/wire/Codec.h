// The wire engine: converts a record's structure to bytes and back.
//
// A record has one row list, written with ZV_ROWS in its source. Everything else is a walk over that list:
// the writer, the reader, the size, and what Describe.h lists, dumps and fills. docs/adding-a-record.md
// adds a record step by step.
//
// The kinds of rows, as calls on a visitor `v`:
//   v.bits8 bits16 bits32 bits64   an integer, signed or not; the field has exactly that width
//   v.packedTime                   an unsigned 32-bit integer that is a packed time
//   v.code                         a 32-bit field that travels as one byte
//   v.tag                          a tagged enumeration; kTags<E> holds its tags
//   v.text                         std::string, after a 16-bit count
//   v.list                         std::vector of texts, records or blocks, after a 16-bit count
//   v.map                          map of 32-bit numbers, after a 32-bit count
//   v.blockMap(name, map, &Block::Key)   map of blocks that hold their own key
//   v.block64                      a block of 64 bytes
//   v.record                       a nested record
//   v.base(BaseOf<B>(r))           the record that this one extends
//   v.virtualPart                  a part with virtual Read and Write
//   v.reserved                     unused bytes, in a block's list only
//   v.local                        a field that does not travel, but counts when records are compared
//   v.onlyIf(condition, r, &R::Holds)    before one row of fixed width, which travels only if R::Holds says
//   so;
//                                        the condition says the same to whoever lists the rows:
//
//     if (v.onlyIf({"ItemKey", RowComparison::kLess, 1'000'000'000}, r, &ItemRecord::HasCountOnWire)) {
//       v.bits32(ZV_ROW(Count));
//     } else if constexpr (V::kReads) {
//       r.SetCount(1);
//     }
//
// A block (ZV_BLOCK_ROWS) travels as its memory image. It must have no padding, so gaps are fields. Its list
// is only used to show and fill it, and must follow the layout.
//
// A class that declares other stream operators uses ZV_CODEC instead of ZV_RECORD, and builds its operators
// from ReadRecord and WriteRecord. A record whose framing no list can express (CUtiBundleTable) reads with a
// Cursor and Codec<R>::Read, writes with WriteMeasured and Codec<R>::Put, and supplies a CustomFraming.
//
// Nothing here compares bytes with the documented format. Golden bytes made without the library do that for
// every record, and tests/records/AllRecords_test.cpp compares all records with literal field-by-field
// reading.
#pragma once

#include <algorithm>
#include <cstdint>
#include <new>
#include <type_traits>
#include <vector>

#include <ZvUtiLib/data/Cursor.h>

#include "data/wire/Comparer.h"
#include "data/wire/Reader.h"
#include "data/wire/RecordType.h"
#include "data/wire/Rows.h"
#include "data/wire/Sinks.h"
#include "data/wire/Walker.h"
#include "data/wire/Writer.h"

namespace zvuti::wire {

/// The name of a record type, known only in its own source.
template <class R>
inline constexpr const char* kName = nullptr;

/// Reads, writes and compares whole records. The members are compiled once, in the record's own source.
template <class R>
struct Codec {
  static const RecordType kType;

  static void Read(Cursor& cursor, R& record);
  static void ReadList(Cursor& cursor, std::vector<R>& records);

  static CountSink Put(CountSink sink, const R& record);
  static RawSink Put(RawSink sink, const R& record);
  static AppendSink Put(AppendSink sink, const R& record);
  static CountSink PutList(CountSink sink, const std::vector<R>& records);
  static RawSink PutList(RawSink sink, const std::vector<R>& records);
  static AppendSink PutList(AppendSink sink, const std::vector<R>& records);

  static bool AreEqual(const R& record, const R& other);

 private:
  template <class Sink>
  static Sink PutRows(Sink sink, const R& record);
  template <class Sink>
  static Sink PutRecords(Sink sink, const std::vector<R>& records);
};

template <class R>
void ReadRecord(CStreamReader& in, R& record) {
  Cursor cursor(in);
  Codec<R>::Read(cursor, record);
}

template <class R>
void ReadRecords(CStreamReader& in, std::vector<R>& records) {
  Cursor cursor(in);
  Codec<R>::ReadList(cursor, records);
}

template <class R>
void WriteRecord(CStreamWriter& out, const R& record) {
  if constexpr (kBlockBytes<R> != 0) {
    out.Append(&record, sizeof record);
  } else {
    const auto put = [&](auto sink) { return Codec<R>::Put(sink, record); };
    const CountSink count = put(CountSink{});
    if constexpr (kShape<R>.virtualParts > 0) {
      if (count.isOpen) {
        VirtualPartWriter<R> v(out, record);
        return Rows(v, record);
      }
    }
    WriteCounted(out, count, put);
  }
}

template <class R>
void WriteRecords(CStreamWriter& out, const std::vector<R>& records) {
  WriteMeasured(out, [&](auto sink) { return Codec<R>::PutList(sink, records); });
}

// Members of Codec are defined apart from the class and not inline, so that a source that only uses a
// record (ZV_EXTERN_RECORD) needs no list of it.

template <class R>
void Codec<R>::Read(Cursor& cursor, R& record) {
  if constexpr (kBlockBytes<R> != 0) {
    cursor.Take(&record, sizeof record);
  } else {
    Reader v(cursor, kShape<R>.runs);
    Rows(v, record);
  }
}

template <class R>
void Codec<R>::ReadList(Cursor& cursor, std::vector<R>& records) {
  std::uint16_t count = 0;
  cursor.Take(&count, sizeof count);
  if constexpr (kBlockBytes<R> != 0) {
    const std::size_t first = records.size();
    records.resize(first + count);
    cursor.Take(records.data() + first, std::min<std::size_t>(count, cursor.Left() / sizeof(R)) * sizeof(R));
  } else if constexpr (kShape<R>.rowsBetween == 0) {
    GrowBy(records, count, [&](std::size_t& done) {
      R* const first = records.data();  // for the compiler, writing a field could change `records`
      const std::size_t end = records.size();
      for (Reader v(cursor, kShape<R>.runs); done < end; ++done) {
        FetchAhead(first + done);
        v.Restart(kShape<R>.runs);
        Rows(v, first[done]);
      }
    });
  } else {
    GrowBy(records, count, [&](std::size_t& done) {
      R* const first = records.data();
      for (const std::size_t end = records.size(); done < end; ++done) {
        FetchAhead(first + done);
        Read(cursor, first[done]);
      }
    });
  }
}

template <class R>
bool Codec<R>::AreEqual(const R& record, const R& other) {
  Comparer v(record, other);
  Rows(v, record);
  return v.AreEqual();
}

template <class R>
template <class Sink>
Sink Codec<R>::PutRows(Sink sink, const R& record) {
  if constexpr (kBlockBytes<R> != 0) {
    sink.Put(&record, sizeof record);
    return sink;
  } else {
    Writer v(sink);
    Rows(v, record);
    return v.Done();
  }
}

template <class R>
template <class Sink>
Sink Codec<R>::PutRecords(Sink sink, const std::vector<R>& records) {
  const auto count = static_cast<std::uint16_t>(records.size());
  sink.Put(&count, sizeof count);
  const R* const first = records.data();
  for (std::uint16_t i = 0; i < count; ++i) {
    if constexpr (std::is_same_v<Sink, CountSink>) {
      sink.Add(Put(CountSink(), first[i]));  // counted by itself, a record does not wait for those before it
    } else {
      sink = Put(sink, first[i]);
    }
  }
  return sink;
}

template <class R>
CountSink Codec<R>::Put(CountSink sink, const R& record) {
  return PutRows(sink, record);
}
template <class R>
RawSink Codec<R>::Put(RawSink sink, const R& record) {
  return PutRows(sink, record);
}
template <class R>
AppendSink Codec<R>::Put(AppendSink sink, const R& record) {
  return PutRows(sink, record);
}
template <class R>
CountSink Codec<R>::PutList(CountSink sink, const std::vector<R>& records) {
  return PutRecords(sink, records);
}
template <class R>
RawSink Codec<R>::PutList(RawSink sink, const std::vector<R>& records) {
  return PutRecords(sink, records);
}
template <class R>
AppendSink Codec<R>::PutList(AppendSink sink, const std::vector<R>& records) {
  return PutRecords(sink, records);
}

/// The type of a record whose stream operators are visible here.
template <class R>
constexpr RecordType TypeOf(const char* name, std::size_t blockBytes, void (*walk)(RowVisitor&, void*),
                            const CustomFraming* framing) {
  return {name,
          blockBytes,
          [] { return RecordType::Object(new R(), [](void* record) { delete static_cast<R*>(record); }); },
          [](CStreamReader& in, void* record) { in >> *static_cast<R*>(record); },
          [](CStreamWriter& out, const void* record) { out << *static_cast<const R*>(record); },
          [](const void* record, const void* other) {
            return Codec<R>::AreEqual(*static_cast<const R*>(record), *static_cast<const R*>(other));
          },
          walk,
          framing};
}

template <class R>
const RecordType Codec<R>::kType = TypeOf<R>(
    kName<R>, kBlockBytes<R>,
    [](RowVisitor& rows, void* record) {
      Walker v(rows);
      Rows(v, *static_cast<R*>(record));
    },
    nullptr);

}  // namespace zvuti::wire

// NOLINTBEGIN(bugprone-macro-parentheses): R is a type

/// Compiles what the engine does with a record, and the comparison that ZVUTILIB_VALUE declares.
#define ZV_CODEC(R)                                 \
  namespace zvuti {                                 \
  namespace wire {                                  \
  template <>                                       \
  inline constexpr const char* kName<R> = #R;       \
  template struct Codec<R>;                         \
  }                                                 \
  template <>                                       \
  bool AreEqual(const R& a, const R& b) {           \
    return ::zvuti::wire::Codec<R>::AreEqual(a, b); \
  }                                                 \
  }

/// The same, and the stream operators that ZVUTILIB_RECORD declares.
#define ZV_RECORD(R)                                                             \
  ZV_CODEC(R)                                                                    \
  CStreamWriter& operator<<(CStreamWriter& out, const R& record) {               \
    ::zvuti::wire::WriteRecord(out, record);                                     \
    return out;                                                                  \
  }                                                                              \
  CStreamReader& operator>>(CStreamReader& in, R& record) {                      \
    ::zvuti::wire::ReadRecord(in, record);                                       \
    return in;                                                                   \
  }                                                                              \
  CStreamWriter& operator<<(CStreamWriter& out, const std::vector<R>& records) { \
    ::zvuti::wire::WriteRecords(out, records);                                   \
    return out;                                                                  \
  }                                                                              \
  CStreamReader& operator>>(CStreamReader& in, std::vector<R>& records) {        \
    ::zvuti::wire::ReadRecords(in, records);                                     \
    return in;                                                                   \
  }

/// The pointer to a record's type, with a comma, for lists.
#define ZV_TYPE(R) &::zvuti::wire::Codec<R>::kType,

/// Compiles all records of a unit, and defines the function that lists them. RECORDS(X) expands to X(R) for
/// each record, the nested ones before those that hold them.
#define ZV_UNIT(unit, RECORDS)                     \
  RECORDS(ZV_RECORD)                               \
  namespace zvuti::wire {                          \
  RecordList unit() { return {RECORDS(ZV_TYPE)}; } \
  }

/// Announces a record whose rows are in another source, so that this one may nest it or hold it in a list.
#define ZV_EXTERN_RECORD(R)        \
  namespace zvuti::wire {          \
  extern template struct Codec<R>; \
  }

// NOLINTEND(bugprone-macro-parentheses)
