// koru: the command line of KORU Desk. Evaluates, exports, plots and reports on test files and
// sites without the desktop program.

#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "commands.h"
#include "console_prompts.h"
#include "frame/ProgramFolders.h"
#include "frame/strings/Language.h"

namespace {

constexpr const char* kUsage =
    "usage: koru [--root DIR] COMMAND ...\n"
    "\n"
    "  koru dmt eval FILE.dat [--set NAME=VALUE]... [--table] [--allow-partial]\n"
    "      evaluate a DMT test; CSV on stdout (--table: a readable table)\n"
    "  koru dmt save IN.dat OUT.dat\n"
    "      load a DMT test and save it in the program's own form\n"
    "  koru dmt uni IN.dat OUT.uni [--set NAME=VALUE]...\n"
    "      the evaluated test as a DMTUNI92 exchange file\n"
    "\n"
    "  koru site list                      sites with their names (CSV)\n"
    "  koru site create NAME               a new site; prints its folder\n"
    "  koru site uni SITE_n --out DIR      a DMTUNI92 file for each DMT test of the site\n"
    "  koru vertical create SITE_n [NAME]  a new vertical; prints its folder\n"
    "  koru vertical list SITE_n           the verticals in the site's order (CSV)\n"
    "  koru vertical show SITE_n VERT_m    the vertical's header\n"
    "  koru vertical reorder SITE_n I...   a new order, by the indices of the list\n"
    "  koru vertical remove SITE_n VERT_m  delete a vertical with all its files\n"
    "  koru vertical eval SITE_n VERT_m [--set NAME=VALUE]... [--table]\n"
    "      the vertical's DMT test evaluated with its own profiles, as dmt eval\n"
    "\n"
    "  koru vertical seismic SITE_n VERT_m --wave S|P\n"
    "      the depths of the seismic test: mean velocity, spread, best, good, bad, noise (CSV)\n"
    "  koru vertical stats SITE_n VERT_m   statistics of each parameter and its best plot maximum\n"
    "  koru seismogram eval FILE.kor [--elab TEXT]\n"
    "      delay and velocity of one strike, with the default or the given elaboration (CSV)\n"
    "  koru seismogram show FILE.kor       the strike's header, means, extremes and scale\n"
    "\n"
    "  koru dissipation eval FILE.dis      Tflex, Ch and Kh of a dissipation test (CSV)\n"
    "  koru dissipation report FILE.dis    the checks of the Tflex interpretation\n"
    "\n"
    "  --root DIR   the folder that holds SITES/ (default: ~/KORU)\n"
    "  --lang NAME  language of the texts: English (default), Italiano, French\n";

}  // namespace

int main(int argc, char** argv) {
  koru::cli::Context context{{}, std::cout, std::cerr, std::nullopt, argv[0]};
  std::vector<std::string> rest;
  std::string language = "English";
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg == "--lang") {
      if (i + 1 >= argc) {
        std::cerr << "koru: --lang needs a language name\n";
        return koru::cli::kExitUsage;
      }
      language = argv[++i];
    } else if (arg == "--root") {
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
  context.executable = koru::cli::executablePath(argv[0]);
  const auto folders = koru::ProgramFolders::locate(context.executable, context.root, koru::cli::homeFolder(),
                                                     KORU_SOURCE_SHARE_DIR);
  koru::cli::ConsolePrompts prompts(std::cerr);
  koru::ProgramStrings strings(prompts);
  koru::loadLanguage(strings, folders.shareDir, language);
  context.strings = &strings;

  const std::string command = rest.front();
  context.args.assign(rest.begin() + 1, rest.end());
  if (command == "dmt") return koru::cli::runDmtCommand(context);
  if (command == "site") return koru::cli::runSiteCommand(context);
  if (command == "vertical") return koru::cli::runVerticalCommand(context);
  if (command == "dissipation") return koru::cli::runDissipationCommand(context);
  if (command == "seismogram") return koru::cli::runSeismogramCommand(context);
  std::cerr << "koru: unknown command '" << command << "'\n" << kUsage;
  return koru::cli::kExitUsage;
}
