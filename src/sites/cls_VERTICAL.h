#pragma once
// One vertical (a sounding location) of a site: its folder SITE_n/VERT_m, the header kept in
// VERT_m.dat, and the test objects made there. Opening a site reads headers only (`loadInfo`);
// the tests are read when the vertical is activated (`loadData`).
//
// VERT_m.dat, 14 lines, Windows-1252, CR LF, text as it stands:
//   test name, firm, customer, job, site, remark, date, GPS, Zabs, Zw, and the flags of the
//   DMT, Vs, Vp and dissipation tests written 1 or 0.
//
// Each test kind has its own load, save and delete steps below. The seismic (Vs, Vp and their
// pseudo-interval data), dissipation and inclination records join as their own modules arrive:
// their steps are already called in the right places and only need filling in.

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dissipation/cls_Dissipations.h"
#include "dmt/DMTOptions.h"
#include "dmt/cls_Calibration.h"
#include "dmt/cls_DmtTEST.h"
#include "dmt/cls_GAMMA.h"
#include "dmt/TestHeader.h"
#include "dmt/cls_U.h"
#include "frame/Diagnostic.h"
#include "frame/LoadResult.h"
#include "seismic/cls_VTEST.h"

namespace koru {

class cls_VERTICAL : public TestHeader {
 public:
  // --- Paths (setFolders) ---------------------------------------------------------------------
  std::string strFolderName;  // VERT_m
  std::filesystem::path strFolderPath, strInfoPath;
  std::filesystem::path strVsFolder, strVsFile, strVsPseudoFile;
  std::filesystem::path strVpFolder, strVpFile, strVpPseudoFile;
  std::filesystem::path strDMTFile, strInclinationFile, strNotesFile, strCalibrationFile;
  std::filesystem::path strDissipFolder;
  std::filesystem::path strGammaFile, strUFile;

  // --- Tests ----------------------------------------------------------------------------------
  std::optional<cls_DmtTEST> dmt{std::in_place};
  std::optional<cls_Calibration> calibration;
  std::optional<cls_Dissipations> dissipations;  // the ".dis" tests of DISSIP_m
  std::optional<cls_VTEST> vsTest, vpTest;         // the seismic tests: VS_m.dat with VS_m/, VP_m likewise
  cls_GAMMA gamma;
  cls_U u;

  // --- Header (VERT_m.dat) --------------------------------------------------------------------
  bool blnTestDMT = true;
  bool blnTestVs = false, blnTestVp = false, blnTestDissip = false, blnTestInclination = false;
  std::string strTestname;
  float sngZw = 3.0f;
  float sngZabs = 0.0f;
  std::string strGPS;

  // Builds every path of the vertical from the site's folder and the vertical's folder name;
  // m is the text after the last "_" of the name.
  void setFolders(const std::filesystem::path& siteFolderPath, std::string_view verticalFolderName);

  // Reads VERT_m.dat, then the unit weight and pore pressure profiles. A missing or short file
  // leaves the remaining fields at their defaults. False if anything was wrong; see problems().
  bool loadInfo();
  // The header alone from VERT_m.dat's bytes, `file` naming it in the problems: Complete, or
  // Partial (a short file or a number that is none; why: the first problem).
  LoadResult parseVerticalFile(std::string_view bytes, const std::filesystem::path& file);
  // Reads the tests of the vertical and evaluates the DMT test. A test whose file is broken is
  // kept with what could be read, and the other tests still load. False if anything was wrong.
  bool loadData(const DMTOptions& options);

  // Saves everything: the tests whose flag is set, the header file, the profiles, and the
  // calibrations. Goes on after a failure; false if anything failed (reasons in `problems`).
  bool saveInfo(std::vector<Diagnostic>* problems = nullptr);
  // The header and the profiles only: a change of header must not touch test data.
  bool saveVerticalFile(std::vector<Diagnostic>* problems = nullptr);
  // The 14 lines of VERT_m.dat as saveVerticalFile writes them.
  std::vector<std::string> verticalFileLines() const;

  // What went wrong in the last loadInfo and loadData: broken or unreadable files.
  std::vector<Diagnostic> problems() const;

  // In the chart modes (0 and 1) the unit-weight point list follows the evaluated DMT test: the
  // top (Zi, sngGammaTop) and then each row's unit weight, so that seismic depths can be given a
  // unit weight. The user's table (mode 2) is left alone. Runs after evalDMT.
  void evalGamma();

  // Density (t/m3) and G0 (MPa) at the depths of the Vs test, from the unit weight the profile
  // gives at each depth (run evalGamma first so that the chart modes follow the DMT test).
  std::vector<float> evalRho() const;
  std::vector<float> evalGo() const;

  // A copy of the vertical with all its test objects.
  cls_VERTICAL cloneVertical() const;

  // --- Create and delete, per test ------------------------------------------------------------
  // createNew... makes a fresh test object bound to its file and sets the test's flag;
  // delete...Test drops the object and clears the flag; delete...File / ...Folder remove what
  // lies on disk. Only the last kind touches files, and only when called.
  void createNewDMTTest();
  void deleteDMTTest();
  bool deleteDMTFile(Diagnostic* why = nullptr);

  void createCalibrationTest();
  void deleteCalibrationTest();
  bool deleteCalibrationFile(Diagnostic* why = nullptr);

  void createNewVsTest();
  void deleteVsTest();
  bool deleteVsTIFile(Diagnostic* why = nullptr);
  bool deleteVsFolder(Diagnostic* why = nullptr);
  void createNewVpTest();
  void deleteVpTest();
  bool deleteVpTIFile(Diagnostic* why = nullptr);
  bool deleteVpFolder(Diagnostic* why = nullptr);
  void createNewDissipationTests();
  void deleteDissipationTests();
  bool deleteDissipFolder(Diagnostic* why = nullptr);

  // --- Significance ---------------------------------------------------------------------------
  bool isDMTSignificant() const;  // a DMT test exists and holds at least one row
  bool isVsSignificant() const;
  bool isVpSignificant() const;
  bool isGraphSignificant() const;  // any of the three
  bool isCalibration() const;       // a calibration record exists

 private:
  // The per-test steps of loadData and saveInfo. Each records its own problems.
  void loadVsTest();
  void loadVpTest();
  void loadSeismicTest(std::optional<cls_VTEST>& test, bool& damaged, const std::filesystem::path& index,
                       const std::filesystem::path& folder, std::string_view wave);
  bool saveSeismicTest(const std::optional<cls_VTEST>& test, bool& damaged, const std::filesystem::path& index,
                       const std::filesystem::path& folder, std::vector<Diagnostic>* problems);
  void loadDMTTest(const DMTOptions& options);
  void loadCalibrationTest();
  void loadInclinationTest();
  void loadDissipationTests();
  bool saveVsTest(std::vector<Diagnostic>* problems);
  bool saveVpTest(std::vector<Diagnostic>* problems);
  bool saveDMTTest(std::vector<Diagnostic>* problems);
  bool saveDissipationTests(std::vector<Diagnostic>* problems);
  bool saveCalibrations(std::vector<Diagnostic>* problems);
  bool saveProfiles(std::vector<Diagnostic>* problems);
  bool writeVerticalFile(std::vector<Diagnostic>* problems);
  void resetHeader();

  // A file that was read only in part would lose its unread rest at the next save. Before the
  // first save over it, the original is kept beside it as "<name>.damaged" (numbered if taken).
  bool keepDamagedOriginal(bool& damaged, const std::filesystem::path& file, std::vector<Diagnostic>* problems);

  std::vector<Diagnostic> headerProblems_;  // from loadInfo
  std::vector<Diagnostic> dataProblems_;    // from loadData
  bool dmtDamaged_ = false;
  bool thrustDamaged_ = false;  // Thrust.dat of the DMT test
  bool calibrationDamaged_ = false;
  bool gammaDamaged_ = false;
  bool uDamaged_ = false;
  bool vsDamaged_ = false;
  bool vpDamaged_ = false;
};

}  // namespace koru
