#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <string>

namespace {

namespace fs = std::filesystem;

// The core stays plain C++: only the platform layer may see Qt, so the engine builds and tests
// without a GUI toolkit and the windows only call the core.
TEST(Architecture, NothingInTheCoreButThePlatformLayerIncludesQt) {
  const fs::path src = fs::path(KORU_SOURCE_DIR) / "src";
  const std::regex qtInclude(R"(^\s*#\s*include\s*[<"]Q[A-Za-z]*[>/"])");
  std::vector<std::string> offenders;
  for (const auto& entry : fs::recursive_directory_iterator(src)) {
    if (!entry.is_regular_file()) continue;
    auto rel = fs::relative(entry.path(), src);
    if (*rel.begin() == "platform") continue;
    std::ifstream in(entry.path());
    std::string line;
    int number = 0;
    while (std::getline(in, line)) {
      ++number;
      if (std::regex_search(line, qtInclude)) offenders.push_back(rel.string() + ":" + std::to_string(number));
    }
  }
  EXPECT_TRUE(offenders.empty()) << ::testing::PrintToString(offenders);
}

}  // namespace
