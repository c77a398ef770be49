// The wire engine: how a record gets from its structure to bytes and back.
//
// How a record is added
//   1. Its header under include/ZvUtiLib/records/ has the structure, with a default for every field in
//      declaration order, and `ZVUTILIB_RECORD(Name)`, which declares its stream operators.
//   2. Its source under records/ has the row list, in wire order:
//
//        namespace zvuti::wire {
//        ZV_ROWS(ItemRecord) {
//          v.i8(ZV_ROW(Tag));                   // 8, 16, 32, 64 bits: the field must have that width
//          v.i32(ZV_ROW(ItemKey));
//          if (v.onlyIf("ItemKey < 1000000000", r, &ItemRecord::HasCountOnWire)) {
//            v.i32(ZV_ROW(Count));              // one row per condition, of fixed width
//          } else if constexpr (V::kReads) {
//            r.SetCount(1);
//          }
//        }
//        }
//        ZV_RECORD(ItemRecord)
//
//   3. The list of its unit (see records/Units.h) names it: `&Codec<ItemRecord>::kType`.
//
// The rows
//   v.i8 i16 i32 i64   an integer                 v.code    a 32-bit field that goes as one byte
//   v.tag              a tagged enumeration, whose table is kTags<E>
//   v.text             std::string                v.list    std::vector of texts, records or blocks
//   v.map              map of 32-bit numbers      v.blockMap(name, map, &Block::Key)
//   v.block16 24 64    a block                    v.record  a nested record
//   v.base(BaseOf<B>(r))  the extended record     v.viaOperators  a part with virtual Read and Write,
//                                                     a record like others if it is of its very class
//   v.reserved         a gap, in the list of a block only
//
// A block goes as its memory image: `ZV_BLOCK(GrantEntry, 16)` in the place of ZV_RECORD. It must have
// no padding, so gaps are fields; its list is only for showing and filling and must follow the layout.
// A record that other sources nest, or hold in sequences, is announced there: ZV_FOREIGN(ItemRecord).
// A class whose operators are not these takes ZV_CODEC in the place of ZV_RECORD, and builds its own
// from ReadRecord and WriteRecord. In a source, lists and their ZV_ lines stand before those that use
// them. A record whose framing no list expresses reads with a Cursor and Codec<R>::Read, writes with
// WriteMeasured and Codec<R>::Put, and makes its RecordType by hand, with an OwnForm (see
// records/DescribeWalks.h) in the place of a walk.
//
// Nothing here compares bytes with the documented format: every record has a test with golden bytes.
// tests/records/AllRecords_test.cpp holds all listed records against literal field-by-field reading.
#pragma once

#include <algorithm>
#include <cstdint>
#include <new>
#include <type_traits>
#include <vector>

#include <ZvUtiLib/data/Cursor.h>

#include "data/wire/Reader.h"
#include "data/wire/RecordType.h"
#include "data/wire/Rows.h"
#include "data/wire/Sinks.h"
#include "data/wire/Walker.h"
#include "data/wire/Writer.h"

namespace zvuti::wire {

/// The name of a record type; known in its own source only.
template <class R>
inline constexpr const char* kName = nullptr;

/// The size of a block; 0 for what goes field by field.
template <class R>
inline constexpr std::size_t kBlockBytes = 0;

/// What is done with a whole record. The members are compiled once, in the record's own source.
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
    if constexpr (kShape<R>.openParts > 0) {
      if (count.isOpen) {
        OpenWriter<R> v(out, record);
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
// record (ZV_FOREIGN) needs no list of it.

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
        v.Restart(kShape<R>.runs);
        Rows(v, first[done]);
      }
    });
  } else {
    GrowBy(records, count, [&](std::size_t& done) {
      for (; done < records.size(); ++done) Read(cursor, records[done]);
    });
  }
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
                            const OwnForm* own) {
  return {name,
          blockBytes,
          [] { return RecordType::Object(new R(), [](void* record) { delete static_cast<R*>(record); }); },
          [](CStreamReader& in, void* record) { in >> *static_cast<R*>(record); },
          [](CStreamWriter& out, const void* record) { out << *static_cast<const R*>(record); },
          walk,
          own};
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

/// Compiles what the engine does with a record.
#define ZV_CODEC(R)                           \
  namespace zvuti::wire {                     \
  template <>                                 \
  inline constexpr const char* kName<R> = #R; \
  template struct Codec<R>;                   \
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

/// ZV_RECORD for a record that goes as its memory image of `bytes` bytes.
#define ZV_BLOCK(R, bytes)                             \
  namespace zvuti::wire {                              \
  static_assert(kIsBlock<R, bytes>);                   \
  template <>                                          \
  inline constexpr std::size_t kBlockBytes<R> = bytes; \
  }                                                    \
  ZV_RECORD(R)

/// Announces a record whose list stands in another source.
#define ZV_FOREIGN(R)              \
  namespace zvuti::wire {          \
  extern template struct Codec<R>; \
  }

// NOLINTEND(bugprone-macro-parentheses)
