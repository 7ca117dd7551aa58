#include "tools/vantage_sim/loop_packet.h"

#include <algorithm>

#include "stations/crc_ccitt.h"

namespace nimbrel::sim {
namespace {

// Little-endian field writer over a fixed buffer.
class FieldWriter {
 public:
  explicit FieldWriter(std::span<std::uint8_t> bytes) : bytes_(bytes) {}

  void byteAt(std::size_t offset, std::uint8_t value) { bytes_[offset] = value; }
  void wordAt(std::size_t offset, std::uint16_t value) {
    bytes_[offset] = static_cast<std::uint8_t>(value & 0xFF);
    bytes_[offset + 1] = static_cast<std::uint8_t>(value >> 8);
  }
  void signedWordAt(std::size_t offset, std::int16_t value) {
    wordAt(offset, static_cast<std::uint16_t>(value));
  }
  void optionalByteAt(std::size_t offset, const std::optional<std::uint8_t>& value) {
    byteAt(offset, value.value_or(kNoByteSensor));
  }
  template <std::size_t N>
  void optionalBytesAt(std::size_t offset, const std::array<std::optional<std::uint8_t>, N>& values) {
    for (std::size_t i = 0; i < N; ++i) optionalByteAt(offset + i, values[i]);
  }

 private:
  std::span<std::uint8_t> bytes_;
};

void writeHeader(FieldWriter& out, const ConsoleReading& reading, bool revb) {
  out.byteAt(0, 'L');
  out.byteAt(1, 'O');
  out.byteAt(2, 'O');
  out.byteAt(3, revb ? static_cast<std::uint8_t>(reading.barometerTrend) : std::uint8_t{'P'});
  out.byteAt(4, 0);  // packet type: LOOP
  out.wordAt(5, reading.nextArchiveRecord);
}

void writeWeather(FieldWriter& out, const ConsoleReading& r) {
  out.wordAt(7, r.barometer);
  out.signedWordAt(9, r.insideTemperature);
  out.byteAt(11, r.insideHumidity);
  out.signedWordAt(12, r.outsideTemperature.value_or(kNoWordSensor));
  out.byteAt(14, r.windSpeed);
  out.byteAt(15, r.windAverage10);
  out.wordAt(16, r.windDirection);
  out.optionalBytesAt(18, r.extraTemperatures);
  out.optionalBytesAt(25, r.soilTemperatures);
  out.optionalBytesAt(29, r.leafTemperatures);
  out.optionalByteAt(33, r.outsideHumidity);
  out.optionalBytesAt(34, r.extraHumidities);
  out.wordAt(41, r.rainRate);
  out.optionalByteAt(43, r.uvIndex);
  out.wordAt(44, r.solarRadiation.value_or(static_cast<std::uint16_t>(kNoWordSensor)));
}

void writeTotals(FieldWriter& out, const ConsoleReading& r) {
  out.wordAt(46, r.stormRain);
  out.wordAt(48, r.stormStart ? packStormDate(*r.stormStart) : kNoStormDate);
  out.wordAt(50, r.dayRain);
  out.wordAt(52, r.monthRain);
  out.wordAt(54, r.yearRain);
  out.wordAt(56, r.dayEt);
  out.wordAt(58, r.monthEt);
  out.wordAt(60, r.yearEt);
  out.optionalBytesAt(62, r.soilMoistures);
  out.optionalBytesAt(66, r.leafWetnesses);
}

void writeStatus(FieldWriter& out, const ConsoleReading& r) {
  for (std::size_t offset = 70; offset <= 85; ++offset) out.byteAt(offset, 0);  // no alarms
  out.byteAt(86, r.transmitterBatteryStatus);
  out.wordAt(87, r.consoleBattery);
  out.byteAt(89, r.forecastIcons);
  out.byteAt(90, r.forecastRule);
  out.wordAt(91, r.sunrise);
  out.wordAt(93, r.sunset);
  out.byteAt(95, '\n');
  out.byteAt(96, '\r');
}

}  // namespace

void appendCrc(std::span<std::uint8_t> data) {
  const std::size_t payload = data.size() - 2;
  const std::uint16_t crc = crcCcitt(data.first(payload));
  data[payload] = static_cast<std::uint8_t>(crc >> 8);
  data[payload + 1] = static_cast<std::uint8_t>(crc & 0xFF);
}

std::uint16_t packStormDate(const CalendarDate& date) {
  const int year = std::clamp(date.year - 2000, 0, 127);
  return static_cast<std::uint16_t>((date.month << 12) | (date.day << 7) | year);
}

LoopPacket encodeLoopPacket(const ConsoleReading& reading, bool revb) {
  LoopPacket packet{};
  FieldWriter out(packet);
  writeHeader(out, reading, revb);
  writeWeather(out, reading);
  writeTotals(out, reading);
  writeStatus(out, reading);
  appendCrc(packet);
  return packet;
}

HilowsBlock encodeHilows(const ConsoleHighsLows& h) {
  HilowsBlock block;
  block.fill(kNoByteSensor);
  FieldWriter out(block);
  out.wordAt(0, h.dayLowBarometer);
  out.wordAt(2, h.dayHighBarometer);
  out.wordAt(4, h.monthLowBarometer);
  out.wordAt(6, h.monthHighBarometer);
  out.wordAt(8, h.yearLowBarometer);
  out.wordAt(10, h.yearHighBarometer);
  out.wordAt(12, h.dayLowBarometerTime);
  out.wordAt(14, h.dayHighBarometerTime);
  out.byteAt(16, h.dayHighWindSpeed);
  out.wordAt(17, h.dayHighWindTime);
  out.byteAt(19, h.monthHighWindSpeed);
  out.byteAt(20, h.yearHighWindSpeed);
  appendCrc(block);
  return block;
}

ConsoleTimeBytes encodeConsoleTime(const LocalTime& time) {
  ConsoleTimeBytes bytes{};
  bytes[0] = static_cast<std::uint8_t>(time.second);
  bytes[1] = static_cast<std::uint8_t>(time.minute);
  bytes[2] = static_cast<std::uint8_t>(time.hour);
  bytes[3] = static_cast<std::uint8_t>(time.day);
  bytes[4] = static_cast<std::uint8_t>(time.month);
  bytes[5] = static_cast<std::uint8_t>(time.year - 1900);
  appendCrc(bytes);
  return bytes;
}

std::optional<LocalTime> decodeConsoleTime(std::span<const std::uint8_t> bytes) {
  if (bytes.size() != kConsoleTimeSize || crcCcitt(bytes) != 0) return std::nullopt;
  LocalTime time;
  time.second = bytes[0];
  time.minute = bytes[1];
  time.hour = bytes[2];
  time.day = bytes[3];
  time.month = bytes[4];
  time.year = bytes[5] + 1900;
  const bool valid = time.second <= 59 && time.minute <= 59 && time.hour <= 23 && time.day >= 1 &&
                     time.day <= 31 && time.month >= 1 && time.month <= 12;
  if (!valid) return std::nullopt;
  return time;
}

}  // namespace nimbrel::sim
