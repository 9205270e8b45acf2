// Feeds arbitrary bytes to the language file reader, as English and (its second half) as a third
// language laid over it: inner lines of a text end in CR LF, the table stays sorted so that the
// binary search finds every id it holds, and a cut text is as long as asked.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/strings/Language.h"
#include "frame/strings/LanguageFile.h"
#include "frame/strings/StringTable.h"

namespace {

struct SilentPrompts : koru::Prompts {
  int showMessage(std::string_view, int, std::string_view) override { return koru::msgbox::kOk; }
  std::optional<std::string> inputBox(std::string_view, std::string_view, std::string_view) override { return {}; }
  void beep() override {}
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  std::vector<koru::LanguageEntry> english, other;
  koru::parseLanguageFile(bytes, "English.h", english);
  koru::parseLanguageFile(bytes.substr(size / 2), "Other.h", other);
  for (const auto& e : english)
    for (size_t i = e.text.find('\n'); i != std::string::npos; i = e.text.find('\n', i + 1))
      if (i == 0 || e.text[i - 1] != '\r') std::abort();
  SilentPrompts prompts;
  koru::ProgramStrings strings(prompts);
  koru::fillLanguage(strings, "Other", &other, &english);
  const koru::StringTable& table = strings.table();
  for (int i = 0; i < table.count(); ++i)
    if ((i > 0 && table.idAt(i - 1) >= table.idAt(i)) || table.find(table.idAt(i)) != i) std::abort();
  const int id = size > 1 ? data[0] * 256 + data[1] - 16384 : 0, length = size > 2 ? data[2] % 40 - 2 : 0;
  const std::string cut = strings.getStringMax(id, length), & full = strings.getString(id);
  if (koru::characterCount(full) <= length ? cut != full : koru::characterCount(cut) != std::max(length, 0)) std::abort();
  strings.getStringRange(bytes.substr(0, 16), 1, "");
  return 0;
}
