#include "processing/records/record_book.h"

#include <cmath>
#include <stdexcept>

#include "core/number_format.h"

namespace nimbrel {
namespace {

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
