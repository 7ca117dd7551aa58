#pragma once
// Today's highs and lows, each with the time at which it occurred.
//
// check_data compares every new reading with them: a value strictly above
// today's high (below today's low) replaces it, so an equal value later in
// the day keeps the earlier time. A change is written to the main settings at
// once (see daily_extremes_table.h for where), and a new outdoor temperature
// extreme is also compared with the record of the month. Every change is
// handed to the all-time records hook, where the all-time and yearly records
// are compared.
//
// The day's rollover copies the extremes to the " yest" sections itself and
// then calls resetDay.

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/clock.h"
#include "core/live_record.h"
#include "core/settings_store.h"
#include "processing/statistics/daily_extremes_table.h"

namespace nimbrel {

struct Extreme {
  double value = 0;
  std::string time;   // as timeconvert writes it; empty before the first reading
  bool seen = false;  // false while the value is still the day's starting sentinel
};

// A daily extreme that has just changed.
struct NewExtreme {
  Quantity quantity;
  Side side;
  double value;
  std::string_view time;
  const LocalTime& at;
};

class DailyExtremes {
 public:
  // Receives every new daily extreme, for the all-time and yearly records.
  using AllTimeRecordsHook = std::function<void(const NewExtreme&)>;

  DailyExtremes();

  // `tenMinuteAverage`: pass the 10-minute average wind when the day's
  // highest average is taken from it ("use 10 min wind av max"); otherwise
  // the record's `windspeed` is used.
  void check_data(const LiveRecord& record, const LocalTime& now, bool usaTimes, SettingsStore& main,
                  std::optional<double> tenMinuteAverage = std::nullopt);

  // Today's extremes as stored at the last change; a missing or unreadable
  // value starts that extreme afresh.
  void load(const SettingsStore& main);

  // Starts a new day: every extreme back to its sentinel with no time,
  // written at once so that a restart does not bring the old day back.
  void resetDay(SettingsStore& main);

  void setAllTimeRecordsHook(AllTimeRecordsHook hook) { allTimeRecordsHook_ = std::move(hook); }

  // Throws std::invalid_argument for an extreme that is not followed
  // (the low of the gust, for example).
  const Extreme& extreme(Quantity quantity, Side side) const;
  double high(Quantity quantity) const { return extreme(quantity, Side::High).value; }
  double low(Quantity quantity) const { return extreme(quantity, Side::Low).value; }
  const std::string& highTime(Quantity quantity) const { return extreme(quantity, Side::High).time; }
  const std::string& lowTime(Quantity quantity) const { return extreme(quantity, Side::Low).time; }
  // Empty until the first gust of the day.
  std::optional<double> todaysHighGust() const;

 private:
  std::size_t slotOf(Quantity quantity, Side side) const;
  void replace(const ExtremeRow& row, Extreme& extreme, double value, const LocalTime& now, bool usaTimes,
               SettingsStore& main);
  static void store(const ExtremeRow& row, const Extreme& extreme, SettingsStore& main);

  std::vector<Extreme> extremes_;  // one per row of extremeRows(), in the same order
  AllTimeRecordsHook allTimeRecordsHook_;
};

}  // namespace nimbrel
