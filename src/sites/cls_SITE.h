#pragma once
// A site: the folder SITE_n below the sites root, its display name, and its verticals in the
// user's order. The site file SITE_n/SITE_n.dat holds the name on line 1 and then the folder
// name of each vertical, one a line, Windows-1252 with CR LF.
//
// A fresh cls_SITE is empty (no folder) and stands for "no site open"; opening replaces it,
// closing makes a fresh one again.

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "frame/Diagnostic.h"
#include "sites/cls_VERTICAL.h"
#include "sites/cls_VERTICALS.h"

namespace koru {

class cls_SITE {
 public:
  std::string strName;    // display name
  std::string strFolder;  // SITE_n; empty while no site is open
  bool blnModified = false;  // the site manager's mark of unsaved changes; cleared by saveInfo
  cls_VERTICALS verticals;

  // Opens SITE_n below the sites root: the name from the site file (or its error text, see
  // FS::siteDisplayName) and the header of every vertical it names. No test data is read. A
  // broken vertical is still listed, with its problems; false if anything was wrong.
  bool sOpen(const std::filesystem::path& sitesPath, std::string_view folderName);
  // What went wrong in the last sOpen, site file and verticals' headers together.
  const std::vector<Diagnostic>& problems() const { return problems_; }

  // Writes SITE_n/SITE_n.dat: the name, then each vertical's folder name in collection order.
  bool saveInfo(Diagnostic* why = nullptr);

  // Makes a new site below the sites root with the smallest free number, and opens it (empty).
  bool newSite(const std::filesystem::path& sitesPath, std::string_view name, Diagnostic* why = nullptr);
  // Makes a new vertical with the smallest free number in this site: its folder, its header
  // file and profiles; appends it and rewrites the site file, so that no folder is left that the
  // site does not name. nullptr if its folder could not be made; a file that could not be
  // written afterwards is reported in `problems` and the vertical is still given back.
  cls_VERTICAL* newVertical(std::vector<Diagnostic>* problems = nullptr);

  cls_VERTICAL* activeVertical() const { return verticals.activeVertical(); }
  void setVerticalsInactive() { verticals.setAllInactive(); }
  // The number after the last "_" of the folder name; 0 if there is none.
  int siteNumber() const;

  const std::filesystem::path& sitesPath() const { return sitesPath_; }
  // The site's folder; empty while no site is open.
  std::filesystem::path folderPath() const;

 private:
  std::filesystem::path sitesPath_;
  std::vector<Diagnostic> problems_;
};

}  // namespace koru
