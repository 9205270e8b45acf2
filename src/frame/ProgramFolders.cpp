#include "frame/ProgramFolders.h"

#include "frame/Files.h"

namespace koru {

namespace fs = std::filesystem;

ProgramFolders ProgramFolders::locate(const fs::path& executable, const std::optional<fs::path>& rootOverride,
                                      const fs::path& home, const fs::path& fallbackShare) {
  ProgramFolders folders;
  const fs::path exeDir = executable.parent_path();
  const fs::path candidates[] = {exeDir, (exeDir / ".." / "share" / "koru").lexically_normal(), fallbackShare};
  for (const auto& candidate : candidates) {
    if (!candidate.empty() && folderExists(candidate / "Language")) {
      folders.shareDir = candidate.lexically_normal();
      break;
    }
  }
  if (folders.shareDir.empty()) folders.shareDir = exeDir;
  if (rootOverride) {
    folders.dataRoot = *rootOverride;
  } else {
    folders.dataRoot = (home.empty() ? fs::path(".") : home) / "KORU";
  }
  return folders;
}

}  // namespace koru
