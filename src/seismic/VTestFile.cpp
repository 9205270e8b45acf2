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
// Depths of one test: far beyond any sounding, and a bound on what a damaged index can make us
// hold.
constexpr size_t kMaxDepths = 32767;


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
  bytes = withoutBom(bytes);
  std::vector<cls_zSTRIKES> read;
  LoadResult result;
  size_t pos = 0;
  int lineNo = 0;
  std::string_view line;
  const auto fail = [&](std::string reason) {
    result = LoadResult::fail(LoadStatus::Partial, {file, lineNo, std::move(reason)});
  };
  while (nextLine(bytes, pos, line)) {
    ++lineNo;
    if (isBlank(line)) continue;
    if (pos == bytes.size() && !endsWithLineEnd(bytes)) {
      fail("the file ends early, in the middle of line " + std::to_string(lineNo));
      break;
    }
    // Split into at most one field more than a depth has: that is enough to tell a line that
    // has too many, and a line of nothing but separators costs no more than its length.
    std::string_view f[kFieldCount + 1];
    size_t count = 0;
    for (size_t start = 0; count <= kFieldCount;) {
      const size_t at = line.find(kFieldSep, start);
      f[count++] = line.substr(start, at == std::string_view::npos ? std::string_view::npos : at - start);
      if (at == std::string_view::npos) break;
      start = at + 1;
    }
    if (count != kFieldCount) {
      fail(count < kFieldCount ? "only " + std::to_string(count) + " of the " + std::to_string(kFieldCount) +
                                     " fields of a depth"
                               : "more than the " + std::to_string(kFieldCount) + " fields of a depth");
      break;
    }
    const auto z = tryParseSingle(f[0]);
    const auto meanValue = tryParseSingle(f[1]);
    const auto mean = meanValue ? toInt16(*meanValue) : std::nullopt;
    const auto devStd = tryParseSingle(f[3]);
    if (!z || !meanValue || !devStd) {
      const size_t bad = !z ? 0 : !meanValue ? 1 : 3;
      const char* names[] = {"depth", "mean velocity", "", "standard deviation"};
      fail(std::string(names[bad]) + " '" + cp1252ToUtf8(f[bad].substr(0, 40)) + "' is not a number");
      break;
    }
    if (!mean) {
      fail("mean velocity '" + cp1252ToUtf8(f[1].substr(0, 40)) + "' is out of range");
      break;
    }
    if (read.size() >= kMaxDepths) {
      fail("too many depths: an index holds at most " + std::to_string(kMaxDepths));
      break;
    }
    cls_zSTRIKES zs;
    zs.Z = *z;
    zs.vMean = *mean;
    zs.vList = cp1252ToUtf8(f[2]);
    zs.devStd = *devStd;
    zs.bestFile = cp1252ToUtf8(f[4]);
    zs.goodList = cp1252ToUtf8(f[5]);
    zs.elabGood = cp1252ToUtf8(f[6]);
    zs.badList = cp1252ToUtf8(f[7]);
    zs.elabBad = cp1252ToUtf8(f[8]);
    zs.noiseList = cp1252ToUtf8(f[9]);
    zs.elabNoise = cp1252ToUtf8(f[10]);
    read.push_back(std::move(zs));
  }
  // Inserting one by one ahead of the first greater depth is a stable sort; sorting first makes
  // each add land at the end.
  std::stable_sort(read.begin(), read.end(), [](const cls_zSTRIKES& a, const cls_zSTRIKES& b) { return a.Z < b.Z; });
  for (auto& zs : read) strikes.add(std::move(zs));
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
