#include "publish/tags/sensor_channels.h"

#include "stations/station_types.h"

namespace nimbrel::sensorchannels {
namespace {

// The console's "no sensor" byte (255) converted as a temperature channel
// converts it: (255 - 122) / 1.8 °C, for the soil channels and (after the
// 90 °F bias) for the extra channels alike. The highest real byte, 254,
// gives 73.3 °C.
constexpr double kTemperatureMark = 133.0 / 1.8;
constexpr double kTemperatureMarkMargin = 0.1;
constexpr int kMaxHumidity = 100;
constexpr int kMaxSoilMoisture = 200;  // centibar
constexpr int kMaxLeafWetness = 15;

bool channelIn(int channel, int count) { return channel >= 1 && channel <= count; }

TagValue temperatureOrNothing(double celsius) {
  if (celsius >= kTemperatureMark - kTemperatureMarkMargin) return noData();
  return celsius;
}

}  // namespace

bool vantageReporting(const TagContext& context) {
  return context.readingsSeen && stationTypeFromName(context.units.station.name) == stationtype::vantagePro;
}

bool vantageChannelsTrusted(const TagContext& context) {
  return vantageReporting(context) && context.settings.readSwitch(kStationTypeSection, "Vantage pro extra sensors");
}

TagValue extraTemperature(const TagContext& context, int channel) {
  if (!channelIn(channel, kVantageExtraChannels) || !vantageChannelsTrusted(context)) return noData();
  return temperatureOrNothing(context.live.extratemp[channel]);
}

TagValue soilTemperature(const TagContext& context, int channel) {
  if (!channelIn(channel, kVantageSoilChannels) || !vantageChannelsTrusted(context)) return noData();
  return temperatureOrNothing(context.live.soiltemps[channel]);
}

TagValue extraHumidity(const TagContext& context, int channel) {
  if (!channelIn(channel, kVantageExtraChannels) || !vantageChannelsTrusted(context)) return noData();
  const int humidity = context.live.extrahum[channel];
  if (humidity == 0 || humidity > kMaxHumidity) return noData();
  return humidity;
}

TagValue soilMoisture(const TagContext& context, int channel) {
  if (!channelIn(channel, kVantageSoilChannels) || !vantageChannelsTrusted(context)) return noData();
  const int centibar = context.live.soilmoisture[channel];
  if (centibar > kMaxSoilMoisture) return noData();
  return centibar;
}

TagValue leafWetness(const TagContext& context, int channel) {
  if (!channelIn(channel, kVantageLeafChannels) || !vantageChannelsTrusted(context)) return noData();
  const int wetness = context.live.leafwetness[channel];
  if (wetness > kMaxLeafWetness) return noData();
  return wetness;
}

}  // namespace nimbrel::sensorchannels
