#include "core/instance.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/settings_test_folder.h"

namespace nimbrel {
namespace {

using testsupport::SettingsTestFolder;

TEST(InstanceSelection, LowestMarkerWinsAndNoMarkerGivesThePlainNames) {
  SettingsTestFolder folder;
  EXPECT_EQ(findInstanceNumber(folder.path()), 0);
  folder.write("7qz.txt", "");
  EXPECT_EQ(findInstanceNumber(folder.path()), 7);
  folder.write("5qz.txt", "");
  EXPECT_EQ(findInstanceNumber(folder.path()), 5);
}

TEST(InstanceSelection, MarkersMatchExactlyAndMustBeFiles) {
  SettingsTestFolder folder;
  folder.write("5QZ.TXT", "");
  folder.write("1qz.txt", "");
  folder.write("11qz.txt", "");
  std::filesystem::create_directory(folder / "3qz.txt");
  EXPECT_EQ(findInstanceNumber(folder.path()), 0);
  folder.write("10qz.txt", "");
  EXPECT_EQ(findInstanceNumber(folder.path()), 10);
}

TEST(InstanceSelection, FileNamesCarryTheNumber) {
  const InstanceFileNames plain = instanceFileNames(0);
  EXPECT_EQ(plain.mainSettings, "NIMBREL.INI");
  EXPECT_EQ(plain.synopSettings, "SYNOP.INI");
  EXPECT_EQ(plain.registryStore, "nimbrelftp.ini");

  const InstanceFileNames five = instanceFileNames(5);
  EXPECT_EQ(five.mainSettings, "NIMBREL5.INI");
  EXPECT_EQ(five.synopSettings, "SYNOP5.INI");
  EXPECT_EQ(five.registryStore, "nimbrelftp5.ini");

  EXPECT_EQ(instanceFileNames(6).synopSettings, "SYNOP6INI");
  EXPECT_EQ(instanceFileNames(6).mainSettings, "NIMBREL6.INI");
  EXPECT_EQ(instanceFileNames(10).mainSettings, "NIMBREL10.INI");
}

TEST(SettingsStores, OpensTheFilesOfTheSelectedInstance) {
  SettingsTestFolder folder;
  folder.write("6qz.txt", "");
  folder.write("NIMBREL.INI", "[a]\nk=plain\n");
  folder.write("NIMBREL6.INI", "[a]\nk=six\n");
  folder.write("SYNOP6INI", "[synop]\nk=six\n");
  SettingsStores stores = openSettingsStores(folder.path(), folder.log());
  EXPECT_EQ(stores.names.instanceNumber, 6);
  EXPECT_EQ(stores.main.ReadString("a", "k"), "six");
  EXPECT_EQ(stores.synop.ReadString("synop", "k"), "six");
  EXPECT_EQ(stores.registry.path(), folder / "nimbrelftp6.ini");

  stores.registry.WriteString("watchdog", "close now", "no");
  EXPECT_TRUE(stores.flushAll());
  EXPECT_EQ(folder.read("nimbrelftp6.ini"), "[watchdog]\r\nclose now=no\r\n\r\n");
}

}  // namespace
}  // namespace nimbrel
