#pragma once
// A simulated Vantage console: the serial protocol's state machine with no
// I/O of its own. The server (or a test) hands it the bytes the program sent
// with `receive` and collects what the console sends with `poll`; time comes
// from the Clock only, so a ManualClock drives it step by step.
//
// Behaviour, as a real console:
// - After 2 minutes without a received character it is asleep: it drops what
//   it hears up to and including the first LF and answers that LF with LF CR.
// - Awake, a lone LF is answered LF CR and stops a running LOOP stream.
// - "LOOP n": ACK, then n LOOP packets, one every 2 seconds; any new command
//   stops the stream.
// - "HILOWS": ACK + 436 bytes + CRC. "GETTIME": ACK + 6 bytes + CRC.
//   "SETTIME": ACK, then 6 bytes + CRC from the program, answered ACK (the
//   console keeps that time from then on) or NAK on a bad CRC.
//   "WRD" 0x12 0x4D: ACK + station type. "TEST": "\n\rTEST\n\r".
//   Anything else: "\n\r".

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/clock.h"
#include "tools/vantage_sim/console_reading.h"
#include "tools/vantage_sim/faults.h"
#include "tools/vantage_sim/weather_model.h"

namespace nimbrel::sim {

inline constexpr std::uint8_t kAck = 0x06;
inline constexpr std::uint8_t kNak = 0x15;
inline constexpr std::uint8_t kStationTypeVantagePro = 16;
inline constexpr std::uint8_t kStationTypeVue = 17;

// Changes a LOOP packet before it goes out (a console with a missing sensor,
// or words out of range); `due` is the program time the packet is due. The
// console then computes the packet's CRC again, so the change is what a
// console would send.
using PacketRewrite = std::function<void(SystemTime due, std::span<std::uint8_t> packet)>;

struct ConsoleOptions {
  bool revb = false;  // byte 3 of a LOOP packet is the barometer trend, not 'P'
  std::uint8_t stationType = kStationTypeVantagePro;
  std::uint64_t seed = 1;  // drives both the weather and the faults
  WeatherModelOptions weather;  // its own seed is replaced by `seed`
  FaultSettings faults;
  std::size_t sentHistory = 1000;  // LOOP packets kept for `sent()`
  PacketRewrite rewrite;  // empty: packets as the weather model makes them
};

// What went out in one LOOP packet, for comparing with what a program decoded
// (`reading` is the weather model's, before any rewrite).
struct SentPacket {
  std::uint64_t sequence = 0;  // 1 for the first packet since start
  SystemTime time;             // program time the packet was due
  ConsoleReading reading;      // the values encoded
  bool corrupted = false;      // a byte was spoilt after the CRC
  std::uint64_t rainTotalClicks = 0;  // all rain since start at that moment
};

class Console {
 public:
  using Write = std::vector<std::uint8_t>;
  using SentHandler = std::function<void(const SentPacket&)>;

  explicit Console(const Clock& clock, ConsoleOptions options = {});

  // Bytes from the program, as they arrive.
  void receive(std::span<const std::uint8_t> bytes);
  // The writes due by now, in order; each is meant to go out as one write.
  std::vector<Write> poll();
  // When the next write falls due, if any is planned.
  std::optional<SystemTime> nextDue() const;

  bool asleep() const;
  bool silent() const { return isSilentAt(options_.faults, start_, clock_.now()); }
  // The console's own clock, set by SETTIME.
  SystemTime consoleTime() const { return clock_.now() + consoleOffset_; }

  const WeatherModel& model() const { return model_; }
  // The latest LOOP packets sent, oldest first (at most `sentHistory`).
  const std::deque<SentPacket>& sent() const { return sent_; }
  // Called for every LOOP packet as it is sent.
  void onSent(SentHandler handler) { sentHandler_ = std::move(handler); }

 private:
  struct ScheduledWrite {
    SystemTime due;
    Write bytes;
  };
  struct LoopStream {
    std::uint32_t remaining = 0;
    SystemTime nextDue;
  };
  struct PendingSetTime {
    SystemTime since;
    std::vector<std::uint8_t> bytes;
  };

  void receiveAwake(std::uint8_t byte, SystemTime now);
  void takeSetTimeByte(std::uint8_t byte, SystemTime now);
  void handleLine(std::string line, SystemTime now);
  void startLoop(std::string_view count, SystemTime now);
  void answerHilows(SystemTime now);
  void answerTime(SystemTime now);
  void produceDuePackets(SystemTime now);
  void sendLoopPacket(SystemTime due);
  void record(SentPacket packet);
  void schedule(SystemTime due, Write bytes);
  void answer(SystemTime now, std::span<const std::uint8_t> bytes);
  void answer(SystemTime now, std::string_view text);

  const Clock& clock_;
  ConsoleOptions options_;
  SystemTime start_;
  WeatherModel model_;
  FaultDice dice_;
  bool asleep_ = true;
  std::optional<SystemTime> lastReceived_;
  std::string line_;
  std::optional<PendingSetTime> pendingSetTime_;
  std::optional<LoopStream> stream_;
  std::deque<ScheduledWrite> queue_;  // ordered by due time
  SystemTime::duration consoleOffset_{};
  std::uint64_t sequence_ = 0;
  std::deque<SentPacket> sent_;
  SentHandler sentHandler_;
};

}  // namespace nimbrel::sim
