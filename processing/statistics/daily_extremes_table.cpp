#include "processing/statistics/daily_extremes_table.h"

#include <array>

namespace nimbrel {
namespace {

constexpr double outdoorTemp(const LiveRecord& r) { return r.outtemp; }
constexpr double barometer(const LiveRecord& r) { return r.barometer; }
constexpr double windChill(const LiveRecord& r) { return r.windchill; }
constexpr double outdoorHumidity(const LiveRecord& r) { return r.outhum; }
constexpr double dewPoint(const LiveRecord& r) { return r.dewpoint; }
constexpr double heatIndex(const LiveRecord& r) { return r.heatindex; }
constexpr double gust(const LiveRecord& r) { return r.windgust; }
constexpr double averageWind(const LiveRecord& r) { return r.windspeed; }
constexpr double indoorTemp(const LiveRecord& r) { return r.intemp; }
constexpr double indoorHumidity(const LiveRecord& r) { return r.inhum; }
constexpr double soilTemp(const LiveRecord& r) { return r.soiltemp; }
constexpr double solar(const LiveRecord& r) { return r.solar; }
constexpr double uvIndex(const LiveRecord& r) { return r.uv; }

constexpr std::string_view kValue = "number2";
constexpr std::string_view kTime = "number2time";

using Q = Quantity;
using S = Side;

constexpr std::array<ExtremeRow, 22> kRows{{
    {Q::Temperature, S::High, "Daily high temperature", kValue, kTime, "Max temp", false, outdoorTemp},
    {Q::Temperature, S::Low, "Daily low temperature", kValue, kTime, "Min temp", false, outdoorTemp},
    {Q::Pressure, S::High, "Daily high pressure", kValue, kTime, "", false, barometer},
    {Q::Pressure, S::Low, "Daily low pressure", kValue, kTime, "", false, barometer},
    {Q::WindChill, S::High, "Daily high windchill", kValue, kTime, "", false, windChill},
    {Q::WindChill, S::Low, "Daily low windchill", kValue, kTime, "", false, windChill},
    {Q::Humidity, S::High, "Daily high humidity", kValue, kTime, "", true, outdoorHumidity},
    {Q::Humidity, S::Low, "Daily low humidity", kValue, kTime, "", true, outdoorHumidity},
    {Q::DewPoint, S::High, "Daily high dewpoint", kValue, kTime, "", false, dewPoint},
    {Q::DewPoint, S::Low, "Daily low dewpoint", kValue, kTime, "", false, dewPoint},
    {Q::HeatIndex, S::High, "Daily high heatindex", kValue, kTime, "", false, heatIndex},
    {Q::HeatIndex, S::Low, "Daily low heatindex", kValue, kTime, "", false, heatIndex},
    {Q::Gust, S::High, "Daily high gust", kValue, kTime, "", false, gust},
    {Q::Average, S::High, "Daily high average", kValue, kTime, "", false, averageWind},
    {Q::IndoorTemp, S::High, "Daily high indoor temp", kValue, kTime, "", false, indoorTemp},
    {Q::IndoorTemp, S::Low, "Daily low indoor temp", kValue, kTime, "", false, indoorTemp},
    {Q::IndoorHumidity, S::High, "Daily high indoor hum time", "", "value", "", true, indoorHumidity},
    {Q::IndoorHumidity, S::Low, "Daily low indoor hum time", "", "value", "", true, indoorHumidity},
    {Q::SoilTemp, S::High, "Daily high soil temp", kValue, kTime, "", false, soilTemp},
    {Q::SoilTemp, S::Low, "Daily low soil temp", kValue, kTime, "", false, soilTemp},
    {Q::Solar, S::High, "Daily high solar", kValue, kTime, "", false, solar},
    {Q::Uv, S::High, "Daily high uv", kValue, kTime, "", false, uvIndex},
}};

}  // namespace

std::span<const ExtremeRow> extremeRows() { return kRows; }

double sentinelOf(const ExtremeRow& row) {
  if (row.side == Side::High) return kHighSentinel;
  return row.percentByte ? kPercentLowSentinel : kLowSentinel;
}

}  // namespace nimbrel
