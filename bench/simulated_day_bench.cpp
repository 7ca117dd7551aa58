// A whole simulated day of the running program: one-second ticks, a Vantage
// console sending a LOOP packet every two seconds, and every file the
// program writes (monthly and CSV logs, clientraw every 10 s, settings and
// records each minute) on the disk of the benchmark's temporary folder. The
// console is the simulator's, reached through an in-memory link, and the
// clock is a manual one, so what is measured is the program's own work per
// day without the waits between seconds.

#include <benchmark/benchmark.h>

#include <asio.hpp>

#include <filesystem>
#include <fstream>

#include "app/station_program.h"
#include "stations/byte_link.h"
#include "tools/vantage_sim/console.h"

namespace {

using namespace nimbrel;

// The console at the other end of the "cable": what the program sends goes
// to it at once, and what it has sent by now is delivered on deliver().
class ConsoleLink final : public ByteLink {
 public:
  explicit ConsoleLink(sim::Console& console) : console_(console) {}
  void start(ReceiveHandler onReceive) override { onReceive_ = std::move(onReceive); }
  void send(std::span<const std::uint8_t> bytes) override { console_.receive(bytes); }
  bool isOpen() const override { return true; }
  void reopen() override {}
  void close() override { onReceive_ = nullptr; }
  std::string describe() const override { return "the simulated console"; }

  // One receive event per byte, as the serial and TCP links deliver them.
  void deliver() {
    for (const auto& write : console_.poll())
      for (std::size_t i = 0; i < write.size() && onReceive_; ++i) onReceive_(std::span(write).subspan(i, 1));
  }

 private:
  sim::Console& console_;
  ReceiveHandler onReceive_;
};

void BM_SimulatedDay(benchmark::State& state) {
  const auto folder = std::filesystem::temp_directory_path() / "nimbrel-day-bench";
  for (auto _ : state) {
    state.PauseTiming();
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "NIMBREL.INI") << "[Weather Station Type]\r\nName=DAVIS VANTAGE PRO\r\n";
    ManualClock clock(fromLocalTime(2026, 3, 10, 0, 0, 0));
    asio::io_context io;
    sim::ConsoleOptions options;
    options.sentHistory = 1;
    sim::Console console(clock, options);
    auto link = std::make_unique<ConsoleLink>(console);
    ConsoleLink& cable = *link;
    StationProgram program(io, clock, folder);
    program.useLink(std::move(link));
    state.ResumeTiming();

    program.start();
    for (int second = 0; second < 86400; ++second) {
      clock.advance(std::chrono::seconds(1));
      cable.deliver();
      program.tick(clock.local());
    }
    program.exit1click();
    state.counters["packets"] = static_cast<double>(program.vantage()->counters().packetsDecoded);
  }
  std::filesystem::remove_all(folder);
}
BENCHMARK(BM_SimulatedDay)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
