// The Vantage secondary channels, the console's own quantities, the other
// makes' extra channels and the program's service tags.

#include <gtest/gtest.h>

#include <string>

#include "core/platform/system_resources.h"
#include "core/version.h"
#include "publish/tags/sensor_channels.h"
#include "publish/tags/system_figures.h"
#include "stations/station_types.h"
#include "support/tag_world.h"

namespace nimbrel {
namespace {

using testsupport::TagWorld;

void makeVantage(TagWorld& world, bool extraSensors) {
  world.units.station.name = "DAVIS VANTAGE PRO";
  world.settings.WriteString(kStationTypeSection, "Vantage pro extra sensors", extraSensors ? "yes" : "no");
}

TEST(SensorTags, SecondaryChannelsOnlyWhenTheyCanBeTrusted) {
  TagWorld world;
  makeVantage(world, true);
  world.record.extratemp[2] = 12.34;
  world.record.extrahum[2] = 55;
  world.record.soiltemps[3] = 8;
  world.record.soilmoisture[1] = 20;
  world.record.leafwetness[2] = 7;
  world.record.extratemp[8] = 5;                         // no station fills channel 8
  world.record.extratemp[3] = 133.0 / 1.8;               // the console's mark, converted
  world.record.soilmoisture[2] = 255;                    // the console's mark
  world.record.leafwetness[3] = 16;                      // beyond the sensor's scale
  EXPECT_EQ(world.text("VPextratemp2"), "---");          // before the first reading
  world.reading();

  EXPECT_EQ(world.text("VPextratemp2"), "12.3");
  EXPECT_EQ(world.text("extratemp2"), "12.3");
  EXPECT_EQ(world.text("generalextratemp2F"), "54.2");
  EXPECT_EQ(world.text("VPextrahum2"), "55");
  EXPECT_EQ(world.text("generalextrahum2"), "55");
  EXPECT_EQ(world.text("VPextrahum3"), "---");  // 0 %: a channel with no sensor
  EXPECT_EQ(world.text("VPsoiltemp3"), "8");
  EXPECT_EQ(world.text("VPsoiltemp31dp"), "8.0");
  EXPECT_EQ(world.text("VPsoilmoisture"), "20");
  EXPECT_EQ(world.text("VPleaf2"), "7");
  EXPECT_EQ(world.text("VPleaf"), "0");  // a dry leaf is a reading
  EXPECT_EQ(world.text("extratemp8"), "---");
  EXPECT_EQ(world.text("generalextratemp8"), "---");
  EXPECT_EQ(world.text("VPextratemp3"), "---");
  EXPECT_EQ(world.text("VPsoilmoisture2"), "---");
  EXPECT_EQ(world.text("VPleaf3"), "---");
  // Stull's fit: 20 °C at 50 % gives a wet bulb of about 13.7 °C.
  world.record.extratemp[1] = 20;
  world.record.extrahum[1] = 50;
  EXPECT_EQ(world.text("wetbulbextratemp1"), "13.7");
  EXPECT_EQ(world.text("wetbulbextratemp2", true), "7.6°C");

  world.settings.WriteString(kStationTypeSection, "Vantage pro extra sensors", "no");
  EXPECT_EQ(world.text("VPextratemp2"), "---");
  EXPECT_EQ(world.text("VPleaf2"), "---");
  makeVantage(world, true);
  world.units.station.name = "Oregon Scientific WMR968";
  EXPECT_EQ(world.text("VPextratemp2"), "---");
  EXPECT_EQ(world.text("generalextrahum2"), "---");
}

TEST(SensorTags, ConsoleQuantitiesOfAVantage) {
  TagWorld world;
  world.record.consolebattery = 4.678;
  world.record.transmitterbattery = 0x03;
  world.record.stormrain = 12.7;
  world.record.stormstartyear = 2026;
  world.record.dailyet = 1.27;
  world.reading();
  EXPECT_EQ(world.text("vpconsolebattery"), "---");  // no station chosen
  EXPECT_EQ(world.text("vpstormrain"), "---");

  makeVantage(world, false);
  EXPECT_EQ(world.text("vpconsolebattery"), "4.68");
  EXPECT_EQ(world.text("batteryvolts"), "4.68");
  EXPECT_EQ(world.text("vpissstatus"), "Battery low");
  EXPECT_EQ(world.text("vpstormrain", true), "12.7 mm");
  EXPECT_EQ(world.text("vpstormrainstart"), "2026");
  EXPECT_EQ(world.text("VPet"), "1.27");
  world.units.units.rain = RainUnit::inches;
  EXPECT_EQ(world.text("VPet"), "0.050");

  world.record.transmitterbattery = 0x02;  // another transmitter's battery is low, not the ISS's
  world.record.stormrain = 0;
  EXPECT_EQ(world.text("vpissstatus"), "OK");
  EXPECT_EQ(world.text("vpstormrainstart"), "---");
}

TEST(SensorTags, SoilTemperatureAndItsExtremesOfTheDay) {
  TagWorld world;
  EXPECT_EQ(world.text("maxsoiltemp"), "---");
  EXPECT_EQ(world.text("highsoilt"), "---");
  world.record.soiltemp = world.record.soiltemps[1] = 10.0;
  world.reading();
  world.clock.advance(std::chrono::minutes(15));
  world.record.soiltemp = world.record.soiltemps[1] = 12.5;
  world.reading();
  EXPECT_EQ(world.text("soiltemp"), "12.5");
  EXPECT_EQ(world.text("maxsoiltemp"), "12.5");
  EXPECT_EQ(world.text("minsoiltemp"), "10.0");
  EXPECT_EQ(world.text("highsoilt"), "14:45");
  EXPECT_EQ(world.text("lowsoilt"), "14:30");
  world.units.units.temperature = TemperatureUnit::fahrenheit;
  EXPECT_EQ(world.text("soiltempincelsius"), "12.5");
  EXPECT_EQ(world.text("soiltemp"), "54.5");
}

TEST(ServiceTags, ProgramAndReportHeaderUnits) {
  TagWorld world;
  EXPECT_EQ(world.text("qzversion"), kVersion);
  EXPECT_EQ(world.text("qzbuild"), std::to_string(kBuildNumber));
  EXPECT_EQ(world.text("noaatempunit"), "°C");
  EXPECT_EQ(world.text("noaawindunit"), "km/h");
  EXPECT_EQ(world.text("noaabarounit"), "hPa");
  EXPECT_EQ(world.text("noaarainunit"), "mm");
  EXPECT_EQ(world.text("noaasnowunit"), "cm");
  world.units.units.webDifferent = true;
  world.units.units.webTemperature = TemperatureUnit::fahrenheit;
  world.units.units.webPressure = PressureUnit::inches;
  world.units.units.webRain = RainUnit::inches;
  world.units.units.webWind = WindUnit::knots;
  world.options.htmlDegreeSign = true;
  EXPECT_EQ(world.text("noaatempunit"), "&deg;F");
  EXPECT_EQ(world.text("noaabarounit"), "inHg");
  EXPECT_EQ(world.text("noaarainunit"), "in.");
  EXPECT_EQ(world.text("noaasnowunit"), "in.");
  EXPECT_EQ(world.text("noaawindunit"), "kts");
  EXPECT_EQ(world.text("zambretti"), "---");
  EXPECT_EQ(world.text("wapstationname"), "---");
  world.record.stationname = "Hill Top";
  EXPECT_EQ(world.text("wapstationname"), "Hill Top");
}

TEST(ServiceTags, SystemFiguresReadFromProcText) {
  using namespace systemfigures;
  using platform::kilobytesOf;
  const std::string status = "Name:\tnimbrel\nVmPeak:\t  9000 kB\nVmRSS:\t   5120 kB\nVmRSSx: 1 kB\nEmpty:\n";
  EXPECT_EQ(kilobytesOf(status, "VmRSS"), 5120);
  EXPECT_EQ(kilobytesOf(status, "VmPeak"), 9000);
  EXPECT_EQ(kilobytesOf(status, "VmRS"), std::nullopt);  // a key is matched whole
  EXPECT_EQ(kilobytesOf(status, "Empty"), std::nullopt);
  EXPECT_EQ(kilobytesOf("", "VmRSS"), std::nullopt);
  EXPECT_EQ(durationText(59), "0 minutes");
  EXPECT_EQ(durationText(3600 + 60), "1 hour 1 minute");
  EXPECT_EQ(durationText(2 * 86400 + 120), "2 days 0 hours 2 minutes");
  TagWorld world;
  const std::string used = world.text("memoryused");
  if (used != "---") {
    EXPECT_GT(std::stod(used), 0.0);
  }
}

}  // namespace
}  // namespace nimbrel
