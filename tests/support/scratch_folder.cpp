#include "scratch_folder.h"

#include <atomic>
#include <fstream>
#include <iterator>
#include <random>
#include <unistd.h>

namespace koru::testing {

ScratchFolder::ScratchFolder() {
  static std::atomic<int> counter{0};
  std::random_device rd;
  path_ = std::filesystem::temp_directory_path() /
          ("koru-test-" + std::to_string(::getpid()) + "-" + std::to_string(counter++) + "-" + std::to_string(rd()));
  std::filesystem::create_directories(path_);
}

ScratchFolder::~ScratchFolder() {
  std::error_code ec;
  std::filesystem::remove_all(path_, ec);
}

std::filesystem::path ScratchFolder::write(std::string_view name, std::string_view bytes) const {
  auto file = path_ / name;
  std::filesystem::create_directories(file.parent_path());
  std::ofstream out(file, std::ios::binary);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return file;
}

std::string ScratchFolder::read(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

}  // namespace koru::testing
