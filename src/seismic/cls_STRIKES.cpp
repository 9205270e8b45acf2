#include "seismic/cls_STRIKES.h"

#include <algorithm>
#include <cmath>

#include "frame/Numbers.h"
#include "seismic/cls_SEISMOGRAM.h"

namespace koru {

namespace {

// Depths closer than this are the same depth (the index keeps millimetres).
constexpr double kSameDepth = 0.0005;

void explain(Diagnostic* why, const std::filesystem::path& file, std::string reason) {
  if (why) *why = {file, 0, std::move(reason)};
}

}  // namespace

int cls_STRIKES::add(cls_zSTRIKES zstrike) {
  // Ahead of the first greater depth. The collection is kept in rising Z by this very insert,
  // so halving finds the place: a long index read in order costs no walk per depth.
  const auto place = std::upper_bound(items_.begin(), items_.end(), zstrike.Z,
                                      [](float z, const cls_zSTRIKES& item) { return z < item.Z; });
  const auto at = place - items_.begin();
  items_.insert(place, std::move(zstrike));
  return static_cast<int>(at) + 1;
}

cls_zSTRIKES* cls_STRIKES::item(int position) {
  if (position < 1 || position > Count()) return nullptr;
  return &items_[static_cast<size_t>(position - 1)];
}

const cls_zSTRIKES* cls_STRIKES::item(int position) const {
  if (position < 1 || position > Count()) return nullptr;
  return &items_[static_cast<size_t>(position - 1)];
}

bool cls_STRIKES::Remove(int position) {
  if (position < 1 || position > Count()) return false;
  items_.erase(items_.begin() + (position - 1));
  return true;
}

int cls_STRIKES::countSignicative() const {
  int n = 0;
  for (const auto& z : items_) n += z.existsGood() ? 1 : 0;
  return n;
}

int cls_STRIKES::getIndex_byZ(float z) const {
  for (size_t i = 0; i < items_.size(); ++i)
    if (std::fabs(static_cast<double>(items_[i].Z) - static_cast<double>(z)) < kSameDepth) return static_cast<int>(i) + 1;
  return 0;
}

int cls_STRIKES::getIndex_ClosestZ(float z) const {
  int best = 0;
  double bestDistance = 0;
  for (size_t i = 0; i < items_.size(); ++i) {
    const double d = std::fabs(static_cast<double>(items_[i].Z) - static_cast<double>(z));
    if (best == 0 || d < bestDistance) {
      best = static_cast<int>(i) + 1;
      bestDistance = d;
    }
  }
  if (best == 0) return 0;
  return bestDistance < kSameDepth ? best : -best;
}

float cls_STRIKES::getDeepestZ() const { return items_.empty() ? 0.0f : items_.back().Z; }

std::string cls_STRIKES::getQualityOfSeismogram(float z, std::string_view name) const {
  const cls_zSTRIKES* group = item(getIndex_byZ(z));
  return group ? group->getListTypeFromFilename(name) : std::string();
}

std::string cls_STRIKES::getElabStringOfSeismogram(float z, std::string_view name) const {
  const cls_zSTRIKES* group = item(getIndex_byZ(z));
  return group ? group->getElab_byFName(name) : std::string();
}

bool cls_STRIKES::updateSeismogramElab(float z, std::string_view name, const cls_SEISMOGRAM& record) {
  cls_zSTRIKES* group = item(getIndex_byZ(z));
  return group && group->updateSeismogram(record, name);
}

int32_t cls_STRIKES::getMaxFileNumber() const {
  int32_t greatest = 0;
  for (const auto& z : items_) greatest = Max(greatest, z.getMaxFileNumber());
  return greatest;
}

int cls_STRIKES::positionHolding(std::string_view name) const {
  for (size_t i = 0; i < items_.size(); ++i)
    if (!items_[i].getListTypeFromFilename(name).empty()) return static_cast<int>(i) + 1;
  return 0;
}

int cls_STRIKES::depthOfFile(const std::filesystem::path& path, cls_SEISMOGRAM& record, bool wholeFile,
                             Diagnostic* why) const {
  const int16_t status = wholeFile ? record.loadFile(path, why) : record.loadHeaderSeismogram(path, why);
  if (status != 0) return 0;
  const int position = getIndex_byZ(record.Z);
  if (position == 0) explain(why, path, "no depth of the test at Z = " + formatNumber(record.Z, "0.00#") + " m");
  return position;
}

bool cls_STRIKES::setGood(const std::filesystem::path& path, Diagnostic* why) {
  cls_SEISMOGRAM record;
  const int position = depthOfFile(path, record, true, why);
  if (position == 0) return false;
  return item(position)->setGood(strikeNameOfPath(path.string()), record);
}

bool cls_STRIKES::setBad(const std::filesystem::path& path, Diagnostic* why) {
  cls_SEISMOGRAM record;
  const int position = depthOfFile(path, record, false, why);
  if (position == 0) return false;
  return item(position)->setBad(strikeNameOfPath(path.string()));
}

bool cls_STRIKES::setNoise(const std::filesystem::path& path, Diagnostic* why) {
  cls_SEISMOGRAM record;
  const int position = depthOfFile(path, record, false, why);
  if (position == 0) return false;
  return item(position)->setNoise(strikeNameOfPath(path.string()));
}

bool cls_STRIKES::moveFile(const std::filesystem::path& path, float newZ, Diagnostic* why) {
  const std::string name = strikeNameOfPath(path.string());
  const int oldPosition = positionHolding(name);
  if (oldPosition == 0) {
    explain(why, path, "the strike " + name + " is not listed in the test");
    return false;
  }
  if (!std::isfinite(newZ)) {
    explain(why, path, "the new depth is not a number");
    return false;
  }
  if (getIndex_byZ(newZ) == oldPosition) return true;  // already there

  const std::string kind = item(oldPosition)->getListTypeFromFilename(name);
  const std::string elab = item(oldPosition)->getElab_byFName(name);

  cls_SEISMOGRAM record;
  if (record.loadFile(path, why) != 0) return false;
  if (kind == "g") {
    if (elab.empty()) {
      record.setDefaultElabParameters();
    } else if (cls_SEISMOGRAM check; !check.set_elabString(elab)) {
      explain(why, path, "the elab string '" + elab + "' of the strike cannot be read");
      return false;
    } else {
      record.set_elabString(elab);
    }
  }
  // The file first: if it cannot be written, the index still says where the strike really is.
  record.Z = newZ;
  if (record.saveFile(path, why) != 0) return false;

  // The old depth loses the file (and goes when nothing is left) before the new one is looked
  // up, so positions do not shift under us.
  item(oldPosition)->Remove(name);
  if (item(oldPosition)->isEmpty()) Remove(oldPosition);
  int newPosition = getIndex_byZ(newZ);
  if (newPosition == 0) newPosition = add(cls_zSTRIKES(newZ));
  cls_zSTRIKES& target = *item(newPosition);
  if (kind == "g") {
    // The velocity follows the new path length.
    record.evalV();
    target.addGood(name, record.V(), record.get_elabString());
  } else if (kind == "b") {
    target.addBad(name, elab);
  } else {
    target.addNoise(name, elab);
  }
  return true;
}

}  // namespace koru
