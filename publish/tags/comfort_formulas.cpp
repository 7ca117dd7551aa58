#include "publish/tags/comfort_formulas.h"

#include <cmath>

namespace nimbrel {

double wetBulb(double celsius, double humidity) {
  return celsius * std::atan(0.151977 * std::sqrt(humidity + 8.313659)) + std::atan(celsius + humidity) -
         std::atan(humidity - 1.676331) + 0.00391838 * std::pow(humidity, 1.5) * std::atan(0.023101 * humidity) -
         4.686035;
}

double humidex(double celsius, double dewPointC) {
  const double vapour = 6.11 * std::exp(5417.7530 * (1.0 / 273.16 - 1.0 / (273.15 + dewPointC)));
  return celsius + 0.5555 * (vapour - 10.0);
}

}  // namespace nimbrel
