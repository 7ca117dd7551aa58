#pragma once
// The clientraw writer's settings, all in section "clientraw" of the main
// settings, and the counter that says on which ticks the file is written.
//
//   "writing of clientraw is enabled"  yes/no   empty: yes
//   "interval seconds"                 1-3600   empty or unusable: 10
//   "temperature two decimals"         yes/no   outdoor temperature with 2 decimals
//   "rain rate per hour"               yes/no   empty: the station's own unit (see below)
//   "use alternative icon"             yes/no   the alternative forecast icon
//   "copy to second folder"            yes/no   copy the file to "second folder" too
//   "second folder"                    a folder; the copy needs both keys
//   "copy customclientraw"             yes/no   also copy "customclientraw.txt" there
//
// Ten seconds keeps a web page that reloads the file close to live without
// making the uploader send the file more often than a slow line can carry.

#include <filesystem>
#include <optional>
#include <string_view>

namespace nimbrel {

class SettingsStore;

inline constexpr std::string_view kClientrawSection = "clientraw";
inline constexpr int kDefaultClientrawIntervalSeconds = 10;
inline constexpr int kMaxClientrawIntervalSeconds = 3600;

struct ClientrawOptions {
  bool writingEnabled = true;
  int intervalSeconds = kDefaultClientrawIntervalSeconds;
  bool temperatureTwoDecimals = false;
  // The record's `rainrate` and `maxrainrate` are per hour (the Vantage
  // console reports mm/h); the file always carries mm per minute.
  bool rainRatePerHour = false;
  bool alternativeIcon = false;
  std::optional<std::filesystem::path> secondFolder;  // empty: no second copy
  bool copyCustomClientraw = false;                   // only with a second folder
};

// `stationRateIsPerHour` is the default of "rain rate per hour": whether the
// configured station's driver stores its rain rate per hour.
ClientrawOptions readClientrawOptions(const SettingsStore& mainSettings, bool stationRateIsPerHour);

// Counts the ticks on which a reading exists and says when the file is due:
// on the first such tick, so that a page has data as soon as the station
// does, and then every `intervalSeconds` ticks.
class ClientrawInterval {
 public:
  explicit ClientrawInterval(int intervalSeconds);

  // Call once per tick; true when the file should be written now.
  bool due();
  // When the owner changes the interval; the next write keeps its place
  // unless the new interval is already over.
  void setInterval(int intervalSeconds);
  int interval() const { return interval_; }

 private:
  int interval_;
  int ticksSinceWrite_;
};

}  // namespace nimbrel
