#pragma once
// The minute logs read back for the tags that look into the past: a value
// 24 hours, a month or a year ago, the maxima of the last hours, of
// yesterday and of the last seven days, rain over the last hours.
//
// Each data line of a monthly log becomes one LoggedMinute in the internal
// units (°C, knots, hPa, mm), whatever unit system the logs are written in.
// Minutes are counted on the local civil clock from 1 January 1970, so that
// the line "15 6 2026 14 30" and the moment of a fill compare directly.

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/clock.h"
#include "core/unit_choices.h"
#include "datafiles/log_files.h"

namespace nimbrel {

// Minutes from 1970-01-01 00:00 on the civil calendar (no time zone, no
// daylight saving).
long long civilMinute(int year, int month, int day, int hour, int minute);
inline long long civilMinute(const LocalTime& t) { return civilMinute(t.year, t.month, t.day, t.hour, t.minute); }
// The calendar time of a civil minute (seconds and weekday filled in too).
LocalTime civilTime(long long minute);

struct LoggedMinute {
  long long minute = 0;  // see civilMinute
  double temperature = 0;
  double humidity = 0;
  double dewpoint = 0;
  double barometer = 0;
  double wind = 0;  // the minute's average
  double gust = 0;
  double direction = 0;  // degrees
  double rain = 0;       // fallen in that minute
  double heatindex = 0;
  // Worked out from the logged fields.
  double windchill = 0;  // as the live wind chill: from the average or, by the owner's choice, the gust
  double apparent = 0;   // apparent temperature in the shade (no sun term: the log keeps no solar)
  double humidex = 0;
};

// How the logs are written and how the derived fields are worked out.
struct LogReading {
  UnitSystem logUnits = UnitSystem::metric;
  bool chillFromGust = false;
};

// The derived fields of a minute from its logged ones.
double apparentTemperature(double celsius, double humidity, double windKnots);

// One field of a logged minute, for the scans below.
using LoggedField = double LoggedMinute::*;

struct LoggedExtreme {
  double value = 0;
  const LoggedMinute* at = nullptr;  // the first minute that reached it
};

class MinuteHistory {
 public:
  MinuteHistory() = default;
  // The logs of `months` in `folder`; a log that is missing or unreadable
  // adds nothing.
  static MinuteHistory read(const std::filesystem::path& folder, std::span<const LogMonth> months,
                            const LogReading& reading);

  // Minutes in time order; a minute logged twice keeps its first line.
  const std::vector<LoggedMinute>& minutes() const { return minutes_; }

  // The logged minute nearest to `minute`, no further than `tolerance`
  // minutes away.
  const LoggedMinute* near(long long minute, int tolerance) const;
  // The minutes in [from, to).
  std::span<const LoggedMinute> between(long long from, long long to) const;

 private:
  std::vector<LoggedMinute> minutes_;
};

// Highest and lowest of a field over some minutes; nothing when there are none.
std::optional<LoggedExtreme> highest(std::span<const LoggedMinute> minutes, LoggedField field);
std::optional<LoggedExtreme> lowest(std::span<const LoggedMinute> minutes, LoggedField field);

// The months whose logs hold the minutes [from, to): the log month of
// either end and every month between, with the 9 am day's rule for the
// first hours of a month.
std::vector<LogMonth> logMonthsCovering(long long from, long long to, bool nineAmDay);

}  // namespace nimbrel
