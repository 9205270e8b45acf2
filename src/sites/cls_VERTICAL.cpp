#include "sites/cls_VERTICAL.h"

#include <iterator>
#include <system_error>
#include <utility>

#include "dmt/Thrust.h"
#include "frame/DamagedCopy.h"
#include "frame/Files.h"
#include "frame/Numbers.h"
#include "frame/TextCodec.h"
#include "frame/TextLines.h"
#include "sites/FS.h"

namespace koru {

namespace fs = std::filesystem;

namespace {

constexpr size_t kVerticalFileLines = 14;

void report(std::vector<Diagnostic>* problems, Diagnostic d) {
  if (problems) problems->push_back(std::move(d));
}

// Removes one file; a missing one is already gone, and a folder in its place is left alone.
bool removeFile(const fs::path& file, Diagnostic* why) {
  if (file.empty()) {
    if (why) *why = {file, 0, "no file: the vertical's folders are not set"};
    return false;
  }
  std::error_code ec;
  const fs::file_status st = fs::symlink_status(file, ec);
  if (st.type() == fs::file_type::not_found) return true;
  if (fs::is_directory(st)) {
    if (why) *why = {file, 0, "is a folder: not deleted"};
    return false;
  }
  fs::remove(file, ec);
  if (ec) {
    if (why) *why = {file, 0, "cannot be deleted: " + ec.message()};
    return false;
  }
  return true;
}

bool removeFolder(const fs::path& folder, Diagnostic* why) {
  if (folder.empty()) {
    if (why) *why = {folder, 0, "no folder: the vertical's folders are not set"};
    return false;
  }
  return FS::deleteFolder(folder, why);
}

// A number line of the vertical file. Text that is no number is told and leaves the default.
bool readNumber(std::string_view text, float& field, const fs::path& file, int line, std::vector<Diagnostic>& problems) {
  const auto value = tryParseSingle(text);
  if (value) field = *value;
  else problems.push_back({file, line, "'" + std::string(text.substr(0, 40)) + "' is not a number: the default is kept"});
  return value.has_value();
}

// Flags are written 1 or 0; any value above 0 reads as set, so an old "-1" reads as not set.
void readFlag(std::string_view text, bool& field, const fs::path& file, int line, std::vector<Diagnostic>& problems) {
  float value = 0;
  if (readNumber(text, value, file, line, problems)) field = value > 0;
}

}  // namespace

void cls_VERTICAL::setFolders(const fs::path& siteFolderPath, std::string_view verticalFolderName) {
  strFolderName = std::string(verticalFolderName);
  const size_t underscore = strFolderName.rfind('_');
  const std::string m = underscore == std::string::npos ? strFolderName : strFolderName.substr(underscore + 1);

  strFolderPath = siteFolderPath / strFolderName;
  strInfoPath = strFolderPath / (strFolderName + ".dat");
  strVsFolder = strFolderPath / ("VS_" + m);
  strVsFile = strFolderPath / ("VS_" + m + ".dat");
  strVsPseudoFile = strFolderPath / ("VS_PISISM_" + m + ".dat");
  strVpFolder = strFolderPath / ("VP_" + m);
  strVpFile = strFolderPath / ("VP_" + m + ".dat");
  strVpPseudoFile = strFolderPath / ("VP_PISISM_" + m + ".dat");
  strDMTFile = strFolderPath / ("DMT_" + m + ".dat");
  strInclinationFile = strFolderPath / ("Inclination_" + m + ".dat");
  strNotesFile = strFolderPath / ("Notes_" + m + ".dat");
  strCalibrationFile = strFolderPath / ("Calibration_" + m + ".dat");
  strDissipFolder = strFolderPath / ("DISSIP_" + m);
  strGammaFile = strFolderPath / ("GAMMA_" + m + ".dat");
  strUFile = strFolderPath / ("U_" + m + ".dat");

  // The objects follow, so that a vertical moved to another folder saves there.
  if (dmt) dmt->setDatPath(strDMTFile);
  if (calibration) calibration->setPathFile(strCalibrationFile);
  gamma.setPath(strGammaFile);
  u.setPath(strUFile);
}

// --- Header file ------------------------------------------------------------------------------

void cls_VERTICAL::resetHeader() {
  const cls_VERTICAL fresh;
  blnTestDMT = fresh.blnTestDMT;
  blnTestVs = fresh.blnTestVs;
  blnTestVp = fresh.blnTestVp;
  blnTestDissip = fresh.blnTestDissip;
  static_cast<TestHeader&>(*this) = TestHeader();
  strTestname = strGPS = std::string();
  sngZw = fresh.sngZw;
  sngZabs = fresh.sngZabs;
}

LoadResult cls_VERTICAL::parseVerticalFile(std::string_view bytes, const fs::path& file) {
  headerProblems_.clear();
  resetHeader();
  bytes = withoutBom(bytes);
  // The order of the lines is not the order of the fields; it is the file's own.
  std::string* const texts[] = {&strTestname, &strFirm, &strCustomer, &strJob, &strSite, &strRemark, &strDate, &strGPS};
  bool* const flags[] = {&blnTestDMT, &blnTestVs, &blnTestVp, &blnTestDissip};
  size_t pos = 0;
  int lineNo = 0;
  std::string_view raw;
  bool cut = false;
  while (lineNo < static_cast<int>(kVerticalFileLines) && nextLine(bytes, pos, raw)) {
    ++lineNo;
    // A last line without its line end may have lost characters; it is not taken.
    if (pos == bytes.size() && !endsWithLineEnd(bytes)) {
      headerProblems_.push_back({file, lineNo, "the file ends early, in the middle of line " + std::to_string(lineNo)});
      cut = true;
      break;
    }
    const std::string line = cp1252ToUtf8(raw);
    const auto i = static_cast<size_t>(lineNo - 1);
    if (i < std::size(texts)) *texts[i] = line;
    else if (lineNo == 9) readNumber(line, sngZabs, file, lineNo, headerProblems_);
    else if (lineNo == 10) readNumber(line, sngZw, file, lineNo, headerProblems_);
    else readFlag(line, *flags[i - 10], file, lineNo, headerProblems_);
  }
  if (lineNo < static_cast<int>(kVerticalFileLines) && !cut)
    headerProblems_.push_back({file, lineNo + 1,
                               "the file ends here; " + std::to_string(kVerticalFileLines) +
                                   " lines expected, the rest keeps its defaults"});
  if (headerProblems_.empty()) return {};
  return LoadResult::fail(LoadStatus::Partial, headerProblems_.front());
}

bool cls_VERTICAL::loadInfo() {
  Diagnostic why;
  if (const auto bytes = readFileBytes(strInfoPath, &why)) {
    parseVerticalFile(*bytes, strInfoPath);
  } else {
    headerProblems_.clear();
    resetHeader();
    headerProblems_.push_back(why);
  }

  // The profiles are read afresh; a missing file leaves the defaults, which is no problem.
  gamma = cls_GAMMA{};
  gamma.setPath(strGammaFile);
  Diagnostic gammaWhy;
  // A file that is there but can't be read counts as read in part: a save must not replace it.
  const bool gammaRead = gamma.loadInfo(&gammaWhy) != -1;
  gammaDamaged_ = !gammaWhy.reason.empty() && (gammaRead || fileExists(strGammaFile));
  if (gammaDamaged_) headerProblems_.push_back(gammaWhy);

  u = cls_U{};
  u.setPath(strUFile);
  Diagnostic uWhy;
  const bool uRead = u.loadInfo(&uWhy) != -1;
  uDamaged_ = !uWhy.reason.empty() && (uRead || fileExists(strUFile));
  if (uDamaged_) headerProblems_.push_back(uWhy);

  return headerProblems_.empty();
}

std::vector<std::string> cls_VERTICAL::verticalFileLines() const {
  return {strTestname, strFirm, strCustomer, strJob, strSite, strRemark, strDate, strGPS,
          formatNumber(sngZabs, ""), formatNumber(sngZw, ""),
          blnTestDMT ? "1" : "0", blnTestVs ? "1" : "0", blnTestVp ? "1" : "0", blnTestDissip ? "1" : "0"};
}

bool cls_VERTICAL::writeVerticalFile(std::vector<Diagnostic>* problems) {
  Diagnostic why;
  if (FS::writeTextLines(strInfoPath, verticalFileLines(), &why)) return true;
  report(problems, why);
  return false;
}

// --- Loading the tests ------------------------------------------------------------------------

bool cls_VERTICAL::loadData(const DMTOptions& options) {
  dataProblems_.clear();
  if (blnTestVs) loadVsTest();
  if (blnTestVp) loadVpTest();
  if (blnTestDMT) loadDMTTest(options);
  loadCalibrationTest();
  loadInclinationTest();
  if (blnTestDissip) loadDissipationTests();
  return dataProblems_.empty();
}

void cls_VERTICAL::loadVsTest() { loadSeismicTest(vsTest, vsDamaged_, strVsFile, strVsFolder, "Vs"); }

void cls_VERTICAL::loadVpTest() { loadSeismicTest(vpTest, vpDamaged_, strVpFile, strVpFolder, "Vp"); }

// The pseudo-interval data of the test would be read before its index; the index gives the
// true-interval velocities as they were last evaluated.
void cls_VERTICAL::loadSeismicTest(std::optional<cls_VTEST>& test, bool& damaged, const fs::path& index,
                                   const fs::path& folder, std::string_view wave) {
  test.emplace(index, folder, wave);
  damaged = false;
  Diagnostic why;
  if (test->loadInfo(&why) == 1) {
    if (why.file.empty()) why.file = index;
    dataProblems_.push_back(why);
    damaged = true;
  }
}

void cls_VERTICAL::loadDMTTest(const DMTOptions& options) {
  dmt.emplace();
  dmt->setDatPath(strDMTFile);
  dmtDamaged_ = thrustDamaged_ = false;

  std::error_code ec;
  const fs::file_status st = fs::status(strDMTFile, ec);
  if (st.type() == fs::file_type::not_found) return;  // no readings yet: the test stays empty
  if (!fs::is_regular_file(st)) {
    dataProblems_.push_back({strDMTFile, 0, "is not a readable file: the DMT test stays empty"});
    return;
  }
  Diagnostic why;
  if (dmt->loadFile(&why) != -1) {
    if (why.reason.empty()) why = {strDMTFile, 0, "could not be read in full"};
    dataProblems_.push_back(why);
    // The file read in part is the one to keep aside: the .dat file, Thrust.dat, or both.
    for (const fs::path& file : dmt->partlyReadFiles()) (file == strDMTFile ? dmtDamaged_ : thrustDamaged_) = true;
  }
  if (dmt->N() > 0 && !dmt->evalDMT(gamma, u, options.forTest(dmt->blnHasThrust)))
    dataProblems_.push_back({strDMTFile, 0, "a row could not be evaluated: results from that row on are 0"});
  evalGamma();
}

void cls_VERTICAL::evalGamma() {
  if (!dmt || (gamma.Method() != 0 && gamma.Method() != 1)) return;
  const int n = dmt->N();
  gamma.setN(n + 1);
  gamma.setZi(0, dmt->Zi());
  gamma.setYi(0, dmt->sngGammaTop);
  for (int i = 0; i < n; ++i) {
    gamma.setZi(i + 1, dmt->vZ[static_cast<size_t>(i)]);
    gamma.setYi(i + 1, dmt->getGammai(i));
  }
}

void cls_VERTICAL::loadCalibrationTest() {
  calibration.reset();
  calibrationDamaged_ = false;
  if (!fileExists(strCalibrationFile)) return;
  createCalibrationTest();
  Diagnostic why;
  const bool read = calibration->loadCalibrations(&why);
  if (!read || !why.reason.empty()) {
    if (why.reason.empty()) why = {strCalibrationFile, 0, "could not be read"};
    dataProblems_.push_back(why);
    calibrationDamaged_ = true;
  }
}

void cls_VERTICAL::loadInclinationTest() {
  // The inclination record: create it, set strInclinationFile, and load it if the file exists.
}

void cls_VERTICAL::loadDissipationTests() {
  dissipations.emplace();
  dissipations->setFolder(strDissipFolder);
  if (folderExists(strDissipFolder)) dissipations->loadInfo(&dataProblems_);
}

// --- Saving -----------------------------------------------------------------------------------

bool cls_VERTICAL::keepDamagedOriginal(bool& damaged, const fs::path& file, std::vector<Diagnostic>* problems) {
  if (!damaged) return true;
  Diagnostic why;
  const auto kept = keepDamagedCopy(file, &why);
  if (!kept) {
    report(problems, why);
    return false;
  }
  damaged = false;
  if (!kept->empty())
    report(problems, {file, 0, "was read only in part; the original is kept as " + kept->filename().string()});
  return true;
}

bool cls_VERTICAL::saveVsTest(std::vector<Diagnostic>* problems) {
  return saveSeismicTest(vsTest, vsDamaged_, strVsFile, strVsFolder, problems);
}

bool cls_VERTICAL::saveVpTest(std::vector<Diagnostic>* problems) {
  return saveSeismicTest(vpTest, vpDamaged_, strVpFile, strVpFolder, problems);
}

bool cls_VERTICAL::saveSeismicTest(const std::optional<cls_VTEST>& test, bool& damaged, const fs::path& index,
                                   const fs::path& folder, std::vector<Diagnostic>* problems) {
  if (!ensureFolder(folder)) {
    report(problems, {folder, 0, "cannot create the folder"});
    return false;
  }
  if (!test) return true;
  if (!keepDamagedOriginal(damaged, index, problems)) return false;
  Diagnostic why;
  if (!test->saveInfo(&why)) {
    report(problems, why);
    return false;
  }
  return true;
}

bool cls_VERTICAL::saveDissipationTests(std::vector<Diagnostic>* problems) {
  if (!ensureFolder(strDissipFolder)) {
    report(problems, {strDissipFolder, 0, "cannot create the folder"});
    return false;
  }
  if (!dissipations) return true;
  dissipations->setFolder(strDissipFolder);
  return dissipations->saveInfo(problems);
}

bool cls_VERTICAL::saveDMTTest(std::vector<Diagnostic>* problems) {
  if (!dmt) return true;
  dmt->setDatPath(strDMTFile);
  if (!keepDamagedOriginal(dmtDamaged_, strDMTFile, problems)) return false;
  if (dmt->blnHasThrust && !keepDamagedOriginal(thrustDamaged_, dmt->thrustFilePath(), problems)) return false;
  Diagnostic why;
  if (dmt->saveFile(&why) == -1) return true;
  if (why.reason.empty()) why = {strDMTFile, 0, "could not be written"};
  report(problems, why);
  return false;
}

bool cls_VERTICAL::saveCalibrations(std::vector<Diagnostic>* problems) {
  if (!calibration) return true;
  if (!keepDamagedOriginal(calibrationDamaged_, strCalibrationFile, problems)) return false;
  calibration->setPathFile(strCalibrationFile);
  Diagnostic why;
  if (calibration->saveToFile(&why)) return true;
  if (why.reason.empty()) why = {strCalibrationFile, 0, "could not be written"};
  report(problems, why);
  return false;
}

bool cls_VERTICAL::saveProfiles(std::vector<Diagnostic>* problems) {
  bool ok = true;
  gamma.setPath(strGammaFile);
  if (keepDamagedOriginal(gammaDamaged_, strGammaFile, problems)) {
    Diagnostic why;
    if (!gamma.saveInfo(&why)) {
      if (why.reason.empty()) why = {strGammaFile, 0, "could not be written"};
      report(problems, why);
      ok = false;
    }
  } else {
    ok = false;
  }
  u.setPath(strUFile);
  if (keepDamagedOriginal(uDamaged_, strUFile, problems)) {
    Diagnostic why;
    if (!u.saveInfo(&why)) {
      if (why.reason.empty()) why = {strUFile, 0, "could not be written"};
      report(problems, why);
      ok = false;
    }
  } else {
    ok = false;
  }
  return ok;
}

bool cls_VERTICAL::saveVerticalFile(std::vector<Diagnostic>* problems) {
  if (!ensureFolder(strFolderPath)) {
    report(problems, {strFolderPath, 0, "cannot create the folder"});
    return false;
  }
  bool ok = writeVerticalFile(problems);
  ok = saveProfiles(problems) && ok;
  return ok;
}

bool cls_VERTICAL::saveInfo(std::vector<Diagnostic>* problems) {
  if (!ensureFolder(strFolderPath)) {
    report(problems, {strFolderPath, 0, "cannot create the folder"});
    return false;
  }
  bool ok = true;
  if (blnTestDMT) ok = saveDMTTest(problems) && ok;
  if (blnTestVs) ok = saveVsTest(problems) && ok;
  if (blnTestVp) ok = saveVpTest(problems) && ok;
  if (blnTestDissip) ok = saveDissipationTests(problems) && ok;
  ok = writeVerticalFile(problems) && ok;
  ok = saveProfiles(problems) && ok;
  if (isCalibration()) ok = saveCalibrations(problems) && ok;
  return ok;
}

std::vector<Diagnostic> cls_VERTICAL::problems() const {
  std::vector<Diagnostic> all = headerProblems_;
  all.insert(all.end(), dataProblems_.begin(), dataProblems_.end());
  return all;
}

cls_VERTICAL cls_VERTICAL::cloneVertical() const { return *this; }

// --- Create and delete ------------------------------------------------------------------------

void cls_VERTICAL::createNewDMTTest() {
  dmt.emplace();
  dmt->setDatPath(strDMTFile);
  dmtDamaged_ = thrustDamaged_ = false;  // a fresh test replaces what the damaged file held by the user's choice
  blnTestDMT = true;
}

void cls_VERTICAL::deleteDMTTest() {
  dmt.reset();
  dmtDamaged_ = thrustDamaged_ = false;
  blnTestDMT = false;
}

bool cls_VERTICAL::deleteDMTFile(Diagnostic* why) { return removeFile(strDMTFile, why); }

void cls_VERTICAL::createCalibrationTest() {
  calibration.emplace();
  calibration->setPathFile(strCalibrationFile);
  calibrationDamaged_ = false;
}

void cls_VERTICAL::deleteCalibrationTest() {
  calibration.reset();
  calibrationDamaged_ = false;
}

bool cls_VERTICAL::deleteCalibrationFile(Diagnostic* why) { return removeFile(strCalibrationFile, why); }

void cls_VERTICAL::createNewVsTest() {
  vsTest.emplace(strVsFile, strVsFolder, "Vs");
  blnTestVs = true;
}

void cls_VERTICAL::deleteVsTest() {
  vsTest.reset();
  blnTestVs = false;
}

void cls_VERTICAL::createNewVpTest() {
  vpTest.emplace(strVpFile, strVpFolder, "Vp");
  blnTestVp = true;
}

void cls_VERTICAL::deleteVpTest() {
  vpTest.reset();
  blnTestVp = false;
}

bool cls_VERTICAL::deleteVsTIFile(Diagnostic* why) { return removeFile(strVsFile, why); }
bool cls_VERTICAL::deleteVsFolder(Diagnostic* why) { return removeFolder(strVsFolder, why); }
bool cls_VERTICAL::deleteVpTIFile(Diagnostic* why) { return removeFile(strVpFile, why); }
bool cls_VERTICAL::deleteVpFolder(Diagnostic* why) { return removeFolder(strVpFolder, why); }
void cls_VERTICAL::createNewDissipationTests() {
  dissipations.emplace();
  dissipations->setFolder(strDissipFolder);
  blnTestDissip = true;
}

void cls_VERTICAL::deleteDissipationTests() {
  dissipations.reset();
  blnTestDissip = false;
}

bool cls_VERTICAL::deleteDissipFolder(Diagnostic* why) { return removeFolder(strDissipFolder, why); }

// --- Significance -----------------------------------------------------------------------------

bool cls_VERTICAL::isDMTSignificant() const { return dmt && dmt->N() > 0; }
// The seismic tests answer here once they exist: a test with at least one depth.
bool cls_VERTICAL::isVsSignificant() const { return vsTest && vsTest->strikes.Count() > 0; }
bool cls_VERTICAL::isVpSignificant() const { return vpTest && vpTest->strikes.Count() > 0; }

std::vector<float> cls_VERTICAL::evalRho() const {
  if (!vsTest) return {};
  return vsTest->evalRho([this](float z) { return gamma.getYz(z); });
}

std::vector<float> cls_VERTICAL::evalGo() const {
  if (!vsTest) return {};
  return vsTest->evalGo([this](float z) { return gamma.getYz(z); });
}
bool cls_VERTICAL::isGraphSignificant() const { return isDMTSignificant() || isVsSignificant() || isVpSignificant(); }
bool cls_VERTICAL::isCalibration() const { return calibration.has_value(); }

}  // namespace koru
