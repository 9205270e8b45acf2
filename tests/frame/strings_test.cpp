#include <gtest/gtest.h>

#include <algorithm>
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
  const std::string crlf = "// c\r\n1 \"A\"\r\n\r\n2 \"B\r\nC\"\r\n3 \"D\"";
  std::string lf;
  for (char c : crlf)
    if (c != '\r') lf += c;
  const struct {
    const char* what;
    std::string bytes;
    Entries expected;
  } cases[] = {
      {"blanks around the id; comments and empty lines skipped",
       "// heading comment\r\n"
       "\r\n"
       "1 \"One\"\r\n"
       "   2   \"Two with  inner  blanks\"\r\n"
       "\t3\t\"Three\"\r\n"
       "   \r\n"
       "4\"No blank before the quote\"\r\n"
       "// 5 \"commented out\"\r\n"
       "6 \"Blanks after the closing quote\"   \r\n",
       {{1, "One"}, {2, "Two with  inner  blanks"}, {3, "Three"}, {4, "No blank before the quote"},
        {6, "Blanks after the closing quote"}}},
      {"empty texts and quotes inside a text are kept",
       "10 \"\"\r\n11 \"Press \"OK\" to go on\"\r\n12 \" leading blank\"\r\n",
       {{10, ""}, {11, "Press \"OK\" to go on"}, {12, " leading blank"}}},
      {"lines that are no entry outside a text are ignored",
       "garbage line\r\n"
       "40000 \"id too large for 16 bits\"\r\n"
       "-5 \"negative\"\r\n"
       "x7 \"letter before the id\"\r\n"
       "8 text without quotes\r\n"
       " // not a comment: the slashes are not the first two characters\r\n"
       "32767 \"largest id\"\r\n",
       {{32767, "largest id"}}},
      {"a multi-line text is joined with CR LF leaving out comments and empty lines",
       "100 \"First line\r\n"
       "second line\r\n"
       "// a note for translators, not part of the text\r\n"
       "\r\n"
       "   indented third line\r\n"
       "last line\"\r\n"
       "101 \"After\"\r\n",
       {{100, "First line\r\nsecond line\r\n   indented third line\r\nlast line"}, {101, "After"}}},
      {"an opening quote at the end starts a multi-line text with an empty first line", "7 \"\r\nbody\"\r\n",
       {{7, "\r\nbody"}}},
      {"a whole entry line ends a text whose closing quote is missing",
       "200 \"Text whose closing quote was forgotten\r\nand a second line\r\n201 \"Next entry\"\r\n202 \"Still read\"\r\n",
       {{200, "Text whose closing quote was forgotten\r\nand a second line"}, {201, "Next entry"}, {202, "Still read"}}},
      // Only a whole entry is taken as recovery; an entry that itself runs on is part of the text.
      {"a line opening another text does not end the text in progress",
       "300 \"Start\r\n301 \"looks like an opening\r\nend\"\r\n", {{300, "Start\r\n301 \"looks like an opening\r\nend"}}},
      {"a file ending inside a quoted text keeps what it has", "1 \"Complete\"\r\n2 \"Cut short\r\nby the end of the file",
       {{1, "Complete"}, {2, "Cut short\r\nby the end of the file"}}},
      {"a file ending right after an opening quote", "3 \"", {{3, ""}}},
      // Inner lines are always joined with CR LF, whatever the file's line ends.
      {"CR LF line ends", crlf, {{1, "A"}, {2, "B\r\nC"}, {3, "D"}}},
      {"LF line ends read the same", lf, {{1, "A"}, {2, "B\r\nC"}, {3, "D"}}},
      {"Windows-1252 bytes become UTF-8", "1 \"Fran\xE7" "ais\"\r\n2 \"\x80 5, 30\xB0\"\r\n3 \"perch\xE9\"\r\n",
       {{1, "Fran\xC3\xA7" "ais"}, {2, "\xE2\x82\xAC 5, 30\xC2\xB0"}, {3, "perch\xC3\xA9"}}},
      {"a byte order mark means UTF-8", "\xEF\xBB\xBF" "1 \"Fran\xC3\xA7" "ais\"\r\n", {{1, "Fran\xC3\xA7" "ais"}}},
  };
  for (const auto& c : cases) EXPECT_EQ(entriesOf(parseLanguageFile(c.bytes)), c.expected) << c.what;
  EXPECT_EQ(parseLanguageFile(cases[0].bytes)[1].line, 4);
}

TEST(StringsReader, AFileThatCannotBeReadGivesNothingAndSaysWhy) {
  ScratchFolder dir;
  Diagnostic why;
  EXPECT_FALSE(readLanguageFile(dir / "Missing.h", &why).has_value());
  EXPECT_FALSE(why.reason.empty());
  auto entries = readLanguageFile(dir.write("Some.h", "5 \"Five\"\r\n"));
  ASSERT_TRUE(entries.has_value());
  EXPECT_EQ(entriesOf(*entries), (Entries{{5, "Five"}}));
}

// ---------------------------------------------------------------------------------------------
// The sorted tables

TEST(StringsTable, BinarySearchFindsFirstLastAndEveryIdOfSmallAndOddSizedTables) {
  for (int size : {1, 2, 3, 4, 5, 7, 8, 9, 500, 501, 502, 1003}) {
    std::vector<int16_t> ids;
    StringTable table;
    for (int i = 0; i < size; ++i) {
      ids.push_back(static_cast<int16_t>(10 + 3 * i));  // gaps of 3
      table.append(ids.back(), "t" + std::to_string(ids.back()));
    }
    ASSERT_EQ(table.count(), size);
    for (int i = 0; i < size; ++i) {
      ASSERT_EQ(table.find(ids[i]), i) << "size " << size << ", id " << ids[i];
      ASSERT_EQ(table.textAt(i), "t" + std::to_string(ids[i]));
    }
    EXPECT_EQ(table.find(ids.front() - 1), -1) << "below the first, size " << size;
    EXPECT_EQ(table.find(ids.back() + 1), -1) << "above the last, size " << size;
    EXPECT_EQ(table.find(-32768), -1);
    EXPECT_EQ(table.find(40000), -1);
    for (int i = 0; i + 1 < size; ++i) {
      ASSERT_EQ(table.find(ids[i] + 1), -1) << "between, size " << size;
      ASSERT_EQ(table.find(ids[i] + 2), -1) << "between, size " << size;
    }
  }
}

TEST(StringsTable, AnEmptyTableFindsNothingAndIdsMustAscendSoTheSearchStaysSound) {
  StringTable table;
  EXPECT_EQ(table.find(0), -1);
  EXPECT_EQ(table.textAt(0), "");
  EXPECT_EQ(table.idAt(-1), 0);
  EXPECT_TRUE(table.append(5, "five"));
  EXPECT_TRUE(table.append(9, "nine"));
  EXPECT_FALSE(table.append(9, "nine again"));
  EXPECT_FALSE(table.append(7, "seven out of order"));
  EXPECT_TRUE(table.append(12, "twelve"));
  EXPECT_EQ(table.count(), 3);
  EXPECT_EQ(table.textAt(table.find(9)), "nine");
  EXPECT_EQ(table.find(7), -1);
}

TEST(StringsTable, ArraysStartAt501PlacesAndDoubleWhenFull) {
  StringTable table;
  EXPECT_EQ(table.capacity(), 501);
  for (int i = 0; i < 501; ++i) table.append(static_cast<int16_t>(i), "x");
  EXPECT_EQ(table.capacity(), 501);
  table.append(501, "x");
  EXPECT_EQ(table.capacity(), 1002);
  for (int i = 502; i < 1003; ++i) table.append(static_cast<int16_t>(i), "x");
  EXPECT_EQ(table.capacity(), 2004);
  EXPECT_EQ(table.find(1002), 1002);
  table.clear();
  EXPECT_EQ(table.count(), 0);
  EXPECT_EQ(table.capacity(), 501);
}

// ---------------------------------------------------------------------------------------------
// Lookups

class StringsLookup : public ::testing::Test {
 protected:
  StringsLookup() : strings(prompts) {
    strings.setFilePath("/opt/koru/Language/Test.h");
    auto& t = strings.table();
    t.append(5, "Depth");
    t.append(6, "Exactly10!");
    t.append(7, "Pr\xC3\xA9" "cision");  // "Précision", 9 characters, 10 bytes
    t.append(8, "Value XXX of XXX");
    t.append(4201, "First");
    t.append(4202, "Second");
    t.append(4203, "Third");
    t.append(4204, "Fourth");
    t.append(4300, "Gain XXX");
  }
  ScriptedPrompts prompts;
  ProgramStrings strings;
};

TEST_F(StringsLookup, AFoundTextIsTheStoredTextItself) {
  const std::string& a = strings.getString(5);
  const std::string& b = strings.getString(5);
  EXPECT_EQ(a, "Depth");
  EXPECT_EQ(&a, &b);  // a reference into the table: no copy is made per lookup
  EXPECT_TRUE(prompts.messages.empty());
  EXPECT_EQ(prompts.beeps, 0);
}

TEST_F(StringsLookup, AMissingNumberBeepsNamesTheFileAndGivesAnEmptyText) {
  EXPECT_EQ(strings.getString(77), "");
  EXPECT_EQ(prompts.beeps, 1);
  ASSERT_EQ(prompts.messages.size(), 1u);
  EXPECT_EQ(prompts.messages[0].text, "Unable to find string number 77 in language file:\r\n/opt/koru/Language/Test.h");
  EXPECT_EQ(strings.getString(-3), "");
  EXPECT_EQ(strings.getString(100000), "");
  EXPECT_EQ(prompts.messages.size(), 3u);
}

TEST_F(StringsLookup, GetStringMaxCutsOnlyTextsLongerThanTheLength) {
  EXPECT_EQ(strings.getStringMax(6, 10), "Exactly10!");  // exactly the length: whole
  EXPECT_EQ(strings.getStringMax(6, 11), "Exactly10!");
  EXPECT_EQ(strings.getStringMax(6, 9), "Exactly1.");
  EXPECT_EQ(strings.getStringMax(6, 1), ".");
  EXPECT_EQ(strings.getStringMax(7, 9), "Pr\xC3\xA9" "cision");  // counted in characters, not bytes
  EXPECT_EQ(strings.getStringMax(7, 4), "Pr\xC3\xA9.");
  EXPECT_EQ(strings.getStringMax(6, 0), "");
  EXPECT_EQ(strings.getStringMax(99, 5), "");
  EXPECT_EQ(prompts.messages.size(), 1u);
}

TEST_F(StringsLookup, GetStringXReplacesEveryPlaceholder) {
  EXPECT_EQ(strings.getStringX(8, "3.5"), "Value 3.5 of 3.5");
  EXPECT_EQ(strings.getStringX(5, "3.5"), "Depth");
  EXPECT_EQ(strings.getStringX(8, "XXX"), "Value XXX of XXX");  // no rescanning of the value
  EXPECT_EQ(replacePlaceholder("Z = ZZZ m, YYY", "ZZZ", "1.25"), "Z = 1.25 m, YYY");
  EXPECT_EQ(replacePlaceholder("XXX_1 and XXX_2", "XXX_2", "b"), "XXX_1 and b");
}

TEST_F(StringsLookup, GetStringRangeJoinsTheTextsWithTheSeparatorRepeated) {
  EXPECT_EQ(strings.getStringRange("4201-4204", 1, ""), "First\r\nSecond\r\nThird\r\nFourth");
  EXPECT_EQ(strings.getStringRange("4201-4203", 2, ""), "First\r\n\r\nSecond\r\n\r\nThird");
  EXPECT_EQ(strings.getStringRange("4202-4203", 3, " "), "Second   Third");
  EXPECT_EQ(strings.getStringRange("4201-4202", 1, " | "), "First | Second");
  EXPECT_EQ(strings.getStringRange(rangeText({4202, 4204}), 1, "|"), "Second|Third|Fourth");
  EXPECT_EQ(strings.getStringRange("4201-4202", 0, " "), "FirstSecond");
  EXPECT_EQ(strings.getStringRange("4203", 1, ""), "Third");
  EXPECT_EQ(strings.getStringRange(" 4203 - 4204 ", 1, ""), "Third\r\nFourth");
  EXPECT_TRUE(prompts.messages.empty());
}

TEST_F(StringsLookup, AnUnreadableRangeGivesNothingAndAGapInARangeIsReported) {
  EXPECT_EQ(strings.getStringRange("", 1, ""), "");
  EXPECT_EQ(strings.getStringRange("abc", 1, ""), "");
  EXPECT_EQ(strings.getStringRange("4204-4201", 1, ""), "");
  EXPECT_EQ(strings.getStringRange("4201-", 1, ""), "");
  EXPECT_EQ(strings.getStringRange("99999-100000", 1, ""), "");
  EXPECT_TRUE(prompts.messages.empty());

  EXPECT_EQ(strings.getStringRange("4204-4206", 1, "/"), "Fourth//");
  EXPECT_EQ(prompts.messages.size(), 2u);
}

TEST_F(StringsLookup, ShowFormsPutTheTextInAMessageBoxAndGiveTheAnswer) {
  prompts.answers = {msgbox::kNo, msgbox::kYes, msgbox::kOk, msgbox::kCancel};
  EXPECT_EQ(strings.showString(5, msgbox::kYesNo + msgbox::kQuestion, "Title"), msgbox::kNo);
  EXPECT_EQ(strings.showStringX(8, "7", msgbox::kYesNo, "T"), msgbox::kYes);
  EXPECT_EQ(strings.showStringRange("4201-4202", 1, "", msgbox::kOkOnly, ""), msgbox::kOk);
  EXPECT_EQ(strings.showStringRangeX("4300", 1, " ", "20480", msgbox::kOkCancel, ""), msgbox::kCancel);
  ASSERT_EQ(prompts.messages.size(), 4u);
  EXPECT_EQ(prompts.messages[0].text, "Depth");
  EXPECT_EQ(prompts.messages[0].buttons, msgbox::kYesNo + msgbox::kQuestion);
  EXPECT_EQ(prompts.messages[0].title, "Title");
  EXPECT_EQ(prompts.messages[1].text, "Value 7 of 7");
  EXPECT_EQ(prompts.messages[2].text, "First\r\nSecond");
  EXPECT_EQ(prompts.messages[3].text, "Gain 20480");
  EXPECT_EQ(prompts.messages[3].buttons, msgbox::kOkCancel);
}

// ---------------------------------------------------------------------------------------------
// Loading a language

// A share folder with language files written by the test.
class LanguageLoading : public ::testing::Test {
 protected:
  LanguageLoading() : strings(prompts) {}

  void writeLanguage(std::string_view name, const std::string& bytes) {
    share.write("Language/" + std::string(name) + ".h", bytes);
  }

  // "id \"<prefix> id\"" for every id.
  static std::string entries(const std::vector<int>& ids, std::string_view prefix) {
    std::string out = "// test file\r\n";
    for (int id : ids) out += std::to_string(id) + " \"" + std::string(prefix) + " " + std::to_string(id) + "\"\r\n";
    return out;
  }

  static std::vector<int> englishIds() {
    std::vector<int> ids;
    for (int i = 0; i < 40; ++i) ids.push_back(100 + 10 * i);  // 100, 110, ... 490
    return ids;
  }

  ScratchFolder share;
  ScriptedPrompts prompts;
  ProgramStrings strings;
};

TEST_F(LanguageLoading, EnglishAndItalianoAreReadStraight) {
  writeLanguage("English", entries({1, 2, 3}, "en"));
  writeLanguage("Italiano", entries({1, 2}, "it"));  // complete languages borrow nothing
  for (const char* name : {"English", "ITALIANO"}) {
    auto result = loadLanguage(strings, share.path(), name);
    EXPECT_TRUE(result.fileRead) << name;
    EXPECT_TRUE(result.missingIds.empty()) << name;
    EXPECT_EQ(strings.getString(2), name == std::string("English") ? "en 2" : "it 2");
  }
  EXPECT_EQ(strings.table().count(), 2);
  EXPECT_TRUE(prompts.messages.empty());
  EXPECT_EQ(strings.filePath(), languageFilePath(share.path(), "Italiano"));  // found whatever the case
}

TEST_F(LanguageLoading, AThirdLanguageMissingFiveIdsReportsThemOnceInEnglish) {
  std::vector<int> all = englishIds();
  writeLanguage("English", entries(all, "en"));
  std::vector<int> own;
  const std::vector<int> dropped = {100, 200, 210, 330, 490};  // first, neighbours, middle, last
  for (int id : all)
    if (std::find(dropped.begin(), dropped.end(), id) == dropped.end()) own.push_back(id);
  writeLanguage("Deutsch", entries(own, "de"));

  auto result = loadLanguage(strings, share.path(), "Deutsch");
  EXPECT_TRUE(result.fileRead);
  EXPECT_EQ(std::vector<int>(result.missingIds.begin(), result.missingIds.end()), dropped);
  EXPECT_TRUE(result.reportForWindow.empty());
  ASSERT_EQ(prompts.messages.size(), 1u);
  EXPECT_EQ(prompts.messages[0].text,
            "The following strings in English will be used for the incorrect or missing ones in Deutsch language:\r\n"
            "\r\n"
            "100  en 100\r\n"
            "200  en 200\r\n"
            "210  en 210\r\n"
            "330  en 330\r\n"
            "490  en 490");

  // The captions work: own texts where the file has them, English where it has not, and the
  // missing ones are not reported again at each lookup.
  EXPECT_EQ(strings.getString(110), "de 110");
  EXPECT_EQ(strings.getString(200), "en 200");
  EXPECT_EQ(strings.getString(490), "en 490");
  EXPECT_EQ(strings.getString(480), "de 480");
  EXPECT_EQ(prompts.messages.size(), 1u);
  EXPECT_EQ(prompts.beeps, 0);
}

TEST_F(LanguageLoading, AnIdOutOfOrderCountsAsMissingFromThereOn) {
  writeLanguage("English", entries({10, 20, 30, 40, 50, 60}, "en"));
  // 50 comes too early: 20, 30 and 40 that follow it are out of order too.
  writeLanguage("Deutsch", entries({10, 50, 20, 30, 40, 60}, "de"));

  auto result = loadLanguage(strings, share.path(), "Deutsch");
  EXPECT_EQ(std::vector<int>(result.missingIds.begin(), result.missingIds.end()), (std::vector<int>{20, 30, 40}));
  EXPECT_EQ(strings.getString(50), "de 50");
  EXPECT_EQ(strings.getString(30), "en 30");
  EXPECT_EQ(strings.getString(60), "de 60");

  // A smaller id out of order costs only itself.
  writeLanguage("Deutsch", entries({10, 30, 20, 40, 50, 60}, "de"));
  result = loadLanguage(strings, share.path(), "Deutsch");
  EXPECT_EQ(std::vector<int>(result.missingIds.begin(), result.missingIds.end()), (std::vector<int>{20}));
  EXPECT_EQ(strings.getString(40), "de 40");
}

TEST_F(LanguageLoading, IdsUnknownToEnglishAreIgnored) {
  writeLanguage("English", entries({10, 20, 30}, "en"));
  writeLanguage("Deutsch", entries({5, 10, 15, 20, 30, 35}, "de"));
  auto result = loadLanguage(strings, share.path(), "Deutsch");
  EXPECT_TRUE(result.missingIds.empty());
  EXPECT_TRUE(prompts.messages.empty());
  EXPECT_EQ(strings.table().count(), 3);
  EXPECT_EQ(strings.getString(20), "de 20");
}

TEST_F(LanguageLoading, TwentyMissingGoToAMessageBoxAndTwentyOneToTheCaller) {
  std::vector<int> all = englishIds();
  writeLanguage("English", entries(all, "en"));
  writeLanguage("Twenty", entries(std::vector<int>(all.begin() + 20, all.end()), "x"));
  writeLanguage("TwentyOne", entries(std::vector<int>(all.begin() + 21, all.end()), "x"));

  auto twenty = loadLanguage(strings, share.path(), "Twenty");
  EXPECT_EQ(twenty.missingIds.size(), 20u);
  EXPECT_TRUE(twenty.reportForWindow.empty());
  EXPECT_EQ(prompts.messages.size(), 1u);

  auto twentyOne = loadLanguage(strings, share.path(), "TwentyOne");
  EXPECT_EQ(twentyOne.missingIds.size(), 21u);
  EXPECT_EQ(prompts.messages.size(), 1u);  // no second box
  EXPECT_EQ(twentyOne.reportForWindow.rfind("The following strings in English will be used", 0), 0u);
  EXPECT_NE(twentyOne.reportForWindow.find("\r\n300  en 300"), std::string::npos);
}

TEST_F(LanguageLoading, AMissingLanguageFileFallsBackOnEnglishEntirely) {
  writeLanguage("English", entries({10, 20}, "en"));
  auto result = loadLanguage(strings, share.path(), "Nowhere");
  EXPECT_FALSE(result.fileRead);
  EXPECT_EQ(result.missingIds.size(), 2u);
  EXPECT_EQ(strings.getString(20), "en 20");

  auto noEnglish = loadLanguage(strings, ScratchFolder().path(), "English");
  EXPECT_FALSE(noEnglish.fileRead);
  EXPECT_EQ(strings.table().count(), 0);
}

TEST_F(LanguageLoading, ListsTheLanguageFilesSortedWithoutExtension) {
  writeLanguage("Italiano", "");
  writeLanguage("English", "");
  writeLanguage("deutsch", "");
  share.write("Language/readme.txt", "");
  share.write("Language/Folder.h/inner.h", "");
  EXPECT_EQ(listLanguages(share.path()), (std::vector<std::string>{"deutsch", "English", "Italiano"}));
  EXPECT_TRUE(listLanguages(share.path() / "none").empty());
  EXPECT_EQ(languageFilePath("/opt/koru/share", "French"), std::filesystem::path("/opt/koru/share/Language/French.h"));
}

// ---------------------------------------------------------------------------------------------
// The choice of language at start

class LanguageChoiceAtStart : public LanguageLoading {
 protected:
  LanguageChoiceAtStart() {
    writeLanguage("English", entries({1, 2}, "en"));
    writeLanguage("Italiano", entries({1, 2}, "it"));
  }
  void store(std::string_view value) { settings.SaveSetting("KORU", "General", "Language", value); }
  std::string stored() const { return settings.GetSetting("KORU", "General", "Language", "<none>"); }

  MemorySettingsStore settings;
};

TEST_F(LanguageChoiceAtStart, NumbersOfOlderVersionsAndNamesInAnyCaseAreUnderstood) {
  struct Case {
    std::string value;
    std::string language;
  };
  for (const Case& c : std::vector<Case>{{"20", "Italiano"},
                                         {"11", "English"},
                                         {"ITALIANO", "Italiano"},
                                         {"italiano", "Italiano"},
                                         {"English", "English"},
                                         {" english ", "English"}}) {
    store(c.value);
    auto choice = chooseLanguageAtStart(strings, settings, share.path());
    EXPECT_EQ(choice.language, c.language) << c.value;
    EXPECT_FALSE(choice.showPicker);
    EXPECT_EQ(stored(), c.language) << "written back for " << c.value;
    EXPECT_EQ(strings.language(), c.language);
  }
  store("20");
  chooseLanguageAtStart(strings, settings, share.path());
  EXPECT_EQ(strings.getString(1), "it 1");
}

TEST_F(LanguageChoiceAtStart, NothingStoredMeansEnglishAndThePicker) {
  auto choice = chooseLanguageAtStart(strings, settings, share.path());
  EXPECT_EQ(choice.language, "English");
  EXPECT_TRUE(choice.showPicker);
  EXPECT_EQ(choice.languages, (std::vector<std::string>{"English", "Italiano"}));
  EXPECT_EQ(strings.getString(2), "en 2");
  EXPECT_EQ(stored(), "English");
}

TEST_F(LanguageChoiceAtStart, AnotherNameIsUsedOnlyIfItsFileExists) {
  writeLanguage("Deutsch", entries({1, 2}, "de"));
  store("DEUTSCH");
  EXPECT_EQ(chooseLanguageAtStart(strings, settings, share.path()).language, "Deutsch");
  EXPECT_EQ(strings.getString(1), "de 1");

  for (const char* value : {"Klingon", "../Language/English", "7"}) {
    store(value);
    EXPECT_EQ(chooseLanguageAtStart(strings, settings, share.path()).language, "English") << value;
    EXPECT_EQ(stored(), "English");
  }
}

TEST_F(LanguageChoiceAtStart, TheFrenchFileUnderItsOldNameIsRenamed) {
  writeLanguage("Fran\xC3\xA7" "ais", entries({1, 2}, "fr"));
  store("Fran\xC3\xA7" "ais");
  auto choice = chooseLanguageAtStart(strings, settings, share.path());
  EXPECT_EQ(choice.language, "French");
  EXPECT_EQ(choice.languages, (std::vector<std::string>{"English", "French", "Italiano"}));
  EXPECT_TRUE(std::filesystem::exists(languageFilePath(share.path(), "French")));
  EXPECT_FALSE(std::filesystem::exists(languageFilePath(share.path(), "Fran\xC3\xA7" "ais")));
  EXPECT_EQ(strings.getString(2), "fr 2");
  EXPECT_EQ(stored(), "French");
  EXPECT_TRUE(prompts.messages.empty());

  // Stored in upper case, and the file already renamed: nothing more to do.
  store("FRAN\xC3\x87" "AIS");
  EXPECT_EQ(chooseLanguageAtStart(strings, settings, share.path()).language, "French");
  store("french");
  EXPECT_EQ(chooseLanguageAtStart(strings, settings, share.path()).language, "French");

  // An old file beside a newer one does not replace it.
  writeLanguage("Fran\xC3\xA7" "ais", entries({1, 2}, "old"));
  store("FRENCH");
  chooseLanguageAtStart(strings, settings, share.path());
  EXPECT_EQ(strings.getString(1), "fr 1");
}

// ---------------------------------------------------------------------------------------------
// Plot labels

TEST(LanguagePlotLabels, EveryParameterCodeHasItsOwnLabel) {
  ScriptedPrompts prompts;
  ProgramStrings strings(prompts);
  for (int id = kStrPlotLabelFirst; id <= kStrPlotLabelLast; ++id)
    strings.table().append(static_cast<int16_t>(id), "label " + std::to_string(id));
  const std::vector<std::string> codes = {"ID", "CU", "PHI", "KD", "K0", "ED", "OCR", "P2U0",
                                          "UD", "P0P1", "U0P2P0P1", "SIGMAH", "SIGMAV", "VS", "VP", "G0"};
  std::vector<std::string> labels;
  for (const auto& code : codes) labels.push_back(plotLabel(strings, code));
  for (size_t i = 0; i < codes.size(); ++i)
    EXPECT_EQ(labels[i], "label " + std::to_string(kStrPlotLabelFirst + i)) << codes[i];
  EXPECT_EQ(plotLabel(strings, "SigmaH"), labels[11]);
  EXPECT_EQ(plotLabel(strings, "M"), "");
  EXPECT_EQ(plotLabel(strings, ""), "");
  EXPECT_TRUE(prompts.messages.empty());
}

TEST(StringsReader, ATextWithoutItsClosingQuoteIsReadInPartAndToldAtItsLine) {
  const struct {
    const char* bytes;
    LoadStatus status;
    int line;
  } cases[] = {
      {"1 \"A\"\r\n2 \"B\r\nC\"\r\n", LoadStatus::Complete, 0},
      {"1 \"A\"\r\n\r\n2 \"B\r\n3 \"C\"\r\n4 \"D\r\n", LoadStatus::Partial, 3},
      {"// x\r\n7 \"Cut", LoadStatus::Partial, 2},
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
