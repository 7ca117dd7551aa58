#pragma once
// The station's records: which ones exist, in the order they are written to
// the main settings, and where each one's readings come from.
//
// Every record is kept three times, in three sets of sections:
//   set 1  all-time     "Record high temperature"
//   set 2  this month   "Record high temperature2"   (started afresh at each month end)
//   set 3  this year    "Record high temperature3"   (started afresh at each year end)
// A name that ends in a digit takes a blank before the set number, so that
// the two numbers stay apart ("Record hi extra temp1 2"); so do the two
// counts of days written among the extra temperatures ("Record days no
// rain 2", "Record days with rain 3"), as the settings file spells them.
//
// Rows without a reading source ("not followed yet") stay in the table so
// that the order of the sections and the names stay complete; their stored
// entries are never changed by this program. A row gains a source when the
// live record or the statistics can say reliably what it holds (extra and
// secondary soil channels cannot yet tell a missing sensor from 0 °C, wind
// run, grass temperature and the day-based records need their own totals).

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "core/live_record.h"
#include "processing/statistics/daily_extremes_table.h"

namespace nimbrel {

// Keys of a record's section.
inline constexpr std::string_view kRecordValuesKey = "values";
inline constexpr std::string_view kRecordOldValuesKey = "old values";  // the record it replaced
inline constexpr std::string_view kRecordDirectionKey = "direction";   // wind records only

enum class RecordSet { AllTime, ThisMonth, ThisYear };
inline constexpr std::size_t kRecordSets = 3;
inline constexpr std::array<RecordSet, kRecordSets> kAllRecordSets{RecordSet::AllTime, RecordSet::ThisMonth,
                                                                  RecordSet::ThisYear};

// The absolute limits ("New readings limits") a stored record must lie within
// to be believed when it is read at start.
enum class RecordBound {
  None,                // no limit: rain, sun
  Temperature,         // "min temp" to "max temp"
  DerivedTemperature,  // the same widened: wind chill, dew point, heat index
  Humidity,            // "min hum" to "max hum"
  Barometer,           // "min baro" to "max baro"
  Wind,                // 0 to "max speed"
};

struct RecordRow {
  std::string_view name;  // the all-time section name
  Side side;
  double (*reading)(const LiveRecord&);  // nullptr: not followed yet
  // A zero reading is ignored: it is what the record holds for a sensor the
  // station does not have (humidity, pressure), or a high that tells nothing
  // (no rain, no sun, calm).
  bool zeroIsNoReading = false;
  bool keepsDirection = false;  // gust and average wind also keep the wind direction
  bool averageWind = false;     // takes the 10-minute average when the day's highest average does
  bool blankBeforeSet = false;  // sets 2 and 3 are named "<name> 2", "<name> 3"
  RecordBound bound = RecordBound::None;
};

// Every record, in the order of the sections in the settings file.
std::span<const RecordRow> recordRows();

// The section of `row` in `set`.
std::string recordSectionName(const RecordRow& row, RecordSet set);

inline bool isFollowed(const RecordRow& row) { return row.reading != nullptr; }

}  // namespace nimbrel
