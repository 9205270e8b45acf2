#pragma once
// One recorded hammer strike: two receiver channels sampled at the same instants (G1 the upper
// receiver, G2 the lower one), the acquisition settings under which they were taken, the
// settings of its elaboration and what the elaboration found.
//
// A record is short-lived: a window loads one from its ".kor" file, elaborates it and drops it.
// Only what acquisition produced is written back to the file; the elaboration settings travel
// as the elab string, which the test's index keeps (filter;window;delay, e.g. "5,180;4;0,0").
//
// Nothing here throws. Load and save report a status (0 done, 1 failed) and, if asked, a
// Diagnostic saying why; an elaboration that cannot run leaves the record without a delay.
//
// The four sample arrays always hold exactly intN() samples.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/Diagnostic.h"
#include "frame/LoadResult.h"
#include "seismic/cls_Semionda.h"

namespace koru {

class ProgramStrings;

class cls_SEISMOGRAM {
 public:
  // ---- Acquisition settings -------------------------------------------------------------------
  float distG1G2 = 0;       // distance between the two receivers, m
  float distHammer = 0;     // sounding to hammer plate, m
  float delaySampleG2 = 0;  // lag of channel 2's sample behind channel 1's, us
  int16_t triggerType = 0;  // 0 "Autotrigger", 1 "External", 2 "Immediate"
  int16_t triggerSensibility = 0;
  int16_t deviceType = 0;  // files of older versions only (reference voltage)
  std::string hour;
  std::string notes;
  int16_t firmwareMajor = 0, firmwareMinor = 0, hardwareMajor = 0, hardwareMinor = 0;
  float Z = 0;              // depth of the midpoint between the receivers, m
  float sngTcamp = 0;       // sample time, us
  float Gain = 1;           // amplifier gain; never below 1 after a load
  int16_t LoopS = 0;        // loop samples (trigger type 0)
  int16_t TrigDelay = 0;    // trigger delay step (trigger type 1)
  std::string Data;         // date of acquisition, as typed
  int32_t intWaveType = 0;  // 0 shear wave ("Vs"), 1 compression wave ("Vp")

  // The probe line of the surface box in use (its firmware number): 30 and above is the current
  // line, whose trigger delay steps are 1 ms; older boxes step 943.79 us. Set by the caller from
  // the program-wide state; the time axis (TMin) depends on it.
  int16_t intProbeLine = 30;

  // ---- Elaboration settings (parameters kept as the text they were given in) ------------------
  int16_t filterCode = 6;
  std::vector<std::string> filterParams;  // cut frequency, Hz
  int16_t windowCode = 0;
  std::vector<std::string> windowParams;  // first and last sample index of the interval
  int32_t rephaseCode = -1;
  std::vector<std::string> rephaseParams;  // manual delay, ms (code 3)

  cls_SEISMOGRAM();

  // ---- Length and arrays ----------------------------------------------------------------------
  int16_t intN() const { return intN_; }
  // Sizes all four arrays to n samples (zeros) and resets the extremes. Negative n gives 0.
  void setIntN(int n);

  std::vector<float> vG1r() const { return g1r_; }
  std::vector<float> vG2r() const { return g2r_; }
  std::vector<float> vG1f() const { return g1f_; }
  std::vector<float> vG2f() const { return g2f_; }
  // The de-meaned filtered channels between iEP1 and iEP2 inclusive (after evalV).
  std::vector<float> vG1cc() const;
  std::vector<float> vG2cc() const;
  // Whole raw channels; the copy is cut or padded with zeros to intN samples. Sums and extremes
  // are not touched: prepareForEvalv follows.
  void set_vG1r(const std::vector<float>& v);
  void set_vG2r(const std::vector<float>& v);

  // One raw sample at i, kept in the channel's running sum and, past the start samples, in its
  // extremes. False (nothing stored) when i is outside 0..intN-1.
  bool storeG1(float value, int i);
  bool storeG2(float value, int i);
  // Samples at the start of a trace left out of the extremes (trigger pulse, filter start).
  int32_t startupSamples() const;
  void resetExtremes();
  void prepareForEvalv();
  void calcMeansAndVoltage();

  // ---- File -----------------------------------------------------------------------------------
  // The bytes of a ".kor" file, whole or its header only; `file` names it in the diagnostic.
  // Complete, or Partial: what was read before the fault stays in the record.
  LoadResult parseFile(std::string_view bytes, const std::filesystem::path& file);
  LoadResult parseHeader(std::string_view bytes, const std::filesystem::path& file);
  // The same from disk: 0 read, 1 failed (what was read so far stays in the record).
  int16_t loadFile(const std::filesystem::path& path, Diagnostic* why = nullptr);
  int16_t loadHeaderSeismogram(const std::filesystem::path& path, Diagnostic* why = nullptr);
  // The depth written on a file's "Z [m]" line, without touching the record; 0 if none.
  float loadZ(const std::filesystem::path& path, Diagnostic* why = nullptr) const;
  // 0 written (atomically), 1 failed.
  int16_t saveFile(const std::filesystem::path& path, Diagnostic* why = nullptr) const;
  // The whole file text as saveFile writes it (Windows-1252 bytes, CR LF lines).
  std::string fileText() const;

  // ---- Wave type ------------------------------------------------------------------------------
  std::string strWaveType() const { return intWaveType == 1 ? "Vp" : "Vs"; }

  // ---- Elab string ----------------------------------------------------------------------------
  std::string get_elabString() const;
  // False when a stage could not be read; the stages before it are set. Empty text: no change.
  bool set_elabString(std::string_view text);
  // The filter stage as a label for tables.
  std::string returnElabString(const ProgramStrings& strings) const;

  // ---- Default settings -----------------------------------------------------------------------
  void setDefaultElabParameters();
  void setDefaultElabParametersVs();
  void setDefaultElabParametersVsPseudo();
  void setDefaultElabParametersVp();
  void setNoiseParameters();
  void setSismElabParametersTemplate(int16_t filterCode, float cut, int16_t windowCode, int first, int last,
                                     int32_t rephaseCode, float delay);

  // ---- Filter stage ---------------------------------------------------------------------------
  void filterSeismogramManager();
  void setFilter(int16_t code, float fc);
  // Window interval in ms from the start of the trace (TMin not counted).
  float cutLow_ms();
  float cutHigh_ms();
  void set_cutLow_ms(float ms);
  void set_cutHigh_ms(float ms);
  // Stacks another strike of the same length onto this one. False if the lengths differ.
  bool addTracks(const cls_SEISMOGRAM& other);

  // ---- Evaluation -----------------------------------------------------------------------------
  // Filter, window and delay stage, in that order. False if a stage could not run (no delay).
  bool evalV();
  float DeltaS() const;
  float DeltaT() const;
  void setDeltaT(float ms);
  int16_t V() const;
  float ZSensor(int channel) const;
  float rawDelay() const { return rawDelay_; }
  float Evaluate_Frequency(int channel) const;
  int32_t iEP1() const { return iEP1_; }
  int32_t iEP2() const { return iEP2_; }
  // Windowed and up-sampled traces of the last evalV, and the half waves the window kept.
  const std::vector<float>& windowedG1() const { return g1w_; }
  const std::vector<float>& windowedG2() const { return g2w_; }
  int32_t nWindowed() const { return static_cast<int32_t>(g1w_.size()); }
  int16_t upFactor() const { return upFactor_; }
  float upStep() const { return upStep_; }
  const std::optional<std::vector<cls_Semionda>>& halfWavesG1() const { return halfWavesG1_; }
  const std::optional<std::vector<cls_Semionda>>& halfWavesG2() const { return halfWavesG2_; }
  // The half waves of a channel's filtered trace (nullopt for a trace without samples).
  std::optional<std::vector<cls_Semionda>> splitHalfWaves(int channel) const;

  // ---- Time axis (us) -------------------------------------------------------------------------
  float TMin() const;
  float TMax() const;
  std::vector<float> vect() const;
  float vTi(int i) const;
  int32_t returnIndexTvec(float t) const;
  float minTr() const { return 0; }
  float maxTr() const;
  float minTf() const { return 0; }
  float maxTf() const;
  float minTcc() const { return 0; }
  float maxTcc() const;

  // ---- Means, extremes, scale -----------------------------------------------------------------
  float mediaG1r = 0, mediaG2r = 0, mediaG1f = 0, mediaG2f = 0;
  float K4mV = 0;
  float maxmVr = 0, maxmVf = 0;
  float maxG1R() const { return maxG1r_; }
  float minG1R() const { return minG1r_; }
  float maxG2R() const { return maxG2r_; }
  float minG2R() const { return minG2r_; }
  float maxG1F() const { return maxG1f_; }
  float minG1F() const { return minG1f_; }
  float maxG2F() const { return maxG2f_; }
  float minG2F() const { return minG2f_; }
  int32_t iMaxG1F() const { return iMaxG1f_; }
  int32_t iMinG1F() const { return iMinG1f_; }
  int32_t iMaxG2F() const { return iMaxG2f_; }
  int32_t iMinG2F() const { return iMinG2f_; }
  double sumG1R() const { return sumG1r_; }
  double sumG2R() const { return sumG2r_; }
  double sumG1F() const { return sumG1f_; }
  double sumG2F() const { return sumG2f_; }
  float maxGr() const;
  float deltaGr() const;
  float maxGf() const;
  float minGf() const;
  float maxGrPseudo(int channel, float amplification) const;
  float maxGfPseudo(int channel, float amplification) const;

  // Two significant digits (the mV scales of the plots); 0 for what is not positive.
  static float round2(double x);

  // ---- Gain ladder ----------------------------------------------------------------------------
  static float setClosestLowerGain(float g);
  float bestGainCoefficient() const;
  float bestAssignableGain() const;

  // ---- Channel operations ---------------------------------------------------------------------
  void cloneSeismogram(const cls_SEISMOGRAM& other);
  // Channels are 1 or 2. Another number: false, `message` says "Incorrect Source" or
  // "Incorrect Destination", and an empty (zero) channel is used.
  bool moveTrace(int source, int destination, std::string* message = nullptr);
  bool copyTrace(const cls_SEISMOGRAM& other, int source, int destination, std::string* message = nullptr);
  void invertChannel2();

 private:
  // "Vp" is a compression wave; any other word a shear wave.
  void setWaveType(std::string_view word) { intWaveType = word == "Vp" ? 1 : 0; }
  LoadResult readHeaderLines(std::string_view text, size_t& pos, int& lineNo, const std::filesystem::path& file);
  // Raw samples 0..count-1 of both channels into their running sums and, past the start samples,
  // their extremes.
  void tallyRaw(int count);
  void storeSample(std::vector<float>& v, double& sum, float& mn, float& mx, float value, int i);
  void resetFilteredExtremes();
  bool filterStage();
  bool windowStage();
  bool delayStage();
  void applyInterval(int first, int last);
  void fixInterval();
  void keepMainHalfWave(std::vector<cls_Semionda>& list, int channel) const;
  void firstArrival();
  void upSample();
  int32_t searchLag(int64_t low, int64_t high, double ds, double vmin) const;
  const std::vector<float>& filtered(int channel) const { return channel == 1 ? g1f_ : g2f_; }
  float filteredMean(int channel) const { return channel == 1 ? mediaG1f : mediaG2f; }

  int16_t intN_ = 0;
  std::vector<float> g1r_, g2r_, g1f_, g2f_;
  double sumG1r_ = 0, sumG2r_ = 0, sumG1f_ = 0, sumG2f_ = 0;
  float minG1r_ = 255, maxG1r_ = 0, minG2r_ = 255, maxG2r_ = 0;
  float minG1f_ = 100000, maxG1f_ = -100000, minG2f_ = 100000, maxG2f_ = -100000;
  int32_t iMinG1f_ = 0, iMaxG1f_ = 0, iMinG2f_ = 0, iMaxG2f_ = 0;

  float rawDelay_ = -1000;  // ms; -1000: no delay
  int32_t iEP1_ = 0, iEP2_ = -1;
  std::vector<float> g1w_, g2w_;
  std::vector<double> g1up_, g2up_;  // Single values, held in doubles for the lag search
  int16_t upFactor_ = 0;
  float upStep_ = 0;
  std::optional<std::vector<cls_Semionda>> halfWavesG1_, halfWavesG2_;
};

}  // namespace koru
