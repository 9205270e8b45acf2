// Load, evaluation and save of a long DMT sounding: the work behind every refresh of a
// vertical's plots. Goal: the whole round of a 5,000-row test in under 5 ms.

#include <benchmark/benchmark.h>

#include <cmath>
#include <filesystem>
#include <unistd.h>

#include "dmt/cls_DmtTEST.h"
#include "dmt/cls_GAMMA.h"
#include "dmt/cls_U.h"

namespace {

namespace fs = std::filesystem;

constexpr int kRows = 5000;

// A 5,000-row test with C readings on every tenth row, saved once in the program's form.
fs::path makeSoundingFile() {
  static fs::path file;
  if (!file.empty()) return file;
  fs::path dir = fs::temp_directory_path() / ("koru-bench-" + std::to_string(::getpid()));
  fs::create_directories(dir);
  file = dir / "DMT_bench.dat";
  koru::cls_DmtTEST test;
  test.setN(kRows);
  for (int i = 0; i < kRows; ++i) {
    float z = 0.02f * static_cast<float>(i + 1);
    test.vZ[static_cast<size_t>(i)] = z;
    int a = 80 + static_cast<int>(6.0f * z) + (i * 37) % 23;
    test.vA[static_cast<size_t>(i)] = static_cast<int16_t>(a);
    test.vB[static_cast<size_t>(i)] = static_cast<int16_t>(a + 60 + (i * 53) % 180);
    test.vC[static_cast<size_t>(i)] = (i % 10 == 0) ? static_cast<int16_t>(a / 2) : int16_t{0};
  }
  test.setDatPath(file);
  test.saveFile();
  return file;
}

void BM_LoadFile(benchmark::State& state) {
  auto file = makeSoundingFile();
  for (auto _ : state) {
    koru::cls_DmtTEST test;
    test.setDatPath(file);
    benchmark::DoNotOptimize(test.loadFile());
  }
}
BENCHMARK(BM_LoadFile)->Unit(benchmark::kMicrosecond);

void BM_EvalDMT(benchmark::State& state) {
  koru::cls_DmtTEST test;
  test.setDatPath(makeSoundingFile());
  test.loadFile();
  koru::cls_GAMMA gamma;
  koru::cls_U u;
  koru::DMTOptions options;
  for (auto _ : state) benchmark::DoNotOptimize(test.evalDMT(gamma, u, options));
}
BENCHMARK(BM_EvalDMT)->Unit(benchmark::kMicrosecond);

void BM_SaveFile(benchmark::State& state) {
  koru::cls_DmtTEST test;
  test.setDatPath(makeSoundingFile());
  test.loadFile();
  test.setDatPath(makeSoundingFile().parent_path() / "DMT_saved.dat");
  for (auto _ : state) benchmark::DoNotOptimize(test.saveFile());
}
BENCHMARK(BM_SaveFile)->Unit(benchmark::kMicrosecond);

void BM_LoadEvalSave(benchmark::State& state) {
  auto file = makeSoundingFile();
  auto out = file.parent_path() / "DMT_round.dat";
  koru::cls_GAMMA gamma;
  koru::cls_U u;
  koru::DMTOptions options;
  for (auto _ : state) {
    koru::cls_DmtTEST test;
    test.setDatPath(file);
    test.loadFile();
    test.evalDMT(gamma, u, options);
    test.setDatPath(out);
    benchmark::DoNotOptimize(test.saveFile());
  }
  state.counters["rows"] = kRows;
}
BENCHMARK(BM_LoadEvalSave)->Unit(benchmark::kMicrosecond);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  std::error_code ec;
  fs::remove_all(makeSoundingFile().parent_path(), ec);
  return 0;
}
