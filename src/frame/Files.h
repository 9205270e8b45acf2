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

// Writes the bytes to a temporary file beside the target and renames it over the target, so a
// failed save never destroys the previous good file.
bool writeFileAtomically(const std::filesystem::path& path, std::string_view bytes, Diagnostic* error = nullptr);

// One file of a save that writes several together.
struct FileContent {
  std::filesystem::path path;
  std::string bytes;
};
// Writes files that belong together (a test and its thrust readings): every temporary is
// written first, and only when all are on disk are they renamed into place. If any step fails,
// none of the files is replaced.
bool writeFilesTogether(const std::vector<FileContent>& files, Diagnostic* error = nullptr);

}  // namespace koru
