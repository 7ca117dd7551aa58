#pragma once
// How one record is written in its section of the main settings.
//
// Key "values" (and "old values" for the record it replaced) holds seven
// fields separated by single blanks:
//   1  the value in tenths of the internal unit as a whole number
//      (35.7 °C -> "357", -12.34 °C -> "-123", 1013.2 hPa -> "10132")
//   2  year   3  month   4  day   5  hour   6  minute
//   7  empty: the text ends with a blank after the minute
// for example "357 2024 7 3 14 5 ". The value is rounded as C's "%1.0f"
// rounds: to the nearest whole number, a half exactly representable in
// binary to the even neighbour (2.5 -> "2", 3.5 -> "4"), and a small
// negative value keeps its sign ("-0").
//
// Reading splits at blanks (runs of blanks count as one), divides the first
// field by 10 and takes the date and time from the next five; fields after
// the minute are ignored. Anything else is "no record".

#include <optional>
#include <string>
#include <string_view>

#include "core/clock.h"

namespace nimbrel {

struct RecordTime {
  int year = 0;
  int month = 0;  // 1-12
  int day = 0;    // 1-31
  int hour = 0;   // 0-23
  int minute = 0;  // 0-59

  static RecordTime of(const LocalTime& t) { return {t.year, t.month, t.day, t.hour, t.minute}; }
  bool sameDay(const RecordTime& other) const {
    return year == other.year && month == other.month && day == other.day;
  }
  friend bool operator==(const RecordTime&, const RecordTime&) = default;
};

struct RecordValue {
  double value = 0;  // internal unit, at the resolution it is stored with (tenths)
  RecordTime when;
  friend bool operator==(const RecordValue&, const RecordValue&) = default;
};

// `value` x 10 as a whole number, rounded as "%1.0f" rounds.
std::string tenthsText(double value);
// The value that tenthsText keeps: a record read back compares as it was
// compared before it was written.
double roundedToTenths(double value);
// Whole degrees ("%1.0f").
std::string directionText(double degrees);

std::string recordValueText(const RecordValue& record);
std::optional<RecordValue> parseRecordValue(std::string_view text);

}  // namespace nimbrel
