#pragma once
// Reads the comma- and line-separated fields of the program's text files one at a time, the
// way the files have always been read: a field ends at a comma or a line end, so it does not
// matter how fields are broken over lines; a field in double quotes may hold commas. Blank
// lines carry no field. CR LF, LF and CR all end a line.

#include <optional>
#include <string>
#include <string_view>

namespace koru {

class InputFields {
 public:
  struct Field {
    std::string text;
    bool quoted = false;
    int line = 0;  // 1-based line where the field starts
    bool startsLine = false;  // no comma before it on its line
    bool endsLine = false;  // a line end or the end of the text follows it, not a comma
    bool cutShort = false;  // the text ends right after it, without a line end
  };

  explicit InputFields(std::string_view text) : text_(text) {}

  // The next field, or nullopt at the end of the text.
  std::optional<Field> next();
  // True when only blanks and line ends remain.
  bool atEnd();
  // The line the reader stands on (1-based).
  int line() const { return line_; }

 private:
  void skipBlanks();
  bool atLineEnd() const;
  void consumeLineEnd();

  std::string_view text_;
  size_t pos_ = 0;
  int line_ = 1;
  bool afterComma_ = false;
};

}  // namespace koru
