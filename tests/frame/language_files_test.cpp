// The language files shipped with the program: that they read cleanly, that the translations
// hold the same numbers as English, and that every number the code asks for is there.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>

#include "frame/Files.h"
#include "frame/strings/Language.h"
#include "frame/strings/LanguageFile.h"
#include "scripted_prompts.h"

namespace koru {
namespace {

using testing::ScriptedPrompts;

const std::filesystem::path kShare = std::filesystem::path(KORU_SOURCE_DIR) / "share";
const std::vector<std::string> kShipped = {"English", "French", "Italiano"};

std::map<int, std::string> textsById(const std::string& name) {
  std::map<int, std::string> texts;
  for (auto& e : readLanguageFile(languageFilePath(kShare, name)).value_or(std::vector<LanguageEntry>{})) texts[e.id] = e.text;
  return texts;
}

size_t countOf(const std::string& text, std::string_view what) {
  size_t n = 0;
  for (size_t pos = text.find(what); pos != std::string::npos; pos = text.find(what, pos + what.size())) ++n;
  return n;
}

TEST(LanguageShippedFiles, FilesAreWindows1252WithCrLfLineEnds) {
  for (const auto& name : kShipped) {
    auto bytes = readFileBytes(languageFilePath(kShare, name));
    ASSERT_TRUE(bytes.has_value()) << name;
    bool accented = false;
    for (size_t i = 0; i < bytes->size(); ++i) {
      const auto c = static_cast<unsigned char>((*bytes)[i]);
      if (c == '\n') {
        ASSERT_TRUE(i > 0 && (*bytes)[i - 1] == '\r') << name << ": bare LF at byte " << i;
      }
      if (c >= 0xC0) accented = true;
    }
    if (name != "English") EXPECT_TRUE(accented) << name << " has no accented letter at all";
  }
}

// Loading borrows English for missing ids, so "nothing borrowed" means the same ids as English.
TEST(LanguageShippedFiles, TranslationsHaveThePlaceholdersOfEnglish) {
  const auto english = textsById("English");
  for (const std::string name : {"Italiano", "French"})
    for (const auto& [id, text] : textsById(name))
      for (std::string_view placeholder : {"XXX", "YYY", "ZZZ"})
        EXPECT_EQ(countOf(text, placeholder), countOf(english.at(id), placeholder)) << name << " " << id << " " << placeholder;
}

TEST(LanguageShippedFiles, EveryLanguageLoadsWithNothingBorrowedAndLabelsEveryPlot) {
  for (const auto& name : kShipped) {
    ScriptedPrompts prompts;
    ProgramStrings strings(prompts);
    auto result = loadLanguage(strings, kShare, name);
    EXPECT_TRUE(result.fileRead) << name;
    EXPECT_TRUE(result.missingIds.empty()) << name;
    for (const char* code : {"ID", "P2U0", "U0P2P0P1", "G0"}) EXPECT_FALSE(plotLabel(strings, code).empty()) << name << " " << code;
    EXPECT_TRUE(prompts.messages.empty()) << name;
  }
}

}  // namespace
}  // namespace koru
