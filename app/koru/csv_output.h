#pragma once
// Output helpers of the command line: CSV with numbers in 9 significant digits (enough for a
// float to read back exactly) and plain aligned tables for people.

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace koru::cli {

std::string csvNumber(double value);
std::string csvText(std::string_view text);  // quoted when it holds a comma or a quote

class CsvLine {
 public:
  CsvLine& add(double value);
  CsvLine& addInt(long value);
  CsvLine& addText(std::string_view text);
  CsvLine& addQuoted(std::string_view text);  // always in double quotes
  void writeTo(std::ostream& out) const;

 private:
  std::string line_;
  bool first_ = true;
  void separate();
};

// Columns right-aligned to the widest cell (the last one left-aligned if asked), header first.
void writeTable(std::ostream& out, const std::vector<std::string>& header,
                const std::vector<std::vector<std::string>>& rows, bool leftAlignLast = false);

}  // namespace koru::cli
