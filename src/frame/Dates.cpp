#include "frame/Dates.h"

#include <array>
#include <ctime>

namespace koru {

std::string todayString(std::chrono::year_month_day day) {
  static constexpr std::array<const char*, 12> kMonths = {"JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                                          "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};
  unsigned month = static_cast<unsigned>(day.month());
  std::string text = std::to_string(static_cast<unsigned>(day.day())) + " ";
  text += (month >= 1 && month <= 12) ? kMonths[month - 1] : "???";
  text += " " + std::to_string(static_cast<int>(day.year()));
  return text;
}

std::string todayString() {
  std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  return todayString(std::chrono::year_month_day{std::chrono::year(local.tm_year + 1900),
                                                 std::chrono::month(static_cast<unsigned>(local.tm_mon + 1)),
                                                 std::chrono::day(static_cast<unsigned>(local.tm_mday))});
}

}  // namespace koru
