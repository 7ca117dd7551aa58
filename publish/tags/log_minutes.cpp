#include "publish/tags/log_minutes.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <fstream>

#include "core/live_record.h"
#include "core/weather_utils.h"
#include "datafiles/log_fields.h"
#include "datafiles/monthly_log_reader.h"
#include "publish/tags/comfort_formulas.h"
#include "publish/tags/tag_context.h"
#include "publish/tags/tag_memory.h"
#include "publish/tags/unit_conversion.h"

namespace nimbrel {
namespace {

template <class Better>
std::optional<LoggedExtreme> extremeOf(std::span<const LoggedMinute> minutes, LoggedField field, Better better) {
  std::optional<LoggedExtreme> top;
  for (const LoggedMinute& m : minutes)
    if (!top || better((m.*field)(), top->value)) top = LoggedExtreme{(m.*field)(), &m};
  return top;
}

[[maybe_unused]] bool earlier(const LoggedMinute& a, const LoggedMinute& b) { return a.minute < b.minute; }
bool before(const LoggedMinute& m, long long minute) { return m.minute < minute; }

}  // namespace

namespace {

// The value as a whole number of steps of 1/scale, within what T holds.
template <class T>
T steps(double value, double scale, long long lowest = std::numeric_limits<T>::min(),
        long long highest = std::numeric_limits<T>::max()) {
  const double scaled = std::round(value * scale);
  if (!(scaled > static_cast<double>(lowest))) return static_cast<T>(lowest);
  if (scaled >= static_cast<double>(highest)) return static_cast<T>(highest);
  return static_cast<T>(static_cast<long long>(scaled));
}

// The logs' last decimal place: one for temperatures, wind, metric
// pressure and rain; three for inches of mercury and of rain (two on the
// rain of a minute for a station counting hundredths, a whole number of
// thousandths all the same).
constexpr double kTenths = 10.0;
constexpr double kThousandths = 1000.0;
constexpr long long kDailyRainLimit = (1LL << 23) - 1;  // the 24 bits of dailyRain_

}  // namespace

std::optional<LoggedMinute> loggedMinute(const MonthlyLogLine& line, const LogReading& reading) {
  using C = LogColumn;
  const long long minute = civilMinute(static_cast<int>(line.number(C::year)), static_cast<int>(line.number(C::month)),
                                       static_cast<int>(line.number(C::day)), static_cast<int>(line.number(C::hour)),
                                       static_cast<int>(line.number(C::minute)));
  if (minute < std::numeric_limits<std::int32_t>::min() || minute > std::numeric_limits<std::int32_t>::max())
    return std::nullopt;
  const bool usa = reading.logUnits == UnitSystem::usa;
  const double rainScale = usa ? kThousandths : kTenths;
  LoggedMinute m;
  m.minute = static_cast<std::int32_t>(minute);
  m.usa_ = usa ? 1 : 0;
  m.chillFromGust_ = reading.chillFromGust ? 1 : 0;
  m.temperature_ = steps<std::int16_t>(line.number(C::temperature), kTenths);
  m.humidity_ = steps<std::uint8_t>(line.number(C::humidity), 1.0);
  m.dewpoint_ = steps<std::int16_t>(line.number(C::dewpoint), kTenths);
  m.barometer_ = steps<std::uint16_t>(line.number(C::barometer), usa ? kThousandths : kTenths);
  m.wind_ = steps<std::int16_t>(line.number(C::windspeed), kTenths);
  m.gust_ = steps<std::int16_t>(line.number(C::gustspeed), kTenths);
  m.direction_ = steps<std::uint16_t>(line.number(C::direction), 1.0, 0, (1 << 14) - 1);
  m.rain_ = steps<std::int16_t>(line.number(C::rainlastmin), rainScale);
  m.heatindex_ = steps<std::int16_t>(line.number(C::heatindex), kTenths);
  m.dailyRain_ = steps<std::int32_t>(line.number(C::dailyrain), rainScale, -kDailyRainLimit - 1, kDailyRainLimit);
  m.monthRain_ = steps<std::int32_t>(line.number(C::monthlyrain), rainScale);
  m.yearRain_ = steps<std::int32_t>(line.number(C::yearlyrain), rainScale);
  return m;
}

// The text of a field read as a number (n / 10.0 is the double "n/10"
// reads as), then converted to the internal unit as it always was.
double LoggedMinute::celsius(std::int16_t tenths) const {
  const double v = tenths / kTenths;
  return usa() ? (v - writer_units::kFahrenheitOffset) / writer_units::kFahrenheitPerCelsius : v;
}

double LoggedMinute::knots(std::int16_t tenths) const {
  const double v = tenths / kTenths;
  return usa() ? v / writer_units::kMphPerKnot : v;
}

double LoggedMinute::millimetres(std::int32_t count) const {
  return usa() ? count / kThousandths / writer_units::kInchesPerMm : count / kTenths;
}

double LoggedMinute::barometer() const {
  return usa() ? barometer_ / kThousandths / writer_units::kInchesHgPerHPa : barometer_ / kTenths;
}

namespace {

// The wind's power in the wind chill (km/h to the 0.16) for each tenth of a
// knot or mph a log can hold up to 200, worked out once: a scan of a week's
// wind chill would otherwise take as many powers as minutes.
constexpr int kChillTableTenths = 2000;
struct ChillPowers {
  std::array<long double, kChillTableTenths + 1> metric{}, usa{};
  ChillPowers() {
    for (int n = 0; n <= kChillTableTenths; ++n) {
      metric[n] = std::pow(static_cast<long double>(n / kTenths * kKmhPerKnot), 0.16L);
      usa[n] = std::pow(static_cast<long double>(n / kTenths / writer_units::kMphPerKnot * kKmhPerKnot), 0.16L);
    }
  }
};

}  // namespace

// TWeatherUtils::WindChill step for step, with the power from the table.
double LoggedMinute::windchill() const {
  const std::int16_t tenths = chillFromGust_ != 0 ? gust_ : wind_;
  const double windKmh = knots(tenths) * kKmhPerKnot;
  const double celsius = temperature();
  if (tenths < 0 || tenths > kChillTableTenths) return TWeatherUtils::WindChill(windKmh, celsius);
  if (celsius >= 10.0 || windKmh <= 4.8) return celsius;
  static const ChillPowers powers;
  const long double t = celsius;
  const long double windTerm = usa() ? powers.usa[tenths] : powers.metric[tenths];
  const long double chill = 13.112L + 0.6215L * t - 11.37L * windTerm + 0.3965L * t * windTerm;
  return chill < t ? static_cast<double>(chill) : celsius;
}

double LoggedMinute::apparent() const { return apparentTemperature(temperature(), humidity(), wind()); }

double LoggedMinute::humidex() const { return nimbrel::humidex(temperature(), dewpoint()); }

// Apparent temperature of the Australian Bureau of Meteorology's shade form:
// AT = T + 0.33 e - 0.70 v - 4.00, e the water vapour pressure in hPa, v the
// wind in m/s.
double apparentTemperature(double celsius, double humidity, double windKnots) {
  const double vapour = humidity / 100.0 * 6.105 * std::exp(17.27 * celsius / (237.7 + celsius));
  return celsius + 0.33 * vapour - 0.70 * windKnots * kMetresPerSecondPerKnot - 4.00;
}

LogMinutes::LogMinutes(std::filesystem::path folder, LogReading reading)
    : folder_(std::move(folder)), reading_(reading) {}

namespace {

constexpr std::size_t kCheckBytes = 64;  // compared at the start and before the end read

// `count` bytes of the file from `offset`; fewer at its end, nothing when it
// cannot be read.
std::optional<std::string> readRange(const std::filesystem::path& file, std::uintmax_t offset, std::uintmax_t count) {
  std::ifstream in(file, std::ios::binary);
  if (!in) return std::nullopt;
  in.seekg(static_cast<std::streamoff>(offset));
  if (!in) return std::nullopt;
  std::string text(static_cast<std::size_t>(count), '\0');
  in.read(text.data(), static_cast<std::streamsize>(count));
  text.resize(static_cast<std::size_t>(in.gcount()));
  return text;
}

}  // namespace

void LogMinutes::parse(MonthState& state, const std::string& text, std::uintmax_t start) {
  if (start == 0) state.head = text.substr(0, kCheckBytes);
  const std::size_t lastEnd = text.rfind('\n');
  if (lastEnd == std::string::npos) return;  // no whole line yet
  const MonthlyLogText log(text.substr(0, lastEnd + 1));
  state.minutes->reserve(state.minutes->size() + log.lines().size());
  for (const MonthlyLogLine& line : log.lines()) {
    const std::optional<LoggedMinute> read = loggedMinute(line, reading_);
    if (!read) continue;
    const LoggedMinute& m = *read;
    if (!state.minutes->empty()) {
      state.ordered = state.ordered && m.minute >= state.minutes->back().minute;
      state.strictly = state.strictly && m.minute > state.minutes->back().minute;
    }
    state.minutes->push_back(m);
  }
  state.consumed = start + lastEnd + 1;
  std::string before = state.beforeEnd + text.substr(0, lastEnd + 1);
  state.beforeEnd = before.substr(before.size() - std::min(before.size(), kCheckBytes));
}

// Read a block at a time, so that the text and its split lines never take
// more than a block's worth of memory whatever the size of the log.
void LogMinutes::readWhole(MonthState& state, const std::filesystem::path& file) {
  constexpr std::uintmax_t kBlock = 256 * 1024;
  state.minutes = std::make_shared<std::vector<LoggedMinute>>();
  state.ordered = state.strictly = true;
  state.head.clear();
  state.beforeEnd.clear();
  state.consumed = 0;
  state.held = true;
  state.exists = false;
  while (true) {
    const auto block = readRange(file, state.consumed, kBlock);
    if (!block) return;
    state.exists = true;
    const std::uintmax_t before = state.consumed;
    parse(state, *block, state.consumed);
    if (block->size() < kBlock || state.consumed == before) break;  // the end, or a line longer than a block
  }
  state.minutes->shrink_to_fit();
}

// True when the file still starts and goes on to `consumed` as read: the
// lines after it are then read alone (and kept when the minutes are held).
bool LogMinutes::readAppended(MonthState& state, const std::filesystem::path& file) {
  if (state.size < state.consumed) return false;
  const auto head = readRange(file, 0, state.head.size());
  const std::uintmax_t checkFrom = state.consumed - state.beforeEnd.size();
  const auto before = readRange(file, checkFrom, state.beforeEnd.size());
  if (!head || !before || *head != state.head || *before != state.beforeEnd) return false;
  const auto tail = readRange(file, state.consumed, state.size - state.consumed);
  if (!tail) return false;
  if (state.held) {
    parse(state, *tail, state.consumed);
  } else if (const std::size_t lastEnd = tail->rfind('\n'); lastEnd != std::string::npos) {
    std::string joined = state.beforeEnd + tail->substr(0, lastEnd + 1);
    state.beforeEnd = joined.substr(joined.size() - std::min(joined.size(), kCheckBytes));
    state.consumed += lastEnd + 1;
  }
  return true;
}

LogMinutes::MonthState& LogMinutes::refreshed(int key, const LogMonth& month) {
  MonthState& state = months_[key];
  state.lastUse = ++uses_;
  if (state.known && state.checkedFill == fill_) return state;
  state.checkedFill = fill_;
  const std::filesystem::path file = monthFile(folder_, month, "lg.txt");
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(file, error);
  std::filesystem::file_time_type written{};
  if (!error) written = std::filesystem::last_write_time(file, error);
  const bool wasKnown = state.known;
  state.known = true;
  if (error) {  // missing or unreadable: no lines
    if (wasKnown && !state.exists && state.held) return state;
    state = MonthState{};
    state.known = true;
    state.version = {nextVersion_, nextVersion_};
    state.held = true;
    state.checkedFill = fill_;
    state.lastUse = uses_;
    ++nextVersion_;
    return state;
  }
  if (wasKnown && state.exists && size == state.size && written == state.written) return state;
  const std::uintmax_t oldSize = state.size;
  state.size = size;
  state.written = written;
  if (wasKnown && state.exists && size > oldSize && readAppended(state, file)) {
    state.version.version = nextVersion_++;
    return state;
  }
  readWhole(state, file);
  state.version = {nextVersion_, nextVersion_};
  ++nextVersion_;
  evictBeyondLimit(key);
  return state;
}

void LogMinutes::evictBeyondLimit(int keep) {
  while (monthsHeld() > kMonthsOfMinutes) {
    MonthState* oldest = nullptr;
    for (auto& [key, state] : months_)
      if (key != keep && state.held && state.exists && (oldest == nullptr || state.lastUse < oldest->lastUse))
        oldest = &state;
    if (oldest == nullptr) return;
    oldest->held = false;
    oldest->minutes = std::make_shared<std::vector<LoggedMinute>>();
  }
}

std::size_t LogMinutes::monthsHeld() const {
  return static_cast<std::size_t>(
      std::count_if(months_.begin(), months_.end(), [](const auto& m) { return m.second.held && m.second.exists; }));
}

const std::vector<LoggedMinute>& LogMinutes::month(const LogMonth& month) {
  const int key = month.year * 12 + month.month - 1;
  MonthState& state = refreshed(key, month);
  if (!state.held) {
    // Let go earlier: the file was looked at this fill, its lines are the same or grew.
    const auto size = state.size;
    const auto written = state.written;
    readWhole(state, monthFile(folder_, month, "lg.txt"));
    state.size = size;
    state.written = written;
    evictBeyondLimit(key);
  }
  return *state.minutes;
}

LogMinutes::Shared LogMinutes::shared(const LogMonth& which) {
  this->month(which);
  const MonthState& state = months_[which.year * 12 + which.month - 1];
  return {state.minutes, state.ordered, state.strictly};
}

LogMinutes::Version LogMinutes::version(const LogMonth& month) {
  return refreshed(month.year * 12 + month.month - 1, month).version;
}

LogMinutes& logMinutes(const TagContext& context) {
  if (!context.caches.logsChecked) {
    context.caches.logsChecked = true;
    context.memory.logs(context.logFolder, LogReading{context.units.units.logFile, context.units.wind.chillFromGust})
        .beginFill();
  }
  return context.memory.logs(context.logFolder,
                             LogReading{context.units.units.logFile, context.units.wind.chillFromGust});
}

LogMonth logMonthOf(long long minute, bool nineAmDay) {
  const LocalTime t = civilTime(minute);
  ReadingTime r;
  r.year = static_cast<std::uint16_t>(t.year);
  r.month = static_cast<std::uint16_t>(t.month);
  r.day = static_cast<std::uint16_t>(t.day);
  r.hour = static_cast<std::uint16_t>(t.hour);
  return logMonth(r, nineAmDay);
}

std::vector<LogMonth> logMonthsCovering(long long from, long long to, bool nineAmDay) {
  std::vector<LogMonth> months;
  LogMonth month = logMonthOf(from, nineAmDay);
  const LogMonth last = logMonthOf(std::max(from, to - 1), nineAmDay);
  while (true) {
    months.push_back(month);
    if (month == last || months.size() > 24) break;
    month = month.month == 12 ? LogMonth{1, month.year + 1} : LogMonth{month.month + 1, month.year};
  }
  return months;
}

namespace {

// Appends `from` to `to`, each minute once when only the first line of a
// minute is wanted: in time order, a repeated minute follows its first line.
void appendInOrder(std::vector<LoggedMinute>& to, std::span<const LoggedMinute> from, bool firstOfRepeats) {
  for (const LoggedMinute& m : from)
    if (!firstOfRepeats || to.empty() || to.back().minute != m.minute) to.push_back(m);
}

// The months' minutes one after the other when that is their time order (as
// a station that keeps its clock writes them), kept in `logs` and carried on
// over the lines appended to the last month; nothing otherwise.
std::shared_ptr<const std::vector<LoggedMinute>> mergedInOrder(LogMinutes& logs, std::span<const LogMonth> months,
                                                               MinuteHistory::Repeats repeats) {
  const bool first = repeats == MinuteHistory::Repeats::first;
  std::vector<int> keys;
  std::vector<LogMinutes::Version> versions;
  for (const LogMonth& m : months) {
    keys.push_back(m.year * 12 + m.month - 1);
    versions.push_back(logs.version(m));
  }
  auto& all = logs.merged();
  auto found = std::find_if(all.begin(), all.end(),
                            [&](const LogMinutes::Merged& m) { return m.months == keys && m.firstOfRepeats == first; });
  if (found != all.end()) {
    if (found->versions == versions) return found->minutes;
    const bool onlyLastGrew =
        std::equal(versions.begin(), versions.end() - 1, found->versions.begin()) &&
        versions.back().generation == found->versions.back().generation;
    if (onlyLastGrew) {
      const LogMinutes::Shared last = logs.shared(months.back());
      auto& minutes = *found->minutes;
      const bool continues = last.ordered && last.minutes->size() >= found->lastCount &&
                             (last.minutes->size() == found->lastCount || minutes.empty() ||
                              minutes.back().minute <= (*last.minutes)[found->lastCount].minute);
      if (continues) {
        appendInOrder(minutes, std::span(*last.minutes).subspan(found->lastCount), first);
        found->lastCount = last.minutes->size();
        found->versions = versions;
        return found->minutes;
      }
    }
    all.erase(found);
  }
  auto minutes = std::make_shared<std::vector<LoggedMinute>>();
  std::size_t lastCount = 0;
  for (const LogMonth& m : months) {
    const LogMinutes::Shared month = logs.shared(m);
    if (!month.ordered) return nullptr;
    if (!month.minutes->empty() && !minutes->empty() && minutes->back().minute > month.minutes->front().minute)
      return nullptr;
    appendInOrder(*minutes, *month.minutes, first);
    lastCount = month.minutes->size();
  }
  constexpr std::size_t kMergedKept = 3;
  if (all.size() >= kMergedKept) all.erase(all.begin());
  all.push_back({keys, first, versions, lastCount, minutes});
  return minutes;
}

}  // namespace

MinuteHistory MinuteHistory::gather(LogMinutes& logs, std::span<const LogMonth> months, Repeats repeats,
                                    long long from, long long to) {
  MinuteHistory history;
  if (months.size() == 1) {
    // One month in time order is its own history: no copy.
    const LogMinutes::Shared month = logs.shared(months.front());
    if (month.ordered && (repeats == Repeats::all || month.strictly)) history.all_ = month.minutes;
  }
  if (!history.all_ && !months.empty()) history.all_ = mergedInOrder(logs, months, repeats);
  if (history.all_) {
    const auto& all = *history.all_;
    const auto begin = std::lower_bound(all.begin(), all.end(), from, before);
    const auto end = std::upper_bound(begin, all.end(), to, [](long long minute, const LoggedMinute& m) {
      return minute < m.minute;
    });
    history.view_ = {begin, end};
    return history;
  }
  // Lines out of order (the clock set back): sorted, each minute once or
  // every line of it.
  auto minutes = std::make_shared<std::vector<LoggedMinute>>();
  for (const LogMonth& month : months)
    for (const LoggedMinute& m : logs.month(month))
      if (m.minute >= from && m.minute <= to) minutes->push_back(m);
  std::stable_sort(minutes->begin(), minutes->end(), earlier);
  if (repeats == Repeats::first)
    minutes->erase(std::unique(minutes->begin(), minutes->end(),
                               [](const LoggedMinute& a, const LoggedMinute& b) { return a.minute == b.minute; }),
                   minutes->end());
  history.all_ = minutes;
  history.view_ = *minutes;
  return history;
}

const LoggedMinute* MinuteHistory::near(long long minute, int tolerance) const {
  const auto after = std::lower_bound(view_.begin(), view_.end(), minute, before);
  const LoggedMinute* best = nullptr;
  if (after != view_.end()) best = &*after;
  if (after != view_.begin()) {
    const LoggedMinute* previous = &*std::prev(after);
    if (best == nullptr || minute - previous->minute <= best->minute - minute) best = previous;
  }
  if (best == nullptr || std::llabs(best->minute - minute) > tolerance) return nullptr;
  return best;
}

const LoggedMinute* MinuteHistory::latestUpTo(long long minute) const {
  const auto after = std::lower_bound(view_.begin(), view_.end(), minute + 1, before);
  return after == view_.begin() ? nullptr : &*std::prev(after);
}

std::span<const LoggedMinute> MinuteHistory::between(long long from, long long to) const {
  const auto first = std::lower_bound(view_.begin(), view_.end(), from, before);
  const auto last = std::lower_bound(first, view_.end(), std::max(from, to), before);
  return {first, last};
}

std::optional<LoggedExtreme> highest(std::span<const LoggedMinute> minutes, LoggedField field) {
  return extremeOf(minutes, field, [](double a, double b) { return a > b; });
}

std::optional<LoggedExtreme> lowest(std::span<const LoggedMinute> minutes, LoggedField field) {
  return extremeOf(minutes, field, [](double a, double b) { return a < b; });
}

double rainOf(std::span<const LoggedMinute> minutes) {
  double sum = 0;
  for (const LoggedMinute& m : minutes) sum += m.rain();
  return sum;
}

}  // namespace nimbrel
