#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

// The folders of src/ are the layers of the program, lowest first. A folder may include its own
// headers and those of the folders before it, never one after it: the engine builds and tests
// without the windows, and the windows only call the engine. The platform layer and the windows
// sit on top of the whole core, and only they may see Qt.
constexpr std::array<std::string_view, 12> kLayers = {
    "frame", "dmt", "seismic", "dissipation", "sites", "probe", "results", "plots", "reports",
    "program", "platform", "gui"};

int layerOf(std::string_view folder) {
  auto it = std::find(kLayers.begin(), kLayers.end(), folder);
  return it == kLayers.end() ? -1 : static_cast<int>(it - kLayers.begin());
}

bool mayUseQt(std::string_view folder) { return folder == "platform" || folder == "gui"; }

// Every include of src/ that goes against the order, as "file:line: include".
std::vector<std::string> offendingIncludes() {
  const fs::path src = fs::path(KORU_SOURCE_DIR) / "src";
  const std::regex projectInclude(R"(^\s*#\s*include\s*"([A-Za-z_]+)/)");
  const std::regex qtInclude(R"(^\s*#\s*include\s*[<"]Q[A-Za-z]*[>/"])");
  std::vector<std::string> offenders;
  for (const auto& entry : fs::recursive_directory_iterator(src)) {
    if (!entry.is_regular_file()) continue;
    const auto rel = fs::relative(entry.path(), src);
    if (rel.begin() == rel.end() || std::next(rel.begin()) == rel.end()) continue;  // src/CMakeLists.txt
    const std::string folder = rel.begin()->string();
    const int own = layerOf(folder);
    if (own < 0) {
      offenders.push_back(rel.string() + ": folder is not a known layer");
      continue;
    }
    std::ifstream in(entry.path());
    std::string line;
    for (int number = 1; std::getline(in, line); ++number) {
      std::smatch m;
      const bool upward = std::regex_search(line, m, projectInclude) && layerOf(m[1].str()) > own;
      const bool qt = !mayUseQt(folder) && std::regex_search(line, qtInclude);
      if (upward || qt) offenders.push_back(rel.string() + ":" + std::to_string(number) + ": " + line);
    }
  }
  return offenders;
}

TEST(Architecture, NoFolderOfTheCoreIncludesALaterLayer) {
  const auto offenders = offendingIncludes();
  EXPECT_TRUE(offenders.empty()) << ::testing::PrintToString(offenders);
}

}  // namespace
