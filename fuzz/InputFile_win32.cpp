#include "fuzz/InputFile.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>

namespace fuzz {

InputFile::InputFile()
    : path_((std::filesystem::temp_directory_path() / ("zvuti-" + std::to_string(std::random_device{}())))
                .string()) {
  Write({});
}

InputFile::~InputFile() { std::remove(path_.c_str()); }

void InputFile::Write(std::string_view bytes) const {
  std::ofstream file(path_, std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  Check(!file.flush().fail(), "the input can be written to its file");
}

void InputFile::AppearAs(const std::string& path) const { std::filesystem::create_hard_link(path_, path); }

}  // namespace fuzz
