#include "processing/cycle/simulated_ticks.h"

namespace nimbrel {
namespace {

// How often the event loop's own work runs, in real time.
constexpr auto kLoopWorkEvery = std::chrono::milliseconds(5);
// Events of one source at one instant that are run before the tick goes on
// regardless: a source that keeps finding itself due at the same moment
// would otherwise hold the clock still for ever.
constexpr int kMostEventsPerInstant = 10000;

}  // namespace

SimulatedTicks::SimulatedTicks(asio::io_context& io, ManualClock& clock) : io_(io), clock_(clock) {}

TimedEvents* SimulatedTicks::firstDueBy(SystemTime limit, SystemTime& due) const {
  TimedEvents* first = nullptr;
  for (TimedEvents* source : sources_) {
    const auto next = source->nextDue();
    if (next && *next <= limit && (!first || *next < due)) {
      first = source;
      due = *next;
    }
  }
  return first;
}

void SimulatedTicks::runLoopWork() {
  const auto now = std::chrono::steady_clock::now();
  if (now - lastLoopWork_ < kLoopWorkEvery) return;
  lastLoopWork_ = now;
  io_.restart();
  io_.poll();
}

void SimulatedTicks::run(OnTick onTick) {
  stopped_ = false;
  lastSecond_ = std::chrono::floor<std::chrono::seconds>(clock_.now());
  int eventsThisInstant = 0;
  SystemTime lastEvent{};
  while (!stopped_) {
    runLoopWork();
    if (stopped_) break;
    const SystemTime nextTick = lastSecond_ + std::chrono::seconds(1);
    SystemTime due{};
    if (TimedEvents* source = firstDueBy(nextTick, due); source && eventsThisInstant < kMostEventsPerInstant) {
      const SystemTime at = std::max(due, clock_.now());
      eventsThisInstant = at == lastEvent ? eventsThisInstant + 1 : 0;
      lastEvent = at;
      clock_.set(at);
      source->runDue(at);
      continue;
    }
    eventsThisInstant = 0;
    clock_.set(nextTick);
    lastSecond_ = std::chrono::floor<std::chrono::seconds>(nextTick);
    onTick(toLocalTime(nextTick));
  }
  // What the stop left behind (a closing socket, a last message) still runs.
  io_.restart();
  io_.poll();
}

}  // namespace nimbrel
