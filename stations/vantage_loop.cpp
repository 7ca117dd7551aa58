#include "stations/vantage_loop.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <span>
#include <string>

#include "core/text_log.h"
#include "stations/crc_ccitt.h"

namespace nimbrel {
namespace {

// LOOP packet (Davis "Vantage Pro and Vantage Pro2 Serial Communication
// Reference Manual"): 99 bytes, words little-endian, CRC big-endian.
//
//   0 "LOO"      3 'P'/trend   4 type       5 next record (2)
//   7 barometer  9 inside temp 11 inside hum 12 outside temp (2)
//  14 wind      15 10-min avg  16 wind dir (2) 18-24 extra temps
//  25-28 soil temps  29-32 leaf temps  33 outside hum  34-40 extra hums
//  41 rain rate (2)  43 UV  44 solar (2)  46 storm rain (2)  48 storm start (2)
//  50/52/54 day/month/year rain (2 each)  56 day ET (2)  58/60 month/year ET
//  62-65 soil moistures  66-69 leaf wetness  70-85 alarms
//  86 transmitter battery  87 console battery (2)  89 forecast icons
//  90 forecast rule  91/93 sunrise/sunset  95 LF  96 CR  97-98 CRC

constexpr int kHeaderBytes = 3;
constexpr std::size_t kLoopFrameBytesAfterHeader = 96;  // byte 3 ... the CRC
constexpr int kNoAbsentValue = -1;
constexpr int kMaxWindDirection = 360;
constexpr double kHPaPerThousandthInHg = 33.864 / 1000.0;
constexpr double kMphPerKnot = 1.15;
constexpr double kMmPerInch = 25.4;

enum class Width { Byte, Word };
enum class Group { Always, ExtraSensors };

struct LoopField {
  const char* name;
  int offset;  // packet offset
  Width width;
  // The console's "no sensor" mark (dash value) of the field, or
  // kNoAbsentValue: 0x7FFF for a 16-bit temperature or the solar sensor,
  // 255 for a one-byte sensor, 0 for a wind vane with no data, 0xFFFF for no
  // storm. A field that carries its mark is no reading and keeps its value.
  int absent;
  Group group;
  double (*convert)(int raw, const VantageOptions&);
  bool (*accept)(int raw, double value, const VantageOptions&);  // nullptr: always
  void (*store)(LiveRecord&, double value);
};

double fahrenheitToCelsius(double f) { return (f - 32.0) / 1.8; }

// Conversions.
double asIs(int raw, const VantageOptions&) { return raw; }
double barometerHPa(int raw, const VantageOptions&) { return raw * kHPaPerThousandthInHg; }
double insideTemp(int raw, const VantageOptions&) { return fahrenheitToCelsius(raw / 10.0); }
double insideHum(int raw, const VantageOptions& o) { return raw + o.insideHumidityOffset; }
// The two's complement of a negative word, done in two steps: 0xFFF6 is
// 6552.6 - 6528 - 25.6 = -1.0 deg F.
double outsideTemp(int raw, const VantageOptions&) {
  double f = raw / 10.0;
  if (f > 200) f = f - 6528 - 25.6;
  return fahrenheitToCelsius(f);
}
double windKnots(int raw, const VantageOptions& o) {
  if (raw > 250) return 0;
  const double knots = raw / kMphPerKnot;
  return knots >= o.maxWindKnots ? 0 : knots;
}
template <int Channel>
double extraTemp(int raw, const VantageOptions& o) {
  return fahrenheitToCelsius(raw - 90.0) + o.extraTempOffsetTenths[Channel] / 10.0;
}
double soilTemp(int raw, const VantageOptions&) { return (raw - 122) / 1.8; }
double outsideHum(int raw, const VantageOptions&) { return std::max(raw, 3); }
template <int Channel>
double extraHum(int raw, const VantageOptions& o) {
  return raw + (Channel <= 3 ? o.extraHumidityOffset[Channel] : 0);
}
double rainRateMmPerHour(int raw, const VantageOptions&) { return raw / 100.0 / 0.03937; }
double uvIndex(int raw, const VantageOptions&) { return raw / 10.0; }
double clicksToMm(int raw, const VantageOptions& o) { return kMmPerInch * raw / o.rainClicksPerInch; }
double stormStartYear(int raw, const VantageOptions&) { return (raw & 0x7F) + 2000; }
double etMm(int raw, const VantageOptions&) { return kMmPerInch * raw / 1000.0; }
// The high byte is weighted by 255, not 256.
double consoleVolts(int raw, const VantageOptions&) {
  const int high = raw >> 8;
  const int low = raw & 0xFF;
  return ((high * 255 + low) * 300.0) / 512.0 / 100.0;
}
double forecastIcon(int, const VantageOptions&) { return 4; }

// Acceptance tests.
bool insideTempInRange(int, double v, const VantageOptions&) { return v > -50 && v < 60; }
bool humidityValid(int raw, double, const VantageOptions&) { return raw < 101; }
// 1-360 degrees, 360 being north.
bool directionValid(int raw, double, const VantageOptions&) { return raw <= kMaxWindDirection; }
bool rainRateInRange(int, double v, const VantageOptions&) { return v >= 0 && v < 600; }
bool solarWanted(int, double, const VantageOptions& o) { return !o.solarOff; }
bool etInRange(int, double v, const VantageOptions&) { return v < 100; }
bool rainIconSet(int raw, double, const VantageOptions&) { return (raw & 0x01) != 0; }

// Where the values go.
using U16 = std::uint16_t;

constexpr std::array kLoopFields = std::to_array<LoopField>({
    {"barometer", 7, Width::Word, kNoAbsentValue, Group::Always, barometerHPa, nullptr,
     [](LiveRecord& r, double v) { r.barometer = v; }},
    {"intemp", 9, Width::Word, 0x7FFF, Group::Always, insideTemp, insideTempInRange,
     [](LiveRecord& r, double v) { r.intemp = v; }},
    {"inhum", 11, Width::Byte, 255, Group::Always, insideHum, nullptr,
     [](LiveRecord& r, double v) { r.inhum = static_cast<U16>(std::clamp(v, 0.0, 100.0)); }},
    {"outtemp", 12, Width::Word, 0x7FFF, Group::Always, outsideTemp, nullptr,
     [](LiveRecord& r, double v) { r.outtemp = v; }},
    {"windspeed", 14, Width::Byte, kNoAbsentValue, Group::Always, windKnots, nullptr,
     [](LiveRecord& r, double v) { r.windspeed = v; }},
    {"winddir", 16, Width::Word, 0, Group::Always, asIs, directionValid,
     [](LiveRecord& r, double v) { r.winddir = static_cast<U16>(v); }},
    {"extratemp1", 18, Width::Byte, 255, Group::ExtraSensors, extraTemp<1>, nullptr,
     [](LiveRecord& r, double v) { r.extratemp[1] = v; }},
    {"extratemp2", 19, Width::Byte, 255, Group::ExtraSensors, extraTemp<2>, nullptr,
     [](LiveRecord& r, double v) { r.extratemp[2] = v; }},
    {"extratemp3", 20, Width::Byte, 255, Group::ExtraSensors, extraTemp<3>, nullptr,
     [](LiveRecord& r, double v) { r.extratemp[3] = v; }},
    {"extratemp4", 21, Width::Byte, 255, Group::ExtraSensors, extraTemp<4>, nullptr,
     [](LiveRecord& r, double v) { r.extratemp[4] = v; }},
    {"extratemp5", 22, Width::Byte, 255, Group::ExtraSensors, extraTemp<5>, nullptr,
     [](LiveRecord& r, double v) { r.extratemp[5] = v; }},
    {"extratemp6", 23, Width::Byte, 255, Group::ExtraSensors, extraTemp<6>, nullptr,
     [](LiveRecord& r, double v) { r.extratemp[6] = v; }},
    {"extratemp7", 24, Width::Byte, 255, Group::ExtraSensors, extraTemp<7>, nullptr,
     [](LiveRecord& r, double v) { r.extratemp[7] = v; }},
    {"soiltemp", 25, Width::Byte, 255, Group::ExtraSensors, soilTemp, nullptr,
     [](LiveRecord& r, double v) { r.soiltemp = r.soiltemps[1] = v; }},
    {"soiltemp2", 26, Width::Byte, 255, Group::ExtraSensors, soilTemp, nullptr,
     [](LiveRecord& r, double v) { r.soiltemps[2] = v; }},
    {"soiltemp3", 27, Width::Byte, 255, Group::ExtraSensors, soilTemp, nullptr,
     [](LiveRecord& r, double v) { r.soiltemps[3] = v; }},
    {"soiltemp4", 28, Width::Byte, 255, Group::ExtraSensors, soilTemp, nullptr,
     [](LiveRecord& r, double v) { r.soiltemps[4] = v; }},
    {"outhum", 33, Width::Byte, 255, Group::Always, outsideHum, humidityValid,
     [](LiveRecord& r, double v) { r.outhum = static_cast<U16>(v); }},
    {"extrahum1", 34, Width::Byte, 255, Group::ExtraSensors, extraHum<1>, humidityValid,
     [](LiveRecord& r, double v) { r.extrahum[1] = static_cast<U16>(std::clamp(v, 0.0, 100.0)); }},
    {"extrahum2", 35, Width::Byte, 255, Group::ExtraSensors, extraHum<2>, humidityValid,
     [](LiveRecord& r, double v) { r.extrahum[2] = static_cast<U16>(std::clamp(v, 0.0, 100.0)); }},
    {"extrahum3", 36, Width::Byte, 255, Group::ExtraSensors, extraHum<3>, humidityValid,
     [](LiveRecord& r, double v) { r.extrahum[3] = static_cast<U16>(std::clamp(v, 0.0, 100.0)); }},
    {"extrahum4", 37, Width::Byte, 255, Group::ExtraSensors, extraHum<4>, humidityValid,
     [](LiveRecord& r, double v) { r.extrahum[4] = static_cast<U16>(v); }},
    {"extrahum5", 38, Width::Byte, 255, Group::ExtraSensors, extraHum<5>, humidityValid,
     [](LiveRecord& r, double v) { r.extrahum[5] = static_cast<U16>(v); }},
    {"extrahum6", 39, Width::Byte, 255, Group::ExtraSensors, extraHum<6>, humidityValid,
     [](LiveRecord& r, double v) { r.extrahum[6] = static_cast<U16>(v); }},
    {"extrahum7", 40, Width::Byte, 255, Group::ExtraSensors, extraHum<7>, humidityValid,
     [](LiveRecord& r, double v) { r.extrahum[7] = static_cast<U16>(v); }},
    {"rainrate", 41, Width::Word, kNoAbsentValue, Group::Always, rainRateMmPerHour, rainRateInRange,
     [](LiveRecord& r, double v) { r.rainrate = v; }},
    {"uv", 43, Width::Byte, 255, Group::Always, uvIndex, nullptr, [](LiveRecord& r, double v) { r.uv = v; }},
    {"solar", 44, Width::Word, 0x7FFF, Group::Always, asIs, solarWanted, [](LiveRecord& r, double v) { r.solar = v; }},
    {"stormrain", 46, Width::Word, kNoAbsentValue, Group::Always, clicksToMm, nullptr,
     [](LiveRecord& r, double v) { r.stormrain = v; }},
    {"stormstartyear", 48, Width::Word, 0xFFFF, Group::Always, stormStartYear, nullptr,
     [](LiveRecord& r, double v) { r.stormstartyear = static_cast<U16>(v); }},
    {"raincounter", 54, Width::Word, kNoAbsentValue, Group::Always, clicksToMm, nullptr,
     [](LiveRecord& r, double v) { r.raincounter = v; }},
    {"dailyet", 56, Width::Word, kNoAbsentValue, Group::Always, etMm, etInRange,
     [](LiveRecord& r, double v) { r.dailyet = v; }},
    {"soilmoisture1", 62, Width::Byte, 255, Group::ExtraSensors, asIs, nullptr,
     [](LiveRecord& r, double v) { r.soilmoisture[1] = static_cast<U16>(v); }},
    {"soilmoisture2", 63, Width::Byte, 255, Group::ExtraSensors, asIs, nullptr,
     [](LiveRecord& r, double v) { r.soilmoisture[2] = static_cast<U16>(v); }},
    {"soilmoisture3", 64, Width::Byte, 255, Group::ExtraSensors, asIs, nullptr,
     [](LiveRecord& r, double v) { r.soilmoisture[3] = static_cast<U16>(v); }},
    {"soilmoisture4", 65, Width::Byte, 255, Group::ExtraSensors, asIs, nullptr,
     [](LiveRecord& r, double v) { r.soilmoisture[4] = static_cast<U16>(v); }},
    {"leafwetness1", 66, Width::Byte, 255, Group::ExtraSensors, asIs, nullptr,
     [](LiveRecord& r, double v) { r.leafwetness[1] = static_cast<U16>(v); }},
    {"leafwetness2", 67, Width::Byte, 255, Group::ExtraSensors, asIs, nullptr,
     [](LiveRecord& r, double v) { r.leafwetness[2] = static_cast<U16>(v); }},
    {"leafwetness3", 68, Width::Byte, 255, Group::ExtraSensors, asIs, nullptr,
     [](LiveRecord& r, double v) { r.leafwetness[3] = static_cast<U16>(v); }},
    {"leafwetness4", 69, Width::Byte, 255, Group::ExtraSensors, asIs, nullptr,
     [](LiveRecord& r, double v) { r.leafwetness[4] = static_cast<U16>(v); }},
    {"transmitterbattery", 86, Width::Byte, kNoAbsentValue, Group::Always, asIs, nullptr,
     [](LiveRecord& r, double v) { r.transmitterbattery = static_cast<U16>(v); }},
    {"consolebattery", 87, Width::Word, kNoAbsentValue, Group::Always, consoleVolts, nullptr,
     [](LiveRecord& r, double v) { r.consolebattery = v; }},
    {"forecasticon", 89, Width::Byte, kNoAbsentValue, Group::Always, forecastIcon, rainIconSet,
     [](LiveRecord& r, double v) { r.forecasticon = static_cast<U16>(v); }},
    {"forecastrule", 90, Width::Byte, kNoAbsentValue, Group::Always, asIs, nullptr,
     [](LiveRecord& r, double v) { r.forecastrule = static_cast<U16>(v); }},
});

int rawValue(const ReceiveState& state, const LoopField& field) {
  const std::size_t pos = static_cast<std::size_t>(field.offset - kHeaderBytes);
  if (field.width == Width::Byte) return state.buffer[pos];
  return state.buffer[pos] | (state.buffer[pos + 1] << 8);
}

// With "use revb" on the framing leaves the packet one or two bytes late.
void realign(ReceiveState& state) {
  const std::size_t from = state.buffer[1] == 'O' ? 2 : 1;
  std::memmove(state.buffer.data(), state.buffer.data() + from, 100);
}

std::uint16_t packetCrc(const ReceiveState& state) {
  static constexpr std::array<std::uint8_t, 3> kHeader{'L', 'O', 'O'};
  const std::uint16_t crc = crcCcitt(kHeader);
  return crcCcitt(std::span<const std::uint8_t>(state.buffer).first(kLoopFrameBytesAfterHeader), crc);
}

void logRaw(TextLog* rawLog, const VantageOptions& options, const std::string& text) {
  if (rawLog && options.rawLogging) rawLog->write(text);
}

bool decodeLoop(ReceiveState& state, LiveRecord& record, const VantageOptions& options, TextLog* rawLog) {
  state.decoderFieldCounter = 0;
  if (options.revb) realign(state);
  const std::uint16_t crc = packetCrc(state);
  if (!state.debugCapture.empty()) {
    logRaw(rawLog, options, "received " + std::to_string(state.debugCapture.size()) + " bytes");
    state.debugCapture.clear();
  }
  if (crc != 0) {
    logRaw(rawLog, options, "CRC failed " + std::to_string(crc));
    return false;
  }
  if (options.revb) record.barotrend = static_cast<std::int8_t>(state.buffer[0]);
  for (const LoopField& field : kLoopFields) {
    if (field.group == Group::ExtraSensors && !options.extraSensors) continue;
    const int raw = rawValue(state, field);
    if (raw == field.absent) continue;
    const double value = field.convert(raw, options);
    if (field.accept && !field.accept(raw, value, options)) continue;
    field.store(record, value);
    ++state.decoderFieldCounter;
  }
  return true;
}

}  // namespace

bool vantagein(ReceiveState& state, LiveRecord& record, const VantageOptions& options, TextLog* rawLog) {
  return decodeLoop(state, record, options, rawLog);
}

bool vantageintcpip(ReceiveState& state, LiveRecord& record, const VantageOptions& options,
                    TextLog* rawLog) {
  return decodeLoop(state, record, options, rawLog);
}

std::optional<double> consoleDailyMaxGust(const ReceiveState& state, const VantageOptions& options,
                                          double currentMaxGust, int hour, TextLog* rawLog) {
  int raw = state.buffer[17];
  // A high set in the early morning is not taken late in the day.
  const double timeValue = (state.buffer[19] % 100) + state.buffer[18] / 100.0;
  if (options.earlyHighGustCheck && hour >= 9 && timeValue < 600) raw = 0;
  const double knots = std::round(raw / kMphPerKnot);
  const double difference = std::fabs(knots - currentMaxGust);
  if (difference >= 20) return std::nullopt;
  if (knots < currentMaxGust || raw >= 85 || knots >= options.maxWindKnots || difference > 10)
    return std::nullopt;
  logRaw(rawLog, options, "Console daily maximum gust " + std::to_string(raw) + "mph");
  return knots;
}

}  // namespace nimbrel
