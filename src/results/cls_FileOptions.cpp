#include "results/cls_FileOptions.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "frame/Files.h"
#include "frame/Numbers.h"
#include "frame/Text.h"
#include "sites/cls_VERTICAL.h"

namespace koru {

namespace {

void report(std::vector<Diagnostic>* problems, Diagnostic why) {
  if (problems != nullptr) problems->push_back(std::move(why));
}

// Smallest and largest depth at which the parallel vector holds a value; 0 when none does.
float extremeDepthWithValue(const std::vector<float>& depths, const std::vector<float>& values, bool deepest) {
  const size_t n = std::min(depths.size(), values.size());
  bool found = false;
  float best = 0;
  for (size_t i = 0; i < n; ++i) {
    if (!(values[i] > 0) || !std::isfinite(depths[i])) continue;
    if (!found || (deepest ? depths[i] > best : depths[i] < best)) best = depths[i];
    found = true;
  }
  return best;
}

bool anyAboveZero(const std::vector<float>& values) {
  return std::any_of(values.begin(), values.end(), [](float v) { return v > 0; });
}

// A velocity as the index keeps it in a depth's list: text, 0 for anything that is not one.
float velocityOfText(const std::string& text) {
  const std::optional<float> v = tryParseSingle(text);
  return v && std::isfinite(*v) && *v > 0 ? *v : 0.0f;
}

struct SeismicColumns {
  std::vector<float>& z;
  std::vector<float>& v;
  std::vector<float>& reading1;
  std::vector<float>& reading2;
  std::vector<float>& repeatability;
  std::vector<float>& devStd;
};

// The true-interval results of a test, one entry a depth in rising Z.
void fillSeismic(const cls_VTEST& test, const SeismicColumns& out) {
  out.z = test.get_vecZ();
  const std::vector<int16_t> means = test.get_vecV();
  const std::vector<float> scatter = test.get_vecDevStd();
  const size_t n = out.z.size();
  out.v.assign(n, 0.0f);
  out.reading1.assign(n, 0.0f);
  out.reading2.assign(n, 0.0f);
  out.repeatability.assign(n, -1.0f);
  out.devStd.assign(n, -1.0f);
  for (size_t i = 0; i < n; ++i) {
    const float mean = i < means.size() ? static_cast<float>(means[i]) : 0.0f;
    out.v[i] = mean;
    if (const cls_zSTRIKES* depth = test.strikes.item(static_cast<int>(i) + 1)) {
      const std::vector<std::string> velocities = depth->velocities();
      if (!velocities.empty()) out.reading1[i] = velocityOfText(velocities[0]);
      if (velocities.size() > 1) out.reading2[i] = velocityOfText(velocities[1]);
    }
    // The test keeps the scatter as a percentage of the rounded mean; the tables show it in
    // m/s as well, which is the same figure times the mean.
    const float percent = i < scatter.size() ? scatter[i] : -1.0f;
    if (percent >= 0 && std::isfinite(percent)) {
      out.repeatability[i] = percent;
      out.devStd[i] = static_cast<float>(static_cast<double>(percent) * mean / 100.0);
    }
  }
}

// In the chart modes the unit weights are those the evaluation gave each DMT row, so the
// profile's points follow the test: the top with the test's unit weight above the first row,
// then every row. A user's table (mode 2) is left alone.
void followDmtRows(cls_GAMMA& gamma, const cls_DmtTEST& dmt) {
  if (dmt.N() <= 0 || (gamma.Method() != 0 && gamma.Method() != 1)) return;
  const int n = dmt.N();
  gamma.setN(n + 1);
  gamma.setZi(0, dmt.Zi());
  gamma.setYi(0, dmt.sngGammaTop);
  for (int i = 0; i < n; ++i) {
    gamma.setZi(i + 1, dmt.vZ[static_cast<size_t>(i)]);
    gamma.setYi(i + 1, dmt.getGammai(i));
  }
}

float ratioOrZero(float numerator, float denominator) {
  if (!(denominator > 0)) return 0;
  const double r = static_cast<double>(numerator) / static_cast<double>(denominator);
  return std::isfinite(r) && std::fabs(r) <= std::numeric_limits<float>::max() ? static_cast<float>(r) : 0.0f;
}

}  // namespace

// ---- Plot vectors ---------------------------------------------------------------------------

std::vector<std::vector<float>> cls_FileOptions::getPlotVector(std::string_view code) const {
  const std::string c = upperAscii(code);
  if (c == "ID") return {dmt.vecLogId};
  if (c == "M") return {dmt.vecM};
  if (c == "CU") return {dmt.vecCu};
  if (c == "PHI") return {dmt.vecPhi};
  if (c == "KD") return {dmt.vecKd};
  if (c == "K0") return {dmt.vecKo};
  if (c == "ED") return {dmt.vecEd};
  if (c == "OCR") return {dmt.vecOCR};
  if (c == "P2") return {dmt.vecP2};
  if (c == "UD") return {dmt.vecUd};
  if (c == "P0P1") return {dmt.vecPo, dmt.vecP1};
  if (c == "P2U0") return {dmt.vecP2, dmt.vecUo};
  if (c == "U0P2P0P1") return {dmt.vecUo, dmt.vecPo, dmt.vecP1, dmt.vecP2};
  if (c == "SIGMAH") return {dmt.vecSigmah};
  if (c == "SIGMAV") return {dmt.vecSigmaV};
  if (c == "VS") return {vVs};
  if (c == "VS1") return {Vs1};
  if (c == "VS2") return {Vs2};
  if (c == "VP") return {Vp};
  if (c == "VP1") return {vP1};
  if (c == "VP2") return {vP2};
  if (c == "G0") return {vG0};
  return {};
}

std::vector<float> cls_FileOptions::ZVector(std::string_view code) const {
  const std::string c = upperAscii(code);
  if (c == "VS" || c == "VS1" || c == "VS2" || c == "G0") return VZVs;
  if (c == "VP" || c == "VP1" || c == "VP2") return VZVp;
  return dmt.vZ;
}

// ---- Depth extremes -------------------------------------------------------------------------

float cls_FileOptions::minVecZVs1() const { return extremeDepthWithValue(VZVs, Vs1, false); }
float cls_FileOptions::minVecZVs2() const { return extremeDepthWithValue(VZVs, Vs2, false); }
float cls_FileOptions::maxVecZVs1() const { return extremeDepthWithValue(VZVs, Vs1, true); }
float cls_FileOptions::maxVecZVs2() const { return extremeDepthWithValue(VZVs, Vs2, true); }
float cls_FileOptions::minVecZVP1() const { return extremeDepthWithValue(VZVp, vP1, false); }
float cls_FileOptions::minVecZVP2() const { return extremeDepthWithValue(VZVp, vP2, false); }
float cls_FileOptions::maxVecZVP1() const { return extremeDepthWithValue(VZVp, vP1, true); }
float cls_FileOptions::maxVecZVP2() const { return extremeDepthWithValue(VZVp, vP2, true); }

float cls_FileOptions::ZTopDepth() const {
  bool found = false;
  float top = 0;
  for (const std::vector<float>* depths : {&dmt.vZ, &VZVs, &VZVp}) {
    for (const float z : *depths) {
      if (!std::isfinite(z)) continue;
      if (!found || z < top) top = z;
      found = true;
    }
  }
  return top;
}

float cls_FileOptions::ZBottomDepth() const {
  bool found = false;
  float bottom = 0;
  for (const std::vector<float>* depths : {&dmt.vZ, &VZVs, &VZVp}) {
    for (const float z : *depths) {
      if (!std::isfinite(z)) continue;
      if (!found || z > bottom) bottom = z;
      found = true;
    }
  }
  return bottom;
}

float cls_FileOptions::ZTopAbs() const { return sngZabs - ZTopDepth(); }
float cls_FileOptions::ZBottomAbs() const { return sngZabs - ZBottomDepth(); }

// ---- Kinds of data --------------------------------------------------------------------------

bool cls_FileOptions::isDMT() const { return dmt.N() > 0; }
bool cls_FileOptions::isVs() const { return anyAboveZero(vVs); }
bool cls_FileOptions::isVp() const { return anyAboveZero(Vp); }
bool cls_FileOptions::isDissip() const { return dissipations && dissipations->isDissipationsSignificant(); }

bool cls_FileOptions::blnGraphHasSense() const { return isDMT() || isVs() || isVp(); }
bool cls_FileOptions::blnReportHasSense() const { return blnGraphHasSense() || isDissip(); }

void cls_FileOptions::setDefaultReportBooleans() {
  const bool withDmt = isDMT(), withVs = isVs(), withVp = isVp();
  blnTabularDMT = withDmt;
  intCodTabularDMT = withDmt ? 1 : 0;
  blnTabVsVert = withVs;
  intCodTabularVs = withDmt ? 1 : 2;
  blnTabVpVert = withVp;
  blnSismVsVert = withVs;
  blnSismVpVert = false;
  if (isDissip()) dissipations->setDefaultTabDissipations();
}

// ---- Filling --------------------------------------------------------------------------------

void cls_FileOptions::clearData() {
  dmt = cls_DmtTEST();
  dissipations.reset();
  gamma = cls_GAMMA();
  u = cls_U();
  for (std::vector<float>* v : {&VZVs, &VZVp, &vVs, &Vp, &Vs1, &Vs2, &vP1, &vP2, &VsRepeatability, &VpRepeatability,
                                &vDevStdVs, &vDevStdVp, &vRho, &vG0, &vIdVs, &vEdVs, &vMVs, &vKdVs, &vG0EdVs, &vG0MVs})
    v->clear();
}

void cls_FileOptions::fillDmtAtVsDepths() {
  const size_t n = VZVs.size();
  vIdVs.assign(n, 0.0f);
  vEdVs.assign(n, 0.0f);
  vMVs.assign(n, 0.0f);
  vKdVs.assign(n, 0.0f);
  vG0EdVs.assign(n, 0.0f);
  vG0MVs.assign(n, 0.0f);
  vG0.resize(n, 0.0f);  // parallel to the depths even if the modulus could not be computed
  for (size_t i = 0; i < n; ++i) {
    const float z = VZVs[i];
    vIdVs[i] = dmt.getIdFromZ(z);
    vEdVs[i] = dmt.getEdFromZ(z);
    vMVs[i] = dmt.getMFromZ(z);
    vKdVs[i] = dmt.getKdFromZ(z);
    vG0EdVs[i] = ratioOrZero(vG0[i], vEdVs[i]);
    vG0MVs[i] = ratioOrZero(vG0[i], vMVs[i]);
  }
}

bool cls_FileOptions::initializeFromPalmiro(const VerticalSources& s, const DMTOptions& options,
                                            std::vector<Diagnostic>* problems) {
  bool ok = true;
  clearData();
  strVertName = s.strVertName;
  static_cast<TestHeader&>(*this) = s;
  strGPS = s.strGPS;
  Zw = s.sngZw;
  sngZabs = s.sngZabs;
  gamma = s.gamma;
  u = s.u;

  if (s.dmt != nullptr) {
    dmt = *s.dmt;
    // The thrust fields follow this test's thrust data, as when its vertical is activated, so
    // that the view shows what the vertical's evaluation shows.
    if (dmt.N() > 0 && !dmt.evalDMT(gamma, u, options.forTest(dmt.blnHasThrust))) {
      report(problems, {dmt.getDatPath(), 0, "a row could not be evaluated: results from that row on are 0"});
      ok = false;
    }
    followDmtRows(gamma, dmt);
  }

  const UnitWeightAt unitWeightAt =
      s.unitWeightAt ? s.unitWeightAt : UnitWeightAt([this](float z) { return gamma.getYz(z); });

  // True-interval results only: the pseudo-interval model is not read into the view yet.
  if (s.vsTest != nullptr) {
    fillSeismic(*s.vsTest, {VZVs, vVs, Vs1, Vs2, VsRepeatability, vDevStdVs});
    vRho = s.vsTest->evalRho(unitWeightAt);
    vG0 = s.vsTest->evalGo(unitWeightAt);
  }
  if (s.vpTest != nullptr) fillSeismic(*s.vpTest, {VZVp, Vp, vP1, vP2, VpRepeatability, vDevStdVp});
  vRho.resize(VZVs.size(), 0.0f);
  vG0.resize(VZVs.size(), 0.0f);

  if (s.dissipations != nullptr) dissipations = *s.dissipations;

  fillDmtAtVsDepths();
  return ok;
}

bool cls_FileOptions::initializeFromPalmiro(const cls_VERTICAL& vertical, const DMTOptions& options,
                                            std::vector<Diagnostic>* problems) {
  bool ok = true;
  VerticalSources s;
  s.strVertName = vertical.strTestname.empty() ? vertical.strFolderName : vertical.strTestname;
  static_cast<TestHeader&>(s) = vertical;
  s.strGPS = vertical.strGPS;
  s.sngZw = vertical.sngZw;
  s.sngZabs = vertical.sngZabs;
  s.gamma = vertical.gamma;
  s.u = vertical.u;

  // A graph shows what is saved, and verticals that were never activated hold no tests, so
  // the DMT test is read from its file here rather than taken from the vertical.
  std::optional<cls_DmtTEST> dmtRead;
  if (vertical.blnTestDMT && fileExists(vertical.strDMTFile)) {
    dmtRead.emplace();
    dmtRead->setDatPath(vertical.strDMTFile);
    Diagnostic why;
    if (dmtRead->loadFile(&why) != -1) {
      if (why.reason.empty()) why = {vertical.strDMTFile, 0, "could not be read in full"};
      report(problems, why);
      ok = false;
    }
    s.dmt = &*dmtRead;
  }

  // The seismic tests are read from their indices for the same reason. A missing index is
  // an empty test.
  std::optional<cls_VTEST> vsRead, vpRead;
  const auto readTest = [&](std::optional<cls_VTEST>& test, const std::filesystem::path& index,
                            const std::filesystem::path& folder, std::string_view wave) {
    test.emplace(index, folder, wave);
    Diagnostic why;
    if (test->loadInfo(&why) == 1) {
      report(problems, why);
      ok = false;
    }
  };
  if (vertical.blnTestVs) {
    readTest(vsRead, vertical.strVsFile, vertical.strVsFolder, "Vs");
    s.vsTest = &*vsRead;
  }
  if (vertical.blnTestVp) {
    readTest(vpRead, vertical.strVpFile, vertical.strVpFolder, "Vp");
    s.vpTest = &*vpRead;
  }

  std::optional<cls_Dissipations> dissRead;
  if (vertical.dissipations) {
    s.dissipations = &*vertical.dissipations;
  } else if (vertical.blnTestDissip && folderExists(vertical.strDissipFolder)) {
    dissRead.emplace();
    dissRead->setFolder(vertical.strDissipFolder);
    if (!dissRead->loadInfo(problems)) ok = false;
    s.dissipations = &*dissRead;
  }

  return initializeFromPalmiro(s, options, problems) && ok;
}

bool cls_FileOptions::parseZVsfromTextfile(const std::filesystem::path& path, std::vector<float>& depths,
                                           Diagnostic* why) {
  depths.clear();
  Diagnostic readError;
  const std::optional<std::string> bytes = readFileBytes(path, &readError);
  if (!bytes) {
    if (why != nullptr) *why = readError.reason.empty() ? Diagnostic{path, 0, "cannot be read"} : readError;
    return false;
  }
  std::string_view rest = *bytes;
  // Lists typed in an editor that marks its files as UTF-8 start with the mark; it is no depth.
  if (rest.starts_with("\xEF\xBB\xBF")) rest.remove_prefix(3);
  int lineNumber = 0;
  while (!rest.empty()) {
    const size_t end = rest.find('\n');
    std::string_view line = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    ++lineNumber;

    const size_t first = line.find_first_not_of(" \t\r");
    if (first == std::string_view::npos || line[first] == '#') continue;
    const size_t last = line.find_last_not_of(" \t\r");
    const std::string_view text = line.substr(first, last - first + 1);

    const std::optional<float> z = tryParseSingle(text);
    if (!z || !std::isfinite(*z) || *z < 0) {
      if (why != nullptr) *why = {path, lineNumber, "\"" + std::string(text) + "\" is not a depth in metres"};
      return false;
    }
    depths.push_back(*z);
  }
  return true;
}

bool cls_FileOptions::refreshDMTElab(const DMTOptions& options) {
  if (!isDMT()) return true;
  const bool ok = dmt.evalDMT(gamma, u, options.forTest(dmt.blnHasThrust));
  fillDmtAtVsDepths();
  return ok;
}

}  // namespace koru
