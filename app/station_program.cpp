#include "app/station_program.h"

#include <fmt/format.h>

#include <utility>

#include "core/duty.h"
#include "core/exit_flags.h"
#include "processing/cycle/cycle_wiring.h"
#include "stations/port_settings.h"
#include "stations/serial_link.h"
#include "stations/tcp_link.h"
#include "stations/vantage_options.h"

namespace nimbrel {
namespace {

constexpr const char* kStationLogName = "stationlog.txt";

TextLog& echoing(TextLog& log) {
  log.echoToTerminal(true);
  return log;
}

}  // namespace

StationProgram::StationProgram(asio::io_context& io, const Clock& clock, const std::filesystem::path& programFolder)
    : io_(io),
      clock_(clock),
      errorLog_(programFolder / kProgramErrorLogName, clock),
      stores_(programFolder, echoing(errorLog_)),
      folders_(prepareFolders(programFolder, stores_.main, errorLog_)),
      stationLog_(folders_.logs / kStationLogName, clock),
      units_(loadsettings(stores_.main)),
      station_(selectStation(stores_.main)),
      cycle_(cycleState_, receive_, errorLog_, station_.code),
      statistics_(record_, stores_.main, units_, stationLog_),
      housekeeping_({record_, statistics_.extremes(), statistics_.rain(), stores_.main, cycleState_, units_,
                     stationLog_, errorLog_,
                     HousekeepingFiles{programFolder, programFolder / stores_.names.mainSettings, folders_.logs}}),
      dataFiles_({record_, statistics_, stores_.main, stores_.registry, units_, errorLog_, stationLog_, folders_.logs,
                  folders_.webfiles, station_.code, station_.code == stationtype::vantagePro}),
      pages_(readPageJobs(stores_.main)),
      pageFills_([&io](std::function<void()> work) { asio::post(io, std::move(work)); },
                 [this](const std::string& message) { errorLog_.write(message); }) {
  record_.stationname = units_.connections.stationName;
}

StationProgram::~StationProgram() = default;

void StationProgram::start() {
  clearCompanionExitFlags(stores_.registry);
  const LocalTime now = clock_.local();
  lastTick_ = now;
  for (const std::string& message : statistics_.load(now)) errorLog_.write(message);
  runDutyWithMessage(errorLog_, "error with house keeping ", [&] { housekeeping_.resetOnStart(now); });
  dataFiles_.resumeAfterLogged(now);
  if (station_.code == stationtype::none) {
    errorLog_.write("the station name \"" + station_.storedName +
                    "\" (section \"Weather Station Type\" key \"Name\") is not one this program knows; "
                    "set it to a station name such as \"DAVIS VANTAGE PRO\"; no station data will be read");
  } else if (station_.code != stationtype::vantagePro) {
    errorLog_.write(fmt::format("station type {} (\"{}\") has no driver in this version; no station data will be read",
                                station_.code, station_.storedName));
  } else {
    openStationLink();
  }
  wireCycle();
}

void StationProgram::openStationLink() {
  if (!link_) link_ = configuredLink();
  const VantageTransport transport = station_.vantageOverTcp ? VantageTransport::Tcp : VantageTransport::Serial;
  vantage_ = std::make_unique<VantageDriver>(receive_, record_, readVantageOptions(stores_.main), link_.get(),
                                             stationLog_, transport, deviceTime_);
  vantage_->onReading = [this] { onReading(); };
  vantage_->currentMaxGust = [this] { return statistics_.todaysHighGust(); };
  vantage_->onConsoleDailyGust = [this](double knots) { statistics_.raiseHighGust(knots, lastTick_); };
  link_->start([this](std::span<const std::uint8_t> bytes) { vantage_->receive(bytes, lastTick_); });
}

std::unique_ptr<ByteLink> StationProgram::configuredLink() {
  const PortSettings port = readPortSettings(stores_.main);
  if (station_.vantageOverTcp)
    return std::make_unique<TcpLink>(io_, port.tcpipVpAddress, port.tcpipVpPort, errorLog_);
  return std::make_unique<SerialLink>(io_, serialDevicePath(port), station_.line, errorLog_);
}

// The per-reading routine: a decoded record has arrived.
void StationProgram::onReading() {
  cycleState_.reading_received = true;
  statistics_.onReading(std::exchange(receive_.stationSilent, false));
}

void StationProgram::wireCycle() {
  attachStatistics(cycle_, statistics_, cycleState_, receive_, station_.code, lastTick_);
  dataFiles_.attach(cycle_, lastTick_, receive_);
  cycle_.firstHalf.stationPolling.run = [this] {
    if (vantage_) vantage_->poll(lastTick_);
  };
  auto& minute = cycle_.minutePass;
  minute.setStationClock.run = [this] {
    if (vantage_ && stores_.main.readSwitch("Weather Station Type", "set vp time daily") && lastTick_.hour == 4 &&
        lastTick_.minute == 0)
      vantage_->checkvptimecount(lastTick_);
  };
  minute.housekeeping.run = [this] {
    housekeeping_.housekeeping(lastTick_);
    statistics_.checkRecordPeriods(lastTick_);
  };
  minute.records.run = [this] { saveRecords(); };
  cycle_.secondHalf.customWebPages.run = [this] { fillDuePages(); };
  minute.flushSettings.run = [this] {
    statistics_.saveRainStorage();
    if (!stores_.flushAll()) throw std::runtime_error("the settings files could not be written");
  };
}

void StationProgram::saveRecords() {
  statistics_.saveRecords({folders_.program / stores_.names.mainSettings, folders_.program, &recordsBackupText_});
}

// The pages due this second are filled away from the tick, each from a
// snapshot of this moment. The local web page is made only when its
// template is there.
void StationProgram::fillDuePages() {
  const SystemTime now = clock_.now();
  for (const PageJob* job : pages_.due(now, lastTick_)) {
    std::error_code ec;
    if (job->onlyWhenTemplateExists && !std::filesystem::exists(folders_.webfiles / job->templateName, ec)) continue;
    if (pageFills_.busy(job->outputName)) continue;
    auto snapshot = std::make_unique<TagSnapshot>(TagSources{record_, statistics_, units_, stores_.main.document(),
                                                             now, cycleState_.reading_received, folders_.logs});
    pageFills_.start(std::move(snapshot), TemplateJob{folders_.webfiles, job->templateName, job->outputName},
                     job->append);
  }
}

void StationProgram::tick(const LocalTime& now) {
  lastTick_ = now;
  cycle_.updatetimernewnow(now);
}

void StationProgram::exit1click() {
  if (stopped_) return;
  stopped_ = true;
  cycleState_.closing = true;
  raiseCompanionExitFlags(stores_.registry);
  statistics_.saveRainStorage();
  runDutyWithMessage(errorLog_, "error with saverecordstoinifile ", [this] { saveRecords(); });
  stores_.flushAll();
  if (link_) link_->close();
}

}  // namespace nimbrel
