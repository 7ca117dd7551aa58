#include "stations/port_settings.h"

#include <fmt/format.h>

#include "core/platform/serial_device.h"

namespace nimbrel {
namespace {

// COM1-COM16, and the 1-wire adapter on the printer port.
constexpr long long kComChoices[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, kOneWirePrinterPort};

// A TCP or UDP port number from the store; `fallback` when the text is empty
// or not a usable port.
std::uint16_t readPortNumber(const SettingsStore& store, std::string_view section, std::string_view key,
                             std::uint16_t fallback) {
  return static_cast<std::uint16_t>(store.readInteger(section, key, fallback, kNetworkPort));
}

std::string readTextOr(const SettingsStore& store, std::string_view section, std::string_view key,
                       const std::string& fallback) {
  std::string text = store.ReadString(section, key);
  return text.empty() ? fallback : text;
}

}  // namespace

PortSettings readPortSettings(const SettingsStore& mainSettings) {
  PortSettings port;
  port.comNumber =
      static_cast<int>(mainSettings.readInteger(kComportSection, "number", port.comNumber, {.choices = kComChoices}));
  port.device = mainSettings.ReadString(kComportSection, "device");
  port.useSerial = mainSettings.readSwitch(kComportSection, "use serial");
  port.useUsb = mainSettings.readSwitch(kComportSection, "use usb");
  port.useTcpipVp = mainSettings.readSwitch(kComportSection, "use tcpip vp");
  port.tcpipVpAddress = mainSettings.ReadString(kComportSection, "use tcpip vp ip");
  port.tcpipVpPort = readPortNumber(mainSettings, kComportSection, "use tcpip vp port", port.tcpipVpPort);
  port.tcpipVpRelease = mainSettings.readSwitch(kComportSection, "use tcpip vp release");
  port.useTcpipMeteohub = mainSettings.readSwitch(kComportSection, "use tcpip meteohub");
  port.udp.enabled = mainSettings.readSwitch(kIpDataSection, "do it");
  port.udp.server = readTextOr(mainSettings, kIpDataSection, "server", port.udp.server);
  port.udp.port = readPortNumber(mainSettings, kIpDataSection, "port", port.udp.port);
  return port;
}

void writePortSettings(SettingsStore& mainSettings, const PortSettings& port) {
  mainSettings.WriteString(kComportSection, "number", fmt::format("{}", port.comNumber));
  mainSettings.WriteString(kComportSection, "device", port.device);
  mainSettings.writeSwitch(kComportSection, "use serial", port.useSerial);
  mainSettings.writeSwitch(kComportSection, "use usb", port.useUsb);
  mainSettings.writeSwitch(kComportSection, "use tcpip vp", port.useTcpipVp);
  mainSettings.WriteString(kComportSection, "use tcpip vp ip", port.tcpipVpAddress);
  mainSettings.WriteString(kComportSection, "use tcpip vp port", fmt::format("{}", port.tcpipVpPort));
  mainSettings.writeSwitch(kComportSection, "use tcpip vp release", port.tcpipVpRelease);
  mainSettings.writeSwitch(kComportSection, "use tcpip meteohub", port.useTcpipMeteohub);
  mainSettings.writeSwitch(kIpDataSection, "do it", port.udp.enabled);
  mainSettings.WriteString(kIpDataSection, "server", port.udp.server);
  mainSettings.WriteString(kIpDataSection, "port", fmt::format("{}", port.udp.port));
}

std::string serialDevicePath(const PortSettings& port) {
  if (!port.device.empty()) return port.device;
  if (port.comNumber == kOneWirePrinterPort) return {};
  return platform::serialDeviceForComNumber(port.comNumber);
}

}  // namespace nimbrel
