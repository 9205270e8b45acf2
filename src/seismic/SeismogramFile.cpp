// The ".kor" file of a strike: header lines "key = value", one empty line, then one line per
// sample with both channels:
//
//   Z [m] = 3.20
//   Wave Type = Vs
//   ...
//   Hardware = 1 - 0
//   <empty line>
//   127     128.5
//
// Windows-1252 text, CR LF lines, "." as the decimal point. A file this program writes loads
// and saves again to the same bytes: text fields are written trimmed and on one line, and every
// number is written in a form that reads back to itself.

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>

#include "frame/Files.h"
#include "frame/Log.h"
#include "frame/Numbers.h"
#include "frame/TextLines.h"
#include "frame/TextCodec.h"
#include "seismic/cls_SEISMOGRAM.h"

namespace koru {

namespace {

constexpr std::string_view kEol = "\r\n";

// Labels of the file. Older versions wrote "Zcenter" for the depth and "Device Type" instead of
// the firmware and hardware words; both are still read and never written.
constexpr std::string_view kZ = "Z [m]";
constexpr std::string_view kZcenter = "Zcenter";
constexpr std::string_view kWaveType = "Wave Type";
constexpr std::string_view kDistG1G2 = "DistG1G2 [m]";
constexpr std::string_view kDistHammer = "DistHammer [m]";
constexpr std::string_view kSampleTime = "Sample Time [us]";
constexpr std::string_view kDelaySampleG2 = "Delay Sample G2 [us]";
constexpr std::string_view kNSamples = "NSamples";
constexpr std::string_view kGain = "Gain";
constexpr std::string_view kTriggerType = "Trigger Type";
constexpr std::string_view kLoopSamples = "Loop Samples";
constexpr std::string_view kTriggerSensibility = "Trigger Sensibility";
constexpr std::string_view kTriggerDelay = "Trigger Delay";
constexpr std::string_view kDate = "Date";
constexpr std::string_view kHour = "Hour";
constexpr std::string_view kFirmware = "Firmware";
constexpr std::string_view kHardware = "Hardware";
constexpr std::string_view kNotes = "Notes";
constexpr std::string_view kDeviceType = "Device Type";

constexpr std::string_view kTriggerWords[] = {"Autotrigger", "External", "Immediate"};

std::string_view trimBlanks(std::string_view s) {
  while (!s.empty() && s.front() == ' ') s.remove_prefix(1);
  while (!s.empty() && s.back() == ' ') s.remove_suffix(1);
  return s;
}


// Text fields go on one line and lose their outer blanks, as reading would take them.
std::string oneLine(std::string_view text) {
  std::string out(text);
  for (char& c : out)
    if (c == '\r' || c == '\n') c = ' ';
  return std::string(trimBlanks(out));
}

// A sample column: five characters, blanks on the right; a longer value stands as it is.
std::string padded(std::string text) {
  if (text.size() < 5) text.append(5 - text.size(), ' ');
  return text;
}

std::string headerLine(std::string_view key, std::string_view value) {
  std::string out(key);
  out += " = ";
  out += value;
  out += kEol;
  return out;
}

}  // namespace

LoadResult cls_SEISMOGRAM::readHeaderLines(std::string_view text, size_t& pos, int& lineNo,
                                           const std::filesystem::path& file) {
  auto fail = [&](std::string reason) {
    logLine(reason);
    return LoadResult::fail(LoadStatus::Partial, {file, lineNo, std::move(reason)});
  };
  auto integer = [&](std::string_view value, int16_t& field) -> bool {
    const auto parsed = tryParseSingle(value);
    const auto v = parsed ? toInt16(static_cast<double>(*parsed)) : std::nullopt;
    if (!v) return false;
    field = *v;
    return true;
  };
  // A number of the header; anything but a finite float ends the read rather than reading as 0.
  std::string_view key, value;
  auto number = [&](float& field) -> bool {
    const auto parsed = tryParseSingle(value);
    if (parsed) field = *parsed;
    return parsed.has_value();
  };
  auto notANumber = [&] { return fail(cp1252ToUtf8(key) + " '" + cp1252ToUtf8(value.substr(0, 40)) + "' is not a number"); };
  auto words = [&](std::string_view pair, int16_t& major, int16_t& minor) -> bool {
    const size_t dash = pair.find('-');
    const std::string_view first = trimBlanks(pair.substr(0, dash));
    const std::string_view second =
        dash == std::string_view::npos ? std::string_view() : trimBlanks(pair.substr(dash + 1));
    return integer(first, major) && integer(second, minor);
  };

  std::string_view line;
  for (;;) {
    if (!nextLine(text, pos, line)) return fail("the file ends inside its header");
    ++lineNo;
    const size_t eq = line.find('=');
    if (eq == std::string_view::npos) break;  // the empty line after the header
    key = trimBlanks(line.substr(0, eq));
    value = trimBlanks(line.substr(eq + 1));

    if (key == kZ || key == kZcenter) {
      if (!number(Z)) return notANumber();
    } else if (key == kWaveType) {
      setWaveType(value);
    } else if (key == kDistG1G2) {
      if (!number(distG1G2)) return notANumber();
    } else if (key == kDistHammer) {
      if (!number(distHammer)) return notANumber();
    } else if (key == kSampleTime) {
      if (!number(sngTcamp)) return notANumber();
    } else if (key == kDelaySampleG2) {
      if (!number(delaySampleG2)) return notANumber();
    } else if (key == kNSamples) {
      // The sample count is 16-bit; a larger one is no file of this program.
      float n = 0;
      if (!number(n)) return notANumber();
      if (n < 0) return fail("negative number of samples");
      const auto count = toInt16(n);
      if (!count) return fail("NSamples '" + cp1252ToUtf8(value.substr(0, 40)) + "' is out of range (at most 32767)");
      setIntN(*count);
    } else if (key == kGain) {
      float gain = 0;
      if (!number(gain)) return notANumber();
      Gain = std::max(gain, 1.0f);
    } else if (key == kTriggerType) {
      for (int16_t t = 0; t < 3; ++t)
        if (value == kTriggerWords[t]) triggerType = t;
    } else if (key == kLoopSamples) {
      if (!integer(value, LoopS)) return fail("loop samples out of range");
    } else if (key == kTriggerSensibility) {
      if (!integer(value, triggerSensibility)) return fail("trigger sensibility out of range");
    } else if (key == kTriggerDelay) {
      if (!integer(value, TrigDelay)) return fail("trigger delay out of range");
    } else if (key == kDate) {
      Data = cp1252ToUtf8(value);
    } else if (key == kHour) {
      hour = cp1252ToUtf8(value);
    } else if (key == kNotes) {
      notes = cp1252ToUtf8(value);
    } else if (key == kFirmware) {
      if (!words(value, firmwareMajor, firmwareMinor)) return fail("firmware words out of range");
    } else if (key == kHardware) {
      if (!words(value, hardwareMajor, hardwareMinor)) return fail("hardware words out of range");
    } else if (key == kDeviceType) {
      if (!integer(value, deviceType)) return fail("device type out of range");
      firmwareMajor = firmwareMinor = hardwareMajor = hardwareMinor = 0;
    }
    // Any other key (and the label "Noise", which no file holds) is passed over.
  }
  // Every time and rate of the elaboration divides by the sample time, and the file keeps it in
  // whole microseconds: below 1 us it is no sample time of this probe.
  if (!(sngTcamp >= 1)) return fail("the sample time is missing or below 1 us");
  return {};
}

// The bytes are read as they stand: keys and numbers are ASCII, and only the texts are taken
// from Windows-1252, so a long damaged file costs no copy of itself.
LoadResult cls_SEISMOGRAM::parseHeader(std::string_view bytes, const std::filesystem::path& file) {
  const std::string_view text = withoutBom(bytes);
  size_t pos = 0;
  int lineNo = 0;
  return readHeaderLines(text, pos, lineNo, file);
}

LoadResult cls_SEISMOGRAM::parseFile(std::string_view bytes, const std::filesystem::path& file) {
  const std::string_view text = withoutBom(bytes);
  size_t pos = 0;
  int lineNo = 0;
  if (LoadResult header = readHeaderLines(text, pos, lineNo, file); !header.complete()) return header;
  if (intN_ <= 0) return LoadResult::fail(LoadStatus::Partial, {file, 0, "the file holds no samples"});

  resetExtremes();
  g1r_.assign(static_cast<size_t>(intN_), 0.0f);
  g2r_.assign(static_cast<size_t>(intN_), 0.0f);

  std::string_view line;
  int i = 0;
  while (nextLine(text, pos, line)) {
    ++lineNo;
    if (trimBlanks(line).empty()) continue;
    if (i >= intN_) {
      tallyRaw(i);
      return LoadResult::fail(LoadStatus::Partial, {file, lineNo, "more sample lines than NSamples"});
    }
    const size_t blank = line.find(' ');
    const std::string_view first = trimBlanks(line.substr(0, blank));
    const std::string_view second =
        blank == std::string_view::npos ? std::string_view() : trimBlanks(line.substr(blank));
    const auto g1 = tryParseSingle(first), g2 = tryParseSingle(second);
    const auto sampleFail = [&](std::string reason) {
      tallyRaw(i);
      return LoadResult::fail(LoadStatus::Partial, {file, lineNo, "sample " + std::to_string(i + 1) + ": " + std::move(reason)});
    };
    // The last sample line without its line end may have lost digits.
    if (pos == text.size() && !endsWithLineEnd(text)) return sampleFail("the file ends early, in the middle of the line");
    if (!g1 || !g2) return sampleFail("not two numbers G1 and G2");
    g1r_[static_cast<size_t>(i)] = *g1;
    g2r_[static_cast<size_t>(i)] = *g2;
    ++i;
  }
  // Lines missing at the end leave zeros that are not counted: the extremes are of what was read.
  tallyRaw(i);
  calcMeansAndVoltage();
  return {};
}

namespace {

// The status the load operations have always returned: 0 read, 1 failed.
int16_t loadStatus(const LoadResult& result, Diagnostic* why) {
  if (result.complete()) return 0;
  if (why) *why = result.why;
  return 1;
}

}  // namespace

int16_t cls_SEISMOGRAM::loadHeaderSeismogram(const std::filesystem::path& path, Diagnostic* why) {
  const auto bytes = readFileBytes(path, why);
  if (!bytes) return 1;
  return loadStatus(parseHeader(*bytes, path), why);
}

int16_t cls_SEISMOGRAM::loadFile(const std::filesystem::path& path, Diagnostic* why) {
  const auto bytes = readFileBytes(path, why);
  if (!bytes) return 1;
  return loadStatus(parseFile(*bytes, path), why);
}

float cls_SEISMOGRAM::loadZ(const std::filesystem::path& path, Diagnostic* why) const {
  const auto bytes = readFileBytes(path, why);
  if (!bytes) return 0;
  const std::string_view text = withoutBom(*bytes);
  size_t pos = 0;
  int lineNo = 0;
  std::string_view line;
  while (nextLine(text, pos, line)) {
    ++lineNo;
    const size_t eq = line.find('=');
    if (eq == std::string_view::npos) continue;
    if (trimBlanks(line.substr(0, eq)) != kZ) continue;
    const std::string_view value = trimBlanks(line.substr(eq + 1));
    if (const auto z = tryParseSingle(value)) return *z;
    if (why) *why = {path, lineNo, std::string(kZ) + " '" + cp1252ToUtf8(value.substr(0, 40)) + "' is not a number"};
    return 0;
  }
  return 0;
}

std::string cls_SEISMOGRAM::fileText() const {
  std::string out;
  out.reserve(400 + static_cast<size_t>(intN_) * 16);
  out += headerLine(kZ, formatNumber(Z, "0.00#"));
  out += headerLine(kWaveType, strWaveType());
  out += headerLine(kDistG1G2, formatNumber(distG1G2, "0.00#"));
  out += headerLine(kDistHammer, formatNumber(distHammer, "0.00"));
  // The blank behind both sample times has always been part of the format.
  out += headerLine(kSampleTime, formatNumber(sngTcamp, "0") + " ");
  // Written when it is not 0 as the file shows it: a fraction that rounds to 0 would read back
  // as an absent line anyway.
  const std::string delayText = formatNumber(delaySampleG2, "0");
  if (parseSingle(delayText) != 0) out += headerLine(kDelaySampleG2, delayText + " ");
  out += headerLine(kNSamples, std::to_string(intN_));
  out += headerLine(kGain, formatNumber(Gain, "0"));
  out += headerLine(kTriggerType, triggerType >= 0 && triggerType < 3 ? kTriggerWords[triggerType] : "");
  if (triggerType == 0) {
    out += headerLine(kLoopSamples, std::to_string(LoopS));
    out += headerLine(kTriggerSensibility, std::to_string(triggerSensibility));
  }
  if (triggerType == 1) out += headerLine(kTriggerDelay, std::to_string(TrigDelay));
  out += headerLine(kDate, oneLine(Data));
  out += headerLine(kHour, oneLine(hour));
  out += headerLine(kFirmware, std::to_string(firmwareMajor) + " - " + std::to_string(firmwareMinor));
  out += headerLine(kHardware, std::to_string(hardwareMajor) + " - " + std::to_string(hardwareMinor));
  const std::string note = oneLine(notes);
  if (!note.empty()) out += headerLine(kNotes, note);
  out += kEol;
  for (size_t i = 0; i < g1r_.size(); ++i) {
    out += padded(formatNumber(g1r_[i], "0.###"));
    out += "   ";
    out += padded(formatNumber(g2r_[i], "0.###"));
    out += kEol;
  }
  return utf8ToCp1252(out);
}

int16_t cls_SEISMOGRAM::saveFile(const std::filesystem::path& path, Diagnostic* why) const {
  return writeFileAtomically(path, fileText(), why) ? 0 : 1;
}

}  // namespace koru
