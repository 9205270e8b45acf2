// The evaluation of one strike, which the tuning dialogues run after every change of a setting,
// and the load of a strike's file. Goals: a shear-wave evalV (700 samples at 100 us, default
// elaboration) under 1 ms; the heaviest compression-wave case (1700 samples at 50 us, no window)
// under 10 ms.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "seismic/cls_SEISMOGRAM.h"
#include "synthetic_strike.h"

namespace {

namespace fs = std::filesystem;

koru::cls_SEISMOGRAM shearStrike() {
  koru::synth::StrikeSettings s;  // 700 samples at 100 us, 200 m/s at 5 m
  auto r = koru::synth::makeSyntheticStrike(s);
  r.set_elabString("5,180;4;0,0");
  return r;
}

// The longest search: 1700 samples at 50 us over the whole trace, a fast wave deep down, so the
// second search runs at the full 120 subdivisions.
koru::cls_SEISMOGRAM compressionStrike() {
  koru::synth::StrikeSettings s;
  s.waveType = 1;
  s.n = 1700;
  s.sngTcamp = 50;
  s.distG1G2 = 0.604f;
  s.distHammer = 1.6f;
  s.Z = 20;
  s.velocity = 2000;
  s.frequency = 50;
  s.arrival = 20;
  auto r = koru::synth::makeSyntheticStrike(s);
  r.set_elabString("5,180;0;0,0");
  return r;
}

// The strike's file in a folder of its own, removed when the benchmark ends.
struct StrikeFolder {
  fs::path dir = fs::temp_directory_path() / ("koru-seismic-bench-" + std::to_string(::getpid()));
  fs::path file = dir / "strike.kor";
  StrikeFolder() {
    fs::create_directories(dir);
    shearStrike().saveFile(file);
  }
  ~StrikeFolder() {
    std::error_code ec;
    fs::remove_all(dir, ec);
  }
};

fs::path strikeFile() {
  static StrikeFolder folder;
  return folder.file;
}

void BM_EvalV_Shear700At100us(benchmark::State& state) {
  auto r = shearStrike();
  for (auto _ : state) {
    r.evalV();
    benchmark::DoNotOptimize(r.V());
  }
  state.counters["V"] = r.V();
}
BENCHMARK(BM_EvalV_Shear700At100us)->Unit(benchmark::kMicrosecond);

void BM_EvalV_Compression1700At50usWholeTrace(benchmark::State& state) {
  auto r = compressionStrike();
  for (auto _ : state) {
    r.evalV();
    benchmark::DoNotOptimize(r.V());
  }
  state.counters["V"] = r.V();
  state.counters["upFactor"] = r.upFactor();
}
BENCHMARK(BM_EvalV_Compression1700At50usWholeTrace)->Unit(benchmark::kMillisecond);

// A record loaded fresh and evaluated once, as the elaboration window does per strike.
void BM_EvalV_CompressionFreshRecord(benchmark::State& state) {
  const auto source = compressionStrike();
  for (auto _ : state) {
    auto r = source;
    r.evalV();
    benchmark::DoNotOptimize(r.V());
  }
}
BENCHMARK(BM_EvalV_CompressionFreshRecord)->Unit(benchmark::kMillisecond);

void BM_LoadFile_Shear700(benchmark::State& state) {
  const auto file = strikeFile();
  for (auto _ : state) {
    koru::cls_SEISMOGRAM r;
    benchmark::DoNotOptimize(r.loadFile(file));
  }
}
BENCHMARK(BM_LoadFile_Shear700)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
