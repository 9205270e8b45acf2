#pragma once
// 16-bit words on the serial line travel low byte first.

#include <cstdint>
#include <utility>

namespace koru {

// {low byte, high byte}
constexpr std::pair<uint8_t, uint8_t> byteSplit(uint16_t value) {
  return {static_cast<uint8_t>(value & 0xFF), static_cast<uint8_t>(value >> 8)};
}
constexpr uint16_t byteJoin(uint8_t low, uint8_t high) { return static_cast<uint16_t>(low | (high << 8)); }

}  // namespace koru
