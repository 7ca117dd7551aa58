#pragma once
// The byte layouts of the console's answers, after the public "Vantage Pro
// and Vantage Pro2 Serial Communication Reference Manual":
//
// LOOP packet, 99 bytes, words little-endian, CRC big-endian:
//   0 "LOO"  3 'P' or barometric trend  4 type 0  5 next archive record (2)
//   7 barometer inHg/1000 (2)  9 inside temp F/10 (2)  11 inside humidity
//   12 outside temp F/10 (2, 0x7FFF none)  14 wind mph  15 10-min avg wind mph
//   16 wind direction (2)  18-24 extra temps F+90  25-28 soil temps
//   29-32 leaf temps  33 outside humidity  34-40 extra humidities
//   41 rain rate clicks/h (2)  43 UV  44 solar W/m2 (2, 0x7FFF none)
//   46 storm rain (2)  48 storm start date (2)  50/52/54 day/month/year rain (2)
//   56 day ET (2)  58/60 month/year ET (2)  62-65 soil moistures
//   66-69 leaf wetnesses  70-85 alarm bits  86 transmitter battery
//   87 console battery (2)  89 forecast icons  90 forecast rule
//   91/93 sunrise/sunset (2)  95 LF  96 CR  97-98 CRC
// Single-byte sensors that are missing read 0xFF.
//
// HILOWS: 436 data bytes + CRC. Filled here: the barometer section
// (0 day low, 2 day high, 4 month low, 6 month high, 8 year low, 10 year high,
// 12/14 times of the day low/high) and the wind section (16 day high mph,
// 17 its time, 19 month high, 20 year high). The other sections read 0xFF,
// the console's "no value".
//
// Console time (GETTIME answer, SETTIME data): seconds, minutes, hour, day,
// month, year - 1900, then the CRC.

#include <array>
#include <cstdint>
#include <optional>
#include <span>

#include "core/clock.h"
#include "tools/vantage_sim/console_reading.h"

namespace nimbrel::sim {

inline constexpr std::size_t kLoopPacketSize = 99;
inline constexpr std::size_t kHilowsDataSize = 436;
inline constexpr std::size_t kHilowsSize = kHilowsDataSize + 2;
inline constexpr std::size_t kConsoleTimeSize = 8;

inline constexpr std::int16_t kNoWordSensor = 0x7FFF;
inline constexpr std::uint8_t kNoByteSensor = 0xFF;
inline constexpr std::uint16_t kNoStormDate = 0xFFFF;

using LoopPacket = std::array<std::uint8_t, kLoopPacketSize>;
using HilowsBlock = std::array<std::uint8_t, kHilowsSize>;
using ConsoleTimeBytes = std::array<std::uint8_t, kConsoleTimeSize>;

// `revb` on: byte 3 carries the barometric trend; off: byte 3 is 'P' ("LOOP").
LoopPacket encodeLoopPacket(const ConsoleReading& reading, bool revb);

HilowsBlock encodeHilows(const ConsoleHighsLows& highsLows);

// Bits 15-12 month, 11-7 day, 6-0 year - 2000.
std::uint16_t packStormDate(const CalendarDate& date);

ConsoleTimeBytes encodeConsoleTime(const LocalTime& time);
// The time in 8 received bytes; empty when the CRC or a field is wrong.
std::optional<LocalTime> decodeConsoleTime(std::span<const std::uint8_t> bytes);

// Writes the CRC of data[0, size - 2) into the last two bytes, high byte first.
void appendCrc(std::span<std::uint8_t> data);

}  // namespace nimbrel::sim
