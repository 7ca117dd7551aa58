#pragma once
// The Vantage console driver: wakes the console, asks for LOOP packets
// ("LOOP 55" and a line feed, renewed when the 55 packets are used up), reads
// the daily highs block (HILOWS), sets and reads the console clock, and routes
// every received byte either to the command dialogue or to the live framing.
//
// Wake-up: a line feed, answered by LF CR; up to three tries, two seconds
// apart. A console that then still says nothing is tried again five seconds
// later; the outage is logged once. A streaming console that says nothing for
// six seconds is woken again.
//
// Those waits are the console's and are measured on the device clock: real
// time against a real console, at whatever speed the program clock runs, so
// a console that answers in a fifth of a second is read at 60 times real
// speed as well as at 1. The driver looks at them once per tick.

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/clock.h"
#include "core/live_record.h"
#include "stations/receive_state.h"
#include "stations/vantage_framing.h"
#include "stations/vantage_options.h"

namespace nimbrel {

class ByteLink;
class TextLog;

enum class VantageTransport { Serial, Tcp };

struct VantageCounters {
  std::uint64_t packetsDecoded = 0;
  std::uint64_t packetsRejected = 0;  // bad CRC
  std::uint64_t wakeUps = 0;
};

class VantageDriver {
 public:
  static constexpr int kPacketsPerRequest = 55;
  static constexpr std::chrono::seconds kSilenceBeforeWake{6};
  static constexpr std::chrono::seconds kWakeAnswerWait{2};
  static constexpr std::chrono::seconds kRestAfterFailedWake{5};
  static constexpr int kHilowsEveryTicks = 600;

  // `deviceClock` null: real time.
  VantageDriver(ReceiveState& state, LiveRecord& record, VantageOptions options, ByteLink* link,
                TextLog& stationLog, VantageTransport transport = VantageTransport::Serial,
                const DeviceClock* deviceClock = nullptr);

  // A receive event from the link.
  void receive(std::span<const std::uint8_t> bytes, const LocalTime& now);
  // Station polling, once per tick of the main cycle.
  void poll(const LocalTime& now);

  // Sets the console clock to `now` at the next chance.
  void checkvptimecount(const LocalTime& now);
  void requestConsoleTime() { pending_.getTime = true; }
  void requestHilows() { pending_.hilows = true; }

  // Called after every good LOOP packet: the cycle's per-reading routine.
  std::function<void()> onReading;
  // The statistics' maximum gust of today, and where a console high goes.
  std::function<double()> currentMaxGust;
  std::function<void(double knots)> onConsoleDailyGust;

  const VantageCounters& counters() const { return counters_; }
  std::optional<LocalTime> consoleTime() const { return consoleTime_; }
  const VantageOptions& options() const { return options_; }

 private:
  enum class Phase { Idle, Waking, Hilows, SetTimeCommand, SetTimeData, GetTime, Streaming };
  struct Pending {
    bool hilows = true;  // read the console's highs once at start
    bool getTime = false;
    std::optional<LocalTime> setTime;
  };

  void CommPortDriverReceiveData(std::span<const std::uint8_t> bytes);
  void decodeLoopFrame();
  void decodeBlock();
  void startWake();
  void afterWake();
  void enter(Phase phase, DeviceClock::time_point::duration timeout);
  void onTimeout();
  void send(std::string_view text);
  void send(std::span<const std::uint8_t> bytes);
  bool replyEndsWith(std::string_view tail) const;
  void finishGetTime();

  ReceiveState& state_;
  LiveRecord& record_;
  VantageOptions options_;
  ByteLink* link_;
  TextLog& stationLog_;
  VantageTransport transport_;
  VantageFrameHandlers frameHandlers_;

  const DeviceClock& device_;
  Phase phase_ = Phase::Idle;
  DeviceClock::time_point phaseDeadline_{};
  DeviceClock::time_point restUntil_{};
  DeviceClock::time_point lastHeard_{};
  int wakeTries_ = 0;
  bool outageLogged_ = false;
  int ticksSinceHilows_ = 0;
  std::uint32_t streamBytes_ = 0;
  std::vector<std::uint8_t> reply_;
  Pending pending_;
  LocalTime now_;
  std::optional<LocalTime> consoleTime_;
  VantageCounters counters_;
};

}  // namespace nimbrel
