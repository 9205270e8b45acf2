// The record side of a dissipation test: depth and file name, the start of the test, and the
// rules by which the reading arrays grow and shrink.

#include "dissipation/cls_DissTEST.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

#include "frame/Numbers.h"

namespace koru {

namespace {

std::string_view trimBlanks(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
  return s;
}

// Reads the whole numbers of `text` separated by `separator`; false unless there are exactly
// `count` of them and nothing else.
bool readParts(std::string_view text, char separator, int* parts, int count) {
  text = trimBlanks(text);
  for (int i = 0; i < count; ++i) {
    size_t end = i + 1 < count ? text.find(separator) : text.size();
    if (end == std::string_view::npos || end == 0) return false;
    std::string_view part = text.substr(0, end);
    auto res = std::from_chars(part.data(), part.data() + part.size(), parts[i]);
    if (res.ec != std::errc() || res.ptr != part.data() + part.size()) return false;
    text.remove_prefix(i + 1 < count ? end + 1 : end);
  }
  return text.empty();
}

}  // namespace

void cls_DissTEST::setZd(float depth) {
  if (!(depth > 0)) return;
  Zd_ = depth;
  // The product stays a 32-bit float, as the depth itself is: 12.3 m gives 1230, not 1229.99...
  const float hundredths = depth * 100.0f;
  std::filesystem::path dir = folder.empty() ? filename.parent_path() : folder;
  filename = dir / (formatNumber(hundredths, "0000") + ".dis");
}

void cls_DissTEST::inputZd(std::string_view text) {
  if (trimBlanks(text).empty()) {
    Zd_ = 0;
    isZdSpecified = false;
    return;
  }
  setZd(parseSingle(text));
  isZdSpecified = true;
}

std::optional<std::chrono::local_seconds> cls_DissTEST::tempoInizioProva() const {
  using namespace std::chrono;
  if (!existsTempoInizioProva()) return std::nullopt;
  int ymd[3] = {0, 0, 0};
  int hms[3] = {0, 0, 0};
  if (!readParts(startDate, '/', ymd, 3) || !readParts(startTime, ':', hms, 3)) return std::nullopt;
  const year_month_day day{year{ymd[0]}, month{static_cast<unsigned>(ymd[1])}, std::chrono::day{static_cast<unsigned>(ymd[2])}};
  if (ymd[1] < 1 || ymd[2] < 1 || !day.ok()) return std::nullopt;
  if (hms[0] < 0 || hms[0] > 23 || hms[1] < 0 || hms[1] > 59 || hms[2] < 0 || hms[2] > 59) return std::nullopt;
  return local_days{day} + hours{hms[0]} + minutes{hms[1]} + seconds{hms[2]};
}

void cls_DissTEST::setTempoInizioProva(std::chrono::local_seconds when) {
  using namespace std::chrono;
  const local_days dayPart = floor<days>(when);
  const year_month_day day{dayPart};
  const hh_mm_ss<seconds> time{when - dayPart};
  char date[32], clock[16];
  std::snprintf(date, sizeof date, "%d/%u/%u", static_cast<int>(day.year()), static_cast<unsigned>(day.month()),
                static_cast<unsigned>(day.day()));
  std::snprintf(clock, sizeof clock, "%02d:%02d:%02d", static_cast<int>(time.hours().count()),
                static_cast<int>(time.minutes().count()), static_cast<int>(time.seconds().count()));
  startDate = date;
  startTime = clock;
}

void cls_DissTEST::setN(int n) {
  if (n <= 0) {
    vT_.clear();
    vA_.clear();
    N_ = 0;
    return;
  }
  n = std::min(n, kMaxReadings);
  vT_.assign(static_cast<size_t>(n), 0.0f);
  vA_.assign(static_cast<size_t>(n), 0);
  N_ = static_cast<int16_t>(n);
}

void cls_DissTEST::setDissData(const std::vector<float>& t, const std::vector<int16_t>& a) {
  const size_t n = std::min(t.size(), static_cast<size_t>(kMaxReadings));
  vT_.assign(t.begin(), t.begin() + static_cast<std::ptrdiff_t>(n));
  vA_.assign(a.begin(), a.begin() + static_cast<std::ptrdiff_t>(std::min(n, a.size())));
  vA_.resize(n, 0);
  N_ = static_cast<int16_t>(n);
}

void cls_DissTEST::sizeVectors() {
  if (N_ == 0) {
    vT_.assign(11, 0.0f);
    vA_.assign(11, 0);
    return;
  }
  if (vT_.empty() || vA_.empty() || vT_.size() != vA_.size()) return;
  // Growth happens only once the top slot is filled, which a reading with a zero time or a zero
  // A does not count as; the bound doubles, within what 16-bit indexes can address.
  if (vA_.back() != 0 && vT_.back() != 0) {
    const size_t upper = vT_.size() - 1;
    const size_t grown = std::min(2 * upper, static_cast<size_t>(kMaxReadings - 1)) + 1;
    vT_.resize(grown, 0.0f);
    vA_.resize(grown, 0);
  }
}

bool cls_DissTEST::storeTAReadings(float t, int16_t a, int index) {
  if (index < 0 || static_cast<size_t>(index) >= vT_.size() || static_cast<size_t>(index) >= vA_.size()) return false;
  vT_[static_cast<size_t>(index)] = t;
  vA_[static_cast<size_t>(index)] = a;
  N_ = static_cast<int16_t>(std::max<int>(N_, index + 1));
  return true;
}

void cls_DissTEST::setFinalSize(int last) {
  if (last < 0) {
    setN(0);
    return;
  }
  const size_t size = static_cast<size_t>(std::min(last, kMaxReadings - 1)) + 1;
  vT_.resize(size, 0.0f);
  vA_.resize(size, 0);
  N_ = static_cast<int16_t>(size);
}

bool cls_DissTEST::addAcquireDissReading(float t, int16_t a) {
  if (N_ >= kMaxReadings) return false;
  if (N_ == 0) {
    vT_.assign(1, 0.0f);
    vA_.assign(1, 0);
  } else {
    vT_.resize(static_cast<size_t>(N_) + 1, 0.0f);
    vA_.resize(static_cast<size_t>(N_) + 1, 0);
  }
  return storeTAReadings(t, a, static_cast<int>(vT_.size()) - 1);
}

void cls_DissTEST::initializeDissVertData(const DissVertData& vertical) {
  Firm = vertical.Firm;
  Customer = vertical.Customer;
  Job = vertical.Job;
  Site = vertical.Site;
  Remark = vertical.Remark;
  Data = vertical.Data;
  TstName = vertical.TstName;
  DeltaA = vertical.hasDmtTest ? vertical.DeltaA : int16_t{0};
  DeltaB = vertical.hasDmtTest ? vertical.DeltaB : int16_t{0};
}

void cls_DissTEST::resetData() {
  Firm.clear();
  Customer.clear();
  Job.clear();
  Site.clear();
  Remark.clear();
  Data.clear();
  TstName.clear();
  startDate.clear();
  startTime.clear();
  Zd_ = 0;
  Zm = 0;
  DeltaA = 0;
  DeltaB = 0;
  BFinal = 0;
  isZdSpecified = false;
  isUoSpecified = false;
  // The graph options of the test belong to the plots, which make their own fresh set.
}

}  // namespace koru
