#include <ZvUtiLib/platform/CString.h>

#include <algorithm>
#include <cstring>

#include "gbk/Ascii.h"
#include "gbk/CodePage936.h"
#include "platform/Formatter.h"

namespace {

std::string_view ViewOf(const char* text) { return text ? std::string_view(text) : std::string_view(); }

std::size_t CountOf(int length) { return length > 0 ? static_cast<std::size_t>(length) : 0; }

int IndexOf(std::size_t position) { return position == std::string::npos ? -1 : static_cast<int>(position); }

}  // namespace

CString::CString(const char* text) : text_(ViewOf(text)) {}
CString::CString(const char* text, int length) : text_(text ? text : "", text ? CountOf(length) : 0) {}
CString::CString(char fill, int count) : text_(CountOf(count), fill) {}

CString& CString::operator=(const char* text) {
  text_.assign(ViewOf(text));  // also works if `text` points into this string
  return *this;
}

CString CString::Left(int count) const { return CString(std::string_view(text_).substr(0, CountOf(count))); }

CString CString::Right(int count) const {
  const std::size_t kept = std::min(CountOf(count), text_.size());
  return CString(std::string_view(text_).substr(text_.size() - kept));
}

CString CString::Mid(int first) const {
  return CString(std::string_view(text_).substr(std::min(CountOf(first), text_.size())));
}

CString CString::Mid(int first, int count) const {
  return CString(std::string_view(text_).substr(std::min(CountOf(first), text_.size()), CountOf(count)));
}

CString& CString::operator+=(const CString& other) {
  text_ += other.text_;
  return *this;
}

CString& CString::operator+=(const char* text) {
  text_.append(ViewOf(text));
  return *this;
}

CString& CString::operator+=(char byte) {
  text_ += byte;
  return *this;
}

void CString::Append(const char* text, int length) {
  if (text) text_.append(text, CountOf(length));
}

int CString::Find(const char* word, int start) const {
  if (!word || start < 0) return -1;
  return IndexOf(zvuti::gbk::Find(text_, word, static_cast<std::size_t>(start)));
}

int CString::Find(char byte, int start) const {
  if (start < 0) return -1;
  return IndexOf(zvuti::gbk::Find(text_, std::string_view(&byte, 1), static_cast<std::size_t>(start)));
}

int CString::ReverseFind(char byte) const {
  int last = -1;
  for (int i = Find(byte); i >= 0;
       i = Find(byte, i + static_cast<int>(zvuti::gbk::CharLength(text_, static_cast<std::size_t>(i))))) {
    last = i;
  }
  return last;
}

CString& CString::MakeUpper() {
  zvuti::gbk::FoldToUpper(text_.data(), text_.size());
  return *this;
}

CString& CString::MakeLower() {
  zvuti::gbk::FoldToLower(text_.data(), text_.size());
  return *this;
}

CString& CString::Trim() {
  const auto end = std::find_if_not(text_.rbegin(), text_.rend(), zvuti::IsSpace).base();
  text_.erase(end, text_.end());
  text_.erase(text_.begin(), std::find_if_not(text_.begin(), text_.end(), zvuti::IsSpace));
  return *this;
}

int CString::Replace(char oldByte, char newByte) {
  int count = 0;
  for (std::size_t i = 0; i < text_.size();) {
    const std::size_t length = zvuti::gbk::CharLength(text_, i);
    if (length == 1 && text_[i] == oldByte) {
      text_[i] = newByte;
      ++count;
    }
    i += length;
  }
  return count;
}

void CString::Format(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  FormatV(format, arguments);
  va_end(arguments);
}

void CString::FormatV(const char* format, va_list arguments) {
  text_ = zvuti::FormatWhole(format, arguments);
}

int CString::Compare(const char* other) const { return std::string_view(text_).compare(ViewOf(other)); }

int CString::CompareNoCase(const char* other) const {
  return CString(*this).MakeUpper().Compare(CString(other).MakeUpper());
}

char* CString::GetBuffer(int length) {
  text_.resize(std::max(text_.size(), CountOf(length)));
  return text_.data();
}

void CString::ReleaseBuffer(int length) {
  text_.resize(length < 0 ? std::strlen(text_.c_str()) : CountOf(length));
}
