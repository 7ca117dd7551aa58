#include "tools/vantage_sim/console.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "tools/vantage_sim/loop_packet.h"

namespace nimbrel::sim {
namespace {

using namespace std::chrono_literals;

constexpr auto kSleepAfter = 2min;
constexpr auto kLoopInterval = 2s;
constexpr auto kSplitGap = 200ms;       // between the two halves of a split packet
constexpr auto kGarbageDelay = 1s;      // garbage lands halfway to the next packet
constexpr auto kSetTimeTimeout = 5s;    // SETTIME data must follow the ACK by then
constexpr auto kArchiveInterval = 5min;
constexpr std::size_t kArchivePages = 2560;
constexpr std::size_t kLongestCommand = 64;
// Spoilt bytes stay clear of the header, so that framing still finds the packet.
constexpr std::size_t kFirstCorruptible = 4;
constexpr std::size_t kLastCorruptible = 94;

constexpr std::string_view kLineEnd = "\n\r";
constexpr std::string_view kWakeAnswer = "\n\r";
constexpr std::string_view kTestAnswer = "\n\rTEST\n\r";
constexpr std::string_view kStationTypeCommand = "WRD\x12\x4D";

WeatherModelOptions seededWeather(const ConsoleOptions& options) {
  WeatherModelOptions weather = options.weather;
  weather.seed = options.seed;
  return weather;
}

}  // namespace

Console::Console(const Clock& clock, ConsoleOptions options)
    : clock_(clock),
      options_(options),
      start_(clock.now()),
      model_(start_, seededWeather(options)),
      dice_(options.seed) {}

bool Console::asleep() const {
  return asleep_ || !lastReceived_ || clock_.now() - *lastReceived_ >= kSleepAfter;
}

void Console::receive(std::span<const std::uint8_t> bytes) {
  const SystemTime now = clock_.now();
  if (silent() || bytes.empty()) return;
  if (asleep()) {
    asleep_ = true;
    line_.clear();
    pendingSetTime_.reset();
  }
  lastReceived_ = now;
  auto next = bytes.begin();
  if (asleep_) {
    next = std::find(bytes.begin(), bytes.end(), std::uint8_t{'\n'});
    if (next == bytes.end()) return;  // still dozing: everything dropped
    ++next;
    asleep_ = false;
    stream_.reset();
    answer(now, kWakeAnswer);
  }
  for (; next != bytes.end(); ++next) receiveAwake(*next, now);
}

void Console::receiveAwake(std::uint8_t byte, SystemTime now) {
  if (pendingSetTime_ && now - pendingSetTime_->since > kSetTimeTimeout) pendingSetTime_.reset();
  if (pendingSetTime_) {
    takeSetTimeByte(byte, now);
  } else if (byte == '\n') {
    handleLine(std::exchange(line_, {}), now);
  } else if (line_.size() < kLongestCommand) {
    line_.push_back(static_cast<char>(byte));
  }
}

void Console::takeSetTimeByte(std::uint8_t byte, SystemTime now) {
  pendingSetTime_->bytes.push_back(byte);
  if (pendingSetTime_->bytes.size() < kConsoleTimeSize) return;
  const auto time = decodeConsoleTime(pendingSetTime_->bytes);
  pendingSetTime_.reset();
  if (!time) {
    answer(now, std::span(&kNak, 1));
    return;
  }
  const SystemTime set = fromLocalTime(time->year, time->month, time->day, time->hour, time->minute, time->second);
  consoleOffset_ = set - now;
  answer(now, std::span(&kAck, 1));
}

void Console::handleLine(std::string line, SystemTime now) {
  while (!line.empty() && line.back() == '\r') line.pop_back();
  stream_.reset();  // a lone LF or any command ends a LOOP stream
  if (line.empty()) {
    answer(now, kWakeAnswer);
  } else if (line.starts_with("LOOP ")) {
    startLoop(std::string_view(line).substr(5), now);
  } else if (line == "HILOWS") {
    answerHilows(now);
  } else if (line == "GETTIME") {
    answerTime(now);
  } else if (line == "SETTIME") {
    answer(now, std::span(&kAck, 1));
    pendingSetTime_ = PendingSetTime{now, {}};
  } else if (line == kStationTypeCommand) {
    const std::uint8_t reply[] = {kAck, options_.stationType};
    answer(now, reply);
  } else if (line == "TEST") {
    answer(now, kTestAnswer);
  } else {
    answer(now, kLineEnd);
  }
}

void Console::startLoop(std::string_view count, SystemTime now) {
  std::uint32_t packets = 0;
  const auto [end, error] = std::from_chars(count.data(), count.data() + count.size(), packets);
  if (error != std::errc() || end != count.data() + count.size() || packets == 0) {
    answer(now, kLineEnd);
    return;
  }
  answer(now, std::span(&kAck, 1));
  stream_ = LoopStream{packets, now};
}

void Console::answerHilows(SystemTime now) {
  model_.advanceTo(now);
  const HilowsBlock block = encodeHilows(model_.highsLows());
  Write reply{kAck};
  reply.insert(reply.end(), block.begin(), block.end());
  schedule(now, std::move(reply));
}

void Console::answerTime(SystemTime now) {
  const ConsoleTimeBytes time = encodeConsoleTime(toLocalTime(now + consoleOffset_));
  Write reply{kAck};
  reply.insert(reply.end(), time.begin(), time.end());
  schedule(now, std::move(reply));
}

std::vector<Console::Write> Console::poll() {
  const SystemTime now = clock_.now();
  produceDuePackets(now);
  std::vector<Write> due;
  while (!queue_.empty() && queue_.front().due <= now) {
    ScheduledWrite next = std::move(queue_.front());
    queue_.pop_front();
    if (!isSilentAt(options_.faults, start_, next.due)) due.push_back(std::move(next.bytes));
  }
  return due;
}

std::optional<SystemTime> Console::nextDue() const {
  std::optional<SystemTime> next;
  if (!queue_.empty()) next = queue_.front().due;
  if (stream_ && (!next || stream_->nextDue < *next)) next = stream_->nextDue;
  return next;
}

void Console::produceDuePackets(SystemTime now) {
  while (stream_ && stream_->nextDue <= now) {
    const SystemTime due = stream_->nextDue;
    if (isSilentAt(options_.faults, start_, due)) {
      stream_.reset();  // a console that went quiet has lost the request
      return;
    }
    sendLoopPacket(due);
    stream_->nextDue += kLoopInterval;
    if (--stream_->remaining == 0) stream_.reset();
  }
}

void Console::sendLoopPacket(SystemTime due) {
  model_.advanceTo(due);
  ConsoleReading reading = model_.reading();
  reading.nextArchiveRecord = static_cast<std::uint16_t>(((due - start_) / kArchiveInterval) % kArchivePages);
  LoopPacket packet = encodeLoopPacket(reading, options_.revb);
  if (options_.rewrite) {
    options_.rewrite(due, packet);
    appendCrc(packet);
  }

  const FaultSettings& faults = options_.faults;
  const bool corrupted = dice_.roll(faults.badCrcRate);
  const bool split = dice_.roll(faults.splitRate);
  const bool garbage = dice_.roll(faults.garbageRate);
  if (corrupted) dice_.corrupt(packet, kFirstCorruptible, kLastCorruptible);
  if (split) {
    const auto cut = static_cast<std::ptrdiff_t>(dice_.pick(1, kLoopPacketSize - 1));
    schedule(due, Write(packet.begin(), packet.begin() + cut));
    schedule(due + kSplitGap, Write(packet.begin() + cut, packet.end()));
  } else {
    schedule(due, Write(packet.begin(), packet.end()));
  }
  if (garbage) schedule(due + kGarbageDelay, dice_.garbage());
  record(SentPacket{++sequence_, due, reading, corrupted, model_.totalRainClicks()});
}

void Console::record(SentPacket packet) {
  if (sentHandler_) sentHandler_(packet);
  if (options_.sentHistory == 0) return;
  if (sent_.size() >= options_.sentHistory) sent_.pop_front();
  sent_.push_back(std::move(packet));
}

void Console::schedule(SystemTime due, Write bytes) {
  const auto later = std::upper_bound(queue_.begin(), queue_.end(), due,
                                      [](SystemTime t, const ScheduledWrite& w) { return t < w.due; });
  queue_.insert(later, ScheduledWrite{due, std::move(bytes)});
}

void Console::answer(SystemTime now, std::span<const std::uint8_t> bytes) {
  schedule(now, Write(bytes.begin(), bytes.end()));
}

void Console::answer(SystemTime now, std::string_view text) {
  schedule(now, Write(text.begin(), text.end()));
}

}  // namespace nimbrel::sim
