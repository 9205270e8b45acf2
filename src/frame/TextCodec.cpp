#include "frame/TextCodec.h"

#include <array>
#include <cstdint>

namespace koru {

namespace {

// Code points of bytes 0x80..0x9F; 0 marks the five bytes the code page leaves undefined, which
// are kept as the C1 control of the same number so that no byte is lost.
constexpr std::array<uint16_t, 32> kHigh = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

void appendUtf8(std::string& out, uint32_t cp) {
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
}

int byteFor(uint32_t cp) {
  if (cp < 0x80 || (cp >= 0xA0 && cp <= 0xFF)) return static_cast<int>(cp);
  for (size_t i = 0; i < kHigh.size(); ++i)
    if ((kHigh[i] != 0 && kHigh[i] == cp) || (kHigh[i] == 0 && cp == 0x80 + i)) return static_cast<int>(0x80 + i);
  return -1;
}

// The character of UTF-8 text that starts at byte `i`: its Windows-1252 byte (-1 when the code
// page has none, or the text is not UTF-8 there) and how many bytes it takes (1 for a broken one).
struct Decoded {
  int byte;
  size_t length;
};

Decoded decodeAt(std::string_view text, size_t i) {
  const auto c = static_cast<unsigned char>(text[i]);
  uint32_t cp;
  size_t len;
  if (c < 0x80) {
    cp = c, len = 1;
  } else if ((c & 0xE0) == 0xC0) {
    cp = c & 0x1F, len = 2;
  } else if ((c & 0xF0) == 0xE0) {
    cp = c & 0x0F, len = 3;
  } else if ((c & 0xF8) == 0xF0) {
    cp = c & 0x07, len = 4;
  } else {
    return {-1, 1};
  }
  if (i + len > text.size()) return {-1, 1};
  for (size_t k = 1; k < len; ++k) {
    const auto cc = static_cast<unsigned char>(text[i + k]);
    if ((cc & 0xC0) != 0x80) return {-1, 1};
    cp = (cp << 6) | (cc & 0x3F);
  }
  return {byteFor(cp), len};
}

}  // namespace

std::string cp1252ToUtf8(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size());
  for (unsigned char b : bytes) {
    if (b < 0x80) {
      out += static_cast<char>(b);
    } else if (b < 0xA0) {
      uint16_t cp = kHigh[b - 0x80];
      appendUtf8(out, cp != 0 ? cp : b);
    } else {
      appendUtf8(out, b);
    }
  }
  return out;
}

std::string utf8ToCp1252(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size();) {
    const Decoded d = decodeAt(text, i);
    out += d.byte >= 0 ? static_cast<char>(d.byte) : '?';
    i += d.length;
  }
  return out;
}

std::optional<std::string_view> firstUnstorable(std::string_view text) {
  for (size_t i = 0; i < text.size();) {
    const Decoded d = decodeAt(text, i);
    if (d.byte < 0) return text.substr(i, d.length);
    i += d.length;
  }
  return std::nullopt;
}

}  // namespace koru
