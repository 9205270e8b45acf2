// koru: the command line of KORU Desk. Evaluates, exports, plots and reports on test files and
// sites without the desktop program.

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "commands.h"
#include "console_prompts.h"
#include "frame/ProgramFolders.h"
#include "frame/strings/Language.h"
#include "usage.h"

namespace {

// A language is a file of the Language folder, named in any case. English is always known: every
// language falls back on it, and a missing English file is told as such when it is loaded.
bool isKnownLanguage(const std::vector<std::string>& languages, const std::string& language) {
  const std::string upper = koru::upperCaseLatin(language);
  return upper == "ENGLISH" || std::any_of(languages.begin(), languages.end(), [&](const std::string& name) {
           return koru::upperCaseLatin(name) == upper;
         });
}

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
      koru::cli::writeUsage(std::cout);
      return koru::cli::kExitOk;
    } else if (arg == "--version") {
      std::cout << "koru " << KORU_VERSION << '\n';
      return koru::cli::kExitOk;
    } else {
      rest.push_back(arg);
    }
  }
  if (rest.empty()) {
    koru::cli::writeUsage(std::cerr);
    return koru::cli::kExitUsage;
  }
  context.executable = koru::cli::executablePath(argv[0]);
  const auto folders = koru::ProgramFolders::locate(context.executable, context.root, koru::cli::homeFolder(),
                                                     KORU_SOURCE_SHARE_DIR);
  koru::cli::ConsolePrompts prompts(std::cerr);
  koru::ProgramStrings strings(prompts);
  const auto languages = koru::listLanguages(folders.shareDir);
  if (!isKnownLanguage(languages, language)) {
    std::cerr << "koru: no language '" << language << "'; the languages are:";
    for (const auto& name : languages) std::cerr << ' ' << name;
    std::cerr << " (in " << (folders.shareDir / "Language").string() << ")\n";
    return koru::cli::kExitUsage;
  }
  if (koru::loadLanguage(strings, folders.shareDir, language).englishMissing) {
    std::cerr << koru::englishMissingProblem(folders.shareDir).toString() << '\n';
    return koru::cli::kExitDataError;
  }
  context.strings = &strings;

  const std::string command = rest.front();
  context.args.assign(rest.begin() + 1, rest.end());
  if (command == "help") return koru::cli::runHelp(context);
  if (command == "dmt") return koru::cli::runDmtCommand(context);
  if (command == "site") return koru::cli::runSiteCommand(context);
  if (command == "vertical") return koru::cli::runVerticalCommand(context);
  if (command == "dissipation") return koru::cli::runDissipationCommand(context);
  if (command == "seismogram") return koru::cli::runSeismogramCommand(context);
  std::cerr << "koru: unknown command '" << command << "'\n";
  koru::cli::writeUsage(std::cerr);
  return koru::cli::kExitUsage;
}
