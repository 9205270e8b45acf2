#pragma once
// The subcommands of the command-line program. Each takes its own arguments (after the
// subcommand's name) and gives the process exit code: 0 done, 1 a file or data problem (told on
// stderr as FILE:LINE: REASON), 2 a usage error.

#include <filesystem>
#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "frame/ProgramFolders.h"

namespace koru {

class ProgramStrings;
}

namespace koru::cli {

struct Context {
  std::vector<std::string> args;
  std::ostream& out;
  std::ostream& err;
  std::optional<std::filesystem::path> root;  // --root DIR: the folder that holds SITES/
  std::filesystem::path executable;
  const ProgramStrings* strings = nullptr;    // the texts of --lang (English by default)
};

inline constexpr int kExitOk = 0;
inline constexpr int kExitDataError = 1;
inline constexpr int kExitUsage = 2;

int runDmtCommand(Context& context);
int runSiteCommand(Context& context);
int runVerticalCommand(Context& context);
int runDissipationCommand(Context& context);
int runSeismogramCommand(Context& context);

}  // namespace koru::cli

namespace koru::cli {
// The running program's own path (for the files shipped beside it).
std::filesystem::path executablePath(const char* argv0);
// The user's home folder ($HOME), or empty.
std::filesystem::path homeFolder();
}  // namespace koru::cli
