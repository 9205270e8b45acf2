#pragma once
// Prompts for tests: records every message, input box and beep, and answers from a script
// written by the test. An unscripted message box answers with the first button of its set (OK,
// Abort, Yes or Retry) and an unscripted input box takes its default, as a user pressing Enter.

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/Prompts.h"

namespace koru::testing {

class ScriptedPrompts : public Prompts {
 public:
  struct Message {
    std::string text;
    int buttons = 0;
    std::string title;
  };
  struct Input {
    std::string prompt;
    std::string title;
    std::string defaultText;
  };

  std::vector<Message> messages;
  std::vector<Input> inputs;
  int beeps = 0;

  // Answers to hand out, first in first out.
  std::deque<int> answers;
  std::deque<std::optional<std::string>> inputAnswers;

  int showMessage(std::string_view text, int buttons, std::string_view title) override {
    messages.push_back({std::string(text), buttons, std::string(title)});
    if (!answers.empty()) {
      int answer = answers.front();
      answers.pop_front();
      return answer;
    }
    return firstButton(buttons);
  }

  std::optional<std::string> inputBox(std::string_view prompt, std::string_view title,
                                      std::string_view defaultText) override {
    inputs.push_back({std::string(prompt), std::string(title), std::string(defaultText)});
    if (!inputAnswers.empty()) {
      auto answer = inputAnswers.front();
      inputAnswers.pop_front();
      return answer;
    }
    return std::string(defaultText);
  }

  void beep() override { ++beeps; }

  static int firstButton(int buttons) {
    switch (buttons & msgbox::kButtonsMask) {
      case msgbox::kAbortRetryIgnore: return msgbox::kAbort;
      case msgbox::kYesNoCancel:
      case msgbox::kYesNo: return msgbox::kYes;
      case msgbox::kRetryCancel: return msgbox::kRetry;
      default: return msgbox::kOk;
    }
  }
};

}  // namespace koru::testing
