#pragma once
// The main settings read once at start by `loadsettings` and written back by
// `savesettings` when the user confirms the units form: units, reset times,
// pressure-trend rules, display switches, station type, port, main upload
// server and the running totals kept across restarts.
//
// Reading rules: an empty or missing value keeps the default given here
// (never zero in its place); a number that does not parse, or lies outside
// its range, keeps the default too, is reported in the error log, and the
// other keys still load (ranges: hours 0-23, months 1-12, TCP ports 1-65535,
// the port chooser 1-20, durations and speeds from 1, thresholds, counts and
// rain totals from 0); a switch is on only for exactly "yes" ("Yes" and
// "true" are off); a unit word that is not one of its choices keeps the
// default, and "Reset times" is 9 am only for exactly "9am".
//
// Writing: switches as "yes"/"no", units as their words, numbers as plain
// decimal text with a point.

#include <string>

#include "core/settings_store.h"
#include "core/unit_choices.h"

namespace nimbrel {

// Thresholds of the 3-hour pressure tendency words, in the unit the
// pressure-trend form uses. Each section holds a pair ("threshold",
// "threshold2").
struct PressureTrendSettings {
  int threshold = 1;  // "Pressure rate 3 hour"
  int threshold2 = 1;
  int slowThreshold = 1;  // "Pressure rate 3 hour slow": below these, "slowly"
  int slowThreshold2 = 1;
  int fastThreshold = 4;  // "Pressure rate 3 hour fast": above these, "rapidly"
  int fastThreshold2 = 4;
  bool useThreeHourRule = false;  // "Pressure rate 3 hour" / "option"

  friend bool operator==(const PressureTrendSettings&, const PressureTrendSettings&) = default;
};

struct ResetSettings {
  DayResetTime dayReset = DayResetTime::midnight;  // "Reset times" / "option"
  int dailyResetHour = 0;                          // "New daily reset time" / "number", 0-23
  int rainResetHour = 0;                           // "rain number", 0-23; empty: same as dailyResetHour
  int rainSeasonStartMonth = 1;                    // "New year rain reset time" / "number", 1-12: January

  friend bool operator==(const ResetSettings&, const ResetSettings&) = default;
};

// Display units, and the web units used when webDifferent is on. Defaults are
// metric: km/h, Celsius, mm, hPa, metric logs, day/month dates.
struct UnitChoicesSettings {
  WindUnit wind = WindUnit::kmh;
  WindUnit webWind = WindUnit::kmh;
  TemperatureUnit temperature = TemperatureUnit::celsius;
  TemperatureUnit webTemperature = TemperatureUnit::celsius;
  RainUnit rain = RainUnit::mm;
  RainUnit webRain = RainUnit::mm;
  PressureUnit pressure = PressureUnit::hpa;
  PressureUnit webPressure = PressureUnit::hpa;
  UnitSystem logFile = UnitSystem::metric;
  UnitSystem date = UnitSystem::metric;
  UnitSystem webDate = UnitSystem::metric;
  bool webDifferent = false;  // off: the web keys are ignored

  WindUnit webWindShown() const { return webDifferent ? webWind : wind; }
  TemperatureUnit webTemperatureShown() const { return webDifferent ? webTemperature : temperature; }
  RainUnit webRainShown() const { return webDifferent ? webRain : rain; }
  PressureUnit webPressureShown() const { return webDifferent ? webPressure : pressure; }
  UnitSystem webDateShown() const { return webDifferent ? webDate : date; }

  friend bool operator==(const UnitChoicesSettings&, const UnitChoicesSettings&) = default;
};

struct WindOptions {
  bool useTenMinuteAverage = false;        // "use 10 min wind av"
  bool useTenMinuteAverageForMax = false;  // "use 10 min wind av max"
  bool chillFromGust = false;              // "use chill gust"
  bool newWindChillFormula = false;        // "New windchill" / "use"

  friend bool operator==(const WindOptions&, const WindOptions&) = default;
};

// Switches of section "New units" (and "Units5") that only change what is
// shown, plus the dial and graph numbers.
struct DisplayOptions {
  bool useQfe = false;              // "use qfe"
  bool rainTwoDecimals = false;     // "rain dp"
  bool rainExtraDecimalMm = false;  // "rain dp mm"
  bool windHighResolution = false;  // "wind high res"
  bool iconTemp = false;            // "icon temp"
  bool iconWind = false;            // "icon wind"
  bool showHumRate = false;         // "show hum rate"
  bool showWindrun = false;         // "show windrun"
  bool cloudInMetres = false;       // "cloud in metres"
  bool showCloudGraphic = false;    // "show cloud graphic"
  bool windAsKmh = false;           // "wind as km/h"
  bool bftDial = false;             // "bftdial"
  bool bftSummary = false;          // "bftsummary"
  bool bftUnderSpeedDial = false;   // "Units5" / "bft under speed dial"
  bool bftOnSummary = false;        // "Units5" / "bft on summary"
  int graphTempLiftFactor = 0;      // "Main graph temp lift factor" / "value"
  int maxWindGauge = 0;             // "Max wind gauge" / "number": full scale of the wind dial

  friend bool operator==(const DisplayOptions&, const DisplayOptions&) = default;
};

// Section "Weather Station Type".
struct StationTypeSettings {
  std::string name;                      // "Name": empty means no station chosen
  bool firstRainOfTheDayIgnore = false;  // "first rain of the day ignore"
  bool dailyResetWhenStarting = false;   // "do the daily reset when qz starts"
  int davisVpSpeed = 19200;              // "Davis vp speed": console baud rate
  bool rainwiseCc3000 = false;           // "rainwise cc3000"

  friend bool operator==(const StationTypeSettings&, const StationTypeSettings&) = default;
};

// Section "Comport".
struct ComportSettings {
  int number = 1;               // "number": 1-16 for COM1-COM16, 20 for the 1-wire printer-port adapter
  bool useSerial = false;       // "use serial"
  bool useUsb = false;          // "use usb"
  bool useTcpipVp = false;      // "use tcpip vp"
  std::string tcpipVpAddress;   // "use tcpip vp ip"
  int tcpipVpPort = 22222;      // "use tcpip vp port": the usual port of a Vantage network logger
  int releaseDuration = 10;     // "duration": how long the port stays released
  bool resetEveryHour = false;  // "reset every hour"
  bool resetOnce = false;       // "reset once"

  friend bool operator==(const ComportSettings&, const ComportSettings&) = default;
};

// Section "Connections": station name and the main upload server.
struct ConnectionSettings {
  std::string stationName;        // "StationName"
  std::string ftpHost;            // "FTPHost"
  std::string ftpUsername;        // "FTPUsername"
  std::string ftpPassword;        // "FTPPassword"
  std::string remoteDir;          // "RemoteDir"
  bool noNightUpload = false;     // "no night upload"
  bool alwaysDisconnect = false;  // "always disconnect"

  friend bool operator==(const ConnectionSettings&, const ConnectionSettings&) = default;
};

// Running totals kept across restarts; all start at zero.
struct StoredRunningState {
  double dailyRainMm = 0;      // "new rain storage" / "dailyrain new"
  double monthlyRainMm = 0;    // "monthlyrain new"
  double yearlyRainMm = 0;     // "yearlyrain new"
  double lastMaxRainRate = 0;  // "Last max rain rate" / "value"
  double dailySolarSum = 0;    // "Daily solar" / "value"
  int dailySolarCount = 0;     // "Daily solar count" / "value"

  friend bool operator==(const StoredRunningState&, const StoredRunningState&) = default;
};

struct UnitSettings {
  PressureTrendSettings pressureTrend;
  ResetSettings resets;
  int heightAboveSeaLevel = 0;  // "Height above sea level" / "value", as entered by the user
  UnitChoicesSettings units;
  WindOptions wind;
  DisplayOptions display;
  StationTypeSettings station;
  ComportSettings port;
  ConnectionSettings connections;
  StoredRunningState running;

  friend bool operator==(const UnitSettings&, const UnitSettings&) = default;
};

UnitSettings loadsettings(const SettingsStore& mainSettings);
void savesettings(const UnitSettings& settings, SettingsStore& mainSettings);

}  // namespace nimbrel
