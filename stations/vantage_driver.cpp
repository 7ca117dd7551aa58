#include "stations/vantage_driver.h"

#include <algorithm>
#include <array>

#include "core/text_log.h"
#include "stations/byte_link.h"
#include "stations/crc_ccitt.h"
#include "stations/vantage_loop.h"

namespace nimbrel {
namespace {

constexpr std::uint8_t kAck = 0x06;
constexpr std::uint8_t kNak = 0x15;
constexpr std::uint32_t kStreamBytes = VantageDriver::kPacketsPerRequest * kLoopFrameLength + 1;
constexpr int kWakeTries = 3;
constexpr std::chrono::seconds kCommandAnswerWait{3};
constexpr std::chrono::seconds kBlockAnswerWait{5};
// Streaming has no deadline of its own: the silence check ends it.
constexpr std::chrono::hours kNoDeadline{24 * 365};

const DeviceClock& realTimeUnlessGiven(const DeviceClock* given) {
  static const RealDeviceClock realTime;
  return given ? *given : realTime;
}

}  // namespace

VantageDriver::VantageDriver(ReceiveState& state, LiveRecord& record, VantageOptions options,
                             ByteLink* link, TextLog& stationLog, VantageTransport transport,
                             const DeviceClock* deviceClock)
    : state_(state),
      record_(record),
      options_(options),
      link_(link),
      stationLog_(stationLog),
      transport_(transport),
      device_(realTimeUnlessGiven(deviceClock)) {
  state_.headerVariant = options_.revb;
  state_.rawLogging = options_.rawLogging;
  frameHandlers_.onLoopFrame = [this] { decodeLoopFrame(); };
  frameHandlers_.onGoodBlock = [this] { decodeBlock(); };
}

void VantageDriver::receive(std::span<const std::uint8_t> bytes, const LocalTime& now) {
  now_ = now;
  lastHeard_ = device_.now();
  switch (phase_) {
    case Phase::Idle:
    case Phase::Streaming:
    case Phase::Hilows:
      if (phase_ == Phase::Streaming) streamBytes_ += static_cast<std::uint32_t>(bytes.size());
      commportdriverReceiveData31(state_, bytes, frameHandlers_, &stationLog_);
      if (phase_ == Phase::Hilows && !state_.blockMode) phase_ = Phase::Idle;
      if (phase_ == Phase::Streaming && streamBytes_ >= kStreamBytes) phase_ = Phase::Idle;
      return;
    default:
      CommPortDriverReceiveData(bytes);
  }
}

// Command dialogues: collects the console's answer and moves the dialogue on.
void VantageDriver::CommPortDriverReceiveData(std::span<const std::uint8_t> bytes) {
  state_.noDataTicks = 0;
  state_.dataReceived = true;
  state_.lastChunkLength = static_cast<std::uint16_t>(bytes.size());
  reply_.insert(reply_.end(), bytes.begin(), bytes.end());
  switch (phase_) {
    case Phase::Waking:
      if (replyEndsWith("\n\r")) afterWake();
      break;
    case Phase::SetTimeCommand:
      if (!reply_.empty() && reply_.back() == kAck) {
        const LocalTime t = *pending_.setTime;
        std::array<std::uint8_t, 8> data{
            static_cast<std::uint8_t>(t.second), static_cast<std::uint8_t>(t.minute),
            static_cast<std::uint8_t>(t.hour),   static_cast<std::uint8_t>(t.day),
            static_cast<std::uint8_t>(t.month),  static_cast<std::uint8_t>(t.year - 1900)};
        const std::uint16_t crc = crcCcitt(std::span<const std::uint8_t>(data).first(6));
        data[6] = static_cast<std::uint8_t>(crc >> 8);
        data[7] = static_cast<std::uint8_t>(crc & 0xFF);
        stationLog_.write("sending  time to VP console");
        reply_.clear();
        send(data);
        enter(Phase::SetTimeData, kCommandAnswerWait);
      }
      break;
    case Phase::SetTimeData:
      if (!reply_.empty() && (reply_.back() == kAck || reply_.back() == kNak)) {
        if (reply_.back() == kNak) stationLog_.write("the console refused the time it was sent");
        pending_.setTime.reset();
        phase_ = Phase::Idle;
      }
      break;
    case Phase::GetTime:
      finishGetTime();
      break;
    default:
      break;
  }
}

void VantageDriver::finishGetTime() {
  const auto ack = std::find(reply_.begin(), reply_.end(), kAck);
  if (ack == reply_.end() || reply_.end() - ack < 9) return;
  const std::span<const std::uint8_t> data(&*(ack + 1), 8);
  pending_.getTime = false;
  phase_ = Phase::Idle;
  if (crcCcitt(data) != 0) {
    stationLog_.write("console time answer failed its CRC");
    return;
  }
  LocalTime t;
  t.second = data[0];
  t.minute = data[1];
  t.hour = data[2];
  t.day = data[3];
  t.month = data[4];
  t.year = data[5] + 1900;
  consoleTime_ = t;
}

void VantageDriver::decodeLoopFrame() {
  TextLog* rawLog = options_.rawLogging ? &stationLog_ : nullptr;
  const bool good = transport_ == VantageTransport::Tcp
                        ? vantageintcpip(state_, record_, options_, rawLog)
                        : vantagein(state_, record_, options_, rawLog);
  if (!good) {
    ++counters_.packetsRejected;
    return;
  }
  ++counters_.packetsDecoded;
  // A LOOP packet has no gust: its wind speed is the console's latest
  // 2.5-second sample, and the minute's gust is the highest of those.
  record_.windgust = record_.windspeed;
  if (onReading) onReading();
}

void VantageDriver::decodeBlock() {
  if (!currentMaxGust || !onConsoleDailyGust) return;
  TextLog* rawLog = options_.rawLogging ? &stationLog_ : nullptr;
  if (auto gust = consoleDailyMaxGust(state_, options_, currentMaxGust(), now_.hour, rawLog))
    onConsoleDailyGust(*gust);
}

void VantageDriver::poll(const LocalTime& now) {
  now_ = now;
  if (state_.noDataTicks < 0xFFFF) ++state_.noDataTicks;
  if (++ticksSinceHilows_ >= kHilowsEveryTicks) {
    ticksSinceHilows_ = 0;
    pending_.hilows = true;
  }
  const auto deviceNow = device_.now();
  if (deviceNow < restUntil_) return;
  switch (phase_) {
    case Phase::Idle:
      startWake();
      break;
    case Phase::Streaming:
      if (deviceNow - lastHeard_ >= kSilenceBeforeWake) {
        const auto silent = std::chrono::duration_cast<std::chrono::seconds>(deviceNow - lastHeard_);
        stationLog_.write("no data from the Vantage console for " + std::to_string(silent.count()) +
                          " seconds, waking it again");
        startWake();
      }
      break;
    default:
      if (deviceNow >= phaseDeadline_) onTimeout();
  }
}

void VantageDriver::checkvptimecount(const LocalTime& now) { pending_.setTime = now; }

void VantageDriver::startWake() {
  reply_.clear();
  wakeTries_ = 1;
  ++counters_.wakeUps;
  send("\n");
  enter(Phase::Waking, kWakeAnswerWait);
}

void VantageDriver::afterWake() {
  if (outageLogged_) stationLog_.write("the Vantage console answers again");
  outageLogged_ = false;
  reply_.clear();
  if (pending_.hilows) {
    pending_.hilows = false;
    beginBlock(state_);
    send("HILOWS\n");
    enter(Phase::Hilows, kBlockAnswerWait);
  } else if (pending_.setTime) {
    stationLog_.write("sending SETTIME  to VP console");
    send("SETTIME\n");
    enter(Phase::SetTimeCommand, kCommandAnswerWait);
  } else if (pending_.getTime) {
    send("GETTIME\n");
    enter(Phase::GetTime, kCommandAnswerWait);
  } else {
    // "LOOP 55" and a line feed, the last four bytes one at a time.
    streamBytes_ = 0;
    send("LOOP");
    for (std::uint8_t b : {0x20, 0x35, 0x35, 0x0A}) send(std::span<const std::uint8_t>(&b, 1));
    enter(Phase::Streaming, kNoDeadline);
    lastHeard_ = device_.now();  // the silence is counted from the request
  }
}

void VantageDriver::enter(Phase phase, DeviceClock::time_point::duration timeout) {
  phase_ = phase;
  phaseDeadline_ = device_.now() + timeout;
}

void VantageDriver::onTimeout() {
  switch (phase_) {
    case Phase::Waking:
      if (wakeTries_ < kWakeTries) {
        ++wakeTries_;
        reply_.clear();
        send("\n");
        enter(Phase::Waking, kWakeAnswerWait);
        return;
      }
      if (!outageLogged_)
        stationLog_.write("the Vantage console" + (link_ ? " on " + link_->describe() : std::string()) +
                          " does not answer the wake-up call; trying again");
      outageLogged_ = true;
      restUntil_ = device_.now() + kRestAfterFailedWake;
      break;
    case Phase::Hilows:
      state_.blockMode = false;
      state_.writeIndex = 0;
      break;
    case Phase::SetTimeCommand:
    case Phase::SetTimeData:
      stationLog_.write("no answer from the console to SETTIME");
      pending_.setTime.reset();
      break;
    case Phase::GetTime:
      stationLog_.write("no answer from the console to GETTIME");
      pending_.getTime = false;
      break;
    default:
      break;
  }
  phase_ = Phase::Idle;
}

void VantageDriver::send(std::string_view text) {
  if (link_) link_->send(text);
}

void VantageDriver::send(std::span<const std::uint8_t> bytes) {
  if (link_) link_->send(bytes);
}

bool VantageDriver::replyEndsWith(std::string_view tail) const {
  if (reply_.size() < tail.size()) return false;
  return std::equal(tail.begin(), tail.end(), reply_.end() - static_cast<std::ptrdiff_t>(tail.size()));
}

}  // namespace nimbrel
