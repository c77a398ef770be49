// The bytes that a command works on, as people have them: binary, as text, or in a capture.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace tool {

struct Input {
  std::string file;
  bool isHex = false;
  std::vector<std::size_t> packets;  ///< whose payloads to join; none if the file is not a capture
};

/// Adds the options --hex and --packet to a command.
void AddInputOptions(CLI::App& command, Input& input);

/// Returns the bytes of an input. Throws Failure.
std::string ReadBytes(const Input& input);

}  // namespace tool
