#pragma once
// What a site file SITE_n.dat says: the site's display name on line 1, then the folder name of
// each vertical, one a line, in the user's order. The names come from a file that anyone can
// edit, so only proper VERT_m names are taken, each once; the others are skipped and told.
// Whether a named folder exists is for the caller to see.

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "frame/Diagnostic.h"
#include "frame/LoadResult.h"

namespace koru {

struct SiteFile {
  struct Vertical {
    std::string name;  // VERT_m
    int line = 0;      // 1-based line of the file
  };

  std::string name;
  std::vector<Vertical> verticals;
  // One per skipped line, in file order, up to kMaxProblems; a last one then counts the rest.
  std::vector<Diagnostic> problems;

  // A site holds at most this many verticals; lines beyond are not read. It bounds what a damaged
  // file can make us hold, as kMaxProblems bounds the messages of a file of nothing but junk.
  static constexpr size_t kMaxVerticals = 32767;
  static constexpr size_t kMaxProblems = 100;

  // Replaces everything from the file's bytes; `file` names it in the diagnostics. Complete, or
  // Partial when a line was skipped (why: the first of `problems`).
  LoadResult parse(std::string_view bytes, const std::filesystem::path& file);
};

}  // namespace koru
