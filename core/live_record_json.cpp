#include "core/live_record_json.h"

#include <fmt/format.h>

#include <cmath>
#include <iterator>

namespace nimbrel {
namespace {

// Shortest text that reads back to the same double; JSON has no NaN.
void number(std::string& out, const char* name, double v) {
  if (std::isfinite(v))
    fmt::format_to(std::back_inserter(out), "\"{}\":{},", name, v);
  else
    fmt::format_to(std::back_inserter(out), "\"{}\":null,", name);
}

template <class Array>
void channels(std::string& out, const char* name, const Array& values, std::size_t last) {
  fmt::format_to(std::back_inserter(out), "\"{}\":[", name);
  for (std::size_t i = 1; i <= last; ++i) fmt::format_to(std::back_inserter(out), "{}{}", i > 1 ? "," : "", values[i]);
  out += "],";
}

}  // namespace

std::string liveRecordJson(const LiveRecord& r) {
  std::string out = "{";
  number(out, "outtemp", r.outtemp);
  number(out, "intemp", r.intemp);
  number(out, "outhum", r.outhum);
  number(out, "inhum", r.inhum);
  number(out, "windspeed", r.windspeed);
  number(out, "windgust", r.windgust);
  number(out, "winddir", r.winddir);
  number(out, "barometer", r.barometer);
  number(out, "barotrend", r.barotrend);
  number(out, "rainrate", r.rainrate);
  number(out, "raincounter", r.raincounter);
  number(out, "dailyrain", r.dailyrain);
  number(out, "stormrain", r.stormrain);
  number(out, "stormstartyear", r.stormstartyear);
  number(out, "solar", r.solar);
  number(out, "uv", r.uv);
  number(out, "dailyet", r.dailyet);
  number(out, "soiltemp", r.soiltemp);
  channels(out, "extratemp", r.extratemp, 7);
  channels(out, "extrahum", r.extrahum, 7);
  channels(out, "soiltemps", r.soiltemps, kVantageSoilChannels);
  channels(out, "soilmoisture", r.soilmoisture, kVantageSoilChannels);
  channels(out, "leafwetness", r.leafwetness, kVantageLeafChannels);
  number(out, "transmitterbattery", r.transmitterbattery);
  number(out, "consolebattery", r.consolebattery);
  number(out, "forecasticon", r.forecasticon);
  number(out, "forecastrule", r.forecastrule);
  out.back() = '}';
  return out;
}

}  // namespace nimbrel
