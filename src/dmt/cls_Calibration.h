#pragma once
// The membrane calibrations of a vertical (Calibration_m.dat): one line per calibration,
//   DeltaA = 15, DeltaB = 40, Date = 12/03/2008, Time = 10:25
// Deltas are whole kPa.

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "dmt/CalibrationFigures.h"
#include "frame/Diagnostic.h"
#include "frame/LoadResult.h"

namespace koru {

class cls_Calibration {
 public:
  void setPathFile(const std::filesystem::path& path) { path_ = path; }
  const std::filesystem::path& pathFile() const { return path_; }

  int16_t N() const { return static_cast<int16_t>(deltaA_.size()); }
  // Resizes the lists keeping what fits.
  void setN(int n);

  int16_t deltaA_i(int i) const { return deltaA_.at(static_cast<size_t>(i)); }
  int16_t deltaB_i(int i) const { return deltaB_.at(static_cast<size_t>(i)); }
  const std::string& data_i(int i) const { return date_.at(static_cast<size_t>(i)); }
  const std::string& ora_i(int i) const { return time_.at(static_cast<size_t>(i)); }

  void addCalibration(int16_t deltaA, int16_t deltaB, std::string_view date, std::string_view time);
  void deleteCalibration(int i);

  // Reads the file; keys in any order, upper or lower case. False if the file could not be
  // read; an unreadable line is skipped and reported in `why`.
  bool loadCalibrations(Diagnostic* why = nullptr);
  // The reading of loadCalibrations from the file's bytes, `file` naming it in the diagnostic.
  // Replaces the list. Partial when a line was skipped (the first one is told, with the count)
  // or the list reached its 16-bit limit (the rest is not read).
  LoadResult parseCalibrations(std::string_view bytes, const std::filesystem::path& file);
  // Rewrites the whole file.
  bool saveToFile(Diagnostic* why = nullptr) const;
  // The file's bytes as saveToFile writes them.
  std::string fileText() const;

  // All Delta A within 5..30 kPa and spread below 26; Delta B within 5..80 and spread below 26.
  bool checkDeltaAStandards() const;
  bool checkDeltaBStandards() const;
  int16_t minDeltaA() const;
  int16_t maxDeltaA() const;
  int16_t minDeltaB() const;
  int16_t maxDeltaB() const;
  // "DA" or "DB": the mean over the stored calibrations (0 with none). Any other selection
  // gives 0 and `error` is set to "Error in calibration selection".
  float averageCalibration(std::string_view which, std::string* error = nullptr) const;

  CalibrationFigures figures() const;

 private:
  std::filesystem::path path_;
  std::vector<int16_t> deltaA_, deltaB_;
  std::vector<std::string> date_, time_;
};

}  // namespace koru
