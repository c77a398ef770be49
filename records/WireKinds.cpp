#include <ZvUtiLib/records/WireKinds.h>

#include <ZvUtiLib/data/Cursor.h>

#include "data/wire/Codec.h"
#include "records/WireTags.h"

namespace wire = zvuti::wire;

namespace {

template <class Kind>
CStreamWriter& Write(CStreamWriter& out, Kind kind) {
  wire::Writer(wire::AppendSink{&out}).tag("", kind);
  return out;
}

template <class Kind>
CStreamReader& Read(CStreamReader& in, Kind& kind) {
  constexpr std::uint16_t kRuns[] = {4};
  wire::Cursor cursor(in);
  wire::Reader(cursor, kRuns).tag("", kind);
  return in;
}

}  // namespace

CStreamWriter& operator<<(CStreamWriter& out, BinaryKind kind) { return Write(out, kind); }
CStreamReader& operator>>(CStreamReader& in, BinaryKind& kind) { return Read(in, kind); }
CStreamWriter& operator<<(CStreamWriter& out, StatusKind kind) { return Write(out, kind); }
CStreamReader& operator>>(CStreamReader& in, StatusKind& kind) { return Read(in, kind); }
