#pragma once
// The one-second tick and its passes. Every periodic duty of the program
// hangs here, in a fixed order; each slot is filled by the part that owns the
// duty (an empty slot does nothing) and runs through the duty wrapper with
// its own failure text, so one failing duty never stops the rest.
//
//   updatetimernewnow   the tick: first half, then second half
//   Timer4Timer         first half: polling, per-minute pass, upload pass,
//                       rain rate, reports, real-time posts, alarms, per-reading work
//   Timer42             second half: data watchdog, data files, spike filter, ...
//   Timer1Timer         the per-minute pass (first 12 seconds of a new minute, once)
//   Timer2Timernew      the upload pass (once between seconds 31 and 44)

#include <array>
#include <cstdint>
#include <functional>
#include <string_view>

#include "core/clock.h"
#include "processing/cycle/cycle_state.h"
#include "stations/receive_state.h"

namespace nimbrel {

class TextLog;

struct Duty {
  explicit Duty(std::string_view text) : failureText(text) {}
  std::string_view failureText;
  std::function<void()> run;  // empty: a slot not filled yet
};

// First half, in order.
struct FirstHalfDuties {
  Duty stationPolling{"error with station polling "};
  // (the per-minute and upload passes run here, see Timer4Timer)
  Duty rainRate{"error with rain rate "};
  Duty climateReports{"error with donoaareports  "};
  // (the real-time posts run here)
  Duty loggerStartups{"error with logger start up "};
  Duty alarms{"error with warnings "};
  Duty customDataInternet{"error with updateclientinternet  "};
  Duty weatherReportEmail{"error with weather report email "};
  Duty ddeData{"error with send dde data  "};
  Duty onesecondTimer{"error with onesecondtimer via units "};
};

// Second half, in order.
struct SecondHalfDuties {
  Duty campbellPolling{"error with campbell polling "};
  Duty dataWatchdog{"error with mainorm.timer2timer  "};
  Duty tcpDataSend{"error with tcp data send "};
  Duty customDataFile{"error with update clientcustomnow  "};  // every 7 ticks
  Duty clientraw{"error with create clientraw file  "};
  Duty customClientraw{"error with create customclientraw file  "};
  Duty clientrawExtra{"error with clientrw extra "};
  Duty clientrawHour{"error with clientrw hour "};
  Duty clientrawDaily{"error update clientrawdaily "};
  Duty customWebPages{"error with update custom web pages "};
  Duty customLogFile{"error with update customlogfile  "};
  Duty rollthedata{"error with rollthedata1  "};
  Duty rollthedata2{"error with rollthedata2  "};
  Duty movieTimeStamp{"error with movie time stamp "};
  Duty realTimeGraphs{"error with update real time graphs  "};
  Duty webcamStrings{"error with webcamcustomstring  "};
  Duty webcamAnimation{"error with doanimatewebcamnow  "};
};

// The per-minute pass, in order.
struct MinutePassDuties {
  Duty stationFiles{"error with station files minute "};
  Duty tideCheck{"error with check for tide "};
  Duty maxGustReadings{"error with update max gust readings "};
  Duty redrawWind{"error with redraw wind "};
  Duty stationMinute{"error with update station minute "};
  Duty setStationClock{"error with set station clock "};
  Duty newLabels{"error with donewlabels2"};
  Duty housekeeping{"error with house keeping "};
  Duty daylightSaving{"error with daylight saving check "};
  Duty speech{"error with speech "};
  Duty speechClick{"error with speech click "};
  Duty lightning{"error with lightnning 2000 "};
  Duty strikeWarning{"error with checkstrikewarning "};
  Duty metarUpdate{"error with update from metar "};
  Duty screenRedraw{"error with screen redraw "};
  Duty loggerMerge{"error with logger merge "};
  Duty energy{"error with update energy "};
  Duty logfile{"error with logfile creation "};
  Duty csvLogfile{"error with CSV logfile creation "};
  Duty customLogfile{"error with custom logfile creation "};
  Duty extraLargeDataFile{"error with extra large data file creation  "};
  Duty graphDataFiles{"error with save data files "};
  Duty databaseHandOver{"error with qz database "};
  Duty metarSummary{"erreor with metar in summary "};
  Duty graphData{"error with graph data "};
  Duty records{"error with save records to ini file "};
  Duty logTenMinutes{"error with log 10 min file "};
  Duty anythingWeather{"error with anything weather logfile "};
  Duty metar{"error with metar now "};
  Duty synop{"error with synop "};
  Duty animatedWebcam{"error with updateanimated webcam now timer 1 "};
  Duty forecastIcon{"error with update forecast icon  "};
  Duty weatherIcons{"error with weather icons "};
  Duty tenMinuteWind{"error with 10 minute wind "};
  Duty scheduledJobs{"error with scheduled jobs "};
  Duty alarmEmail{"error with weatherwarningemail "};
  Duty warnings{"error with timerwarning "};
  Duty flushSettings{"error with flush settings "};
};

// A network posted every N seconds (Weather Underground real time, WeatherBug).
struct RealtimePost {
  explicit RealtimePost(std::string_view text) : failureText(text) {}
  std::string_view failureText;
  bool on = false;
  std::uint16_t intervalSeconds = 0;
  std::uint16_t realtime_post_counter = 0;
  bool postRunning = false;
  std::function<void()> post;
};

class MainCycle {
 public:
  MainCycle(CycleState& cycle, ReceiveState& receive, TextLog& errorLog, std::uint16_t stationType)
      : cycle_(cycle), receive_(receive), errorLog_(errorLog), stationType_(stationType) {}

  FirstHalfDuties firstHalf;
  SecondHalfDuties secondHalf;
  MinutePassDuties minutePass;
  std::function<void()> uploadPass;  // Timer2Timernew: uploads, network posts, APRS
  std::array<RealtimePost, 2> realtime{RealtimePost{"error with wunderground real time "},
                                       RealtimePost{"error with weatherbug  "}};

  void updatetimernewnow(const LocalTime& now);
  void Timer4Timer();
  void Timer42();
  void Timer1Timer();
  void Timer2Timernew();

  std::uint64_t minutePasses() const { return minutePasses_; }
  std::uint64_t uploadPasses() const { return uploadPasses_; }

 private:
  bool passesMayRun() const;
  void run(const Duty& duty);
  void realtimePosts();

  CycleState& cycle_;
  ReceiveState& receive_;
  TextLog& errorLog_;
  std::uint16_t stationType_;
  std::uint64_t minutePasses_ = 0;
  std::uint64_t uploadPasses_ = 0;
};

}  // namespace nimbrel
