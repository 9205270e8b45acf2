// Every reader of the program's files fed a large hostile buffer: a damaged or made-up file must
// be read (or refused) in time linear in its size and in memory within a few times its size.
// Goal: under 5 s for 100 MB; each buffer here is 64 MB, and bytes_per_second shows the rate.
// Peak memory: run one reader alone (--benchmark_filter=<name>) under `/usr/bin/time -v`.

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

#include "dissipation/cls_DissTEST.h"
#include "dmt/Thrust.h"
#include "dmt/cls_Calibration.h"
#include "dmt/cls_DmtTEST.h"
#include "dmt/cls_GAMMA.h"
#include "frame/strings/LanguageFile.h"
#include "seismic/cls_SEISMOGRAM.h"
#include "seismic/cls_VTEST.h"
#include "sites/SiteFile.h"
#include "sites/cls_VERTICAL.h"

namespace {

using namespace koru;

constexpr size_t kSize = 64u << 20;

// `head`, then `unit` repeated up to kSize bytes.
std::string filled(const std::string& head, const std::string& unit) {
  std::string out = head;
  out.reserve(kSize + unit.size());
  while (out.size() < kSize) out += unit;
  return out;
}

// `head`, then lines made by `line(i)` up to kSize bytes.
std::string lines(const std::string& head, const std::function<std::string(int)>& line) {
  std::string out = head;
  out.reserve(kSize + 4096);
  for (int i = 0; out.size() < kSize; ++i) out += line(i);
  return out;
}

void run(benchmark::State& state, const std::string& bytes, const std::function<LoadResult(std::string_view)>& read) {
  for (auto _ : state) benchmark::DoNotOptimize(read(bytes));
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(bytes.size()));
}

const std::string kDatHead = "1,2,0,0.15,0.4,34.7,0,3,0,1.7,0\r\n\"F\",\"C\"\r\n\"J\",\"S\",\"R\"\r\n\"D\",\"T\"\r\n";

// Rows that are all dropped (zero depth): nothing stops the reading but the end of the file.
void DatDroppedRows(benchmark::State& state) {
  static const std::string bytes = filled(kDatHead, "0,0,0\r\n");
  run(state, bytes, [](std::string_view b) { return cls_DmtTEST().parseDat(b, "t.dat"); });
}
BENCHMARK(DatDroppedRows)->Unit(benchmark::kMillisecond);

// Rows in falling depth, each sorted to the front, then the row limit.
void DatFallingDepths(benchmark::State& state) {
  static const std::string bytes = lines(kDatHead, [](int i) { return "100,200," + std::to_string(32767 - i % 32767) + "\r\n"; });
  run(state, bytes, [](std::string_view b) { return cls_DmtTEST().parseDat(b, "t.dat"); });
}
BENCHMARK(DatFallingDepths)->Unit(benchmark::kMillisecond);

// A test of 32,767 rows and thrusts jumping between its first and its last but one row.
void ThrustJumps(benchmark::State& state) {
  static std::vector<float> depths;
  for (int i = 0; i < 32767; ++i) depths.push_back(0.01f * static_cast<float>(i + 1));
  static const std::string bytes =
      lines("BLADE WIDTH [MM] = 94\r\n\r\n", [](int i) { return i % 2 ? "Z = 0.01, TH = 5\r\n" : "Z = 327.66, TH = 5\r\n"; });
  run(state, bytes, [](std::string_view b) {
    RodData rod;
    std::vector<float> thrusts;
    return parseThrustText(b, "Thrust.dat", depths, rod, thrusts);
  });
}
BENCHMARK(ThrustJumps)->Unit(benchmark::kMillisecond);

// A point with a depth of 64 million digits.
void ProfileLongNumber(benchmark::State& state) {
  static const std::string bytes = filled("2\r\n", "1");
  run(state, bytes, [](std::string_view b) { return cls_GAMMA().parseInfo(b, "GAMMA_1.dat"); });
}
BENCHMARK(ProfileLongNumber)->Unit(benchmark::kMillisecond);

// Lines that are all skipped, each told, in characters that take three bytes in UTF-8.
void CalibrationSkippedLines(benchmark::State& state) {
  static const std::string bytes = filled("", "DeltaA = \x80\x80\r\n");
  run(state, bytes, [](std::string_view b) { return cls_Calibration().parseCalibrations(b, "Calibration_1.dat"); });
}
BENCHMARK(CalibrationSkippedLines)->Unit(benchmark::kMillisecond);

// A header that never ends, of texts in characters that take three bytes in UTF-8.
void SeismogramEndlessHeader(benchmark::State& state) {
  static const std::string bytes = filled("NSamples = 32767\r\n", "Notes = \x80\x80\x80\r\n");
  run(state, bytes, [](std::string_view b) { return cls_SEISMOGRAM().parseFile(b, "t.kor"); });
}
BENCHMARK(SeismogramEndlessHeader)->Unit(benchmark::kMillisecond);

// One line of nothing but separators, then depths in falling order with long lists.
void VTestIndexSeparators(benchmark::State& state) {
  static const std::string bytes = filled("", ":");
  run(state, bytes, [](std::string_view b) { return cls_VTEST().parseIndex(b, "VS_1.dat"); });
}
BENCHMARK(VTestIndexSeparators)->Unit(benchmark::kMillisecond);

void VTestIndexFallingDepths(benchmark::State& state) {
  static const std::string bytes = lines("", [](int i) {
    return std::to_string(100000 - i) + ":200:" + std::string(2000, '7') + ":1:::::::\r\n";
  });
  run(state, bytes, [](std::string_view b) { return cls_VTEST().parseIndex(b, "VS_1.dat"); });
}
BENCHMARK(VTestIndexFallingDepths)->Unit(benchmark::kMillisecond);

// A header of empty fields that never reaches the readings, and one of pairs of unknown keys.
void DissEmptyFields(benchmark::State& state) {
  static const std::string bytes = filled("DISSIP2002\r\n", ",");
  run(state, bytes, [](std::string_view b) { return cls_DissTEST().parseDis(b, "t.dis"); });
}
BENCHMARK(DissEmptyFields)->Unit(benchmark::kMillisecond);

void DissUnknownPairs(benchmark::State& state) {
  static const std::string bytes = filled("DISSIP2002\r\n", "X=\x80\x80,");
  run(state, bytes, [](std::string_view b) { return cls_DissTEST().parseDis(b, "t.dis"); });
}
BENCHMARK(DissUnknownPairs)->Unit(benchmark::kMillisecond);

// Junk lines, then distinct vertical names.
void SiteJunkLines(benchmark::State& state) {
  static const std::string bytes = filled("S\r\n", "x\r\n");
  run(state, bytes, [](std::string_view b) { return SiteFile().parse(b, "SITE_1.dat"); });
}
BENCHMARK(SiteJunkLines)->Unit(benchmark::kMillisecond);

void SiteManyVerticals(benchmark::State& state) {
  static const std::string bytes = lines("S\r\n", [](int i) { return "VERT_" + std::to_string(i + 1) + "\r\n"; });
  run(state, bytes, [](std::string_view b) { return SiteFile().parse(b, "SITE_1.dat"); });
}
BENCHMARK(SiteManyVerticals)->Unit(benchmark::kMillisecond);

// A name line of 64 MB, then short lines without end.
void VerticalLongLines(benchmark::State& state) {
  static const std::string bytes = filled("", "n") + "\r\n" + filled("", "\r\n");
  run(state, bytes, [](std::string_view b) { return cls_VERTICAL().parseVerticalFile(b, "VERT_1.dat"); });
}
BENCHMARK(VerticalLongLines)->Unit(benchmark::kMillisecond);

// A text that never closes, one short line after another.
void LanguageEndlessText(benchmark::State& state) {
  static const std::string bytes = filled("1 \"", "text\r\n");
  run(state, bytes, [](std::string_view b) {
    std::vector<LanguageEntry> entries;
    return parseLanguageFile(b, "L.h", entries);
  });
}
BENCHMARK(LanguageEndlessText)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
