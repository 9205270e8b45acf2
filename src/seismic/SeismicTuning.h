#pragma once
// What the three tuning dialogues of one seismogram do, without the windows: each control
// changes one elaboration setting and runs the evaluation again, so the user sees the velocity
// move at once. A dialogue holds one SeismicTuning for the record it was handed:
//   filter dialogue:  openFiltering, selectFilter, setSlider
//   window dialogue:  openWindowing, selectAutomatic, selectManual, leaveT1, leaveT2
//   delay dialogue:   openRephase, selectRephaseMode, typeDelay, moveLeft, moveRight
// and ok() or cancel() when it closes. Texts are what the dialogue shows.
//
// It also gives the filter list that the dialogue applying one filter to many seismograms shows.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "seismic/cls_SEISMOGRAM.h"

namespace koru {

class ProgramStrings;

class SeismicTuning {
 public:
  // Remembers the record's settings, to put them back on cancel.
  explicit SeismicTuning(cls_SEISMOGRAM& seism);

  cls_SEISMOGRAM& seism() { return *seism_; }

  bool blnButtonCancelOk = false;
  void ok() { blnButtonCancelOk = true; }
  // Restores the settings of the opening and evaluates again.
  void cancel();

  // evalV, then the velocity as shown ("0").
  int16_t reeval();
  std::string velocityText() const;

  // ---- Filters ----
  // Entries of the filter lists: codes 2, 3, 4, 5, 6 at list indices 0 to 4.
  static std::vector<std::string> filterList(const ProgramStrings& strings);
  static int16_t filterCodeOfListIndex(int index) { return static_cast<int16_t>(index + 2); }

  int filterListIndex = 0;
  bool frequencyFrameVisible = true;
  int sliderValue = 180;
  std::string sliderLabel() const { return std::to_string(sliderValue); }
  static constexpr std::string_view kSliderCaption = "Fc = ";

  void openFiltering();
  // A filter chosen in the list: codes 2 to 5 put the slider at 180 Hz; "none" hides it.
  void selectFilter(int listIndex);
  void setSlider(int hz);

  // ---- Window ----
  bool automatic = true;
  bool fieldsLocked = true;
  std::string t1Text, t2Text;  // ms, "0.0"

  void openWindowing();
  void selectAutomatic();
  void selectManual();
  // A field left by the user: a number within 0 .. maxTf / 1000 is taken (true); anything else
  // puts the earlier text back (false).
  bool leaveT1(std::string_view text);
  bool leaveT2(std::string_view text);

  // ---- Delay ----
  static std::vector<std::string> rephaseModes() { return {"cross-correlation algorythm", "manual"}; }
  int rephaseModeIndex = 0;
  bool manualFrameVisible = false;
  bool delayFieldLocked = true;
  std::string delayText = "0.0000";

  void openRephase();
  void selectRephaseMode(int index);
  // A delay typed in the field, ms; false (nothing changed) if it is not a number.
  bool typeDelay(std::string_view text);
  // The arrow buttons: left adds 0.01 ms to the delay, right takes 0.01 ms off.
  void moveLeft();
  void moveRight();

 private:
  void rebuildFilter();
  void showInterval();
  void setManualDelay(double ms);
  bool leaveField(std::string_view text, std::string& field, bool low);

  cls_SEISMOGRAM* seism_;
  std::string savedElab_;
};

}  // namespace koru
