#include "frame/strings/LanguageFile.h"

#include <algorithm>
#include <utility>

#include "frame/Files.h"
#include "frame/TextCodec.h"
#include "frame/TextLines.h"

namespace koru {

namespace {

constexpr std::string_view kCrLf = "\r\n";
constexpr std::string_view kUtf8Bom = "\xEF\xBB\xBF";

bool isBlank(char c) { return c == ' ' || c == '\t'; }

std::string_view trimRight(std::string_view s) {
  while (!s.empty() && isBlank(s.back())) s.remove_suffix(1);
  return s;
}

bool isComment(std::string_view line) { return line.size() >= 2 && line[0] == '/' && line[1] == '/'; }

// Blanks alone count as an empty line: an editor that indents empty lines must not break a text.
bool isEmptyLine(std::string_view line) { return trimRight(line).empty(); }

// Blanks after the closing quote are forgiven; they are invisible in an editor.
bool endsWithQuote(std::string_view s) {
  s = trimRight(s);
  return !s.empty() && s.back() == '"';
}

std::string_view beforeClosingQuote(std::string_view s) {
  s = trimRight(s);
  s.remove_suffix(1);
  return s;
}

struct EntryStart {
  int16_t id = 0;
  std::string_view rest;  // what follows the opening quote
  bool idFits = true;     // the number fits 16 bits
};

// A line shaped as an entry: blanks, a number, blanks, a quote.
std::optional<EntryStart> entryShape(std::string_view line) {
  size_t i = 0;
  while (i < line.size() && isBlank(line[i])) ++i;
  const size_t firstDigit = i;
  int32_t value = 0;
  while (i < line.size() && line[i] >= '0' && line[i] <= '9') {
    value = std::min(value * 10 + (line[i] - '0'), 32768);  // saturates above the largest id
    ++i;
  }
  if (i == firstDigit) return std::nullopt;
  while (i < line.size() && isBlank(line[i])) ++i;
  if (i >= line.size() || line[i] != '"') return std::nullopt;
  return EntryStart{static_cast<int16_t>(std::min(value, 32767)), line.substr(i + 1), value <= 32767};
}

// A line that opens an entry: its shape, with a number that fits 16 bits.
std::optional<EntryStart> entryStart(std::string_view line) {
  auto start = entryShape(line);
  if (start && !start->idFits) return std::nullopt;
  return start;
}

bool isCompleteEntry(const std::optional<EntryStart>& start) { return start && endsWithQuote(start->rest); }

}  // namespace

LoadResult parseLanguageFile(std::string_view bytes, const std::filesystem::path& file,
                             std::vector<LanguageEntry>& entries) {
  LoadResult result;
  auto unclosed = [&](const LanguageEntry& entry) {
    if (result.complete())
      result = LoadResult::fail(LoadStatus::Partial, {file, entry.line, "the text has no closing quote"});
  };
  std::string text;
  if (bytes.substr(0, kUtf8Bom.size()) == kUtf8Bom)
    text.assign(bytes.substr(kUtf8Bom.size()));
  else
    text = cp1252ToUtf8(bytes);

  entries.clear();
  std::optional<LanguageEntry> open;  // a text still waiting for its closing quote
  const std::string_view all = text;
  size_t pos = 0;
  int lineNumber = 0;
  std::string_view strCurrentLine;
  while (nextLine(all, pos, strCurrentLine)) {
    ++lineNumber;

    if (isComment(strCurrentLine) || isEmptyLine(strCurrentLine)) continue;
    const auto start = entryStart(strCurrentLine);

    if (open) {
      if (isCompleteEntry(start)) {
        // The closing quote was forgotten: keep what the text had and take this line as new.
        unclosed(*open);
        entries.push_back(std::move(*open));
        open.reset();
      } else {
        open->text += kCrLf;
        if (endsWithQuote(strCurrentLine)) {
          open->text += beforeClosingQuote(strCurrentLine);
          entries.push_back(std::move(*open));
          open.reset();
        } else {
          open->text += strCurrentLine;
        }
        continue;
      }
    }

    if (!start) {
      // Neither comment nor entry: nothing the program can use. An entry whose number is too
      // large for an id is told, as its text would be missing without a word.
      if (result.complete() && entryShape(strCurrentLine))
        result = LoadResult::fail(LoadStatus::Partial, {file, lineNumber, "the entry number is beyond 32767"});
      continue;
    }
    if (endsWithQuote(start->rest))
      entries.push_back({start->id, std::string(beforeClosingQuote(start->rest)), lineNumber});
    else
      open = LanguageEntry{start->id, std::string(start->rest), lineNumber};
  }
  if (open) {
    unclosed(*open);
    entries.push_back(std::move(*open));
  }
  return result;
}

std::vector<LanguageEntry> parseLanguageFile(std::string_view bytes) {
  std::vector<LanguageEntry> entries;
  parseLanguageFile(bytes, {}, entries);
  return entries;
}

std::optional<std::vector<LanguageEntry>> readLanguageFile(const std::filesystem::path& path, Diagnostic* error) {
  auto bytes = readFileBytes(path, error);
  if (!bytes) return std::nullopt;
  std::vector<LanguageEntry> entries;
  parseLanguageFile(*bytes, path, entries);
  return entries;
}

}  // namespace koru
