// The .dis file of a dissipation test, and the other text forms of the record.
//
//   DISSIP2002
//   FIRM = "Studio Rossi"            (texts in double quotes; the line only when not blank)
//   ZD = 12.3                        (numbers in their shortest form, "." as decimal point)
//   ...
//   STARTDATE = 2008/3/5             (start date and time without quotes)
//   STARTTIME = 10:20:30
//   T =  0.25, A =   540            (one line per reading: "0.00" and an integer, width 6)
//
// The reader takes comma-separated fields, not lines, so keys may come in any order and a
// header text that holds a comma loses what follows it. Keeping that limitation keeps the files
// readable by every program that has ever read them.

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>

#include "dissipation/cls_DissTEST.h"
#include "frame/Files.h"
#include "frame/InputFields.h"
#include "frame/LoadResult.h"
#include "frame/Numbers.h"
#include "frame/Text.h"
#include "frame/TextCodec.h"
#include "frame/TextLines.h"

namespace koru {

namespace {

const std::string kCrLf = "\r\n";

bool isBlankText(std::string_view s) { return trimmed(s).empty(); }

std::string padLeft(std::string text, size_t width) {
  if (text.size() < width) text.insert(0, width - text.size(), ' ');
  return text;
}

// The shortest form of a stored number.
std::string shortest(float value) { return formatNumber(value, ""); }

// A header text as the file holds it, without its quotes: a double quote would end the value
// early and a line break would split the line, so they become a single quote and a blank.
std::string storableText(std::string_view text) {
  std::string clean(text);
  for (char& c : clean) {
    if (c == '"') c = '\'';
    if (c == '\r' || c == '\n') c = ' ';
  }
  return clean;
}

// A start date or time, which stands without quotes: a line break would split the line, and the
// reader drops blanks around an unquoted value, so the file never holds them.
std::string bare(std::string_view text) {
  std::string clean(text);
  for (char& c : clean)
    if (c == '\r' || c == '\n') c = ' ';
  return std::string(trimmed(clean));
}

// Field text as it may appear in a message: not endless.
std::string quoteForMessage(std::string_view raw) {
  constexpr size_t kLongest = 40;
  std::string text(raw.substr(0, kLongest));
  if (raw.size() > kLongest) text += "...";
  return "'" + text + "'";
}

// An A value: the number, cut towards zero to a 16-bit integer.
std::optional<int16_t> truncatedA(std::string_view value) {
  const auto parsed = tryParseSingle(value);
  if (!parsed) return std::nullopt;
  const double a = std::trunc(static_cast<double>(*parsed));
  if (a < -32768.0 || a > 32767.0) return std::nullopt;
  return static_cast<int16_t>(a);
}

const std::array<const char*, 12> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                             "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

}  // namespace

// The name is the text before the first "=", trimmed. After the "=" and its blanks, a double
// quote opens a value that runs to the next double quote (or the end); otherwise the value is
// the rest of the field. The scan then goes on after the value, so a second pair in the same
// field replaces the first. A field without "=" gives an empty name and value.
DissItem cls_DissTEST::parseItem(std::string_view field) {
  DissItem item;
  size_t pos = 0;
  while (pos < field.size()) {
    const size_t eq = field.find('=', pos);
    if (eq == std::string_view::npos) break;
    item.name = std::string(trimmed(field.substr(pos, eq - pos)));
    size_t p = eq + 1;
    while (p < field.size() && (field[p] == ' ' || field[p] == '\t')) ++p;
    if (p < field.size() && field[p] == '"') {
      size_t close = field.find('"', p + 1);
      if (close == std::string_view::npos) close = field.size();
      item.value = std::string(field.substr(p + 1, close - p - 1));
      pos = close < field.size() ? close + 1 : close;
    } else {
      item.value = std::string(field.substr(p));
      pos = field.size();
    }
  }
  return item;
}

bool cls_DissTEST::setField(std::string_view name, std::string_view value) {
  const std::string key = upperAscii(name);
  float zd = 0;  // the depth goes through Zd, which also names the file
  if (key == "FIRM") {
    Firm = value;
  } else if (key == "CUSTOMER") {
    Customer = value;
  } else if (key == "JOB") {
    Job = value;
  } else if (key == "SITE") {
    Site = value;
  } else if (key == "REMARK") {
    Remark = value;
  } else if (key == "DATE") {
    Data = value;
  } else if (key == "TESTNAME") {
    TstName = value;
  } else if (key == "DELTAA" || key == "DELTAB") {
    const auto parsed = tryParseSingle(value);
    const auto delta = parsed ? toInt16(*parsed) : std::nullopt;
    if (!delta) return false;
    (key == "DELTAA" ? DeltaA : DeltaB) = *delta;
  } else if (float* number = key == "ZD"       ? &zd
                             : key == "ZM"     ? &Zm
                             : key == "BFINAL" ? &BFinal
                             : key == "U0"     ? &U0
                             : key == "ID"     ? &Id
                             : key == "OCR"    ? &OCR
                             : key == "MH"     ? &Mh
                                               : nullptr) {
    const auto parsed = tryParseSingle(value);
    if (!parsed) return false;
    *number = *parsed;
    if (key == "ZD") setZd(zd);
    if (key == "U0") isUoSpecified = true;
  } else if (key == "STARTDATE") {
    startDate = value;
  } else if (key == "STARTTIME") {
    startTime = value;
  }
  return true;
}

std::string cls_DissTEST::strDisFile() const {
  std::string out(kMarker);
  out += kCrLf;
  const std::pair<const char*, const std::string*> texts[] = {
      {"FIRM = ", &Firm}, {"CUSTOMER = ", &Customer}, {"JOB = ", &Job},         {"SITE = ", &Site},
      {"REMARK = ", &Remark}, {"DATE = ", &Data},     {"TESTNAME = ", &TstName}};
  // A text made only of blanks and line breaks would read back as blank, which is never written.
  for (const auto& [key, text] : texts)
    if (const std::string clean = storableText(*text); !isBlankText(clean)) out += key + ("\"" + clean + "\"") + kCrLf;
  if (Zd_ > 0) out += "ZD = " + shortest(Zd_) + kCrLf;
  if (Zm > 0) out += "ZM = " + shortest(Zm) + kCrLf;
  if (DeltaA > 0) out += "DELTAA = " + std::to_string(DeltaA) + kCrLf;
  if (DeltaB > 0) out += "DELTAB = " + std::to_string(DeltaB) + kCrLf;
  // Written in the shortest form with a point rather than the machine's own number form: the
  // reader takes both, and a decimal comma would split the field.
  if (BFinal > 0) out += "BFINAL = " + shortest(BFinal) + kCrLf;
  if (isUoSpecified) out += "U0 = " + shortest(U0) + kCrLf;
  if (Id > 0) out += "ID = " + shortest(Id) + kCrLf;
  if (OCR > 0) out += "OCR = " + shortest(OCR) + kCrLf;
  if (Mh > 0) out += "MH = " + shortest(Mh) + kCrLf;
  if (const std::string date = bare(startDate); !date.empty()) out += "STARTDATE = " + date + kCrLf;
  if (const std::string time = bare(startTime); !time.empty()) out += "STARTTIME = " + time + kCrLf;
  const size_t n = std::min({static_cast<size_t>(std::max<int>(N_, 0)), vT_.size(), vA_.size()});
  for (size_t i = 0; i < n; ++i)
    out += "T =" + padLeft(formatNumber(vT_[i], "0.00"), 6) + ", A =" + padLeft(std::to_string(vA_[i]), 6) + kCrLf;
  return out;
}

bool cls_DissTEST::saveFile(Diagnostic* why) const {
  if (filename.empty()) {
    if (why) *why = {filename, 0, "the test has no file name (no depth given)"};
    return false;
  }
  return writeFileAtomically(filename, utf8ToCp1252(strDisFile()), why);
}

LoadStatus cls_DissTEST::parseFile(Diagnostic* why) {
  Diagnostic local;
  Diagnostic& d = why ? *why : local;
  d = Diagnostic{filename, 0, ""};
  const auto bytes = readFileBytes(filename, &d);
  if (!bytes) return LoadStatus::Unreadable;
  const LoadResult read = parseDis(*bytes, filename);
  if (!read.complete()) d = read.why;
  return read.status;
}

LoadResult cls_DissTEST::parseDis(std::string_view bytes, const std::filesystem::path& file) {
  // Fields are taken from Windows-1252 one at a time: a long damaged file costs no copy of itself.
  InputFields in(withoutBom(bytes));
  auto first = in.next();
  if (!first || first->text != kMarker)
    return LoadResult::fail(LoadStatus::WrongFormat, {file, first ? first->line : 0, "File not valid"});

  // The file is read into a copy that replaces this record at the end. A key the file leaves
  // out keeps its value (the writer leaves out U0 when not given, Id, OCR and Mh when 0, and
  // blank texts); the readings are the file's alone.
  cls_DissTEST t = *this;
  t.setN(0);
  t.folder = folder.empty() ? filename.parent_path() : folder;
  int lastStored = -1;
  auto finish = [&](LoadResult result) {
    // The growing store is cut to what was stored, also when nothing was: the arrays then hold
    // exactly N readings again.
    if (lastStored >= 0 || !t.vT_.empty()) t.setFinalSize(lastStored);
    *this = std::move(t);
    return result;
  };
  auto fail = [&](int line, std::string reason) {
    return finish(LoadResult::fail(LoadStatus::Partial, {file, line, std::move(reason)}));
  };

  // Header pairs up to the first "T" field.
  std::optional<InputFields::Field> field;
  DissItem item;
  bool hasReadings = false;
  while ((field = in.next())) {
    // A field without "=" is no pair (a text cut at its comma): passed over without a look.
    if (field->text.find('=') == std::string::npos) continue;
    item = parseItem(cp1252ToUtf8(field->text));
    if (item.name == "T") {
      hasReadings = true;
      break;
    }
    if (!t.setField(item.name, item.value))
      return fail(field->line, item.name + " " + quoteForMessage(item.value) + " is not a number or out of range");
  }
  if (!hasReadings) return finish({});

  // Readings: a T field and an A field each; only the values count, not the names.
  t.sizeVectors();
  int index = 0;
  for (;;) {
    const int tLine = field->line;
    const std::string reading = "reading " + std::to_string(index + 1);
    // Fields are read without regard to lines, but a reading that starts in the middle of a line
    // ends on that line: a field too many or too few is then told at its line rather than
    // pairing every later time with the wrong A.
    if (!field->startsLine && field->endsLine)
      return fail(tLine, reading + " starts in the middle of the line and runs past its end: a field too many or too few");
    const auto time = tryParseSingle(item.value);
    if (!time) return fail(tLine, reading + ": T " + quoteForMessage(item.value) + " is not a number");
    auto aField = in.next();
    if (!aField) return fail(tLine, reading + ": the A value is missing");
    if (aField->cutShort) return fail(tLine, "the file ends early, in the middle of line " + std::to_string(tLine));
    auto a = truncatedA(parseItem(aField->text).value);
    if (!a)
      return fail(aField->line, "reading " + std::to_string(index + 1) + ": A " +
                                    quoteForMessage(cp1252ToUtf8(parseItem(aField->text).value)) + " is not a number or out of range");
    if (index >= kMaxReadings)
      return fail(tLine, "too many readings: a test holds at most " + std::to_string(kMaxReadings));
    if (!t.storeTAReadings(*time, *a, index))
      return fail(tLine, "reading " + std::to_string(index + 1) +
                             " cannot be stored: the reading in the last slot (" + std::to_string(t.vT_.size()) +
                             ") has a zero time or A, so the store did not grow");
    lastStored = index;
    if (in.atEnd()) break;
    t.sizeVectors();
    field = in.next();
    if (!field) break;
    item = parseItem(cp1252ToUtf8(field->text));
    ++index;
  }
  return finish({});
}

// The texts of the header that are not blank, one "KEY = text" line each.
void cls_DissTEST::appendHeaderTexts(std::string& out) const {
  const std::pair<const char*, const std::string*> texts[] = {
      {"FIRM = ", &Firm}, {"CUSTOMER = ", &Customer}, {"JOB = ", &Job},         {"SITE = ", &Site},
      {"REMARK = ", &Remark}, {"DATE = ", &Data},     {"TESTNAME = ", &TstName}};
  for (const auto& [key, text] : texts)
    if (!isBlankText(*text)) out += key + *text + kCrLf;
}

// The numbers of the header that were given, with their units.
void cls_DissTEST::appendHeaderValues(std::string& out) const {
  if (Zd_ > 0) out += "ZD = " + shortest(Zd_) + " m" + kCrLf;
  if (Zm > 0) out += "ZM = " + shortest(Zm) + " kPa" + kCrLf;
  if (DeltaA > 0) out += "DELTAA = " + std::to_string(DeltaA) + " kPa" + kCrLf;
  if (DeltaB > 0) out += "DELTAB = " + std::to_string(DeltaB) + " kPa" + kCrLf;
  if (BFinal > 0) out += "BFINAL = " + shortest(BFinal) + " kPa" + kCrLf;
  if (isUoSpecified) out += "U0 = " + shortest(U0) + " kPa" + kCrLf;
  if (Id > 0) out += "ID = " + shortest(Id) + kCrLf;
  if (OCR > 0) out += "OCR = " + shortest(OCR) + kCrLf;
  if (Mh > 0) out += "Mh = " + shortest(Mh) + " MPa" + kCrLf;
}

std::string cls_DissTEST::strTabularData() const {
  std::string out;
  appendHeaderTexts(out);
  appendHeaderValues(out);
  const size_t n = std::min({static_cast<size_t>(std::max<int>(N_, 0)), vT_.size(), vA_.size()});
  for (size_t i = 0; i < n; ++i)
    out += "T =" + padLeft(formatNumber(vT_[i], "0.00"), 6) + " min, A =" + padLeft(std::to_string(vA_[i]), 6) + kCrLf;
  return out;
}

std::string cls_DissTEST::reportHeader() const {
  std::string out;
  appendHeaderTexts(out);
  if (auto start = tempoInizioProva()) {
    using namespace std::chrono;
    const local_days dayPart = floor<days>(*start);
    const year_month_day day{dayPart};
    out += "START DATE = " + std::to_string(static_cast<unsigned>(day.day())) + " " +
           kMonths[static_cast<unsigned>(day.month()) - 1] + " " + std::to_string(static_cast<int>(day.year())) + kCrLf;
    out += "START TIME = " + startTime + kCrLf;
  } else if (existsTempoInizioProva()) {
    // A start that does not read as a date and a time is shown as it was typed.
    out += "START DATE = " + startDate + kCrLf;
    out += "START TIME = " + startTime + kCrLf;
  }
  appendHeaderValues(out);
  return out;
}

std::string cls_DissTEST::reportData() const {
  std::string out;
  const size_t n = std::min({static_cast<size_t>(std::max<int>(N_, 0)), vT_.size(), vA_.size()});
  for (size_t i = 0; i < n; ++i)
    out += "T =" + padLeft(formatNumber(vT_[i], "0.000"), 9) + " min, A =" + padLeft(std::to_string(vA_[i]), 6) +
           " kPa" + kCrLf;
  return out;
}

std::string cls_DissTEST::reportResults() const {
  std::string out;
  out += "TFlex = " + formatNumber(FlexT, "0.00") + " min" + kCrLf;
  out += "Ch,OC = " + strCh() + " cm^2 / sec" + kCrLf;
  // Kh follows Mh on its line: it is Ch over Mh, and means nothing without it.
  out += " Mh = " + shortest(Mh) + " MPa  " + "Kh = " + strKh() + " cm / sec" + kCrLf;
  out += "Po,final = " + formatNumber(Po(), "0.0") + " kPa" + kCrLf;
  return out;
}

}  // namespace koru
