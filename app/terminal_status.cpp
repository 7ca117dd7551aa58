#include "app/terminal_status.h"

#include "app/station_program.h"
#include "app/status_line.h"
#include "core/platform/terminal.h"

namespace nimbrel {
namespace {

constexpr const char* kClearLine = "\r\x1b[K";
// Four redraws a real second, whatever the program clock's speed.
constexpr auto kRedrawEvery = std::chrono::milliseconds(250);

}  // namespace

TerminalStatus::TerminalStatus(StationProgram& program, std::FILE* terminal)
    : program_(program), terminal_(terminal), active_(platform::isTerminal(terminal)) {
  if (active_) program_.errorLog().echoThrough([this](std::string_view line) { printAbove(line); });
}

TerminalStatus::~TerminalStatus() { close(); }

void TerminalStatus::update(const LocalTime& now) {
  if (!active_) return;
  const auto realNow = std::chrono::steady_clock::now();
  if (realNow - lastDrawnAt_ < kRedrawEvery) return;
  lastDrawnAt_ = realNow;
  draw(now);
}

void TerminalStatus::draw(const LocalTime& now) {
  StatusFacts facts;
  facts.now = now;
  facts.record = &program_.record();
  if (const VantageDriver* vantage = program_.vantage()) {
    facts.packetsDecoded = vantage->counters().packetsDecoded;
    facts.packetsRejected = vantage->counters().packetsRejected;
  }
  facts.haveData = facts.packetsDecoded > 0;
  facts.lastLogFile = program_.dataFiles().lastLogFile().filename().string();
  facts.clientrawWrites = program_.dataFiles().clientrawWrites();
  // One column short of the width: a line filling the last column wraps on some terminals.
  const std::string line = fitToColumns(formatStatusLine(facts), platform::terminalColumns(terminal_) - 1);
  std::fputs(kClearLine, terminal_);
  std::fputs(line.c_str(), terminal_);
  std::fflush(terminal_);
  shown_ = true;
  lastDrawn_ = now;
}

// The line itself goes to standard error, like every line of the error log:
// on a terminal both streams show on the same screen, and a redirect of
// standard error still gets it.
void TerminalStatus::printAbove(std::string_view line) {
  std::fputs(kClearLine, terminal_);
  std::fflush(terminal_);
  std::fwrite(line.data(), 1, line.size(), stderr);
  std::fflush(stderr);
  if (shown_) draw(lastDrawn_);
}

void TerminalStatus::close() {
  if (!active_) return;
  active_ = false;
  program_.errorLog().echoThrough({});
  if (shown_) std::fputs("\n", terminal_);
  std::fflush(terminal_);
}

}  // namespace nimbrel
