#include "tools/vantage_sim/memory_link.h"

#include "tools/vantage_sim/faults.h"

namespace nimbrel::sim {

MemoryConsoleLink::MemoryConsoleLink(Console& console, const Clock& clock, TextLog& errorLog, CableCuts cuts)
    : console_(console), clock_(clock), cuts_(cuts), start_(clock.now()), outage_(errorLog) {}

void MemoryConsoleLink::followCuts(SystemTime now) {
  const bool cut = inRecurringSpan(start_, now, cuts_.every, cuts_.length);
  if (cut == cut_) return;
  cut_ = cut;
  if (cut)
    outage_.failed("connection to " + describe() + " lost: the simulated cable was cut");
  else
    outage_.restored("connected to " + describe());
}

void MemoryConsoleLink::send(std::span<const std::uint8_t> bytes) {
  followCuts(clock_.now());
  if (!cut_) console_.receive(bytes);
}

void MemoryConsoleLink::runDue(SystemTime now) {
  followCuts(now);
  // The console runs whether or not the cable is whole; what it sends into
  // a cut cable is lost.
  for (const auto& write : console_.poll()) {
    for (std::size_t i = 0; i < write.size() && onReceive_ && !cut_; ++i)
      onReceive_(std::span<const std::uint8_t>(write).subspan(i, 1));
  }
}

}  // namespace nimbrel::sim
