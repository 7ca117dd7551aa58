#pragma once
// The wind maxima of the last hour. Every reading raises the minute's highest
// average and highest gust; once a minute updatemaxgustreadings moves them
// into three series of 61 per-minute slots (gust, average, direction; slot 60
// the newest) and finds the hour's maximum over slots 1 to 60:
//
// - the average series is scanned first, then the gust series, with one
//   running maximum that a value greater than or equal to it replaces, so
//   equal values go to the later minute and a gust equal to the top average
//   wins;
// - outside the hour of the daily reset the maximum is capped at today's
//   highest gust, so the hourly figure never exceeds the day's. In the reset
//   hour the last hour still holds wind of the previous day, which may exceed
//   the new day's gust;
// - a maximum in the newest minute raises the new-high indicator.
//
// The time of the maximum's minute goes to "Extreme conditions times" / "Max
// speed last hour" and its direction, in whole degrees, to "Max gust last
// hour dir" / "dir". A calm hour (nothing above 0 knots) has no maximum: it
// shows "---" and leaves both keys as they were.

#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "core/clock.h"
#include "core/settings_store.h"
#include "core/unit_choices.h"

namespace nimbrel {

inline constexpr std::size_t kLastHourSlots = 61;
inline constexpr std::size_t kNewestMinute = kLastHourSlots - 1;

// Hour at which the daily extremes reset: 9 with the 9 am reset, else 0.
int extremesResetHour(DayResetTime reset);

struct MinuteWindInputs {
  double directionDegrees = 0;           // the present wind direction
  std::optional<double> todaysHighGust;  // empty before the day's first gust
  int resetHour = 0;                     // see extremesResetHour
  LocalTime now;
  bool usaTimes = false;
  bool german = false;  // compass words with O for E
};

struct LastHourMaximum {
  bool found = false;  // false in a calm hour
  double knots = 0;    // after the cap at today's gust
  long roundedKnots = 0;
  int sector = 0;               // 16-point compass sector, 0-16
  std::string compass = "---";  // " N ", "NNE", ... or "---"
  std::size_t minute = 0;       // slot that holds the maximum
  bool newHigh = false;         // the maximum lies in the newest minute
  std::string time;             // time of that minute, as timeconvert writes it
};

class LastHourWind {
 public:
  // Each reading raises the minute's highest average and gust.
  void noteReading(double averageKnots, double gustKnots);

  // Once a minute, from the per-minute pass.
  LastHourMaximum updatemaxgustreadings(const MinuteWindInputs& inputs, SettingsStore& main);

  double gust(std::size_t slot) const { return gusts_[slot]; }
  double average(std::size_t slot) const { return averages_[slot]; }
  double direction(std::size_t slot) const { return directions_[slot]; }

 private:
  struct Scan {
    double knots = 0;
    std::size_t minute = 0;
  };

  void shiftAndStore(const MinuteWindInputs& inputs);
  Scan scan() const;
  LastHourMaximum describe(Scan top, const MinuteWindInputs& inputs) const;
  void persist(const LastHourMaximum& top, SettingsStore& main) const;

  std::array<double, kLastHourSlots> gusts_{};
  std::array<double, kLastHourSlots> averages_{};
  std::array<double, kLastHourSlots> directions_{};
  std::array<LocalTime, kLastHourSlots> minuteTimes_{};
  double minuteGust_ = 0;
  double minuteAverage_ = 0;
};

}  // namespace nimbrel
