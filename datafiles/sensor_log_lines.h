#pragma once
// The lines of the logs written beside the monthly log: the soil and sun
// companions, the extra-sensor logs, the solar/soil station logs and the
// indoor log. Every line starts with the time of the monthly-log line (its
// blank-separated prefix in the text logs, its trimmed date fields in the
// comma-separated ones) followed by the values its header names, in the log
// units (US: Fahrenheit, inches, miles).
//
// Value formats: temperatures one decimal; humidities, solar radiation, soil
// moisture and leaf wetness as integers; UV, wind run, solar energy, snow
// depth and degree days one decimal; sunshine hours two decimals;
// evapotranspiration two decimals in mm, three in inches.
//
// The "1wirelog.txt" columns temphum1-4 hold the temperatures of the first
// four humidity channels (the record keeps each extra humidity channel
// paired with the extra temperature of the same number).

#include <string>

#include "core/live_record.h"

namespace nimbrel {

struct LogDayValues;
struct LogFields;
struct LogOptions;

// Month + year + "lg2.txt": high and low soil temperature, high and low
// outdoor temperature of the day, snow depth (in the unit the owner entered).
std::string soilLogLine(const LogFields& fields, const LogDayValues& day, const LiveRecord& record,
                        const LogOptions& options);
// Month + year + "lgsun.txt": sunshine hours today, evapotranspiration today.
std::string sunLogLine(const LogFields& fields, const LogDayValues& day, const LiveRecord& record,
                       const LogOptions& options);

std::string extraLogLine(const LogFields& fields, const LiveRecord& record, const LogOptions& options);
std::string vantageExtraSensorsLine(const LogFields& fields, const LiveRecord& record,
                                    const LogOptions& options);
std::string oneWireLogLine(const LogFields& fields, const LiveRecord& record, const LogOptions& options);

// "vantagelog.txt": solar radiation, UV, daily ET, soil moisture, soil temperature.
std::string vantageLogLine(const LogFields& fields, const LiveRecord& record, const LogOptions& options);
// "growlog.txt": solar radiation, wind run today, solar energy today.
std::string growLogLine(const LogFields& fields, const LogDayValues& day, const LiveRecord& record,
                        const LogOptions& options);
// "indoorlog.txt": indoor temperature and humidity, padded as the monthly log.
std::string indoorLogLine(const LogFields& fields, const LiveRecord& record, const LogOptions& options);

// Month + year + "vantagelogcsv.csv": solar radiation, UV, daily ET, soil
// moisture and leaf wetness of the first channel.
std::string vantageCsvLine(const LogFields& fields, const LiveRecord& record, const LogOptions& options);
// Month + year + "growlogcsv.csv": solar radiation, wind run, solar energy,
// daily ET, degree days.
std::string growCsvLine(const LogFields& fields, const LogDayValues& day, const LiveRecord& record,
                        const LogOptions& options);

}  // namespace nimbrel
