#include "tools/vantage_sim/weather_model.h"

#include <gtest/gtest.h>

#include "support/time_zone.h"

namespace nimbrel::sim {
namespace {

using namespace std::chrono_literals;

// Walks a model through time in fixed steps, handing each reading to `check`.
template <class Check>
void walk(WeatherModel& model, SystemTime until, std::chrono::seconds step, Check check) {
  for (SystemTime t = model.time() + step; t <= until; t += step) {
    model.advanceTo(t);
    check(model.reading(), toLocalTime(t));
  }
}

TEST(WeatherModelTest, StaysInsidePhysicalRangesForAWeek) {
  testsupport::ScopedTimeZone zone;
  const SystemTime start = fromLocalTime(2026, 1, 10, 0, 0, 0);
  WeatherModel model(start, {.seed = 7});
  int showers = 0;
  bool wasRaining = false;
  walk(model, start + std::chrono::days(7), 60s, [&](const ConsoleReading& r, const LocalTime& local) {
    SCOPED_TRACE(formatLocalTime(local));
    ASSERT_TRUE(r.outsideTemperature && r.outsideHumidity && r.solarRadiation && r.uvIndex);
    EXPECT_GT(*r.outsideTemperature, -400);
    EXPECT_LT(*r.outsideTemperature, 1100);
    EXPECT_GE(*r.outsideHumidity, 10);
    EXPECT_LE(*r.outsideHumidity, 100);
    EXPECT_GE(r.barometer, 28500);
    EXPECT_LE(r.barometer, 31000);
    EXPECT_GE(r.windSpeed, r.windAverage10);  // the gust never below the average
    EXPECT_LT(r.windSpeed, 80);
    EXPECT_GE(r.windDirection, 1);
    EXPECT_LE(r.windDirection, 360);
    EXPECT_LE(*r.solarRadiation, 1300);
    EXPECT_LE(*r.uvIndex, 160);
    if (local.hour < 5 || local.hour > 20) {
      EXPECT_EQ(*r.solarRadiation, 0);  // a January night
    }
    EXPECT_GE(r.insideTemperature, 600);
    EXPECT_LE(r.insideTemperature, 800);
    EXPECT_LE(r.dayRain, r.monthRain);
    EXPECT_LE(r.monthRain, r.yearRain);
    EXPECT_EQ(r.stormRain > 0, r.stormStart.has_value());
    EXPECT_LE(r.leafWetnesses[0].value_or(99), 15);
    EXPECT_LE(r.soilMoistures[0].value_or(255), 200);
    const double volts = r.consoleBattery * 300.0 / 512.0 / 100.0;
    EXPECT_GT(volts, 4.5);
    EXPECT_LT(volts, 4.9);
    const bool raining = r.rainRate > 0;
    showers += raining && !wasRaining;
    wasRaining = raining;
  });
  EXPECT_GE(showers, 7);  // a few a day
  EXPECT_LE(showers, 40);
  EXPECT_GT(model.totalRainClicks(), 0u);
}

TEST(WeatherModelTest, DayAndMonthRainStartAgainAtLocalMidnight) {
  testsupport::ScopedTimeZone zone;
  // The week holds the spring daylight-saving change (a day of 23 hours) and
  // the start of April.
  const SystemTime start = fromLocalTime(2026, 3, 27, 0, 0, 0);
  WeatherModel model(start, {.seed = 3});
  ConsoleReading previous = model.reading();
  std::uint64_t previousTotal = 0;
  int midnights = 0;
  walk(model, start + std::chrono::days(7), 10s, [&](const ConsoleReading& r, const LocalTime& local) {
    SCOPED_TRACE(formatLocalTime(local));
    const std::uint64_t total = model.totalRainClicks();
    if (local.hour == 0 && local.minute == 0 && local.second == 0) {
      ++midnights;
      EXPECT_EQ(r.dayRain, 0);
      if (local.day == 1) {
        EXPECT_EQ(r.monthRain, 0);
      }
    } else {
      EXPECT_EQ(r.dayRain - previous.dayRain, total - previousTotal);  // every tip lands in the day
    }
    EXPECT_EQ(r.yearRain, total);  // one year, counted from the start
    if (local.month == 3) {
      EXPECT_EQ(r.monthRain, total);
    }
    previous = r;
    previousTotal = total;
  });
  EXPECT_EQ(midnights, 7);
  EXPECT_GT(previous.monthRain, 0);
  EXPECT_LT(previous.monthRain, previous.yearRain);  // March rain left the month total
}

TEST(WeatherModelTest, YearRainStartsAgainOnTheFirstOfJanuary) {
  testsupport::ScopedTimeZone zone;
  WeatherModel model(fromLocalTime(2026, 12, 25, 0, 0, 0), {.seed = 11});
  model.advanceTo(fromLocalTime(2026, 12, 31, 23, 59, 50));
  ASSERT_GT(model.reading().yearRain, 0);
  ASSERT_GT(model.reading().dayEt, 0);
  model.advanceTo(fromLocalTime(2027, 1, 1, 0, 0, 0));
  const ConsoleReading newYear = model.reading();
  EXPECT_EQ(newYear.yearRain, 0);
  EXPECT_EQ(newYear.monthRain, 0);
  EXPECT_EQ(newYear.yearEt, 0);
  const std::uint64_t before = model.totalRainClicks();
  model.advanceTo(fromLocalTime(2027, 1, 1, 23, 0, 0));
  const ConsoleReading later = model.reading();
  EXPECT_EQ(later.yearRain, model.totalRainClicks() - before);
  EXPECT_EQ(later.monthRain, later.yearRain);
  EXPECT_EQ(later.dayRain, later.yearRain);
}

TEST(WeatherModelTest, IsFixedBySeedAndStartWhateverTheStepping) {
  testsupport::ScopedTimeZone zone;
  const SystemTime start = fromLocalTime(2026, 6, 1, 8, 0, 0);
  WeatherModel fine(start, {.seed = 5});
  WeatherModel coarse(start, {.seed = 5});
  WeatherModel other(start, {.seed = 6});
  for (int minutes = 7; minutes <= 3 * 24 * 60; minutes += 7) {
    const SystemTime t = start + std::chrono::minutes(minutes);
    walk(fine, t, 2s, [](const ConsoleReading&, const LocalTime&) {});
    coarse.advanceTo(t);
    other.advanceTo(t);
    ASSERT_EQ(fine.reading(), coarse.reading()) << formatLocalTime(toLocalTime(t));
  }
  EXPECT_EQ(fine.totalRainClicks(), coarse.totalRainClicks());
  EXPECT_NE(fine.reading(), other.reading());
}

TEST(WeatherModelTest, LeavesOutTheSensorsTheStationLacks) {
  const SystemTime start = fromLocalTime(2026, 6, 1, 12, 0, 0);
  const ConsoleReading bare =
      WeatherModel(start, {.solarSensors = false, .extraSensor = false, .soilAndLeafSensors = false}).reading();
  EXPECT_FALSE(bare.solarRadiation || bare.uvIndex || bare.extraTemperatures[0] || bare.extraHumidities[0] ||
               bare.soilTemperatures[0] || bare.soilMoistures[0] || bare.leafWetnesses[0]);
  const ConsoleReading full = WeatherModel(start).reading();
  EXPECT_TRUE(full.solarRadiation && full.uvIndex && full.extraTemperatures[0] && full.soilMoistures[0]);
  EXPECT_GT(*full.solarRadiation, 0);  // June noon
  EXPECT_FALSE(full.extraTemperatures[1] || full.leafTemperatures[0]);
}

}  // namespace
}  // namespace nimbrel::sim
