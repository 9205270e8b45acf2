#pragma once
// The two places the program keeps things. What ships with the program (language files, help)
// lies beside the executable or in the installation's share folder; what the user makes
// (SITES/, Temp/) lies under a data root, by default a folder in the user's home.

#include <filesystem>
#include <optional>

namespace koru {

struct ProgramFolders {
  std::filesystem::path shareDir;  // holds Language/ and Help/
  std::filesystem::path dataRoot;  // holds SITES/ and Temp/

  std::filesystem::path sitesPath() const { return dataRoot / "SITES"; }
  std::filesystem::path tempPath() const { return dataRoot / "Temp"; }

  // `executable` is the running program's path; `rootOverride` the user's --root; `home` the
  // user's home folder (empty: the current folder); `fallbackShare` a folder to try last.
  static ProgramFolders locate(const std::filesystem::path& executable,
                               const std::optional<std::filesystem::path>& rootOverride,
                               const std::filesystem::path& home,
                               const std::filesystem::path& fallbackShare = {});
};

}  // namespace koru
