#pragma once
// File and folder helpers. Paths inside data files and settings use "\" as the program always
// has; `portablePath` turns them into this platform's paths.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/Diagnostic.h"

namespace koru {

// True only if the path names a folder; a trailing separator is ignored.
bool folderExists(const std::filesystem::path& path);
bool fileExists(const std::filesystem::path& path);
// Creates the folder (and its parents) if `folderExists` is false; false if that failed.
bool ensureFolder(const std::filesystem::path& path);
// Drops one trailing "\" (or "/").
std::string stripBackslash(std::string_view path);
// "SITES\SITE_1\" relative text to a platform path, separators converted.
std::filesystem::path portablePath(std::string_view backslashPath);

// Whole file as bytes; on failure nullopt and, if asked, why.
std::optional<std::string> readFileBytes(const std::filesystem::path& path, Diagnostic* error = nullptr);

// Saves never write over a file in place. The bytes go to a fresh temporary file beside the
// target, named "<name>.<pid>-<random>.tmp~" and created exclusively (an existing name or a
// symbolic link planted at it is never opened), are flushed to the disk, and the temporary is
// renamed over the target; the folder is then flushed too. A failed save removes its temporary
// and leaves the previous file as it was; the reason carries the system's error text.
//
// A save killed midway leaves its temporary behind. Every save cleans the folder it writes to
// of such leftovers: a temporary whose process is gone, or one older than ten minutes (another
// computer's, or a process number used again), is removed. A name without a process number
// (an older program's "<name>.tmp~") is removed once ten minutes old.
bool writeFileAtomically(const std::filesystem::path& path, std::string_view bytes, Diagnostic* error = nullptr);
// The cleaning every save does, for a repair: the stale temporaries of the folder go.
void removeStaleTemporaries(const std::filesystem::path& folder);

// One file of a save that writes several together.
struct FileContent {
  std::filesystem::path path;
  std::string bytes;
};
// Writes files that belong together (a test and its thrust readings): every temporary is
// written and flushed first, and only when all are on disk are they renamed into place. If any
// of them cannot be written, none of the files is replaced. Before the renames each existing
// target is kept aside (a second name for it, or a copy where the file system has no hard
// links); if a rename fails, the targets already replaced get their old content back and new
// ones are removed. Only a process killed between the first and the last rename can leave some
// files new and some old; every file is still whole.
bool writeFilesTogether(const std::vector<FileContent>& files, Diagnostic* error = nullptr);

// For tests: the source of the random part of temporary names (nullptr: the system's).
using TemporaryNameSource = std::string (*)();
void setTemporaryNameSource(TemporaryNameSource source);

}  // namespace koru
