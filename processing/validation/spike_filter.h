#pragma once
// The spike filter of the short-term series. The series feed the minute log,
// the graphs and the averages, so one wild sample (a radio packet with a
// flipped bit, a sensor that reconnects) would show for an hour. Each tick a
// new sample that jumps too far from the previous accepted one is refused and
// counted; a run of refusals longer than the timeout means the level really
// changed, and the present value is taken.
//
// Calling rules (the main cycle's business): `rollthedata` runs once per tick
// in the second half of the tick, and only once the data watchdog has set
// `data_complete` and the cycle's start counter has reached 2, so that a
// station that has not yet sent all its groups cannot seed the series with
// zeros. Nothing is saved: after a restart the first call seeds the series
// again from the values of that moment.

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/live_record.h"
#include "core/settings_store.h"
#include "core/text_log.h"

namespace nimbrel {

// Largest accepted change from one tick's sample to the next, in the record's
// internal units, section "New readings limits". The defaults are what an
// owner expects from a station that reports every few seconds: a mean wind
// does not rise by 20 knots (a calm to a near gale) between two samples, a
// gust may jump further (30 knots); air temperature changes by well under
// 5 degrees C even when a front or a shower passes; humidity can swing 20 %
// when rain starts, but not more; the barometer moves a few hPa an hour at
// most, so 10 hPa in one step is always a fault. Ten refused samples in a
// row are ten seconds or more of a steady new level: long enough to skip a
// burst of bad packets, short enough that a real change (a sensor moved, a
// front) shows at once.
struct SpikeLimits {
  std::int16_t speed = 20;    // "speed spike", knots
  std::int16_t gust = 30;     // "gust spike", knots
  std::int16_t temp = 5;      // "temp spike", degrees C
  std::int16_t hum = 20;      // "hum spike", percent
  std::int16_t baro = 10;     // "baro spike", hPa
  std::int16_t timeout = 10;  // "timeout spike", refused samples before the new level is taken

  friend bool operator==(const SpikeLimits&, const SpikeLimits&) = default;
};

// Reads the limits. An empty, non-numeric (decimals included), negative or
// out-of-range (above 32767) value keeps that limit's default: a negative
// change limit would refuse every sample and a negative timeout would take
// every one, neither of which an owner means. 0 is kept as written: it
// freezes the series until the timeout takes the present value.
SpikeLimits readSpikeLimits(const SettingsStore& settings);

// Refused samples per filtered quantity since that quantity's last timeout.
// An accepted sample does not clear them, so scattered spikes add up too.
struct SpikeCounts {
  std::uint16_t speed = 0;
  std::uint16_t gust = 0;
  std::uint16_t temperature = 0;
  std::uint16_t humidity = 0;
  std::uint16_t barometer = 0;

  friend bool operator==(const SpikeCounts&, const SpikeCounts&) = default;
};

class ShortTermSeries {
 public:
  static constexpr std::size_t kSlots = 61;
  static constexpr std::size_t kNewest = kSlots - 1;  // slot 0 is the oldest

  template <class T>
  using Series = std::array<T, kSlots>;

  explicit ShortTermSeries(const SpikeLimits& limits = {}) : limits_(limits) {}

  // Takes this tick's sample. The first call fills every slot of every
  // series with the present values; each later call shifts the series one
  // slot towards the oldest and files the new sample unless it is a spike.
  // `shortTermRain` is the rain of the short-term series in mm, after the
  // station's rain correction. Wind spikes and wind timeouts are written to
  // `stationLog`, the log of received data.
  void rollthedata(const LiveRecord& record, double shortTermRain, TextLog& stationLog);

  // When the owner changes the limits; the series and counters are kept.
  void setLimits(const SpikeLimits& limits) { limits_ = limits; }
  const SpikeLimits& limits() const { return limits_; }
  bool seeded() const { return seeded_; }
  const SpikeCounts& spikeCounts() const { return counts_; }

  // The newest accepted value of each series.
  double latestSpeed() const { return speed_[kNewest]; }
  double latestGust() const { return gust_[kNewest]; }
  std::uint16_t latestDirection() const { return direction_[kNewest]; }
  double latestTemperature() const { return temperature_[kNewest]; }
  std::int16_t latestHumidity() const { return humidity_[kNewest]; }
  double latestBarometer() const { return barometer_[kNewest]; }
  double latestRain() const { return rain_[kNewest]; }

  // Whole series, index 0 the oldest, for the graphs and the averages.
  const Series<double>& speed() const { return speed_; }
  const Series<double>& gust() const { return gust_; }
  const Series<std::uint16_t>& direction() const { return direction_; }
  const Series<double>& temperature() const { return temperature_; }
  const Series<std::int16_t>& humidity() const { return humidity_; }
  const Series<double>& barometer() const { return barometer_; }
  const Series<double>& rain() const { return rain_; }

 private:
  void seed(const LiveRecord& record, double shortTermRain);
  void shiftAll();
  void fileSamples(const LiveRecord& record, double shortTermRain, TextLog& stationLog);
  void applyTimeouts(const LiveRecord& record, TextLog& stationLog);

  SpikeLimits limits_;
  SpikeCounts counts_;
  bool seeded_ = false;
  Series<double> speed_{};
  Series<double> gust_{};
  Series<std::uint16_t> direction_{};
  Series<double> temperature_{};
  Series<std::int16_t> humidity_{};
  Series<double> barometer_{};
  Series<double> rain_{};
};

}  // namespace nimbrel
