#pragma once
// The seventeen fields of a monthly-log line, computed and formatted once so
// that the text log, its daily and ten-minute copies and the CSV logs all
// write the same texts.
//
// Every text carries the padding the monthly log has always had (leading
// blanks, or a leading "0" on temperatures from 0 to 10), because the file is
// read back by splitting on runs of blanks and by eye in columns. The CSV
// writers use the same texts with the blanks trimmed.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "core/live_record.h"
#include "core/unit_choices.h"

namespace nimbrel {

struct LogOptions;

enum class LogColumn : std::size_t {
  day,
  month,
  year,
  hour,
  minute,
  temperature,
  humidity,
  dewpoint,
  barometer,
  windspeed,
  gustspeed,
  direction,
  rainlastmin,
  dailyrain,
  monthlyrain,
  yearlyrain,
  heatindex,
};
inline constexpr std::size_t kLogColumns = 17;
inline constexpr std::size_t kDateColumns = 5;

// Rain the station's counter gained since the previous minute; a drop (the
// counter was reset) or a jump beyond this is taken as no rain.
inline constexpr double kMaxRainPerMinuteMm = 50.0;

struct LogFields {
  std::array<std::string, kLogColumns> text;
  double heatIndexC = 0;  // the heat index computed for the line, before any substitution

  const std::string& operator[](LogColumn column) const { return text[static_cast<std::size_t>(column)]; }
  // "day month year hour minute" with its padding; empty when the time is unset.
  std::string datePrefix() const;
  // All seventeen texts joined by single blanks, without a line end.
  std::string line() const;
  // The texts of columns [first, last] trimmed of blanks and joined by ",".
  std::string csv(LogColumn first = LogColumn::day, LogColumn last = LogColumn::heatindex) const;
};

LogFields makeLogFields(const LiveRecord& record, const ReadingTime& time, const LogOptions& options);

// The texts of the date fields; all empty when the time is unset (no
// day, month or year, or a field out of range), which keeps the line out of
// the logs.
std::array<std::string, kDateColumns> dateTexts(const ReadingTime& time);

// The single-field rules, in internal units; each converts to US units itself.
std::string logTemperatureText(double celsius, UnitSystem units);
std::string logHumidityText(std::uint16_t percent);
std::string logBarometerText(double hPa, UnitSystem units);
std::string logWindText(double knots, UnitSystem units);
std::string logDirectionText(std::uint16_t degrees);
double rainLastMinuteMm(const LiveRecord& record);
std::string logRainLastMinuteText(double mm, UnitSystem units, std::uint16_t stationType);
std::string logRainTotalText(double mm, int width, UnitSystem units);

// Trims leading and trailing blanks.
std::string trimBlanks(const std::string& text);

}  // namespace nimbrel
