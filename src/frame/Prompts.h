#pragma once
// What the program asks of the platform to talk to the user: a message box, an input box and the
// beep. The logic never opens a window itself; it is handed a Prompts and waits for the answer,
// so the same workflow runs under the desktop windows, a console or a test script.
//
// The button sets and the answers keep the numbers of the classic message box, because the
// workflows compare answers with them (Yes = 6, No = 7) and combine an icon with a button set
// by addition (kYesNo + kQuestion).

#include <optional>
#include <string>
#include <string_view>

namespace koru {

namespace msgbox {

// Button sets.
inline constexpr int kOkOnly = 0;
inline constexpr int kOkCancel = 1;
inline constexpr int kAbortRetryIgnore = 2;
inline constexpr int kYesNoCancel = 3;
inline constexpr int kYesNo = 4;
inline constexpr int kRetryCancel = 5;
inline constexpr int kButtonsMask = 7;

// Icons, added to a button set.
inline constexpr int kCritical = 16;
inline constexpr int kQuestion = 32;
inline constexpr int kExclamation = 48;
inline constexpr int kInformation = 64;
inline constexpr int kIconMask = 112;

// Answers.
inline constexpr int kOk = 1;
inline constexpr int kCancel = 2;
inline constexpr int kAbort = 3;
inline constexpr int kRetry = 4;
inline constexpr int kIgnore = 5;
inline constexpr int kYes = 6;
inline constexpr int kNo = 7;

}  // namespace msgbox

class Prompts {
 public:
  virtual ~Prompts() = default;

  // Shows `text` (UTF-8, lines separated by CR LF) with a button set and icon from msgbox and
  // returns the answer pressed. An empty title stands for the program's own name.
  virtual int showMessage(std::string_view text, int buttons, std::string_view title) = 0;

  // Asks for one line of text, offering `defaultText`; nullopt when the user cancels.
  virtual std::optional<std::string> inputBox(std::string_view prompt, std::string_view title,
                                              std::string_view defaultText) = 0;

  virtual void beep() = 0;
};

}  // namespace koru
