// Sensors of other station makes, and the general extra channels.
//
// This program reads a Davis Vantage only, so the sensors that only other
// makes have (1-wire "dallas" sensors, the WS2000/WS2010 and WMR918/968
// channels and batteries, GPS, the aurora cloud sensor, the Vaisala hail
// sensor, water temperature, visibility) have no value. The general extra
// channels are the live record's extra channels, shown on the terms of
// sensor_channels.h: a Vantage with extra sensors, channels 1-7, not the
// console's "no sensor" mark.

#include <string>

#include "publish/tags/sensor_channels.h"
#include "publish/tags/tag_rows.h"
#include "publish/tags/tag_tables.h"

namespace nimbrel {

using namespace tagrows;
using namespace sensorchannels;

namespace {

std::string why(const char* make) {
  return std::string("; the program has no driver for ") + make + " sensors";
}

// 1-wire channels keep the first channel's name without a number
// ("dallasextrahum", "dallasextrahum2").
std::string oneWireNumbered(const std::string& stem, int channel) {
  return channel == 1 ? stem : stem + std::to_string(channel);
}

void addOneWireHumidities(std::vector<TagDef>& rows) {
  const std::string none = why("1-wire");
  for (int n = 1; n <= 4; ++n) {
    const std::string name = oneWireNumbered("dallasextrahum", n);
    const std::string of = "1-wire extra humidity channel " + std::to_string(n);
    rows.push_back(missing(name, of + none));
    rows.push_back(missing(name + "high", "today's highest " + of + none));
    rows.push_back(missing(name + "hightime", "time of today's highest " + of + none));
    rows.push_back(missing(name + "low", "today's lowest " + of + none));
    rows.push_back(missing(name + "lowtime", "time of today's lowest " + of + none));
  }
}

void addOneWireTemperatures(std::vector<TagDef>& rows) {
  const std::string none = why("1-wire");
  for (int n = 1; n <= 10; ++n) {
    const std::string name = "dallasextratemp" + std::to_string(n);
    const std::string of = "1-wire extra temperature channel " + std::to_string(n);
    rows.push_back(missing(name, of + none));
    rows.push_back(missing(name + "high", "today's highest " + of + none));
    rows.push_back(missing(name + "hightime", "time of today's highest " + of + none));
    rows.push_back(missing(name + "low", "today's lowest " + of + none));
    rows.push_back(missing(name + "lowtime", "time of today's lowest " + of + none));
  }
  // The temperature of the 1-wire humidity sensors, and its day's extremes
  // ("highdallashumtemp2", time "highdallashumtemp2t").
  for (int n = 1; n <= 4; ++n) {
    const std::string of = "temperature of 1-wire humidity sensor " + std::to_string(n);
    rows.push_back(missing(oneWireNumbered("dallashumtemp", n), of + none));
    for (const char* side : {"high", "low"}) {
      const std::string name = oneWireNumbered(std::string(side) + "dallashumtemp", n);
      const std::string extreme = std::string("today's ") + (side[0] == 'h' ? "highest " : "lowest ") + of;
      rows.push_back(missing(name, extreme + none));
      rows.push_back(missing(name + "t", "time of " + extreme + none));
    }
  }
}

void addGeneralChannels(std::vector<TagDef>& rows) {
  for (int n = 1; n <= kExtraChannels; ++n) {
    const std::string channel = std::to_string(n);
    auto temperature = [n](const TagContext& c) { return extraTemperature(c, n); };
    const std::string whenShown = " (a Vantage's channels 1-7 with extra sensors; otherwise ---)";
    rows.push_back(number("generalextrahum" + channel, Unit::none, 1, 0,
                          [n](const TagContext& c) { return extraHumidity(c, n); },
                          "extra humidity channel " + channel + ", %" + whenShown));
    rows.push_back(number("generalextratemp" + channel, Unit::temperature, 1, 1, temperature,
                          "extra temperature channel " + channel + whenShown));
    rows.push_back(number("generalextratemp" + channel + "C", Unit::celsius, 1, 1, temperature,
                          "extra temperature channel " + channel + " in °C" + whenShown));
    rows.push_back(number("generalextratemp" + channel + "F", Unit::fahrenheit, 1, 1, temperature,
                          "extra temperature channel " + channel + " in °F" + whenShown));
  }
}

void addWs2000(std::vector<TagDef>& rows) {
  const std::string none = why("WS2000");
  for (int n = 1; n <= 9; ++n) {
    const std::string sensor = "sen" + std::to_string(n);
    const std::string of = " of WS2000 sensor " + std::to_string(n);
    rows.push_back(missing("ws2000" + sensor + "h", "humidity" + of + none));
    rows.push_back(missing("ws2000" + sensor + "t", "temperature" + of + none));
    for (const char* side : {"hiws2000", "lows2000"}) {
      const std::string extreme = side[0] == 'h' ? "today's highest " : "today's lowest ";
      const std::string stem = side + sensor;
      rows.push_back(missing(stem + "h", extreme + "humidity" + of + none));
      rows.push_back(missing(stem + "ht", "time of " + extreme + "humidity" + of + none));
      rows.push_back(missing(stem + "t", extreme + "temperature" + of + none));
      rows.push_back(missing(stem + "tt", "time of " + extreme + "temperature" + of + none));
    }
  }
  const std::string status = why("WS2010");
  for (int n = 1; n <= 8; ++n)
    rows.push_back(missing("ws2010sensorstatus" + std::to_string(n),
                           "reception status of WS2010 sensor " + std::to_string(n) + status));
  for (const char* sensor : {"indoor", "rain", "wind"})
    rows.push_back(missing(std::string("ws2010sensorstatus") + sensor,
                           std::string("reception status of the WS2010 ") + sensor + " sensor" + status));
}

// The WMR918/968 extra channels keep the first channel's name without a
// number and put the number before "time" ("wmr918/68extrahumhigh2time").
void addWmr918(std::vector<TagDef>& rows) {
  const std::string none = why("WMR918/968");
  const std::string stem = "wmr918/68";
  for (int n = 1; n <= 3; ++n) {
    const std::string number_ = n == 1 ? "" : std::to_string(n);
    const std::string hum = " extra humidity channel " + std::to_string(n);
    const std::string temp = " extra temperature channel " + std::to_string(n);
    rows.push_back(missing(stem + "extrahum" + number_, "WMR918/968" + hum + none));
    rows.push_back(missing(stem + "extrahumhigh" + number_, "today's highest WMR918/968" + hum + none));
    rows.push_back(missing(stem + "extrahumhigh" + number_ + "time", "time of today's highest WMR918/968" + hum + none));
    rows.push_back(missing(stem + "extrahumlow" + number_, "today's lowest WMR918/968" + hum + none));
    rows.push_back(missing(stem + "extrahumlow" + number_ + "time", "time of today's lowest WMR918/968" + hum + none));
    rows.push_back(missing(stem + "extratemp" + number_, "WMR918/968" + temp + none));
    rows.push_back(missing(stem + "extratemphigh" + number_, "today's highest WMR918/968" + temp + none));
    rows.push_back(missing(stem + "extratemplow" + number_, "today's lowest WMR918/968" + temp + none));
    rows.push_back(missing(stem + "temphightime" + number_, "time of today's highest WMR918/968" + temp + none));
    rows.push_back(missing(stem + "templowtime" + number_, "time of today's lowest WMR918/968" + temp + none));
    rows.push_back(missing(stem + "tempbat" + std::to_string(n),
                           "battery of the WMR918/968 extra temperature sensor " + std::to_string(n) + none));
  }
  rows.push_back(missing(stem + "consbat", "battery of the WMR918/968 console" + none));
  rows.push_back(missing(stem + "rainbat", "battery of the WMR918/968 rain gauge" + none));
  rows.push_back(missing(stem + "tempbat", "battery of the WMR918/968 outdoor temperature sensor" + none));
  rows.push_back(missing(stem + "windbat", "battery of the WMR918/968 anemometer" + none));
  rows.push_back(missing("highwmr918extra", "today's highest WMR918 extra temperature" + none));
  rows.push_back(missing("highwmr918extrat", "time of today's highest WMR918 extra temperature" + none));
  rows.push_back(missing("lowwmr918extra", "today's lowest WMR918 extra temperature" + none));
  rows.push_back(missing("lowwmr918extrat", "time of today's lowest WMR918 extra temperature" + none));
}

}  // namespace

std::vector<TagDef> otherStationTags() {
  const std::string oneWire = why("1-wire");
  const std::string aurora = why("the aurora cloud sensor's");
  std::vector<TagDef> rows = {
      missing("1wireextraspeed", "wind speed of a second 1-wire anemometer" + oneWire),
      missing("1wireleaf", "1-wire leaf wetness" + oneWire),
      missing("1wireraincount", "count of the 1-wire rain gauge" + oneWire),
      missing("acuritesignalstrength", "signal strength of an Acurite station" + why("Acurite")),
      missing("auroraclarity", "sky clarity from the aurora cloud sensor" + aurora),
      missing("auroracloud", "cloud cover from the aurora cloud sensor" + aurora),
      missing("auroralight", "light level from the aurora cloud sensor" + aurora),
      missing("aurorarain", "rain detection of the aurora cloud sensor" + aurora),
      missing("aurorasensortemp", "the aurora cloud sensor's own temperature" + aurora),
      missing("auroraskytemp", "sky temperature from the aurora cloud sensor" + aurora),
      missing("blackglobe", "black-globe temperature" + why("black-globe")),
      missing("cloudtemper", "sky temperature of an infrared cloud sensor" + why("cloud")),
  };
  addOneWireHumidities(rows);
  addOneWireTemperatures(rows);
  rows.push_back(missing("dallassolarvolts", "voltage of a 1-wire solar sensor" + oneWire));
  rows.push_back(missing("flatplatesensor", "temperature of a flat-plate sensor" + why("flat-plate")));
  addGeneralChannels(rows);
  const std::string gps = "; the program reads no GPS receiver";
  for (const auto& [name, what] : {std::pair{"gpsaltitude", "altitude"}, std::pair{"gpshdop", "horizontal dilution of precision"},
                                   std::pair{"gpslat", "latitude"}, std::pair{"gpslong", "longitude"},
                                   std::pair{"gpsquality", "fix quality"}, std::pair{"gpssatcount", "count of satellites"},
                                   std::pair{"gpsspeed", "speed"}, std::pair{"gpstime", "time"},
                                   std::pair{"gpstruecourse", "true course"}})
    rows.push_back(missing(name, std::string("GPS ") + what + gps));
  rows.push_back(missing("growsolar", "solar radiation of a second (growing) solar sensor" + why("second solar")));
  addWs2000(rows);
  const std::string vaisala = why("Vaisala");
  rows.push_back(missing("vaisalaanalog", "analogue input of a Vaisala station" + vaisala));
  rows.push_back(missing("vaisalahailaccum", "hail accumulated by a Vaisala station" + vaisala));
  rows.push_back(missing("vaisalahaildura", "duration of hail at a Vaisala station" + vaisala));
  rows.push_back(missing("vaisalahailinte", "hail intensity at a Vaisala station" + vaisala));
  rows.push_back(missing("vaisalahailpeak", "peak hail intensity at a Vaisala station" + vaisala));
  rows.push_back(missing("visibility", "visibility" + why("visibility")));
  rows.push_back(missing("visibilitykm", "visibility in km" + why("visibility")));
  rows.push_back(missing("watertempcelsius", "water temperature in °C" + why("water temperature")));
  rows.push_back(missing("watertempfaren", "water temperature in °F" + why("water temperature")));
  addWmr918(rows);
  rows.push_back(missing("ws16speed#2", "wind speed of a second WS16 anemometer" + why("WS16")));
  return rows;
}

}  // namespace nimbrel
