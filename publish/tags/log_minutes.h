#pragma once
// The monthly logs read back for every tag that looks into the past: the
// current readings' last hour, today's family (24 hours, a month or a year
// ago, the last hours and days), the climate figures (averages, month- and
// year-to-date, day counts) and the almanac's last rain.
//
// Each data line of a monthly log becomes one LoggedMinute of 32 bytes,
// which gives its fields in the internal units (°C, knots, hPa, mm) whatever
// unit system the logs are written in.
// One `LogMinutes` lives across fills (TagMemory, publish/tags/tag_memory.h):
// a month's log is read when a tag first asks for it; at a later fill the
// file is looked at again (size, time, first and last bytes read) and only
// the lines appended since are read, or the whole file when it was replaced,
// truncated or removed. A few months are kept as minutes; the families keep
// their own summaries of older months (climate days, rain days), renewed
// when a month's `version` changes.

#include <cstdint>
#include <filesystem>
#include <string>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "core/unit_choices.h"
#include "datafiles/log_files.h"
#include "publish/tags/civil_calendar.h"

namespace nimbrel {

struct TagContext;
struct MonthlyLogLine;

// How the logs are written and how the derived fields are worked out.
struct LogReading {
  UnitSystem logUnits = UnitSystem::metric;
  bool chillFromGust = false;
  bool operator==(const LogReading&) const = default;
};

// One data line of a monthly log, kept as the log wrote it: each field a
// whole number of the log's last decimal place (0.1 °C or °F, 0.1 knot or
// mph, 0.1 hPa or 0.001 inHg, 0.1 mm or 0.001 inch, whole percent and
// degrees) and the unit system of the log, so that a month of minutes takes
// a quarter of the memory that doubles would. The accessors give the fields
// in the internal units (°C, knots, hPa, mm) by the same arithmetic as the
// text read as a number: n / 10.0 is the very double the text "n/10" reads
// as, and the unit conversion that follows is unchanged. A field written
// with more decimals than the program writes (a hand-edited line) is kept
// to the nearest step of its column, a value beyond a field's range at its
// end.
class LoggedMinute {
 public:
  std::int32_t minute = 0;  // see civilMinute

  double temperature() const { return celsius(temperature_); }
  double humidity() const { return humidity_; }
  double dewpoint() const { return celsius(dewpoint_); }
  double barometer() const;
  double wind() const { return knots(wind_); }  // the minute's average
  double gust() const { return knots(gust_); }
  double direction() const { return direction_; }  // degrees
  double rain() const { return millimetres(rain_); }  // fallen in that minute
  double heatindex() const { return celsius(heatindex_); }
  // The running totals of rain of the day, month and year.
  double dailyRain() const { return millimetres(dailyRain_); }
  double monthRain() const { return millimetres(monthRain_); }
  double yearRain() const { return millimetres(yearRain_); }
  // Worked out from the logged fields on each call.
  double windchill() const;  // as the live wind chill: from the average or, by the owner's choice, the gust
  double apparent() const;   // apparent temperature in the shade (no sun term: the log keeps no solar)
  double humidex() const;

 private:
  friend std::optional<LoggedMinute> loggedMinute(const MonthlyLogLine& line, const LogReading& reading);

  bool usa() const { return usa_ != 0; }
  double celsius(std::int16_t tenths) const;
  double knots(std::int16_t tenths) const;
  double millimetres(std::int32_t count) const;

  std::int32_t yearRain_ = 0;   // tenths of mm or thousandths of an inch, as are the other rains
  std::int32_t monthRain_ = 0;
  std::int32_t dailyRain_ : 24 = 0;
  std::uint32_t humidity_ : 8 = 0;
  std::int16_t temperature_ = 0;  // tenths of °C or °F, as are the dew point and heat index
  std::int16_t dewpoint_ = 0;
  std::int16_t heatindex_ = 0;
  std::int16_t wind_ = 0;  // tenths of a knot or mph, as is the gust
  std::int16_t gust_ = 0;
  std::int16_t rain_ = 0;
  std::uint16_t barometer_ = 0;  // tenths of hPa or thousandths of inHg
  std::uint16_t direction_ : 14 = 0;
  std::uint16_t usa_ : 1 = 0;           // the log is written in US units
  std::uint16_t chillFromGust_ : 1 = 0;  // the owner's choice for the wind chill
};
static_assert(sizeof(LoggedMinute) == 32);

// Nothing when the line's time lies beyond the minutes a LoggedMinute holds
// (some 4000 years either side of 1970: a damaged line).
std::optional<LoggedMinute> loggedMinute(const MonthlyLogLine& line, const LogReading& reading);

// Apparent temperature of a logged minute (the shade form, see the .cpp).
double apparentTemperature(double celsius, double humidity, double windKnots);

// The minutes of the monthly logs in one folder, read a month at a time.
class LogMinutes {
 public:
  LogMinutes(std::filesystem::path folder, LogReading reading);

  // A new fill: each month's file is looked at again on its first ask.
  void beginFill() { ++fill_; }

  // The data lines of the month's log in the order of the file; none when
  // it is missing or unreadable. The reference stays valid until the next
  // call for another month (at most kMonthsOfMinutes months are kept here;
  // a history gathered from a month keeps its minutes while it lives).
  const std::vector<LoggedMinute>& month(const LogMonth& month);

  // What a summary of a month's minutes needs to know whether it is still
  // good: `version` changes with every change of the month's lines; while
  // `generation` stays, the lines only grew at the end.
  struct Version {
    std::uint64_t generation = 0;
    std::uint64_t version = 0;
    bool operator==(const Version&) const = default;
  };
  // Looks at the file (once per fill) without reading its lines.
  Version version(const LogMonth& month);

  // The month's minutes shared, and whether they are in time order (each
  // minute at or after the one before) and without a minute twice.
  struct Shared {
    std::shared_ptr<const std::vector<LoggedMinute>> minutes;
    bool ordered = true;
    bool strictly = true;
  };
  Shared shared(const LogMonth& month);

  const std::filesystem::path& folder() const { return folder_; }
  const LogReading& reading() const { return reading_; }
  // Months whose minutes are held now (for bounds on memory).
  std::size_t monthsHeld() const;

  // Minutes of several months in time order, kept from one fill to the
  // next (MinuteHistory::gather) and carried on over the lines appended to
  // the last month.
  struct Merged {
    std::vector<int> months;
    bool firstOfRepeats = false;
    std::vector<Version> versions;
    std::size_t lastCount = 0;  // lines of the last month taken
    std::shared_ptr<std::vector<LoggedMinute>> minutes;
  };
  std::vector<Merged>& merged() { return merged_; }

  static constexpr std::size_t kMonthsOfMinutes = 2;

 private:
  struct MonthState {
    bool known = false;          // looked at once at least
    bool exists = false;
    std::uintmax_t size = 0;     // of the file when last looked at
    std::filesystem::file_time_type written{};
    std::uintmax_t consumed = 0; // bytes up to the last whole line read
    std::string head;            // the file's first bytes and the bytes just
    std::string beforeEnd;       // before `consumed`, to tell an append from a rewrite
    Version version;
    bool held = false;           // the minutes below are those of the file
    std::shared_ptr<std::vector<LoggedMinute>> minutes = std::make_shared<std::vector<LoggedMinute>>();
    bool ordered = true;         // see Shared
    bool strictly = true;
    std::uint64_t checkedFill = 0;
    std::uint64_t lastUse = 0;
  };
  MonthState& refreshed(int key, const LogMonth& month);
  void readWhole(MonthState& state, const std::filesystem::path& file);
  bool readAppended(MonthState& state, const std::filesystem::path& file);
  void parse(MonthState& state, const std::string& text, std::uintmax_t start);
  void evictBeyondLimit(int keep);

  std::filesystem::path folder_;
  LogReading reading_;
  std::map<int, MonthState> months_;  // by year * 12 + month - 1
  std::vector<Merged> merged_;
  std::uint64_t fill_ = 1;
  std::uint64_t uses_ = 0;
  std::uint64_t nextVersion_ = 1;
};

// The minutes of the fill's log folder, from the memory that outlives fills.
LogMinutes& logMinutes(const TagContext& context);

// The log month a civil minute's line is written to (9 am day's rule).
LogMonth logMonthOf(long long minute, bool nineAmDay);
// The months whose logs hold the minutes [from, to): the log month of
// either end and every month between.
std::vector<LogMonth> logMonthsCovering(long long from, long long to, bool nineAmDay);

// One field of a logged minute, for the scans below.
using LoggedField = double (LoggedMinute::*)() const;

struct LoggedExtreme {
  double value = 0;
  const LoggedMinute* at = nullptr;  // the first minute that reached it
};

// Some months' minutes in time order.
class MinuteHistory {
 public:
  // A minute logged twice (the clock set back) keeps its first line, or
  // every line.
  enum class Repeats { first, all };

  MinuteHistory() = default;
  // The minutes of `months` in [from, to].
  static MinuteHistory gather(LogMinutes& logs, std::span<const LogMonth> months, Repeats repeats,
                              long long from = std::numeric_limits<long long>::min(),
                              long long to = std::numeric_limits<long long>::max());

  std::span<const LoggedMinute> minutes() const { return view_; }

  // The logged minute nearest to `minute`, no further than `tolerance`
  // minutes away.
  const LoggedMinute* near(long long minute, int tolerance) const;
  // The last line at `minute` or before.
  const LoggedMinute* latestUpTo(long long minute) const;
  // The minutes in [from, to).
  std::span<const LoggedMinute> between(long long from, long long to) const;

 private:
  std::shared_ptr<const std::vector<LoggedMinute>> all_;  // the minutes the view lies in
  std::span<const LoggedMinute> view_;
};

// Highest and lowest of a field over some minutes; nothing when there are none.
std::optional<LoggedExtreme> highest(std::span<const LoggedMinute> minutes, LoggedField field);
std::optional<LoggedExtreme> lowest(std::span<const LoggedMinute> minutes, LoggedField field);
// The rain of some minutes.
double rainOf(std::span<const LoggedMinute> minutes);

}  // namespace nimbrel
