#include <ZvUtiLib/data/CTextString.h>

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <utility>

#include "data/FormatMeasure.h"
#include "platform/FormatConversion.h"
#include "platform/Formatter.h"
#include "platform/PointsInto.h"

namespace {

using Chars = SizedAllocator<char>;

constexpr unsigned kLargest = CTextString::max_size();

/// Returns the capacity after growing to `needed` bytes: the next 16k + 15, or one and a half times the old
/// capacity if that is more, so that a string built piece by piece is rarely copied.
unsigned GrownCapacity(unsigned needed, unsigned capacity) {
  const unsigned rounded = needed | 15;
  const unsigned grown = rounded > kLargest ? needed : rounded;
  const unsigned half = capacity / 2;
  return grown / 3 < half && capacity <= kLargest - half ? capacity + half : grown;
}

void Copy(char* to, const char* from, std::size_t count) {
  if (count > 0) std::memcpy(to, from, count);
}

void Move(char* to, const char* from, std::size_t count) {
  if (count > 0) std::memmove(to, from, count);
}

}  // namespace

CTextString::CTextString(const char* text) : CTextString(View(text)) {}

CTextString::CTextString(std::string_view text) {
  const unsigned length = LengthAfter(0, text.size());
  Reserve(length);
  Copy(data(), text.data(), length);
  SetLength(length);
}

CTextString& CTextString::operator=(const char* text) {
  const std::string_view view = View(text);
  return Splice(0, length_, view.data(), view.size());
}

CTextString& CTextString::assign(const CTextString& other, unsigned position, unsigned count) {
  if (position > other.length_) throw std::out_of_range("CTextString::assign: position beyond the length");
  return assign(other.data() + position, std::min(count, other.length_ - position));
}

CTextString& CTextString::append(unsigned count, char fill) {
  const unsigned length = LengthAfter(0, count);
  Reserve(length);
  std::memset(data() + length_, fill, count);
  SetLength(length);
  return *this;
}

CTextString& CTextString::replace(unsigned position, unsigned count, const char* text, unsigned textCount) {
  if (position > length_) throw std::out_of_range("CTextString::replace: position beyond the length");
  return Splice(position, std::min(count, length_ - position), text, textCount);
}

unsigned CTextString::find(const char* text, unsigned position, unsigned count) const {
  const std::size_t found = View(*this).find(std::string_view(text, count), position);
  return found == std::string_view::npos ? npos : static_cast<unsigned>(found);
}

unsigned CTextString::find(const char* text, unsigned position) const {
  const std::size_t found = View(*this).find(View(text), position);
  return found == std::string_view::npos ? npos : static_cast<unsigned>(found);
}

char* CTextString::ResizeBuffer(unsigned length) {
  if (length > length_) {
    append(length - length_, '\0');
  } else {
    SetLength(length);
  }
  return data();
}

unsigned CTextString::ReplaceAll(const char* oldText, const char* newText) {
  std::string_view oldView = View(oldText);
  std::string_view newView = View(newText);
  if (oldView.empty()) return 0;

  // The capacity becomes what replacing one by one would produce, with one copy instead of many.
  unsigned count = 0;
  unsigned length = length_;
  unsigned room = capacity_;
  const auto removed = static_cast<unsigned>(std::min<std::size_t>(oldView.size(), length_));
  for (std::size_t at = 0; (at = View(*this).find(oldView, at)) != std::string_view::npos;
       at += oldView.size()) {
    if (newView.size() > kLargest - (length - removed)) throw std::length_error("CTextString too long");
    length = length - removed + static_cast<unsigned>(newView.size());
    if (length > room) room = GrownCapacity(length, room);
    ++count;
  }
  if (count == 0) return 0;

  CTextString oldCopy;
  CTextString newCopy;
  if (zvuti::PointsInto(*this, oldView.data())) oldView = oldCopy = CTextString(oldView);
  if (zvuti::PointsInto(*this, newView.data())) newView = newCopy = CTextString(newView);
  if (room > capacity_) MoveToBlock(room);

  // Moves the text to the end of the room and writes the result from the front. The result never overtakes
  // the text still to be read.
  char* to = data();
  char* from = to + (length > length_ ? length - length_ : 0);
  Move(from, to, length_);
  std::string_view rest(from, length_);
  for (unsigned i = 0; i < count; ++i) {
    const std::size_t kept = rest.find(oldView);
    Move(to, rest.data(), kept);
    Copy(to + kept, newView.data(), newView.size());
    to += kept + newView.size();
    rest.remove_prefix(kept + oldView.size());
  }
  Move(to, rest.data(), rest.size());
  SetLength(length);
  return count;
}

void CTextString::Format(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  zvuti::FormatArguments list(arguments);  // released on an exception too
  va_end(arguments);
  FormatV(format, list.list);
}

void CTextString::FormatV(const char* format, va_list arguments) {
  const zvuti::FormatMeasure measure = zvuti::MeasureFormat(format, arguments);
  CTextString rewritten;
  if (measure.hasLongLong) {
    rewritten = format;
    rewritten.ReplaceAll("%lld", "%I64d");
    format = rewritten.c_str();
  }
  if (measure.total > length_) Reserve(LengthAfter(length_, measure.total));

  zvuti::FormatArguments again(arguments);
  try {
    const std::size_t needed = zvuti::FormatBounded(data(), capacity_ + std::size_t{1}, format, arguments);
    if (needed > capacity_) {
      SetLength(0);  // nothing worth copying to the new block
      Reserve(LengthAfter(0, needed));
      zvuti::FormatBounded(data(), capacity_ + std::size_t{1}, format, again.list);
    }
  } catch (...) {
    SetLength(0);
    throw;
  }
  length_ = static_cast<unsigned>(std::strlen(data()));
}

void CTextString::Swap(CTextString& other) noexcept {
  std::swap(storage_, other.storage_);
  std::swap(length_, other.length_);
  std::swap(capacity_, other.capacity_);
}

unsigned CTextString::LengthAfter(unsigned removed, std::size_t added) const {
  const unsigned kept = length_ - removed;
  if (added > kLargest - kept) throw std::length_error("CTextString too long");
  return kept + static_cast<unsigned>(added);
}

void CTextString::MoveToBlock(unsigned capacity) {
  char* block = Chars().allocate(capacity + std::size_t{1});
  std::memcpy(block, data(), length_ + std::size_t{1});
  if (!IsInline()) Chars().deallocate(storage_.block, capacity_ + std::size_t{1});
  storage_.block = block;
  capacity_ = capacity;
}

void CTextString::Reserve(unsigned length) {
  if (length > capacity_) MoveToBlock(GrownCapacity(length, capacity_));
}

CTextString& CTextString::Splice(unsigned position, unsigned removed, const char* text, std::size_t added) {
  const unsigned length = LengthAfter(removed, added);
  const std::size_t tailAt = std::size_t{position} + removed;
  const std::size_t tail = length_ - tailAt + 1;  // includes the terminator
  char* const bytes = data();

  if (length > capacity_) {
    const unsigned capacity = GrownCapacity(length, capacity_);
    char* block = Chars().allocate(capacity + std::size_t{1});
    Copy(block, bytes, position);
    Copy(block + position, text, added);
    Copy(block + position + added, bytes + tailAt, tail);
    if (!IsInline()) Chars().deallocate(storage_.block, capacity_ + std::size_t{1});
    storage_.block = block;
    capacity_ = capacity;
  } else if (added <= removed) {
    Move(bytes + position, text, added);
    Move(bytes + position + added, bytes + tailAt, tail);
  } else {
    // A text inside this string has a part before the tail, which stays in place, and a part in the tail,
    // which moves.
    const std::size_t shift = added - removed;
    const bool isOwn = zvuti::PointsInto(*this, text);
    const auto offset = isOwn ? static_cast<std::size_t>(text - bytes) : 0;
    const std::size_t staying = !isOwn ? added : offset >= tailAt ? 0 : std::min(added, tailAt - offset);
    Move(bytes + tailAt + shift, bytes + tailAt, tail);
    Move(bytes + position, text, staying);
    if (staying < added) Move(bytes + position + staying, text + staying + shift, added - staying);
  }
  length_ = length;
  return *this;
}
