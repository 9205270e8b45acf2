#include "sites/SiteFile.h"

#include <set>

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
  const std::vector<std::string> lines = FS::textFileLines(bytes);
  name = lines.empty() ? std::string() : lines.front();
  verticals.clear();
  problems.clear();
  std::set<std::string> seen;
  for (size_t i = 1; i < lines.size(); ++i) {
    const int lineNo = static_cast<int>(i) + 1;
    std::string vertical = trimBlanks(lines[i]);
    if (vertical.empty()) continue;
    if (!FS::folderNumber(vertical, FS::kVerticalPrefix))
      problems.push_back({file, lineNo, shownText(vertical) + " is not a vertical folder name: skipped"});
    else if (!seen.insert(vertical).second)
      problems.push_back({file, lineNo, vertical + " is named twice: the repeat is skipped"});
    else
      verticals.push_back({std::move(vertical), lineNo});
  }
  if (problems.empty()) return {};
  return LoadResult::fail(LoadStatus::Partial, problems.front());
}

}  // namespace koru
