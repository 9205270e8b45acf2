#include "seismic/cls_zSTRIKES.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "frame/Log.h"
#include "frame/Numbers.h"
#include "frame/Text.h"
#include "seismic/cls_SEISMOGRAM.h"

namespace koru {

namespace {

constexpr char kFileSep = ',';
constexpr char kElabSep = '#';

// The items of a list text; an empty text has none, and empty items inside are kept.
std::vector<std::string> splitList(std::string_view text, char sep) {
  if (text.empty()) return {};
  const std::vector<std::string_view> items = splitText(text, sep);
  return {items.begin(), items.end()};
}

// A list parallel to a file list of `count` items: an empty text is one empty item when one
// file is listed (an empty elab string), missing items are empty, surplus items go.
std::vector<std::string> splitParallel(std::string_view text, char sep, size_t count) {
  std::vector<std::string> items;
  if (count == 0) return items;
  items = text.empty() ? std::vector<std::string>{std::string()} : splitList(text, sep);
  items.resize(count);
  return items;
}

std::string joinList(const std::vector<std::string>& items, char sep) {
  std::string out;
  for (size_t i = 0; i < items.size(); ++i) {
    if (i > 0) out += sep;
    out += items[i];
  }
  return out;
}

// A file name as a file number: a whole number within 32 bits, blanks around it allowed.
std::optional<int32_t> fileNumber(std::string_view name) {
  while (!name.empty() && name.front() == ' ') name.remove_prefix(1);
  while (!name.empty() && name.back() == ' ') name.remove_suffix(1);
  if (name.empty()) return std::nullopt;
  int32_t value = 0;
  auto res = std::from_chars(name.data(), name.data() + name.size(), value);
  if (res.ec != std::errc() || res.ptr != name.data() + name.size() || value < 0) return std::nullopt;
  return value;
}

int indexOf(const std::vector<std::string>& items, std::string_view name) {
  for (size_t i = 0; i < items.size(); ++i)
    if (items[i] == name) return static_cast<int>(i);
  return -1;
}

}  // namespace

std::string strikeNameOfPath(std::string_view path) {
  const size_t slash = path.find_last_of("\\/");
  const size_t start = slash == std::string_view::npos ? 0 : slash + 1;
  const size_t dot = path.find('.', start);
  return std::string(path.substr(start, dot == std::string_view::npos ? std::string_view::npos : dot - start));
}

// ---- Lists ----------------------------------------------------------------------------------

std::string* cls_zSTRIKES::fileListOf(int16_t kind) {
  return const_cast<std::string*>(static_cast<const cls_zSTRIKES*>(this)->fileListOf(kind));
}

const std::string* cls_zSTRIKES::fileListOf(int16_t kind) const {
  switch (kind) {
    case kElabGood: return &goodList;
    case kElabBad: return &badList;
    case kElabNoise: return &noiseList;
    default: return nullptr;
  }
}

std::string* cls_zSTRIKES::elabListOf(int16_t kind) {
  return const_cast<std::string*>(static_cast<const cls_zSTRIKES*>(this)->elabListOf(kind));
}

const std::string* cls_zSTRIKES::elabListOf(int16_t kind) const {
  switch (kind) {
    case kElabGood: return &elabGood;
    case kElabBad: return &elabBad;
    case kElabNoise: return &elabNoise;
    default: return nullptr;
  }
}

std::vector<std::string> cls_zSTRIKES::goodFiles() const { return splitList(goodList, kFileSep); }
std::vector<std::string> cls_zSTRIKES::badFiles() const { return splitList(badList, kFileSep); }
std::vector<std::string> cls_zSTRIKES::noiseFiles() const { return splitList(noiseList, kFileSep); }

std::vector<std::string> cls_zSTRIKES::velocities() const {
  return splitParallel(vList, kFileSep, goodFiles().size());
}

std::vector<std::string> cls_zSTRIKES::elabs(int16_t kind) const {
  const std::string* files = fileListOf(kind);
  if (!files) return {};
  return splitParallel(*elabListOf(kind), kElabSep, splitList(*files, kFileSep).size());
}

int16_t cls_zSTRIKES::find(std::string_view name, int& position) const {
  for (int16_t kind : {kElabGood, kElabBad, kElabNoise}) {
    position = indexOf(splitList(*fileListOf(kind), kFileSep), name);
    if (position >= 0) return kind;
  }
  position = -1;
  return 0;
}

std::string cls_zSTRIKES::getListTypeFromFilename(std::string_view name) const {
  int position = 0;
  switch (find(name, position)) {
    case kElabGood: return "g";
    case kElabBad: return "b";
    case kElabNoise: return "n";
    default: return "";
  }
}

bool cls_zSTRIKES::isGood(std::string_view name) const { return indexOf(goodFiles(), name) >= 0; }
bool cls_zSTRIKES::isBad(std::string_view name) const { return indexOf(badFiles(), name) >= 0; }
bool cls_zSTRIKES::isNoise(std::string_view name) const { return indexOf(noiseFiles(), name) >= 0; }

void cls_zSTRIKES::removeAt(int16_t kind, int position) {
  std::vector<std::string> files = splitList(*fileListOf(kind), kFileSep);
  if (position < 0 || position >= static_cast<int>(files.size())) return;
  std::vector<std::string> elabItems = elabs(kind);
  std::vector<std::string> vItems;
  if (kind == kElabGood) vItems = velocities();
  const auto at = static_cast<size_t>(position);
  files.erase(files.begin() + static_cast<std::ptrdiff_t>(at));
  elabItems.erase(elabItems.begin() + static_cast<std::ptrdiff_t>(at));
  *fileListOf(kind) = joinList(files, kFileSep);
  *elabListOf(kind) = joinList(elabItems, kElabSep);
  if (kind == kElabGood) {
    vItems.erase(vItems.begin() + static_cast<std::ptrdiff_t>(at));
    vList = joinList(vItems, kFileSep);
  }
}

void cls_zSTRIKES::append(int16_t kind, std::string_view name, std::string_view elab) {
  // The parallel lists are aligned to the file list before the new item goes to their ends.
  std::vector<std::string> elabItems = elabs(kind);
  std::vector<std::string> files = splitList(*fileListOf(kind), kFileSep);
  files.emplace_back(name);
  elabItems.emplace_back(elab);
  *fileListOf(kind) = joinList(files, kFileSep);
  *elabListOf(kind) = joinList(elabItems, kElabSep);
}

void cls_zSTRIKES::resetBest() {
  const auto files = goodFiles();
  bestFile = files.empty() ? std::string() : files.front();
}

// ---- Adding and moving ----------------------------------------------------------------------

void cls_zSTRIKES::addGood(std::string_view name, int16_t v, std::string_view elab) {
  std::vector<std::string> vItems = velocities();
  append(kElabGood, name, elab);
  vItems.push_back(std::to_string(v));
  vList = joinList(vItems, kFileSep);
  evaluateData();
  // The best mark follows the list's head: the user sets it again after adding.
  resetBest();
}

void cls_zSTRIKES::addBad(std::string_view name, std::string_view elab) { append(kElabBad, name, elab); }
void cls_zSTRIKES::addNoise(std::string_view name, std::string_view elab) { append(kElabNoise, name, elab); }

bool cls_zSTRIKES::setGood(std::string_view name, cls_SEISMOGRAM& record) {
  int position = 0;
  const int16_t kind = find(name, position);
  if (kind != kElabBad && kind != kElabNoise) return false;
  const std::string elab = getElab(kind, position);
  if (elab.empty()) {
    record.setDefaultElabParameters();
  } else {
    // Tried on a scratch record first: a string that breaks off would leave the record half set,
    // and the file must not leave its list for a velocity that was never evaluated.
    cls_SEISMOGRAM check;
    if (!check.set_elabString(elab)) return false;
    record.set_elabString(elab);
  }
  record.evalV();
  removeAt(kind, position);
  addGood(name, record.V(), record.get_elabString());
  return true;
}

bool cls_zSTRIKES::setBad(std::string_view name) {
  int position = 0;
  const int16_t kind = find(name, position);
  if (kind != kElabGood && kind != kElabNoise) return false;
  const std::string elab = getElab(kind, position);
  if (kind == kElabGood)
    remove_fromGood(name);
  else
    removeAt(kind, position);
  addBad(name, elab);
  return true;
}

bool cls_zSTRIKES::setNoise(std::string_view name) {
  int position = 0;
  const int16_t kind = find(name, position);
  if (kind != kElabGood && kind != kElabBad) return false;
  const std::string elab = getElab(kind, position);
  if (kind == kElabGood)
    remove_fromGood(name);
  else
    removeAt(kind, position);
  addNoise(name, elab);
  return true;
}

bool cls_zSTRIKES::Remove(std::string_view name) {
  int position = 0;
  const int16_t kind = find(name, position);
  if (kind == 0) {
    logLine(std::string(name) + " not found in G,B and N list");
    return false;
  }
  if (kind == kElabGood) return remove_fromGood(name);
  removeAt(kind, position);
  return true;
}

bool cls_zSTRIKES::remove_fromGood(std::string_view name) {
  const int position = indexOf(goodFiles(), name);
  if (position < 0) return false;
  removeAt(kElabGood, position);
  evaluateData();
  if (bestFile == name) resetBest();
  return true;
}

// ---- Elab strings ---------------------------------------------------------------------------

std::string cls_zSTRIKES::getElab(int16_t kind, int position) const {
  const std::string* list = elabListOf(kind);
  if (!list) return "";
  if (list->empty()) {
    logLine(std::to_string(position) + " has empty elabString at Z=" + formatNumber(Z, ""));
    return "";
  }
  const auto items = elabs(kind);
  if (position < 0 || position >= static_cast<int>(items.size())) return "";
  return items[static_cast<size_t>(position)];
}

std::string cls_zSTRIKES::getElab_byFName(std::string_view name) const {
  int position = 0;
  const int16_t kind = find(name, position);
  return kind == 0 ? std::string() : getElab(kind, position);
}

bool cls_zSTRIKES::setElab(int16_t kind, int position, std::string_view text) {
  if (!elabListOf(kind)) return false;
  auto items = elabs(kind);
  if (position < 0 || position >= static_cast<int>(items.size())) return false;
  items[static_cast<size_t>(position)] = std::string(text);
  *elabListOf(kind) = joinList(items, kElabSep);
  return true;
}

bool cls_zSTRIKES::setElab_byFName(std::string_view name, std::string_view text) {
  int position = 0;
  const int16_t kind = find(name, position);
  return kind != 0 && setElab(kind, position, text);
}

// ---- Results --------------------------------------------------------------------------------

void cls_zSTRIKES::evaluateData() {
  std::vector<double> values;
  for (const auto& item : splitList(vList, kFileSep)) {
    const double v = parseSingle(item);
    if (v > 0) values.push_back(v);
  }
  if (values.empty()) {
    vMean = 0;
    devStd = -1;
    return;
  }
  double sum = 0;
  for (double v : values) sum += v;
  const double mean = roundHalfEven(sum / static_cast<double>(values.size()));
  vMean = static_cast<int16_t>(Min(mean, static_cast<double>(std::numeric_limits<int16_t>::max())));
  if (values.size() < 2 || vMean == 0) {
    devStd = -1;
    return;
  }
  // The scatter is measured from the rounded mean that the tables show.
  double squares = 0;
  for (double v : values) squares += (v - vMean) * (v - vMean);
  devStd = static_cast<float>(100.0 * std::sqrt(squares / static_cast<double>(values.size() - 1)) / vMean);
}

bool cls_zSTRIKES::updateSeismogram(const cls_SEISMOGRAM& record, std::string_view name) {
  int position = 0;
  const int16_t kind = find(name, position);
  if (kind == 0) return false;
  setElab(kind, position, record.get_elabString());
  if (kind == kElabGood) {
    auto vItems = velocities();
    vItems[static_cast<size_t>(position)] = std::to_string(record.V());
    vList = joinList(vItems, kFileSep);
  }
  evaluateData();
  return true;
}

bool cls_zSTRIKES::isEmpty() const { return goodList.empty() && badList.empty() && noiseList.empty(); }
bool cls_zSTRIKES::existsGood() const { return !goodList.empty(); }
bool cls_zSTRIKES::existsBest() const { return !bestFile.empty(); }

std::string cls_zSTRIKES::fileList() const {
  std::vector<std::string> all;
  for (const std::string* list : {&goodList, &badList, &noiseList}) {
    auto items = splitList(*list, kFileSep);
    all.insert(all.end(), items.begin(), items.end());
  }
  return joinList(all, kFileSep);
}

int32_t cls_zSTRIKES::getMaxFileNumber() const {
  int32_t greatest = 0;
  for (const std::string* list : {&goodList, &badList, &noiseList})
    for (const auto& name : splitList(*list, kFileSep))
      if (auto n = fileNumber(name)) greatest = Max(greatest, *n);
  return greatest;
}

int32_t cls_zSTRIKES::getLastGoodIndex() const {
  const auto files = goodFiles();
  if (files.empty()) return -1;
  return fileNumber(files.back()).value_or(-1);
}

std::string cls_zSTRIKES::returnPseudableList() const {
  if (badList.empty()) return goodList;
  if (goodList.empty()) return badList;
  return badList + kFileSep + goodList;
}

}  // namespace koru
