#include "processing/rollover/period_totals.h"

#include <array>
#include <string>

#include "core/number_format.h"

namespace nimbrel {
namespace {

constexpr std::array<std::string_view, 12> kRainChartKeys{"Jan ", "Feb ", "Mar ", "Apr ", "May ", "Jun ",
                                                          "Jul ", "Aug ", "Sep ", "Oct ", "Nov ", "Dec "};
constexpr int kEnergyChannels = 26;  // "0 month" to "25 month"

void keepMonthTotal(std::string_view section, const std::string& monthKey, SettingsStore& main) {
  const std::string total = main.ReadString(section, monthKey);
  main.WriteString(section, monthKey + "12", total.empty() ? std::string_view("0") : std::string_view(total));
  main.WriteString(section, monthKey, "0");
}

}  // namespace

std::string_view rainChartKey(int month) { return kRainChartKeys.at(static_cast<std::size_t>(month - 1)); }

void enterMonthInRainChart(int month, double rainMm, SettingsStore& main) {
  main.WriteString("Rain chart", rainChartKey(month), floatText(rainMm));
}

void keepMonthTotals(SettingsStore& main) {
  keepMonthTotal("Sunshine hours", "month", main);
  for (int channel = 0; channel < kEnergyChannels; ++channel)
    keepMonthTotal("Energy wind", std::to_string(channel) + " month", main);
}

}  // namespace nimbrel
