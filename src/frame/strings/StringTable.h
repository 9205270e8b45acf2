#pragma once
// The program's texts by number, and the lookups every window and message uses.
//
// Windows ask for dozens of texts each time they are built, so the texts sit in two parallel
// arrays sorted by number and are found by binary search; a lookup hands back a reference to the
// stored text and allocates nothing. A number that is not in the file is a fault of the language
// file, not of the user: it is reported through the message box and the program goes on with an
// empty text.

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "frame/Prompts.h"

namespace koru {

class StringTable {
 public:
  // The arrays start with this many places and double whenever they are full.
  static constexpr int kInitialCapacity = 501;

  StringTable();

  // Forgets every entry and goes back to the initial size.
  void clear();

  // Adds an entry after the last one. Ids must ascend: an id not greater than the last one is
  // refused (false), which keeps the binary search sound whatever the file holds.
  bool append(int16_t id, std::string text);

  int count() const { return intStringCount; }
  int capacity() const { return static_cast<int>(aStringIds.size()); }

  // Entry by place, 0-based; a place outside the table gives id 0 and an empty text.
  int16_t idAt(int index) const;
  const std::string& textAt(int index) const;
  void setTextAt(int index, std::string text);

  // Place of an id, or -1. Both ends are tested first; then the midpoint (the truncated average
  // of the bounds) halves the span until the bounds are neighbours, which means "not there".
  int find(int id) const;

 private:
  std::vector<int16_t> aStringIds;
  std::vector<std::string> aStrings;
  int intStringCount = 0;
};

// The texts of the language in use, with the file they came from (named when a number is
// missing) and the prompts through which a missing number is reported.
class ProgramStrings {
 public:
  explicit ProgramStrings(Prompts& prompts) : prompts_(&prompts) {}

  StringTable& table() { return table_; }
  const StringTable& table() const { return table_; }
  Prompts& prompts() const { return *prompts_; }

  const std::filesystem::path& filePath() const { return filePath_; }
  void setFilePath(std::filesystem::path path) { filePath_ = std::move(path); }
  const std::string& language() const { return language_; }
  void setLanguage(std::string name) { language_ = std::move(name); }

  // The text of an entry. Not found: a beep and the message "Unable to find string number <id>
  // in language file:" with the file's path on the line below, and an empty text.
  const std::string& getString(int id) const;

  // getString cut to `length` characters: a longer text keeps length - 1 characters and ends
  // with ".". Characters, not bytes, are counted, so an accented letter is never split.
  std::string getStringMax(int id, int length) const;

  // getString with every "XXX" replaced by `value`.
  std::string getStringX(int id, std::string_view value) const;

  // The texts of the ids of a range such as "4201-4204" (a single number is a range of one), in
  // order. Between two texts stands `separator` repeated `count` times; an empty separator is a
  // line break (CR LF). A range that cannot be read gives an empty text.
  std::string getStringRange(std::string_view range, int count, std::string_view separator) const;

  // Message boxes of those texts; `buttons` is a button set plus an icon (msgbox); the result
  // is the answer pressed.
  int showString(int id, int buttons, std::string_view title) const;
  int showStringX(int id, std::string_view value, int buttons, std::string_view title) const;
  int showStringRange(std::string_view range, int count, std::string_view separator, int buttons,
                      std::string_view title) const;
  int showStringRangeX(std::string_view range, int count, std::string_view separator, std::string_view value,
                       int buttons, std::string_view title) const;

 private:
  Prompts* prompts_;
  StringTable table_;
  std::filesystem::path filePath_;
  std::string language_;
};

// Every occurrence of `placeholder` replaced by `value`, left to right, never rescanning what
// was put in. Callers use it for "YYY", "ZZZ" and the numbered forms ("XXX_1").
std::string replacePlaceholder(std::string_view text, std::string_view placeholder, std::string_view value);

// The first `length` characters of UTF-8 text (a character is a whole code point).
std::string_view firstCharacters(std::string_view text, int length);
int characterCount(std::string_view text);

}  // namespace koru
