#pragma once
// What every fuzz target does first: put the bytes it was given into a file, since the readers
// under test read files. Each process has its own scratch folder, reused for every input.

#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

namespace koru::fuzzing {

// <temp>/koru-fuzz-<target>-<pid>/<name>, the folder made on first use.
inline std::filesystem::path scratchFile(std::string_view target, std::string_view name) {
  const auto folder =
      std::filesystem::temp_directory_path() / ("koru-fuzz-" + std::string(target) + "-" + std::to_string(::getpid()));
  std::error_code ec;
  std::filesystem::create_directories(folder, ec);
  return folder / std::string(name);
}

// False if the file could not be written whole (the input is then skipped).
inline bool writeInput(const std::filesystem::path& file, const uint8_t* data, size_t size) {
  std::FILE* f = std::fopen(file.c_str(), "wb");
  if (!f) return false;
  const bool ok = size == 0 || std::fwrite(data, 1, size, f) == size;
  return std::fclose(f) == 0 && ok;
}

}  // namespace koru::fuzzing
