#pragma once
// Runs one of the project's programs and captures what it prints, for end-to-end tests.

#include <string>
#include <vector>

namespace koru::testing {

struct ProgramRun {
  int exitCode = -1;
  std::string out, err;
};

// `program` is a path; arguments are passed as they are, without a shell.
ProgramRun runProgram(const std::string& program, const std::vector<std::string>& args);

}  // namespace koru::testing
