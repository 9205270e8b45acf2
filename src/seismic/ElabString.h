#pragma once
// The text form of a record's elaboration settings: three stages, filter;window;delay, each a
// code followed by its parameters after ",", e.g. "5,180;4;0,0". Parameters stay text, so a
// string read and written again comes out as it went in.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace koru {

class ElabString {
 public:
  // The parts between ";" (an empty text gives no part).
  static std::vector<std::string> splitStages(std::string_view text);
  // The items of a stage between "," (the first is the code).
  static std::vector<std::string> splitItems(std::string_view stage);
  // Code and parameters of one stage, each parameter with a "," before it.
  static std::string joinStage(int64_t code, const std::vector<std::string>& params);
  // A stage code as a whole number within [lo, hi] (halves to even); nullopt if it is not one.
  static std::optional<int64_t> parseCode(std::string_view text, int64_t lo, int64_t hi);
};

}  // namespace koru
