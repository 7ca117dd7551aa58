#pragma once
// The simulated station: the weather of `Climate` plus what a console adds up
// over time (rain and ET counters, storm, soil moisture, leaf wetness, daily
// highs). The counters advance on a fixed 10-second grid of absolute time, so
// the state at an instant does not depend on how often the model was asked;
// a model with a given seed and start is fully reproducible.
//
// Rain counters behave as the console's: day rain resets at local midnight,
// month rain on the 1st, year rain on 1 January; a storm ends after 24 hours
// without a bucket tip.

#include <cstdint>
#include <optional>

#include "core/clock.h"
#include "tools/vantage_sim/climate.h"
#include "tools/vantage_sim/console_reading.h"

namespace nimbrel::sim {

struct WeatherModelOptions {
  std::uint64_t seed = 1;
  double latitudeDegrees = 51.5;
  bool solarSensors = true;      // solar radiation and UV
  bool extraSensor = true;       // extra temperature/humidity 1
  bool soilAndLeafSensors = true;  // soil temperature/moisture 1, leaf wetness 1
};

class WeatherModel {
 public:
  explicit WeatherModel(SystemTime start, WeatherModelOptions options = {});

  // Moves the model on to `t`; an earlier time than the present is ignored.
  void advanceTo(SystemTime t);

  SystemTime time() const { return time_; }
  const WeatherConditions& conditions() const { return current_; }
  // The present values as the console would put them in a LOOP packet (the
  // archive pointer is the console's business and left at 0).
  ConsoleReading reading() const;
  const ConsoleHighsLows& highsLows() const { return highsLows_; }
  // Every bucket tip since the model started, never reset.
  std::uint64_t totalRainClicks() const { return rain_.totalClicks; }

 private:
  struct RainCounters {
    double pendingClicks = 0;  // rain fallen but not yet a whole tip
    std::uint64_t totalClicks = 0;
    std::uint32_t day = 0, month = 0, year = 0, storm = 0;
    std::optional<CalendarDate> stormStart;
    std::optional<SystemTime> lastTip;
  };
  struct EtCounters {  // thousandths of an inch
    double day = 0, month = 0, year = 0;
  };

  void stepTo(SystemTime gridPoint);
  void addRain(const WeatherConditions& c, SystemTime at, const LocalTime& local);
  void addEvaporation(const WeatherConditions& c);
  void updateGround(const WeatherConditions& c);
  void rollOver(const LocalTime& previous, const LocalTime& next, const WeatherConditions& c);
  void resetDayHighsLows(const WeatherConditions& c, const LocalTime& local);
  void updateHighsLows(const WeatherConditions& c, const LocalTime& local);
  void fillSensors(ConsoleReading& r) const;
  void fillTotals(ConsoleReading& r) const;

  WeatherModelOptions options_;
  Climate climate_;
  SystemTime time_;
  LocalTime date_;  // local date of the last grid step
  WeatherConditions current_;
  RainCounters rain_;
  EtCounters et_;
  double soilMoisture_ = 30;  // centibar
  double leafWetness_ = 0;    // 0-15
  ConsoleHighsLows highsLows_;
};

}  // namespace nimbrel::sim
