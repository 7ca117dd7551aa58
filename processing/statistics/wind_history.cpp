#include "processing/statistics/wind_history.h"

#include <algorithm>
#include <cmath>

#include "core/number_format.h"
#include "processing/statistics/compass_words.h"
#include "processing/statistics/daily_extremes_table.h"
#include "processing/statistics/time_text.h"

namespace nimbrel {
namespace {

template <class Series, class Value>
void shiftIn(Series& series, Value newest) {
  std::shift_left(series.begin(), series.end(), 1);
  series.back() = newest;
}

}  // namespace

int extremesResetHour(DayResetTime reset) { return reset == DayResetTime::nineAm ? 9 : 0; }

void LastHourWind::noteReading(double averageKnots, double gustKnots) {
  minuteAverage_ = std::max(minuteAverage_, averageKnots);
  minuteGust_ = std::max(minuteGust_, gustKnots);
}

LastHourMaximum LastHourWind::updatemaxgustreadings(const MinuteWindInputs& inputs, SettingsStore& main) {
  shiftAndStore(inputs);
  const LastHourMaximum top = describe(scan(), inputs);
  if (top.found) persist(top, main);
  return top;
}

void LastHourWind::shiftAndStore(const MinuteWindInputs& inputs) {
  shiftIn(gusts_, minuteGust_);
  shiftIn(averages_, minuteAverage_);
  shiftIn(directions_, inputs.directionDegrees);
  shiftIn(minuteTimes_, inputs.now);
  minuteGust_ = 0;
  minuteAverage_ = 0;
}

// Slot 0 is the minute that is about to leave the hour and is not scanned.
LastHourWind::Scan LastHourWind::scan() const {
  Scan top;
  for (const auto* series : {&averages_, &gusts_})
    for (std::size_t slot = 1; slot < kLastHourSlots; ++slot)
      if ((*series)[slot] >= top.knots) top = Scan{(*series)[slot], slot};
  return top;
}

LastHourMaximum LastHourWind::describe(Scan top, const MinuteWindInputs& inputs) const {
  LastHourMaximum result;
  const bool capped =
      inputs.now.hour != inputs.resetHour && inputs.todaysHighGust && top.knots >= *inputs.todaysHighGust;
  result.knots = capped ? *inputs.todaysHighGust : top.knots;
  result.found = result.knots > 0;
  if (!result.found) return result;
  result.minute = top.minute;
  result.roundedKnots = std::lround(result.knots);
  result.sector = compassSector(directions_[top.minute]);
  result.compass = compassWord(result.sector, inputs.german);
  result.newHigh = top.minute == kNewestMinute;
  result.time = timeconvert(minuteTimes_[top.minute], inputs.usaTimes);
  return result;
}

void LastHourWind::persist(const LastHourMaximum& top, SettingsStore& main) const {
  main.WriteString(kExtremeTimesSection, "Max speed last hour", top.time);
  main.WriteString("Max gust last hour dir", "dir", floatText(std::round(directions_[top.minute])));
}

}  // namespace nimbrel
