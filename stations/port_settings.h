#pragma once
// Where the station is connected: a serial port (by chooser number or by
// device path), a TCP data logger, a data server, or UDP input. Kept in
// section "Comport" (UDP in section "ip data") of the main settings, written
// by the port setup dialog and read at start.

#include <cstdint>
#include <string>
#include <string_view>

#include "core/settings_store.h"

namespace nimbrel {

inline constexpr std::string_view kComportSection = "Comport";
inline constexpr std::string_view kIpDataSection = "ip data";

// Chooser number of the 1-wire adapter on the printer port (1-16 are COM1-COM16).
inline constexpr int kOneWirePrinterPort = 20;
// The TCP port network data loggers listen on.
inline constexpr std::uint16_t kVantageLoggerTcpPort = 22222;

struct UdpInput {
  bool enabled = false;                  // "do it"
  std::string server = "192.168.1.100";  // "server": a private LAN address until the user sets one
  std::uint16_t port = 22222;            // "port"

  friend bool operator==(const UdpInput&, const UdpInput&) = default;
};

struct PortSettings {
  int comNumber = 1;                                  // "number": 1-16, or kOneWirePrinterPort
  std::string device;                                 // "device": a device path; when set it wins over "number"
  bool useSerial = false;                             // "use serial": 1-wire adapter on a serial port
  bool useUsb = false;                                // "use usb": 1-wire adapter on USB
  bool useTcpipVp = false;                            // "use tcpip vp"
  std::string tcpipVpAddress;                         // "use tcpip vp ip"
  std::uint16_t tcpipVpPort = kVantageLoggerTcpPort;  // "use tcpip vp port"
  bool tcpipVpRelease = false;                        // "use tcpip vp release": free the socket between polls
  bool useTcpipMeteohub = false;                      // "use tcpip meteohub"
  UdpInput udp;

  bool onOneWirePrinterPort() const { return device.empty() && comNumber == kOneWirePrinterPort; }

  friend bool operator==(const PortSettings&, const PortSettings&) = default;
};

// Reads the port keys; empty or unusable values keep the defaults above, and
// the unusable ones are reported in the error log.
PortSettings readPortSettings(const SettingsStore& mainSettings);
void writePortSettings(SettingsStore& mainSettings, const PortSettings& port);

// The serial device to open: "device" when set, otherwise the system's device
// for the chosen port number; empty for the printer-port 1-wire adapter,
// which is not a serial device.
std::string serialDevicePath(const PortSettings& port);

}  // namespace nimbrel
