#include <ZvUtiLib/data/Containers.h>

#include "data/wire/Reader.h"
#include "data/wire/Writer.h"

namespace wire = zvuti::wire;

CStreamWriter& operator<<(CStreamWriter& out, const std::vector<std::string>& texts) {
  wire::WriteMeasured(out, [&](auto sink) { return wire::PutList(sink, texts); });
  return out;
}

CStreamReader& operator>>(CStreamReader& in, std::vector<std::string>& texts) {
  wire::Cursor cursor(in);
  wire::TakeList(cursor, texts);
  return in;
}
