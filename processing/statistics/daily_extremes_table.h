#pragma once
// The quantities whose highs and lows of the day are followed, where each
// reading comes from in the live record and where each extreme is kept in the
// main settings so that a restart during the day continues it.
//
// Each extreme lives in a section of its own: "number2" holds the value (as
// the default float-to-text conversion writes it) and "number2time" the time
// of day. The outdoor temperature extremes also keep their time in "Extreme
// conditions times" ("Max temp", "Min temp"). Indoor humidity keeps only its
// times (sections "Daily high indoor hum time" / "Daily low indoor hum time",
// key "value").
//
// Quantities with a daily section but no reading in the live record yet, and
// so not followed here: grass temperature ("Daily low grass temp") and the
// THSW index ("Daily high thsw", "Daily low thsw").

#include <span>
#include <string_view>

#include "core/live_record.h"

namespace nimbrel {

enum class Quantity {
  Temperature,
  Pressure,
  WindChill,
  Humidity,
  DewPoint,
  HeatIndex,
  Gust,
  Average,
  IndoorTemp,
  IndoorHumidity,
  SoilTemp,
  Solar,
  Uv,
};

enum class Side { High, Low };

// A new day starts its highs and lows here, so that the first reading of the
// day replaces both. Percentages, which the display keeps as signed bytes,
// start their lows at 101, which no humidity reaches.
inline constexpr double kHighSentinel = -100.0;
inline constexpr double kLowSentinel = 100.0;
inline constexpr double kPercentLowSentinel = 101.0;

inline constexpr std::string_view kExtremeTimesSection = "Extreme conditions times";

struct ExtremeRow {
  Quantity quantity;
  Side side;
  std::string_view section;
  std::string_view valueKey;  // empty: the value is not kept, only its time
  std::string_view timeKey;
  std::string_view conditionsKey;  // key in "Extreme conditions times", or empty
  bool percentByte;                // a percentage kept as a signed byte
  double (*reading)(const LiveRecord&);
};

// Every followed extreme, highs before lows of the same quantity.
std::span<const ExtremeRow> extremeRows();

double sentinelOf(const ExtremeRow& row);

}  // namespace nimbrel
