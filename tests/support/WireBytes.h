// The bytes of a buffer, and those that a value writes to a stream.
#pragma once

#include <string>

#include <ZvUtiLib/data/CStream.h>

namespace test {

inline std::string Bytes(const CByteBuffer& buffer) {
  return {reinterpret_cast<const char*>(buffer.Data()), static_cast<std::size_t>(buffer.Length())};
}

template <class T>
std::string Written(const T& value) {
  CStreamReader stream;
  stream << value;
  return Bytes(stream);
}

}  // namespace test
