// The index file of a seismic test: reading and writing. The layout is described in
// cls_VTEST.h.

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "frame/Files.h"
#include "frame/Numbers.h"
#include "frame/Text.h"
#include "frame/TextLines.h"
#include "frame/TextCodec.h"
#include "seismic/cls_VTEST.h"

namespace koru {

namespace {

constexpr std::string_view kEol = "\r\n";
constexpr char kFieldSep = ':';
constexpr size_t kFieldCount = 11;


bool isBlank(std::string_view line) {
  return std::all_of(line.begin(), line.end(), [](char c) { return c == ' ' || c == '\t'; });
}

// A text field as written: a ":" or a line break inside it would cut the line apart when read,
// so they become blanks (none of the program's names and elab strings holds one).
std::string fieldText(std::string_view text) {
  std::string out(text);
  for (char& c : out)
    if (c == kFieldSep || c == '\r' || c == '\n') c = ' ';
  return utf8ToCp1252(out);
}

}  // namespace

LoadResult cls_VTEST::parseIndex(std::string_view bytes, const std::filesystem::path& file) {
  strikes.Clear();
  std::vector<cls_zSTRIKES> read;
  LoadResult result;
  size_t pos = 0;
  int lineNo = 0;
  std::string_view line;
  while (nextLine(bytes, pos, line)) {
    ++lineNo;
    if (isBlank(line)) continue;
    const auto f = splitText(line, kFieldSep);
    if (f.size() < kFieldCount) {
      result = LoadResult::fail(LoadStatus::Partial,
                                {file, lineNo,
                                 "only " + std::to_string(f.size()) + " of the " + std::to_string(kFieldCount) +
                                     " fields of a depth"});
      break;
    }
    const auto mean = toInt16(parseSingle(f[1]));
    if (!mean) {
      result = LoadResult::fail(
          LoadStatus::Partial,
          {file, lineNo, "mean velocity '" + cp1252ToUtf8(f[1].substr(0, 40)) + "' is out of range"});
      break;
    }
    cls_zSTRIKES z;
    z.Z = parseSingle(f[0]);
    z.vMean = *mean;
    z.vList = cp1252ToUtf8(f[2]);
    z.devStd = parseSingle(f[3]);
    z.bestFile = cp1252ToUtf8(f[4]);
    z.goodList = cp1252ToUtf8(f[5]);
    z.elabGood = cp1252ToUtf8(f[6]);
    z.badList = cp1252ToUtf8(f[7]);
    z.elabBad = cp1252ToUtf8(f[8]);
    z.noiseList = cp1252ToUtf8(f[9]);
    z.elabNoise = cp1252ToUtf8(f[10]);
    read.push_back(std::move(z));
  }
  // Inserting one by one ahead of the first greater depth is a stable sort; sorting first keeps a
  // long index from costing quadratic time, and each add then lands at the end.
  std::stable_sort(read.begin(), read.end(), [](const cls_zSTRIKES& a, const cls_zSTRIKES& b) { return a.Z < b.Z; });
  for (auto& z : read) strikes.add(std::move(z));
  return result;
}

int16_t cls_VTEST::readIndexText(std::string_view bytes, Diagnostic* why) {
  const LoadResult result = parseIndex(bytes, indexFile_);
  if (result.complete()) return 0;
  if (why) *why = result.why;
  return 1;
}

int16_t cls_VTEST::loadInfo(Diagnostic* why) {
  strikes.Clear();
  if (!fileExists(indexFile_)) return -1;
  Diagnostic readWhy;
  auto bytes = readFileBytes(indexFile_, &readWhy);
  if (!bytes) {
    if (why) *why = readWhy;
    return 1;
  }
  return readIndexText(*bytes, why);
}

std::string cls_VTEST::indexText() const {
  std::string out;
  for (const auto& z : strikes) {
    out += formatNumber(z.Z, "0.00#");
    out += kFieldSep;
    out += std::to_string(z.vMean);
    out += kFieldSep;
    out += fieldText(z.vList);
    out += kFieldSep;
    out += formatNumber(z.devStd, "0.00");
    for (const std::string* text :
         {&z.bestFile, &z.goodList, &z.elabGood, &z.badList, &z.elabBad, &z.noiseList, &z.elabNoise}) {
      out += kFieldSep;
      out += fieldText(*text);
    }
    out += kEol;
  }
  return out;
}

bool cls_VTEST::saveInfo(Diagnostic* why) const { return writeFileAtomically(indexFile_, indexText(), why); }

}  // namespace koru
