#pragma once
// Dates as the program writes them in test headers.

#include <chrono>
#include <string>

namespace koru {

// "d MMM yyyy" in upper case with English month names and no leading zero: "5 MAR 2008".
std::string todayString(std::chrono::year_month_day day);
// The same for the machine's local date now.
std::string todayString();

}  // namespace koru
