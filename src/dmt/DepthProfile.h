#pragma once
// What the unit-weight profile (cls_GAMMA) and the pore-pressure profile (cls_U) of a vertical
// share: a mode, a list of (Z, value) points, their file and the lookup between the points.
//
// The file: line 1 holds the mode as one digit (each profile may add its own text after it),
// then one point a line, "Z:value", both in "0.0#", CR LF ended. The list ends at a line without
// ":". Which modes carry points is each profile's own.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/Diagnostic.h"
#include "frame/LoadResult.h"

namespace koru {

class DepthProfile {
 public:
  bool blnActive = false;

  void setPath(const std::filesystem::path& path) { strPath_ = path; }
  const std::filesystem::path& path() const { return strPath_; }

  int16_t Method() const { return intMethod_; }
  void setMethod(int16_t method) { intMethod_ = method; }
  bool Active() const { return blnActive; }
  void setActive(bool active) { blnActive = active; }

  int16_t N() const { return static_cast<int16_t>(aZ_.size()); }
  // Resizes both lists keeping what fits; 0 or less empties them.
  void setN(int n);
  float getZi(int i) const { return aZ_.at(static_cast<size_t>(i)); }
  void setZi(int i, float z) { aZ_.at(static_cast<size_t>(i)) = z; }

  // 0 read, -1 missing or unreadable file (what the profile held stays). A line that cannot be
  // read ends the reading with what was read; `why` then tells the line.
  int16_t loadInfo(Diagnostic* why = nullptr);
  // The reading of loadInfo from the file's bytes, `file` naming it in the diagnostic: Complete,
  // or Partial at a point that is no "Z:value" or beyond a 16-bit count, the points before it
  // kept. Line 1 sets the mode and the points are replaced.
  LoadResult parseInfo(std::string_view bytes, const std::filesystem::path& file);
  // The file's bytes as saveInfo writes them.
  std::string infoText() const;
  bool saveInfo(Diagnostic* why = nullptr) const;

 protected:
  DepthProfile() = default;
  DepthProfile(const DepthProfile&) = default;
  DepthProfile& operator=(const DepthProfile&) = default;
  ~DepthProfile() = default;

  float valueAt(int i) const { return aValue_.at(static_cast<size_t>(i)); }
  void setValueAt(int i, float value) { aValue_.at(static_cast<size_t>(i)) = value; }
  size_t count() const { return aZ_.size() < aValue_.size() ? aZ_.size() : aValue_.size(); }
  const std::vector<float>& depths() const { return aZ_; }
  const std::vector<float>& values() const { return aValue_; }

  // The value of the point at z, if one agrees with it to the millimetre.
  std::optional<float> pointAt(float z) const;
  // Linear between the points around z; the first (last) value when z is not below (above) the
  // first (last) point. At least one point.
  float between(float z) const;
  // A finite float or 0, for computed values.
  static float finiteOrZero(double x);

 private:
  // Whether a file of this mode carries points: on reading, and as saveInfo writes it.
  virtual bool readsPoints(int16_t mode) const = 0;
  virtual bool writesPoints(int16_t mode) const = 0;
  // Line 1 after the mode digit: what the profile reads from it (false when a number of it is
  // not one) and writes into it.
  virtual bool readHead(int16_t /*mode*/, std::string_view /*firstLine*/) { return true; }
  virtual std::string headText(int /*mode*/) const { return {}; }

  std::filesystem::path strPath_;
  int16_t intMethod_ = 0;
  std::vector<float> aZ_, aValue_;
};

}  // namespace koru
