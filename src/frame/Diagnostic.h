#pragma once
// What went wrong with a file, for the user: which file, which line, and why.

#include <filesystem>
#include <string>

namespace koru {

struct Diagnostic {
  std::filesystem::path file;
  int line = 0;  // 1-based; 0 when the problem is not tied to a line
  std::string reason;

  // "FILE:LINE: REASON", or "FILE: REASON" without a line.
  std::string toString() const;
};

}  // namespace koru
