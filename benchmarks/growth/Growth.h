// Inputs that grow: for each public operation, the shapes that might cost more than their size.
//
// A shape makes an input of about `size` bytes or elements, and the call that is measured on it at size,
// twice size and four times size. Shapes are named OPERATION/SHAPE; docs/reliability.md lists the operations.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace growth {

struct Work {
  std::size_t bytes;  ///< of the input
  std::function<void()> run;
};

/// Most instructions and bytes of memory for each byte of input, unless a shape says otherwise.
inline constexpr double kMostInstructions = 700;
inline constexpr double kMostMemory = 80;

struct Shape {
  const char* name;
  std::size_t size;
  Work (*make)(std::size_t size);
  double mostInstructions = kMostInstructions;
  double mostMemory = kMostMemory;
};

std::vector<Shape> TextShapes();
std::vector<Shape> DataShapes();
std::vector<Shape> RecordShapes();
std::vector<Shape> TableShapes();
std::vector<Shape> XmlShapes();

/// `piece` repeated until the text has at least `bytes` bytes.
inline std::string Filled(std::string_view piece, std::size_t bytes) {
  std::string text;
  while (text.size() < bytes) text += piece;
  return text;
}

/// Writes `bytes` to the file `name` in the program's folder, which is removed in the end, and returns its
/// path.
std::string WriteFile(const std::string& name, const std::string& bytes);

}  // namespace growth
