#include "seismic/SeismicTuning.h"

#include "frame/Numbers.h"
#include "frame/strings/StringTable.h"
#include "frame/strings/StringIds.h"

namespace koru {

SeismicTuning::SeismicTuning(cls_SEISMOGRAM& seism) : seism_(&seism), savedElab_(seism.get_elabString()) {}

void SeismicTuning::cancel() {
  seism_->set_elabString(savedElab_);
  blnButtonCancelOk = false;
  reeval();
}

int16_t SeismicTuning::reeval() {
  seism_->evalV();
  return seism_->V();
}

std::string SeismicTuning::velocityText() const { return formatNumber(static_cast<double>(seism_->V()), "0"); }

// ---- Filters ----------------------------------------------------------------------------------

std::vector<std::string> SeismicTuning::filterList(const ProgramStrings& strings) {
  const std::string& order = strings.getString(kStrFilterOrder);
  return {strings.getString(kStrFilterLowPass) + " (" + order + " 1)",
          strings.getString(kStrFilterLowPass) + " (" + order + " 2)",
          strings.getString(kStrFilterBessel) + " (" + order + " 4)",
          strings.getString(kStrFilterButterworth) + " (" + order + " 4)", strings.getString(kStrFilterNone)};
}

void SeismicTuning::openFiltering() {
  const int16_t code = seism_->filterCode;
  // The fixed 180 Hz codes and an immediate trigger (noise) open on the first entry.
  filterListIndex = (code == 2 || seism_->triggerType == 2 || code < 2 || code > 6) ? 0 : code - 2;
  sliderValue = 180;
  if (code >= 2 && code <= 5 && !seism_->filterParams.empty())
    sliderValue = static_cast<int>(roundHalfEven(parseSingle(seism_->filterParams.front())));
  frequencyFrameVisible = filterCodeOfListIndex(filterListIndex) != 6;
  reeval();
}

void SeismicTuning::selectFilter(int listIndex) {
  if (listIndex < 0 || listIndex > 4) return;
  filterListIndex = listIndex;
  frequencyFrameVisible = filterCodeOfListIndex(listIndex) != 6;
  if (frequencyFrameVisible) sliderValue = 180;
  rebuildFilter();
}

void SeismicTuning::setSlider(int hz) {
  sliderValue = hz;
  rebuildFilter();
}

void SeismicTuning::rebuildFilter() {
  const int16_t code = filterCodeOfListIndex(filterListIndex);
  seism_->filterCode = code;
  if (code == 6)
    seism_->filterParams = {};
  else
    seism_->filterParams = {sliderLabel()};
  reeval();
}

// ---- Window -----------------------------------------------------------------------------------

void SeismicTuning::showInterval() {
  t1Text = formatNumber(seism_->cutLow_ms(), "0.0");
  t2Text = formatNumber(seism_->cutHigh_ms(), "0.0");
}

void SeismicTuning::openWindowing() {
  if (seism_->windowCode >= 3) {
    selectAutomatic();
  } else {
    automatic = false;
    fieldsLocked = false;
    reeval();
    showInterval();
  }
}

void SeismicTuning::selectAutomatic() {
  automatic = true;
  fieldsLocked = true;
  seism_->windowCode = seism_->intWaveType == 1 ? 5 : 4;
  reeval();
  showInterval();
}

void SeismicTuning::selectManual() {
  automatic = false;
  fieldsLocked = false;
}

bool SeismicTuning::leaveField(std::string_view text, std::string& field, bool low) {
  const auto value = tryParseSingle(text);
  if (!value || *value < 0 || *value > seism_->maxTf() / 1000.0f) return false;  // the earlier text stays
  if (low)
    seism_->set_cutLow_ms(*value);
  else
    seism_->set_cutHigh_ms(*value);
  field = formatNumber(*value, "0.0");
  reeval();
  return true;
}

bool SeismicTuning::leaveT1(std::string_view text) { return !fieldsLocked && leaveField(text, t1Text, true); }
bool SeismicTuning::leaveT2(std::string_view text) { return !fieldsLocked && leaveField(text, t2Text, false); }

// ---- Delay ------------------------------------------------------------------------------------

void SeismicTuning::openRephase() {
  rephaseModeIndex = seism_->rephaseCode == 3 ? 1 : 0;
  manualFrameVisible = rephaseModeIndex == 1;
  delayFieldLocked = rephaseModeIndex == 0;
  reeval();
  delayText = formatNumber(seism_->DeltaT(), "0.0000");
}

void SeismicTuning::selectRephaseMode(int index) {
  if (index == 0) {
    rephaseModeIndex = 0;
    manualFrameVisible = false;
    delayFieldLocked = true;
    seism_->rephaseCode = 0;
    reeval();
    delayText = formatNumber(seism_->DeltaT(), "0.0000");
  } else if (index == 1) {
    rephaseModeIndex = 1;
    manualFrameVisible = true;
    delayFieldLocked = false;
    setManualDelay(parseSingle(delayText));
  }
}

void SeismicTuning::setManualDelay(double ms) {
  seism_->rephaseCode = 3;
  seism_->rephaseParams = {formatNumber(ms, "0.0000####")};
  reeval();
  delayText = formatNumber(seism_->DeltaT(), "0.0000");
}

bool SeismicTuning::typeDelay(std::string_view text) {
  if (delayFieldLocked) return false;
  const auto value = tryParseSingle(text);
  if (!value) return false;
  setManualDelay(*value);
  delayText = formatNumber(*value, "0.0000####");
  return true;
}

void SeismicTuning::moveLeft() {
  if (rephaseModeIndex == 1) setManualDelay(static_cast<double>(parseSingle(delayText)) + 0.01);
}

void SeismicTuning::moveRight() {
  if (rephaseModeIndex == 1) setManualDelay(static_cast<double>(parseSingle(delayText)) - 0.01);
}

}  // namespace koru
