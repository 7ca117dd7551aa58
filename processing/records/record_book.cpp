#include "processing/records/record_book.h"

#include <fmt/format.h>

#include <cmath>
#include <stdexcept>

#include "core/number_format.h"

namespace nimbrel {
namespace {

// Wind chill in a gale at the coldest air, the dew point of dry frost and the
// heat index of humid heat lie beyond the air's own range, but not this far.
constexpr double kDerivedTemperatureMargin = 50;

struct Bounds {
  double min = 0;
  double max = 0;
  std::string_view names;  // the limits' keys, for the message
};

std::optional<Bounds> boundsOf(RecordBound bound, const AbsoluteLimits& l) {
  switch (bound) {
    case RecordBound::Temperature:
      return Bounds{static_cast<double>(l.minTemp), static_cast<double>(l.maxTemp), "\"min temp\" to \"max temp\""};
    case RecordBound::DerivedTemperature:
      return Bounds{l.minTemp - kDerivedTemperatureMargin, l.maxTemp + kDerivedTemperatureMargin,
                    "\"min temp\" to \"max temp\" and the margin of a derived temperature"};
    case RecordBound::Humidity:
      return Bounds{static_cast<double>(l.minHum), static_cast<double>(l.maxHum), "\"min hum\" to \"max hum\""};
    case RecordBound::Barometer:
      return Bounds{static_cast<double>(l.minBaro), static_cast<double>(l.maxBaro), "\"min baro\" to \"max baro\""};
    case RecordBound::Wind:
      return Bounds{0, static_cast<double>(l.maxSpeed), "0 to \"max speed\""};
    case RecordBound::None:
      break;
  }
  return std::nullopt;
}

bool beats(Side side, const std::optional<RecordValue>& present, double value) {
  if (!present) return true;
  return side == Side::High ? value > present->value : value < present->value;
}

// The reading of `row`, or nothing when this reading cannot make a record.
std::optional<double> candidateOf(const RecordRow& row, const LiveRecord& record,
                                  std::optional<double> tenMinuteAverage) {
  const double reading = row.averageWind && tenMinuteAverage ? *tenMinuteAverage : row.reading(record);
  if (!std::isfinite(reading)) return std::nullopt;
  const double rounded = roundedToTenths(reading);
  if (row.zeroIsNoReading && rounded == 0) return std::nullopt;
  return rounded;
}

void replace(HeldRecord& held, const RecordValue& candidate, std::optional<double> direction) {
  if (held.present && !held.present->when.sameDay(candidate.when)) held.previous = held.present;
  held.present = candidate;
  held.direction = direction;
}

HeldRecord loaded(const SettingsStore& main, const RecordRow& row, const std::string& section) {
  HeldRecord held;
  held.present = parseRecordValue(main.ReadString(section, kRecordValuesKey));
  held.previous = parseRecordValue(main.ReadString(section, kRecordOldValuesKey));
  double degrees = 0;
  if (row.keepsDirection && held.present && parseDouble(main.ReadString(section, kRecordDirectionKey), degrees))
    held.direction = degrees;
  return held;
}

}  // namespace

RecordBook::RecordBook() {
  for (auto& set : sets_) set.resize(recordRows().size());
}

void RecordBook::load(const SettingsStore& main) {
  ++version_;
  const auto rows = recordRows();
  for (RecordSet set : kAllRecordSets)
    for (std::size_t i = 0; i < rows.size(); ++i)
      sets_[index(set)][i] = loaded(main, rows[i], recordSectionName(rows[i], set));
}

std::vector<std::string> RecordBook::dropImplausible(const AbsoluteLimits& limits) {
  std::vector<std::string> messages;
  const auto rows = recordRows();
  for (RecordSet set : kAllRecordSets)
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const std::optional<Bounds> bounds = boundsOf(rows[i].bound, limits);
      HeldRecord& held = sets_[index(set)][i];
      if (!bounds || !held.present) continue;
      const double value = held.present->value;
      if (value >= bounds->min && value <= bounds->max) continue;
      messages.push_back(fmt::format(
          "the stored record [{}] {} = {:.1f} lies outside {:g} to {:g} ({} of section \"New readings limits\"); "
          "it is not used as the record to beat, and the next reading sets the record",
          recordSectionName(rows[i], set), kRecordValuesKey, value, bounds->min, bounds->max, bounds->names));
      held.present.reset();
      held.direction.reset();
      ++version_;
    }
  return messages;
}

void RecordBook::compare(const LiveRecord& record, const LocalTime& now, std::optional<double> tenMinuteAverage) {
  const auto rows = recordRows();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const RecordRow& row = rows[i];
    if (!isFollowed(row)) continue;
    const std::optional<double> value = candidateOf(row, record, tenMinuteAverage);
    if (!value) continue;
    const RecordValue candidate{*value, RecordTime::of(now)};
    const std::optional<double> direction =
        row.keepsDirection ? std::optional<double>(record.winddir) : std::nullopt;
    for (auto& set : sets_)
      if (beats(row.side, set[i].present, *value)) {
        replace(set[i], candidate, direction);
        ++version_;
      }
  }
}

void RecordBook::reset(RecordSet set, SettingsStore& main) {
  ++version_;
  const auto rows = recordRows();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (!isFollowed(rows[i])) continue;
    HeldRecord& held = sets_[index(set)][i];
    const std::string section = recordSectionName(rows[i], set);
    if (held.present) {
      held.previous = held.present;
      main.WriteString(section, kRecordOldValuesKey, recordValueText(*held.previous));
    }
    held.present.reset();
    held.direction.reset();
    main.DeleteKey(section, kRecordValuesKey);
    main.DeleteKey(section, kRecordDirectionKey);
  }
}

const HeldRecord& RecordBook::held(RecordSet set, std::string_view allTimeName) const {
  const auto rows = recordRows();
  for (std::size_t i = 0; i < rows.size(); ++i)
    if (rows[i].name == allTimeName) return held(set, i);
  throw std::invalid_argument("no record is called " + std::string(allTimeName));
}

}  // namespace nimbrel
