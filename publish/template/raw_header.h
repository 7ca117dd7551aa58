#pragma once
// The line of raw readings that heads "wx.html" when the owner asks for it
// ("raw data in header"): other sites read the readings from it without
// parsing the page.

#include <string>

#include "core/clock.h"

namespace nimbrel {

// How the owner writes times of day.
enum class HeaderTimeStyle {
  PaddedTwelveHour,  // "07:05 pm"
  TwelveHour,        // "7:05 pm"
  PaddedDay,         // "19:05"
  PlainDay,          // "9:05"
};

// The readings in the units the page shows, filled by the caller.
struct RawHeaderValues {
  LocalTime time;
  HeaderTimeStyle timeStyle = HeaderTimeStyle::PaddedDay;
  double temperature = 0;
  double humidity = 0;
  double dewPoint = 0;
  double averageWind = 0;
  double gust = 0;
  double direction = 0;
  double pressure = 0;
  double rainToday = 0;
  double rainMonth = 0;
  double rainYear = 0;
  double rainRate = 0;
};

// "<META RAW MET DATA 7:05 pm, 23/11/26,tmp 12.3,hum 81,...,rhr 0.00>".
// Humidity and direction are whole numbers, rain has 2 decimals, the rest 1.
std::string rawHeaderLine(const RawHeaderValues& values);

}  // namespace nimbrel
