#include "datafiles/sensor_log_lines.h"

#include <fmt/format.h>

#include "core/number_format.h"
#include "datafiles/log_context.h"
#include "datafiles/log_fields.h"

namespace nimbrel {
namespace {

using namespace writer_units;

bool isUsa(const LogOptions& options) { return options.units == UnitSystem::usa; }

std::string temperature(double celsius, const LogOptions& options) {
  return fixed(isUsa(options) ? toFahrenheit(celsius) : celsius, 0, 1);
}

std::string evapotranspiration(double mm, const LogOptions& options) {
  return isUsa(options) ? fixed(toInches(mm), 0, 3) : fixed(mm, 0, 2);
}

std::string windRun(double nauticalMiles, const LogOptions& options) {
  return fixed(isUsa(options) ? toMph(nauticalMiles) : nauticalMiles, 0, 1);
}

// A temperature difference such as degree days: no offset in Fahrenheit.
std::string degreeDays(double celsiusDays, const LogOptions& options) {
  return fixed(isUsa(options) ? celsiusDays * kFahrenheitPerCelsius : celsiusDays, 0, 1);
}

std::string whole(double value) { return fixed(value, 0, 0); }

std::string csvDate(const LogFields& fields) { return fields.csv(LogColumn::day, LogColumn::minute); }

}  // namespace

std::string soilLogLine(const LogFields& fields, const LogDayValues& day, const LiveRecord& record,
                        const LogOptions& options) {
  return fmt::format("{} {} {} {} {} {}", fields.datePrefix(), temperature(day.highSoilC, options),
                     temperature(day.lowSoilC, options), temperature(day.highTempC, options),
                     temperature(day.lowTempC, options), fixed(record.snowheight, 0, 1));
}

std::string sunLogLine(const LogFields& fields, const LogDayValues& day, const LiveRecord& record,
                       const LogOptions& options) {
  return fmt::format("{} {} {}", fields.datePrefix(), fixed(day.sunshineHours, 0, 2),
                     evapotranspiration(record.dailyet, options));
}

std::string extraLogLine(const LogFields& fields, const LiveRecord& record, const LogOptions& options) {
  std::string line = csvDate(fields);
  for (int channel = 1; channel <= kExtraChannels; ++channel)
    line += fmt::format(",{},{}", temperature(record.extratemp[channel], options), record.extrahum[channel]);
  return line;
}

std::string vantageExtraSensorsLine(const LogFields& fields, const LiveRecord& record,
                                    const LogOptions& options) {
  constexpr int kConsoleExtraChannels = 7;
  std::string line = csvDate(fields);
  for (int channel = 1; channel <= kConsoleExtraChannels; ++channel)
    line += "," + temperature(record.extratemp[channel], options);
  for (int channel = 1; channel <= kConsoleExtraChannels; ++channel)
    line += fmt::format(",{}", record.extrahum[channel]);
  return line;
}

std::string oneWireLogLine(const LogFields& fields, const LiveRecord& record, const LogOptions& options) {
  constexpr int kHumidityChannels = 4;
  std::string line = csvDate(fields);
  for (int channel = 1; channel <= kExtraChannels; ++channel)
    line += "," + temperature(record.extratemp[channel], options);
  for (int channel = 1; channel <= kHumidityChannels; ++channel)
    line += "," + temperature(record.extratemp[channel], options);
  for (int channel = 1; channel <= kHumidityChannels; ++channel)
    line += fmt::format(",{}", record.extrahum[channel]);
  return line;
}

std::string vantageLogLine(const LogFields& fields, const LiveRecord& record, const LogOptions& options) {
  return fmt::format("{},{},{},{},{},{}", fields.datePrefix(), whole(record.solar), fixed(record.uv, 0, 1),
                     evapotranspiration(record.dailyet, options), record.soilmoisture[1],
                     temperature(record.soiltemp, options));
}

std::string growLogLine(const LogFields& fields, const LogDayValues& day, const LiveRecord& record,
                        const LogOptions& options) {
  return fmt::format("{} {} {} {}", fields.datePrefix(), whole(record.solar),
                     windRun(day.windRunNauticalMiles, options), fixed(day.solarEnergy, 0, 1));
}

std::string indoorLogLine(const LogFields& fields, const LiveRecord& record, const LogOptions& options) {
  return fmt::format("{} {} {}", fields.datePrefix(), logTemperatureText(record.intemp, options.units),
                     logHumidityText(record.inhum));
}

std::string vantageCsvLine(const LogFields& fields, const LiveRecord& record, const LogOptions& options) {
  return fmt::format("{},{},{},{},{},{}", csvDate(fields), whole(record.solar), fixed(record.uv, 0, 1),
                     evapotranspiration(record.dailyet, options), record.soilmoisture[1],
                     record.leafwetness[1]);
}

std::string growCsvLine(const LogFields& fields, const LogDayValues& day, const LiveRecord& record,
                        const LogOptions& options) {
  return fmt::format("{},{},{},{},{},{}", csvDate(fields), whole(record.solar),
                     windRun(day.windRunNauticalMiles, options), fixed(day.solarEnergy, 0, 1),
                     evapotranspiration(record.dailyet, options), degreeDays(day.degreeDaysC, options));
}

}  // namespace nimbrel
