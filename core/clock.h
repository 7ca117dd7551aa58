#pragma once
// The program's one source of time. Every part asks a Clock for "now" instead
// of the system clock, so that tests and the demo can start at any date and
// run faster than real time.

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace nimbrel {

using SystemTime = std::chrono::system_clock::time_point;

// A moment broken down in local civil time (the time zone of the process).
struct LocalTime {
  int year = 0;
  int month = 0;   // 1-12
  int day = 0;     // 1-31
  int hour = 0;    // 0-23
  int minute = 0;  // 0-59
  int second = 0;  // 0-60
  int millisecond = 0;
  int weekday = 0;  // 0 = Sunday
  int yearday = 0;  // 0-365

  friend bool operator==(const LocalTime&, const LocalTime&) = default;
};

LocalTime toLocalTime(SystemTime t);
// Local civil time to an instant; seconds past the end of a field carry over.
SystemTime fromLocalTime(int year, int month, int day, int hour, int minute, int second);
// Parses "YYYY-MM-DD HH:MM:SS" (or "YYYY-MM-DD HH:MM") as local time.
std::optional<SystemTime> parseLocalTime(std::string_view text);
// "YYYY-MM-DD HH:MM:SS"
std::string formatLocalTime(const LocalTime& t);

class Clock {
 public:
  virtual ~Clock() = default;
  virtual SystemTime now() const = 0;
  LocalTime local() const { return toLocalTime(now()); }
};

// Program time that starts at a chosen instant and runs `speed` times faster
// than the machine's steady clock. Speed 1 from the present instant follows
// the wall clock.
class ScaledClock final : public Clock {
 public:
  explicit ScaledClock(SystemTime start = std::chrono::system_clock::now(), double speed = 1.0);
  SystemTime now() const override;
  double speed() const { return speed_; }
  // Real time that passes while the program clock advances by `programTime`.
  std::chrono::nanoseconds realDuration(std::chrono::nanoseconds programTime) const;

 private:
  SystemTime start_;
  std::chrono::steady_clock::time_point realStart_;
  double speed_;
};

// How long a device's waits last: how long a console may take to answer, the
// silence before it is woken again. Against a real station that is the
// machine's real time, whatever the program clock's speed; in a simulated
// run, where the console is simulated too, it is the program clock.
class DeviceClock {
 public:
  using time_point = std::chrono::steady_clock::time_point;
  virtual ~DeviceClock() = default;
  virtual time_point now() const = 0;
};

class RealDeviceClock final : public DeviceClock {
 public:
  time_point now() const override { return std::chrono::steady_clock::now(); }
};

// Device time that follows a program clock (a simulated run).
class ProgramDeviceClock final : public DeviceClock {
 public:
  explicit ProgramDeviceClock(const Clock& clock) : clock_(clock) {}
  time_point now() const override {
    return time_point(std::chrono::duration_cast<time_point::duration>(clock_.now().time_since_epoch()));
  }

 private:
  const Clock& clock_;
};

// A clock that moves only when told to: tests, replays and simulated runs.
class ManualClock final : public Clock {
 public:
  explicit ManualClock(SystemTime start = SystemTime{}) : now_(start) {}
  SystemTime now() const override { return now_; }
  void set(SystemTime t) { now_ = t; }
  void advance(std::chrono::nanoseconds d) { now_ += std::chrono::duration_cast<SystemTime::duration>(d); }

 private:
  SystemTime now_;
};

}  // namespace nimbrel
