#include "processing/records/records.h"

#include <array>

namespace nimbrel {
namespace {

constexpr double outdoorTemp(const LiveRecord& r) { return r.outtemp; }
constexpr double gust(const LiveRecord& r) { return r.windgust; }
constexpr double rainRate(const LiveRecord& r) { return r.rainrate; }
constexpr double barometer(const LiveRecord& r) { return r.barometer; }
constexpr double todaysRain(const LiveRecord& r) { return r.dailyrain; }
constexpr double averageWind(const LiveRecord& r) { return r.windspeed; }
constexpr double windChill(const LiveRecord& r) { return r.windchill; }
constexpr double heatIndex(const LiveRecord& r) { return r.heatindex; }
constexpr double dewPoint(const LiveRecord& r) { return r.dewpoint; }
constexpr double outdoorHumidity(const LiveRecord& r) { return r.outhum; }
constexpr double solar(const LiveRecord& r) { return r.solar; }
constexpr double uvIndex(const LiveRecord& r) { return r.uv; }
constexpr double monthsRain(const LiveRecord& r) { return r.monthlyrain; }

constexpr auto H = Side::High;
constexpr auto L = Side::Low;

constexpr auto Air = RecordBound::Temperature;
constexpr auto Derived = RecordBound::DerivedTemperature;

// Shorthands for the kinds of row.
constexpr RecordRow followed(std::string_view name, Side side, double (*reading)(const LiveRecord&),
                             RecordBound bound) {
  return {name, side, reading, false, false, false, false, bound};
}
constexpr RecordRow zeroIgnored(std::string_view name, Side side, double (*reading)(const LiveRecord&),
                                RecordBound bound = RecordBound::None) {
  return {name, side, reading, true, false, false, false, bound};
}
constexpr RecordRow wind(std::string_view name, double (*reading)(const LiveRecord&), bool average) {
  return {name, H, reading, true, true, average, false, RecordBound::Wind};
}
constexpr bool endsInDigit(std::string_view name) { return !name.empty() && name.back() >= '0' && name.back() <= '9'; }
constexpr RecordRow notYet(std::string_view name, Side side) {
  return {name, side, nullptr, false, false, false, endsInDigit(name)};
}
constexpr RecordRow dayCount(std::string_view name) { return {name, H, nullptr, false, false, false, true}; }

constexpr std::array<RecordRow, 48> kRows{{
    followed("Record high temperature", H, outdoorTemp, Air),
    followed("Record low temperature", L, outdoorTemp, Air),
    wind("Record high gust", gust, false),
    zeroIgnored("Record high rain rate", H, rainRate),
    zeroIgnored("Record low barometer", L, barometer, RecordBound::Barometer),
    zeroIgnored("Record high barometer", H, barometer, RecordBound::Barometer),
    zeroIgnored("Record daily rain", H, todaysRain),
    notYet("Record rain last hour", H),
    wind("Record high average", averageWind, true),
    notYet("Record high soil", H),
    notYet("Record low soil", L),
    followed("Record low windchill", L, windChill, Derived),
    notYet("Record hot day", H),
    notYet("Record cold night", L),
    notYet("Record cold day", L),
    notYet("Record warm night", H),
    followed("Record high heat index", H, heatIndex, Derived),
    notYet("Record low grass", L),
    followed("Record high dew", H, dewPoint, Derived),
    followed("Record low dew", L, dewPoint, Derived),
    zeroIgnored("Record high hum", H, outdoorHumidity, RecordBound::Humidity),
    zeroIgnored("Record low hum", L, outdoorHumidity, RecordBound::Humidity),
    zeroIgnored("Record high solar", H, solar),
    zeroIgnored("Record high uv", H, uvIndex),
    notYet("Record high thsw", H),
    notYet("Record low thsw", L),
    zeroIgnored("Record monthrain", H, monthsRain),
    notYet("Record windrun", H),
    notYet("Record hi extra temp1", H),
    notYet("Record lo extra temp1", L),
    notYet("Record hi extra temp2", H),
    notYet("Record lo extra temp2", L),
    notYet("Record hi extra temp3", H),
    notYet("Record lo extra temp3", L),
    dayCount("Record days no rain"),
    dayCount("Record days with rain"),
    notYet("Record hi extra temp4", H),
    notYet("Record lo extra temp4", L),
    notYet("2Record high soil", H),
    notYet("2Record low soil", L),
    notYet("3Record high soil", H),
    notYet("3Record low soil", L),
    notYet("4Record high soil", H),
    notYet("4Record low soil", L),
    notYet("Record high leaf", H),
    notYet("Record high soil moist", H),
    notYet("Record highest minimum daily", H),
    notYet("Record lowest maximum daily", L),
}};

}  // namespace

std::span<const RecordRow> recordRows() { return kRows; }

std::string recordSectionName(const RecordRow& row, RecordSet set) {
  std::string section(row.name);
  if (set == RecordSet::AllTime) return section;
  if (row.blankBeforeSet) section += ' ';
  section += set == RecordSet::ThisMonth ? '2' : '3';
  return section;
}

}  // namespace nimbrel
