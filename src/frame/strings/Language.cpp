#include "frame/strings/Language.h"

#include <algorithm>
#include <array>
#include <optional>
#include <system_error>
#include <utility>

#include "frame/Files.h"
#include "frame/Numbers.h"
#include "frame/strings/LanguageFile.h"
#include "frame/strings/StringIds.h"
#include "frame/TextCodec.h"

namespace koru {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view kCrLf = "\r\n";
constexpr std::string_view kEnglish = "English";
constexpr std::string_view kItaliano = "Italiano";
constexpr std::string_view kFrench = "French";

std::string_view trimBlanks(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
  return s;
}

bool isValidUtf8(std::string_view s) {
  size_t i = 0;
  while (i < s.size()) {
    const auto c = static_cast<unsigned char>(s[i]);
    size_t extra = 0;
    if (c < 0x80)
      extra = 0;
    else if ((c & 0xE0) == 0xC0 && c >= 0xC2)
      extra = 1;
    else if ((c & 0xF0) == 0xE0)
      extra = 2;
    else if ((c & 0xF8) == 0xF0 && c <= 0xF4)
      extra = 3;
    else
      return false;
    if (extra > 0 && i + extra >= s.size()) return false;
    for (size_t k = 1; k <= extra; ++k)
      if ((static_cast<unsigned char>(s[i + k]) & 0xC0) != 0x80) return false;
    i += extra + 1;
  }
  return true;
}

// Names written by older versions on another system may still be Windows-1252 bytes.
std::string asUtf8(std::string_view s) { return isValidUtf8(s) ? std::string(s) : cp1252ToUtf8(s); }

void fillFromEntries(StringTable& table, const std::vector<LanguageEntry>& entries) {
  for (const auto& entry : entries) table.append(entry.id, entry.text);
}

// The chosen language laid over the English table, entry by entry in file order. Each entry
// finds its place by walking on from the last one; the English ids passed over are missing. An
// entry whose id is below its place (out of order, or unknown to English) is passed over, so an
// id out of order makes everything up to it count as missing.
std::vector<int16_t> overlay(StringTable& table, const std::vector<LanguageEntry>& entries) {
  std::vector<int16_t> missing;
  const int count = table.count();
  int place = 0;
  for (const auto& entry : entries) {
    while (place < count && entry.id > table.idAt(place)) missing.push_back(table.idAt(place++));
    if (place < count && entry.id == table.idAt(place)) table.setTextAt(place++, entry.text);
  }
  while (place < count) missing.push_back(table.idAt(place++));
  return missing;
}

std::optional<std::string> findListed(const std::vector<std::string>& languages, std::string_view upperName) {
  for (const auto& name : languages)
    if (upperCaseLatin(asUtf8(name)) == upperName) return name;
  return std::nullopt;
}

// A French file shipped by older versions under its French name becomes "French.h". A
// "French.h" already there is the newer file and is not overwritten.
bool renameOldFrenchFile(const fs::path& shareDir, const std::vector<std::string>& languages) {
  const auto old = findListed(languages, upperCaseLatin("Français"));
  if (!old) return false;
  const fs::path target = languageFilePath(shareDir, kFrench);
  if (fileExists(target)) return false;
  std::error_code ec;
  fs::rename(languageFilePath(shareDir, *old), target, ec);
  return !ec;
}

// The file of a language, found without regard to case when the name's own spelling is not on
// disk: files and settings come from systems whose file names ignore case.
fs::path resolveLanguageFile(const fs::path& shareDir, std::string_view name) {
  fs::path path = languageFilePath(shareDir, name);
  if (fileExists(path)) return path;
  if (auto listed = findListed(listLanguages(shareDir), upperCaseLatin(name))) return languageFilePath(shareDir, *listed);
  return path;
}

bool isEnglish(std::string_view name) { return upperCaseLatin(name) == upperCaseLatin(kEnglish); }

// English and Italiano hold every text and are read straight.
bool isCompleteLanguage(std::string_view name) {
  return isEnglish(name) || upperCaseLatin(name) == upperCaseLatin(kItaliano);
}

bool equalsIgnoringAsciiCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i) {
    char x = a[i], y = b[i];
    if (x >= 'a' && x <= 'z') x = static_cast<char>(x - 'a' + 'A');
    if (y >= 'a' && y <= 'z') y = static_cast<char>(y - 'a' + 'A');
    if (x != y) return false;
  }
  return true;
}

struct PlotLabelId {
  std::string_view code;
  int16_t id;
};

constexpr std::array<PlotLabelId, 16> kPlotLabels = {{
    {"ID", kStrPlotLabelFirst + 0},
    {"CU", kStrPlotLabelFirst + 1},
    {"PHI", kStrPlotLabelFirst + 2},
    {"KD", kStrPlotLabelFirst + 3},
    {"K0", kStrPlotLabelFirst + 4},
    {"ED", kStrPlotLabelFirst + 5},
    {"OCR", kStrPlotLabelFirst + 6},
    {"P2U0", kStrPlotLabelFirst + 7},
    {"UD", kStrPlotLabelFirst + 8},
    {"P0P1", kStrPlotLabelFirst + 9},
    {"U0P2P0P1", kStrPlotLabelFirst + 10},
    {"SIGMAH", kStrPlotLabelFirst + 11},
    {"SIGMAV", kStrPlotLabelFirst + 12},
    {"VS", kStrPlotLabelFirst + 13},
    {"VP", kStrPlotLabelFirst + 14},
    {"G0", kStrPlotLabelFirst + 15},
}};
static_assert(kStrPlotLabelFirst + 15 == kStrPlotLabelLast);

}  // namespace

fs::path languageFilePath(const fs::path& shareDir, std::string_view name) {
  std::string file(name);
  file += ".h";
  return shareDir / "Language" / file;
}

std::vector<std::string> listLanguages(const fs::path& shareDir) {
  std::vector<std::string> names;
  std::error_code ec;
  fs::directory_iterator it(shareDir / "Language", ec);
  if (ec) return names;
  for (const fs::directory_iterator end; it != end; it.increment(ec)) {
    if (ec) break;
    std::error_code typeError;
    if (!it->is_regular_file(typeError)) continue;
    const auto ext = it->path().extension().string();
    if (ext != ".h" && ext != ".H") continue;
    auto stem = it->path().stem().string();
    if (!stem.empty()) names.push_back(std::move(stem));
  }
  std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
    const auto ua = upperCaseLatin(asUtf8(a)), ub = upperCaseLatin(asUtf8(b));
    return ua != ub ? ua < ub : a < b;
  });
  return names;
}

Diagnostic englishMissingProblem(const fs::path& shareDir) {
  return {languageFilePath(shareDir, kEnglish), 0,
          "cannot be read: the program's texts come from this file, and every other language takes "
          "from it the texts it lacks"};
}

std::string missingStringsReport(const StringTable& english, std::string_view language,
                                 const std::vector<int16_t>& missingIds) {
  std::string report = "The following strings in English will be used for the incorrect or missing ones in ";
  report += language;
  report += " language:";
  report += kCrLf;
  report += kCrLf;
  bool first = true;
  for (int16_t id : missingIds) {
    if (!first) report += kCrLf;
    first = false;
    report += std::to_string(id);
    report += "  ";
    report += english.textAt(english.find(id));
  }
  return report;
}

LanguageLoadResult loadLanguage(ProgramStrings& strings, const fs::path& shareDir, std::string_view name) {
  const fs::path path = resolveLanguageFile(shareDir, name);
  strings.setFilePath(path);
  const auto own = readLanguageFile(path);
  std::optional<std::vector<LanguageEntry>> english;
  if (!(isCompleteLanguage(name) && own) && !isEnglish(name))
    english = readLanguageFile(resolveLanguageFile(shareDir, kEnglish));
  return fillLanguage(strings, name, own ? &*own : nullptr, english ? &*english : nullptr);
}

LanguageLoadResult fillLanguage(ProgramStrings& strings, std::string_view name, const std::vector<LanguageEntry>* own,
                                const std::vector<LanguageEntry>* english) {
  LanguageLoadResult result;
  StringTable& table = strings.table();
  table.clear();
  strings.setLanguage(std::string(name));
  result.fileRead = own != nullptr;
  if (isCompleteLanguage(name) && own) {
    fillFromEntries(table, *own);
    return result;
  }
  // Without English there is nothing to borrow from: a language keeps its own texts, and the
  // missing file is told instead of a report that would list no ids.
  if (isEnglish(name) || !english) {
    result.englishMissing = true;
    if (own) fillFromEntries(table, *own);
    return result;
  }

  fillFromEntries(table, *english);
  result.missingIds = overlay(table, own ? *own : std::vector<LanguageEntry>{});
  if (result.missingIds.empty()) return result;

  std::string report = missingStringsReport(table, name, result.missingIds);
  if (result.missingIds.size() <= kMissingReportBoxLimit)
    strings.prompts().showMessage(report, msgbox::kOkOnly + msgbox::kInformation, "");
  else
    result.reportForWindow = std::move(report);
  return result;
}

LanguageChoice chooseLanguageAtStart(ProgramStrings& strings, SettingsStore& settings, const fs::path& shareDir) {
  LanguageChoice choice;
  choice.languages = listLanguages(shareDir);
  const std::string stored = asUtf8(trimBlanks(settings.GetSetting(kSettingsApp, "General", "Language", "")));

  if (stored.empty()) {
    choice.language = kEnglish;
    choice.showPicker = true;
  } else {
    const std::string upper = upperCaseLatin(stored);
    const auto number = tryParseDouble(stored);  // older versions stored a number
    if ((number && *number == 11) || upper == "ENGLISH") {
      choice.language = kEnglish;
    } else if ((number && *number == 20) || upper == "ITALIANO") {
      choice.language = kItaliano;
    } else if (upper == upperCaseLatin("Français") || upper == "FRENCH") {
      if (renameOldFrenchFile(shareDir, choice.languages)) choice.languages = listLanguages(shareDir);
      choice.language = kFrench;
    } else if (auto listed = findListed(choice.languages, upper)) {
      choice.language = *listed;
    } else {
      choice.language = kEnglish;
    }
  }

  settings.SaveSetting(kSettingsApp, "General", "Language", choice.language);
  choice.load = loadLanguage(strings, shareDir, choice.language);
  return choice;
}

const std::string& plotLabel(const ProgramStrings& strings, std::string_view code) {
  static const std::string kNoLabel;
  for (const auto& entry : kPlotLabels)
    if (equalsIgnoringAsciiCase(entry.code, code)) return strings.getString(entry.id);
  return kNoLabel;
}

std::string upperCaseLatin(std::string_view text) {
  std::string out(text);
  for (size_t i = 0; i < out.size(); ++i) {
    auto c = static_cast<unsigned char>(out[i]);
    if (c >= 'a' && c <= 'z') {
      out[i] = static_cast<char>(c - 'a' + 'A');
    } else if (c == 0xC3 && i + 1 < out.size()) {
      // U+00E0..U+00FE are the small letters of U+00C0..U+00DE, except the division sign.
      auto next = static_cast<unsigned char>(out[i + 1]);
      if (next >= 0xA0 && next <= 0xBE && next != 0xB7) out[i + 1] = static_cast<char>(next - 0x20);
      ++i;
    }
  }
  return out;
}

}  // namespace koru
