#pragma once
// A fresh folder under the system's temp folder for one test, removed with everything in it
// when the test ends. Tests never touch the user's home or settings.

#include <filesystem>
#include <string>
#include <string_view>

namespace koru::testing {

class ScratchFolder {
 public:
  ScratchFolder();
  ~ScratchFolder();
  ScratchFolder(const ScratchFolder&) = delete;
  ScratchFolder& operator=(const ScratchFolder&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

  // Writes bytes exactly as given and returns the file's path.
  std::filesystem::path write(std::string_view name, std::string_view bytes) const;
  static std::string read(const std::filesystem::path& file);

 private:
  std::filesystem::path path_;
};

}  // namespace koru::testing
