#pragma once
// The derived values that the monthly log and the clientraw writer compute on
// their own, independently of TWeatherUtils' selectable variants.

namespace nimbrel {

// Returned by logDewPoint for a temperature or humidity it cannot use.
inline constexpr double kLogDewPointOutOfRange = 50.0;

// Magnus dew point (°C) of the monthly log. Temperatures outside
// [-60, 60) °C and humidities outside (0, 110) % give kLogDewPointOutOfRange.
double logDewPoint(double tempC, double humidity);

// Heat index (°C) of the monthly log: the temperature itself below 20 °C,
// otherwise the Rothfusz regression, which is kept as computed even where it
// comes out below the temperature. The humidity square is taken in 16-bit
// unsigned arithmetic, as the log has always done.
double logHeatIndex(double tempC, int humidity);

// US wind chill (°F) of the clientraw file, from the wind in knots
// (x 1.15 to mph). It always applies the 50 °F limit.
double clientrawWindChillUS(double windKnots, double tempF);

}  // namespace nimbrel
