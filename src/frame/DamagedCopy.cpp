#include "frame/DamagedCopy.h"

#include <string>
#include <system_error>

namespace koru {

namespace fs = std::filesystem;

std::optional<fs::path> keepDamagedCopy(const fs::path& file, Diagnostic* why) {
  std::error_code ec;
  if (fs::symlink_status(file, ec).type() == fs::file_type::not_found) return fs::path();
  for (int k = 1; k <= 100; ++k) {
    fs::path backup = file;
    backup += ".damaged";
    if (k > 1) backup += std::to_string(k);
    if (fs::symlink_status(backup, ec).type() != fs::file_type::not_found) continue;
    // copy_options::none refuses to replace a copy that appeared in the meantime.
    if (fs::copy_file(file, backup, fs::copy_options::none, ec)) return backup;
    if (why) *why = {file, 0, "not saved: it was read only in part and the original could not be kept aside (" +
                                  ec.message() + ")"};
    return std::nullopt;
  }
  if (why) *why = {file, 0, "not saved: it was read only in part and there is no free name for a copy of it"};
  return std::nullopt;
}

}  // namespace koru
