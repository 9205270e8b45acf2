#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "frame/MemorySettingsStore.h"
#include "frame/strings/Language.h"
#include "frame/strings/LanguageFile.h"
#include "frame/strings/StringTable.h"
#include "frame/strings/StringIds.h"
#include "scratch_folder.h"
#include "scripted_prompts.h"

namespace koru {
namespace {

using testing::ScratchFolder;
using testing::ScriptedPrompts;
using Entries = std::vector<std::pair<int, std::string>>;

Entries entriesOf(const std::vector<LanguageEntry>& entries) {
  Entries out;
  for (const auto& e : entries) out.emplace_back(e.id, e.text);
  return out;
}

// ---------------------------------------------------------------------------------------------
// Reading a language file

TEST(StringsReader, EntriesAreReadByTheirLineRules) {
  const struct { const char* what; std::string bytes; Entries expected; } cases[] = {
      {"blanks around the id; comments and empty lines skipped",
       "// heading\r\n\r\n   2   \"Two with  inner  blanks\"\r\n\t3\t\"Three\"   \r\n4\"No blank\"\r\n// 5 \"no\"\r\n",
       {{2, "Two with  inner  blanks"}, {3, "Three"}, {4, "No blank"}}},
      {"lines that are no entry outside a text are ignored", "40000 \"too large\"\r\n8 no quotes\r\n32767 \"largest\"",
       {{32767, "largest"}}},
      {"a multi-line text is joined with CR LF leaving out comments and empty lines",
       "100 \"First line\r\nsecond line\r\n// a note for translators, not part of the text\r\n\r\n"
       "   indented third line\r\nlast line\"\r\n101 \"After\"\r\n",
       {{100, "First line\r\nsecond line\r\n   indented third line\r\nlast line"}, {101, "After"}}},
      {"a whole entry line ends a text whose closing quote is missing",
       "200 \"Text whose closing quote was forgotten\r\nand a second line\r\n201 \"Next entry\"\r\n202 \"Still read\"\r\n",
       {{200, "Text whose closing quote was forgotten\r\nand a second line"}, {201, "Next entry"}, {202, "Still read"}}},
      // Only a whole entry is taken as recovery; an entry that itself runs on is part of the text.
      {"a line opening another text does not end the text in progress",
       "300 \"Start\r\n301 \"looks like an opening\r\nend\"\r\n", {{300, "Start\r\n301 \"looks like an opening\r\nend"}}},
      // Inner lines are always joined with CR LF, whatever the file's line ends.
      {"LF line ends", "1 \"A\"\n2 \"B\nC\"\n3 \"D", {{1, "A"}, {2, "B\r\nC"}, {3, "D"}}},
      {"CR line ends", "1 \"A\"\r2 \"B\rC\"\r", {{1, "A"}, {2, "B\r\nC"}}},
      {"Windows-1252 bytes become UTF-8", "1 \"Fran\xE7" "ais\"\r\n2 \"\x80 5, 30\xB0\"\r\n3 \"perch\xE9\"\r\n",
       {{1, "Fran\xC3\xA7" "ais"}, {2, "\xE2\x82\xAC 5, 30\xC2\xB0"}, {3, "perch\xC3\xA9"}}},
      {"a byte order mark means UTF-8", "\xEF\xBB\xBF" "1 \"Fran\xC3\xA7" "ais\"\r\n", {{1, "Fran\xC3\xA7" "ais"}}},
  };
  for (const auto& c : cases) EXPECT_EQ(entriesOf(parseLanguageFile(c.bytes)), c.expected) << c.what;
  EXPECT_EQ(parseLanguageFile(cases[0].bytes)[1].line, 4);
}

// ---------------------------------------------------------------------------------------------
// Lookups

class StringsLookup : public ::testing::Test {
 protected:
  StringsLookup() : strings(prompts) {
    strings.setFilePath("/opt/koru/Language/Test.h");
    // 7 is "Précision": 9 characters, 10 bytes.
    for (const auto& [id, text] : Entries{{6, "Exactly10!"}, {7, "Pr\xC3\xA9" "cision"}, {8, "Value XXX of XXX"},
                                          {4201, "First"}, {4202, "Second"}, {4203, "Third"}})
      strings.table().append(id, text);
  }
  ScriptedPrompts prompts;
  ProgramStrings strings;
};

TEST_F(StringsLookup, AMissingNumberBeepsAndTextsAreCutReplacedAndJoined) {
  EXPECT_EQ(strings.getString(77), "");
  EXPECT_EQ(prompts.beeps, 1);
  ASSERT_EQ(prompts.messages.size(), 1u);
  EXPECT_EQ(prompts.messages[0].text, "Unable to find string number 77 in language file:\r\n/opt/koru/Language/Test.h");

  EXPECT_EQ(strings.getStringMax(6, 10), "Exactly10!");  // exactly the length: whole
  EXPECT_EQ(strings.getStringMax(6, 9), "Exactly1.");
  EXPECT_EQ(strings.getStringMax(7, 9), "Pr\xC3\xA9" "cision");  // counted in characters, not bytes
  EXPECT_EQ(strings.getStringMax(7, 4), "Pr\xC3\xA9.");
  EXPECT_EQ(strings.getStringX(8, "3.5"), "Value 3.5 of 3.5");
  EXPECT_EQ(strings.getStringX(8, "XXX"), "Value XXX of XXX");  // no rescanning of the value
  EXPECT_EQ(strings.getStringRange("4201-4203", 2, ""), "First\r\n\r\nSecond\r\n\r\nThird");  // "" is CR LF
  EXPECT_EQ(strings.getStringRange(" 4202 - 4203 ", 3, " "), "Second   Third");
  EXPECT_EQ(strings.getStringRange("4201-4202", 0, " "), "FirstSecond");
}

// ---------------------------------------------------------------------------------------------
// Loading a language

// A share folder with language files written by the test.
class LanguageLoading : public ::testing::Test {
 protected:
  LanguageLoading() : strings(prompts) {}

  // "id \"<prefix> id\"" for every id.
  void writeLanguage(std::string_view name, const std::vector<int>& ids, std::string_view prefix) {
    std::string out = "// test file\r\n";
    for (int id : ids) out += std::to_string(id) + " \"" + std::string(prefix) + " " + std::to_string(id) + "\"\r\n";
    share.write("Language/" + std::string(name) + ".h", out);
  }

  ScratchFolder share;
  ScriptedPrompts prompts;
  ProgramStrings strings;
};

TEST_F(LanguageLoading, MissingIdsAreReportedOnceInEnglishInABoxUpToTwentyElseToTheCaller) {
  std::vector<int> all(40);  // 100, 110, ... 490
  for (size_t i = 0; i < all.size(); ++i) all[i] = 100 + 10 * static_cast<int>(i);
  writeLanguage("English", all, "en");
  const std::vector<int> dropped = {100, 200, 210, 330, 490};  // first, neighbours, middle, last
  std::vector<int> own;
  std::set_difference(all.begin(), all.end(), dropped.begin(), dropped.end(), std::back_inserter(own));
  writeLanguage("Deutsch", own, "de");

  auto result = loadLanguage(strings, share.path(), "Deutsch");
  EXPECT_EQ(std::vector<int>(result.missingIds.begin(), result.missingIds.end()), dropped);
  ASSERT_EQ(prompts.messages.size(), 1u);
  EXPECT_NE(prompts.messages[0].text.find("Deutsch language:\r\n\r\n100  en 100\r\n200  en 200\r\n"), std::string::npos);

  // The captions work: own texts where the file has them, English where it has not, and the
  // missing ones are not reported again at each lookup.
  EXPECT_EQ(strings.getString(480), "de 480");
  EXPECT_EQ(strings.getString(490), "en 490");
  EXPECT_EQ(prompts.messages.size(), 1u);

  // Twenty missing still go to a message box, twenty-one to the caller.
  writeLanguage("Twenty", std::vector<int>(all.begin() + 20, all.end()), "x");
  writeLanguage("TwentyOne", std::vector<int>(all.begin() + 21, all.end()), "x");
  EXPECT_TRUE(loadLanguage(strings, share.path(), "Twenty").reportForWindow.empty());
  EXPECT_EQ(prompts.messages.size(), 2u);
  auto twentyOne = loadLanguage(strings, share.path(), "TwentyOne");
  EXPECT_EQ(prompts.messages.size(), 2u);  // no further box
  EXPECT_NE(twentyOne.reportForWindow.find("\r\n300  en 300"), std::string::npos);

  // No file for the language at all: English throughout.
  auto none = loadLanguage(strings, share.path(), "Nowhere");
  EXPECT_FALSE(none.fileRead);
  EXPECT_EQ(none.missingIds.size(), all.size());
  EXPECT_EQ(strings.getString(480), "en 480");
}

// ---------------------------------------------------------------------------------------------
// The choice of language at start

class LanguageChoiceAtStart : public LanguageLoading {
 protected:
  LanguageChoiceAtStart() {
    writeLanguage("English", {1, 2}, "en");
    writeLanguage("Italiano", {1, 2}, "it");
  }
  void store(std::string_view value) { settings.SaveSetting("KORU", "General", "Language", value); }
  std::string stored() const { return settings.GetSetting("KORU", "General", "Language", "<none>"); }

  MemorySettingsStore settings;
};

TEST_F(LanguageChoiceAtStart, NumbersOfOlderVersionsAndNamesInAnyCaseAreUnderstood) {
  for (const auto& [value, language] : std::vector<std::pair<std::string, std::string>>{
           {"20", "Italiano"}, {"11", "English"}, {"italiano", "Italiano"}, {" english ", "English"}}) {
    store(value);
    EXPECT_EQ(chooseLanguageAtStart(strings, settings, share.path()).language, language) << value;
    EXPECT_EQ(stored(), language) << "written back for " << value;
  }
}

TEST_F(LanguageChoiceAtStart, TheFrenchFileUnderItsOldNameIsRenamed) {
  writeLanguage("Fran\xC3\xA7" "ais", {1, 2}, "fr");
  store("Fran\xC3\xA7" "ais");
  auto choice = chooseLanguageAtStart(strings, settings, share.path());
  EXPECT_EQ(choice.language, "French");
  EXPECT_FALSE(std::filesystem::exists(languageFilePath(share.path(), "Fran\xC3\xA7" "ais")));
  EXPECT_EQ(strings.getString(2), "fr 2");

  // An old file beside a newer one does not replace it.
  writeLanguage("Fran\xC3\xA7" "ais", {1, 2}, "old");
  store("FRENCH");
  chooseLanguageAtStart(strings, settings, share.path());
  EXPECT_EQ(strings.getString(1), "fr 1");
}

TEST(StringsReader, ATextWithoutItsClosingQuoteIsReadInPartAndToldAtItsLine) {
  const struct { const char* bytes; LoadStatus status; int line; } cases[] = {
      {"1 \"A\"\r\n2 \"B\r\nC\"\r\n", LoadStatus::Complete, 0},
      {"1 \"A\"\r\n\r\n2 \"B\r\n3 \"C\"\r\n4 \"D\r\n", LoadStatus::Partial, 3},
      {"// x\r\n7 \"Cut", LoadStatus::Partial, 2},
      {"1 \"A\"\r99999999999 \"B\"\r", LoadStatus::Partial, 2},
  };
  for (const auto& c : cases) {
    std::vector<LanguageEntry> entries;
    const LoadResult r = parseLanguageFile(c.bytes, "L.h", entries);
    EXPECT_EQ(r.status, c.status) << c.bytes;
    EXPECT_EQ(r.why.line, c.line) << c.bytes;
    EXPECT_EQ(entries.size(), parseLanguageFile(c.bytes).size()) << c.bytes;
  }
}

}  // namespace
}  // namespace koru
