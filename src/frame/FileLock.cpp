#include "frame/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

namespace koru {

namespace fs = std::filesystem;

namespace {

constexpr auto kPoll = std::chrono::milliseconds(20);

// flock belongs to an open file: a second open of the same file in this process would wait for
// the first. Nested locks therefore share one descriptor, counted here.
struct Held {
  int fd = -1;
  int count = 0;
};
std::mutex heldMutex;
std::map<std::string, Held>& heldLocks() {
  static std::map<std::string, Held> locks;
  return locks;
}

std::string keyOf(const fs::path& file) {
  std::error_code ec;
  const fs::path absolute = fs::absolute(file, ec);
  return (ec ? file : absolute).lexically_normal().string();
}

}  // namespace

FileLock::FileLock(fs::path lockFile, std::string busyText, std::chrono::milliseconds wait) : key_(keyOf(lockFile)) {
  std::lock_guard guard(heldMutex);
  auto& locks = heldLocks();
  if (auto it = locks.find(key_); it != locks.end()) {
    ++it->second.count;
    held_ = true;
    return;
  }
  const int fd = ::open(lockFile.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, 0644);
  if (fd < 0) {
    why_ = {lockFile, 0, std::string("cannot open the lock file: ") + std::strerror(errno)};
    return;
  }
  const auto deadline = std::chrono::steady_clock::now() + wait;
  while (::flock(fd, LOCK_EX | LOCK_NB) != 0) {
    const int err = errno;
    if (err == EINTR) continue;
    if (err != EWOULDBLOCK) {
      why_ = {lockFile, 0, std::string("cannot lock: ") + std::strerror(err)};
      ::close(fd);
      return;
    }
    if (std::chrono::steady_clock::now() >= deadline) {
      why_ = {lockFile, 0, std::move(busyText)};
      ::close(fd);
      return;
    }
    std::this_thread::sleep_for(kPoll);
  }
  locks[key_] = Held{fd, 1};
  held_ = true;
}

FileLock::FileLock(FileLock&& other) noexcept
    : key_(std::move(other.key_)), held_(std::exchange(other.held_, false)), why_(std::move(other.why_)) {}

FileLock::~FileLock() {
  if (!held_) return;
  std::lock_guard guard(heldMutex);
  auto& locks = heldLocks();
  const auto it = locks.find(key_);
  if (it == locks.end() || --it->second.count > 0) return;
  // Closing the only descriptor of the file releases the lock.
  ::close(it->second.fd);
  locks.erase(it);
}

}  // namespace koru
