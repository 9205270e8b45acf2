#include "seismic/ElabString.h"

#include "frame/Numbers.h"
#include "frame/Text.h"

namespace koru {

namespace {

std::vector<std::string> splitAt(std::string_view text, char separator) {
  const std::vector<std::string_view> parts = splitText(text, separator);
  return {parts.begin(), parts.end()};
}

}  // namespace

std::vector<std::string> ElabString::splitStages(std::string_view text) {
  if (text.empty()) return {};
  return splitAt(text, ';');
}

std::vector<std::string> ElabString::splitItems(std::string_view stage) { return splitAt(stage, ','); }

std::string ElabString::joinStage(int64_t code, const std::vector<std::string>& params) {
  std::string out = std::to_string(code);
  for (const auto& p : params) {
    out += ',';
    out += p;
  }
  return out;
}

std::optional<int64_t> ElabString::parseCode(std::string_view text, int64_t lo, int64_t hi) {
  const auto value = tryParseDouble(text);
  if (!value) return std::nullopt;
  const double r = roundHalfEven(*value);
  if (r < static_cast<double>(lo) || r > static_cast<double>(hi)) return std::nullopt;
  return static_cast<int64_t>(r);
}

}  // namespace koru
