#pragma once
// The language files of the program and the choice among them: which files there are, which one
// is in use, how a language other than the two complete ones borrows the English texts it lacks,
// and the labels of plot parameters.

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "frame/Diagnostic.h"
#include "frame/SettingsStore.h"
#include "frame/strings/StringTable.h"

namespace koru {

struct LanguageEntry;

// <share>/Language/<name>.h
std::filesystem::path languageFilePath(const std::filesystem::path& shareDir, std::string_view name);

// Names of the *.h files of <share>/Language, without the extension, sorted without regard to
// case. Empty when the folder is missing.
std::vector<std::string> listLanguages(const std::filesystem::path& shareDir);

struct LanguageLoadResult {
  bool fileRead = false;                // the chosen language's own file could be read
  // The English file could not be read though the language needed it (English itself, or a
  // language that borrows from it): the texts are only the language's own, if any, and nothing
  // was shown. The caller reports it with englishMissingProblem.
  bool englishMissing = false;
  std::vector<int16_t> missingIds;      // English ids the chosen file lacks, in order
  // With fewer than kMissingReportBoxLimit missing ids the report has been shown in a message
  // box; with more it is left here for the caller to show in a scrolling text window.
  std::string reportForWindow;
};

// Up to this many missing texts fit a message box.
inline constexpr size_t kMissingReportBoxLimit = 20;

// Fills the tables with the texts of language `name`. English and Italiano are complete and are
// read straight. Any other language is laid over the English texts: every English id that the
// file lacks, or that comes out of order in it, keeps its English text and is reported once.
// The strings' file path and language name are set to the chosen language.
LanguageLoadResult loadLanguage(ProgramStrings& strings, const std::filesystem::path& shareDir, std::string_view name);
// loadLanguage once the files are read: `own` the chosen language's entries, `english` the
// English ones (nullptr for a file that could not be read or is not needed). The strings' file
// path is left as it is.
LanguageLoadResult fillLanguage(ProgramStrings& strings, std::string_view name, const std::vector<LanguageEntry>* own,
                                const std::vector<LanguageEntry>* english);

// Why the texts of the program are incomplete when the English file is missing, naming that file.
Diagnostic englishMissingProblem(const std::filesystem::path& shareDir);

// The report of texts taken from English: a heading naming the language, an empty line, then
// one line per id, "<id>  <English text>".
std::string missingStringsReport(const StringTable& english, std::string_view language,
                                 const std::vector<int16_t>& missingIds);

struct LanguageChoice {
  std::string language;                // the language in use, also written back to the settings
  std::vector<std::string> languages;  // the languages found (after any renaming)
  bool showPicker = false;             // nothing was stored: the caller lets the user choose now
  LanguageLoadResult load;
};

// The choice of language at start: the "Language" key of section "General" names it, in upper
// or lower case, or by the numbers older versions stored (11 English, 20 Italiano). An unknown
// name whose file is missing falls back on English; nothing stored means English for now and
// the language picker. A French file still under its old name "Français.h" is renamed to
// "French.h". The language is loaded and written back to the key.
LanguageChoice chooseLanguageAtStart(ProgramStrings& strings, SettingsStore& settings,
                                     const std::filesystem::path& shareDir);

// Label of a plot parameter by its box code ("ID", "CU", "PHI", "KD", "K0", "ED", "OCR", "P2U0",
// "UD", "P0P1", "U0P2P0P1", "SIGMAH", "SIGMAV", "VS", "VP", "G0", in any case). An unknown code
// gives an empty text.
const std::string& plotLabel(const ProgramStrings& strings, std::string_view code);

// Upper case of UTF-8 text for comparisons: ASCII and the accented Latin letters that language
// names carry ("Français").
std::string upperCaseLatin(std::string_view text);

}  // namespace koru
