#pragma once
// A file that was read only in part loses its unread rest at the next save over it. Before that
// save the original is copied beside it, so the user can still recover what the program could
// not read.

#include <filesystem>
#include <optional>

#include "frame/Diagnostic.h"

namespace koru {

// Copies `file` to "<name>.damaged" ("<name>.damaged2", ... when taken; an existing copy is never
// replaced). Gives the copy's path, an empty path when `file` does not exist (nothing to lose),
// or nullopt with `why` when no copy could be made: the save must not go on then.
std::optional<std::filesystem::path> keepDamagedCopy(const std::filesystem::path& file, Diagnostic* why = nullptr);

}  // namespace koru
