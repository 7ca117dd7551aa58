#include "core/unit_settings.h"

#include "core/settings_fields.h"

namespace nimbrel {
namespace {

// Every key that the units form reads and writes, in reading order. The same
// list serves loading and saving, so the two can never disagree on a name.
template <class Settings, class Fields>
void visitPressureAndResets(Settings& s, Fields& f) {
  f.integer("Pressure rate 3 hour", "threshold", s.pressureTrend.threshold, 0);
  f.integer("Pressure rate 3 hour", "threshold2", s.pressureTrend.threshold2, 0);
  f.integer("Pressure rate 3 hour slow", "threshold", s.pressureTrend.slowThreshold, 0);
  f.integer("Pressure rate 3 hour slow", "threshold2", s.pressureTrend.slowThreshold2, 0);
  f.integer("Pressure rate 3 hour fast", "threshold", s.pressureTrend.fastThreshold, 0);
  f.integer("Pressure rate 3 hour fast", "threshold2", s.pressureTrend.fastThreshold2, 0);
  f.onOff("Pressure rate 3 hour", "option", s.pressureTrend.useThreeHourRule);
  f.choice("Reset times", "option", s.resets.dayReset);
  f.integer("New daily reset time", "number", s.resets.dailyResetHour, 0, 23);
  f.integerOr("New daily reset time", "rain number", s.resets.rainResetHour, s.resets.dailyResetHour, 0, 23);
  f.integer("New year rain reset time", "number", s.resets.rainSeasonStartMonth, 1, 12);
  f.integer("Height above sea level", "value", s.heightAboveSeaLevel);
  f.integer("Main graph temp lift factor", "value", s.display.graphTempLiftFactor);
  f.integer("Max wind gauge", "number", s.display.maxWindGauge, 0);
}

template <class Settings, class Fields>
void visitUnits(Settings& s, Fields& f) {
  constexpr std::string_view kUnits = "New units";
  f.choice(kUnits, "wind", s.units.wind);
  f.choice(kUnits, "webwind", s.units.webWind);
  f.choice(kUnits, "temp", s.units.temperature);
  f.choice(kUnits, "webtemp", s.units.webTemperature);
  f.choice(kUnits, "rain", s.units.rain);
  f.choice(kUnits, "webrain", s.units.webRain);
  f.choice(kUnits, "baro", s.units.pressure);
  f.choice(kUnits, "webbaro", s.units.webPressure);
  f.choice(kUnits, "logfile", s.units.logFile);
  f.choice(kUnits, "date", s.units.date);
  f.choice(kUnits, "webdate", s.units.webDate);
  f.onOff(kUnits, "web different", s.units.webDifferent);
  f.onOff(kUnits, "use 10 min wind av", s.wind.useTenMinuteAverage);
  f.onOff(kUnits, "use 10 min wind av max", s.wind.useTenMinuteAverageForMax);
  f.onOff(kUnits, "use chill gust", s.wind.chillFromGust);
  f.onOff("New windchill", "use", s.wind.newWindChillFormula);
}

template <class Settings, class Fields>
void visitDisplay(Settings& s, Fields& f) {
  constexpr std::string_view kUnits = "New units";
  f.onOff(kUnits, "use qfe", s.display.useQfe);
  f.onOff(kUnits, "rain dp", s.display.rainTwoDecimals);
  f.onOff(kUnits, "rain dp mm", s.display.rainExtraDecimalMm);
  f.onOff(kUnits, "wind high res", s.display.windHighResolution);
  f.onOff(kUnits, "icon temp", s.display.iconTemp);
  f.onOff(kUnits, "icon wind", s.display.iconWind);
  f.onOff(kUnits, "show hum rate", s.display.showHumRate);
  f.onOff(kUnits, "show windrun", s.display.showWindrun);
  f.onOff(kUnits, "cloud in metres", s.display.cloudInMetres);
  f.onOff(kUnits, "show cloud graphic", s.display.showCloudGraphic);
  f.onOff(kUnits, "wind as km/h", s.display.windAsKmh);
  f.onOff(kUnits, "bftdial", s.display.bftDial);
  f.onOff(kUnits, "bftsummary", s.display.bftSummary);
  f.onOff("Units5", "bft under speed dial", s.display.bftUnderSpeedDial);
  f.onOff("Units5", "bft on summary", s.display.bftOnSummary);
}

template <class Settings, class Fields>
void visitStationAndPort(Settings& s, Fields& f) {
  constexpr std::string_view kType = "Weather Station Type";
  f.text(kType, "Name", s.station.name);
  f.onOff(kType, "first rain of the day ignore", s.station.firstRainOfTheDayIgnore);
  f.onOff(kType, "do the daily reset when qz starts", s.station.dailyResetWhenStarting);
  f.integer(kType, "Davis vp speed", s.station.davisVpSpeed, 1);
  f.onOff(kType, "rainwise cc3000", s.station.rainwiseCc3000);
  constexpr std::string_view kPort = "Comport";
  f.integer(kPort, "number", s.port.number, 1, 20);
  f.onOff(kPort, "use serial", s.port.useSerial);
  f.onOff(kPort, "use usb", s.port.useUsb);
  f.onOff(kPort, "use tcpip vp", s.port.useTcpipVp);
  f.text(kPort, "use tcpip vp ip", s.port.tcpipVpAddress);
  f.integer(kPort, "use tcpip vp port", s.port.tcpipVpPort, 1, 65535);
  f.integer(kPort, "duration", s.port.releaseDuration, 1);
  f.onOff(kPort, "reset every hour", s.port.resetEveryHour);
  f.onOff(kPort, "reset once", s.port.resetOnce);
}

template <class Settings, class Fields>
void visitConnectionsAndRunningState(Settings& s, Fields& f) {
  constexpr std::string_view kConnections = "Connections";
  f.text(kConnections, "StationName", s.connections.stationName);
  f.text(kConnections, "FTPHost", s.connections.ftpHost);
  f.text(kConnections, "FTPUsername", s.connections.ftpUsername);
  f.text(kConnections, "FTPPassword", s.connections.ftpPassword);
  f.text(kConnections, "RemoteDir", s.connections.remoteDir);
  f.onOff(kConnections, "no night upload", s.connections.noNightUpload);
  f.onOff(kConnections, "always disconnect", s.connections.alwaysDisconnect);
  f.decimal("new rain storage", "dailyrain new", s.running.dailyRainMm, kNotNegativeAmount);
  f.decimal("new rain storage", "monthlyrain new", s.running.monthlyRainMm, kNotNegativeAmount);
  f.decimal("new rain storage", "yearlyrain new", s.running.yearlyRainMm, kNotNegativeAmount);
  f.decimal("Last max rain rate", "value", s.running.lastMaxRainRate, kNotNegativeAmount);
  f.decimal("Daily solar", "value", s.running.dailySolarSum, kNotNegativeAmount);
  f.integer("Daily solar count", "value", s.running.dailySolarCount, 0);
}

template <class Settings, class Fields>
void visitAll(Settings& s, Fields& f) {
  visitPressureAndResets(s, f);
  visitUnits(s, f);
  visitDisplay(s, f);
  visitStationAndPort(s, f);
  visitConnectionsAndRunningState(s, f);
}

}  // namespace

UnitSettings loadsettings(const SettingsStore& mainSettings) {
  UnitSettings settings;
  FieldLoader loader(mainSettings);
  visitAll(settings, loader);
  return settings;
}

void savesettings(const UnitSettings& settings, SettingsStore& mainSettings) {
  FieldSaver saver(mainSettings);
  visitAll(settings, saver);
}

}  // namespace nimbrel
