#include "dissipation/cls_Dissipations.h"

#include <algorithm>
#include <cctype>
#include <system_error>

#include "frame/DamagedCopy.h"
#include "frame/Files.h"

namespace koru {

namespace fs = std::filesystem;

namespace {

// The mask "*.dis", matched without regard to case as the file systems the tests come from do.
bool isDisFile(const fs::path& path) {
  std::string ext = path.extension().string();
  for (char& c : ext) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return ext == ".dis";
}

}  // namespace

cls_DissTEST* cls_Dissipations::item(int index) {
  Entry* e = entry(index);
  return e ? &e->test : nullptr;
}

const cls_DissTEST* cls_Dissipations::item(int index) const {
  const Entry* e = entry(index);
  return e ? &e->test : nullptr;
}

cls_Dissipations::Entry* cls_Dissipations::entry(int index) {
  if (index < 1 || static_cast<size_t>(index) > entries_.size()) return nullptr;
  return &entries_[static_cast<size_t>(index) - 1];
}

const cls_Dissipations::Entry* cls_Dissipations::entry(int index) const {
  if (index < 1 || static_cast<size_t>(index) > entries_.size()) return nullptr;
  return &entries_[static_cast<size_t>(index) - 1];
}

bool cls_Dissipations::loadInfo(std::vector<Diagnostic>* problems) {
  entries_.clear();
  if (!folderExists(folder_)) return true;  // no test taken yet at this vertical
  std::vector<fs::path> files;
  // The error-code forms of the listing report every failure in `ec`: nothing here throws.
  std::error_code ec;
  for (fs::directory_iterator it(folder_, ec), end; !ec && it != end; it.increment(ec)) {
    std::error_code typeError;
    if (it->is_regular_file(typeError) && isDisFile(it->path())) files.push_back(it->path());
  }
  if (ec) {
    if (problems) problems->push_back({folder_, 0, "cannot list the folder: " + ec.message()});
    return false;
  }
  std::sort(files.begin(), files.end());

  bool allRead = true;
  for (const fs::path& file : files) {
    if (entries_.size() >= 32767) break;  // the count is 16-bit
    Entry e;
    e.file = file;
    e.test.folder = folder_;
    e.test.filename = file;
    Diagnostic why;
    const LoadStatus status = e.test.parseFile(&why);
    if (status != LoadStatus::Complete) {
      allRead = false;
      if (problems) problems->push_back(why);
    }
    if (status == LoadStatus::WrongFormat) continue;
    e.complete = status == LoadStatus::Complete;
    // Every load is followed by the interpretation. A fit that fails leaves the results unset,
    // which is how the windows show "no flex".
    (void)e.test.calculate();
    entries_.push_back(std::move(e));
  }
  return allRead;
}

bool cls_Dissipations::saveInfo(std::vector<Diagnostic>* problems) {
  if (entries_.empty()) return true;
  if (folder_.empty() || !ensureFolder(folder_)) {
    if (problems) problems->push_back({folder_, 0, "cannot create the dissipation folder"});
    return false;
  }
  bool ok = true;
  for (Entry& e : entries_) {
    Diagnostic why;
    if (!e.complete) {
      const auto kept = keepDamagedCopy(e.test.filename, &why);
      if (!kept) {
        ok = false;
        if (problems) problems->push_back(why);
        continue;
      }
      e.complete = true;  // the copy holds the original: from now on the file is the program's own
      if (problems && !kept->empty())
        problems->push_back({e.test.filename, 0, "was read only in part; the original is kept as " +
                                                     kept->filename().string()});
    }
    if (!e.test.saveFile(&why)) {
      ok = false;
      if (problems) problems->push_back(why);
    }
  }
  return ok;
}

cls_DissTEST* cls_Dissipations::newTest(float depth) {
  if (!(depth > 0)) return nullptr;
  cls_DissTEST test;
  test.folder = folder_;
  test.setZd(depth);
  test.isZdSpecified = true;
  for (Entry& e : entries_)
    if (e.test.filename == test.filename) return &e.test;
  return &add(std::move(test));
}

cls_DissTEST& cls_Dissipations::add(cls_DissTEST test, bool tabInclude) {
  for (Entry& e : entries_) {
    if (!test.filename.empty() && e.test.filename == test.filename) {
      e.file = test.filename;
      e.test = std::move(test);
      e.blnTabInclude = tabInclude;
      e.complete = true;
      return e.test;
    }
  }
  Entry e;
  e.file = test.filename;
  e.test = std::move(test);
  e.blnTabInclude = tabInclude;
  entries_.push_back(std::move(e));
  return entries_.back().test;
}

bool cls_Dissipations::remove(int index, bool deleteFile, Diagnostic* why) {
  Entry* e = entry(index);
  if (!e) {
    if (why) *why = {folder_, 0, "no dissipation test number " + std::to_string(index)};
    return false;
  }
  const fs::path file = e->test.filename;
  entries_.erase(entries_.begin() + (index - 1));
  if (!deleteFile || file.empty()) return true;
  std::error_code ec;
  fs::remove(file, ec);
  if (ec) {
    if (why) *why = {file, 0, "cannot delete: " + ec.message()};
    return false;
  }
  return true;
}

void cls_Dissipations::setDefaultTabDissipations() {
  for (Entry& e : entries_) e.blnTabInclude = e.test.N() > 0;
}

void cls_Dissipations::removeAllTabDissips() {
  for (Entry& e : entries_) e.blnTabInclude = false;
}

bool cls_Dissipations::existTabSelected() const {
  return std::any_of(entries_.begin(), entries_.end(), [](const Entry& e) { return e.blnTabInclude; });
}

bool cls_Dissipations::isDissipationsSignificant() const {
  return std::any_of(entries_.begin(), entries_.end(), [](const Entry& e) { return e.test.N() > 0; });
}

}  // namespace koru
