#pragma once
// The main cycle's own flags and counters. The data watchdog's values that
// the cycle reads live in the receive state: `data_complete` is its
// process-data flag, `waiting_for_set` its hold flag, `no_data_ticks` its
// no-data ticks, `data_wait_ticks` its slow counter and `sensor_group_seen`
// its group flags.

#include <cstdint>

namespace nimbrel {

inline constexpr std::uint16_t kNoMinuteYet = 0xFFFF;

struct CycleState {
  std::uint16_t current_hour = 0;
  std::uint16_t current_minute = 0;
  std::uint16_t current_second = 0;
  std::uint16_t last_minute_done = kNoMinuteYet;
  std::uint16_t schedule_minute = kNoMinuteYet;  // the minute the schedule checks read
  bool minute_pass_busy = false;
  bool upload_pass_done = false;
  bool noaa_request = false;
  bool report_busy = false;
  bool closing = false;
  bool cycle_held = false;
  bool first_half_on = true;
  bool second_half_on = true;
  bool watchdog_on = true;
  bool tick_running = false;      // the tick timer is "disabled" while a tick runs
  bool reading_received = false;  // a reading has arrived since start
  std::uint16_t start_counter = 0;  // ticks with a reading, counted up to 2
  std::uint16_t custom_data_counter = 0;
};

}  // namespace nimbrel
