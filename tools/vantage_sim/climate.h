#pragma once
// The simulated weather as a pure function of time: the same seed and instant
// always give the same conditions. Values are in the console's units (deg F,
// %, inHg, mph, W/m2, rain clicks of 0.01 in) but not yet rounded.
//
// Shape: a seasonal mean with a day/night cycle on local time; weather systems
// drifting over days; showers a few times a day; the sun from the latitude,
// day of year and local hour (solar noon taken as 12:30 local).

#include <cstdint>

#include "core/clock.h"
#include "tools/vantage_sim/seeded_noise.h"

namespace nimbrel::sim {

struct WeatherConditions {
  double outsideF = 0;
  double outsideHumidity = 0;
  double barometerInHg = 0;
  double barometerChange3h = 0;  // inHg over the last three hours
  double windAverageMph = 0;
  double windSpeedMph = 0;       // the latest gust, never below the average
  double windDirection = 0;      // degrees, [0, 360)
  double rainRate = 0;           // clicks per hour, 0 when dry
  double cloudiness = 0;         // 0 clear - 1 overcast
  double solarRadiation = 0;     // W/m2
  double uvIndex = 0;
  double insideF = 0;
  double insideHumidity = 0;
  double extraF = 0;             // a sheltered extra sensor (a shed)
  double extraHumidity = 0;
  double soilF = 0;
  double consoleVolts = 0;
  double sunriseHour = 0;        // local hours, fractional
  double sunsetHour = 0;
};

class Climate {
 public:
  Climate(std::uint64_t seed, double latitudeDegrees);

  WeatherConditions at(SystemTime t) const;
  // Pressure alone; it depends on the instant only, not on local time.
  double barometerAt(SystemTime t) const;
  // Rain rate in clicks per hour from the shower plan.
  double rainRateAt(SystemTime t) const;

 private:
  struct Sun {
    double elevationSine = 0;
    double sunriseHour = 0;
    double sunsetHour = 0;
  };
  Sun sunAt(const LocalTime& local) const;
  void fillTemperatures(WeatherConditions& c, double seconds, const LocalTime& local, double hour) const;
  void fillWind(WeatherConditions& c, double seconds, double hour) const;
  void fillSky(WeatherConditions& c, double seconds, const Sun& sun) const;

  SeededNoise noise_;
  double latitudeRadians_;
};

}  // namespace nimbrel::sim
