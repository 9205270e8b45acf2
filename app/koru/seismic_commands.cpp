#include <ostream>

#include "commands.h"
#include "csv_output.h"
#include "frame/Numbers.h"
#include "seismic/cls_SEISMOGRAM.h"
#include "usage.h"

namespace koru::cli {

namespace {

bool loadRecord(Context& context, const std::string& file, cls_SEISMOGRAM& record) {
  Diagnostic why;
  if (record.loadFile(file, &why) != 0) {
    if (why.file.empty()) why.file = file;
    context.err << why.toString() << '\n';
    return false;
  }
  return true;
}

int seismogramEval(Context& context) {
  std::string file, elab;
  for (size_t i = 0; i < context.args.size(); ++i) {
    if (context.args[i] == "--elab" && i + 1 < context.args.size()) {
      elab = context.args[++i];
    } else if (file.empty() && !context.args[i].empty() && context.args[i][0] != '-') {
      file = context.args[i];
    } else {
      return usageError(context, "seismogram eval");
    }
  }
  if (file.empty()) return usageError(context, "seismogram eval");
  cls_SEISMOGRAM record;
  if (!loadRecord(context, file, record)) return kExitDataError;
  if (elab.empty()) {
    record.setDefaultElabParameters();
  } else if (!record.set_elabString(elab)) {
    context.err << "koru: '" << elab << "' is not an elaboration (filter;window;delay)\n";
    return kExitUsage;
  }
  const bool evaluated = record.evalV();
  context.out << "Z,WaveType,DeltaS,DeltaT,V,iEP1,iEP2,elab\n";
  CsvLine line;
  line.add(record.Z).addText(record.strWaveType()).add(record.DeltaS()).add(record.DeltaT()).addInt(record.V());
  line.addInt(record.iEP1()).addInt(record.iEP2()).addText(record.get_elabString());
  line.writeTo(context.out);
  if (!evaluated) context.err << "koru: " << file << ": no delay found with this elaboration\n";
  return kExitOk;
}

int seismogramShow(Context& context) {
  if (context.args.size() != 1) return usageError(context, "seismogram show");
  cls_SEISMOGRAM record;
  if (!loadRecord(context, context.args[0], record)) return kExitDataError;
  record.calcMeansAndVoltage();
  auto& out = context.out;
  static const char* kTriggers[] = {"Autotrigger", "External", "Immediate"};
  out << "Wave: " << record.strWaveType() << '\n';
  out << "Z: " << formatNumber(record.Z, "0.00#") << " m\n";
  out << "Date: " << record.Data << "  " << record.hour << '\n';
  out << "Notes: " << record.notes << '\n';
  out << "Samples: " << record.intN() << " at " << formatNumber(record.sngTcamp, "") << " us\n";
  out << "Receivers: " << formatNumber(record.distG1G2, "0.00#") << " m apart, hammer at "
      << formatNumber(record.distHammer, "0.00#") << " m\n";
  out << "Trigger: "
      << (record.triggerType >= 0 && record.triggerType <= 2 ? kTriggers[record.triggerType] : "unknown")
      << ", sensibility " << record.triggerSensibility << ", loop samples " << record.LoopS << ", delay step "
      << record.TrigDelay << '\n';
  out << "Gain: " << formatNumber(record.Gain, "") << '\n';
  out << "Firmware: " << record.firmwareMajor << "." << record.firmwareMinor << ", hardware "
      << record.hardwareMajor << "." << record.hardwareMinor << '\n';
  out << "Channel 1: mean " << formatNumber(record.mediaG1r, "0.00") << ", min " << formatNumber(record.minG1R(), "0")
      << ", max " << formatNumber(record.maxG1R(), "0") << " counts\n";
  out << "Channel 2: mean " << formatNumber(record.mediaG2r, "0.00") << ", min " << formatNumber(record.minG2R(), "0")
      << ", max " << formatNumber(record.maxG2R(), "0") << " counts\n";
  out << "Scale: " << formatNumber(record.K4mV, "0.0###") << " mV per count, traces to "
      << formatNumber(record.maxmVr, "") << " mV\n";
  return kExitOk;
}

}  // namespace

int runSeismogramCommand(Context& context) {
  return runGroup(context, "seismogram", {{"eval", seismogramEval}, {"show", seismogramShow}});
}

}  // namespace koru::cli
