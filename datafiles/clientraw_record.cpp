#include "datafiles/clientraw_record.h"

#include <array>
#include <cstdint>
#include <string>

#include "core/number_format.h"
#include "datafiles/clientraw_layout.h"

namespace nimbrel {
namespace {

using namespace clientraw;

struct DecimalField {
  Field field;
  double LiveRecord::*member;
};

// Fields in the record's own units (°C, knots, hPa, mm).
constexpr std::array<DecimalField, 14> kDecimals = {{
    {averageWind, &LiveRecord::windspeed},
    {gust, &LiveRecord::windgust},
    {outdoorTemp, &LiveRecord::outtemp},
    {pressure, &LiveRecord::barometer},
    {rainToday, &LiveRecord::dailyrain},
    {rainMonth, &LiveRecord::monthlyrain},
    {rainYear, &LiveRecord::yearlyrain},
    {indoorTemp, &LiveRecord::intemp},
    {soilTemp, &LiveRecord::soiltemp},
    {dewPoint, &LiveRecord::dewpoint},
    {heatIndex, &LiveRecord::heatindex},
    {solar, &LiveRecord::solar},
    {uvIndex, &LiveRecord::uv},
    {evapotranspirationToday, &LiveRecord::dailyet},
}};

struct WholeField {
  Field field;
  std::uint16_t LiveRecord::*member;
};

constexpr std::array<WholeField, 4> kWholes = {{
    {direction, &LiveRecord::winddir},
    {outdoorHumidity, &LiveRecord::outhum},
    {indoorHumidity, &LiveRecord::inhum},
    {forecastIcon, &LiveRecord::forecasticon},
}};

constexpr std::array<Field, kExtraChannels> kExtraTemps{extraTemp1, extraTemp2, extraTemp3, extraTemp4, extraTemp5,
                                                        extraTemp6, extraTemp7, extraTemp8, extraTemp9};
constexpr std::array<Field, kExtraChannels> kExtraHums{extraHumidity1, extraHumidity2, extraHumidity3,
                                                       extraHumidity4, extraHumidity5, extraHumidity6,
                                                       extraHumidity7, extraHumidity8, extraHumidity9};

bool number(const ClientrawReading& reading, Field field, double& out) {
  const auto text = reading.field(field);
  return text && parseDouble(std::string(*text), out);
}

void setWhole(const ClientrawReading& reading, Field field, std::uint16_t& target) {
  double value = 0;
  if (number(reading, field, value) && value >= 0 && value <= 65535) target = static_cast<std::uint16_t>(value);
}

}  // namespace

LiveRecord liveRecordFromClientraw(const ClientrawReading& reading, bool rainRatePerHour) {
  LiveRecord record;
  double value = 0;
  for (const auto& [field, member] : kDecimals)
    if (number(reading, field, value)) record.*member = value;
  for (const auto& [field, member] : kWholes) setWhole(reading, field, record.*member);
  for (int channel = 1; channel <= kExtraChannels; ++channel) {
    const auto index = static_cast<std::size_t>(channel - 1);
    if (number(reading, kExtraTemps[index], value)) record.extratemp[static_cast<std::size_t>(channel)] = value;
    setWhole(reading, kExtraHums[index], record.extrahum[static_cast<std::size_t>(channel)]);
  }
  const double perHour = rainRatePerHour ? 60.0 : 1.0;
  if (number(reading, rainRate, value)) record.rainrate = value * perHour;
  if (number(reading, highRainRateToday, value)) record.maxrainrate = value * perHour;
  // The file's chill is always the US formula; the record's own comes back with the next reading.
  if (number(reading, windChill, value)) record.windchill = value;
  if (const auto name = reading.field(stationName); name && *name != kNoValue) {
    record.stationname = std::string(*name);
    for (char& c : record.stationname)
      if (c == '_') c = ' ';
  }
  return record;
}

}  // namespace nimbrel
