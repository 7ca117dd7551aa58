// Conversions, vapour pressure, dew point, wind chill and the moist-air
// helpers of TWeatherUtils. The pressure reductions are in
// weather_utils_pressure.cpp.

#include "core/weather_utils.h"

#include <cmath>

namespace nimbrel {

double TWeatherUtils::FToC(double fahrenheit) {
  return static_cast<double>((fahrenheit - 32.0L) * 5.0L / 9.0L);
}

double TWeatherUtils::CToF(double celsius) {
  return static_cast<double>(celsius * 9.0L / 5.0L + 32.0L);
}

double TWeatherUtils::CToK(double celsius) { return static_cast<double>(celsius + 273.15L); }

double TWeatherUtils::KToC(double kelvin) { return static_cast<double>(kelvin - 273.15L); }

double TWeatherUtils::FToR(double fahrenheit) {
  return static_cast<double>(fahrenheit + 459.67L);
}

double TWeatherUtils::RToF(double rankine) { return static_cast<double>(rankine - 459.67L); }

double TWeatherUtils::InToHPa(double inches) { return static_cast<double>(inches / 0.02953L); }

double TWeatherUtils::HPaToIn(double hectopascals) {
  return static_cast<double>(hectopascals * 0.02953L);
}

double TWeatherUtils::FtToM(double feet) { return static_cast<double>(feet * 0.3048L); }

double TWeatherUtils::MToFt(double metres) { return static_cast<double>(metres / 0.3048L); }

double TWeatherUtils::InToMm(double inches) { return static_cast<double>(inches * 25.4L); }

double TWeatherUtils::MmToIn(double millimetres) {
  return static_cast<double>(millimetres / 25.4L);
}

double TWeatherUtils::Power(double exponent, double base) {
  if (exponent == 0.0) return 1.0;
  if (base == 0.0 && exponent > 0.0) return 0.0;
  return static_cast<double>(std::exp(std::log(static_cast<long double>(base)) * exponent));
}

double TWeatherUtils::Power10(double x) {
  if (x == 0.0) return 1.0;
  return static_cast<double>(std::exp(2.302585093L * x));
}

namespace {

// Magnus-type form a * e^(b T / (c + T)).
long double magnus(long double a, long double b, long double c, long double celsius) {
  return a * std::exp(b * celsius / (c + celsius));
}

}  // namespace

double TWeatherUtils::SaturationVaporPressure(int algorithm, double celsius) {
  const long double t = celsius;
  switch (algorithm) {
    case 0:
      return static_cast<double>(magnus(6.112L, 17.62L, 243.12L, t));
    case 1:
      return static_cast<double>(6.1121L * std::exp((18.678L - t / 234.5L) * t / (257.14L + t)));
    case 2:
      return static_cast<double>(magnus(6.1121L, 17.502L, 240.97L, t));
    case 4:
      // Base-ten coefficients under the natural exponential: gives smaller
      // values than the textbook form, and stays that way for compatibility
      // with existing logs.
      return static_cast<double>(magnus(6.10662L, 7.5L, 237.3L, t));
    default:
      return static_cast<double>(magnus(6.112L, 17.67L, 243.5L, t));
  }
}

double TWeatherUtils::ActualVaporPressure(int humidity, int algorithm, double celsius) {
  const long double saturation = SaturationVaporPressure(algorithm, celsius);
  return static_cast<double>(saturation * humidity / 100.0L);
}

double TWeatherUtils::DewPoint(int humidity, int algorithm, double celsius) {
  const long double logVapour =
      std::log(static_cast<long double>(ActualVaporPressure(humidity, algorithm, celsius)));
  const long double dewPoint = algorithm == 0
                                   ? (243.12L * logVapour - 440.1L) / (19.43L - logVapour)
                                   : (237.7L * logVapour - 430.22L) / (19.08L - logVapour);
  return static_cast<double>(dewPoint);
}

double TWeatherUtils::DewPointUS(int humidity, int algorithm, double fahrenheit) {
  return CToF(DewPoint(humidity, algorithm, FToC(fahrenheit)));
}

double TWeatherUtils::WindChill(double windKmh, double celsius) {
  if (celsius >= 10.0 || windKmh <= 4.8) return celsius;
  const long double t = celsius;
  const long double windTerm = std::pow(static_cast<long double>(windKmh), 0.16L);
  const long double chill = 13.112L + 0.6215L * t - 11.37L * windTerm + 0.3965L * t * windTerm;
  return chill < t ? static_cast<double>(chill) : celsius;
}

double TWeatherUtils::WindChillUS(double windMph, double fahrenheit) {
  if (fahrenheit >= 50.0 || windMph <= 3.0) return fahrenheit;
  const long double t = fahrenheit;
  const long double windTerm = std::pow(static_cast<long double>(windMph), 0.16L);
  const long double chill = 35.74L + 0.6215L * t - 35.75L * windTerm + 0.4275L * t * windTerm;
  return chill < t ? static_cast<double>(chill) : fahrenheit;
}

double TWeatherUtils::HumidityCorrection(int humidity, [[maybe_unused]] int algorithm,
                                         double heightM, double celsius) {
  const long double h = heightM;
  const long double coefficient = 2.8322e-9L * h * h + 2.225e-5L * h + 0.10743L;
  return static_cast<double>(coefficient * ActualVaporPressure(humidity, 0, celsius));
}

double TWeatherUtils::HumidityCorrectionUS(int humidity, int algorithm, double heightFt,
                                           double fahrenheit) {
  const long double kelvin =
      HumidityCorrection(humidity, algorithm, FtToM(heightFt), FToC(fahrenheit));
  return static_cast<double>(kelvin * 1.8L);
}

double TWeatherUtils::MixingRatio(int humidity, double celsius, double pressureHPa) {
  const long double vapour = ActualVaporPressure(humidity, 1, celsius);
  return static_cast<double>(0.622L * vapour / (pressureHPa - vapour) * 1000.0L);
}

double TWeatherUtils::VirtualTempK(int humidity, double celsius, double pressureHPa) {
  const long double vapour = ActualVaporPressure(humidity, 1, celsius);
  return static_cast<double>((celsius + 273.15L) / (1.0L - vapour / pressureHPa * 0.378L));
}

double TWeatherUtils::VirtualTempC(int humidity, double celsius, double pressureHPa) {
  return static_cast<double>(VirtualTempK(humidity, celsius, pressureHPa) - 273.15L);
}

double TWeatherUtils::GeopotentialAltitude(double heightM) {
  constexpr long double kEarthRadiusM = 6356766.0L;
  return static_cast<double>(kEarthRadiusM * heightM / (kEarthRadiusM + heightM));
}

}  // namespace nimbrel
