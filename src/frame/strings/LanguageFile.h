#pragma once
// Reader of a language file: the numbered texts that every window and message of the program is
// made of. The file is plain text, one entry a line:
//
//   // a comment (the line's first two characters)
//   1701 "Site"
//   1837 "A text that runs
//   over two lines"
//
// Empty lines are skipped. A text that does not end on its own line goes on over the following
// lines, joined with CR LF, until a line ends with a quote; comments and empty lines inside it are
// left out. A line that is itself a whole entry closes a text whose closing quote was forgotten,
// so one slip in a hand-edited file costs one text and not the rest of the file. A file that ends
// inside a text keeps what was read of it.
//
// Files are Windows-1252 on disk (UTF-8 after a byte order mark is accepted too), with CR LF or
// LF line ends; texts come out in UTF-8.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/Diagnostic.h"
#include "frame/LoadResult.h"

namespace koru {

struct LanguageEntry {
  int16_t id = 0;
  std::string text;  // UTF-8, inner lines joined with CR LF
  int line = 0;      // 1-based line of the file where the entry starts
};

// Every entry of the file's bytes into `entries` (replacing them), in file order; `file` names
// the file in the diagnostic. Ids are not checked for order here: the tables decide what an id
// out of order means. Complete, or Partial when a text never found its closing quote (it is kept
// as read; why: the line where the first such text starts).
LoadResult parseLanguageFile(std::string_view bytes, const std::filesystem::path& file,
                             std::vector<LanguageEntry>& entries);
// The entries alone.
std::vector<LanguageEntry> parseLanguageFile(std::string_view bytes);

// The entries of a file on disk; nullopt (and, if asked, why) when it cannot be read.
std::optional<std::vector<LanguageEntry>> readLanguageFile(const std::filesystem::path& path,
                                                           Diagnostic* error = nullptr);

}  // namespace koru
