#include "sites/cls_SITE.h"

#include <utility>

#include "frame/Files.h"
#include "sites/FS.h"

namespace koru {

namespace fs = std::filesystem;

fs::path cls_SITE::folderPath() const { return strFolder.empty() ? fs::path() : sitesPath_ / strFolder; }

int cls_SITE::siteNumber() const {
  const size_t underscore = strFolder.rfind('_');
  if (underscore == std::string::npos) return 0;
  return FS::folderNumber(std::string(FS::kSitePrefix) + strFolder.substr(underscore + 1)).value_or(0);
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
    vertical.loadInfo();  // a broken header is listed with its problems, never dropped
    for (const Diagnostic& d : vertical.problems()) problems_.push_back(d);
    verticals.load(std::move(vertical));
  }
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
  std::vector<std::string> lines{strName};
  for (const cls_VERTICAL& vertical : verticals) lines.push_back(vertical.strFolderName);
  if (!FS::writeTextLines(folder / (strFolder + ".dat"), lines, why)) return false;
  blnModified = false;
  return true;
}

bool cls_SITE::newSite(const fs::path& sitesPath, std::string_view name, Diagnostic* why) {
  const std::string folderName = FS::newSiteFolderName(sitesPath);
  if (folderName.empty()) {
    if (why) *why = {sitesPath, 0, "no free site number: the folder cannot be inspected"};
    return false;
  }
  if (!ensureFolder(sitesPath / folderName)) {
    if (why) *why = {sitesPath / folderName, 0, "cannot create the folder"};
    return false;
  }
  *this = cls_SITE{};
  sitesPath_ = sitesPath;
  strFolder = folderName;
  strName = std::string(name);
  return saveInfo(why);
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
  const std::string name = FS::newVerticalFolderName(folder);
  if (name.empty()) {
    report({folder, 0, "no free vertical number: the folder cannot be inspected"});
    return nullptr;
  }
  if (!ensureFolder(folder / name)) {
    report({folder / name, 0, "cannot create the folder"});
    return nullptr;
  }
  cls_VERTICAL fresh;
  fresh.setFolders(folder, name);
  fresh.saveVerticalFile(problems);
  cls_VERTICAL& added = verticals.load(std::move(fresh));
  // Once the folder exists the vertical belongs in the site file, even if its header could not
  // be written: a folder the site does not name would be lost from view.
  Diagnostic siteWhy;
  if (!saveInfo(&siteWhy)) report(siteWhy);
  return &added;
}

}  // namespace koru
