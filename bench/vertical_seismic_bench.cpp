// Evaluation of the seismic test of a whole vertical from disk: the index is read, and every good
// strike is loaded from its ".kor" file and evaluated with its elab string, as the program does
// when a vertical's velocities are refreshed. 60 depths x 3 strikes, written once into a temp
// folder by the synthetic generator. Goal: under 0.5 s.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <unistd.h>

#include "seismic/cls_VTEST.h"
#include "synthetic_strike.h"

namespace {

namespace fs = std::filesystem;

constexpr int kDepths = 60;
constexpr int kStrikesPerDepth = 3;

// The vertical on disk for the whole run; removed at exit.
struct VerticalOnDisk {
  fs::path root;
  fs::path index;
  fs::path folder;

  VerticalOnDisk() {
    root = fs::temp_directory_path() / ("koru-vertical-bench-" + std::to_string(::getpid()));
    folder = root / "VS_1";
    index = root / "VS_1.dat";
    std::error_code ec;
    fs::create_directories(folder, ec);

    koru::cls_VTEST test(index, folder);
    int name = 1;
    for (int d = 0; d < kDepths; ++d) {
      const float z = 1.0f + 0.5f * static_cast<float>(d);
      koru::cls_zSTRIKES depth(z);
      for (int k = 0; k < kStrikesPerDepth; ++k) {
        koru::synth::StrikeSettings shot;
        shot.Z = z;
        shot.velocity = 150.0 + 3.0 * d;
        shot.seed = static_cast<uint32_t>(name);
        const std::string n = std::to_string(name++);
        koru::synth::makeSyntheticStrike(shot).saveFile(test.seismogramPath(n));
        depth.addGood(n, 0, "");  // entered at acquisition, not yet evaluated
      }
      test.strikes.add(depth);
    }
    test.saveInfo();
  }

  ~VerticalOnDisk() {
    std::error_code ec;
    fs::remove_all(root, ec);
  }
};

const VerticalOnDisk& vertical() {
  static const VerticalOnDisk v;
  return v;
}

void BM_EvaluateVerticalFromDisk(benchmark::State& state) {
  const auto& v = vertical();
  int evaluated = 0;
  for (auto _ : state) {
    koru::cls_VTEST test(v.index, v.folder);
    test.loadInfo();
    evaluated = test.evaluateStrikes();
    benchmark::DoNotOptimize(test.get_vecV());
  }
  if (evaluated != kDepths * kStrikesPerDepth) state.SkipWithError("not every strike was evaluated");
  state.counters["strikes"] = evaluated;
}
BENCHMARK(BM_EvaluateVerticalFromDisk)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace

BENCHMARK_MAIN();
