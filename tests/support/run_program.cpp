#include "run_program.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <poll.h>

namespace koru::testing {

ProgramRun runProgram(const std::string& program, const std::vector<std::string>& args) {
  ProgramRun run;
  int outPipe[2], errPipe[2];
  if (::pipe(outPipe) != 0 || ::pipe(errPipe) != 0) return run;
  pid_t pid = ::fork();
  if (pid == 0) {
    ::dup2(outPipe[1], 1);
    ::dup2(errPipe[1], 2);
    ::close(outPipe[0]);
    ::close(errPipe[0]);
    std::vector<char*> argv;
    argv.push_back(const_cast<char*>(program.c_str()));
    for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    ::execv(program.c_str(), argv.data());
    ::_exit(127);
  }
  ::close(outPipe[1]);
  ::close(errPipe[1]);
  pollfd fds[2] = {{outPipe[0], POLLIN, 0}, {errPipe[0], POLLIN, 0}};
  int open = 2;
  char buf[4096];
  while (open > 0) {
    if (::poll(fds, 2, -1) < 0) break;
    for (int i = 0; i < 2; ++i) {
      if (fds[i].fd < 0 || !(fds[i].revents & (POLLIN | POLLHUP))) continue;
      ssize_t n = ::read(fds[i].fd, buf, sizeof buf);
      if (n <= 0) {
        ::close(fds[i].fd);
        fds[i].fd = -1;
        --open;
      } else {
        (i == 0 ? run.out : run.err).append(buf, static_cast<size_t>(n));
      }
    }
  }
  int status = 0;
  ::waitpid(pid, &status, 0);
  run.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return run;
}

}  // namespace koru::testing
