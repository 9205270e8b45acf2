#pragma once
// Prompts of the command line: messages go to stderr, questions take their default answer, as
// nobody sits at a batch run to answer them.

#include <iostream>

#include "frame/Prompts.h"

namespace koru::cli {

class ConsolePrompts : public Prompts {
 public:
  explicit ConsolePrompts(std::ostream& err) : err_(err) {}
  int showMessage(std::string_view text, int buttons, std::string_view title) override {
    err_ << "koru: ";
    if (!title.empty()) err_ << title << ": ";
    for (char c : text)
      if (c != '\r') err_ << c;
    err_ << '\n';
    switch (buttons & msgbox::kButtonsMask) {
      case msgbox::kOkCancel: return msgbox::kOk;
      case msgbox::kAbortRetryIgnore: return msgbox::kAbort;
      case msgbox::kYesNoCancel:
      case msgbox::kYesNo: return msgbox::kYes;
      case msgbox::kRetryCancel: return msgbox::kCancel;
      default: return msgbox::kOk;
    }
  }
  std::optional<std::string> inputBox(std::string_view, std::string_view, std::string_view defaultText) override {
    return std::string(defaultText);
  }
  void beep() override {}

 private:
  std::ostream& err_;
};

}  // namespace koru::cli
