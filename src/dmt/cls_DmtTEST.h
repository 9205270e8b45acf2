#pragma once
// One flat dilatometer sounding: its header, the readings A, B, C by depth and, after
// evaluation, the result vectors. Pressures in the record are whole kPa (one reading unit is
// 0.01 bar); depths are metres. The file (.dat) carries pressures in hundredths of bar.
//
// The five row arrays vZ, vTH, vA, vB, vC always have the same length, N().

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "dmt/CalibrationFigures.h"
#include "dmt/DMTOptions.h"
#include "dmt/TestHeader.h"
#include "dmt/Thrust.h"
#include "frame/Diagnostic.h"
#include "frame/LoadResult.h"

namespace koru {

class cls_GAMMA;
class cls_U;

class cls_DmtTEST : public TestHeader {
 public:
  cls_DmtTEST();

  // --- Header -------------------------------------------------------------------------------
  float sngZMCal = 0;  // kPa, gauge zero at calibration; added to A, B and C
  float sngZMAB = 0;   // kPa, gauge zero while reading A and B
  float sngZMC = 0;    // kPa, gauge zero while reading C
  float sngZabs = 0;   // m, elevation of the test's top
  bool blnHasC = false;
  bool blnZEditable = false;  // depths are not on a regular step
  bool blnHasThrust = false;  // thrust data belong to the test (Thrust.dat beside the .dat file)
  float sngMinEd = 0, sngMinEdRow = -1, sngMinId = 0, sngMinIdRow = -1;
  bool blnUdOutOfRange = false;
  std::string strTstname;
  int16_t intDeltaA = 15, intDeltaB = 40;  // kPa
  float sngZw = 3.0f;        // m; negative: water standing above the ground
  float sngGammaTop = 17.0f;  // kN/m3 above the first reading
  float sngDeltaZ = 0.2f;     // m; 0 means irregular depths
  std::string strFormat = "AB";  // "AB", "ABC", "ABZ" or "ABCZ": the columns the file carries
  float sngCoefA = 1.05f, sngCoefB = 0.05f;  // Po correction, derived from factorEd

  void setDatPath(const std::filesystem::path& path) { strDatPath_ = path; }
  const std::filesystem::path& getDatPath() const { return strDatPath_; }

  float factorEd() const { return factorEd_; }
  // Stores the factor and derives sngCoefA and sngCoefB from it.
  void setFactorEd(float value);
  // Membrane sensitivity: 120 / (pi x factorEd).
  float s0() const;

  // --- Rows ---------------------------------------------------------------------------------
  std::vector<float> vZ;
  std::vector<float> vTH;  // thrust by row
  std::vector<int16_t> vA, vB, vC;  // kPa; 0 means no reading

  int16_t N() const { return static_cast<int16_t>(vZ.size()); }
  // A positive n makes the five row arrays n long and clears them; 0 or less empties them.
  void setN(int n);
  float Zi() const { return vZ.empty() ? 0.0f : vZ.front(); }
  float Zf() const { return vZ.empty() ? 0.0f : vZ.back(); }

  // --- File ---------------------------------------------------------------------------------
  // Reads getDatPath(). Gives -1 when the whole file was read; 0 on any error, with what was
  // read so far kept in the record and `why` telling the file, the line and the problem. Then
  // reads Thrust.dat beside it, if there is one (loadThrust, record only).
  int16_t loadFile(Diagnostic* why = nullptr);
  // The reading of loadFile from the file's bytes, `file` naming it in the diagnostic; Thrust.dat
  // is not read. An empty or blank text is WrongFormat and changes nothing; a file that breaks
  // off or holds a bad field is Partial, what was read before it kept.
  LoadResult parseDat(std::string_view bytes, const std::filesystem::path& file);
  // Normalises the format and writes getDatPath(), with blnHasThrust Thrust.dat as well: both
  // files are replaced together or, on any failure, neither. -1 on success, 0 on failure.
  int16_t saveFile(Diagnostic* why = nullptr);
  // The files the last loadFile could not read in full: the .dat file, Thrust.dat, or both.
  // A save over one of them would lose its unread rest, so the owner keeps a copy first.
  std::vector<std::filesystem::path> partlyReadFiles() const;
  // True when the last loadFile read every row of the .dat file and only the thrust rows ended
  // early, at a depth that matches no row: the test is good, the thrusts after it are missing.
  bool onlyThrustEndedEarly() const { return !datPartial_ && thrustLeftRows_; }
  // The file's bytes as saveFile writes them (after the same normalisation).
  std::string fileText();

  // --- Thrust (Thrust.dat in the folder of the .dat file) ------------------------------------
  RodData rodData;  // the rods and blade of this test's thrust readings; see Thrust.h

  // The folder of getDatPath() + "Thrust.dat"; empty while the test has no path.
  std::filesystem::path thrustFilePath() const;
  bool hasThrustFile() const;
  // Makes the test one with thrust: sets blnHasThrust, puts the default rod data in and sets the
  // thrust fields of `options`. Nothing is written until the next saveFile.
  void addThrust(DMTOptions& options);
  // Clears blnHasThrust, resets the thrust fields of `options` and deletes Thrust.dat if it
  // exists. The thrusts stay in vTH; without the flag nothing reads or writes them. False (and
  // why) if the file exists and could not be deleted.
  bool removeThrust(DMTOptions& options, Diagnostic* why = nullptr);
  // Reads Thrust.dat if it exists (true at once if not): as addThrust, then the rod data and one
  // thrust per row into vTH. loadFile calls it with no options, which sets the record only; the
  // owner of the program-wide options then applies setThrustOptions when blnHasThrust is set.
  // False, with why, when the file can't be read or its reading ended at a bad row or at a
  // depth that no row matches; what was read is kept.
  bool loadThrust(DMTOptions* options = nullptr, Diagnostic* why = nullptr);
  // The reading of loadThrust from the bytes of a Thrust.dat (see parseThrustText): Complete
  // or Partial, the rod data and thrusts read before the end kept either way.
  LoadResult parseThrust(std::string_view bytes, const std::filesystem::path& file, DMTOptions* options = nullptr);
  // Writes Thrust.dat through a temporary file (rows with a thrust above 0 only). saveFile calls
  // it when blnHasThrust is set.
  bool saveThrust(Diagnostic* why = nullptr) const;

  // --- Exchange file ------------------------------------------------------------------------
  // Writes the evaluated test as a DMTUNI92 file (see UniExport.h) through a temporary file.
  bool generateUNI(const std::filesystem::path& file, Diagnostic* why = nullptr) const;

  void checkCeditable();  // sets blnHasC
  void checkZeditable();  // sets sngDeltaZ and blnZEditable

  // --- Editing ------------------------------------------------------------------------------
  float suggestNextZ() const;
  // Row whose depth lies within 0.01 of z, or -1.
  int16_t isZCollision(float z) const;
  // 1-based place where a new depth would go inside the list; 0 when it has none.
  int16_t getZnewCorrectIndex(float z) const;
  void addZABCtoData(float z, int16_t a, int16_t b, int16_t c, bool overwrite);
  void addCReading(float z, float c, bool overwrite);
  float lastAValue() const;      // A of the last row in bar
  float averageAValue() const;   // mean A in kPa
  float CReadingPercentAge() const;  // fraction 0..1 of rows with a C reading
  void setRecommendedCalibrationValues(const CalibrationFigures& calibration);
  std::vector<float> vBadRows;  // rows found with P1 - Po not positive

  // --- Evaluation ---------------------------------------------------------------------------
  // Fills the result vectors row by row from the top. Returns false if a row failed; the rows
  // from it on are left at 0.
  bool evalDMT(const cls_GAMMA& gamma, const cls_U& u, const DMTOptions& options);
  // Ed, Id and Ud without clipping or filtering, for the tabular checks.
  void calculateRealEdIdUd(const DMTOptions& options);

  std::vector<int16_t> vecCODREAD;  // 100: A and B valid, 50: A only, 0: no A
  std::vector<float> vecPo, vecP1, vecP2, vecGamma, vecSigmaEff, vecSigmaV, vecSigmah, vecUo, vecUd,
      vecId, vecLogId, vecEd, vecKd, vecKo, vecOCR, vecM, vecCu, vecPhi, vecDMTVs;
  std::vector<int16_t> vecSoilType;  // 1..37, 0 where filtered or not classified
  std::vector<float> vecIdReal, vecEdReal, vecUdReal;

  float getGammai(int row) const;
  float getEdReal(int row) const;
  float getIdReal(int row) const;
  float getUdReal(int row) const;
  int16_t getSoilType(int row) const;
  // String number of the soil class of a code, 0 for any other code.
  static int getDescrGammaStringId(int soilCode);
  // String number of the row's soil class if the row was read in full (code 100), else 0.
  int getDescrSoilRealStringId(int row) const;

  // Values by depth, interpolated between rows.
  float getMFromZ(float z) const;
  float getEdFromZ(float z) const;
  float getIdFromZ(float z) const;
  float getKdFromZ(float z) const;
  float getOCRFromZ(float z) const;
  float getSigmaEffVFromZ(float z) const;
  float getKoFromZ(float z) const;
  float getMhFromZ(float z) const;

 private:
  std::filesystem::path strDatPath_;
  bool datPartial_ = false, thrustPartial_ = false, thrustLeftRows_ = false;  // the last loadFile
  float factorEd_ = 34.7f;
};

}  // namespace koru
