#include "sites/cls_SITE.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "frame/Files.h"
#include "sites/FS.h"
#include "sites/SiteFile.h"

namespace koru {

namespace fs = std::filesystem;

fs::path cls_SITE::folderPath() const { return strFolder.empty() ? fs::path() : sitesPath_ / strFolder; }

int cls_SITE::siteNumber() const {
  const size_t underscore = strFolder.rfind('_');
  if (underscore == std::string::npos) return 0;
  return FS::folderNumber(std::string(FS::kSitePrefix) + strFolder.substr(underscore + 1)).value_or(0);
}

namespace {

// The lines of the site file as it stands on disk, so that a change made under the lock builds
// on what other programs saved, not on what this one read at opening. Without a readable file,
// the site as held.
std::vector<std::string> currentSiteLines(const cls_SITE& site) {
  const fs::path siteFile = site.folderPath() / (site.strFolder + ".dat");
  std::vector<std::string> lines;
  if (const auto bytes = readFileBytes(siteFile)) {
    SiteFile current;
    current.parse(*bytes, siteFile);
    lines.push_back(current.name);
    for (const SiteFile::Vertical& v : current.verticals) lines.push_back(v.name);
  } else {
    lines.push_back(site.strName);
    for (const cls_VERTICAL& v : site.verticals) lines.push_back(v.strFolderName);
  }
  return lines;
}

bool removeLeftover(const fs::path& path, Diagnostic* why) {
  std::error_code ec;
  if (fs::is_directory(fs::symlink_status(path, ec))) return FS::deleteFolder(path, why);
  fs::remove(path, ec);
  if (ec && why) *why = {path, 0, "cannot be deleted: " + ec.message()};
  return !ec;
}

}  // namespace

FileLock cls_SITE::lockFolder(const fs::path& siteFolderPath) {
  return FileLock(siteFolderPath / FS::kLockFileName, "the site is being changed by another program; try again");
}

FileLock cls_SITE::lockSites(const fs::path& sitesPath) {
  return FileLock(sitesPath / FS::kLockFileName, "the sites are being changed by another program; try again");
}

bool cls_SITE::sOpen(const fs::path& sitesPath, std::string_view folderName) {
  problems_.clear();
  sitesPath_ = sitesPath;
  strFolder = std::string(folderName);
  blnModified = false;
  verticals.Clear();

  const fs::path folder = folderPath();
  strName = FS::siteDisplayName(folder);
  if (!FS::folderNumber(strFolder, FS::kSitePrefix)) {
    // A name like "..\x" must not turn into paths outside the sites root.
    problems_.push_back({folder, 0, strName});
    return false;
  }
  const fs::path siteFile = folder / (strFolder + ".dat");
  if (!folderExists(folder) || !fileExists(siteFile)) {
    problems_.push_back({siteFile, 0, strName});
    return false;
  }
  for (const std::string& name : FS::listVerticalFolders(folder, &problems_)) {
    cls_VERTICAL vertical;
    vertical.setFolders(folder, name);
    // A missing folder was told by the listing; its line is kept until the user removes it.
    if (folderExists(vertical.strFolderPath)) {
      vertical.loadInfo();  // a broken header is listed with its problems, never dropped
      for (const Diagnostic& d : vertical.problems()) problems_.push_back(d);
    }
    verticals.load(std::move(vertical));
  }
  for (const std::string& name : FS::listLeftovers(folder))
    problems_.push_back({folder / name, 0, "left by an interrupted change: the repair deletes it"});
  for (const std::string& name : FS::listUnlistedVerticalFolders(folder))
    problems_.push_back({folder / name, 0, "not named in the site file: the repair adds it"});
  return problems_.empty();
}

bool cls_SITE::saveInfo(Diagnostic* why) {
  if (!FS::folderNumber(strFolder, FS::kSitePrefix)) {
    if (why) *why = {folderPath(), 0, "no site is open"};
    return false;
  }
  const fs::path folder = folderPath();
  if (!ensureFolder(folder)) {
    if (why) *why = {folder, 0, "cannot create the folder"};
    return false;
  }
  FileLock lock = lockFolder(folder);
  if (!lock.locked()) {
    if (why) *why = lock.why();
    return false;
  }
  std::vector<std::string> lines{strName};
  for (const cls_VERTICAL& vertical : verticals) lines.push_back(vertical.strFolderName);
  if (!FS::writeTextLines(folder / (strFolder + ".dat"), lines, why)) return false;
  blnModified = false;
  return true;
}

bool cls_SITE::newSite(const fs::path& sitesPath, std::string_view name, Diagnostic* why) {
  auto fail = [&](Diagnostic d) {
    if (why) *why = std::move(d);
    return false;
  };
  if (!ensureFolder(sitesPath)) return fail({sitesPath, 0, "cannot create the folder"});
  FileLock lock = lockSites(sitesPath);
  if (!lock.locked()) return fail(lock.why());
  // Under the lock nobody else is building a site: what a building name holds was left by a
  // program that was killed.
  for (const std::string& leftover : FS::listLeftovers(sitesPath)) removeLeftover(sitesPath / leftover, nullptr);
  const std::string folderName = FS::newSiteFolderName(sitesPath);
  if (folderName.empty()) return fail({sitesPath, 0, "no free site number: the folder cannot be inspected"});
  const fs::path building = sitesPath / FS::buildingName(folderName);
  std::error_code ec;
  if (!fs::create_directory(building, ec)) return fail({building, 0, "cannot create the folder: " + ec.message()});
  Diagnostic writeWhy;
  if (!FS::writeTextLines(building / (folderName + ".dat"), {std::string(name)}, &writeWhy)) {
    FS::deleteFolder(building);
    return fail(writeWhy);
  }
  fs::rename(building, sitesPath / folderName, ec);
  if (ec) {
    FS::deleteFolder(building);
    return fail({sitesPath / folderName, 0, "cannot create the folder: " + ec.message()});
  }
  *this = cls_SITE{};
  sitesPath_ = sitesPath;
  strFolder = folderName;
  strName = std::string(name);
  return true;
}

cls_VERTICAL* cls_SITE::newVertical(std::vector<Diagnostic>* problems) {
  auto report = [&](Diagnostic d) {
    if (problems) problems->push_back(std::move(d));
  };
  if (!FS::folderNumber(strFolder, FS::kSitePrefix)) {
    report({folderPath(), 0, "no site is open"});
    return nullptr;
  }
  const fs::path folder = folderPath();
  FileLock lock = lockFolder(folder);
  if (!lock.locked()) {
    report(lock.why());
    return nullptr;
  }
  const std::string name = FS::newVerticalFolderName(folder);
  if (name.empty()) {
    report({folder, 0, "no free vertical number: the folder cannot be inspected"});
    return nullptr;
  }
  // Built as .VERT_m.new~/VERT_m, so that the vertical's own paths hold while its files are
  // written, and moved up when whole.
  const fs::path building = folder / FS::buildingName(name);
  std::error_code ec;
  if (!fs::create_directory(building, ec)) {
    report({building, 0, "cannot create the folder: " + ec.message()});
    return nullptr;
  }
  cls_VERTICAL fresh;
  fresh.setFolders(building, name);
  std::vector<Diagnostic> written;
  if (!fresh.saveVerticalFile(&written)) {
    FS::deleteFolder(building);
    for (Diagnostic& d : written) report(std::move(d));
    return nullptr;
  }
  fs::rename(building / name, folder / name, ec);
  if (ec) {
    FS::deleteFolder(building);
    report({folder / name, 0, "cannot create the folder: " + ec.message()});
    return nullptr;
  }
  fs::remove(building, ec);
  fresh.setFolders(folder, name);

  std::vector<std::string> lines = currentSiteLines(*this);
  lines.push_back(name);
  Diagnostic siteWhy;
  if (!FS::writeTextLines(folder / (strFolder + ".dat"), lines, &siteWhy)) report(siteWhy);
  return &verticals.load(std::move(fresh));
}

bool cls_SITE::removeVertical(int index, Diagnostic* why) {
  const cls_VERTICAL* vertical = verticals.item(index);
  if (!vertical || !FS::folderNumber(vertical->strFolderName, FS::kVerticalPrefix)) {
    if (why) *why = {folderPath(), 0, "no such vertical"};
    return false;
  }
  const fs::path folder = folderPath();
  FileLock lock = lockFolder(folder);
  if (!lock.locked()) {
    if (why) *why = lock.why();
    return false;
  }
  std::vector<std::string> lines = currentSiteLines(*this);
  const auto named = std::remove(lines.begin() + 1, lines.end(), vertical->strFolderName);
  if (named != lines.end()) {
    lines.erase(named, lines.end());
    if (!FS::writeTextLines(folder / (strFolder + ".dat"), lines, why)) return false;
  }
  return verticals.Remove(index, why);
}

bool cls_SITE::cleanLeftovers(std::vector<Diagnostic>* done) {
  auto tell = [&](Diagnostic d) {
    if (done) done->push_back(std::move(d));
  };
  if (!FS::folderNumber(strFolder, FS::kSitePrefix)) {
    tell({folderPath(), 0, "no site is open"});
    return false;
  }
  const fs::path folder = folderPath();
  FileLock lock = lockFolder(folder);
  if (!lock.locked()) {
    tell(lock.why());
    return false;
  }
  bool ok = true;
  for (const std::string& name : FS::listLeftovers(folder)) {
    Diagnostic why;
    if (removeLeftover(folder / name, &why)) {
      tell({folder / name, 0, "deleted: left by an interrupted change"});
    } else {
      tell(why);
      ok = false;
    }
  }
  // A folder the site file does not name is a vertical whose creation was cut short after it
  // was whole, or whose removal was cut short before it started: either way it is kept.
  std::vector<std::string> lines = currentSiteLines(*this);
  const std::vector<std::string> unlisted = FS::listUnlistedVerticalFolders(folder);
  lines.insert(lines.end(), unlisted.begin(), unlisted.end());
  // Rewriting the site file also clears the temporaries of saves that were killed.
  Diagnostic why;
  if (!FS::writeTextLines(folder / (strFolder + ".dat"), lines, &why)) {
    tell(why);
    return false;
  }
  for (const cls_VERTICAL& vertical : verticals) removeStaleTemporaries(vertical.strFolderPath);
  for (const std::string& name : unlisted) {
    removeStaleTemporaries(folder / name);
    tell({folder / name, 0, "added to the site file"});
    cls_VERTICAL vertical;
    vertical.setFolders(folder, name);
    vertical.loadInfo();
    verticals.load(std::move(vertical));
  }
  return ok;
}

}  // namespace koru
