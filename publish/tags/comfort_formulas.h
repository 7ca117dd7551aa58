#pragma once
// Formulas of how the air feels that more than one family of tags works out:
// from the live record (current readings, extra sensor channels) and from
// the logged minutes read back (today's family).

namespace nimbrel {

// Wet-bulb temperature (°C) of air at `celsius` and `humidity` percent, by
// Stull's empirical fit (J. Appl. Meteor. Climatol., 2011), good to about
// 0.3 °C for humidities of 5-99 % and temperatures of -20 to 50 °C at
// standard pressure.
double wetBulb(double celsius, double humidity);

// Humidex (Masterton and Richardson 1979): T + 5/9 (e - 10), e the vapour
// pressure in hPa from the dew point.
double humidex(double celsius, double dewPointC);

}  // namespace nimbrel
