#include "frame/Files.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <system_error>

namespace koru {

namespace fs = std::filesystem;

bool folderExists(const fs::path& path) {
  std::error_code ec;
  auto text = path.string();
  while (text.size() > 1 && (text.back() == '/' || text.back() == '\\')) text.pop_back();
  return !text.empty() && fs::is_directory(fs::path(text), ec);
}

bool fileExists(const fs::path& path) {
  std::error_code ec;
  return fs::is_regular_file(path, ec);
}

bool ensureFolder(const fs::path& path) {
  if (folderExists(path)) return true;
  std::error_code ec;
  fs::create_directories(path, ec);
  return folderExists(path);
}

std::string stripBackslash(std::string_view path) {
  if (!path.empty() && (path.back() == '\\' || path.back() == '/')) path.remove_suffix(1);
  return std::string(path);
}

fs::path portablePath(std::string_view backslashPath) {
  fs::path out;
  size_t start = 0;
  while (start <= backslashPath.size()) {
    size_t end = backslashPath.find_first_of("\\/", start);
    if (end == std::string_view::npos) end = backslashPath.size();
    if (end > start) out /= std::string(backslashPath.substr(start, end - start));
    start = end + 1;
  }
  return out;
}

std::optional<std::string> readFileBytes(const fs::path& path, Diagnostic* error) {
  std::error_code ec;
  if (fs::is_directory(path, ec)) {
    if (error) *error = {path, 0, "is a folder, not a file"};
    return std::nullopt;
  }
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    if (error) *error = {path, 0, fs::exists(path, ec) ? "cannot be opened for reading" : "file not found"};
    return std::nullopt;
  }
  std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (in.bad()) {
    if (error) *error = {path, 0, "read error"};
    return std::nullopt;
  }
  return bytes;
}

bool writeFileAtomically(const fs::path& path, std::string_view bytes, Diagnostic* error) {
  fs::path temp = path;
  temp += ".tmp~";
  {
    std::FILE* f = std::fopen(temp.c_str(), "wb");
    if (!f) {
      if (error) *error = {path, 0, std::string("cannot write: ") + std::strerror(errno)};
      return false;
    }
    bool ok = std::fwrite(bytes.data(), 1, bytes.size(), f) == bytes.size();
    ok = (std::fflush(f) == 0) && ok;
    ok = (std::fclose(f) == 0) && ok;
    if (!ok) {
      std::error_code ec;
      fs::remove(temp, ec);
      if (error) *error = {path, 0, "write failed (disk full?)"};
      return false;
    }
  }
  std::error_code ec;
  fs::rename(temp, path, ec);
  if (ec) {
    fs::remove(temp, ec);
    if (error) *error = {path, 0, "cannot replace the file: " + ec.message()};
    return false;
  }
  return true;
}

bool writeFilesTogether(const std::vector<FileContent>& files, Diagnostic* error) {
  // Simple form until temporaries are kept apart from the renames.
  for (const FileContent& file : files)
    if (!writeFileAtomically(file.path, file.bytes, error)) return false;
  return true;
}

}  // namespace koru
