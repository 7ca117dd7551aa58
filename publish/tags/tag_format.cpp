#include "publish/tags/tag_format.h"

#include <algorithm>
#include <cmath>

#include "core/number_format.h"
#include "core/weather_utils.h"
#include "publish/tags/unit_conversion.h"

namespace nimbrel {
namespace {

Unit shownWind(WindUnit unit) {
  switch (unit) {
    case WindUnit::knots: return Unit::knots;
    case WindUnit::mph: return Unit::mph;
    case WindUnit::kmh: return Unit::kmh;
    case WindUnit::metresPerSecond: return Unit::metresPerSecond;
    case WindUnit::beaufort: return Unit::beaufort;
  }
  return Unit::kmh;
}

Unit shownPressure(PressureUnit unit) {
  switch (unit) {
    case PressureUnit::mb: return Unit::mb;
    case PressureUnit::hpa: return Unit::hPa;
    case PressureUnit::kpa: return Unit::kPa;
    case PressureUnit::inches: return Unit::inHg;
  }
  return Unit::hPa;
}

// The number in the unit shown; `family` says what the internal number is.
double convert(double internal, Unit family, Unit shown) {
  switch (shown) {
    case Unit::fahrenheit:
      return family == Unit::temperatureChange ? internal * 1.8 : TWeatherUtils::CToF(internal);
    case Unit::kmh: return internal * kKmhPerKnot;
    case Unit::mph: return internal * kMphPerKnot;
    case Unit::metresPerSecond: return internal * kMetresPerSecondPerKnot;
    case Unit::beaufort: return beaufortForce(internal);
    case Unit::inHg: return TWeatherUtils::HPaToIn(internal);
    case Unit::kPa: return internal / 10.0;
    case Unit::inches:
    case Unit::inchesPerHour: return TWeatherUtils::MmToIn(internal);
    default: return internal;
  }
}

// Smaller numbers need one more decimal to say as much; a force is whole.
int decimalsShown(int decimals, Unit shown) {
  switch (shown) {
    case Unit::inHg:
    case Unit::kPa:
    case Unit::inches:
    case Unit::inchesPerHour: return decimals + 1;
    case Unit::beaufort: return 0;
    default: return decimals;
  }
}

std::string spellMinus(const std::string& text) {
  std::string out;
  for (char c : text) {
    if (c == '-')
      out += "minus ";
    else
      out += c;
  }
  return out;
}

}  // namespace

Unit shownUnit(Unit unit, const UnitChoicesSettings& units) {
  switch (unit) {
    case Unit::temperature:
    case Unit::temperatureChange:
      return units.webTemperatureShown() == TemperatureUnit::fahrenheit ? Unit::fahrenheit : Unit::celsius;
    case Unit::speed: return shownWind(units.webWindShown());
    case Unit::pressure: return shownPressure(units.webPressureShown());
    case Unit::rain: return units.webRainShown() == RainUnit::inches ? Unit::inches : Unit::mm;
    case Unit::rainRate: return units.webRainShown() == RainUnit::inches ? Unit::inchesPerHour : Unit::mmPerHour;
    default: return unit;
  }
}

double shownValue(double internal, Unit family, const UnitChoicesSettings& units) {
  return convert(internal, family, shownUnit(family, units));
}

std::string unitSymbol(Unit unit, const TagWriting& writing) {
  const std::string degree = writing.htmlDegreeSign ? "&deg;" : "°";
  switch (unit) {
    case Unit::celsius: return degree + "C";
    case Unit::fahrenheit: return degree + "F";
    case Unit::kmh: return " km/h";
    case Unit::mph: return " mph";
    case Unit::metresPerSecond: return " m/s";
    case Unit::knots: return " kts";
    case Unit::beaufort: return " bft";
    case Unit::hPa: return " hPa";
    case Unit::mb: return " mb";
    case Unit::inHg: return " inHg";
    case Unit::kPa: return " kPa";
    case Unit::mm: return " mm";
    case Unit::inches: return " in.";
    case Unit::mmPerHour: return " mm/hr";
    case Unit::inchesPerHour: return " in./hr";
    default: return {};
  }
}

std::string formatTag(const TagDef& def, const TagValue& value, const TagWriting& writing) {
  if (const std::string* text = value.text()) return writing.spellMinus ? spellMinus(*text) : *text;
  const double* number = value.number();
  if (number == nullptr || !std::isfinite(*number)) return std::string(kNoData);

  const Unit shown = shownUnit(def.unit, writing.units);
  const int decimals = decimalsShown(def.decimals, shown);
  double converted = convert(*number, def.unit, shown);
  // A value that rounds to nothing is written without a sign ("0.0", not "-0.0").
  if (std::fabs(converted) < 0.5 * std::pow(10.0, -decimals)) converted = 0.0;
  std::string out = fixed(converted, def.width, decimals);
  if (def.decimalComma) std::replace(out.begin(), out.end(), '.', ',');
  if (def.showsUnit && writing.displayUnits) out += unitSymbol(shown, writing);
  return writing.spellMinus ? spellMinus(out) : out;
}

}  // namespace nimbrel
