// The membrane calibrations of a vertical, one line per calibration:
//   DeltaA = 15, DeltaB = 40, Date = 12/03/2008, Time = 10:25
// Lines end with CR LF; the file is Windows-1252 and is always rewritten whole.

#include "dmt/cls_Calibration.h"

#include <algorithm>
#include <cctype>
#include <optional>

#include "frame/Files.h"
#include "frame/LoadResult.h"
#include "frame/Numbers.h"
#include "frame/Text.h"
#include "frame/TextCodec.h"
#include "frame/TextLines.h"

namespace koru {

namespace {

constexpr size_t kMaxCalibrations = 32767;  // N is 16-bit

// Acceptable membrane calibrations, kPa, and the largest spread between the stored ones.
constexpr int kDeltaALow = 5, kDeltaAHigh = 30;
constexpr int kDeltaBLow = 5, kDeltaBHigh = 80;
constexpr int kSpreadBelow = 26;

// A delta is a whole kPa; a written decimal is rounded with halves to even.
std::optional<int16_t> parseDelta(std::string_view text) {
  auto value = tryParseDouble(text);
  if (!value) return std::nullopt;
  return toInt16(*value);
}

// Dates and times are stored between commas: a comma or a line end inside one would break the
// line apart, so they are replaced by blanks on the way out.
std::string fieldText(std::string_view text) {
  std::string out(text);
  for (char& c : out)
    if (c == ',' || c == '\r' || c == '\n') c = ' ';
  return out;
}

struct Parsed {
  std::optional<int16_t> deltaA, deltaB;
  std::string deltaAText, deltaBText;
  bool sawDeltaA = false, sawDeltaB = false;
  std::string date, time;
};

Parsed parseLine(std::string_view line) {
  Parsed p;
  size_t start = 0;
  while (start <= line.size()) {
    size_t comma = line.find(',', start);
    if (comma == std::string_view::npos) comma = line.size();
    std::string_view part = line.substr(start, comma - start);
    start = comma + 1;
    const size_t eq = part.find('=');
    if (eq == std::string_view::npos) continue;
    const std::string key = upperAscii(trimmed(part.substr(0, eq)));
    const std::string_view value = trimmed(part.substr(eq + 1));
    if (key == "DELTAA") {
      p.sawDeltaA = true;
      p.deltaAText.assign(value);
      p.deltaA = parseDelta(value);
    } else if (key == "DELTAB") {
      p.sawDeltaB = true;
      p.deltaBText.assign(value);
      p.deltaB = parseDelta(value);
    } else if (key == "DATE") {
      p.date.assign(value);
    } else if (key == "TIME") {
      p.time.assign(value);
    }
  }
  return p;
}

std::string problemOf(const Parsed& p) {
  auto describe = [](const char* name, bool seen, const std::string& text) {
    if (!seen) return std::string("no ") + name;
    const char* why = tryParseDouble(text) ? "' is out of range" : "' is not a number";
    return std::string(name) + " '" + text.substr(0, 40) + why;
  };
  if (!p.deltaA) return describe("DeltaA", p.sawDeltaA, p.deltaAText);
  return describe("DeltaB", p.sawDeltaB, p.deltaBText);
}

}  // namespace

void cls_Calibration::setN(int n) {
  const size_t size = n > 0 ? std::min(static_cast<size_t>(n), kMaxCalibrations) : 0;
  deltaA_.resize(size, 0);
  deltaB_.resize(size, 0);
  date_.resize(size);
  time_.resize(size);
}

void cls_Calibration::addCalibration(int16_t deltaA, int16_t deltaB, std::string_view date, std::string_view time) {
  if (deltaA_.size() >= kMaxCalibrations) return;
  deltaA_.push_back(deltaA);
  deltaB_.push_back(deltaB);
  date_.emplace_back(date);
  time_.emplace_back(time);
}

void cls_Calibration::deleteCalibration(int i) {
  if (i < 0 || static_cast<size_t>(i) >= deltaA_.size()) return;
  const auto at = static_cast<std::ptrdiff_t>(i);
  deltaA_.erase(deltaA_.begin() + at);
  deltaB_.erase(deltaB_.begin() + at);
  date_.erase(date_.begin() + at);
  time_.erase(time_.begin() + at);
}

bool cls_Calibration::loadCalibrations(Diagnostic* why) {
  Diagnostic local;
  Diagnostic& d = why ? *why : local;
  d = Diagnostic{path_, 0, ""};
  const auto bytes = readFileBytes(path_, &d);
  if (!bytes) {
    setN(0);
    return false;
  }
  const LoadResult read = parseCalibrations(*bytes, path_);
  if (!read.complete()) d = read.why;
  return true;
}

LoadResult cls_Calibration::parseCalibrations(std::string_view bytes, const std::filesystem::path& file) {
  setN(0);
  const std::string_view text = withoutBom(bytes);
  Diagnostic first{file, 0, ""};  // the first line skipped
  int skipped = 0;
  int line = 0;
  size_t pos = 0;
  std::string_view current;
  while (nextLine(text, pos, current)) {
    ++line;
    if (trimmed(current).empty()) continue;
    // A last line without its line end may have lost digits: it is not taken.
    if (pos == text.size() && !endsWithLineEnd(text)) {
      if (skipped == 0) first = {file, line, "the file ends early, in the middle of line " + std::to_string(line)};
      ++skipped;
      break;
    }
    const Parsed p = parseLine(cp1252ToUtf8(current));
    if (!p.deltaA || !p.deltaB) {
      // A calibration without both deltas is no calibration: it is left out so that it does not
      // pull the averages towards zero.
      if (skipped == 0) first = {file, line, problemOf(p) + "; line skipped"};
      ++skipped;
      continue;
    }
    if (deltaA_.size() >= kMaxCalibrations)
      return LoadResult::fail(LoadStatus::Partial, {file, line, "too many calibrations: at most 32767 are kept"});
    addCalibration(*p.deltaA, *p.deltaB, p.date, p.time);
  }
  if (skipped == 0) return {};
  if (skipped > 1) first.reason += " (" + std::to_string(skipped) + " lines skipped in all)";
  return LoadResult::fail(LoadStatus::Partial, first);
}

bool cls_Calibration::saveToFile(Diagnostic* why) const {
  Diagnostic local;
  Diagnostic& d = why ? *why : local;
  d = Diagnostic{path_, 0, ""};
  if (path_.empty()) {
    d.reason = "no file name given";
    return false;
  }
  return writeFileAtomically(path_, fileText(), &d);
}

std::string cls_Calibration::fileText() const {
  std::string text;
  for (size_t i = 0; i < deltaA_.size(); ++i) {
    text += "DeltaA = " + std::to_string(deltaA_[i]) + ", DeltaB = " + std::to_string(deltaB_[i]) +
            ", Date = " + fieldText(date_[i]) + ", Time = " + fieldText(time_[i]) + "\r\n";
  }
  return utf8ToCp1252(text);
}

bool cls_Calibration::checkDeltaAStandards() const {
  for (int16_t a : deltaA_)
    if (a < kDeltaALow || a > kDeltaAHigh) return false;
  return maxDeltaA() - minDeltaA() < kSpreadBelow;
}

bool cls_Calibration::checkDeltaBStandards() const {
  for (int16_t b : deltaB_)
    if (b < kDeltaBLow || b > kDeltaBHigh) return false;
  return maxDeltaB() - minDeltaB() < kSpreadBelow;
}

int16_t cls_Calibration::minDeltaA() const {
  return deltaA_.empty() ? 0 : *std::min_element(deltaA_.begin(), deltaA_.end());
}
int16_t cls_Calibration::maxDeltaA() const {
  return deltaA_.empty() ? 0 : *std::max_element(deltaA_.begin(), deltaA_.end());
}
int16_t cls_Calibration::minDeltaB() const {
  return deltaB_.empty() ? 0 : *std::min_element(deltaB_.begin(), deltaB_.end());
}
int16_t cls_Calibration::maxDeltaB() const {
  return deltaB_.empty() ? 0 : *std::max_element(deltaB_.begin(), deltaB_.end());
}

float cls_Calibration::averageCalibration(std::string_view which, std::string* error) const {
  const std::vector<int16_t>* values = nullptr;
  if (which == "DA") values = &deltaA_;
  else if (which == "DB") values = &deltaB_;
  if (!values) {
    if (error) *error = "Error in calibration selection";
    return 0.0f;
  }
  if (values->empty()) return 0.0f;
  double sum = 0;
  for (int16_t v : *values) sum += v;
  return static_cast<float>(sum / static_cast<double>(values->size()));
}

CalibrationFigures cls_Calibration::figures() const {
  CalibrationFigures f;
  f.averageDeltaA = averageCalibration("DA");
  f.averageDeltaB = averageCalibration("DB");
  f.minDeltaA = minDeltaA();
  f.maxDeltaA = maxDeltaA();
  f.minDeltaB = minDeltaB();
  f.maxDeltaB = maxDeltaB();
  return f;
}

}  // namespace koru
