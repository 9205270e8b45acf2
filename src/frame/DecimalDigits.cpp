#include "frame/DecimalDigits.h"

#include <charconv>
#include <cmath>
#include <cstdlib>

namespace koru {

namespace {

template <typename T>
DecimalDigits fromScientific(T value) {
  DecimalDigits d;
  if (!std::isfinite(value) || value == 0) return d;
  char buf[64];
  auto res = std::to_chars(buf, buf + sizeof buf, value, std::chars_format::scientific);
  std::string_view s(buf, static_cast<size_t>(res.ptr - buf));
  size_t i = 0;
  if (s[i] == '-') {
    d.negative = true;
    ++i;
  }
  auto e = s.find('e');
  for (; i < e; ++i)
    if (s[i] != '.') d.digits.push_back(s[i]);
  int exponent = 0;
  std::from_chars(s.data() + e + 1 + (s[e + 1] == '+' ? 1 : 0), s.data() + s.size(), exponent);
  d.pointPos = exponent + 1;
  while (!d.digits.empty() && d.digits.back() == '0') d.digits.pop_back();
  return d;
}

}  // namespace

DecimalDigits DecimalDigits::of(double value) { return fromScientific(value); }
DecimalDigits DecimalDigits::of(float value) { return fromScientific(value); }

void DecimalDigits::trim() {
  size_t lead = 0;
  while (lead < digits.size() && digits[lead] == '0') ++lead;
  digits.erase(0, lead);
  pointPos -= static_cast<int>(lead);
  while (!digits.empty() && digits.back() == '0') digits.pop_back();
  if (digits.empty()) pointPos = 0;
}

void DecimalDigits::roundAt(int keep, Tie tie) {
  if (digits.empty() || keep >= static_cast<int>(digits.size())) return;
  if (keep < 0) {
    digits.clear();
    pointPos = 0;
    return;
  }
  // Decide on the dropped digits: above, at or below one half of the last kept digit.
  const char first = digits[static_cast<size_t>(keep)];
  bool moreAfter = digits.find_first_not_of('0', static_cast<size_t>(keep) + 1) != std::string::npos;
  bool up;
  if (first > '5' || (first == '5' && moreAfter)) {
    up = true;
  } else if (first == '5') {
    if (tie == Tie::AwayFromZero) {
      up = true;
    } else {
      int last = keep > 0 ? digits[static_cast<size_t>(keep) - 1] - '0' : 0;
      up = (last % 2) == 1;
    }
  } else {
    up = false;
  }
  digits.resize(static_cast<size_t>(keep));
  if (up) {
    int i = keep - 1;
    while (i >= 0 && digits[static_cast<size_t>(i)] == '9') {
      digits[static_cast<size_t>(i)] = '0';
      --i;
    }
    if (i >= 0) {
      ++digits[static_cast<size_t>(i)];
    } else {
      digits.insert(digits.begin(), '1');
      ++pointPos;
    }
  }
  trim();
}

void DecimalDigits::roundToDecimals(int decimals, Tie tie) {
  if (digits.empty()) return;
  int keep = pointPos + decimals;
  if (keep == 0) {
    // The whole value lies below the last kept place: give it a leading zero digit to round on.
    digits.insert(digits.begin(), '0');
    ++pointPos;
    keep = 1;
  }
  roundAt(keep, tie);
}

void DecimalDigits::roundToSignificant(int count, Tie tie) { roundAt(count, tie); }

double DecimalDigits::toDouble() const {
  if (digits.empty()) return 0.0;
  std::string s = negative ? "-0." : "0.";
  s += digits;
  s += 'e';
  s += std::to_string(pointPos);
  double v = 0;
  std::from_chars(s.data(), s.data() + s.size(), v);
  return v;
}

}  // namespace koru
