#include "seismic/cls_VTEST.h"

#include <cmath>
#include <limits>

#include "frame/Files.h"
#include "frame/Numbers.h"
#include "seismic/cls_SEISMOGRAM.h"

namespace koru {

// ---- Density and G0 -------------------------------------------------------------------------

float evalRho(float gamma) {
  if (!(gamma > 0) || !std::isfinite(gamma)) return 0;
  return static_cast<float>(static_cast<double>(gamma) / static_cast<double>(gravity()));
}

float evalGo(float rho, float vs) {
  if (!(rho > 0) || !(vs > 0) || !std::isfinite(rho) || !std::isfinite(vs)) return 0;
  const double kPa = static_cast<double>(rho) * static_cast<double>(vs) * static_cast<double>(vs);
  return static_cast<float>(kPa / 1000.0);
}

std::vector<float> cls_VTEST::evalRho(const UnitWeightAt& unitWeightAt) const {
  std::vector<float> out;
  out.reserve(static_cast<size_t>(strikes.Count()));
  for (const auto& z : strikes) out.push_back(unitWeightAt ? koru::evalRho(unitWeightAt(z.Z)) : 0.0f);
  return out;
}

std::vector<float> cls_VTEST::evalGo(const UnitWeightAt& unitWeightAt) const {
  std::vector<float> out;
  out.reserve(static_cast<size_t>(strikes.Count()));
  for (const auto& z : strikes) {
    const float rho = unitWeightAt ? koru::evalRho(unitWeightAt(z.Z)) : 0.0f;
    out.push_back(koru::evalGo(rho, static_cast<float>(z.vMean)));
  }
  return out;
}

// ---- Test -----------------------------------------------------------------------------------

cls_VTEST::cls_VTEST(std::filesystem::path indexFile, std::filesystem::path strikesFolder, std::string_view wave) {
  setPaths(std::move(indexFile), std::move(strikesFolder));
  setStrWave(wave);
}

void cls_VTEST::setPaths(std::filesystem::path indexFile, std::filesystem::path strikesFolder) {
  indexFile_ = std::move(indexFile);
  strikesFolder_ = std::move(strikesFolder);
}

std::filesystem::path cls_VTEST::seismogramPath(std::string_view name) const {
  return strikesFolder_ / (std::string(name) + ".kor");
}

void cls_VTEST::setStrWave(std::string_view wave) { strWave_ = wave == "Vp" ? "Vp" : "Vs"; }

int32_t cls_VTEST::nextFileNumber() const {
  const int32_t greatest = strikes.getMaxFileNumber();
  return greatest < std::numeric_limits<int32_t>::max() ? greatest + 1 : greatest;
}

std::vector<float> cls_VTEST::get_vecZ() const {
  std::vector<float> out;
  for (const auto& z : strikes) out.push_back(z.Z);
  return out;
}

std::vector<int16_t> cls_VTEST::get_vecV() const {
  std::vector<int16_t> out;
  for (const auto& z : strikes) out.push_back(z.vMean);
  return out;
}

std::vector<float> cls_VTEST::get_vecDevStd() const {
  std::vector<float> out;
  for (const auto& z : strikes) out.push_back(z.devStd);
  return out;
}

std::vector<std::string> cls_VTEST::get_vecRepeatability() const {
  std::vector<std::string> out;
  for (const auto& z : strikes) out.push_back(z.vList);
  return out;
}

int cls_VTEST::evaluateStrikes(std::vector<Diagnostic>* problems) {
  int evaluated = 0;
  for (auto& group : strikes) {
    const auto names = group.goodFiles();
    const auto elabs = group.elabs(kElabGood);
    for (size_t i = 0; i < names.size(); ++i) {
      const auto path = seismogramPath(names[i]);
      if (!fileExists(path)) {
        // The elaboration window shows such a line without a trace; the stored velocity stands.
        if (problems) problems->push_back({path, 0, "the seismogram of a good strike is missing"});
        continue;
      }
      cls_SEISMOGRAM record;
      record.intProbeLine = intProbeLine;
      Diagnostic why;
      if (record.loadFile(path, &why) != 0) {
        if (problems) problems->push_back(why);
        continue;
      }
      if (elabs[i].empty()) {
        record.setDefaultElabParameters();
      } else if (!record.set_elabString(elabs[i])) {
        if (problems) problems->push_back({path, 0, "the elab string '" + elabs[i] + "' cannot be read"});
        continue;
      }
      record.evalV();
      group.updateSeismogram(record, names[i]);
      ++evaluated;
    }
  }
  return evaluated;
}

bool cls_VTEST::setGood(std::string_view name, Diagnostic* why) { return strikes.setGood(seismogramPath(name), why); }
bool cls_VTEST::setBad(std::string_view name, Diagnostic* why) { return strikes.setBad(seismogramPath(name), why); }
bool cls_VTEST::setNoise(std::string_view name, Diagnostic* why) { return strikes.setNoise(seismogramPath(name), why); }
bool cls_VTEST::moveFile(std::string_view name, float newZ, Diagnostic* why) {
  return strikes.moveFile(seismogramPath(name), newZ, why);
}

}  // namespace koru
