#include <cstdlib>
#include <system_error>

#include "commands.h"

namespace koru::cli {

std::filesystem::path executablePath(const char* argv0) {
  std::error_code ec;
  auto self = std::filesystem::read_symlink("/proc/self/exe", ec);
  if (!ec) return self;
  return std::filesystem::absolute(argv0, ec);
}

std::filesystem::path homeFolder() {
  const char* home = std::getenv("HOME");
  return home ? std::filesystem::path(home) : std::filesystem::path();
}

}  // namespace koru::cli
