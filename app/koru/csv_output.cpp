#include "csv_output.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace koru::cli {

std::string csvNumber(double value) {
  if (!std::isfinite(value)) return "0";
  char buf[40];
  std::snprintf(buf, sizeof buf, "%.9g", value);
  return buf;
}

std::string csvText(std::string_view text) {
  if (text.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(text);
  std::string out = "\"";
  for (char c : text) {
    if (c == '"') out += '"';
    out += c;
  }
  return out + "\"";
}

void CsvLine::separate() {
  if (!first_) line_ += ',';
  first_ = false;
}

CsvLine& CsvLine::add(double value) {
  separate();
  line_ += csvNumber(value);
  return *this;
}

CsvLine& CsvLine::addInt(long value) {
  separate();
  line_ += std::to_string(value);
  return *this;
}

CsvLine& CsvLine::addText(std::string_view text) {
  separate();
  line_ += csvText(text);
  return *this;
}

CsvLine& CsvLine::addQuoted(std::string_view text) {
  separate();
  line_ += '"';
  for (char c : text) {
    if (c == '"') line_ += '"';
    line_ += c;
  }
  line_ += '"';
  return *this;
}

void CsvLine::writeTo(std::ostream& out) const { out << line_ << '\n'; }

void writeTable(std::ostream& out, const std::vector<std::string>& header,
                const std::vector<std::vector<std::string>>& rows, bool leftAlignLast) {
  std::vector<size_t> widths(header.size(), 0);
  auto measure = [&](const std::vector<std::string>& cells) {
    for (size_t i = 0; i < cells.size() && i < widths.size(); ++i) widths[i] = std::max(widths[i], cells[i].size());
  };
  measure(header);
  for (const auto& row : rows) measure(row);
  auto print = [&](const std::vector<std::string>& cells) {
    for (size_t i = 0; i < cells.size() && i < widths.size(); ++i) {
      if (i > 0) out << "  ";
      const std::string pad(widths[i] - cells[i].size(), ' ');
      if (leftAlignLast && i + 1 == cells.size())
        out << cells[i];
      else
        out << pad << cells[i];
    }
    out << '\n';
  };
  print(header);
  for (const auto& row : rows) print(row);
}

}  // namespace koru::cli
