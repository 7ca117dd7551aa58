#pragma once
// The comma-separated copies of the monthly log, for spreadsheets and for
// upload. All live in the logs folder; each is created with its header.
//
//   month + year + "lgcsv.csv"     every call
//   month + year + "lgcsv10.csv"   minutes 0, 10, 20, 30, 40, 50
//   month + year + "lgcsv30.csv"   minutes 0 and 30
//   month + year + "lgcsv60.csv"   minute 0
//   "dailylogcsv.csv"              every call, with the rain of the last hour
//   "indoorlogcsv.csv"             every call, indoor temperature and humidity
//                                  (dew point and heat index computed from
//                                  them), with the rain of the last hour
//   month + year + "vantagelogcsv.csv", "growlogcsv.csv"
//                                  every call when the station logs solar and
//                                  soil channels
//
// Fields are the monthly log's texts with their padding blanks trimmed
// (same decimals, same leading "0" on temperatures from 0 to 10), so a
// spreadsheet reads plain numbers and both logs agree digit for digit. The
// monthly files follow the monthly log's 9 am rule.
//
// The new month's "lgcsv.csv" is created at 00:01 on day 1, or with the
// 9 am day at the first call from 10:00 on day 1. At 23:50, when section
// "DDE send", key "ftp log monthly" is "yes", month + year + "lgcsv10.csv" is
// copied over month + year + "lgcsv10ftp.csv" and the copy is queued for
// upload.

#include "core/live_record.h"

namespace nimbrel {

class SettingsStore;
struct LogCall;
struct LogOptions;
struct LogSinks;

struct CsvLogStores {
  const SettingsStore& mainSettings;
  SettingsStore& uploadStore;  // its sections "Files" and "Remote Files" are the upload queue
};

struct CsvLogResult {
  bool written = false;   // the month's "lgcsv.csv" received the line
  bool doupload = false;  // the ten-minute copy was queued: the upload scheduler should run
};

CsvLogResult logfilecsv(const LiveRecord& record, const LogCall& call, const LogOptions& options,
                        bool solarSoilLogging, CsvLogStores stores, LogSinks& sinks);

}  // namespace nimbrel
