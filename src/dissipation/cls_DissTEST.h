#pragma once
// One dissipation test: the A reading followed in time with the blade stopped at one depth.
// The record holds the header, the readings (time in minutes, A in whole kPa), the results of
// the Tflex interpretation and the text forms: the .dis file, the listing and the report.
//
// Outside a file read the two reading arrays always hold exactly N() elements. No operation
// throws: file problems come back as a status with a Diagnostic, a failed fit as a TflexStatus.

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dissipation/DissVertData.h"
#include "dissipation/Tflex.h"
#include "frame/Diagnostic.h"
#include "frame/LoadResult.h"

namespace koru {

// A name and value pair of the file, as parseItem splits a field.
struct DissItem {
  std::string name;
  std::string value;
};

class cls_DissTEST {
 public:
  static constexpr std::string_view kMarker = "DISSIP2002";
  // Reading counts are 16-bit throughout the program.
  static constexpr int kMaxReadings = 32767;

  // --- Header -------------------------------------------------------------------------------
  std::string Firm, Customer, Job, Site, Remark, Data, TstName;  // Data: the date text
  bool isZdSpecified = false;
  float Zm = 0;                    // kPa, gauge zero
  int16_t DeltaA = 0, DeltaB = 0;  // kPa, membrane calibration
  float BFinal = 0;                // kPa, B read at the end of the test
  float U0 = 0;                    // kPa, pore pressure at the depth
  bool isUoSpecified = false;
  float Id = 0, OCR = 0;
  float Mh = 0;                    // MPa, horizontal constrained modulus
  std::string startDate;           // "yyyy/m/d"; empty when times are relative only
  std::string startTime;           // "hh:mm:ss"; likewise

  // The vertical's dissipation folder: the depth names the file inside it. When empty, the
  // folder of the current file name is used.
  std::filesystem::path folder;
  std::filesystem::path filename;  // full path of the .dis file

  float Zd() const { return Zd_; }
  // A depth above 0 is stored and names the file: folder / (depth x 100 as "0000") ".dis", so
  // 12.3 m is "1230.dis" and one depth holds one test. 0 or less changes nothing.
  void setZd(float depth);
  // The depth as typed: an empty text clears it (Zd 0, not specified), anything else is read as
  // a number and marks the depth as specified.
  void inputZd(std::string_view text);

  // --- Start of the test ----------------------------------------------------------------------
  bool isTimeAbsolute() const { return !startDate.empty() && !startTime.empty(); }
  bool existsTempoInizioProva() const { return isTimeAbsolute(); }
  // startDate and startTime joined, as a local date and time; nullopt when either is missing
  // or does not read as a date or a time.
  std::optional<std::chrono::local_seconds> tempoInizioProva() const;
  void setTempoInizioProva(std::chrono::local_seconds when);

  // --- Readings ---------------------------------------------------------------------------------
  const std::vector<float>& vT() const { return vT_; }    // minutes, in test order
  const std::vector<int16_t>& vA() const { return vA_; }  // kPa
  int16_t N() const { return N_; }
  // 0 or less empties both arrays; otherwise they become n zero readings.
  void setN(int n);
  // Copies both arrays; N is the length of `t` (at most kMaxReadings), `a` is cut or padded with
  // zeros to match.
  void setDissData(const std::vector<float>& t, const std::vector<int16_t>& a);
  // Growing store of the file reader. With N = 0 the arrays become 11 zero slots; otherwise,
  // when the top slot already holds a non-zero time and a non-zero A, the upper bound doubles
  // (contents kept). A zero in the top slot holds the growth back, and the next store beyond
  // the bound then fails.
  void sizeVectors();
  // Writes one pair; false when the index lies outside the arrays. N becomes at least index + 1.
  bool storeTAReadings(float t, int16_t a, int index);
  // Cuts both arrays to upper bound `last` (contents kept); N becomes last + 1.
  void setFinalSize(int last);
  // Appends a reading taken in the field; false when the test is full.
  bool addAcquireDissReading(float t, int16_t a);

  // Header texts from the vertical; DeltaA and DeltaB from its DMT test, or 0 without one.
  void initializeDissVertData(const DissVertData& vertical);
  // Empties the texts and the start, zeroes Zd, Zm, DeltaA, DeltaB, BFinal and clears both
  // flags that say the depth and U0 were given. The readings and the file name stay.
  void resetData();

  // --- File ---------------------------------------------------------------------------------
  // Writes strDisFile to `filename` through a temporary file, so a failed save leaves the old
  // file whole. False, with `why` filled, on failure.
  bool saveFile(Diagnostic* why = nullptr) const;
  // Reads `filename` into the record: the keys the file holds replace their fields (a ZD line
  // also renames `filename`), the others keep theirs, and the readings become the file's. A file that cannot be opened changes nothing and gives Unreadable; a file without
  // the marker changes nothing and gives WrongFormat ("File not valid"). A file that breaks off
  // keeps what was read before the break and gives Partial.
  LoadStatus parseFile(Diagnostic* why = nullptr);
  // The reading of parseFile from the file's bytes, `file` naming it in the diagnostic; the
  // record's own `folder` and `filename` are kept as parseFile keeps them.
  LoadResult parseDis(std::string_view bytes, const std::filesystem::path& file);
  // The file's text (UTF-8; saveFile writes it as Windows-1252).
  std::string strDisFile() const;
  // Splits one field into name and value; see the .cpp for the rules.
  static DissItem parseItem(std::string_view field);
  // Applies one header pair; unknown names are ignored. False when a number is not a finite
  // float or a 16-bit value is out of range (the field is then left as it was).
  bool setField(std::string_view name, std::string_view value);

  // The listing shown and printed (never read back).
  std::string strTabularData() const;
  // The three parts of the report document: header values, readings, results.
  std::string reportHeader() const;
  std::string reportData() const;
  std::string reportResults() const;

 private:
  void appendHeaderTexts(std::string& out) const;
  void appendHeaderValues(std::string& out) const;

 public:

  // --- Tflex interpretation ---------------------------------------------------------------------
  float FlexT = 0;  // minutes; -1 when the flex lies outside 0.01 .. 1,000,000 minutes
  float FlexA = 0;  // kPa; -1 likewise
  bool isGoodFlex = false;
  float a0 = 0, a1 = 0, a2 = 0, a3 = 0;  // log10(t) = a0 + a1 x + a2 x^2 + a3 x^3, x = A / 100
  Matrix4 M{};  // normal equations of the last fit, kept for `test`
  Vector4 b{};

  // Fits the cubic and finds the flex. With fewer than 4 readings nothing but the coefficients
  // (set to 0) changes. Any status but Computed leaves FlexT, FlexA and isGoodFlex as they were.
  [[nodiscard]] TflexStatus calculate();
  float b2minus4ac() const;  // (2 a2)^2 - 4 (3 a3) a1: > 0 when y'(x) has two real roots
  float mflex() const;       // slope of the cubic at the flex; 0 when a3 is 0
  void setIfGoodFlex();
  float Po() const;          // Po,final in kPa; 0 without a final B or readings
  std::string strCh() const;      // cm^2/s, empty without a positive FlexT
  std::string ChMinutes() const;  // cm^2/min, empty without a positive FlexT
  std::string strKh() const;      // cm/s, empty without a positive FlexT or with Mh 0
  std::string returnCoeff() const;
  std::string checkFlexSlope() const;
  std::string checkOneFlex() const;
  // The report of the mathematical data, for the user's checking.
  std::string test() const;

  float MinA() const;
  float MaxA() const;
  float MinT() const;
  float MaxT() const;

 private:
  float Zd_ = 0;
  int16_t N_ = 0;
  std::vector<float> vT_;
  std::vector<int16_t> vA_;
};

}  // namespace koru
