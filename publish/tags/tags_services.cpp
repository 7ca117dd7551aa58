// Forecasts, METAR, lightning, snow, fire index, tides, energy, the program.
//
// What has a value: the program's version and build, the unit names for the
// headers of the climate (NOAA) reports, the memory and the computer's
// uptime, the station's name. Forecast texts wait for a forecast-text module
// (the Vantage forecast icon in the live record only ever marks rain, so it
// says nothing plain about the forecast). The rest come from services or
// sensors the program does not have yet; their rows say what they would give.

#include <string>
#include <utility>

#include "core/version.h"
#include "publish/tags/system_figures.h"
#include "publish/tags/tag_format.h"
#include "publish/tags/tag_rows.h"
#include "publish/tags/tag_tables.h"

namespace nimbrel {

using namespace tagrows;

namespace {

constexpr const char* kForecastLater = "; forecast texts come with the forecast-text module, not built yet";
constexpr const char* kNoSnow = "; the program keeps no snow measurements";
constexpr const char* kNoLightning = "; the program reads no lightning detector";
constexpr const char* kNoFwi = "; the program does not work out the fire-weather index";
constexpr const char* kNoMetar = "; the program does not download METAR reports";
constexpr const char* kNoEnergy = "; the program reads no energy meter";
constexpr const char* kNoWarnings = "; the program does not download weather warnings";
constexpr const char* kNoTides = "; the program keeps no tide tables";
constexpr const char* kNoAlarms = "; the alarms are not built yet";
constexpr const char* kNoReports = "; the climate (NOAA) reports are not built yet";

constexpr const char* kMonthKeys[] = {"jan", "feb", "mar", "apr", "may", "jun",
                                      "jul", "aug", "sep", "oct", "nov", "dec"};

// The symbol of a unit for a report's column header: "°C", "mm", "km/h".
std::string headerUnit(const TagContext& context, Unit family) {
  const TagWriting writing{context.units.units, false, context.options.htmlDegreeSign, false};
  std::string symbol = unitSymbol(shownUnit(family, context.units.units), writing);
  if (!symbol.empty() && symbol.front() == ' ') symbol.erase(0, 1);
  return symbol;
}

// Snow is measured in cm where rain is in mm, in inches where rain is in inches.
std::string snowUnit(const TagContext& context) {
  return context.units.units.webRainShown() == RainUnit::inches ? "in." : "cm";
}

void addForecasts(std::vector<TagDef>& rows, const std::string& stem) {
  for (int day = 1; day <= 8; ++day)
    rows.push_back(missing(stem + "day" + std::to_string(day),
                           "forecast text of day " + std::to_string(day) + " of the downloaded 5-day forecast" +
                               kForecastLater));
  for (int day = 1; day <= 8; ++day)
    rows.push_back(missing(stem + "dayday" + std::to_string(day),
                           "name of day " + std::to_string(day) + " of the downloaded 5-day forecast" +
                               kForecastLater));
  rows.push_back(missing(stem + "timestamp", std::string("time the 5-day forecast was issued") + kForecastLater));
}

void addMonthlySnow(std::vector<TagDef>& rows, const std::string& stem, const char* what) {
  for (const char* month : kMonthKeys)
    rows.push_back(missing(stem + month, std::string(what) + " of " + month + kNoSnow));
}

void addLightning(std::vector<TagDef>& rows) {
  static constexpr std::pair<const char*, const char*> kCounts[] = {
      {"lighteningcount", "lightning strikes counted today"},
      {"lighteningcountlast12hour", "lightning strikes in the last 12 hours"},
      {"lighteningcountlast12hournextstorm", "lightning strikes in the last 12 hours (NexStorm)"},
      {"lighteningcountlast30minutes", "lightning strikes in the last 30 minutes"},
      {"lighteningcountlast30minutesnextstorm", "lightning strikes in the last 30 minutes (NexStorm)"},
      {"lighteningcountlast5minutes", "lightning strikes in the last 5 minutes"},
      {"lighteningcountlasthour", "lightning strikes in the last hour"},
      {"lighteningcountlasthournextstorm", "lightning strikes in the last hour (NexStorm)"},
      {"lighteningcountlastminute", "lightning strikes in the last minute"},
      {"lighteningcountlastminutenextstorm", "lightning strikes in the last minute (NexStorm)"},
      {"lighteningcountlasttime", "time of the last lightning strike"},
      {"lighteningcountmidnight", "lightning strikes since midnight"},
      {"lighteningcountmidnightwire", "lightning strikes since midnight (wired detector)"},
      {"lighteningcountmonth", "lightning strikes this month"},
      {"lighteningcountnoon", "lightning strikes since noon"},
      {"lighteningcountnoonwire", "lightning strikes since noon (wired detector)"},
      {"lighteningcountyear", "lightning strikes this year"},
      {"lighteningstrikesmax", "most lightning strikes in a minute today"},
      {"lighteningstrikesmaxtime", "time of the most lightning strikes in a minute today"},
  };
  for (const auto& [name, what] : kCounts) rows.push_back(missing(name, std::string(what) + kNoLightning));
}

void addFireWeather(std::vector<TagDef>& rows) {
  static constexpr std::pair<const char*, const char*> kCodes[] = {
      {"bui", "build-up index"}, {"dc", "drought code"},     {"dmc", "duff moisture code"},
      {"ffmc", "fine fuel moisture code"}, {"fwi", "fire-weather index"}, {"isi", "initial spread index"},
  };
  for (const auto& [code, what] : kCodes) {
    rows.push_back(missing(std::string("FWI") + code, std::string("today's ") + what + kNoFwi));
    rows.push_back(missing("yestFWI" + std::string(code), std::string("yesterday's ") + what + kNoFwi));
  }
  rows.push_back(missing("FWIdes", std::string("the fire danger in words") + kNoFwi));
  rows.push_back(missing("liveFWI", std::string("fire-weather index from the current readings") + kNoFwi));
  rows.push_back(missing("liveFWI10", std::string("fire-weather index from the current readings, 0-10 scale") + kNoFwi));
  rows.push_back(missing("liveFWIdes", std::string("the current fire danger in words") + kNoFwi));
}

void addSnow(std::vector<TagDef>& rows) {
  addMonthlySnow(rows, "avsnow", "average snowfall");
  addMonthlySnow(rows, "nowsnow", "snowfall this season");
  static constexpr std::pair<const char*, const char*> kSnow[] = {
      {"avgSeasonSnow", "average snowfall of a season"},
      {"firstsnowseason", "date of this season's first snow"},
      {"firstsnowseasonav", "average date of a season's first snow"},
      {"mxsnow", "deepest snow"},
      {"nsnowt", "time the snow was last measured"},
      {"snowdaysthismonth", "days with snow this month"},
      {"snowdaysthisyear", "days with snow this year"},
      {"snowheight", "depth of snow on the ground"},
      {"snowheightnew", "depth of new snow"},
      {"snowmonthcm", "snowfall this month in cm"},
      {"snowmonthin.", "snowfall this month in inches"},
      {"snownowcm", "snow on the ground in cm"},
      {"snownowin.", "snow on the ground in inches"},
      {"snowrain", "water equivalent of today's snow"},
      {"snowseasoncm", "snowfall this season in cm"},
      {"snowseasonin.", "snowfall this season in inches"},
      {"snowtodaycm", "snowfall today in cm"},
      {"snowtodayin.", "snowfall today in inches"},
      {"snowyesterday", "snowfall yesterday"},
  };
  for (const auto& [name, what] : kSnow) rows.push_back(missing(name, std::string(what) + kNoSnow));
  for (const char* name : {"dallassnowvolts", "dallassnowvolts10", "dallassnowvolts10pl2"})
    rows.push_back(missing(name, "voltage of a 1-wire snow-depth sensor; the program has no driver for 1-wire sensors"));
}

void addEnergy(std::vector<TagDef>& rows) {
  for (int channel = 1; channel <= 3; ++channel) {
    const std::string n = std::to_string(channel);
    rows.push_back(missing("currentcostch" + n, "power on channel " + n + " of a CurrentCost meter" + kNoEnergy));
    rows.push_back(missing("current2costch" + n, "power on channel " + n + " of a second CurrentCost meter" +
                                                     kNoEnergy));
    rows.push_back(missing("currentcostdailytotal" + n,
                           "today's energy on channel " + n + " of a CurrentCost meter" + kNoEnergy));
  }
  rows.push_back(missing("currentcosthistory", std::string("daily energy history of a CurrentCost meter") + kNoEnergy));
  rows.push_back(missing("currentcosthistoryhour", std::string("hourly energy history of a CurrentCost meter") + kNoEnergy));
  rows.push_back(missing("tedco2", std::string("CO2 of the power used, from a TED meter") + kNoEnergy));
  rows.push_back(missing("teddollars", std::string("cost of the power used, from a TED meter") + kNoEnergy));
  rows.push_back(missing("tedkwh", std::string("power used, from a TED meter") + kNoEnergy));
}

void addMetar(std::vector<TagDef>& rows) {
  static constexpr std::pair<const char*, const char*> kMetar[] = {
      {"downloadedmetarrainlasthour", "rain of the last hour from a downloaded METAR"},
      {"extrametarlabel", "label of an extra METAR station"},
      {"metar/report=", "a downloaded METAR report, decoded"},
      {"metarcloudreport", "cloud report of a downloaded METAR"},
      {"synopcloud", "cloud of a downloaded SYNOP report"},
      {"uncodedmetar/report=", "a downloaded METAR report as sent"},
      {"usnavycloudheight1", "height of the first cloud layer of a downloaded METAR"},
      {"usnavycloudheight2", "height of the second cloud layer of a downloaded METAR"},
      {"usnavycloudheight3", "height of the third cloud layer of a downloaded METAR"},
      {"usnavycloudtype1", "type of the first cloud layer of a downloaded METAR"},
      {"usnavycloudtype2", "type of the second cloud layer of a downloaded METAR"},
      {"usnavycloudtype3", "type of the third cloud layer of a downloaded METAR"},
      {"weathercond", "current weather from a downloaded METAR"},
      {"weatherreport", "weather report from a downloaded METAR"},
  };
  for (const auto& [name, what] : kMetar) rows.push_back(missing(name, std::string(what) + kNoMetar));
}

void addWarnings(std::vector<TagDef>& rows) {
  static constexpr std::pair<const char*, const char*> kWarnings[] = {
      {"dailywarning/forecast", "the day's weather warning or forecast from the weather service"},
      {"NOAAEvent", "current NOAA weather warning event"},
      {"NOAAEvent2", "second NOAA weather warning event"},
      {"NOAAEvent2no", "count of second NOAA weather warning events"},
      {"NOAAEventno", "count of NOAA weather warning events"},
      {"noaawarningraw", "NOAA weather warning as sent"},
      {"noaawarningraw2", "second NOAA weather warning as sent"},
      {"noaawarningraw3", "third NOAA weather warning as sent"},
      {"noaawarningscroll", "NOAA weather warning for a scrolling line"},
      {"noaawarningscroll2", "second NOAA weather warning for a scrolling line"},
      {"timeofwarning", "time of the last weather warning"},
  };
  for (const auto& [name, what] : kWarnings) rows.push_back(missing(name, std::string(what) + kNoWarnings));
}

std::vector<TagDef> programRows() {
  using namespace systemfigures;
  return {
      text("qzversion", [](const TagContext&) { return std::string(kVersion); }, "this program's version"),
      text("qzbuild", [](const TagContext&) { return std::to_string(kBuildNumber); }, "this program's build number"),
      number("memoryused", Unit::none, 1, 1, [](const TagContext&) { return TagValue(memoryUsedMb()); },
             "memory this program uses, MB"),
      number("freememory", Unit::none, 1, 0, [](const TagContext&) { return TagValue(freeMemoryMb()); },
             "memory the computer has available, MB"),
      text("windowsuptime",
           [](const TagContext&) {
             const std::optional<double> seconds = uptimeSeconds();
             return seconds ? TagValue(durationText(*seconds)) : noData();
           },
           "time since the computer started: \"3 days 4 hours 12 minutes\""),
      missing("cpuqzuse", "share of the processor this program uses; the program does not sample its processor time"),
      missing("basenumber", "the owner's base number for the program's own screens; not used by this program"),
      missing("datareceivedcount", "count of data packets received from the station; not handed to the tags yet"),
      missing("statusmessage", "the program's status line; the program keeps no status message yet"),
      missing("nextuploadtime", "time of the next upload of the web pages; the upload schedule is not handed to the tags"),
      missing("timeofnextupdate", "time of the next update of the web pages; the upload schedule is not handed to the tags"),
      missing("lastrecordset", "which record was set last; the record book does not note it"),
      text("wapstationname",
           [](const TagContext& c) { return c.live.stationname.empty() ? noData() : TagValue(c.live.stationname); },
           "the station's name, for small-screen (WAP) pages"),
  };
}

}  // namespace

std::vector<TagDef> serviceTags() {
  std::vector<TagDef> rows;
  addForecasts(rows, "5dayforecast");
  addForecasts(rows, "d5ayforecast");
  for (const auto& [name, what] : {std::pair{"vpforecasttext", "the Vantage console's forecast in words"},
                                   std::pair{"zambretti", "the Zambretti forecast from pressure and its trend"},
                                   std::pair{"iconnumber", "number of the icon of the current weather"},
                                   std::pair{"weatherdescription", "the current weather in words"},
                                   std::pair{"forecasticonword", "the forecast icon in a word"},
                                   std::pair{"wm918/68forecasticonintext", "the WMR918/968 forecast icon in words"}})
    rows.push_back(missing(name, std::string(what) + kForecastLater));
  addSnow(rows);
  addLightning(rows);
  rows.push_back(missing("nexstormbearing", std::string("bearing of the nearest storm (NexStorm)") + kNoLightning));
  rows.push_back(missing("nexstormdistance", std::string("distance of the nearest storm (NexStorm)") + kNoLightning));
  addFireWeather(rows);
  addEnergy(rows);
  addMetar(rows);
  addWarnings(rows);
  for (const char* name : {"todayshightideinfo1", "todayshightideinfo2"})
    rows.push_back(missing(name, std::string("time and height of today's high tide") + kNoTides));
  for (const char* name : {"todayslowtideinfo1", "todayslowtideinfo2"})
    rows.push_back(missing(name, std::string("time and height of today's low tide") + kNoTides));
  // "current", "alarm" and "flashing" are three tags of their own: the words of
  // the alarm line, each shown while an alarm is on.
  rows.push_back(missing("current", std::string("first word of the alarm line while an alarm is on") + kNoAlarms));
  rows.push_back(missing("alarm", std::string("second word of the alarm line while an alarm is on") + kNoAlarms));
  rows.push_back(missing("flashing", std::string("third word of the alarm line while an alarm is on") + kNoAlarms));
  rows.push_back(missing("currentalarm", std::string("the alarm sounding now") + kNoAlarms));
  rows.push_back(missing("warningemailalarm", std::string("the alarm last sent by e-mail") + kNoAlarms));

  rows.push_back(text("noaatempunit", [](const TagContext& c) { return headerUnit(c, Unit::temperature); },
                      "temperature unit of the climate reports' headers: °C or °F"));
  rows.push_back(text("noaarainunit", [](const TagContext& c) { return headerUnit(c, Unit::rain); },
                      "rain unit of the climate reports' headers: mm or in."));
  rows.push_back(text("noaawindunit", [](const TagContext& c) { return headerUnit(c, Unit::speed); },
                      "wind unit of the climate reports' headers: km/h, mph, kts, m/s or bft"));
  rows.push_back(text("noaabarounit", [](const TagContext& c) { return headerUnit(c, Unit::pressure); },
                      "pressure unit of the climate reports' headers: hPa, mb, kPa or inHg"));
  rows.push_back(text("noaasnowunit", snowUnit, "snow unit of the climate reports' headers: cm, or in. with rain in inches"));
  static constexpr std::pair<const char*, const char*> kReports[] = {
      {"noaa-month", "this month's climate report"}, {"noaa-year", "this year's climate report"},
      {"noaamonth", "month of the climate report"},  {"noaayear", "year of the climate report"},
      {"noaacityname", "city named in the climate reports' header"},
      {"noaastatename", "state named in the climate reports' header"},
  };
  for (const auto& [name, what] : kReports) rows.push_back(missing(name, std::string(what) + kNoReports));

  for (auto& row : programRows()) rows.push_back(std::move(row));
  static constexpr std::pair<const char*, const char*> kOther[] = {
      {"currentqzet", "today's evapotranspiration worked out by the program; it uses the console's ET instead"},
      {"yesterdayqzet", "yesterday's evapotranspiration worked out by the program; it uses the console's ET instead"},
      {"customscreenownlabelusethistag", "the owner's label of a custom screen; the program has no custom screens"},
      {"dropdownlist", "a drop-down list of the program's own pages; the program makes no such pages"},
      {"filenamewapgraph", "file name of the graph for small-screen (WAP) pages; the program makes no WAP graphs"},
      {"filenamewapgraph2", "file name of the second graph for WAP pages; the program makes no WAP graphs"},
      {"inputdailyweather", "the day's weather as the owner typed it; the program has no input for it"},
      {"weathercondinput", "current weather as the owner typed it; the program has no input for it"},
      {"loadfile", "the text of a file named in the template; the template engine does not insert files yet"},
      {"loadfile1", "the text of a second file named in the template; the template engine does not insert files yet"},
      {"loadfilenocrlf", "a file's text without line ends; the template engine does not insert files yet"},
      {"myuserdailyreport", "the owner's own daily report; the program makes no such report"},
      {"rawdataheader", "header of the station's raw-data file; the program writes no raw-data file"},
      {"Stardate", "the date as a star date; the program has no star-date calendar"},
      {"Startime", "the time as a star date's time; the program has no star-date calendar"},
      {"Startimedate", "the star date with its time; the program has no star-date calendar"},
      {"WindRoseData", "counts of today's winds by direction, for a wind rose; not kept yet"},
      {"WindRoseData1", "counts of the last hour's winds by direction, for a wind rose; not kept yet"},
      {"WindRoseData3", "counts of the last three hours' winds by direction, for a wind rose; not kept yet"},
  };
  for (const auto& [name, what] : kOther) rows.push_back(missing(name, what));
  return rows;
}

}  // namespace nimbrel
