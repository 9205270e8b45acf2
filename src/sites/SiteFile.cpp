#include "sites/SiteFile.h"

#include <set>

#include "frame/TextCodec.h"
#include "frame/TextLines.h"
#include "sites/FS.h"

namespace koru {

namespace {

std::string trimBlanks(std::string_view text) {
  size_t begin = 0, end = text.size();
  while (begin < end && (text[begin] == ' ' || text[begin] == '\t')) ++begin;
  while (end > begin && (text[end - 1] == ' ' || text[end - 1] == '\t')) --end;
  return std::string(text.substr(begin, end - begin));
}

// A quoted, shortened form of a text read from the file, for messages.
std::string shownText(std::string_view text) {
  constexpr size_t kShown = 40;
  std::string out = "'";
  out += text.substr(0, kShown);
  if (text.size() > kShown) out += "...";
  out += "'";
  return out;
}

}  // namespace

LoadResult SiteFile::parse(std::string_view bytes, const std::filesystem::path& file) {
  bytes = withoutBom(bytes);
  name.clear();
  verticals.clear();
  problems.clear();
  std::set<std::string> seen;
  size_t skipped = 0;
  const auto skip = [&](Diagnostic d) {
    if (++skipped <= kMaxProblems) problems.push_back(std::move(d));
  };
  size_t pos = 0;
  int lineNo = 0;
  std::string_view line;
  while (nextLine(bytes, pos, line)) {
    ++lineNo;
    if (lineNo == 1) name = cp1252ToUtf8(line);
    // A last line without its line end may have lost characters: "VERT_12" of "VERT_123".
    if (pos == bytes.size() && !endsWithLineEnd(bytes) && !trimBlanks(line).empty()) {
      skip({file, lineNo, "the file ends early, in the middle of line " + std::to_string(lineNo) +
                              (lineNo == 1 ? "" : ": skipped")});
      break;
    }
    if (lineNo == 1) continue;
    std::string vertical = trimBlanks(cp1252ToUtf8(line));
    if (vertical.empty()) continue;
    if (!FS::folderNumber(vertical, FS::kVerticalPrefix)) {
      skip({file, lineNo, shownText(vertical) + " is not a vertical folder name: skipped"});
    } else if (!seen.insert(vertical).second) {
      skip({file, lineNo, vertical + " is named twice: the repeat is skipped"});
    } else if (verticals.size() >= kMaxVerticals) {
      skip({file, lineNo, "too many verticals: a site holds at most " + std::to_string(kMaxVerticals) +
                              "; the lines from here on are not read"});
      break;
    } else {
      verticals.push_back({std::move(vertical), lineNo});
    }
  }
  if (skipped > kMaxProblems)
    problems.push_back({file, 0, std::to_string(skipped - kMaxProblems) + " more lines skipped"});
  if (problems.empty()) return {};
  return LoadResult::fail(LoadStatus::Partial, problems.front());
}

}  // namespace koru
