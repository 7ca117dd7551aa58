// Today's and yesterday's extremes, changes over hours, days, months and years, recent maxima.
//
// Today's highs and lows come from the statistics the cycle keeps; yesterday's
// from the " yest" sections the daily reset fills. Everything further back
// (a value 24 hours, a month or a year ago, the last hours, the last seven
// days) is read from the minute logs, once per fill (TagCaches).

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string>
#include <string_view>

#include <fmt/format.h>

#include "core/number_format.h"
#include "processing/statistics/compass_words.h"
#include "processing/statistics/time_text.h"
#include "processing/statistics/wind_history.h"
#include "publish/tags/log_minutes.h"
#include "publish/tags/tag_format.h"
#include "publish/tags/tag_rows.h"
#include "publish/tags/tag_tables.h"
#include "publish/tags/unit_conversion.h"

namespace nimbrel {

using namespace tagrows;

namespace {

using Q = Quantity;
using S = Side;
using Ctx = TagContext;

constexpr long long kDay = kMinutesPerDay;
constexpr long long kHour = 60;
// A value "N ago" is the logged minute nearest to that moment, if one lies
// this close: the program may not have run then.
constexpr int kNearMinutes = 10;

constexpr LoggedField kTemp = &LoggedMinute::temperature;
constexpr LoggedField kHum = &LoggedMinute::humidity;
constexpr LoggedField kDew = &LoggedMinute::dewpoint;
constexpr LoggedField kBaro = &LoggedMinute::barometer;
constexpr LoggedField kWind = &LoggedMinute::wind;
constexpr LoggedField kGust = &LoggedMinute::gust;
constexpr LoggedField kDir = &LoggedMinute::direction;
constexpr LoggedField kRain = &LoggedMinute::rain;
constexpr LoggedField kHeat = &LoggedMinute::heatindex;
constexpr LoggedField kChill = &LoggedMinute::windchill;
constexpr LoggedField kApparent = &LoggedMinute::apparent;
constexpr LoggedField kHumidex = &LoggedMinute::humidex;

// ---- moments -------------------------------------------------------------

bool usaTimes(const Ctx& c) { return c.units.units.date == UnitSystem::usa; }
long long nowMinute(const Ctx& c) { return civilMinute(c.now); }
int resetHour(const Ctx& c) { return extremesResetHour(c.units.resets.dayReset); }

// Start of the weather day (midnight, or 9 am with the 9 am reset) holding now.
long long todayStart(const Ctx& c) { return lastTimeAtHour(nowMinute(c), resetHour(c)); }

// The same time of day one calendar month earlier (the 31st of a shorter
// month falls on its last day).
long long monthAgoMinute(const LocalTime& t) {
  const CivilDate d = monthsBefore({t.year, t.month, t.day}, 1);
  return civilMinute(d.year, d.month, d.day, t.hour, t.minute);
}

// The same time of day one year earlier (29 February falls on the 28th).
long long yearAgoMinute(const LocalTime& t) {
  const CivilDate d = monthsBefore({t.year, t.month, t.day}, 12);
  return civilMinute(d.year, d.month, d.day, t.hour, t.minute);
}

std::string timeText(const Ctx& c, long long minute) {
  const LocalTime t = civilTime(minute);
  return timeconvert(t, usaTimes(c));
}

// ---- the logs --------------------------------------------------------------

MinuteHistory readLogs(const Ctx& c, long long from, long long to) {
  const bool nineAm = c.units.resets.dayReset == DayResetTime::nineAm;
  const std::vector<LogMonth> months = logMonthsCovering(from, to, nineAm);
  return MinuteHistory::gather(logMinutes(c), months, MinuteHistory::Repeats::first);
}

// From the day a month ago to now.
const MinuteHistory& recentLogs(const Ctx& c) {
  if (!c.caches.recentLogs)
    c.caches.recentLogs = readLogs(c, lastTimeAtHour(monthAgoMinute(c.now), resetHour(c)), nowMinute(c) + 1);
  return *c.caches.recentLogs;
}

// The weather day a year ago.
const MinuteHistory& yearAgoLogs(const Ctx& c) {
  if (!c.caches.yearAgoLogs) {
    const long long start = lastTimeAtHour(yearAgoMinute(c.now), resetHour(c));
    c.caches.yearAgoLogs = readLogs(c, start, start + kDay);
  }
  return *c.caches.yearAgoLogs;
}

// How far back a past value lies.
enum class Back { hour, threeHours, sixHours, twelveHours, day, month, year };

long long minuteBack(const Ctx& c, Back back) {
  const long long now = nowMinute(c);
  switch (back) {
    case Back::hour: return now - kHour;
    case Back::threeHours: return now - 3 * kHour;
    case Back::sixHours: return now - 6 * kHour;
    case Back::twelveHours: return now - 12 * kHour;
    case Back::day: return now - kDay;
    case Back::month: return monthAgoMinute(c.now);
    case Back::year: return yearAgoMinute(c.now);
  }
  return now;
}

const MinuteHistory& logsFor(const Ctx& c, Back back) { return back == Back::year ? yearAgoLogs(c) : recentLogs(c); }

double liveOf(const LiveRecord& r, LoggedField field) {
  if (field == kTemp) return r.outtemp;
  if (field == kHum) return r.outhum;
  if (field == kDew) return r.dewpoint;
  if (field == kBaro) return r.barometer;
  if (field == kWind) return r.windspeed;
  if (field == kGust) return r.windgust;
  if (field == kDir) return r.winddir;
  if (field == kHeat) return r.heatindex;
  if (field == kChill) return r.windchill;
  return r.outtemp;
}

TagValue pastValue(const Ctx& c, LoggedField field, Back back) {
  const LoggedMinute* then = logsFor(c, back).near(minuteBack(c, back), kNearMinutes);
  return then ? TagValue((then->*field)()) : noData();
}

// The minutes of the last `minutes` minutes, up to now.
std::span<const LoggedMinute> lastMinutes(const Ctx& c, long long minutes) {
  const long long now = nowMinute(c);
  return recentLogs(c).between(now - minutes + 1, now + 1);
}

std::span<const LoggedMinute> today(const Ctx& c) { return recentLogs(c).between(todayStart(c), nowMinute(c) + 1); }

// The weather day `days` days before today.
std::span<const LoggedMinute> dayBefore(const Ctx& c, int days) {
  const long long start = todayStart(c) - days * kDay;
  return recentLogs(c).between(start, start + kDay);
}

enum class Day { monthAgo, yearAgo };

std::span<const LoggedMinute> pastDay(const Ctx& c, Day day) {
  if (day == Day::yearAgo) {
    const long long start = lastTimeAtHour(yearAgoMinute(c.now), resetHour(c));
    return yearAgoLogs(c).between(start, start + kDay);
  }
  const long long start = lastTimeAtHour(monthAgoMinute(c.now), resetHour(c));
  return recentLogs(c).between(start, start + kDay);
}

std::span<const LoggedMinute> lastWeek(const Ctx& c) { return lastMinutes(c, 7 * kDay); }

std::optional<LoggedExtreme> extremeOf(std::span<const LoggedMinute> minutes, LoggedField field, S side) {
  return side == S::High ? highest(minutes, field) : lowest(minutes, field);
}

TagValue valueOf(const std::optional<LoggedExtreme>& e) { return e ? TagValue(e->value) : noData(); }

// The highest running total (or mean) of a field over `length` minutes
// ending within [from, to), and the minute it ends.
struct Running {
  double value = 0;
  long long endMinute = 0;
};
std::optional<Running> bestRunning(const MinuteHistory& logs, long long from, long long to, long long length,
                                   LoggedField field, bool mean) {
  const auto minutes = logs.between(from - length + 1, to);
  std::optional<Running> best;
  double sum = 0;
  std::size_t first = 0;
  for (std::size_t i = 0; i < minutes.size(); ++i) {
    sum += (minutes[i].*field)();
    while (minutes[first].minute <= minutes[i].minute - length) sum -= (minutes[first++].*field)();
    if (minutes[i].minute < from) continue;
    const double value = mean ? sum / static_cast<double>(i - first + 1) : sum;
    if (!best || value > best->value) best = Running{value, minutes[i].minute};
  }
  return best;
}

// ---- sources -------------------------------------------------------------

TagSource todays(Q q, S side) {
  return [q, side](const Ctx& c) {
    const Extreme& e = c.stats.extremes().extreme(q, side);
    return e.seen ? TagValue(e.value) : noData();
  };
}
TagSource high(Q q) { return todays(q, S::High); }
TagSource low(Q q) { return todays(q, S::Low); }
TagSource todaysTime(Q q, S side) {
  return [q, side](const Ctx& c) {
    const Extreme& e = c.stats.extremes().extreme(q, side);
    return e.seen && !e.time.empty() ? TagValue(e.time) : noData();
  };
}
TagSource highTime(Q q) { return todaysTime(q, S::High); }
TagSource lowTime(Q q) { return todaysTime(q, S::Low); }

// A daily section's stored value, or nothing while it still holds the
// day's starting sentinel (nothing was seen that day).
TagValue storedValue(const Ctx& c, std::string_view section, std::string_view yestSuffix, S side) {
  double sentinel = side == S::High ? kHighSentinel : kLowSentinel;
  for (const ExtremeRow& row : extremeRows())
    if (row.section == section) sentinel = sentinelOf(row);
  double value = 0;
  const std::string key = std::string(section) + std::string(yestSuffix);
  if (!parseDouble(c.settings.ReadString(key, "number2"), value) || value == sentinel) return noData();
  return value;
}
TagSource yest(std::string_view section, S side) {
  return [section, side](const Ctx& c) { return storedValue(c, section, " yest", side); };
}
TagSource yestTime(std::string_view section) {
  return [section](const Ctx& c) {
    const std::string time = c.settings.ReadString(std::string(section) + " yest", "number2time");
    return time.empty() ? noData() : TagValue(time);
  };
}
// A daily section the statistics do not follow (grass, THSW): today's value as stored.
TagSource stored(std::string_view section, S side) {
  return [section, side](const Ctx& c) { return storedValue(c, section, "", side); };
}

TagSource ago(LoggedField field, Back back) {
  return [field, back](const Ctx& c) { return pastValue(c, field, back); };
}
TagSource change(LoggedField field, Back back) {
  return [field, back](const Ctx& c) {
    const TagValue then = pastValue(c, field, back);
    if (!c.readingsSeen || then.missing()) return noData();
    return TagValue(liveOf(c.live, field) - *then.number());
  };
}
// A change of temperature over the last hour in a fixed unit (the number
// converted here: a difference takes no offset).
TagSource tempChangeHourIn(double factor) {
  return [factor](const Ctx& c) {
    const TagValue then = pastValue(c, kTemp, Back::hour);
    if (!c.readingsSeen || then.missing()) return noData();
    return TagValue((c.live.outtemp - *then.number()) * factor);
  };
}

TagSource pastDayExtreme(LoggedField field, S side, Day day) {
  return [field, side, day](const Ctx& c) { return valueOf(extremeOf(pastDay(c, day), field, side)); };
}
TagSource daysAgoExtreme(LoggedField field, S side, int days) {
  return [field, side, days](const Ctx& c) { return valueOf(extremeOf(dayBefore(c, days), field, side)); };
}
TagSource weekExtreme(LoggedField field, S side) {
  return [field, side](const Ctx& c) { return valueOf(extremeOf(lastWeek(c), field, side)); };
}
constexpr std::array<std::string_view, 7> kWeekdays{"Sunday", "Monday", "Tuesday", "Wednesday",
                                                    "Thursday", "Friday", "Saturday"};
TagSource weekExtremeDay(LoggedField field, S side) {
  return [field, side](const Ctx& c) {
    const auto e = extremeOf(lastWeek(c), field, side);
    if (!e) return noData();
    return TagValue(kWeekdays[static_cast<std::size_t>(civilTime(e->at->minute).weekday)]);
  };
}
TagSource windowExtreme(LoggedField field, S side, long long minutes) {
  return [field, side, minutes](const Ctx& c) { return valueOf(extremeOf(lastMinutes(c, minutes), field, side)); };
}
TagSource windowExtremeTime(LoggedField field, S side, long long minutes) {
  return [field, side, minutes](const Ctx& c) {
    const auto e = extremeOf(lastMinutes(c, minutes), field, side);
    return e ? TagValue(timeText(c, e->at->minute)) : noData();
  };
}
TagSource todayExtreme(LoggedField field, S side) {
  return [field, side](const Ctx& c) { return valueOf(extremeOf(today(c), field, side)); };
}
TagSource todayExtremeTime(LoggedField field, S side) {
  return [field, side](const Ctx& c) {
    const auto e = extremeOf(today(c), field, side);
    return e ? TagValue(timeText(c, e->at->minute)) : noData();
  };
}

// Compass forms of a logged direction.
enum class Compass { degrees, word, words };

constexpr std::array<std::string_view, 16> kCompassNames{
    "North",         "North North East", "North East", "East North East", "East",  "East South East",
    "South East",    "South South East", "South",      "South South West", "South West", "West South West",
    "West",          "West North West",  "North West", "North North West"};

TagValue compassValue(const Ctx& c, double degrees, Compass form) {
  const int sector = compassSector(degrees);
  switch (form) {
    case Compass::degrees: return degrees;
    case Compass::word: return std::string(compassLetters(sector, c.options.language == WordLanguage::german));
    case Compass::words: return kCompassNames[static_cast<std::size_t>(sector % 16)];
  }
  return noData();
}

using Span = std::span<const LoggedMinute> (*)(const Ctx&);

// The direction logged in the minute of the highest `field` over `minutes`.
TagSource directionAtHighest(Span minutes, LoggedField field, Compass form) {
  return [minutes, field, form](const Ctx& c) {
    const auto e = highest(minutes(c), field);
    return e ? compassValue(c, e->at->direction(), form) : noData();
  };
}
std::span<const LoggedMinute> yesterday(const Ctx& c) { return dayBefore(c, 1); }
std::span<const LoggedMinute> last10(const Ctx& c) { return lastMinutes(c, 10); }
// Since the start of the present clock hour.
std::span<const LoggedMinute> thisHour(const Ctx& c) { return lastMinutes(c, c.now.minute + 1); }

TagSource thisHourGust() {
  return [](const Ctx& c) { return valueOf(highest(thisHour(c), kGust)); };
}
TagSource thisHourGustTime() {
  return [](const Ctx& c) {
    const auto e = highest(thisHour(c), kGust);
    return e ? TagValue(timeText(c, e->at->minute)) : noData();
  };
}

TagSource rainOver(long long minutes) {
  return [minutes](const Ctx& c) {
    const auto span = lastMinutes(c, minutes);
    return span.empty() ? noData() : TagValue(rainOf(span));
  };
}

// The wettest hour (a running 60-minute total) ending in [from, now].
enum class RainSpan { today, sixHours, month };
std::optional<Running> wettestHour(const Ctx& c, RainSpan span) {
  const long long now = nowMinute(c);
  long long from = todayStart(c);
  if (span == RainSpan::sixHours) from = now - 6 * kHour + 1;
  if (span == RainSpan::month) from = civilMinute(c.now.year, c.now.month, 1, 0, 0);
  return bestRunning(recentLogs(c), from, now + 1, kHour, kRain, false);
}
TagSource wettestHourRain(RainSpan span) {
  return [span](const Ctx& c) {
    const auto best = wettestHour(c, span);
    return best ? TagValue(best->value) : noData();
  };
}
TagSource wettestHourTime() {
  return [](const Ctx& c) {
    const auto best = wettestHour(c, RainSpan::today);
    return best && best->value > 0 ? TagValue(timeText(c, best->endMinute)) : noData();
  };
}

// The highest 10-minute mean of the logged average wind since `from`.
TagSource tenMinuteHigh(bool lastDay) {
  return [lastDay](const Ctx& c) {
    const long long now = nowMinute(c);
    const long long from = lastDay ? now - kDay + 1 : todayStart(c);
    const auto best = bestRunning(recentLogs(c), from, now + 1, 10, kWind, true);
    return best ? TagValue(best->value) : noData();
  };
}

TagSource minutesSinceRain() {
  return [](const Ctx& c) {
    const auto& minutes = recentLogs(c).minutes();
    for (auto it = minutes.rbegin(); it != minutes.rend(); ++it)
      if (it->rain() > 0) return TagValue(static_cast<double>(nowMinute(c) - it->minute));
    return noData();
  };
}

TagSource yesterdayMean(LoggedField field) {
  return [field](const Ctx& c) {
    const auto span = yesterday(c);
    if (span.empty()) return noData();
    double sum = 0;
    for (const LoggedMinute& m : span) sum += (m.*field)();
    return TagValue(sum / static_cast<double>(span.size()));
  };
}

// The last night: 21:00 to 9:00 (the night in progress before 9 am).
std::optional<LoggedExtreme> overnightLow(const Ctx& c) {
  const long long now = nowMinute(c);
  const long long morning = lastTimeAtHour(now, 9);  // the latest 9:00
  const long long start = morning - 12 * kHour;
  return lowest(recentLogs(c).between(start, std::min(morning, now + 1)), kTemp);
}

TagSource lastHourGust() {
  return [](const Ctx& c) {
    const LastHourMaximum& top = c.stats.lastHour();
    return top.found ? TagValue(top.knots) : noData();
  };
}
TagSource lastHourGustTime() {
  return [](const Ctx& c) {
    const LastHourMaximum& top = c.stats.lastHour();
    return top.found && !top.time.empty() ? TagValue(top.time) : noData();
  };
}

// The highest gust of the one-second series (the last minute).
TagSource lastMinuteGust() {
  return [](const Ctx& c) {
    const ShortTermSeries& series = c.stats.series();
    if (!series.seeded()) return noData();
    return TagValue(*std::max_element(series.gust().begin(), series.gust().end()));
  };
}

constexpr std::array<std::string_view, 13> kBeaufortNames{
    "Calm",      "Light air",  "Light breeze", "Gentle breeze", "Moderate breeze", "Fresh breeze", "Strong breeze",
    "Near gale", "Gale",       "Strong gale",  "Storm",         "Violent storm",   "Hurricane"};

TagSource gustBeaufortWords() {
  return [](const Ctx& c) {
    const Extreme& e = c.stats.extremes().extreme(Q::Gust, S::High);
    return e.seen ? TagValue(kBeaufortNames[static_cast<std::size_t>(beaufortForce(e.value))]) : noData();
  };
}

// Yesterday's stored wind extreme, followed by the direction logged in the
// minute of yesterday's highest logged value of the same kind.
TagSource yestWindWithDirection(std::string_view section, LoggedField field) {
  return [section, field](const Ctx& c) {
    const TagValue value = storedValue(c, section, " yest", S::High);
    if (value.missing()) return noData();
    const TagDef def = number("", Unit::speed, 1, 1, {}, "");
    std::string out = formatTag(def, value, TagWriting{c.units.units});
    const auto e = highest(yesterday(c), field);
    if (e) out += " " + *compassValue(c, e->at->direction(), Compass::word).text();
    return TagValue(out);
  };
}

TagSource yesterdaysRain() {
  return [](const Ctx& c) {
    double mm = 0;
    if (!parseDouble(c.settings.ReadString("Daily high average yest", "prevdayrain"), mm)) return noData();
    return TagValue(mm);
  };
}

// ---- day length ----------------------------------------------------------

// Hours of daylight at `latitude` on day `yearday` (0 = 1 January): the sun's
// declination from the usual cosine approximation, sunrise and sunset with
// the sun's centre 0.833 degrees below the horizon (refraction and the
// sun's radius). Polar day and night give 24 and 0.
double dayLengthHours(double latitude, int yearday) {
  constexpr double kRad = std::numbers::pi / 180.0;
  const double declination = -23.44 * std::cos(2.0 * std::numbers::pi / 365.0 * (yearday + 10));
  const double cosHour = (std::sin(-0.833 * kRad) - std::sin(latitude * kRad) * std::sin(declination * kRad)) /
                         (std::cos(latitude * kRad) * std::cos(declination * kRad));
  if (cosHour <= -1) return 24.0;
  if (cosHour >= 1) return 0.0;
  return 2.0 * std::acos(cosHour) / kRad / 15.0;
}

std::string signedDuration(double hours, bool withHours) {
  const long long seconds = std::llround(hours * 3600.0);
  const char sign = seconds < 0 ? '-' : '+';
  const long long s = std::llabs(seconds);
  if (withHours) return fmt::format("{}{}:{:02}", sign, s / 3600, s % 3600 / 60);
  return fmt::format("{}{}:{:02}", sign, s / 60, s % 60);
}

// Today's day length against yesterday's (minutes:seconds), or against the
// last solstice of `solsticeMonth` (hours:minutes).
TagSource dayLengthChange(int solsticeMonth) {
  return [solsticeMonth](const Ctx& c) {
    if (!c.options.position.latitude) return noData();
    const double latitude = *c.options.position.latitude;
    const double todayHours = dayLengthHours(latitude, c.now.yearday);
    if (solsticeMonth == 0) {
      const double yesterdayHours = dayLengthHours(latitude, c.now.yearday == 0 ? 364 : c.now.yearday - 1);
      return TagValue(signedDuration(todayHours - yesterdayHours, false));
    }
    const bool thisYear = c.now.month > solsticeMonth || (c.now.month == solsticeMonth && c.now.day >= 21);
    const int year = thisYear ? c.now.year : c.now.year - 1;
    const int yearday = static_cast<int>((civilMinute(year, solsticeMonth, 21, 0, 0) - civilMinute(year, 1, 1, 0, 0)) / kDay);
    return TagValue(signedDuration(todayHours - dayLengthHours(latitude, yearday), true));
  };
}

TagSource liveValue(double LiveRecord::*field) {
  return [field](const Ctx& c) { return reading(c, c.live.*field); };
}
TagSource maxRainRatePerMinute() {
  return [](const Ctx& c) { return reading(c, c.stats.rain().maxRainRate() / 60.0); };
}
TagSource maxRainRate() {
  return [](const Ctx& c) { return reading(c, c.stats.rain().maxRainRate()); };
}
TagSource maxRainRateTime() {
  return [](const Ctx& c) {
    const std::string& time = c.stats.rain().maxRainRateTime();
    return time.empty() ? noData() : TagValue(time);
  };
}

}  // namespace

namespace {

TagDef temp(std::string name, TagSource s, std::string gives) {
  return number(std::move(name), Unit::temperature, 1, 1, std::move(s), std::move(gives));
}
TagDef tempIn(std::string name, Unit unit, TagSource s, std::string gives) {
  return number(std::move(name), unit, 1, 1, std::move(s), std::move(gives));
}
TagDef tempChange(std::string name, TagSource s, std::string gives) {
  return number(std::move(name), Unit::temperatureChange, 1, 1, std::move(s), std::move(gives));
}
TagDef press(std::string name, TagSource s, std::string gives) {
  return number(std::move(name), Unit::pressure, 1, 1, std::move(s), std::move(gives));
}
TagDef percent(std::string name, TagSource s, std::string gives) {
  return number(std::move(name), Unit::none, 1, 0, std::move(s), std::move(gives));
}
TagDef speed(std::string name, TagSource s, std::string gives) {
  return number(std::move(name), Unit::speed, 1, 1, std::move(s), std::move(gives));
}
TagDef speedIn(std::string name, Unit unit, TagSource s, std::string gives) {
  return number(std::move(name), unit, 1, 1, std::move(s), std::move(gives));
}
TagDef rainAmount(std::string name, Unit unit, TagSource s, std::string gives) {
  return number(std::move(name), unit, 1, 1, std::move(s), std::move(gives));
}
TagDef degrees(std::string name, TagSource s, std::string gives) {
  return number(std::move(name), Unit::none, 1, 0, std::move(s), std::move(gives));
}

constexpr std::string_view kNoIndoorLog = "; indoor readings are not in the minute log, so none here";

}  // namespace

std::vector<TagDef> todayTags() {
  const std::string noIndoor(kNoIndoorLog);
  return {
      press("baro24hoursago", ago(kBaro, Back::day), "barometer 24 hours ago (minute log)"),
      press("barochange24hour", change(kBaro, Back::day), "change of the barometer over the last 24 hours"),
      press("barochangelasthour", change(kBaro, Back::hour), "change of the barometer over the last hour"),
      press("barochangemonth", change(kBaro, Back::month), "change of the barometer since the same time a month ago"),
      press("barochangeyear", change(kBaro, Back::year), "change of the barometer since the same time a year ago"),
      number("bftmaxgustlast24hr", Unit::beaufort, 1, 0, windowExtreme(kGust, S::High, kDay),
             "highest gust of the last 24 hours as a Beaufort force"),
      bare("bftmaxgustlast24hrnum", Unit::beaufort, 1, 0, windowExtreme(kGust, S::High, kDay),
           "highest gust of the last 24 hours as a Beaufort force, number only"),
      number("bftmaxgustlasthr", Unit::beaufort, 1, 0, lastHourGust(), "highest gust of the last hour as a Beaufort force"),
      bare("bftmaxgusttodaynum", Unit::beaufort, 1, 0, high(Q::Gust), "today's highest gust as a Beaufort force, number only"),
      text("changeinday", dayLengthChange(0), "change of the day length since yesterday, +m:ss (needs the station's latitude)"),
      text("changeindaydec", dayLengthChange(12), "change of the day length since the December solstice, +h:mm"),
      text("changeindayjun", dayLengthChange(6), "change of the day length since the June solstice, +h:mm"),
      temp("chillmonthago", ago(kChill, Back::month), "wind chill at the same time a month ago (from the minute log)"),
      temp("chillyearago", ago(kChill, Back::year), "wind chill at the same time a year ago (from the minute log)"),
      text("dailyhighindoorhumtime", highTime(Q::IndoorHumidity), "time of today's highest indoor humidity"),
      temp("dailyhitemp12", windowExtreme(kTemp, S::High, 12 * kHour), "highest outdoor temperature of the last 12 hours"),
      temp("dailylotemp12", windowExtreme(kTemp, S::Low, 12 * kHour), "lowest outdoor temperature of the last 12 hours"),
      text("dailylowindoorhumtime", lowTime(Q::IndoorHumidity), "time of today's lowest indoor humidity"),
      temp("dew24hoursago", ago(kDew, Back::day), "dew point 24 hours ago"),
      tempChange("dewchange24hour", change(kDew, Back::day), "change of the dew point over the last 24 hours"),
      tempChange("dewchangelasthour", change(kDew, Back::hour), "change of the dew point over the last hour"),
      tempChange("dewchangemonth", change(kDew, Back::month), "change of the dew point since the same time a month ago"),
      tempChange("dewchangeyear", change(kDew, Back::year), "change of the dew point since the same time a year ago"),
      degrees("dir24hoursago", ago(kDir, Back::day), "wind direction 24 hours ago, degrees"),
      speed("gust24hoursago", ago(kGust, Back::day), "gust 24 hours ago"),
      temp("heatmonthago", ago(kHeat, Back::month), "heat index at the same time a month ago"),
      temp("heatyearago", ago(kHeat, Back::year), "heat index at the same time a year ago"),
      temp("hiapparenttemp", todayExtreme(kApparent, S::High),
           "today's highest apparent temperature (shade form, from the minute log's temperature, humidity and wind)"),
      missing("hiapparenttemp2",
              "today's highest apparent temperature with the sun's warming; the minute log keeps no solar radiation"),
      text("hiapparenttemptime", todayExtremeTime(kApparent, S::High), "time of today's highest apparent temperature"),
      speed("highavtenminutewind", tenMinuteHigh(false), "today's highest 10-minute average wind (from the minute log)"),
      speed("highavtenminutewind24", tenMinuteHigh(true), "highest 10-minute average wind of the last 24 hours"),
      speedIn("highavtenminutewindkmh", Unit::kmh, tenMinuteHigh(false), "today's highest 10-minute average wind in km/h"),
      speedIn("highavtenminutewindkts", Unit::knots, tenMinuteHigh(false), "today's highest 10-minute average wind in knots"),
      speedIn("highavtenminutewindms", Unit::metresPerSecond, tenMinuteHigh(false),
              "today's highest 10-minute average wind in m/s"),
      press("highbaro", high(Q::Pressure), "today's highest barometer"),
      text("highbarot", highTime(Q::Pressure), "time of today's highest barometer"),
      percent("highhum", high(Q::Humidity), "today's highest outdoor humidity, %"),
      text("highhumt", highTime(Q::Humidity), "time of today's highest outdoor humidity"),
      number("highsolar", Unit::none, 1, 0, high(Q::Solar), "today's highest solar radiation, W/m²"),
      text("highsolartime", highTime(Q::Solar), "time of today's highest solar radiation"),
      number("highsolaryest", Unit::none, 1, 0, yest("Daily high solar", S::High), "yesterday's highest solar radiation, W/m²"),
      text("highsolaryesttime", yestTime("Daily high solar"), "time of yesterday's highest solar radiation"),
      tempIn("hightempinusa", Unit::fahrenheit, high(Q::Temperature), "today's highest outdoor temperature in °F"),
      number("highuv", Unit::none, 1, 1, high(Q::Uv), "today's highest UV index"),
      text("highuvtime", highTime(Q::Uv), "time of today's highest UV index"),
      number("highuvyest", Unit::none, 1, 1, yest("Daily high uv", S::High), "yesterday's highest UV index"),
      text("highuvyesttime", yestTime("Daily high uv"), "time of yesterday's highest UV index"),
      temp("hiTHSW", stored("Daily high thsw", S::High),
           "today's highest THSW index as stored; no station here reports it yet, so normally ---"),
      percent("hum24hoursago", ago(kHum, Back::day), "outdoor humidity 24 hours ago, %"),
      percent("humchange24hour", change(kHum, Back::day), "change of the outdoor humidity over the last 24 hours"),
      percent("humchangelasthour", change(kHum, Back::hour), "change of the outdoor humidity over the last hour"),
      percent("humchangemonth", change(kHum, Back::month), "change of the outdoor humidity since the same time a month ago"),
      percent("humchangeyear", change(kHum, Back::year), "change of the outdoor humidity since the same time a year ago"),
      missing("inhumchangelasthour", "change of the indoor humidity over the last hour" + noIndoor),
      missing("intemp24hoursago", "indoor temperature 24 hours ago" + noIndoor),
      missing("intempchangelasthour", "change of the indoor temperature over the last hour" + noIndoor),
      temp("loapparenttemp", todayExtreme(kApparent, S::Low), "today's lowest apparent temperature (shade form, minute log)"),
      missing("loapparenttemp2",
              "today's lowest apparent temperature with the sun's warming; the minute log keeps no solar radiation"),
      text("loapparenttemptime", todayExtremeTime(kApparent, S::Low), "time of today's lowest apparent temperature"),
      temp("loTHSW", stored("Daily low thsw", S::Low),
           "today's lowest THSW index as stored; no station here reports it yet, so normally ---"),
      press("lowbaro", low(Q::Pressure), "today's lowest barometer"),
      text("lowbarot", lowTime(Q::Pressure), "time of today's lowest barometer"),
      percent("lowhum", low(Q::Humidity), "today's lowest outdoor humidity, %"),
      text("lowhumt", lowTime(Q::Humidity), "time of today's lowest outdoor humidity"),
      missing("lowsolar", "today's lowest solar radiation; not followed (it is 0 every night)"),
      missing("lowsolartime", "time of today's lowest solar radiation; not followed"),
      tempIn("lowtempinusa", Unit::fahrenheit, low(Q::Temperature), "today's lowest outdoor temperature in °F"),
      missing("lowuv", "today's lowest UV index; not followed (it is 0 every night)"),
      missing("lowuvtime", "time of today's lowest UV index; not followed"),
      speed("max1minavspeedlast12hrs", windowExtreme(kWind, S::High, 12 * kHour),
            "highest one-minute average wind of the last 12 hours"),
      speedIn("max1minavspeedlast12hrsm/s", Unit::metresPerSecond, windowExtreme(kWind, S::High, 12 * kHour),
              "highest one-minute average wind of the last 12 hours in m/s"),
      speed("max1minuteavwind", todayExtreme(kWind, S::High), "today's highest one-minute average wind (minute log)"),
      text("max1minuteavwinddata", todayExtremeTime(kWind, S::High), "time of today's highest one-minute average wind"),
      text("maxaverageyest", yestWindWithDirection("Daily high average", kWind),
           "yesterday's highest average wind and the direction logged with yesterday's strongest minute"),
      speed("maxaverageyestnodir", yest("Daily high average", S::High), "yesterday's highest average wind"),
      text("maxaverageyestt", yestTime("Daily high average"), "time of yesterday's highest average wind"),
      text("maxavgdirectionletter", directionAtHighest(today, kWind, Compass::word),
           "direction logged in today's windiest minute (highest average), compass letters"),
      speed("maxavgspd", high(Q::Average), "today's highest average wind"),
      text("maxavgspdt", highTime(Q::Average), "time of today's highest average wind"),
      speedIn("maxavspeedinkts", Unit::knots, high(Q::Average), "today's highest average wind in knots"),
      speedIn("maxavspeedinm/s", Unit::metresPerSecond, high(Q::Average), "today's highest average wind in m/s"),
      number("maxbaroinmetric", Unit::hPa, 1, 1, high(Q::Pressure), "today's highest barometer in hPa"),
      press("maxbaromtago", pastDayExtreme(kBaro, S::High, Day::monthAgo), "highest barometer of the day a month ago"),
      press("maxbaroweek", weekExtreme(kBaro, S::High), "highest barometer of the last 7 days"),
      text("maxbaroweekday", weekExtremeDay(kBaro, S::High), "weekday of the highest barometer of the last 7 days"),
      press("maxbaroyest", yest("Daily high pressure", S::High), "yesterday's highest barometer"),
      text("maxbaroyestt", yestTime("Daily high pressure"), "time of yesterday's highest barometer"),
      press("maxbaroyrago", pastDayExtreme(kBaro, S::High, Day::yearAgo), "highest barometer of the day a year ago"),
      temp("maxchillyest", yest("Daily high windchill", S::High), "yesterday's highest wind chill"),
      text("maxchillyestt", yestTime("Daily high windchill"), "time of yesterday's highest wind chill"),
      speedIn("maxdailygustinkts", Unit::knots, high(Q::Gust), "today's highest gust in knots"),
      speedIn("maxdailygustinm/s", Unit::metresPerSecond, high(Q::Gust), "today's highest gust in m/s"),
      speedIn("maxdailygustinmph", Unit::mph, high(Q::Gust), "today's highest gust in mph"),
      temp("maxdew", high(Q::DewPoint), "today's highest dew point"),
      temp("maxdewmtago", pastDayExtreme(kDew, S::High, Day::monthAgo), "highest dew point of the day a month ago"),
      text("maxdewt", highTime(Q::DewPoint), "time of today's highest dew point"),
      temp("maxdewweek", weekExtreme(kDew, S::High), "highest dew point of the last 7 days"),
      text("maxdewweekday", weekExtremeDay(kDew, S::High), "weekday of the highest dew point of the last 7 days"),
      temp("maxdewyest", yest("Daily high dewpoint", S::High), "yesterday's highest dew point"),
      text("maxdewyestt", yestTime("Daily high dewpoint"), "time of yesterday's highest dew point"),
      temp("maxdewyrago", pastDayExtreme(kDew, S::High, Day::yearAgo), "highest dew point of the day a year ago"),
      degrees("maxdir10minute", windowExtreme(kDir, S::High, 10), "largest wind direction logged in the last 10 minutes, degrees"),
      speed("maxgst", high(Q::Gust), "today's highest gust"),
      degrees("maxgstdirectiondegree", directionAtHighest(today, kGust, Compass::degrees),
              "direction logged in the minute of today's highest logged gust, degrees"),
      text("maxgstdirectionletter", directionAtHighest(today, kGust, Compass::word),
           "direction logged in the minute of today's highest logged gust, compass letters"),
      speed("maxgsthr", lastHourGust(), "highest gust of the last hour"),
      text("maxgsthrt", lastHourGustTime(), "time of the highest gust of the last hour"),
      bare("maxgstnodp", Unit::speed, 1, 0, high(Q::Gust), "today's highest gust, no decimals"),
      text("maxgstt", highTime(Q::Gust), "time of today's highest gust"),
      text("maxgstwords", gustBeaufortWords(), "today's highest gust as the Beaufort scale's words (\"Fresh breeze\")"),
      speedIn("maxgustlasthourinkmh", Unit::kmh, lastHourGust(), "highest gust of the last hour in km/h"),
      speedIn("maxgustlasthourinm/s", Unit::metresPerSecond, lastHourGust(), "highest gust of the last hour in m/s"),
      speedIn("maxgustlasthourinmetric", Unit::kmh, lastHourGust(), "highest gust of the last hour in km/h"),
      speedIn("maxgustlasthourkts", Unit::knots, lastHourGust(), "highest gust of the last hour in knots"),
      speedIn("maxgustlasthourm/s", Unit::metresPerSecond, lastHourGust(), "highest gust of the last hour in m/s"),
      speed("maxgustlastimediate10", windowExtreme(kGust, S::High, 10), "highest gust of the last 10 minutes (minute log)"),
      degrees("maxgustlastimediate10dir", directionAtHighest(last10, kGust, Compass::degrees),
              "direction of the highest gust of the last 10 minutes, degrees"),
      speed("maxgustlastimediate120", windowExtreme(kGust, S::High, 120), "highest gust of the last 120 minutes"),
      speed("maxgustlastimediate15", windowExtreme(kGust, S::High, 15), "highest gust of the last 15 minutes"),
      speed("maxgustlastimediate30", windowExtreme(kGust, S::High, 30), "highest gust of the last 30 minutes"),
      speed("maxgustlastimediate60", windowExtreme(kGust, S::High, 60), "highest gust of the last 60 minutes"),
      speed("maxgustlastimediatehour", thisHourGust(), "highest gust since the start of this clock hour"),
      degrees("maxgustlastimediatehourdir", directionAtHighest(thisHour, kGust, Compass::degrees),
              "direction of the highest gust since the start of this clock hour, degrees"),
      text("maxgustlastimediatehourdirword", directionAtHighest(thisHour, kGust, Compass::word),
           "direction of the highest gust since the start of this clock hour, compass letters"),
      text("maxgustlastimediatehourdirwords", directionAtHighest(thisHour, kGust, Compass::words),
           "direction of the highest gust since the start of this clock hour in words (\"North West\")"),
      speedIn("maxgustlastimediatehourkmh", Unit::kmh, thisHourGust(), "highest gust since the start of this clock hour in km/h"),
      text("maxgustlastimediatehourtime", thisHourGustTime(), "time of the highest gust since the start of this clock hour"),
      speedIn("maxgustlastmininkts", Unit::knots, lastMinuteGust(), "highest gust of the last minute (one-second samples) in knots"),
      speedIn("maxgustlastmininm/s", Unit::metresPerSecond, lastMinuteGust(), "highest gust of the last minute in m/s"),
      speed("maxgustweek", weekExtreme(kGust, S::High), "highest gust of the last 7 days"),
      text("maxgustweekday", weekExtremeDay(kGust, S::High), "weekday of the highest gust of the last 7 days"),
      text("maxgustyest", yestWindWithDirection("Daily high gust", kGust),
           "yesterday's highest gust and the direction logged with yesterday's highest logged gust"),
      speed("maxgustyestnodir", yest("Daily high gust", S::High), "yesterday's highest gust"),
      text("maxgustyestt", yestTime("Daily high gust"), "time of yesterday's highest gust"),
      temp("maxheat", high(Q::HeatIndex), "today's highest heat index"),
      tempIn("maxheatinmetric", Unit::celsius, high(Q::HeatIndex), "today's highest heat index in °C"),
      text("maxheatt", highTime(Q::HeatIndex), "time of today's highest heat index"),
      temp("maxheatweek", weekExtreme(kHeat, S::High), "highest heat index of the last 7 days"),
      text("maxheatweekday", weekExtremeDay(kHeat, S::High), "weekday of the highest heat index of the last 7 days"),
      temp("maxheatyest", yest("Daily high heatindex", S::High), "yesterday's highest heat index"),
      text("maxheatyestt", yestTime("Daily high heatindex"), "time of yesterday's highest heat index"),
      tempIn("maxhighchillinmetric", Unit::celsius, high(Q::WindChill), "today's highest wind chill in °C"),
      tempIn("maxhighdewinmetric", Unit::celsius, high(Q::DewPoint), "today's highest dew point in °C"),
      rainAmount("maxhourrn", Unit::rain, wettestHourRain(RainSpan::today), "most rain in any 60 minutes today"),
      text("maxhourrnt", wettestHourTime(), "time at the end of today's wettest 60 minutes"),
      percent("maxhummtago", pastDayExtreme(kHum, S::High, Day::monthAgo), "highest humidity of the day a month ago, %"),
      percent("maxhumweek", weekExtreme(kHum, S::High), "highest humidity of the last 7 days, %"),
      text("maxhumweekday", weekExtremeDay(kHum, S::High), "weekday of the highest humidity of the last 7 days"),
      percent("maxhumyest", yest("Daily high humidity", S::High), "yesterday's highest humidity, %"),
      text("maxhumyestt", yestTime("Daily high humidity"), "time of yesterday's highest humidity"),
      percent("maxhumyrago", pastDayExtreme(kHum, S::High, Day::yearAgo), "highest humidity of the day a year ago, %"),
      percent("maxindoorhum", high(Q::IndoorHumidity), "today's highest indoor humidity, %"),
      temp("maxindoortemp", high(Q::IndoorTemp), "today's highest indoor temperature"),
      tempIn("maxindoortempcelsius", Unit::celsius, high(Q::IndoorTemp), "today's highest indoor temperature in °C"),
      text("maxindoortempt", highTime(Q::IndoorTemp), "time of today's highest indoor temperature"),
      temp("maxindoortempyest", yest("Daily high indoor temp", S::High), "yesterday's highest indoor temperature"),
      text("maxindoortempyestt", yestTime("Daily high indoor temp"), "time of yesterday's highest indoor temperature"),
      rainAmount("maxrain/hourlast6hours", Unit::rainRate, wettestHourRain(RainSpan::sixHours),
                 "most rain in any 60 minutes of the last 6 hours, per hour"),
      rainAmount("maxrain/hourlast6hoursmm", Unit::mmPerHour, wettestHourRain(RainSpan::sixHours),
                 "most rain in any 60 minutes of the last 6 hours, mm per hour"),
      rainAmount("maxrain/hourlast6hoursusa", Unit::inchesPerHour, wettestHourRain(RainSpan::sixHours),
                 "most rain in any 60 minutes of the last 6 hours, inches per hour"),
      rainAmount("maxrain/hourlastmonthtodate", Unit::rainRate, wettestHourRain(RainSpan::month),
                 "most rain in any 60 minutes this month, per hour"),
      rainAmount("maxrain/minlasthour", Unit::rain, windowExtreme(kRain, S::High, kHour),
                 "most rain in one minute in the last hour"),
      rainAmount("maxrain/minlasthourmm", Unit::mm, windowExtreme(kRain, S::High, kHour),
                 "most rain in one minute in the last hour, mm"),
      bare("maxrainrate", Unit::rain, 1, 2, maxRainRatePerMinute(), "today's highest rain rate per minute"),
      rainAmount("maxrainratehr", Unit::rainRate, maxRainRate(), "today's highest rain rate per hour"),
      text("maxrainratetime", maxRainRateTime(), "time of today's highest rain rate"),
      missing("maxrainrateyest", "yesterday's highest rain rate; the daily reset does not keep it"),
      missing("maxrainrateyesthr", "yesterday's highest rain rate per hour; the daily reset does not keep it"),
      missing("maxrainrateyesttime", "time of yesterday's highest rain rate; the daily reset does not keep it"),
      missing("maxsolarfortime", "clear-sky solar radiation for this moment; not worked out by this program"),
      temp("maxtemp", high(Q::Temperature), "today's highest outdoor temperature"),
      tempIn("maxtempinmetric", Unit::celsius, high(Q::Temperature), "today's highest outdoor temperature in °C"),
      temp("maxtemplast24hours", windowExtreme(kTemp, S::High, kDay), "highest outdoor temperature of the last 24 hours"),
      text("maxtemplast24hourst", windowExtremeTime(kTemp, S::High, kDay),
           "time of the highest outdoor temperature of the last 24 hours"),
      temp("maxtemplasthour", windowExtreme(kTemp, S::High, kHour), "highest outdoor temperature of the last hour"),
      tempIn("maxtempmetric", Unit::celsius, high(Q::Temperature), "today's highest outdoor temperature in °C"),
      temp("maxtempmtago", pastDayExtreme(kTemp, S::High, Day::monthAgo), "highest outdoor temperature of the day a month ago"),
      bare("maxtempnodp", Unit::temperature, 1, 0, high(Q::Temperature), "today's highest outdoor temperature, whole degrees"),
      temp("maxtempoverday2", daysAgoExtreme(kTemp, S::High, 2), "highest outdoor temperature of the day before yesterday"),
      temp("maxtempoverday3", daysAgoExtreme(kTemp, S::High, 3), "highest outdoor temperature three days ago"),
      text("maxtempt", highTime(Q::Temperature), "time of today's highest outdoor temperature"),
      temp("maxtempweek", weekExtreme(kTemp, S::High), "highest outdoor temperature of the last 7 days"),
      text("maxtempweekday", weekExtremeDay(kTemp, S::High), "weekday of the highest outdoor temperature of the last 7 days"),
      temp("maxtempyest", yest("Daily high temperature", S::High), "yesterday's highest outdoor temperature"),
      bare("maxtempyestnodp", Unit::temperature, 1, 0, yest("Daily high temperature", S::High),
           "yesterday's highest outdoor temperature, whole degrees"),
      text("maxtempyestt", yestTime("Daily high temperature"), "time of yesterday's highest outdoor temperature"),
      temp("maxtempyrago", pastDayExtreme(kTemp, S::High, Day::yearAgo), "highest outdoor temperature of the day a year ago"),
      temp("maxwindchill", high(Q::WindChill), "today's highest wind chill"),
      text("maxwindchillt", highTime(Q::WindChill), "time of today's highest wind chill"),
      speed("maxwindmtago", pastDayExtreme(kWind, S::High, Day::monthAgo), "highest average wind of the day a month ago"),
      speed("maxwindweek", weekExtreme(kWind, S::High), "highest average wind of the last 7 days"),
      text("maxwindweekday", weekExtremeDay(kWind, S::High), "weekday of the highest average wind of the last 7 days"),
      speed("maxwindyrago", pastDayExtreme(kWind, S::High, Day::yearAgo), "highest average wind of the day a year ago"),
      number("minbaroinmetric", Unit::hPa, 1, 1, low(Q::Pressure), "today's lowest barometer in hPa"),
      press("minbaromtago", pastDayExtreme(kBaro, S::Low, Day::monthAgo), "lowest barometer of the day a month ago"),
      press("minbaroweek", weekExtreme(kBaro, S::Low), "lowest barometer of the last 7 days"),
      text("minbaroweekday", weekExtremeDay(kBaro, S::Low), "weekday of the lowest barometer of the last 7 days"),
      press("minbaroyest", yest("Daily low pressure", S::Low), "yesterday's lowest barometer"),
      text("minbaroyestt", yestTime("Daily low pressure"), "time of yesterday's lowest barometer"),
      press("minbaroyrago", pastDayExtreme(kBaro, S::Low, Day::yearAgo), "lowest barometer of the day a year ago"),
      temp("minchillweek", weekExtreme(kChill, S::Low), "lowest wind chill of the last 7 days"),
      text("minchillweekday", weekExtremeDay(kChill, S::Low), "weekday of the lowest wind chill of the last 7 days"),
      temp("minchillyest", yest("Daily low windchill", S::Low), "yesterday's lowest wind chill"),
      text("minchillyestt", yestTime("Daily low windchill"), "time of yesterday's lowest wind chill"),
      temp("mindew", low(Q::DewPoint), "today's lowest dew point"),
      temp("mindewmtago", pastDayExtreme(kDew, S::Low, Day::monthAgo), "lowest dew point of the day a month ago"),
      text("mindewt", lowTime(Q::DewPoint), "time of today's lowest dew point"),
      temp("mindewweek", weekExtreme(kDew, S::Low), "lowest dew point of the last 7 days"),
      text("mindewweekday", weekExtremeDay(kDew, S::Low), "weekday of the lowest dew point of the last 7 days"),
      temp("mindewyest", yest("Daily low dewpoint", S::Low), "yesterday's lowest dew point"),
      text("mindewyestt", yestTime("Daily low dewpoint"), "time of yesterday's lowest dew point"),
      temp("mindewyrago", pastDayExtreme(kDew, S::Low, Day::yearAgo), "lowest dew point of the day a year ago"),
      degrees("mindir10minute", windowExtreme(kDir, S::Low, 10), "smallest wind direction logged in the last 10 minutes, degrees"),
      temp("minheat", low(Q::HeatIndex), "today's lowest heat index"),
      tempIn("minheatinmetric", Unit::celsius, low(Q::HeatIndex), "today's lowest heat index in °C"),
      text("minheatt", lowTime(Q::HeatIndex), "time of today's lowest heat index"),
      temp("minheatweek", weekExtreme(kHeat, S::Low), "lowest heat index of the last 7 days"),
      text("minheatweekday", weekExtremeDay(kHeat, S::Low), "weekday of the lowest heat index of the last 7 days"),
      temp("minheatyest", yest("Daily low heatindex", S::Low), "yesterday's lowest heat index"),
      text("minheatyestt", yestTime("Daily low heatindex"), "time of yesterday's lowest heat index"),
      percent("minhummtago", pastDayExtreme(kHum, S::Low, Day::monthAgo), "lowest humidity of the day a month ago, %"),
      percent("minhumweek", weekExtreme(kHum, S::Low), "lowest humidity of the last 7 days, %"),
      text("minhumweekday", weekExtremeDay(kHum, S::Low), "weekday of the lowest humidity of the last 7 days"),
      percent("minhumyest", yest("Daily low humidity", S::Low), "yesterday's lowest humidity, %"),
      text("minhumyestt", yestTime("Daily low humidity"), "time of yesterday's lowest humidity"),
      percent("minhumyrago", pastDayExtreme(kHum, S::Low, Day::yearAgo), "lowest humidity of the day a year ago, %"),
      percent("minindoorhum", low(Q::IndoorHumidity), "today's lowest indoor humidity, %"),
      temp("minindoortemp", low(Q::IndoorTemp), "today's lowest indoor temperature"),
      tempIn("minindoortempcelsius", Unit::celsius, low(Q::IndoorTemp), "today's lowest indoor temperature in °C"),
      text("minindoortempt", lowTime(Q::IndoorTemp), "time of today's lowest indoor temperature"),
      temp("minindoortempyest", yest("Daily low indoor temp", S::Low), "yesterday's lowest indoor temperature"),
      text("minindoortempyestt", yestTime("Daily low indoor temp"), "time of yesterday's lowest indoor temperature"),
      tempIn("minlowchillinmetric", Unit::celsius, low(Q::WindChill), "today's lowest wind chill in °C"),
      tempIn("minlowdewinmetric", Unit::celsius, low(Q::DewPoint), "today's lowest dew point in °C"),
      temp("mintemp", low(Q::Temperature), "today's lowest outdoor temperature"),
      tempIn("mintempinmetric", Unit::celsius, low(Q::Temperature), "today's lowest outdoor temperature in °C"),
      temp("mintemplast24hours", windowExtreme(kTemp, S::Low, kDay), "lowest outdoor temperature of the last 24 hours"),
      text("mintemplast24hourst", windowExtremeTime(kTemp, S::Low, kDay),
           "time of the lowest outdoor temperature of the last 24 hours"),
      temp("mintemplasthour", windowExtreme(kTemp, S::Low, kHour), "lowest outdoor temperature of the last hour"),
      tempIn("mintempmetric", Unit::celsius, low(Q::Temperature), "today's lowest outdoor temperature in °C"),
      temp("mintempmtago", pastDayExtreme(kTemp, S::Low, Day::monthAgo), "lowest outdoor temperature of the day a month ago"),
      bare("mintempnodp", Unit::temperature, 1, 0, low(Q::Temperature), "today's lowest outdoor temperature, whole degrees"),
      temp("mintempovernight", [](const Ctx& c) { return valueOf(overnightLow(c)); },
           "lowest outdoor temperature of the last night, 21:00 to 9:00"),
      text("mintempovernight2",
           [](const Ctx& c) {
             const auto e = overnightLow(c);
             return e ? TagValue(timeText(c, e->at->minute)) : noData();
           },
           "time of the lowest outdoor temperature of the last night"),
      text("mintempt", lowTime(Q::Temperature), "time of today's lowest outdoor temperature"),
      temp("mintempweek", weekExtreme(kTemp, S::Low), "lowest outdoor temperature of the last 7 days"),
      text("mintempweekday", weekExtremeDay(kTemp, S::Low), "weekday of the lowest outdoor temperature of the last 7 days"),
      temp("mintempyest", yest("Daily low temperature", S::Low), "yesterday's lowest outdoor temperature"),
      bare("mintempyestnodp", Unit::temperature, 1, 0, yest("Daily low temperature", S::Low),
           "yesterday's lowest outdoor temperature, whole degrees"),
      text("mintempyestt", yestTime("Daily low temperature"), "time of yesterday's lowest outdoor temperature"),
      temp("mintempyrago", pastDayExtreme(kTemp, S::Low, Day::yearAgo), "lowest outdoor temperature of the day a year ago"),
      number("minutessincelastrain", Unit::none, 1, 0, minutesSinceRain(),
             "minutes since the last logged minute with rain (looks back a month)"),
      temp("minwindch", low(Q::WindChill), "today's lowest wind chill"),
      text("minwindcht", lowTime(Q::WindChill), "time of today's lowest wind chill"),
      speed("minwindmtago", pastDayExtreme(kWind, S::Low, Day::monthAgo), "lowest average wind of the day a month ago"),
      speed("minwindyrago", pastDayExtreme(kWind, S::Low, Day::yearAgo), "lowest average wind of the day a year ago"),
      number("pressurechange12hourinmb", Unit::mb, 1, 1, change(kBaro, Back::twelveHours), "change of the barometer over 12 hours, mb"),
      number("pressurechange24hourinmb", Unit::mb, 1, 1, change(kBaro, Back::day), "change of the barometer over 24 hours, mb"),
      number("pressurechange3hourinmb", Unit::mb, 1, 1, change(kBaro, Back::threeHours), "change of the barometer over 3 hours, mb"),
      number("pressurechange6hourinmb", Unit::mb, 1, 1, change(kBaro, Back::sixHours), "change of the barometer over 6 hours, mb"),
      number("pressurechangehourinmb", Unit::mb, 1, 1, change(kBaro, Back::hour), "change of the barometer over the last hour, mb"),
      press("pressurechangein12hour", change(kBaro, Back::twelveHours), "change of the barometer over 12 hours"),
      press("pressurechangein24hour", change(kBaro, Back::day), "change of the barometer over 24 hours"),
      press("pressurechangein3hour", change(kBaro, Back::threeHours), "change of the barometer over 3 hours"),
      press("pressurechangein6hour", change(kBaro, Back::sixHours), "change of the barometer over 6 hours"),
      missing("solar24hoursago", "solar radiation 24 hours ago; the minute log keeps no solar radiation"),
      temp("temp0minuteago",
           [](const Ctx& c) {
             const auto& minutes = recentLogs(c).minutes();
             return minutes.empty() ? noData() : TagValue(minutes.back().temperature());
           },
           "outdoor temperature of the latest logged minute"),
      temp("temp24hoursago", ago(kTemp, Back::day), "outdoor temperature 24 hours ago"),
      tempChange("tempchange24hour", change(kTemp, Back::day), "change of the outdoor temperature over the last 24 hours"),
      tempChange("tempchangehour",
                 [](const Ctx& c) {
                   const LoggedMinute* then = recentLogs(c).near(nowMinute(c) - c.now.minute, 0);
                   if (!c.readingsSeen || then == nullptr) return noData();
                   return TagValue(c.live.outtemp - then->temperature());
                 },
                 "change of the outdoor temperature since the start of this clock hour"),
      tempChange("tempchangelasthour", change(kTemp, Back::hour), "change of the outdoor temperature over the last hour"),
      number("tempchangelasthourfaren", Unit::none, 1, 1, tempChangeHourIn(1.8),
             "change of the outdoor temperature over the last hour, °F"),
      number("tempchangelasthourmetric", Unit::none, 1, 1, tempChangeHourIn(1.0),
             "change of the outdoor temperature over the last hour, °C"),
      tempChange("tempchangemonth", change(kTemp, Back::month), "change of the outdoor temperature since the same time a month ago"),
      tempChange("tempchangeyear", change(kTemp, Back::year), "change of the outdoor temperature since the same time a year ago"),
      speedIn("todaygustspeedinkmh", Unit::kmh, high(Q::Gust), "today's highest gust in km/h"),
      speedIn("todaygustspeedinm/s", Unit::metresPerSecond, high(Q::Gust), "today's highest gust in m/s"),
      speedIn("todaygustspeedinmetric", Unit::kmh, high(Q::Gust), "today's highest gust in km/h"),
      temp("todayhihumidex", todayExtreme(kHumidex, S::High), "today's highest humidex (from the minute log)"),
      temp("todaylohumidex", todayExtreme(kHumidex, S::Low), "today's lowest humidex (from the minute log)"),
      temp("todaylowgrass", stored("Daily low grass temp", S::Low),
           "today's lowest grass temperature as stored; no station here reports it yet, so normally ---"),
      speed("todayminspeed", todayExtreme(kWind, S::Low), "today's lowest one-minute average wind (minute log)"),
      text("todayminspeedtime", todayExtremeTime(kWind, S::Low), "time of today's lowest one-minute average wind"),
      rainAmount("todayraininmm", Unit::mm, liveValue(&LiveRecord::dailyrain), "today's rain in mm"),
      rainAmount("totalrainlast24hours", Unit::rain, rainOver(kDay), "rain of the last 24 hours (minute log)"),
      rainAmount("totalrainlast3hours", Unit::rain, rainOver(3 * kHour), "rain of the last 3 hours"),
      rainAmount("totalrainlast6hours", Unit::rain, rainOver(6 * kHour), "rain of the last 6 hours"),
      missing("uv24hoursago", "UV index 24 hours ago; the minute log keeps no UV"),
      speed("wind24hoursago", ago(kWind, Back::day), "average wind 24 hours ago"),
      speed("windchange24hour", change(kWind, Back::day), "change of the average wind over the last 24 hours"),
      speed("windchangemonth", change(kWind, Back::month), "change of the average wind since the same time a month ago"),
      speed("windchangeyear", change(kWind, Back::year), "change of the average wind since the same time a year ago"),
      temp("yesterdayavtemp", yesterdayMean(kTemp), "yesterday's mean outdoor temperature (mean of its logged minutes)"),
      rainAmount("yesterdayrain", Unit::rain, yesterdaysRain(), "yesterday's rain"),
      withDecimalComma(rainAmount("yesterdayrain,", Unit::rain, yesterdaysRain(), "yesterday's rain, with a decimal comma")),
      rainAmount("yesterdayrainmm", Unit::mm, yesterdaysRain(), "yesterday's rain in mm"),
      rainAmount("ystdyrain", Unit::rain, yesterdaysRain(), "yesterday's rain"),
      rainAmount("ystdyrainusa", Unit::inches, yesterdaysRain(), "yesterday's rain in inches"),
  };
}

}  // namespace nimbrel
