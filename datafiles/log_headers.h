#pragma once
// The header lines of the log files, without their CR LF. Other programs and
// the users' spreadsheets look for these exact texts, so their irregular
// blanks and spellings stay as they are.

#include <string_view>

namespace nimbrel {

// month + year + "lg.txt"
inline constexpr std::string_view kMonthlyLogHeader =
    "day month year hour minute temperature   humidity     dewpoint   barometer  windspeed  gustspeed direction   rainlastmin    dailyrain  monthlyrain   yearlyrain  heatindex";
// month + year + "lg2.txt": soil, temperature and snow extremes
inline constexpr std::string_view kSoilLogHeader =
    "High soil Low soil High temp Low temp Snow depth";
// month + year + "lgsun.txt": sunshine hours and evapotranspiration
inline constexpr std::string_view kSunLogHeader =
    "Sun shine hours  ET";
// "extralog.csv": the nine extra temperature/humidity channels
inline constexpr std::string_view kExtraLogHeader =
    "day, month, year, hour, minute, temp1, hum1, temp2, hum2, temp3, hum3, temp4, hum4, temp5, hum5, temp6, hum6, temp7, hum7, temp8, hum8, temp9, hum9";
// "vantageextrasensorslog.csv": the console's seven extra channels
inline constexpr std::string_view kVantageExtraSensorsHeader =
    "day,month,year,hour,minute,temp1,temp2,temp3,temp4,temp5,temp6,temp7,hum1,hum2,hum3,hum4,hum5,hum6,hum7";
// "1wirelog.txt"
inline constexpr std::string_view kOneWireLogHeader =
    "day,month,year,hour,minute,temp1,temp2,temp3,temp4,temp5,temp6,temp7,temp8,temp9,temphum1,temphum2,temphum3,temphum4,hum1,hum2,hum3,hum4";
// "vantagelog.txt" (and "vantagelogten.txt")
inline constexpr std::string_view kVantageLogHeader =
    "day month year hour minute, Solar radation , UV,  Daily ET, soil moist,  soil temp";
// "growlog.txt" (and "growlogten.txt", "growtendailylog.txt")
inline constexpr std::string_view kGrowLogHeader =
    "day month year hour minute Solar radation   Total wind run  Total solar energy ";
// "dailylog.txt"; also the ten-minute logs, whose header differs from the
// monthly log's only in its runs of blanks
inline constexpr std::string_view kDailyLogHeader =
    "day month year hour minute temperature   humidity     dewpoint   barometer    windspeed    gustspeed direction   rainlastmin    dailyrain  monthlyrain    yearlyrain   heatindex";
// "indoorlog.txt"
inline constexpr std::string_view kIndoorLogHeader =
    "day month year hour minute temperature   humidity";
// month + year + "lgcsv.csv", "lgcsv10.csv", "lgcsv30.csv", "lgcsv60.csv"
inline constexpr std::string_view kCsvLogHeader =
    "day, month, year, hour, minute, temperature,   humidity, dewpoint ,  barometer,  windspeed ,  gustspeed ,direction , rainlastmin, dailyrain,  monthlyrain,   yearlyrain,  heatindex";
// "dailylogcsv.csv"
inline constexpr std::string_view kDailyCsvHeader =
    "day, month, year, hour, minute, temperature,   humidity, dewpoint ,  barometer,  windspeed ,  gustspeed ,direction , rainlastmin, dailyrain,  monthlyrain,   yearlyrain,  heatindex, rain last hour";
// "indoorlogcsv.csv"
inline constexpr std::string_view kIndoorCsvHeader =
    "day, month, year, hour, minute, temperature,   humidity, dewpoint ,  barometer,  windspeed ,  gustspeed ,direction , rainlastmin, dailyrain,  monthlyrain,   yearlyrain,  heatindex, rainlasthour";
// month + year + "vantagelogcsv.csv"
inline constexpr std::string_view kVantageCsvHeader =
    "day ,month, year, hour, min, Solar ,radiat.,  UV , Daily ET,  soil moist , leaf wet ";
// month + year + "growlogcsv.csv"
inline constexpr std::string_view kGrowCsvHeader =
    "day ,month, year ,hour, min ,Solar radation  , Totl wind run , Totl solar engy , ET , Total Degree Days";

}  // namespace nimbrel
