// Davis extra, soil and leaf sensors, and the extra channels.
//
// The secondary channels (extra temperatures and humidities, soil channels
// 2-4, soil moisture, leaf wetness) are shown only on a Vantage with its
// extra sensors switched on and when the value is not the console's "no
// sensor" mark: the live record cannot tell an absent channel from 0 (see
// sensor_channels.h). The console's own quantities (ET, storm rain,
// batteries) are shown when the station is a Vantage. The day's highs and
// lows of these channels are not followed by the daily extremes, so their
// tags have no value yet.

#include <string>

#include "processing/statistics/daily_extremes.h"
#include "publish/tags/comfort_formulas.h"
#include "publish/tags/sensor_channels.h"
#include "publish/tags/tag_rows.h"
#include "publish/tags/tag_tables.h"

namespace nimbrel {

using namespace tagrows;
using namespace sensorchannels;

namespace {

// The extra channel rows keep the console's numbering; channel 1 of the
// leaf, soil-moisture and soil-temperature families has no number in its
// name ("VPleaf", "VPleaf2").
std::string numbered(const std::string& stem, int channel) {
  return channel == 1 ? stem : stem + std::to_string(channel);
}

constexpr const char* kNotFollowed = "; the day's extremes of this channel are not followed yet";
constexpr const char* kNotThisSensor = "; no station type this program reads reports it";
// The live record has fields for extra channels 8 and 9, but no driver fills them.
constexpr const char* kNoEighthChannel = "; no station type this program reads has this channel";

TagValue soilExtreme(const TagContext& context, Side side) {
  const Extreme& extreme = context.stats.extremes().extreme(Quantity::SoilTemp, side);
  if (!context.readingsSeen || !extreme.seen) return noData();
  return extreme.value;
}

TagValue soilExtremeTime(const TagContext& context, Side side) {
  const Extreme& extreme = context.stats.extremes().extreme(Quantity::SoilTemp, side);
  if (!context.readingsSeen || !extreme.seen || extreme.time.empty()) return noData();
  return extreme.time;
}

TagValue consoleBattery(const TagContext& context) {
  // 0 V is no reading: a running console never reports it.
  if (!vantageReporting(context) || context.live.consolebattery <= 0) return noData();
  return context.live.consolebattery;
}

// The transmitter battery byte has a bit per transmitter ID, set when that
// transmitter's battery is low; the ISS leaves the factory as ID 1 (bit 0).
TagValue issStatus(const TagContext& context) {
  if (!vantageReporting(context)) return noData();
  return (context.live.transmitterbattery & 0x01) != 0 ? "Battery low" : "OK";
}

TagValue vantageRain(const TagContext& context, double mm) {
  return vantageReporting(context) ? TagValue(mm) : noData();
}

// The console sends the storm's start date, of which the driver keeps the
// year; there is no storm while the storm rain is 0.
TagValue stormStart(const TagContext& context) {
  if (!vantageReporting(context) || context.live.stormrain <= 0 || context.live.stormstartyear == 0) return noData();
  return std::to_string(context.live.stormstartyear);
}

TagValue extraWetBulb(const TagContext& context, int channel) {
  const TagValue temperature = extraTemperature(context, channel);
  const TagValue humidity = extraHumidity(context, channel);
  if (temperature.missing() || humidity.missing()) return noData();
  return wetBulb(*temperature.number(), *humidity.number());
}

void addExtraTemperatures(std::vector<TagDef>& rows) {
  for (int n = 1; n <= kExtraChannels; ++n) {
    const std::string name = "extratemp" + std::to_string(n);
    if (n <= kVantageExtraChannels)
      rows.push_back(number(name, Unit::temperature, 1, 1,
                            [n](const TagContext& c) { return extraTemperature(c, n); },
                            "extra temperature channel " + std::to_string(n) +
                                " of a Vantage with extra sensors; --- when the channel has no sensor"));
    else
      rows.push_back(missing(name, "extra temperature channel " + std::to_string(n) + kNoEighthChannel));
  }
  rows.push_back(missing("extratemp10", std::string("extra temperature channel 10") + kNoEighthChannel));
}

// Highs and lows of today that have no value yet.
void addUnfollowedExtremes(std::vector<TagDef>& rows) {
  struct Family {
    const char* stem;
    const char* what;
    int first;
    int last;
  };
  static constexpr Family kFamilies[] = {
      {"VPleaf", "leaf wetness", 1, 3},
      {"VPsoilmoisture", "soil moisture", 1, 4},
      {"VPsoiltemp", "soil temperature", 2, 4},
  };
  for (const Family& family : kFamilies)
    for (const char* side : {"hi", "lo"})
      for (int n = family.first; n <= family.last; ++n)
        rows.push_back(missing(side + numbered(family.stem, n),
                               std::string("today's ") + (side[0] == 'h' ? "highest " : "lowest ") + family.what +
                                   " of channel " + std::to_string(n) + kNotFollowed));
}

void addLeafMinutes(std::vector<TagDef>& rows) {
  for (const char* span : {"10", "60"})
    for (int n = 1; n <= 2; ++n)
      rows.push_back(missing(numbered(std::string("leafminlast") + span + "min", n),
                             "minutes of wet leaves on leaf channel " + std::to_string(n) + " in the last " + span +
                                 " minutes; the program keeps no history of leaf wetness"));
}

// "VPextratemp3high", "VPextrahum3lowtime": today's extremes of the extra
// channels, not followed yet. The first four temperature channels also have
// "hi"/"lo" forms.
void addExtraChannelExtremes(std::vector<TagDef>& rows, const std::string& stem, const char* what,
                             int shortForms) {
  for (int n = 1; n <= kVantageExtraChannels; ++n) {
    const std::string channel = stem + std::to_string(n);
    const std::string of = std::string(what) + " channel " + std::to_string(n) + kNotFollowed;
    if (n <= shortForms) {
      rows.push_back(missing(channel + "hi", "today's highest " + of));
      rows.push_back(missing(channel + "lo", "today's lowest " + of));
    }
    rows.push_back(missing(channel + "high", "today's highest " + of));
    rows.push_back(missing(channel + "hightime", "time of today's highest " + of));
    rows.push_back(missing(channel + "low", "today's lowest " + of));
    rows.push_back(missing(channel + "lowtime", "time of today's lowest " + of));
  }
}

void addVantageChannels(std::vector<TagDef>& rows) {
  for (int n = 1; n <= kVantageExtraChannels; ++n) {
    const std::string number_ = std::to_string(n);
    // The console has a seventh humidity channel, but the sixth has no tag of its own.
    if (n != 6)
      rows.push_back(number("VPextrahum" + number_, Unit::none, 1, 0,
                            [n](const TagContext& c) { return extraHumidity(c, n); },
                            "extra humidity channel " + number_ + " of a Vantage with extra sensors, %"));
    rows.push_back(number("VPextratemp" + number_, Unit::temperature, 1, 1,
                          [n](const TagContext& c) { return extraTemperature(c, n); },
                          "extra temperature channel " + number_ + " of a Vantage with extra sensors"));
  }
  for (int n = 1; n <= kVantageLeafChannels; ++n)
    rows.push_back(number(numbered("VPleaf", n), Unit::none, 1, 0,
                          [n](const TagContext& c) { return leafWetness(c, n); },
                          "leaf wetness of channel " + std::to_string(n) + ", 0 (dry) to 15 (wet)"));
  for (int n = 1; n <= kVantageSoilChannels; ++n)
    rows.push_back(number(numbered("VPsoilmoisture", n), Unit::none, 1, 0,
                          [n](const TagContext& c) { return soilMoisture(c, n); },
                          "soil moisture of channel " + std::to_string(n) + ", centibar"));
  for (int n = 1; n <= kVantageSoilChannels; ++n) {
    const std::string name = numbered("VPsoiltemp", n);
    const std::string of = "soil temperature of channel " + std::to_string(n);
    auto source = [n](const TagContext& c) { return soilTemperature(c, n); };
    rows.push_back(number(name, Unit::temperature, 1, 0, source, of + ", whole degrees"));
    rows.push_back(number(name + "1dp", Unit::temperature, 1, 1, source, of + ", one decimal"));
  }
}

}  // namespace

std::vector<TagDef> sensorTags() {
  std::vector<TagDef> rows = {
      missing("barometertemperature", std::string("temperature at the barometer") + kNotThisSensor),
      number("batteryvolts", Unit::none, 1, 2, consoleBattery, "the Vantage console's battery voltage"),
      missing("estsoilmoistdef", "estimated soil-moisture deficit; the program keeps no water balance"),
  };
  addExtraTemperatures(rows);
  rows.push_back(text("highsoilt", [](const TagContext& c) { return soilExtremeTime(c, Side::High); },
                      "time of today's highest soil temperature"));
  rows.push_back(text("lowsoilt", [](const TagContext& c) { return soilExtremeTime(c, Side::Low); },
                      "time of today's lowest soil temperature"));
  rows.push_back(number("maxsoiltemp", Unit::temperature, 1, 1,
                        [](const TagContext& c) { return soilExtreme(c, Side::High); },
                        "today's highest soil temperature"));
  rows.push_back(number("minsoiltemp", Unit::temperature, 1, 1,
                        [](const TagContext& c) { return soilExtreme(c, Side::Low); },
                        "today's lowest soil temperature"));
  addUnfollowedExtremes(rows);
  addLeafMinutes(rows);
  rows.push_back(number("soiltemp", Unit::temperature, 1, 1,
                        [](const TagContext& c) { return reading(c, c.live.soiltemp); }, "soil temperature"));
  rows.push_back(number("soiltempincelsius", Unit::celsius, 1, 1,
                        [](const TagContext& c) { return reading(c, c.live.soiltemp); },
                        "soil temperature in °C"));
  rows.push_back(number("vpconsolebattery", Unit::none, 1, 2, consoleBattery,
                        "the Vantage console's battery voltage"));
  // ET has two decimals in mm (three in inches), as the logs write it.
  rows.push_back(number("VPet", Unit::rain, 1, 2, [](const TagContext& c) { return vantageRain(c, c.live.dailyet); },
                        "today's evapotranspiration from the Vantage console"));
  rows.push_back(missing("VPetmonth", "this month's evapotranspiration; the console sends it but it is not kept"));
  rows.push_back(missing("VPetyear", "this year's evapotranspiration; the console sends it but it is not kept"));
  rows.push_back(missing("yesterdaydaviset", "yesterday's evapotranspiration; the daily reset does not keep it yet"));
  addExtraChannelExtremes(rows, "VPextrahum", "humidity of extra", 0);
  addExtraChannelExtremes(rows, "VPextratemp", "temperature of extra", 4);
  addVantageChannels(rows);
  rows.push_back(text("vpissstatus", issStatus,
                      "the Vantage outdoor transmitter's battery: OK or Battery low (transmitter ID 1)"));
  for (const char* name : {"vpreception", "vpreception2"})
    rows.push_back(missing(name, "share of the transmitter's packets the console received; the program "
                                 "does not ask the console for its reception"));
  rows.push_back(number("VPsolar", Unit::none, 1, 0, [](const TagContext& c) { return reading(c, c.live.solar); },
                        "solar radiation, W/m²"));
  rows.push_back(number("VPsolar0minuteago", Unit::none, 1, 0,
                        [](const TagContext& c) { return reading(c, c.live.solar); },
                        "solar radiation at this minute, W/m²"));
  rows.push_back(number("VPuv", Unit::none, 1, 1, [](const TagContext& c) { return reading(c, c.live.uv); },
                        "UV index"));
  rows.push_back(number("VPuv0minuteago", Unit::none, 1, 1, [](const TagContext& c) { return reading(c, c.live.uv); },
                        "UV index at this minute"));
  rows.push_back(number("vpstormrain", Unit::rain, 1, 1,
                        [](const TagContext& c) { return vantageRain(c, c.live.stormrain); },
                        "rain of the current storm, from the Vantage console (0 when no storm)"));
  rows.push_back(text("vpstormrainstart", stormStart,
                      "year in which the current storm began; --- when no storm (only the year is kept)"));
  for (int n = 1; n <= 5; ++n)
    rows.push_back(number("wetbulbextratemp" + std::to_string(n), Unit::temperature, 1, 1,
                          [n](const TagContext& c) { return extraWetBulb(c, n); },
                          "wet-bulb temperature from extra temperature and humidity channel " + std::to_string(n)));
  return rows;
}

}  // namespace nimbrel
