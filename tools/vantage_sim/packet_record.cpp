#include "tools/vantage_sim/packet_record.h"

#include <fmt/format.h>

#include <array>
#include <optional>
#include <string_view>

namespace nimbrel::sim {
namespace {

// Builds a JSON object field by field.
class JsonObject {
 public:
  template <class T>
  void number(std::string_view key, T value) {
    field(key, fmt::format("{}", +value));
  }
  template <class T>
  void optional(std::string_view key, const std::optional<T>& value) {
    field(key, value ? fmt::format("{}", +*value) : std::string("null"));
  }
  template <class T, std::size_t N>
  void array(std::string_view key, const std::array<std::optional<T>, N>& values) {
    std::string list = "[";
    for (std::size_t i = 0; i < N; ++i) {
      if (i) list += ',';
      list += values[i] ? fmt::format("{}", +*values[i]) : std::string("null");
    }
    field(key, list + "]");
  }
  void text(std::string_view key, std::string_view value) { field(key, fmt::format("\"{}\"", value)); }
  void boolean(std::string_view key, bool value) { field(key, value ? "true" : "false"); }
  void raw(std::string_view key, std::string_view json) { field(key, json); }

  std::string close() const { return body_ + "}"; }

 private:
  void field(std::string_view key, std::string_view json) {
    body_ += body_.size() > 1 ? "," : "";
    body_ += fmt::format("\"{}\":{}", key, json);
  }

  std::string body_ = "{";
};

std::string stormDate(const std::optional<CalendarDate>& date) {
  if (!date) return "null";
  return fmt::format("\"{:04}-{:02}-{:02}\"", date->year, date->month, date->day);
}

std::string readingObject(const ConsoleReading& r) {
  JsonObject o;
  o.number("barometer_trend", r.barometerTrend);
  o.number("next_archive_record", r.nextArchiveRecord);
  o.number("barometer", r.barometer);
  o.number("inside_temperature", r.insideTemperature);
  o.number("inside_humidity", r.insideHumidity);
  o.optional("outside_temperature", r.outsideTemperature);
  o.number("wind_speed", r.windSpeed);
  o.number("wind_average_10", r.windAverage10);
  o.number("wind_direction", r.windDirection);
  o.array("extra_temperatures", r.extraTemperatures);
  o.array("soil_temperatures", r.soilTemperatures);
  o.array("leaf_temperatures", r.leafTemperatures);
  o.optional("outside_humidity", r.outsideHumidity);
  o.array("extra_humidities", r.extraHumidities);
  o.number("rain_rate", r.rainRate);
  o.optional("uv_index", r.uvIndex);
  o.optional("solar_radiation", r.solarRadiation);
  o.number("storm_rain", r.stormRain);
  o.raw("storm_start", stormDate(r.stormStart));
  o.number("day_rain", r.dayRain);
  o.number("month_rain", r.monthRain);
  o.number("year_rain", r.yearRain);
  o.number("day_et", r.dayEt);
  o.number("month_et", r.monthEt);
  o.number("year_et", r.yearEt);
  o.array("soil_moistures", r.soilMoistures);
  o.array("leaf_wetnesses", r.leafWetnesses);
  o.number("transmitter_battery_status", r.transmitterBatteryStatus);
  o.number("console_battery", r.consoleBattery);
  o.number("forecast_icons", r.forecastIcons);
  o.number("forecast_rule", r.forecastRule);
  o.number("sunrise", r.sunrise);
  o.number("sunset", r.sunset);
  return o.close();
}

}  // namespace

std::string packetRecordLine(const SentPacket& packet) {
  const LocalTime local = toLocalTime(packet.time);
  JsonObject o;
  o.number("sequence", packet.sequence);
  o.text("time", fmt::format("{}.{:03}", formatLocalTime(local), local.millisecond));
  o.boolean("corrupted", packet.corrupted);
  o.number("rain_total_clicks", packet.rainTotalClicks);
  o.raw("reading", readingObject(packet.reading));
  return o.close() + "\n";
}

RecordFile recordPacketsTo(Console& console, const std::filesystem::path& path) {
  RecordFile file(std::fopen(path.c_str(), "a"));
  if (file)
    console.onSent([out = file.get()](const SentPacket& packet) { std::fputs(packetRecordLine(packet).c_str(), out); });
  return file;
}

}  // namespace nimbrel::sim
