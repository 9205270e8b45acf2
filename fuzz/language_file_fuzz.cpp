// Feeds arbitrary bytes to the language file reader as the English file and as a third language
// laid over it, then looks texts up: nothing may crash or hang, the tables must stay sorted so
// the binary search finds every id they hold, and a found text never raises a message.

#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "frame/Prompts.h"
#include "frame/strings/Language.h"
#include "frame/strings/LanguageFile.h"
#include "frame/strings/StringTable.h"

namespace {

class CountingPrompts : public koru::Prompts {
 public:
  int messages = 0;
  int showMessage(std::string_view, int, std::string_view) override { return ++messages, koru::msgbox::kOk; }
  std::optional<std::string> inputBox(std::string_view, std::string_view, std::string_view) override {
    return std::nullopt;
  }
  void beep() override {}
};

const std::filesystem::path& shareDir() {
  static const std::filesystem::path dir = [] {
    auto d = std::filesystem::temp_directory_path() / ("koru_language_fuzz_" + std::to_string(getpid()));
    std::filesystem::create_directories(d / "Language");
    return d;
  }();
  return dir;
}

bool writeFile(const std::filesystem::path& path, std::string_view bytes) {
  std::FILE* f = std::fopen(path.c_str(), "wb");
  if (!f) return false;
  if (!bytes.empty()) std::fwrite(bytes.data(), 1, bytes.size(), f);
  std::fclose(f);
  return true;
}

void checkTable(const koru::ProgramStrings& strings, const CountingPrompts& prompts) {
  const auto& table = strings.table();
  const int before = prompts.messages;
  for (int i = 0; i < table.count(); ++i) {
    if (i > 0 && table.idAt(i - 1) >= table.idAt(i)) std::abort();
    if (table.find(table.idAt(i)) != i) std::abort();
    if (&strings.getString(table.idAt(i)) != &table.textAt(i)) std::abort();
  }
  if (prompts.messages != before) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);

  for (const auto& entry : koru::parseLanguageFile(bytes)) {
    const auto& text = entry.text;
    for (size_t i = 0; i < text.size(); ++i)
      if (text[i] == '\n' && (i == 0 || text[i - 1] != '\r')) std::abort();  // inner lines end in CR LF
  }

  // The whole input as English, its second half as a third language.
  if (!writeFile(koru::languageFilePath(shareDir(), "English"), bytes)) return 0;
  if (!writeFile(koru::languageFilePath(shareDir(), "Other"), bytes.substr(size / 2))) return 0;

  CountingPrompts prompts;
  koru::ProgramStrings strings(prompts);
  koru::loadLanguage(strings, shareDir(), "English");
  checkTable(strings, prompts);

  auto other = koru::loadLanguage(strings, shareDir(), "Other");
  checkTable(strings, prompts);
  if (static_cast<int>(other.missingIds.size()) > strings.table().count()) std::abort();

  // Lookups driven by the first bytes of the input.
  const auto byteAt = [&](size_t i) { return i < size ? static_cast<int>(data[i]) : 0; };
  const auto piece = [&](size_t from, size_t count) { return from < size ? bytes.substr(from, count) : std::string_view(); };
  const int id = byteAt(0) * 256 + byteAt(1) - 16384;
  const int length = byteAt(2) % 40 - 2;
  const std::string& full = strings.getString(id);
  const std::string cut = strings.getStringMax(id, length);
  if (koru::characterCount(full) <= length ? cut != full : koru::characterCount(cut) != std::max(length, 0))
    std::abort();
  strings.getStringX(id, piece(0, 8));
  const int first = byteAt(3) * 64;
  const std::string range = std::to_string(first) + "-" + std::to_string(first + byteAt(4) % 8);
  strings.getStringRange(range, byteAt(5) % 4, piece(6, byteAt(5) % 3));
  strings.getStringRange(piece(0, 16), 1, "");
  koru::plotLabel(strings, piece(0, 8));
  return 0;
}
