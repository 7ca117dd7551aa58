#include "processing/cycle/main_cycle.h"

#include "core/duty.h"
#include "core/text_log.h"

namespace nimbrel {
namespace {

// Station types that drive the cycle themselves.
constexpr std::uint16_t kSelfDrivenTypes[] = {100, 120};

}  // namespace

void MainCycle::run(const Duty& duty) {
  if (duty.run) runDutyWithMessage(errorLog_, duty.failureText, duty.run);
}

void MainCycle::updatetimernewnow(const LocalTime& now) {
  if (cycle_.tick_running) return;  // a long tick is never entered twice
  cycle_.tick_running = true;
  if (!cycle_.closing) {
    cycle_.current_hour = static_cast<std::uint16_t>(now.hour);
    cycle_.current_minute = static_cast<std::uint16_t>(now.minute);
    cycle_.current_second = static_cast<std::uint16_t>(now.second);
    if (cycle_.reading_received && cycle_.start_counter < 2) ++cycle_.start_counter;
    if (cycle_.first_half_on) Timer4Timer();
    if (cycle_.second_half_on) Timer42();
  }
  cycle_.tick_running = false;
}

bool MainCycle::passesMayRun() const {
  for (auto type : kSelfDrivenTypes)
    if (stationType_ == type) return false;
  return cycle_.reading_received && !cycle_.cycle_held;
}

void MainCycle::Timer4Timer() {
  run(firstHalf.stationPolling);

  // The per-minute pass: anywhere in the first 12 seconds lets a late tick
  // still catch the minute; the minute check makes it run once.
  if (cycle_.current_minute != cycle_.last_minute_done && cycle_.current_second < 12 && passesMayRun()) {
    cycle_.schedule_minute = cycle_.current_minute;
    cycle_.last_minute_done = cycle_.current_minute;
    cycle_.upload_pass_done = false;
    cycle_.minute_pass_busy = true;
    runDutyWithMessage(errorLog_, "error with do timer 1 via units ", [this] { Timer1Timer(); });
    cycle_.minute_pass_busy = false;
  }

  // The upload pass, about half a minute after the files it uploads were written.
  if (cycle_.current_second > 30 && cycle_.current_second < 45 && !cycle_.upload_pass_done) {
    cycle_.upload_pass_done = true;
    if (passesMayRun() && !cycle_.minute_pass_busy)
      runDutyWithMessage(errorLog_, "error with do timer2 via units ", [this] { Timer2Timernew(); });
  }

  run(firstHalf.rainRate);
  if (cycle_.noaa_request) {
    cycle_.noaa_request = false;
    cycle_.report_busy = true;
    run(firstHalf.climateReports);
    cycle_.report_busy = false;
  }
  realtimePosts();
  run(firstHalf.loggerStartups);
  run(firstHalf.alarms);
  run(firstHalf.customDataInternet);
  run(firstHalf.weatherReportEmail);
  run(firstHalf.ddeData);
  run(firstHalf.onesecondTimer);
}

// Each counter must exceed the interval: a 5-second interval posts every 6 ticks.
void MainCycle::realtimePosts() {
  for (RealtimePost& network : realtime) {
    if (!network.on) continue;
    if (++network.realtime_post_counter <= network.intervalSeconds) continue;
    network.realtime_post_counter = 0;
    if (cycle_.reading_received && !network.postRunning && network.post)
      runDutyWithMessage(errorLog_, network.failureText, network.post);
  }
}

void MainCycle::Timer42() {
  run(secondHalf.campbellPolling);
  if (cycle_.watchdog_on && !receive_.indicatorLime) run(secondHalf.dataWatchdog);
  receive_.indicatorLime = false;  // the data light stays on for one tick
  run(secondHalf.tcpDataSend);
  if (++cycle_.custom_data_counter >= 7) {
    cycle_.custom_data_counter = 0;
    run(secondHalf.customDataFile);
  }
  if (cycle_.reading_received) {
    run(secondHalf.clientraw);
    run(secondHalf.customClientraw);
    run(secondHalf.clientrawExtra);
    run(secondHalf.clientrawHour);
    run(secondHalf.clientrawDaily);
  }
  run(secondHalf.customWebPages);
  run(secondHalf.customLogFile);
  run(secondHalf.rollthedata);
  run(secondHalf.rollthedata2);
  run(secondHalf.movieTimeStamp);
  run(secondHalf.realTimeGraphs);
  run(secondHalf.webcamStrings);
  run(secondHalf.webcamAnimation);
}

void MainCycle::Timer1Timer() {
  ++minutePasses_;
  const MinutePassDuties& m = minutePass;
  for (const Duty* duty :
       {&m.stationFiles,    &m.tideCheck,      &m.maxGustReadings,    &m.redrawWind,     &m.stationMinute,
        &m.setStationClock, &m.newLabels,      &m.housekeeping,       &m.daylightSaving, &m.speech,
        &m.speechClick,     &m.lightning,      &m.strikeWarning,      &m.metarUpdate,    &m.screenRedraw,
        &m.loggerMerge,     &m.energy,         &m.logfile,            &m.csvLogfile,     &m.customLogfile,
        &m.extraLargeDataFile, &m.graphDataFiles, &m.databaseHandOver, &m.metarSummary,  &m.graphData,
        &m.records,         &m.logTenMinutes,  &m.anythingWeather,    &m.metar,          &m.synop,
        &m.animatedWebcam,  &m.forecastIcon,   &m.weatherIcons,       &m.tenMinuteWind,  &m.scheduledJobs,
        &m.alarmEmail,      &m.warnings,       &m.flushSettings})
    run(*duty);
}

void MainCycle::Timer2Timernew() {
  ++uploadPasses_;
  if (uploadPass) uploadPass();
}

}  // namespace nimbrel
