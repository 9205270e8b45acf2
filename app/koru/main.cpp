// koru: the command line of KORU Desk. Evaluates, exports, plots and reports on test files and
// sites without the desktop program.

#include <iostream>
#include <string>
#include <vector>

#include "commands.h"

namespace {

constexpr const char* kUsage =
    "usage: koru [--root DIR] COMMAND ...\n"
    "\n"
    "  koru dmt eval FILE.dat [--set NAME=VALUE]... [--table] [--allow-partial]\n"
    "      evaluate a DMT test; CSV on stdout (--table: a readable table)\n"
    "  koru dmt save IN.dat OUT.dat\n"
    "      load a DMT test and save it in the program's own form\n"
    "\n"
    "  --root DIR   the folder that holds SITES/ (default: ~/KORU)\n";

}  // namespace

int main(int argc, char** argv) {
  koru::cli::Context context{{}, std::cout, std::cerr, std::nullopt, argv[0]};
  std::vector<std::string> rest;
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg == "--root") {
      if (i + 1 >= argc) {
        std::cerr << "koru: --root needs a folder\n";
        return koru::cli::kExitUsage;
      }
      context.root = argv[++i];
    } else if (arg == "--help" || arg == "-h") {
      std::cout << kUsage;
      return koru::cli::kExitOk;
    } else {
      rest.push_back(arg);
    }
  }
  if (rest.empty()) {
    std::cerr << kUsage;
    return koru::cli::kExitUsage;
  }
  const std::string command = rest.front();
  context.args.assign(rest.begin() + 1, rest.end());
  if (command == "dmt") return koru::cli::runDmtCommand(context);
  std::cerr << "koru: unknown command '" << command << "'\n" << kUsage;
  return koru::cli::kExitUsage;
}
