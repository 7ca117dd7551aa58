// All-time, month and year records.
//
// Most tags name one row of the record book (processing/records/records.h)
// in one of its three sets: "recordhightemp" is the all-time highest
// outdoor temperature, "mrecordhightemp" this month's, "yrecordhightemp"
// this year's, and a suffix asks for a part of the record's date
// ("recordhightempyear"). The families below are listed once and the rows
// of the three sets are made from them in a loop.
//
// Rows the program does not follow yet are still loaded from the main
// settings, so their tags give the record as stored there and never change
// it; a record the book has no row for gives "---". The monthly
// temperature records by calendar month come from their own settings
// section (monthly_temperature_records.h).

#include <fmt/format.h>

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/number_format.h"
#include "processing/records/record_book.h"
#include "publish/tags/civil_calendar.h"
#include "publish/tags/tag_rows.h"
#include "publish/tags/tag_tables.h"
#include "publish/tags/unit_conversion.h"

namespace nimbrel {

using namespace tagrows;

namespace {

// What a tag takes from a record.
enum class Part { value, day, month, year, hour, minute };

struct Form {
  std::string_view suffix;
  Part part;
};

// The families spell the parts of the date in several ways.
constexpr std::array<Form, 4> kDayMonthYear{{{"", Part::value}, {"day", Part::day}, {"month", Part::month},
                                             {"year", Part::year}}};
constexpr std::array<Form, 3> kDatesOnly{{{"day", Part::day}, {"month", Part::month}, {"year", Part::year}}};
constexpr std::array<Form, 6> kWithTime{{{"", Part::value}, {"day", Part::day}, {"hour", Part::hour},
                                         {"min", Part::minute}, {"month", Part::month}, {"year", Part::year}}};
constexpr std::array<Form, 5> kWithHour{{{"", Part::value}, {"day", Part::day}, {"hour", Part::hour},
                                         {"month", Part::month}, {"year", Part::year}}};
constexpr std::array<Form, 6> kChill{{{"", Part::value}, {"day", Part::day}, {"hour", Part::hour},
                                      {"minute", Part::minute}, {"month", Part::month}, {"year", Part::year}}};
constexpr std::array<Form, 6> kShort{{{"", Part::value}, {"day", Part::day}, {"hr", Part::hour},
                                      {"min", Part::minute}, {"mth", Part::month}, {"yr", Part::year}}};
constexpr std::array<Form, 4> kDayShort{{{"", Part::value}, {"day", Part::day}, {"mth", Part::month},
                                         {"yr", Part::year}}};
constexpr std::array<Form, 3> kMonthShort{{{"", Part::value}, {"mth", Part::month}, {"yr", Part::year}}};
constexpr std::array<Form, 3> kDayMonth{{{"", Part::value}, {"day", Part::day}, {"month", Part::month}}};
constexpr std::array<Form, 1> kValueOnly{{{"", Part::value}}};

// How a record's number is shown.
enum class Shown {
  plain,          // in the family's unit
  perMinute,      // a rate in mm per hour shown per minute, without a symbol
  windRunLength,  // nautical miles shown as the distance of the owner's wind unit
};

struct Family {
  std::string_view tag;  // the all-time name without a suffix
  std::string_view row;  // the record book's row; empty: no such record is kept
  Unit unit;
  int decimals;
  std::span<const Form> forms;
  std::string_view what;  // "highest outdoor temperature"
  Shown shown = Shown::plain;
};

constexpr auto temp = Unit::temperature;
constexpr auto none = Unit::none;

// clang-format off
constexpr auto kFamilies = std::to_array<Family>({
    {"coldestdayonrecord", "Record cold day", temp, 1, kValueOnly, "coldest day's temperature"},
    {"coldestnightonrecord", "Record cold night", temp, 1, kValueOnly, "coldest night's temperature"},
    {"warmestdayonrecord", "Record hot day", temp, 1, kValueOnly, "warmest day's temperature"},
    {"warmestnightonrecord", "Record warm night", temp, 1, kValueOnly, "warmest night's temperature"},
    {"hrrecordrainrate", "Record rain last hour", Unit::rain, 1, kWithTime, "most rain in one hour"},
    {"recorddailyrain", "Record daily rain", Unit::rain, 1, kDayMonthYear, "most rain in one day"},
    {"recorddaysnorain", "Record days no rain", none, 0, kDayMonth, "longest run of days without rain"},
    {"recorddayswithrain", "Record days with rain", none, 0, kDayMonth, "longest run of days with rain"},
    {"recordwindspeed", "Record high average", Unit::speed, 1, kValueOnly, "highest average wind speed"},
    {"recordhighavwind", "Record high average", Unit::speed, 1, kDatesOnly, "highest average wind speed"},
    {"recordwindgust", "Record high gust", Unit::speed, 1, kValueOnly, "highest wind gust"},
    {"recordhighgust", "Record high gust", Unit::speed, 1, kDatesOnly, "highest wind gust"},
    {"recordhighbaro", "Record high barometer", Unit::pressure, 1, kDayMonthYear, "highest pressure"},
    {"recordlowbaro", "Record low barometer", Unit::pressure, 1, kDayMonthYear, "lowest pressure"},
    {"recordhighdew", "Record high dew", temp, 1, kDayMonthYear, "highest dew point"},
    {"recordlowdew", "Record low dew", temp, 1, kDayMonthYear, "lowest dew point"},
    {"recordhighextratemp1", "Record hi extra temp1", temp, 1, kShort, "highest extra temperature 1"},
    {"recordhighextratemp2", "Record hi extra temp2", temp, 1, kShort, "highest extra temperature 2"},
    {"recordhighextratemp3", "Record hi extra temp3", temp, 1, kShort, "highest extra temperature 3"},
    {"recordhighextratemp4", "Record hi extra temp4", temp, 1, kShort, "highest extra temperature 4"},
    {"recordlowextratemp1", "Record lo extra temp1", temp, 1, kShort, "lowest extra temperature 1"},
    {"recordlowextratemp2", "Record lo extra temp2", temp, 1, kShort, "lowest extra temperature 2"},
    {"recordlowextratemp3", "Record lo extra temp3", temp, 1, kShort, "lowest extra temperature 3"},
    {"recordlowextratemp4", "Record lo extra temp4", temp, 1, kShort, "lowest extra temperature 4"},
    {"recordhighheatindex", "Record high heat index", temp, 1, kDayMonthYear, "highest heat index"},
    {"recordhighhum", "Record high hum", none, 0, kDayMonthYear, "highest outdoor humidity"},
    {"recordlowhum", "Record low hum", none, 0, kDayMonthYear, "lowest outdoor humidity"},
    {"recordhighleaf", "Record high leaf", none, 0, kDayMonthYear, "highest leaf wetness"},
    {"recordhighrain30min", "", Unit::rain, 1, kWithHour, "most rain in 30 minutes"},
    {"recordhighrainmth", "Record monthrain", Unit::rain, 1, kMonthShort, "most rain in one month"},
    {"recordhighsoil", "Record high soil", temp, 1, kDayMonthYear, "highest soil temperature"},
    {"recordlowsoil", "Record low soil", temp, 1, kDayMonthYear, "lowest soil temperature"},
    {"recordhighsoilmoist", "Record high soil moist", none, 0, kDayMonthYear, "highest soil moisture"},
    {"recordhighsolar", "Record high solar", none, 0, kDayMonthYear, "highest solar radiation"},
    {"recordhightemp", "Record high temperature", temp, 1, kDayMonthYear, "highest outdoor temperature"},
    {"recordlowtemp", "Record low temperature", temp, 1, kDayMonthYear, "lowest outdoor temperature"},
    {"recordhighthsw", "Record high thsw", temp, 1, kDayMonthYear, "highest THSW index"},
    {"recordlowthsw", "Record low thsw", temp, 1, kDayMonthYear, "lowest THSW index"},
    {"recordhighuv", "Record high uv", none, 1, kDayMonthYear, "highest UV index"},
    {"recordhighwindrun", "Record windrun", none, 1, kDayShort, "longest daily wind run", Shown::windRunLength},
    {"recordlowchill", "Record low windchill", temp, 1, kChill, "lowest wind chill"},
    {"recordlowgrass", "Record low grass", temp, 1, kDayMonthYear, "lowest grass temperature"},
    {"recordrainrate", "Record high rain rate", Unit::rain, 2, kWithTime, "highest rain rate",
     Shown::perMinute},
    {"recordrainrateperhr", "Record high rain rate", Unit::rainRate, 1, kValueOnly,
     "highest rain rate per hour"},
});
// clang-format on

// Whether the program updates the row's record from the readings; a row it
// does not follow only holds what the settings keep.
bool followed(std::string_view row) {
  for (const RecordRow& r : recordRows())
    if (r.name == row) return isFollowed(r);
  return false;
}

std::string_view prefixOf(RecordSet set) {
  switch (set) {
    case RecordSet::AllTime: return "";
    case RecordSet::ThisMonth: return "m";
    case RecordSet::ThisYear: return "y";
  }
  return "";
}

std::string_view periodOf(RecordSet set) {
  switch (set) {
    case RecordSet::AllTime: return "on record";
    case RecordSet::ThisMonth: return "this month";
    case RecordSet::ThisYear: return "this year";
  }
  return "";
}

std::string_view partWords(Part part) {
  switch (part) {
    case Part::day: return "day of the month";
    case Part::month: return "month (1-12)";
    case Part::year: return "year";
    case Part::hour: return "hour (0-23)";
    case Part::minute: return "minute (two digits)";
    case Part::value: break;
  }
  return "";
}

const std::optional<RecordValue>& recordOf(const TagContext& c, RecordSet set, std::string_view row) {
  return c.stats.records().held(set, row).present;
}

std::string datePart(const RecordTime& when, Part part) {
  switch (part) {
    case Part::day: return fmt::format("{}", when.day);
    case Part::month: return fmt::format("{}", when.month);
    case Part::year: return fmt::format("{}", when.year);
    case Part::hour: return fmt::format("{}", when.hour);
    case Part::minute: return fmt::format("{:02}", when.minute);
    case Part::value: break;
  }
  return {};
}

// A distance in nautical miles in the distance that goes with the owner's
// wind unit: nautical miles for knots, miles for mph, kilometres otherwise.
double windRunShown(double nauticalMiles, const UnitChoicesSettings& units) {
  switch (units.webWindShown()) {
    case WindUnit::knots: return nauticalMiles;
    case WindUnit::mph: return nauticalMiles * kMphPerKnot;
    default: return nauticalMiles * kKmhPerKnot;
  }
}

constexpr double kMinutesPerHour = 60;

TagSource valueSource(RecordSet set, std::string_view row, Shown shown) {
  return [set, row, shown](const TagContext& c) -> TagValue {
    const std::optional<RecordValue>& record = recordOf(c, set, row);
    if (!record) return noData();
    switch (shown) {
      case Shown::perMinute: return record->value / kMinutesPerHour;
      case Shown::windRunLength: return windRunShown(record->value, c.units.units);
      case Shown::plain: break;
    }
    return record->value;
  };
}

TagSource dateSource(RecordSet set, std::string_view row, Part part) {
  return [set, row, part](const TagContext& c) -> TagValue {
    const std::optional<RecordValue>& record = recordOf(c, set, row);
    if (!record) return noData();
    return datePart(record->when, part);
  };
}

std::string givesOf(const Family& f, RecordSet set, Part part) {
  std::string gives = part == Part::value ? fmt::format("{} {}", f.what, periodOf(set))
                                          : fmt::format("{} of the {} {}", partWords(part), f.what, periodOf(set));
  if (f.shown == Shown::perMinute && part == Part::value) gives += ", per minute, in the rain unit without a symbol";
  if (f.shown == Shown::windRunLength && part == Part::value)
    gives += ", in nautical miles, miles or km as the wind unit goes";
  if (f.row.empty()) return gives + "; \"---\": the program keeps no such record";
  if (!followed(f.row)) gives += "; the record as stored in the settings, not updated by this program";
  return gives;
}

TagDef rowOf(const Family& f, RecordSet set, const Form& form) {
  std::string name = fmt::format("{}{}{}", prefixOf(set), f.tag, form.suffix);
  std::string gives = givesOf(f, set, form.part);
  if (f.row.empty()) return missing(std::move(name), std::move(gives));
  if (form.part != Part::value) return text(std::move(name), dateSource(set, f.row, form.part), std::move(gives));
  if (f.shown == Shown::perMinute)
    return bare(std::move(name), f.unit, 1, f.decimals, valueSource(set, f.row, f.shown), std::move(gives));
  return number(std::move(name), f.unit, 1, f.decimals, valueSource(set, f.row, f.shown), std::move(gives));
}

// The all-time records of the day-based temperatures and the two counts of
// days have more date forms than their month and year sets.
TagDef allTimeValue(std::string name, std::string_view row, std::string gives) {
  if (!followed(row)) gives += "; the record as stored in the settings, not updated by this program";
  return number(std::move(name), temp, 1, 1, valueSource(RecordSet::AllTime, row, Shown::plain), std::move(gives));
}
TagDef allTimeDate(std::string name, std::string_view row, Part part, std::string_view what) {
  std::string gives = fmt::format("{} of the {} on record", partWords(part), what);
  if (!followed(row)) gives += "; the record as stored in the settings, not updated by this program";
  return text(std::move(name), dateSource(RecordSet::AllTime, row, part), std::move(gives));
}

// The highest and lowest temperature of each calendar month, from
// "Record monthly high temp" / "Record monthly low temp".
std::string_view monthlySection(Side side) {
  return side == Side::High ? "Record monthly high temp" : "Record monthly low temp";
}

// `month` 1-12, or 0 for the month of the fill.
std::string_view monthKey(const TagContext& c, int month) {
  const int m = month == 0 ? c.now.month : month;
  if (m < 1 || m > 12) return {};
  return kMonthKeys[static_cast<std::size_t>(m - 1)];
}

TagSource monthlyValue(Side side, int month) {
  return [side, month](const TagContext& c) -> TagValue {
    const std::string_view key = monthKey(c, month);
    double celsius = 0;
    if (key.empty() || !parseDouble(c.settings.ReadString(monthlySection(side), key), celsius)) return noData();
    return celsius;
  };
}

// `field` "year" or "day": the whole number stored beside the month's record.
TagSource monthlyDate(Side side, int month, std::string_view field) {
  return [side, month, field](const TagContext& c) -> TagValue {
    const std::string_view key = monthKey(c, month);
    long long number = 0;
    if (key.empty() || !parseInt(c.settings.ReadString(monthlySection(side), fmt::format("{} {}", key, field)), number))
      return noData();
    return fmt::format("{}", number);
  };
}

void addMonthlyTemperatures(std::vector<TagDef>& rows, Side side) {
  const std::string_view word = side == Side::High ? "high" : "low";
  const std::string_view what = side == Side::High ? "highest" : "lowest";
  for (int m = 1; m <= 12; ++m) {
    const auto i = static_cast<std::size_t>(m - 1);
    const std::string name = fmt::format("record{}temp{}", word, kMonthKeys[i]);
    rows.push_back(number(name, temp, 1, 1, monthlyValue(side, m),
                          fmt::format("{} outdoor temperature of any {} on record", what, kMonthNames[i])));
    rows.push_back(text(name + "y", monthlyDate(side, m, "year"),
                        fmt::format("year of the {} outdoor temperature of any {} on record", what, kMonthNames[i])));
  }
  const std::string current = fmt::format("record{}tempcurrentmonth", word);
  rows.push_back(number(current, temp, 1, 1, monthlyValue(side, 0),
                        fmt::format("{} outdoor temperature of the present calendar month on record", what)));
  rows.push_back(text(current + "day", monthlyDate(side, 0, "day"),
                      fmt::format("day of the month of the {} temperature of the present calendar month on record",
                                  what)));
  rows.push_back(text(current + "year", monthlyDate(side, 0, "year"),
                      fmt::format("year of the {} temperature of the present calendar month on record", what)));
}

}  // namespace

std::vector<TagDef> recordTags() {
  std::vector<TagDef> rows;
  for (RecordSet set : kAllRecordSets)
    for (const Family& f : kFamilies)
      for (const Form& form : f.forms)
        rows.push_back(rowOf(f, set, form));

  // All-time records only.
  rows.push_back(allTimeDate("recorddaysnorainyear", "Record days no rain", Part::year,
                             "longest run of days without rain"));
  rows.push_back(allTimeDate("recorddayswithrainyear", "Record days with rain", Part::year,
                             "longest run of days with rain"));
  // The highest daily maximum is the hot day's record.
  constexpr std::string_view hotDay = "Record hot day";
  rows.push_back(allTimeDate("recordhighmaxdailytempday", hotDay, Part::day, "highest daily maximum temperature"));
  rows.push_back(allTimeDate("recordhighmaxdailytempmth", hotDay, Part::month, "highest daily maximum temperature"));
  rows.push_back(allTimeDate("recordhighmaxdailytempyrr", hotDay, Part::year, "highest daily maximum temperature"));
  constexpr std::string_view highMin = "Record highest minimum daily";
  rows.push_back(allTimeValue("recordhighmindailytemp", highMin, "highest daily minimum temperature on record"));
  rows.push_back(allTimeDate("recordhighmindailytempday", highMin, Part::day, "highest daily minimum temperature"));
  rows.push_back(allTimeDate("recordhighmindailytempmth", highMin, Part::month, "highest daily minimum temperature"));
  rows.push_back(allTimeDate("recordhighmindailytempyrr", highMin, Part::year, "highest daily minimum temperature"));
  constexpr std::string_view lowMax = "Record lowest maximum daily";
  rows.push_back(allTimeValue("recordlowmaxdailytemp", lowMax, "lowest daily maximum temperature on record"));
  rows.push_back(allTimeDate("recordlowmaxdailytempday", lowMax, Part::day, "lowest daily maximum temperature"));
  rows.push_back(allTimeDate("recordlowmaxdailytempmth", lowMax, Part::month, "lowest daily maximum temperature"));
  rows.push_back(allTimeDate("recordlowmaxdailytempyrr", lowMax, Part::year, "lowest daily maximum temperature"));

  addMonthlyTemperatures(rows, Side::High);
  addMonthlyTemperatures(rows, Side::Low);

  rows.push_back(missing("recordrainyear", "most rain in one rain season on record; the program keeps no yearly "
                                           "rain record"));
  rows.push_back(missing("recordrainyearyear", "year of the most rain in one rain season on record; the program "
                                               "keeps no yearly rain record"));
  rows.push_back(missing("recordsnowyear", "most snow in one season on record; the station measures no snow"));
  rows.push_back(missing("recordsnowyearseason", "season of the most snow on record; the station measures no snow"));
  rows.push_back(missing("WUmaxtemp", "normal high temperature for today from Weather Underground's almanac; "
                                      "not fetched by this program"));
  rows.push_back(missing("WUmaxtempr", "record high temperature for today from Weather Underground's almanac; "
                                       "not fetched by this program"));
  rows.push_back(missing("WUmaxtempryr", "year of today's record high from Weather Underground's almanac; "
                                         "not fetched by this program"));
  rows.push_back(missing("WUmintemp", "normal low temperature for today from Weather Underground's almanac; "
                                      "not fetched by this program"));
  rows.push_back(missing("WUmintempr", "record low temperature for today from Weather Underground's almanac; "
                                       "not fetched by this program"));
  rows.push_back(missing("WUmintempryr", "year of today's record low from Weather Underground's almanac; "
                                         "not fetched by this program"));
  return rows;
}

}  // namespace nimbrel
