// Properties: questions that the library answers alike on every system.
#pragma once

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace answers {

/// Random numbers and texts that are the same with every standard library.
class Random {
 public:
  explicit Random(unsigned seed) : numbers_(seed) {}

  unsigned Below(unsigned bound) { return static_cast<unsigned>(numbers_()) % bound; }
  std::uint64_t Word() {
    const std::uint64_t high = numbers_();
    return high << 32 | numbers_();
  }
  /// Any width, and small ones often.
  std::int64_t Number() { return static_cast<std::int64_t>(Word()) >> Below(64); }
  template <std::size_t n>
  const char* Of(const char* const (&texts)[n]) {
    return texts[Below(n)];
  }
  /// Up to `most` pieces out of `texts`.
  template <std::size_t n>
  std::string Text(const char* const (&texts)[n], unsigned most) {
    std::string text;
    for (unsigned left = Below(most + 1); left > 0; --left) text += Of(texts);
    return text;
  }
  std::string Bytes(unsigned most) {
    std::string bytes(Below(most + 1), '\0');
    for (char& byte : bytes) byte = static_cast<char>(Below(4) == 0 ? Below(4) : Below(256));
    return bytes;
  }

 private:
  std::mt19937 numbers_;
};

/// Collects inputs and answers.
class Report {
 public:
  Report& operator<<(std::string_view text) {
    text_.append(text) += '|';
    return *this;
  }
  Report& operator<<(const char* text) { return *this << std::string_view(text); }
  template <class T, std::enable_if_t<std::is_integral_v<T>, int> = 0>
  Report& operator<<(T number) {
    return *this << std::string_view(std::to_string(number));
  }
  /// All bits of the number.
  Report& operator<<(double number) {
    std::uint64_t bits;
    std::memcpy(&bits, &number, sizeof bits);
    return *this << bits;
  }
  const std::string& Text() const { return text_; }

 private:
  std::string text_;
};

struct Property {
  const char* name;
  void (*ask)(Random& random, Report& report);
};

std::vector<Property> AllProperties();

/// The input of this number and the answers to it. Throws std::bad_alloc only.
std::string Answer(const Property& property, unsigned number);

/// Asks for the answers to a generated document.
void AskXml(Random& random, Report& report);
/// Asks for those to any record, read from random bytes.
void AskRecords(Random& random, Report& report);
/// Asks for those to tables, lists and ini files of random content.
void AskFiles(Random& random, Report& report);

}  // namespace answers
