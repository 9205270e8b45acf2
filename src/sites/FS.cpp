#include "sites/FS.h"

#include <algorithm>
#include <cctype>
#include <limits>
#include <system_error>
#include <utility>

#include "frame/Files.h"
#include "frame/TextLines.h"
#include "frame/Log.h"
#include "frame/TextCodec.h"
#include "sites/SiteFile.h"

namespace koru::FS {

namespace fs = std::filesystem;

namespace {

// Folder numbers stay well inside 32 bits, and the free-number search ends somewhere even on a
// folder that refuses to say what it holds.
constexpr int kMaxDigits = 9;
constexpr int kMaxNumber = 999999999;

void setWhy(Diagnostic* why, const fs::path& file, std::string reason) {
  if (why && why->reason.empty()) *why = Diagnostic{file, 0, std::move(reason)};
}

// The last name of a path, also when the path ends with a separator.
std::string lastName(const fs::path& path) {
  fs::path p = path;
  if (!p.has_filename() && p.has_parent_path() && p != p.root_path()) p = p.parent_path();
  return p.filename().string();
}

std::string newFolderName(const fs::path& parent, std::string_view prefix, std::vector<std::string> taken) {
  for (const std::string& leftover : listLeftovers(parent))
    if (auto name = leftoverOf(leftover)) taken.push_back(*name);
  std::sort(taken.begin(), taken.end());
  for (int n = 1; n <= kMaxNumber; ++n) {
    std::string name = std::string(prefix) + std::to_string(n);
    if (std::binary_search(taken.begin(), taken.end(), name)) continue;
    std::error_code ec;
    const fs::file_status st = fs::symlink_status(parent / name, ec);
    if (st.type() == fs::file_type::not_found) return name;
    if (st.type() == fs::file_type::none || st.type() == fs::file_type::unknown) {
      // The folder cannot be inspected: whatever name we gave might already be taken.
      logLine("Cannot inspect " + (parent / name).string() + ": " + ec.message());
      return {};
    }
    if (st.type() == fs::file_type::regular) logLine(name + " is a file: please remove it!");
  }
  return {};
}

bool hasExtension(const fs::path& file, std::string_view lowerExtension) {
  std::string ext = file.extension().string();
  std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return std::tolower(c); });
  return ext == lowerExtension;
}

// True if `inner` is `outer` or lies below it, judged on the resolved paths.
bool isInside(const fs::path& inner, const fs::path& outer) {
  std::error_code ec1, ec2;
  const fs::path a = fs::weakly_canonical(inner, ec1);
  const fs::path b = fs::weakly_canonical(outer, ec2);
  if (ec1 || ec2) return false;
  auto ia = a.begin();
  for (auto ib = b.begin(); ib != b.end(); ++ib, ++ia) {
    if (ib->empty()) continue;  // a trailing separator
    if (ia == a.end() || *ia != *ib) return false;
  }
  return true;
}

bool copyFilesWithExtension(const fs::path& from, const fs::path& to, std::string_view extension, bool overwrite,
                            Diagnostic* why) {
  if (!folderExists(from)) {
    setWhy(why, from, "folder not found");
    return false;
  }
  if (!ensureFolder(to)) {
    setWhy(why, to, "cannot create the folder");
    return false;
  }
  std::error_code ec;
  fs::directory_iterator it(from, ec), end;
  if (ec) {
    setWhy(why, from, "cannot list the folder: " + ec.message());
    return false;
  }
  bool ok = true;
  for (; it != end; it.increment(ec)) {
    std::error_code stEc;
    if (!it->is_regular_file(stEc) || !hasExtension(it->path(), extension)) continue;
    ok = copyFile(it->path(), to / it->path().filename(), overwrite, why) && ok;
  }
  if (ec) {
    setWhy(why, from, "listing stopped: " + ec.message());
    ok = false;
  }
  return ok;
}

}  // namespace

// --- Names ----------------------------------------------------------------------------------

std::optional<int> folderNumber(std::string_view name, std::string_view prefix) {
  if (name.size() <= prefix.size() || name.substr(0, prefix.size()) != prefix) return std::nullopt;
  const std::string_view digits = name.substr(prefix.size());
  if (digits.size() > static_cast<size_t>(kMaxDigits) || digits.front() == '0') return std::nullopt;
  int value = 0;
  for (char c : digits) {
    if (c < '0' || c > '9') return std::nullopt;
    value = value * 10 + (c - '0');
  }
  return value;
}

std::optional<int> folderNumber(std::string_view name) {
  if (auto n = folderNumber(name, kSitePrefix)) return n;
  return folderNumber(name, kVerticalPrefix);
}

bool isValidFolderName(std::string_view name) { return folderNumber(name).has_value(); }

std::string buildingName(std::string_view folderName) { return "." + std::string(folderName) + std::string(kBuildingEnd); }

std::string removingName(std::string_view folderName) { return "." + std::string(folderName) + std::string(kRemovingEnd); }

std::optional<std::string> leftoverOf(std::string_view name) {
  if (name.empty() || name.front() != '.') return std::nullopt;
  name.remove_prefix(1);
  for (std::string_view end : {kBuildingEnd, kRemovingEnd}) {
    if (name.size() <= end.size() || !name.ends_with(end)) continue;
    const std::string_view folder = name.substr(0, name.size() - end.size());
    if (isValidFolderName(folder)) return std::string(folder);
  }
  return std::nullopt;
}

std::vector<std::string> listLeftovers(const fs::path& folder) {
  std::vector<std::string> names;
  std::error_code ec;
  for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
    std::string name = it->path().filename().string();
    if (leftoverOf(name)) names.push_back(std::move(name));
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string newSiteFolderName(const fs::path& sitesPath) { return newFolderName(sitesPath, kSitePrefix, {}); }

std::string newVerticalFolderName(const fs::path& siteFolderPath) {
  std::vector<std::string> listed;
  const fs::path siteFile = siteFolderPath / (lastName(siteFolderPath) + ".dat");
  if (const auto bytes = readFileBytes(siteFile)) {
    SiteFile site;
    site.parse(*bytes, siteFile);
    for (SiteFile::Vertical& v : site.verticals) listed.push_back(std::move(v.name));
  }
  return newFolderName(siteFolderPath, kVerticalPrefix, std::move(listed));
}

std::vector<std::string> listUnlistedVerticalFolders(const fs::path& siteFolderPath) {
  std::vector<std::string> listed = listVerticalFolders(siteFolderPath);
  std::sort(listed.begin(), listed.end());
  std::vector<std::pair<int, std::string>> found;
  std::error_code ec;
  for (fs::directory_iterator it(siteFolderPath, ec), end; !ec && it != end; it.increment(ec)) {
    std::string name = it->path().filename().string();
    const auto n = folderNumber(name, kVerticalPrefix);
    std::error_code stEc;
    if (n && it->is_directory(stEc) && !std::binary_search(listed.begin(), listed.end(), name))
      found.emplace_back(*n, std::move(name));
  }
  std::sort(found.begin(), found.end());
  std::vector<std::string> names;
  for (auto& [n, name] : found) names.push_back(std::move(name));
  return names;
}

std::string siteDisplayName(const fs::path& siteFolderPath) {
  const std::string name = lastName(siteFolderPath);
  if (!folderNumber(name, kSitePrefix)) return "(ERROR) invalid sitename";
  if (!folderExists(siteFolderPath)) return "(ERROR) '" + name + "' not found";
  const fs::path siteFile = siteFolderPath / (name + ".dat");
  const auto bytes = readFileBytes(siteFile);
  if (!bytes) return "(ERROR) '" + name + ".dat not found";
  SiteFile site;
  site.parse(*bytes, siteFile);
  return site.name;
}

std::vector<std::string> listSiteFolders(const fs::path& sitesPath) {
  std::vector<std::pair<int, std::string>> found;
  std::error_code ec;
  fs::directory_iterator it(sitesPath, ec), end;
  for (; !ec && it != end; it.increment(ec)) {
    const std::string name = it->path().filename().string();
    const auto n = folderNumber(name, kSitePrefix);
    if (!n) continue;
    std::error_code stEc;
    if (!it->is_directory(stEc)) {
      logLine(name + " is not a folder: skipped");
      continue;
    }
    found.emplace_back(*n, name);
  }
  std::sort(found.begin(), found.end());
  std::vector<std::string> names;
  names.reserve(found.size());
  for (auto& [n, name] : found) names.push_back(std::move(name));
  return names;
}

std::vector<std::string> listVerticalFolders(const fs::path& siteFolderPath, std::vector<Diagnostic>* problems) {
  auto report = [&](Diagnostic d) {
    if (problems) problems->push_back(std::move(d));
  };
  std::vector<std::string> names;
  const fs::path siteFile = siteFolderPath / (lastName(siteFolderPath) + ".dat");
  Diagnostic why;
  const auto bytes = readFileBytes(siteFile, &why);
  if (!bytes) {
    report(why);
    return names;
  }
  SiteFile site;
  site.parse(*bytes, siteFile);
  // A folder that is missing is told at its line, among the lines the file itself spoils.
  std::vector<Diagnostic> found = std::move(site.problems);
  for (SiteFile::Vertical& v : site.verticals) {
    if (!folderExists(siteFolderPath / v.name))
      found.push_back({siteFile, v.line, "the folder " + v.name + " does not exist (folder missing)"});
    names.push_back(std::move(v.name));
  }
  std::stable_sort(found.begin(), found.end(), [](const Diagnostic& a, const Diagnostic& b) { return a.line < b.line; });
  for (Diagnostic& d : found) report(std::move(d));
  return names;
}

// --- Files and folders ----------------------------------------------------------------------

bool copyFile(const fs::path& from, const fs::path& to, bool overwrite, Diagnostic* why) {
  std::error_code ec;
  if (!fs::is_regular_file(from, ec)) {
    setWhy(why, from, "file not found");
    return false;
  }
  const fs::file_status target = fs::symlink_status(to, ec);
  if (target.type() != fs::file_type::not_found) {
    if (fs::equivalent(from, to, ec)) return true;
    if (!overwrite) {
      setWhy(why, to, "already exists: not replaced");
      return false;
    }
    if (fs::is_directory(target)) {
      setWhy(why, to, "is a folder: not replaced");
      return false;
    }
  }
  // The copy goes through the same exclusive temporary as every save, so a failed copy leaves
  // the old target whole and nothing planted beside it is written through.
  Diagnostic readWhy;
  const auto bytes = readFileBytes(from, &readWhy);
  if (!bytes) {
    setWhy(why, from, "cannot copy: " + readWhy.reason);
    return false;
  }
  Diagnostic writeWhy;
  if (!writeFileAtomically(to, *bytes, &writeWhy)) {
    setWhy(why, to, "cannot copy: " + writeWhy.reason);
    return false;
  }
  return true;
}

bool moveFile(const fs::path& from, const fs::path& to, Diagnostic* why) {
  std::error_code ec;
  if (!fs::is_regular_file(from, ec)) {
    setWhy(why, from, "file not found");
    return false;
  }
  if (fs::symlink_status(to, ec).type() != fs::file_type::not_found) {
    setWhy(why, to, "already exists: not replaced");
    return false;
  }
  fs::rename(from, to, ec);
  if (!ec) return true;
  // Another volume: copy, and let the source go only once the copy stands.
  if (!copyFile(from, to, false, why)) return false;
  fs::remove(from, ec);
  if (ec) {
    setWhy(why, from, "copied, but the original could not be removed: " + ec.message());
    return false;
  }
  return true;
}

bool copyFolder(const fs::path& from, const fs::path& to, bool overwrite, Diagnostic* why) {
  std::error_code ec;
  if (!fs::is_directory(from, ec)) {
    setWhy(why, from, "folder not found");
    return false;
  }
  if (isInside(to, from)) {
    setWhy(why, to, "lies inside the folder being copied");
    return false;
  }
  if (!ensureFolder(to)) {
    setWhy(why, to, "cannot create the folder");
    return false;
  }
  fs::directory_iterator it(from, ec), end;
  if (ec) {
    setWhy(why, from, "cannot list the folder: " + ec.message());
    return false;
  }
  bool ok = true;
  for (; it != end; it.increment(ec)) {
    std::error_code stEc;
    const fs::file_status st = it->symlink_status(stEc);
    const fs::path target = to / it->path().filename();
    if (fs::is_directory(st)) {
      ok = copyFolder(it->path(), target, overwrite, why) && ok;
    } else if (fs::is_regular_file(st)) {
      ok = copyFile(it->path(), target, overwrite, why) && ok;
    } else {
      logLine(it->path().string() + " is neither a file nor a folder: not copied");
    }
  }
  if (ec) {
    setWhy(why, from, "listing stopped: " + ec.message());
    ok = false;
  }
  return ok;
}

bool deleteFolder(const fs::path& folder, Diagnostic* why) {
  // The store's own paths never hold "." or ".."; a path that does is a damaged name, and
  // following it could delete a whole site or the store. Roots and empty paths likewise.
  bool plain = !folder.empty();
  for (const fs::path& part : folder)
    if (part == "." || part == "..") plain = false;
  fs::path p = folder;
  if (!p.has_filename() && p.has_parent_path()) p = p.parent_path();
  if (!plain || p.empty() || p == p.root_path() || !p.has_filename()) {
    setWhy(why, folder, "not a folder that can be deleted");
    return false;
  }
  std::error_code ec;
  const fs::file_status st = fs::symlink_status(p, ec);
  if (st.type() == fs::file_type::not_found) return true;
  if (!fs::is_directory(st) && !fs::is_symlink(st)) {
    setWhy(why, folder, "is not a folder: not deleted");
    return false;
  }
  fs::remove_all(p, ec);
  if (ec) {
    setWhy(why, folder, "could not be deleted completely: " + ec.message());
    return false;
  }
  return true;
}

std::uintmax_t folderSize(const fs::path& folder) {
  std::uintmax_t total = 0;
  std::error_code ec;
  fs::recursive_directory_iterator it(folder, fs::directory_options::skip_permission_denied, ec), end;
  for (; !ec && it != end; it.increment(ec)) {
    std::error_code stEc;
    if (!fs::is_regular_file(it->symlink_status(stEc))) continue;
    const std::uintmax_t size = it->file_size(stEc);
    if (!stEc) total += size;
  }
  return total;
}

bool copySeismograms(const fs::path& from, const fs::path& to, bool overwrite, Diagnostic* why) {
  return copyFilesWithExtension(from, to, ".kor", overwrite, why);
}

bool copyDissipations(const fs::path& from, const fs::path& to, bool overwrite, Diagnostic* why) {
  return copyFilesWithExtension(from, to, ".dis", overwrite, why);
}

// --- Line files -----------------------------------------------------------------------------

std::vector<std::string> textFileLines(std::string_view bytes) {
  const auto views = koru::splitLines(cp1252ToUtf8(bytes));
  return std::vector<std::string>(views.begin(), views.end());
}

std::string textFileBytes(const std::vector<std::string>& lines) {
  std::string bytes;
  for (const std::string& line : lines) {
    std::string oneLine = line;
    std::replace(oneLine.begin(), oneLine.end(), '\r', ' ');
    std::replace(oneLine.begin(), oneLine.end(), '\n', ' ');
    bytes += utf8ToCp1252(oneLine);
    bytes += "\r\n";
  }
  return bytes;
}

bool writeTextLines(const fs::path& file, const std::vector<std::string>& lines, Diagnostic* why) {
  return writeFileAtomically(file, textFileBytes(lines), why);
}

}  // namespace koru::FS
