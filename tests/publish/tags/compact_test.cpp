#include <gtest/gtest.h>

#include <fmt/format.h>

#include <string>

#include "core/weather_utils.h"
#include "datafiles/log_fields.h"
#include "datafiles/monthly_log_reader.h"
#include "publish/tags/comfort_formulas.h"
#include "publish/tags/log_minutes.h"
#include "publish/tags/unit_conversion.h"
#include "stations/station_types.h"

namespace nimbrel {
namespace {

using C = LogColumn;

// Lines as the log writers write them, each field swept over its range with
// steps that do not fall on the log's own decimals.
std::string writtenLines(UnitSystem units) {
  std::string text;
  for (int i = 0; i < 6000; ++i) {
    const double celsius = -60.0 + i * 0.0201;
    const auto humidity = static_cast<std::uint16_t>(i % 101);
    const double knots = i * 0.0337;
    const double mm = i * 0.0913;
    const std::uint16_t station = i % 2 == 0 ? stationtype::ultimeter : 0;
    text += fmt::format("15 06 2026 {} {} {} {} {} {} {} {} {} {} {} {} {} {}\n", i / 60 % 24, i % 60,
                        logTemperatureText(celsius, units), logHumidityText(humidity),
                        logTemperatureText(celsius - i % 30, units), logBarometerText(850.0 + i * 0.0417, units),
                        logWindText(knots, units), logWindText(knots * 1.7, units),
                        logDirectionText(static_cast<std::uint16_t>(i % 361)),
                        logRainLastMinuteText(i % 97 * 0.01, units, station), logRainTotalText(mm / 50, 3, units),
                        logRainTotalText(mm, 3, units), logRainTotalText(mm * 7, 4, units),
                        logTemperatureText(celsius + i % 7, units));
  }
  return text;
}

TEST(CompactMinute, EveryWrittenFieldGivesTheDoubleItsTextReadsAsInBothUnitSystems) {
  for (const UnitSystem units : {UnitSystem::metric, UnitSystem::usa}) {
    const bool usa = units == UnitSystem::usa;
    const MonthlyLogText log(writtenLines(units));
    ASSERT_EQ(log.lines().size(), 6000u);
    int wrong = 0;
    for (const MonthlyLogLine& line : log.lines()) {
      const LogReading reading{units, line.number(C::minute) >= 30};
      const std::optional<LoggedMinute> m = loggedMinute(line, reading);
      ASSERT_TRUE(m.has_value());
      // The text read as a number and converted, as the minutes were before
      // they were kept compact.
      auto temperature = [&](C c) { return usa ? (line.number(c) - 32.0) / 1.8 : line.number(c); };
      auto speed = [&](C c) { return usa ? line.number(c) / 1.15 : line.number(c); };
      auto rain = [&](C c) { return usa ? line.number(c) / 0.03937 : line.number(c); };
      const double t = temperature(C::temperature);
      const double wind = speed(C::windspeed);
      const double gust = speed(C::gustspeed);
      const bool same =
          m->temperature() == t && m->humidity() == line.number(C::humidity) &&
          m->dewpoint() == temperature(C::dewpoint) &&
          m->barometer() == (usa ? line.number(C::barometer) / 0.02953 : line.number(C::barometer)) &&
          m->wind() == wind && m->gust() == gust && m->direction() == line.number(C::direction) &&
          m->rain() == rain(C::rainlastmin) && m->dailyRain() == rain(C::dailyrain) &&
          m->monthRain() == rain(C::monthlyrain) && m->yearRain() == rain(C::yearlyrain) &&
          m->heatindex() == temperature(C::heatindex) &&
          m->windchill() == TWeatherUtils::WindChill((reading.chillFromGust ? gust : wind) * kKmhPerKnot, t) &&
          m->apparent() == apparentTemperature(t, line.number(C::humidity), wind) &&
          m->humidex() == humidex(t, temperature(C::dewpoint));
      if (!same && ++wrong <= 3) ADD_FAILURE() << "differs: " << line[C::temperature] << " " << line[C::barometer];
    }
    EXPECT_EQ(wrong, 0) << (usa ? "US" : "metric");
  }
}

TEST(CompactMinute, ForeignLinesKeptToTheColumnsStepsOrLeftOut) {
  const MonthlyLogText log(
      "15 06 2026 14 05 12.34 50 08.06 1013.27 3.0 5.0 90 0.0 1.0 2.0 3.0 12.3\n"
      "15 06 2026 14 06 -12.36 50 08.0 1013.2 3.0 5.0 90 0.0 1.0 2.0 3.0 12.3\n"
      "15 06 9999 14 07 12.3 50 08.0 1013.2 3.0 5.0 90 0.0 1.0 2.0 3.0 12.3\n");
  ASSERT_EQ(log.lines().size(), 3u);
  const LogReading metric{UnitSystem::metric, false};
  const auto hand = loggedMinute(log.lines()[0], metric);
  ASSERT_TRUE(hand.has_value());
  EXPECT_EQ(hand->temperature(), 12.3);
  EXPECT_EQ(hand->dewpoint(), 8.1);
  EXPECT_EQ(hand->barometer(), 1013.3);
  EXPECT_EQ(loggedMinute(log.lines()[1], metric)->temperature(), -12.4);
  // Year 9999 lies beyond the minutes a compact minute can hold.
  EXPECT_FALSE(loggedMinute(log.lines()[2], metric).has_value());
}

}  // namespace
}  // namespace nimbrel
