#include "frame/InputFields.h"

namespace koru {

void InputFields::skipBlanks() {
  while (pos_ < text_.size() && (text_[pos_] == ' ' || text_[pos_] == '\t')) ++pos_;
}

bool InputFields::atLineEnd() const { return pos_ < text_.size() && (text_[pos_] == '\r' || text_[pos_] == '\n'); }

void InputFields::consumeLineEnd() {
  if (pos_ < text_.size() && text_[pos_] == '\r') ++pos_;
  if (pos_ < text_.size() && text_[pos_] == '\n') ++pos_;
  ++line_;
}

bool InputFields::atEnd() {
  for (;;) {
    skipBlanks();
    if (pos_ >= text_.size()) return true;
    if (afterComma_ || !atLineEnd()) return false;
    consumeLineEnd();
  }
}

std::optional<InputFields::Field> InputFields::next() {
  if (atEnd() && !afterComma_) return std::nullopt;
  Field field;
  field.line = line_;
  field.startsLine = !afterComma_;
  afterComma_ = false;
  skipBlanks();
  if (pos_ < text_.size() && text_[pos_] == '"') {
    field.quoted = true;
    ++pos_;
    size_t close = text_.find('"', pos_);
    if (close == std::string_view::npos) close = text_.size();
    std::string_view inner = text_.substr(pos_, close - pos_);
    for (size_t i = 0; i < inner.size(); ++i)
      if (inner[i] == '\n' || (inner[i] == '\r' && (i + 1 == inner.size() || inner[i + 1] != '\n'))) ++line_;
    field.text.assign(inner);
    pos_ = close < text_.size() ? close + 1 : close;
    // Whatever stands between the closing quote and the delimiter is passed over.
    while (pos_ < text_.size() && text_[pos_] != ',' && !atLineEnd()) ++pos_;
  } else {
    size_t start = pos_;
    while (pos_ < text_.size() && text_[pos_] != ',' && !atLineEnd()) ++pos_;
    std::string_view raw = text_.substr(start, pos_ - start);
    while (!raw.empty() && (raw.back() == ' ' || raw.back() == '\t')) raw.remove_suffix(1);
    field.text.assign(raw);
  }
  if (pos_ < text_.size() && text_[pos_] == ',') {
    ++pos_;
    afterComma_ = true;
  } else if (atLineEnd()) {
    field.endsLine = true;
    consumeLineEnd();
  } else {
    field.endsLine = true;
    field.cutShort = true;
  }
  return field;
}

}  // namespace koru
