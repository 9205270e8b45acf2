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
#include "frame/FileLock.h"
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
  // broken vertical is still listed, with its problems, and so is one whose folder is missing
  // (its header left at the defaults). The leftovers of an interrupted change and VERT_m folders
  // the site file does not name are problems too (see cleanLeftovers). False if anything was
  // wrong.
  bool sOpen(const std::filesystem::path& sitesPath, std::string_view folderName);
  // What went wrong in the last sOpen, site file and verticals' headers together.
  const std::vector<Diagnostic>& problems() const { return problems_; }

  // Every change of a site's files holds the lock of its folder, and numbering a new site the
  // lock of the sites folder. newSite, newVertical, removeVertical, saveInfo and cleanLeftovers
  // take them themselves (locks nest). newVertical and removeVertical read the site file afresh
  // under the lock, so they never undo another program's change. A caller that changes the
  // collection in memory and saves it with saveInfo (order, name) must take the lock before
  // sOpen and hold it until the save. Readers need no lock.
  static FileLock lockFolder(const std::filesystem::path& siteFolderPath);
  static FileLock lockSites(const std::filesystem::path& sitesPath);

  // Writes SITE_n/SITE_n.dat: the name, then each vertical's folder name in collection order.
  bool saveInfo(Diagnostic* why = nullptr);

  // Makes a new site below the sites root with the smallest free number, and opens it (empty).
  // The folder is built under a hidden name with its site file and renamed into place whole.
  bool newSite(const std::filesystem::path& sitesPath, std::string_view name, Diagnostic* why = nullptr);
  // Makes a new vertical with the smallest number that neither a folder, a leftover nor a line
  // of the site file uses: its folder is built under a hidden name with its header file and
  // profiles and renamed into place whole, then the site file as it now stands gets the name
  // appended (a killed program leaves at worst a leftover, or a whole vertical the site file
  // does not name yet; cleanLeftovers mends both). nullptr if the folder or its files could
  // not be made (nothing is left then); a site file that could not be written afterwards is
  // reported in `problems` and the vertical is still given back.
  cls_VERTICAL* newVertical(std::vector<Diagnostic>* problems = nullptr);
  // Takes the vertical at the 1-based index out of the site file as it now stands, then removes
  // its folder (cls_VERTICALS::Remove). A vertical whose folder is missing is removed too. False
  // if the site file could not be written (nothing changed) or the folder not deleted in full
  // (it is left for cleanLeftovers).
  bool removeVertical(int index, Diagnostic* why = nullptr);
  // The repair of interrupted changes: deletes the leftovers of verticals being built or
  // removed, appends to the site file the VERT_m folders it does not name, and clears the
  // temporaries of killed saves in the site's and the verticals' folders. What was done is
  // told in `done`; false if something could not be done (also told there).
  bool cleanLeftovers(std::vector<Diagnostic>* done = nullptr);

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
