#include "stations/port_settings.h"

#include <gtest/gtest.h>

#include "support/memory_settings_store.h"

namespace nimbrel {
namespace {

using testsupport::MemorySettingsStore;

TEST(PortSettings, DevicePathFromTheDefaultANumberOrTheDeviceKey) {
  MemorySettingsStore store;
  EXPECT_EQ(readPortSettings(store), PortSettings{});
  EXPECT_EQ(serialDevicePath(readPortSettings(store)), "/dev/ttyS0");
  store.WriteString("Comport", "number", "3");
  EXPECT_EQ(serialDevicePath(readPortSettings(store)), "/dev/ttyS2");
  store.WriteString("Comport", "device", "/dev/ttyUSB0");
  EXPECT_EQ(serialDevicePath(readPortSettings(store)), "/dev/ttyUSB0");  // the device key wins

  store.WriteString("Comport", "device", "");
  store.WriteString("Comport", "number", "20");  // 1-wire adapter on the printer port
  EXPECT_TRUE(readPortSettings(store).onOneWirePrinterPort());
  EXPECT_EQ(serialDevicePath(readPortSettings(store)), "");
}

TEST(PortSettings, UnusableNumbersKeepTheDefaults) {
  for (const char* number : {"0", "17", "19", "21", "-1", "com3", "3.0"}) {
    MemorySettingsStore store;
    store.WriteString("Comport", "number", number);
    EXPECT_EQ(readPortSettings(store).comNumber, 1) << number;
  }
  for (const char* tcpPort : {"0", "65536", "port"}) {
    MemorySettingsStore store;
    store.WriteString("Comport", "use tcpip vp port", tcpPort);
    store.WriteString("ip data", "port", tcpPort);
    const PortSettings port = readPortSettings(store);
    EXPECT_EQ(port.tcpipVpPort, 22222) << tcpPort;
    EXPECT_EQ(port.udp.port, UdpInput{}.port) << tcpPort;
  }
}

TEST(PortSettings, WrittenKeysReadBackTheSame) {
  PortSettings port;
  port.comNumber = 16;
  port.device = "/dev/pts/4";
  port.useSerial = true;
  port.useTcpipVp = true;
  port.tcpipVpAddress = "192.168.1.20";
  port.tcpipVpPort = 65535;
  port.tcpipVpRelease = true;
  port.useTcpipMeteohub = true;
  port.udp = {true, "10.0.0.5", 5000};
  MemorySettingsStore store;
  writePortSettings(store, port);
  EXPECT_EQ(readPortSettings(store), port);

  EXPECT_EQ(store.ReadString("Comport", "number"), "16");
  EXPECT_EQ(store.ReadString("Comport", "use usb"), "no");
  EXPECT_EQ(store.ReadString("Comport", "use tcpip vp port"), "65535");
  EXPECT_EQ(store.ReadString("ip data", "do it"), "yes");
  EXPECT_EQ(store.ReadString("ip data", "port"), "5000");
}

}  // namespace
}  // namespace nimbrel
