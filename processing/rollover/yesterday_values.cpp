#include "processing/rollover/yesterday_values.h"

#include <array>
#include <string>
#include <string_view>

#include "core/number_format.h"

namespace nimbrel {
namespace {

constexpr std::string_view kValueKey = "number2";
constexpr std::string_view kTimeKey = "number2time";
constexpr std::string_view kYesterdaySuffix = " yest";

struct UnfollowedExtreme {
  std::string_view section;
  Side side;
};

constexpr std::array<UnfollowedExtreme, 3> kUnfollowed{{
    {"Daily low grass temp", Side::Low},
    {"Daily high thsw", Side::High},
    {"Daily low thsw", Side::Low},
}};

void copyToYesterday(std::string_view section, SettingsStore& main) {
  const std::string yesterday = std::string(section) + std::string(kYesterdaySuffix);
  main.WriteString(yesterday, kValueKey, main.ReadString(section, kValueKey));
  main.WriteString(yesterday, kTimeKey, main.ReadString(section, kTimeKey));
}

}  // namespace

void keepExtremesAsYesterday(const DailyExtremes& extremes, SettingsStore& main) {
  for (const ExtremeRow& row : extremeRows())
    if (row.valueKey == kValueKey) copyToYesterday(row.section, main);
  for (const UnfollowedExtreme& extreme : kUnfollowed) copyToYesterday(extreme.section, main);
  main.WriteString("Daily high temperature yest", "number2actual", floatText(extremes.high(Quantity::Temperature)));
}

void resetUnfollowedExtremes(SettingsStore& main) {
  for (const UnfollowedExtreme& extreme : kUnfollowed) {
    const double sentinel = extreme.side == Side::High ? kHighSentinel : kLowSentinel;
    main.WriteString(extreme.section, kValueKey, floatText(sentinel));
    main.WriteString(extreme.section, kTimeKey, "");
  }
}

void resetDailySolarSums(SettingsStore& main) {
  main.WriteString("Daily solar", "value", "0");
  main.WriteString("Daily solar count", "value", "0");
}

}  // namespace nimbrel
