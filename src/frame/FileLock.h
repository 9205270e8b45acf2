#pragma once
// An exclusive advisory lock (flock) on a lock file, held for the life of the object. Programs
// that change the same data take the lock on the same file and so run one after the other; the
// system drops the lock of a process that dies, so a killed program never blocks the others.
//
// The lock is waited for a bounded time, polling; then the object is not locked() and why()
// says so. The lock file is created if missing and never removed (removing it would let two
// programs lock two different files). Locks on the same file taken again in the same process
// nest: the file stays locked until the outermost one is released. A lock is not handed to a
// child process.

#include <chrono>
#include <filesystem>
#include <string>

#include "frame/Diagnostic.h"

namespace koru {

class FileLock {
 public:
  static constexpr std::chrono::milliseconds kDefaultWait{10000};

  // `busyText` is the reason given when the wait ran out.
  explicit FileLock(std::filesystem::path lockFile, std::string busyText = "is in use by another program; try again",
                    std::chrono::milliseconds wait = kDefaultWait);
  ~FileLock();
  FileLock(FileLock&& other) noexcept;
  FileLock& operator=(FileLock&&) = delete;
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

  bool locked() const { return held_; }
  // Why the lock could not be taken (the lock file and the reason).
  const Diagnostic& why() const { return why_; }

 private:
  std::string key_;
  bool held_ = false;
  Diagnostic why_;
};

}  // namespace koru
