#pragma once
// The dissipation tests of one vertical: every "*.dis" file of the vertical's dissipation
// folder, each with its flag for the tabular output (blnTabInclude). Items are 1-based, as every
// collection of the program is.

#include <cstdint>
#include <filesystem>
#include <vector>

#include "dissipation/cls_DissTEST.h"
#include "frame/Diagnostic.h"

namespace koru {

class cls_Dissipations {
 public:
  struct Entry {
    std::filesystem::path file;  // where the test was found (or will be written)
    bool blnTabInclude = false;
    cls_DissTEST test;
    // False when the file broke off while being read: the test shows what was read, and the
    // next save keeps the original beside it as "<name>.damaged" before writing over it.
    bool complete = true;
  };

  void setFolder(const std::filesystem::path& folder) { folder_ = folder; }
  const std::filesystem::path& folder() const { return folder_; }

  int16_t Count() const { return static_cast<int16_t>(entries_.size()); }
  // The test at a 1-based index; nullptr outside 1..Count.
  cls_DissTEST* item(int index);
  const cls_DissTEST* item(int index) const;
  Entry* entry(int index);
  const Entry* entry(int index) const;

  // Reads every "*.dis" file of the folder (extension in any case), in name order, and runs the
  // interpretation on each. A file without the marker is not a test and is skipped; every file
  // that could not be read in full is reported in `problems`. False when the folder cannot be
  // listed or any file had a problem; the tests that loaded are there all the same.
  bool loadInfo(std::vector<Diagnostic>* problems = nullptr);
  // Creates the folder if missing and writes every test to its file. A test whose file was read
  // only in part has the original kept aside first (and listed in `problems`); when no copy can
  // be made its file is left alone. False, with the problems listed, if any test was not written.
  bool saveInfo(std::vector<Diagnostic>* problems = nullptr);

  // A new test at the depth, named by it inside the folder; the test already at that depth, if
  // any, is returned instead. nullptr for a depth not above 0.
  cls_DissTEST* newTest(float depth);
  // Adds a test as it is, taking its file name; a test with the same file name is replaced.
  cls_DissTEST& add(cls_DissTEST test, bool tabInclude = false);
  // Removes the item; with `deleteFile` its file goes too. False for a bad index or when the file
  // could not be deleted (the item is removed all the same).
  bool remove(int index, bool deleteFile, Diagnostic* why = nullptr);
  void Clear() { entries_.clear(); }

  // Every test with at least one reading goes into the tabular output.
  void setDefaultTabDissipations();
  void removeAllTabDissips();
  bool existTabSelected() const;
  // True when there is anything to list: a test with at least one reading.
  bool isDissipationsSignificant() const;

 private:
  std::filesystem::path folder_;
  std::vector<Entry> entries_;
};

}  // namespace koru
