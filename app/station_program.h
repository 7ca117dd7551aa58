#pragma once
// The running station program: owns the settings stores, the live record,
// the receive and cycle state, the statistics and the station link, and
// wires them into the main cycle. Everything runs on one io_context thread.

#include <asio.hpp>

#include <filesystem>
#include <memory>

#include "app/program_folders.h"
#include "core/clock.h"
#include "core/instance.h"
#include "core/live_record.h"
#include "core/text_log.h"
#include "core/unit_settings.h"
#include "datafiles/data_file_writers.h"
#include "processing/cycle/cycle_state.h"
#include "processing/rollover/housekeeping.h"
#include "processing/cycle/main_cycle.h"
#include "processing/statistics/station_statistics.h"
#include "publish/pages/background_fills.h"
#include "publish/pages/page_jobs.h"
#include "stations/byte_link.h"
#include "stations/receive_state.h"
#include "stations/station_types.h"
#include "stations/vantage_driver.h"

namespace nimbrel {

class StationProgram {
 public:
  StationProgram(asio::io_context& io, const Clock& clock, const std::filesystem::path& programFolder);
  ~StationProgram();

  // Start: clear the companions' exit flags, load today's values, open the
  // port. The tick is driven from outside through tick().
  void start();
  // Before start(): read the station through `link` instead of the port the
  // settings name (a simulated console in the same process), with the
  // console's waits measured on `deviceTime` (the program clock, for a
  // console that lives in program time).
  void useLink(std::unique_ptr<ByteLink> link, const DeviceClock& deviceTime) {
    link_ = std::move(link);
    deviceTime_ = &deviceTime;
  }
  void tick(const LocalTime& now);
  // Stop: raise the companions' exit flags, write the rain storage and the
  // records, flush the settings.
  void exit1click();

  const LiveRecord& record() const { return record_; }
  const ProgramFolders& folders() const { return folders_; }
  std::uint16_t stationType() const { return station_.code; }
  const VantageDriver* vantage() const { return vantage_.get(); }
  const StationStatistics& statistics() const { return statistics_; }
  const MainCycle& cycle() const { return cycle_; }
  const DataFileWriters& dataFiles() const { return dataFiles_; }
  const BackgroundFills& pageFills() const { return pageFills_; }
  // Simulated time: pages are filled within the tick that finds them due.
  void fillPagesOnTheTick() { pageFills_.fillOnTheCallersThread(); }
  TextLog& errorLog() { return errorLog_; }
  SettingsStore& settings() { return stores_.main; }

 private:
  void openStationLink();
  std::unique_ptr<ByteLink> configuredLink();
  void wireCycle();
  void onReading();
  void saveRecords();
  void fillDuePages();

  asio::io_context& io_;
  const Clock& clock_;
  TextLog errorLog_;
  SettingsStores stores_;
  ProgramFolders folders_;
  TextLog stationLog_;
  UnitSettings units_;
  StationSelection station_;

  LiveRecord record_;
  ReceiveState receive_;
  CycleState cycleState_;
  MainCycle cycle_;
  StationStatistics statistics_;
  Housekeeping housekeeping_;
  DataFileWriters dataFiles_;
  std::unique_ptr<ByteLink> link_;
  const DeviceClock* deviceTime_ = nullptr;  // null: real time
  std::unique_ptr<VantageDriver> vantage_;
  LocalTime lastTick_;
  std::string recordsBackupText_;
  bool stopped_ = false;
  PageSchedule pages_;
  BackgroundFills pageFills_;  // last: its worker ends before the state it reads goes
};

}  // namespace nimbrel
