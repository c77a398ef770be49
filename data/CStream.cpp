#include <ZvUtiLib/data/CStream.h>
#include <ZvUtiLib/data/CTextString.h>
#include <ZvUtiLib/platform/CString.h>

#include <bit>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <string_view>
#include <utility>

#include "platform/PointsInto.h"

static_assert(std::endian::native == std::endian::little,
              "values travel as their memory image, which the format has in little-endian order");

namespace {

/// Writes a body that extends into the unused capacity of `out`. The count would overwrite it there, and a
/// new block would not contain it, so the body is copied first. If the copy can't be allocated, the body is
/// lost.
void WriteFromSpareRoom(CStreamWriter& out, const unsigned char* body, std::uint16_t count) {
  const std::unique_ptr<unsigned char[]> copy(new (std::nothrow) unsigned char[count]);
  if (copy) std::memcpy(copy.get(), body, count);
  out << count;
  if (copy) out.Write(copy.get(), count);
}

void WriteText(CStreamWriter& out, const void* body, std::size_t length) {
  const auto count = static_cast<std::uint16_t>(length);
  const auto* from = static_cast<const unsigned char*>(body);
  // Appending the count may move the stream's bytes, including a text that lies in them.
  const unsigned char* bytes = out.Data();
  const std::string_view room(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(out.Capacity()));
  const bool isInside = bytes && zvuti::PointsInto(room, static_cast<const char*>(body));
  const std::ptrdiff_t offset = isInside ? from - bytes : 0;
  if (isInside && count > 0 && offset + count > out.Length()) return WriteFromSpareRoom(out, from, count);
  out << count;
  if (count > 0) out.Write(isInside ? out.Data() + offset : from, count);
}

}  // namespace

CStreamReader::CStreamReader(const std::string& bytes) {
  if (bytes.size() <= std::numeric_limits<unsigned>::max()) {
    Append(bytes.data(), static_cast<unsigned>(bytes.size()));
  }
}

CStreamReader::CStreamReader(const void* bytes, unsigned count) { Append(bytes, count); }

void CStreamReader::Read(void* out, int count) {
  if (Length() < count || count <= 0) return;
  std::memmove(out, Data(), static_cast<std::size_t>(count));
  Drop(count);
}

void CStreamReader::Drop(int count) noexcept {
  const int rest = Length() - count;
  if (rest > 0) std::memmove(Data(), Data() + count, static_cast<std::size_t>(rest));
  SetLength(rest);
}

CStreamWriter& operator<<(CStreamWriter& out, const std::string& text) {
  WriteText(out, text.data(), text.size());
  return out;
}

CStreamWriter& operator<<(CStreamWriter& out, const char* text) {
  WriteText(out, text, std::strlen(text));
  return out;
}

CStreamWriter& operator<<(CStreamWriter& out, std::string_view text) {
  WriteText(out, text.data(), text.size());
  return out;
}

CStreamWriter& operator<<(CStreamWriter& out, const CTextString& text) {
  WriteText(out, text.c_str(), text.size());
  return out;
}

CStreamWriter& operator<<(CStreamWriter& out, const CByteBuffer& bytes) {
  WriteText(out, bytes.Data(), static_cast<std::size_t>(bytes.Length()));
  return out;
}

CStreamReader& operator>>(CStreamReader& in, std::string& text) {
  std::uint16_t count = 0;
  in >> count;
  text.resize(count);
  in.Read(text.data(), count);
  return in;
}

CStreamReader& operator>>(CStreamReader& in, CString& text) {
  std::string bytes(text.GetString(), static_cast<std::size_t>(text.GetLength()));
  in >> bytes;
  text = CString(std::move(bytes));
  return in;
}

CStreamReader& operator>>(CStreamReader& in, CTextString& text) {
  std::uint16_t count = 0;
  in >> count;
  if (count > 0) in.Read(text.ResizeBuffer(count), count);
  return in;
}

CStreamReader& operator>>(CStreamReader& in, CByteBuffer& bytes) {
  std::uint16_t count = 0;
  in >> count;
  if (count == 0) return in;
  bytes.SetLength(count);
  if (bytes.Length() == count) in.Read(bytes.Data(), count);
  return in;
}
