// The .dat file of a DMT sounding: reading, writing and the two checks that decide which columns
// the file carries.
//
// Layout, one record a line, CR LF, fields separated by "," and strings in double quotes:
//   Zi, Zf, rowCount, DeltaA, DeltaB, factorEd, Zm, Zw, Zabs, gammaTop, deltaZ   (header numbers)
//   ZMCal, ZMAB, ZMC                       (only when rowCount is negative, i.e. C readings exist)
//   "firm","customer"
//   "job","site","remark"
//   "date","test name"
//   A,B[,C][,Z x 100]                      (one row a line, integers)
// Pressures are hundredths of bar in the file and kPa in memory; header pressures are bar.
// The reader takes one field at a time, so it does not care how fields are broken over lines.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "dmt/Thrust.h"
#include "dmt/cls_DmtTEST.h"
#include "frame/Files.h"
#include "frame/InputFields.h"
#include "frame/LoadResult.h"
#include "frame/Numbers.h"
#include "frame/TextCodec.h"
#include "frame/TextLines.h"

namespace koru {

namespace {

// Row counts are 16-bit throughout the program.
constexpr int kMaxRows = 32767;

struct RowLayout {
  bool hasC = false;
  bool hasZ = false;
  int fieldCount() const { return 2 + (hasC ? 1 : 0) + (hasZ ? 1 : 0); }
};

RowLayout layoutOf(const std::string& format) {
  return {format.find('C') != std::string::npos, format.find('Z') != std::string::npos};
}

// Field text as it may appear in a message: UTF-8 and not endless.
std::string quoteForMessage(std::string_view raw) {
  constexpr size_t kLongest = 40;
  std::string text = cp1252ToUtf8(raw.substr(0, kLongest));
  if (raw.size() > kLongest) text += "...";
  return "'" + text + "'";
}

// "%g"-like text for a number in a message.
std::string numberForMessage(double value) { return formatNumber(value, ""); }

// Reads the fields of one .dat file and remembers where it stands for the diagnostics.
class DatReader {
 public:
  DatReader(std::string_view text, Diagnostic& why) : fields_(text), why_(why) {}

  // The next field; on the end of the text fills the diagnostic with "missing <what>".
  std::optional<InputFields::Field> require(std::string_view what) {
    auto field = fields_.next();
    if (!field) {
      fail(lastLine_ > 0 ? lastLine_ : 1, "missing " + std::string(what));
      return std::nullopt;
    }
    lastLine_ = field->line;
    lineEnded_ = field->endsLine;
    return field;
  }

  // A header number, read as text the way every stored number is. Anything but a finite float
  // is refused: read as 0 it would shift every depth or drop the gauge-zero line unnoticed.
  std::optional<float> number(std::string_view what) {
    auto field = require(what);
    if (!field) return std::nullopt;
    return headerNumber(*field, what);
  }

  std::optional<float> headerNumber(const InputFields::Field& field, std::string_view what) {
    auto value = tryParseSingle(field.text);
    if (!value) fail(field.line, std::string(what) + " " + quoteForMessage(field.text) + " is not a number");
    return value;
  }

  std::optional<std::string> text(std::string_view what) {
    auto field = require(what);
    if (!field) return std::nullopt;
    return cp1252ToUtf8(field->text);
  }

  // A row integer: any decimal number, rounded with halves to even, within 16 bits.
  std::optional<int16_t> rowInteger(const InputFields::Field& field, std::string_view what) {
    auto value = tryParseDouble(field.text);
    if (!value) {
      fail(field.line, std::string(what) + " " + quoteForMessage(field.text) + " is not a number");
      return std::nullopt;
    }
    auto integer = toInt16(*value);
    if (!integer) {
      fail(field.line, std::string(what) + " " + quoteForMessage(field.text) + " is out of range");
      return std::nullopt;
    }
    return integer;
  }

  std::optional<InputFields::Field> next() {
    auto field = fields_.next();
    if (field) {
      lastLine_ = field->line;
      lineEnded_ = field->endsLine;
    }
    return field;
  }

  // Whether the last field read closed its line: a row must start on a line of its own.
  bool lineEnded() const { return lineEnded_; }

  void fail(int line, std::string reason) {
    why_.line = line;
    why_.reason = std::move(reason);
  }

 private:
  InputFields fields_;
  Diagnostic& why_;
  int lastLine_ = 0;
  bool lineEnded_ = true;
};

// Header pressures in bar x 100 to whole kPa, halves to even, as the float product stands.
std::optional<int16_t> barToKpa(float bar) { return toInt16(static_cast<float>(bar * 100.0f)); }

// Writes a header number: the plain conversion of the value rounded to `decimals`.
std::string fixed(double value, int decimals) { return formatNumber(roundTo(value, decimals), ""); }
std::string fixed(float value, int decimals) { return formatNumber(roundTo(value, decimals), ""); }

// A text field: a double quote cannot be stored inside one, so it becomes a single quote.
std::string quotedText(std::string_view text) {
  std::string clean(text);
  std::replace(clean.begin(), clean.end(), '"', '\'');
  return "\"" + utf8ToCp1252(clean) + "\"";
}

// Builds the file's bytes after the same normalisation saveFile does. A row that cannot be
// stored (a depth beyond 327.67 m in a depth column) is left out and reported; the text is still
// complete otherwise, so a preview shows everything else.
bool buildFileText(cls_DmtTEST& t, std::string& out, Diagnostic* why) {
  if (t.N() > 0) {
    t.checkCeditable();
    t.checkZeditable();
    std::string format = "ABCZ";
    if (!t.blnHasC) format.erase(format.find('C'), 1);
    if (!t.blnZEditable) {
      format.erase(format.find('Z'), 1);
    } else {
      t.sngDeltaZ = 0;
    }
    t.strFormat = format;
  }
  const RowLayout layout = layoutOf(t.strFormat);
  const int n = t.N();
  const std::string crlf = "\r\n";

  // The sign of the row-count field tells the reader whether the gauge-zero line follows.
  const int countField = layout.hasC ? std::min(1 - n, -1) : std::max(n - 1, 0);

  out.clear();
  out += formatNumber(t.Zi(), "") + ",";
  out += formatNumber(t.Zf(), "") + ",";
  out += std::to_string(countField) + ",";
  out += fixed(t.intDeltaA / 100.0, 3) + ",";
  out += fixed(t.intDeltaB / 100.0, 3) + ",";
  out += fixed(t.factorEd(), 2) + ",";
  out += fixed(static_cast<double>(t.sngZMAB - t.sngZMCal) / 100.0, 3) + ",";
  out += fixed(t.sngZw, 2) + ",";
  out += fixed(t.sngZabs, 3) + ",";
  out += fixed(static_cast<double>(t.sngGammaTop) / 9.81, 5) + ",";
  out += fixed(t.sngDeltaZ, 3) + crlf;
  if (countField < 0) {
    out += fixed(static_cast<double>(t.sngZMCal) / 100.0, 3) + ",";
    out += fixed(static_cast<double>(t.sngZMAB) / 100.0, 3) + ",";
    out += fixed(static_cast<double>(t.sngZMC) / 100.0, 3) + crlf;
  }
  out += quotedText(t.strFirm) + "," + quotedText(t.strCustomer) + crlf;
  out += quotedText(t.strJob) + "," + quotedText(t.strSite) + "," + quotedText(t.strRemark) + crlf;
  out += quotedText(t.strDate) + "," + quotedText(t.strTstname) + crlf;

  bool ok = true;
  for (int i = 0; i < n; ++i) {
    const auto row = static_cast<size_t>(i);
    const int a = t.vA[row], b = t.vB[row], c = t.vC[row];
    std::string line = std::to_string(a) + "," + std::to_string(b);
    if (layout.hasC) line += "," + std::to_string(c);
    if (layout.hasZ) {
      const float z = t.vZ[row];
      if (z == 0 || (a <= 0 && b <= 0)) continue;
      // The product is a float, as the depth is: 1.015 m gives 101.5 and so 102.
      auto zField = toInt16(static_cast<float>(z * 100.0f));
      if (!zField) {
        if (ok && why) {
          why->line = 0;
          why->reason = "depth " + numberForMessage(z) + " m of row " + std::to_string(i + 1) +
                        " cannot be stored (the deepest is 327.67 m)";
        }
        ok = false;
        continue;
      }
      line += "," + std::to_string(*zField);
    }
    out += line + crlf;
  }
  return ok;
}

}  // namespace

int16_t cls_DmtTEST::loadFile(Diagnostic* why) {
  Diagnostic local;
  Diagnostic& d = why ? *why : local;
  d = Diagnostic{strDatPath_, 0, ""};
  datPartial_ = thrustPartial_ = thrustLeftRows_ = false;
  auto bytes = readFileBytes(strDatPath_, &d);
  if (!bytes) {
    datPartial_ = true;
    return 0;
  }
  const LoadResult read = parseDat(*bytes, strDatPath_);
  if (!read.complete()) {
    datPartial_ = true;
    d = read.why;
    return 0;
  }
  // The thrust file beside the .dat file, if there is one. A thrust file that can't be read in
  // full makes the load incomplete, and `why` then names the thrust file.
  if (!loadThrust(nullptr, &d)) return 0;
  return -1;
}

LoadResult cls_DmtTEST::parseDat(std::string_view bytes, const std::filesystem::path& file) {
  Diagnostic d{file, 0, ""};
  bytes = withoutBom(bytes);
  if (bytes.find_first_not_of(" \t\r\n") == std::string_view::npos) {
  d.reason = "the file is empty";
  return LoadResult::fail(LoadStatus::WrongFormat, d);
  }
  // Whatever was read before a failure stays in the record.
  const auto partial = [&d] { return LoadResult::fail(LoadStatus::Partial, d); };
  DatReader in(bytes, d);

  // Line 1.
  auto zi = in.number("start depth");
  if (!zi) return partial();
  if (!in.number("end depth")) return partial();
  auto countField = in.number("row count");
  if (!countField) return partial();
  auto deltaA = in.require("Delta A");
  if (!deltaA) return partial();
  auto deltaABar = in.headerNumber(*deltaA, "Delta A");
  if (!deltaABar) return partial();
  auto deltaAKpa = barToKpa(*deltaABar);
  if (!deltaAKpa) {
    in.fail(deltaA->line, "Delta A " + quoteForMessage(deltaA->text) + " is out of range");
    return partial();
  }
  intDeltaA = *deltaAKpa;
  auto deltaB = in.require("Delta B");
  if (!deltaB) return partial();
  auto deltaBBar = in.headerNumber(*deltaB, "Delta B");
  if (!deltaBBar) return partial();
  auto deltaBKpa = barToKpa(*deltaBBar);
  if (!deltaBKpa) {
    in.fail(deltaB->line, "Delta B " + quoteForMessage(deltaB->text) + " is out of range");
    return partial();
  }
  intDeltaB = *deltaBKpa;
  auto edFactor = in.number("Ed factor");
  if (!edFactor) return partial();
  setFactorEd(*edFactor);
  auto zm = in.number("gauge zero");
  if (!zm) return partial();
  const float zmKpa = *zm * 100.0f;
  auto zw = in.number("water table depth");
  if (!zw) return partial();
  sngZw = *zw;
  auto zabs = in.number("elevation");
  if (!zabs) return partial();
  sngZabs = *zabs;
  auto gammaTop = in.number("unit weight");
  if (!gammaTop) return partial();
  sngGammaTop = static_cast<float>(roundTo(static_cast<double>(*gammaTop) * 9.81, 2));
  auto deltaZ = in.number("depth step");
  if (!deltaZ) return partial();
  sngDeltaZ = *deltaZ;

  // Line 2 exists only in files written with C readings; an older file has the single gauge
  // zero of line 1, which was taken while reading A and B.
  if (*countField < 0) {
    auto zmCal = in.number("ZM Cal");
    if (!zmCal) return partial();
    sngZMCal = *zmCal * 100.0f;
    auto zmAB = in.number("ZM AB");
    if (!zmAB) return partial();
    sngZMAB = *zmAB * 100.0f;
    auto zmC = in.number("ZM C");
    if (!zmC) return partial();
    sngZMC = *zmC * 100.0f;
    strFormat = "ABC";
  } else {
    sngZMCal = 0;
    sngZMAB = zmKpa;
    sngZMC = 0;
    strFormat = "AB";
  }
  if (sngDeltaZ <= 0) strFormat += "Z";

  std::string* texts[] = {&strFirm, &strCustomer, &strJob, &strSite, &strRemark, &strDate, &strTstname};
  const char* textNames[] = {"firm", "customer", "job", "site", "remark", "date", "test name"};
  for (size_t i = 0; i < std::size(texts); ++i) {
    auto text = in.text(textNames[i]);
    if (!text) return partial();
    *texts[i] = std::move(*text);
  }

  // Rows.
  const RowLayout layout = layoutOf(strFormat);
  const int fieldCount = layout.fieldCount();
  const char* names[4] = {"A reading", "B reading", layout.hasC ? "C reading" : "depth", "depth"};
  int kept = 0;     // rows taken, the next row's index
  int rowLine = 0;  // rows met in the file, kept or not: the depth counter of files without Z
  bool complete = true;
  for (;;) {
    // A row may be broken over lines, or share a line with whole rows; but a row that starts in
    // the middle of a line ends on that line. A field too many or too few then shows at its own
    // line rather than shifting every later reading into the wrong column unnoticed.
    const bool startsMidLine = !in.lineEnded();
    auto first = in.next();
    if (!first) break;
    int16_t values[4] = {0, 0, 0, 0};
    auto value = in.rowInteger(*first, names[0]);
    if (!value) {
      complete = false;
      break;
    }
    values[0] = *value;
    InputFields::Field last = *first;
    for (int f = 1; f < fieldCount && complete; ++f) {
      if (startsMidLine && last.endsLine) {
        in.fail(first->line, "a row starting in the middle of the line runs past its end: a field too many or too few");
        complete = false;
        break;
      }
      auto field = in.next();
      if (!field) {
        in.fail(first->line, "incomplete row: " + std::to_string(f) + " of " + std::to_string(fieldCount) +
                                 " fields");
        complete = false;
      } else if (auto v = in.rowInteger(*field, names[f])) {
        values[f] = *v;
        last = std::move(*field);
      } else {
        complete = false;
      }
    }
    if (!complete) break;
    if (last.cutShort) {
      in.fail(last.line, "the file ends early, in the middle of line " + std::to_string(last.line));
      complete = false;
      break;
    }

    const int16_t a = values[0], b = values[1];
    const int16_t c = layout.hasC ? values[2] : 0;
    const int16_t zField = layout.hasZ ? values[fieldCount - 1] : 0;

    bool keep;
    float z = 0;
    if (layout.hasZ) {
      if (layout.hasC) {
        keep = zField > 0 && (a > 0 || b > 0 || c >= 1);
      } else {
        keep = zField > 0 && !(a < 1 && b < 1);
      }
      // The depth goes through its text form so that it is the float a user typing it gets.
      if (keep) z = parseSingle(formatNumber(zField / 100.0, ""));
    } else {
      if (rowLine >= kMaxRows) {
        in.fail(first->line, "too many rows: a test holds at most 32767");
        complete = false;
        break;
      }
      keep = layout.hasC ? !(a == 0 && b == 0 && c == 0) : !(a == 0 && b == 0);
      // Dropped rows still count, so that they leave their gap in depth.
      z = static_cast<float>(rowLine * static_cast<double>(sngDeltaZ) + static_cast<double>(*zi));
      ++rowLine;
    }
    if (!keep) continue;
    if (kept >= kMaxRows) {
      in.fail(first->line, "too many rows: a test holds at most 32767");
      complete = false;
      break;
    }

    // Arrays grow in blocks: 101 at the first row, then 100 more whenever the index reaches the
    // upper bound. The zero tail this leaves matters to the checks below.
    const auto i = static_cast<size_t>(kept);
    if (kept == 0) {
      setN(101);
    } else if (i == vZ.size() - 1) {
      const size_t grown = vZ.size() + 100;
      vZ.resize(grown, 0.0f);
      vTH.resize(grown, 0.0f);
      vA.resize(grown, 0);
      vB.resize(grown, 0);
      vC.resize(grown, 0);
    }
    vZ[i] = z;
    vA[i] = a;
    vB[i] = b;
    vC[i] = c;
    if (layout.hasZ) {
      // Insertion into the sorted rows above: the new row goes after every row not deeper.
      const auto place = static_cast<size_t>(std::upper_bound(vZ.begin(), vZ.begin() + static_cast<std::ptrdiff_t>(i), z) - vZ.begin());
      if (place < i) {
        const auto from = static_cast<std::ptrdiff_t>(place), to = static_cast<std::ptrdiff_t>(i) + 1;
        std::rotate(vZ.begin() + from, vZ.begin() + to - 1, vZ.begin() + to);
        std::rotate(vA.begin() + from, vA.begin() + to - 1, vA.begin() + to);
        std::rotate(vB.begin() + from, vB.begin() + to - 1, vB.begin() + to);
        std::rotate(vC.begin() + from, vC.begin() + to - 1, vC.begin() + to);
      }
    }
    ++kept;
  }

  // The checks run while the zero tail is still there: its zero depths break the regular step,
  // so a loaded test works from its true depth differences until the next save finds the step
  // again. Only then are the arrays cut to the rows read.
  checkCeditable();
  checkZeditable();
  if (kept > 0) {
    const auto size = static_cast<size_t>(kept);
    vZ.resize(size);
    vTH.resize(size);
    vA.resize(size);
    vB.resize(size);
    vC.resize(size);
  }
  if (!complete) return partial();
  return {};
}

int16_t cls_DmtTEST::saveFile(Diagnostic* why) {
  Diagnostic local;
  Diagnostic& d = why ? *why : local;
  d = Diagnostic{strDatPath_, 0, ""};
  if (strDatPath_.empty()) {
    d.reason = "no file name given";
    return 0;
  }
  std::string text;
  if (!buildFileText(*this, text, &d)) return 0;
  // The .dat file and its thrust rows are one test: a new .dat beside the old Thrust.dat would
  // give thrusts to the wrong depths, so both are replaced or neither.
  std::vector<FileContent> files;
  if (blnHasThrust) files.push_back({thrustFilePath(), thrustFileText(rodData, vZ, vTH)});
  files.push_back({strDatPath_, std::move(text)});
  return writeFilesTogether(files, &d) ? -1 : 0;
}

std::vector<std::filesystem::path> cls_DmtTEST::partlyReadFiles() const {
  std::vector<std::filesystem::path> files;
  if (datPartial_) files.push_back(strDatPath_);
  if (thrustPartial_) files.push_back(thrustFilePath());
  return files;
}

std::string cls_DmtTEST::fileText() {
  std::string text;
  buildFileText(*this, text, nullptr);
  return text;
}

void cls_DmtTEST::checkCeditable() {
  blnHasC = std::any_of(vC.begin(), vC.end(), [](int16_t c) { return c != 0; });
}

void cls_DmtTEST::checkZeditable() {
  // The array size, not N(): while a file is being read the zero tail may pass 16 bits.
  const size_t n = vZ.size();
  if (n <= 1) {
    sngDeltaZ = 0.2f;
  } else if (n == 2) {
    sngDeltaZ = vZ[1] - vZ[0];
  } else {
    // Depths are compared at centimetres and steps at millimetres, so that float noise in a
    // regular sounding does not make it look irregular.
    double previous = roundTo(vZ[1], 2);
    sngDeltaZ = static_cast<float>(previous - roundTo(vZ[0], 2));
    const double step = roundTo(sngDeltaZ, 3);
    for (size_t i = 2; i < n; ++i) {
      const double current = roundTo(vZ[i], 2);
      if (roundTo(current - previous, 3) != step) {
        sngDeltaZ = 0;
        break;
      }
      previous = current;
    }
  }
  blnZEditable = !(sngDeltaZ > 0);
}

}  // namespace koru
