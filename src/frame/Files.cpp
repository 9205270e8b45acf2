#include "frame/Files.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <random>
#include <set>
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

namespace {

TemporaryNameSource nameSource = nullptr;

constexpr std::string_view kTemporaryEnd = ".tmp~";
// Long enough for any save of this program's small files to finish, even on a slow stick.
constexpr auto kStaleAge = std::chrono::minutes(10);
constexpr int kNameAttempts = 100;

std::string systemError(std::string_view what, int err) { return std::string(what) + ": " + std::strerror(err); }

std::string randomPart() {
  if (nameSource) return nameSource();
  std::uint64_t value = 0;
  if (::getrandom(&value, sizeof value, GRND_NONBLOCK) != static_cast<ssize_t>(sizeof value)) {
    std::random_device device;
    value = (std::uint64_t{device()} << 32) ^ device();
  }
  char text[17];
  std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(value));
  return text;
}

fs::path folderOf(const fs::path& file) {
  fs::path folder = file.parent_path();
  return folder.empty() ? fs::path(".") : folder;
}

fs::path temporaryName(const fs::path& target) {
  fs::path temp = target;
  temp += "." + std::to_string(::getpid()) + "-" + randomPart() + std::string(kTemporaryEnd);
  return temp;
}

// Creates a temporary beside the target under a fresh name. O_EXCL with O_NOFOLLOW means that
// whatever already stands at a name, a planted symbolic link included, is never opened.
int createTemporary(const fs::path& target, fs::path& temp, std::string& reason) {
  for (int attempt = 0; attempt < kNameAttempts; ++attempt) {
    temp = temporaryName(target);
    const int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0644);
    if (fd >= 0) return fd;
    if (errno != EEXIST && errno != EINTR && errno != ELOOP) {
      reason = systemError("cannot create a temporary file", errno);
      return -1;
    }
  }
  reason = "cannot create a temporary file: every name tried is taken";
  return -1;
}

bool writeAll(int fd, std::string_view bytes, std::string& reason) {
  while (!bytes.empty()) {
    const ssize_t n = ::write(fd, bytes.data(), bytes.size());
    if (n < 0) {
      if (errno == EINTR) continue;
      reason = systemError("write failed", errno);
      return false;
    }
    bytes.remove_prefix(static_cast<size_t>(n));
  }
  return true;
}

// Writes and flushes a whole temporary for the target. On failure nothing is left behind.
bool writeTemporary(const fs::path& target, std::string_view bytes, fs::path& temp, std::string& reason) {
  const int fd = createTemporary(target, temp, reason);
  if (fd < 0) return false;
  bool ok = writeAll(fd, bytes, reason);
  if (ok && ::fsync(fd) != 0) {
    reason = systemError("cannot flush the file to the disk", errno);
    ok = false;
  }
  // Linux releases the descriptor even when close reports an error, so it is never retried.
  if (::close(fd) != 0 && ok) {
    reason = systemError("cannot close the file", errno);
    ok = false;
  }
  if (!ok) ::unlink(temp.c_str());
  return ok;
}

// A rename is on the disk only once its folder is. Some file systems cannot flush a folder;
// the rename stands all the same, so that is no failure of the save.
void flushFolder(const fs::path& folder) {
  const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return;
  ::fsync(fd);
  ::close(fd);
}

// The process number in "<name>.<pid>-<random>.tmp~", if the name has one.
std::optional<pid_t> temporaryOwner(std::string_view name) {
  name.remove_suffix(kTemporaryEnd.size());
  const size_t dash = name.rfind('-');
  if (dash == std::string_view::npos) return std::nullopt;
  const size_t dot = name.rfind('.', dash);
  if (dot == std::string_view::npos) return std::nullopt;
  const std::string_view digits = name.substr(dot + 1, dash - dot - 1);
  if (digits.empty() || digits.size() > 9) return std::nullopt;
  pid_t pid = 0;
  for (char c : digits) {
    if (c < '0' || c > '9') return std::nullopt;
    pid = pid * 10 + (c - '0');
  }
  return pid;
}

bool processIsGone(pid_t pid) { return pid > 0 && pid != ::getpid() && ::kill(pid, 0) != 0 && errno == ESRCH; }

void cleanStaleTemporaries(const fs::path& folder) {
  std::error_code ec;
  const auto now = fs::file_time_type::clock::now();
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
    const std::string name = it->path().filename().string();
    if (name.size() <= kTemporaryEnd.size() || !name.ends_with(kTemporaryEnd)) continue;
    std::error_code stEc;
    if (!fs::is_regular_file(it->symlink_status(stEc))) continue;
    const auto written = fs::last_write_time(it->path(), stEc);
    const bool old = !stEc && now - written > kStaleAge;
    const auto owner = temporaryOwner(name);
    if (old || (owner && processIsGone(*owner))) ::unlink(it->path().c_str());
  }
}

// A second name for an existing target, so that it can be put back; a copy where the file
// system has no hard links.
bool keepAside(const fs::path& target, fs::path& backup, std::string& reason) {
  for (int attempt = 0; attempt < kNameAttempts; ++attempt) {
    backup = temporaryName(target);
    if (::link(target.c_str(), backup.c_str()) == 0) return true;
    if (errno == EEXIST || errno == EINTR) continue;
    if (errno != EPERM && errno != ENOTSUP && errno != EMLINK && errno != EXDEV && errno != ENOSYS) {
      reason = systemError("cannot keep the old file aside", errno);
      return false;
    }
    Diagnostic why;
    const auto bytes = readFileBytes(target, &why);
    if (!bytes) {
      reason = "cannot keep the old file aside: " + why.reason;
      return false;
    }
    return writeTemporary(target, *bytes, backup, reason);
  }
  reason = "cannot keep the old file aside: every name tried is taken";
  return false;
}

void removeFiles(const std::vector<fs::path>& files) {
  for (const fs::path& file : files)
    if (!file.empty()) ::unlink(file.c_str());
}

}  // namespace

void setTemporaryNameSource(TemporaryNameSource source) { nameSource = source; }

void removeStaleTemporaries(const fs::path& folder) { cleanStaleTemporaries(folder); }

bool writeFileAtomically(const fs::path& path, std::string_view bytes, Diagnostic* error) {
  const fs::path folder = folderOf(path);
  cleanStaleTemporaries(folder);
  fs::path temp;
  std::string reason;
  if (!writeTemporary(path, bytes, temp, reason)) {
    if (error) *error = {path, 0, reason};
    return false;
  }
  if (::rename(temp.c_str(), path.c_str()) != 0) {
    const int err = errno;
    ::unlink(temp.c_str());
    if (error) *error = {path, 0, systemError("cannot replace the file", err)};
    return false;
  }
  flushFolder(folder);
  return true;
}

bool writeFilesTogether(const std::vector<FileContent>& files, Diagnostic* error) {
  auto fail = [&](const fs::path& file, std::string reason) {
    if (error) *error = {file, 0, std::move(reason)};
    return false;
  };
  std::set<fs::path> folders;
  for (const FileContent& file : files) folders.insert(folderOf(file.path));
  for (const fs::path& folder : folders) cleanStaleTemporaries(folder);

  std::vector<fs::path> temps(files.size()), backups(files.size());
  std::string reason;
  for (size_t i = 0; i < files.size(); ++i) {
    if (!writeTemporary(files[i].path, files[i].bytes, temps[i], reason)) {
      temps[i].clear();
      removeFiles(temps);
      return fail(files[i].path, reason);
    }
  }
  for (size_t i = 0; i < files.size(); ++i) {
    struct stat st;
    if (::lstat(files[i].path.c_str(), &st) != 0) {
      if (errno == ENOENT) continue;  // a new file: nothing to keep
      reason = systemError("cannot inspect the old file", errno);
    } else if (keepAside(files[i].path, backups[i], reason)) {
      continue;
    }
    backups[i].clear();
    removeFiles(temps);
    removeFiles(backups);
    return fail(files[i].path, reason);
  }
  for (size_t i = 0; i < files.size(); ++i) {
    if (::rename(temps[i].c_str(), files[i].path.c_str()) == 0) continue;
    reason = systemError("cannot replace the file", errno);
    for (size_t j = 0; j < i; ++j) {
      const bool restored = backups[j].empty() ? ::unlink(files[j].path.c_str()) == 0
                                               : ::rename(backups[j].c_str(), files[j].path.c_str()) == 0;
      if (restored)
        backups[j].clear();
      else
        reason += "; " + systemError(files[j].path.filename().string() + " could not be put back", errno);
    }
    removeFiles(std::vector<fs::path>(temps.begin() + static_cast<std::ptrdiff_t>(i), temps.end()));
    removeFiles(backups);
    for (const fs::path& folder : folders) flushFolder(folder);
    return fail(files[i].path, reason);
  }
  removeFiles(backups);
  for (const fs::path& folder : folders) flushFolder(folder);
  return true;
}

}  // namespace koru
