#include "processing/statistics/daily_extremes.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "core/number_format.h"
#include "support/expect_stored.h"
#include "support/memory_settings_store.h"

namespace nimbrel {
namespace {

using testsupport::expectStored;

LocalTime at(int hour, int minute) { return LocalTime{.year = 2024, .month = 7, .day = 3, .hour = hour, .minute = minute}; }

LiveRecord outdoorReadings(double temp, int hum, double gust, double baro) {
  LiveRecord record;
  record.outtemp = temp;
  record.outhum = static_cast<std::uint16_t>(hum);
  record.windgust = gust;
  record.barometer = baro;
  return record;
}

class DailyExtremesTest : public ::testing::Test {
 protected:
  void reading(double outtemp, int hour, int minute) {
    record_.outtemp = outtemp;
    extremes_.check_data(record_, at(hour, minute), false, store_);
  }
  void readings(const LiveRecord& record, int hour, int minute) {
    record_ = record;
    extremes_.check_data(record_, at(hour, minute), false, store_);
  }

  LiveRecord record_;
  DailyExtremes extremes_;
  testsupport::MemorySettingsStore store_;
};

// A day of readings, one a minute; the expected extremes are found the slow
// way: the first minute that holds the day's largest (smallest) value.
TEST_F(DailyExtremesTest, MatchesTheExtremesOfADayFoundTheSlowWay) {
  struct Sample {
    double temp, baro, gust;
    std::uint16_t hum;
    std::string time;
  };
  std::mt19937 random(7);
  std::uniform_int_distribution<int> step(-3, 3);
  std::vector<Sample> day;
  double temp = 12, baro = 1012, gust = 5;
  int hum = 70;
  for (int m = 0; m < 24 * 60; ++m) {
    temp += step(random) / 10.0;  // steps of tenths repeat values often
    baro += step(random) / 10.0;
    gust = std::max(0.0, gust + step(random));
    hum = std::clamp(hum + step(random), 1, 100);
    day.push_back({temp, baro, gust, static_cast<std::uint16_t>(hum), fmt::format("{:02}:{:02}", m / 60, m % 60)});
    readings(outdoorReadings(temp, hum, gust, baro), m / 60, m % 60);
  }

  // max_element and min_element give the first of equal values, as the
  // extremes should: a later equal value does not move the time.
  auto expect = [&](Quantity q, auto field) {
    auto less = [&](const Sample& a, const Sample& b) { return field(a) < field(b); };
    const auto highest = std::max_element(day.begin(), day.end(), less);
    EXPECT_EQ(extremes_.high(q), field(*highest));
    EXPECT_EQ(extremes_.highTime(q), highest->time);
    if (q == Quantity::Gust) return;
    const auto lowest = std::min_element(day.begin(), day.end(), less);
    EXPECT_EQ(extremes_.low(q), field(*lowest));
    EXPECT_EQ(extremes_.lowTime(q), lowest->time);
  };
  expect(Quantity::Temperature, [](const Sample& s) { return s.temp; });
  expect(Quantity::Pressure, [](const Sample& s) { return s.baro; });
  expect(Quantity::Gust, [](const Sample& s) { return s.gust; });
  expect(Quantity::Humidity, [](const Sample& s) { return double(s.hum); });

  double stored = 0;
  EXPECT_TRUE(parseDouble(store_.ReadString("Daily high temperature", "number2"), stored));
  EXPECT_NEAR(stored, extremes_.high(Quantity::Temperature), 1e-12);
  EXPECT_EQ(store_.ReadString("Daily low pressure", "number2time"), extremes_.lowTime(Quantity::Pressure));
  EXPECT_EQ(store_.ReadString("Extreme conditions times", "Min temp"), extremes_.lowTime(Quantity::Temperature));
}

TEST_F(DailyExtremesTest, IndoorHumidityKeepsOnlyItsTimes) {
  record_.inhum = 45;
  extremes_.check_data(record_, at(13, 30), true, store_);
  expectStored(store_, {{"Daily high indoor hum time", "value", "1:30 pm"},
                        {"Daily low indoor hum time", "value", "1:30 pm"}});
  EXPECT_EQ(store_.ReadString("Daily high indoor hum time", "number2", "<none>"), "<none>");
}

TEST_F(DailyExtremesTest, FirstReadingAfterResetIsBothHighAndLow) {
  reading(25, 15, 0);
  extremes_.resetDay(store_);
  expectStored(store_, {{"Daily high temperature", "number2", "-100"}, {"Daily low temperature", "number2", "100"},
                        {"Daily low humidity", "number2", "101"}, {"Daily low temperature", "number2time", ""}});
  EXPECT_FALSE(extremes_.todaysHighGust());

  readings(outdoorReadings(30, 100, 0, 1013.2), 0, 1);
  for (Quantity q : {Quantity::Temperature, Quantity::Humidity, Quantity::Pressure}) {
    EXPECT_EQ(extremes_.high(q), extremes_.low(q));
    EXPECT_EQ(extremes_.lowTime(q), "00:01");
  }
  EXPECT_EQ(extremes_.low(Quantity::Pressure), 1013.2);
  EXPECT_EQ(extremes_.todaysHighGust(), 0.0);
}

TEST_F(DailyExtremesTest, UnreadableStoredValuesStartAfresh) {
  testsupport::MemorySettingsStore damaged;
  for (const auto& [section, key, value] : {testsupport::StoredEntry{"Daily high temperature", "number2", "warm"},
                                            {"Daily high temperature", "number2time", "12:00"},
                                            {"Daily low temperature", "number2", "12,5"},
                                            {"Daily high gust", "number2", ""},
                                            {"Daily low pressure", "number2", "100"}})
    damaged.WriteString(section, key, value);
  DailyExtremes fresh;
  fresh.load(damaged);
  EXPECT_EQ(fresh.high(Quantity::Temperature), kHighSentinel);
  EXPECT_EQ(fresh.highTime(Quantity::Temperature), "");
  EXPECT_FALSE(fresh.todaysHighGust());
  record_ = outdoorReadings(-20, 50, 3, 990);
  fresh.check_data(record_, at(1, 0), false, damaged);
  EXPECT_EQ(fresh.high(Quantity::Temperature), -20);
  EXPECT_EQ(fresh.low(Quantity::Temperature), -20);
  EXPECT_EQ(fresh.low(Quantity::Pressure), 990);
  EXPECT_EQ(fresh.todaysHighGust(), 3.0);
}

TEST_F(DailyExtremesTest, MonthlyTemperatureRecordIsUpdatedWhenBeaten) {
  store_.WriteString("Record monthly high temp", "jul", "30");
  store_.WriteString("Record monthly high temp", "jul year", "2019");
  reading(28, 14, 0);
  // No low record yet: the first reading is one.
  expectStored(store_, {{"Record monthly high temp", "jul", "30"}, {"Record monthly high temp", "jul year", "2019"},
                        {"Record monthly low temp", "jul", "28"}});
  reading(31.5, 15, 0);
  expectStored(store_, {{"Record monthly high temp", "jul", "31.5"}, {"Record monthly high temp", "jul year", "2024"},
                        {"Record monthly high temp", "jul day", "3"}});
  EXPECT_EQ(store_.ReadString("Record monthly high temp", "aug", "<none>"), "<none>");
}

TEST_F(DailyExtremesTest, AllTimeRecordsHookSeesEachNewExtreme) {
  std::vector<std::string> seen;
  extremes_.setAllTimeRecordsHook([&](const NewExtreme& e) {
    if (e.quantity == Quantity::Average) seen.push_back(fmt::format("{} at {}", e.value, e.time));
  });
  record_.windspeed = 30;
  extremes_.check_data(record_, at(8, 0), false, store_, 12.0);  // the 10-minute average is taken
  extremes_.check_data(record_, at(8, 1), false, store_, 12.0);
  extremes_.check_data(record_, at(8, 2), false, store_);
  EXPECT_EQ(seen, (std::vector<std::string>{"12 at 08:00", "30 at 08:02"}));
  EXPECT_EQ(store_.ReadString("Daily high average", "number2"), "30");
  EXPECT_THROW(extremes_.low(Quantity::Gust), std::invalid_argument);
}

}  // namespace
}  // namespace nimbrel
