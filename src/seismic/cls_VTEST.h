#pragma once
// The seismic test of a vertical (one for shear, one for compression waves): its strikes grouped
// by depth, kept in an index file beside the folder of the seismograms.
//
//   VERT_m/VS_m.dat   the index, one line a depth in rising Z
//   VERT_m/VS_m/      the seismograms, "<number>.kor"
//
// Index line, CR LF ended, no header, eleven fields separated by ":":
//   Z ("0.00#") : vMean : vList : devStd ("0.00") : bestFile : goodList : elabGood :
//   badList : elabBad : noiseList : elabNoise
// e.g. "3.20:210:200,220:6.73:12:12,13:5,180;4;0,0#5,180;4;0,0:14::::". Windows-1252 text;
// "." is the decimal point whatever the locale; lines ended by LF alone (or CR) read as well.
// The lists are written as they stand, so an index read and written again keeps its bytes.
//
// Seismograms are not kept here: the index holds file names, and a record is loaded from the
// folder whenever its trace is needed and dropped afterwards. The elab strings live only in
// the index, never in the seismogram files.
//
// Nothing here throws; loading reports a status and a Diagnostic.

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/Diagnostic.h"
#include "frame/LoadResult.h"
#include "seismic/cls_STRIKES.h"
#include "seismic/cls_zSTRIKES.h"

namespace koru {

// ---- Density and small-strain shear modulus ----------------------------------------------------
// The soil's unit weight at a depth: kN/m3 at z (m), 0 or less where it is not known. The
// vertical passes its unit-weight profile (cls_GAMMA::getYz) here.
using UnitWeightAt = std::function<float(float z)>;

// Density from unit weight: rho = gamma / 9.81, in t/m3 (= Mg/m3, = g/cm3). 0 when gamma is not
// above 0. Tables that show kg/m3 multiply by 1000.
float evalRho(float gamma);
// Small-strain shear modulus in MPa: rho x Vs^2 with rho in t/m3 and Vs in m/s is kPa, shown
// as MPa because that is how G0 is read beside Ed and M. 0 when rho or Vs is not above 0.
float evalGo(float rho, float vs);

class cls_VTEST {
 public:
  cls_STRIKES strikes;
  // The probe line (box firmware) the records are evaluated under; see cls_SEISMOGRAM.
  int16_t intProbeLine = 30;

  cls_VTEST() = default;
  cls_VTEST(std::filesystem::path indexFile, std::filesystem::path strikesFolder, std::string_view wave = "Vs");

  // The index file and the folder of the seismograms.
  void setPaths(std::filesystem::path indexFile, std::filesystem::path strikesFolder);
  const std::filesystem::path& indexFile() const { return indexFile_; }
  const std::filesystem::path& strikesFolder() const { return strikesFolder_; }
  // The seismogram file of a strike name: "<folder>/<name>.kor".
  std::filesystem::path seismogramPath(std::string_view name) const;

  // "Vs" or "Vp" (anything else is taken as "Vs").
  void setStrWave(std::string_view wave);
  const std::string& strWave() const { return strWave_; }
  int32_t intWaveType() const { return strWave_ == "Vp" ? 1 : 0; }

  // Reads the index anew. 0 read; -1 no index file (the test is empty); 1 read in part: a line
  // with fewer than eleven fields (or a vMean beyond 16 bits) ends the reading, the depths read
  // before it stay, and `why` tells the line. A caller that saves after a partial read should
  // keep the original aside first, as the rest of the file is not in memory.
  int16_t loadInfo(Diagnostic* why = nullptr);
  // The same from the index's bytes, `file` naming it in the diagnostic: Complete, or Partial
  // where loadInfo gives 1.
  LoadResult parseIndex(std::string_view bytes, const std::filesystem::path& file);
  // parseIndex with the status of loadInfo (0 or 1), the index file naming the bytes.
  int16_t readIndexText(std::string_view bytes, Diagnostic* why = nullptr);
  // Writes the whole index anew (atomically: a failed write leaves the old file). An empty test
  // writes an empty file.
  bool saveInfo(Diagnostic* why = nullptr) const;
  // The bytes saveInfo writes.
  std::string indexText() const;

  // One more than the greatest file number of the test; 1 for a test without files.
  int32_t nextFileNumber() const;

  // Over the depths in order: Z, vMean, devStd, and vList (all velocities of the depth).
  std::vector<float> get_vecZ() const;
  std::vector<int16_t> get_vecV() const;
  std::vector<float> get_vecDevStd() const;
  std::vector<std::string> get_vecRepeatability() const;

  // Evaluates every good strike again from its file, with its elab string from the index (the
  // default settings of its wave when it has none), and stores the velocities and the means.
  // A file that is missing or cannot be read keeps its stored velocity and is reported in
  // `problems`; the others go on. Returns how many strikes were evaluated.
  int evaluateStrikes(std::vector<Diagnostic>* problems = nullptr);

  // Density (t/m3) and G0 (MPa) at the depths of the test, in order, from the unit weight at
  // each depth and the depth's mean velocity. An empty callback gives zeros.
  std::vector<float> evalRho(const UnitWeightAt& unitWeightAt) const;
  std::vector<float> evalGo(const UnitWeightAt& unitWeightAt) const;

  // The file operations of cls_STRIKES by strike name, in this test's folder.
  bool setGood(std::string_view name, Diagnostic* why = nullptr);
  bool setBad(std::string_view name, Diagnostic* why = nullptr);
  bool setNoise(std::string_view name, Diagnostic* why = nullptr);
  bool moveFile(std::string_view name, float newZ, Diagnostic* why = nullptr);

 private:
  std::filesystem::path indexFile_;
  std::filesystem::path strikesFolder_;
  std::string strWave_ = "Vs";
};

}  // namespace koru
