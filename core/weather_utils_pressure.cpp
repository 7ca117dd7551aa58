// Pressure reductions of TWeatherUtils: sensor to station height, altimeter
// setting, and the station / sea-level ratio.

#include <cmath>

#include "core/weather_utils.h"

namespace nimbrel {

namespace {

using Real = long double;

// NWS altimeter-setting equation (Federal Meteorological Handbook No. 1):
// (P - c) * (1 + k * H / (P - c)^n)^(1/n), n = 0.190284, with the 0.3 hPa
// (0.01 inHg) sensor allowance c and k = p0^n * 0.0065 / 288 in the unit of P.
Real nwsAltimeter(Real pressure, Real allowance, Real coefficient, Real geopotentialHeight) {
  const Real reduced = pressure - allowance;
  const Real growth = 1.0L + coefficient * geopotentialHeight / std::pow(reduced, 0.190284L);
  return reduced * std::pow(growth, 5.255302600323726L);
}

}  // namespace

double TWeatherUtils::SensorToStationPressureUS(double fahrenheit, double sensorHeightFt,
                                                double stationHeightFt, double pressureIn) {
  const Real exponent = 0.00813L * (stationHeightFt - sensorHeightFt) / (fahrenheit + 459.67L);
  const Real factor = Power10(static_cast<double>(exponent));
  return static_cast<double>(pressureIn * factor);
}

double TWeatherUtils::SensorToStationPressure(double celsius, double sensorHeightM,
                                              double stationHeightM, double pressureHPa) {
  const double inches = SensorToStationPressureUS(CToF(celsius), MToFt(sensorHeightM),
                                                  MToFt(stationHeightM), HPaToIn(pressureHPa));
  return InToHPa(inches);
}

double TWeatherUtils::StationToAltimeter(int algorithm, double heightM, double pressureHPa) {
  const Real p = pressureHPa;
  const Real h = heightM;
  switch (algorithm) {
    case 1:
      return static_cast<double>(
          nwsAltimeter(p, 0.3L, 8.42288069e-5L, GeopotentialAltitude(heightM)));
    case 2: {
      const Real growth = 1.0L + 8.41728638e-5L * h / std::pow(p, 0.19026323650848356L);
      return static_cast<double>(p * std::pow(growth, 5.255876113278518L));
    }
    case 3:
      return static_cast<double>(
          std::pow(std::pow(p - 0.3L, 0.190284L) + 8.41849605e-5L * h, 5.255302600323726L));
    case 4:
      return static_cast<double>(nwsAltimeter(p, 0.3L, 8.42288069e-5L, h));
    case 5:
    case 6:
      return InToHPa(StationToAltimeterUS(algorithm, MToFt(heightM), HPaToIn(pressureHPa)));
    default:
      return InToHPa(StationToAltimeterUS(0, MToFt(heightM), HPaToIn(pressureHPa)));
  }
}

double TWeatherUtils::StationToAltimeterUS(int algorithm, double heightFt, double pressureIn) {
  const Real p = pressureIn;
  const Real h = heightFt;
  switch (algorithm) {
    case 0:
      return static_cast<double>(std::pow(std::pow(p, 0.1903L) + 1.313e-5L * h, 5.255L));
    case 5:
      return static_cast<double>(std::pow(
          std::pow(p, 0.19026323650848356L) + 1.312603e-5L * h, 5.255876113278518L));
    case 6:
      return static_cast<double>(
          nwsAltimeter(p, 0.01L, 4.30899e-5L, GeopotentialAltitude(FtToM(heightFt))));
    default:
      return HPaToIn(StationToAltimeter(algorithm, FtToM(heightFt), InToHPa(pressureIn)));
  }
}

double TWeatherUtils::PressureReductionRatioUS(int humidity, int algorithm, double fahrenheit,
                                               double humidityFahrenheit, double heightFt,
                                               double pressureIn) {
  const Real humidityTerm =
      humidity == 0 ? 0.0L : HumidityCorrectionUS(humidity, 1, heightFt, humidityFahrenheit);
  const Real h = heightFt;
  switch (algorithm) {
    case 0: {
      const Real meanRankine = 0.00275L * h / 2.0L + (fahrenheit + 460.0L) + humidityTerm;
      return Power10(static_cast<double>(h / (meanRankine * 122.8943111L)));
    }
    case 2: {
      const Real z = GeopotentialAltitude(FtToM(heightFt));
      const Real meanRankine = 0.0117L * z / 2.0L + (459.7L + fahrenheit) + humidityTerm;
      return static_cast<double>(std::exp(0.061454L * z / meanRankine));
    }
    default:
      return PressureReductionRatio(humidity, algorithm, FToC(fahrenheit),
                                    FToC(humidityFahrenheit), FtToM(heightFt),
                                    InToHPa(pressureIn));
  }
}

// Hypsometric reduction through a standard-lapse column (0.0065 K/m) whose
// mean virtual temperature is the station's air temperature plus half the
// lapse over the column's geopotential height. 0.03416319473631037 K/m is
// g0 * M / R* of the 1976 US Standard Atmosphere (9.80665 * 0.0289644 /
// 8.31432), i.e. g / R for dry air with R = 287.053 J/(kg K). The moisture
// raises the virtual temperature by the amount it does at the humidity
// temperature.
double TWeatherUtils::PressureReductionRatio(int humidity, int algorithm, double celsius,
                                             double humidityCelsius, double heightM,
                                             double pressureHPa) {
  if (algorithm == 0 || algorithm == 2) {
    return PressureReductionRatioUS(humidity, algorithm, CToF(celsius), CToF(humidityCelsius),
                                    MToFt(heightM), HPaToIn(pressureHPa));
  }
  const Real z = GeopotentialAltitude(heightM);
  const Real virtualKelvin = VirtualTempK(humidity, humidityCelsius, pressureHPa);
  const Real moistureKelvin = virtualKelvin - static_cast<Real>(CToK(humidityCelsius));
  const Real meanVirtualKelvin = celsius + 273.15L + moistureKelvin + 0.0065L * z / 2.0L;
  return static_cast<double>(std::exp(0.03416319473631037L * z / meanVirtualKelvin));
}

double TWeatherUtils::StationToSeaLevelPressure(int humidity, int algorithm, double celsius,
                                                double humidityCelsius, double heightM,
                                                double stationHPa) {
  const Real ratio =
      PressureReductionRatio(humidity, algorithm, celsius, humidityCelsius, heightM, stationHPa);
  return static_cast<double>(stationHPa * ratio);
}

double TWeatherUtils::SeaLevelToStationPressure(int humidity, int algorithm, double celsius,
                                                double humidityCelsius, double heightM,
                                                double seaLevelHPa) {
  // The ratio depends on the station pressure only through the moisture
  // term, so one refinement from the sea-level first guess is plenty.
  const Real firstGuess = seaLevelHPa / static_cast<Real>(PressureReductionRatio(
                                            humidity, algorithm, celsius, humidityCelsius,
                                            heightM, seaLevelHPa));
  const Real ratio = PressureReductionRatio(humidity, algorithm, celsius, humidityCelsius,
                                            heightM, static_cast<double>(firstGuess));
  return static_cast<double>(seaLevelHPa / ratio);
}

double TWeatherUtils::SeaLevelToSensorPressureVP(int humidity, int algorithm, double celsius,
                                                 double humidityCelsius, double sensorHeightM,
                                                 double seaLevelHPa) {
  const Real ratio = PressureReductionRatio(humidity, algorithm, celsius, humidityCelsius,
                                            sensorHeightM, seaLevelHPa);
  return static_cast<double>(seaLevelHPa / ratio);
}

}  // namespace nimbrel
