#include "processing/cycle/cycle_wiring.h"

#include "processing/cycle/main_cycle.h"
#include "processing/statistics/station_statistics.h"
#include "stations/data_watchdog.h"

namespace nimbrel {

void attachStatistics(MainCycle& cycle, StationStatistics& statistics, CycleState& state, ReceiveState& receive,
                      std::uint16_t stationType, const LocalTime& now) {
  auto& first = cycle.firstHalf;
  first.rainRate.run = [&] { statistics.updateRainRate(now); };
  first.onesecondTimer.run = [&] {
    if (state.reading_received) statistics.onesecondTimer(now);
  };

  auto& second = cycle.secondHalf;
  second.dataWatchdog.run = [&receive, stationType] { Timer2Timer(receive, {.stationType = stationType}); };
  second.rollthedata.run = [&] {
    if (receive.processData && state.start_counter >= 2) statistics.rollthedata();
  };

  auto& minute = cycle.minutePass;
  minute.maxGustReadings.run = [&] { statistics.updatemaxgustreadings(now); };
  minute.tenMinuteWind.run = [&] { statistics.minuteWind(); };
}

}  // namespace nimbrel
