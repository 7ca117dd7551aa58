#include "core/log_formulas.h"

#include <cmath>
#include <cstdint>

#include "core/weather_utils.h"

namespace nimbrel {

double logDewPoint(double tempC, double humidity) {
  if (tempC < -60.0 || tempC >= 60.0 || humidity <= 0.0 || humidity >= 110.0)
    return kLogDewPointOutOfRange;
  const long double t = tempC;
  const long double vapour = std::exp(17.62L * t / (243.12L + t)) * 0.01L * humidity * 6.112L;
  const long double logVapour = std::log(vapour);
  return static_cast<double>((243.12L * logVapour - 440.1L) / (19.43L - logVapour));
}

double logHeatIndex(double tempC, int humidity) {
  if (tempC < 20.0) return tempC;
  const long double f = 1.8L * tempC + 32.0L;
  const long double h = humidity;
  const auto h16 = static_cast<std::uint16_t>(humidity);
  const long double hSquared = static_cast<std::uint16_t>(h16 * h16);
  const long double fSquared = f * f;
  const long double index = -42.379L + 2.04901523L * f + 10.14333127L * h -
                            0.22475541L * f * h - 0.00683783L * fSquared -
                            0.05481717L * hSquared + 0.00122874L * fSquared * h +
                            0.00085282L * f * hSquared - 0.00000199L * fSquared * hSquared;
  return static_cast<double>((index - 32.0L) / 1.8L);
}

double clientrawWindChillUS(double windKnots, double tempF) {
  return TWeatherUtils::WindChillUS(windKnots * 1.15, tempF);
}

}  // namespace nimbrel
