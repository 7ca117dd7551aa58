#pragma once
// A pseudo-terminal pair: a program opens the slave side by its path as if it
// were a serial port, and whoever holds the master side plays the device.
// The slave is put in raw mode (no echo, no CR/LF translation, no signals)
// and kept open here, so the line stays up and keeps its settings while no
// program has it open.

#include <optional>
#include <string>

namespace nimbrel::platform {

class PseudoTerminal {
 public:
  // Opens a new pair; empty with `error` set when the system refuses.
  static std::optional<PseudoTerminal> open(std::string* error = nullptr);

  PseudoTerminal(PseudoTerminal&& other) noexcept;
  PseudoTerminal& operator=(PseudoTerminal&& other) noexcept;
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;
  ~PseudoTerminal();

  // The master side's file descriptor, still owned here (-1 once released).
  int masterFd() const { return master_; }
  // Gives up ownership of the master descriptor, e.g. to an I/O object that
  // closes it itself.
  int releaseMaster();
  // The path a program opens: "/dev/pts/7".
  const std::string& slavePath() const { return slavePath_; }

 private:
  PseudoTerminal(int master, int slave, std::string slavePath);
  void closeAll();

  int master_ = -1;
  int slave_ = -1;
  std::string slavePath_;
};

}  // namespace nimbrel::platform
