#include "processing/records/monthly_temperature_records.h"

#include <fmt/format.h>

#include <array>
#include <string>
#include <string_view>

#include "core/number_format.h"

namespace nimbrel {
namespace {

constexpr std::array<std::string_view, 12> kMonthKeys{"jan", "feb", "mar", "apr", "may", "jun",
                                                      "jul", "aug", "sep", "oct", "nov", "dec"};

bool beats(Side side, double candidate, double record) {
  return side == Side::High ? candidate > record : candidate < record;
}

}  // namespace

bool updateMonthlyTemperatureRecord(SettingsStore& main, Side side, double celsius, const LocalTime& now) {
  if (now.month < 1 || now.month > 12) return false;
  const std::string_view section = side == Side::High ? "Record monthly high temp" : "Record monthly low temp";
  const std::string key(kMonthKeys[static_cast<std::size_t>(now.month - 1)]);

  double stored = 0;
  const bool hasRecord = parseDouble(main.ReadString(section, key), stored);
  if (hasRecord && !beats(side, celsius, stored)) return false;

  main.WriteString(section, key, floatText(celsius));
  main.WriteString(section, key + " year", fmt::format("{}", now.year));
  main.WriteString(section, key + " day", fmt::format("{}", now.day));
  return true;
}

}  // namespace nimbrel
