#include "stations/data_watchdog.h"

#include <algorithm>
#include <array>

namespace nimbrel {
namespace {

// Types whose every tick counts as a complete reading.
constexpr std::array<std::uint16_t, 10> kAlwaysCompleteTypes{10, 16, 32, 52, 53, 39, 40, 41, 43, 44};

bool firstFourGroups(const ReceiveState& s) {
  return s.groupFlags[0] && s.groupFlags[1] && s.groupFlags[2] && s.groupFlags[3];
}
bool noneOfFirstFour(const ReceiveState& s) {
  return !s.groupFlags[0] && !s.groupFlags[1] && !s.groupFlags[2] && !s.groupFlags[3];
}
void markComplete(ReceiveState& s) {
  s.processData = true;
  s.slowCounter = 70;
}

void wm918Groups(ReceiveState& s) {
  if (firstFourGroups(s) && s.groupFlags[4]) {
    s.processData = true;
    s.groupFlags = {false, false, false, false, true};
    s.noDataTicks = 0;
  } else {
    ++s.noDataTicks;
  }
}

void wmr918Groups(ReceiveState& s, const WatchdogInputs& in) {
  ++s.noDataTicks;
  if (firstFourGroups(s)) {
    s.processData = true;
    s.hold = false;
  }
  if (!in.wmrFirstCheck) s.groupFlags[3] = true;
  if (!in.wmrSecondCheck) s.groupFlags[0] = s.groupFlags[1] = true;
}

}  // namespace

void Timer2Timer(ReceiveState& s, const WatchdogInputs& in) {
  const auto type = in.stationType;
  const bool wmr = type == 3 || type == 8;
  if (s.noDataTicks > kNoDataTickLimit) s.noDataTicks = 200;
  if (s.slowCounter > 5000) s.slowCounter = 5000;

  if (!s.hold && type != 26) markComplete(s);
  if (type == 1) wm918Groups(s);
  if (wmr) wmr918Groups(s, in);
  const bool alwaysComplete =
      std::find(kAlwaysCompleteTypes.begin(), kAlwaysCompleteTypes.end(), type) != kAlwaysCompleteTypes.end();
  if (alwaysComplete || (type == 26 && in.oneWireReadFinished)) markComplete(s);
  if (type == 1 && noneOfFirstFour(s) && s.groupFlags[4]) ++s.noDataTicks;

  if (s.noDataTicks > kNoDataTickLimit) s.stationSilent = true;
  if (s.noDataTicks > kNoDataTickLimit && !s.busy && !s.onceOnlyReset) {
    if (wmr) {
      s.onceOnlyReset = true;
      s.hold = false;
    }
    s.noDataTicks = 0;
    s.processData = true;
    s.groupFlags[2] = true;
  }
}

}  // namespace nimbrel
