#include "core/instance.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/settings_test_folder.h"

namespace nimbrel {
namespace {

using testsupport::SettingsTestFolder;

TEST(InstanceSelection, LowestExactMarkerFileWinsAndNoMarkerGivesThePlainNames) {
  SettingsTestFolder folder;
  EXPECT_EQ(findInstanceNumber(folder.path()), 0);
  // Not markers: another case, number 1, numbers above 10, a folder.
  for (const char* name : {"5QZ.TXT", "1qz.txt", "11qz.txt"}) folder.write(name, "");
  std::filesystem::create_directory(folder / "3qz.txt");
  EXPECT_EQ(findInstanceNumber(folder.path()), 0);
  folder.write("10qz.txt", "");
  EXPECT_EQ(findInstanceNumber(folder.path()), 10);
  folder.write("7qz.txt", "");
  EXPECT_EQ(findInstanceNumber(folder.path()), 7);
}

TEST(InstanceSelection, FileNamesCarryTheNumber) {
  struct Row {
    int instance;
    const char *main, *synop, *registry;
  };
  // Instance 6 has no dot in its synop file's name.
  for (const Row& row : {Row{0, "NIMBREL.INI", "SYNOP.INI", "nimbrelftp.ini"},
                         Row{5, "NIMBREL5.INI", "SYNOP5.INI", "nimbrelftp5.ini"},
                         Row{6, "NIMBREL6.INI", "SYNOP6INI", "nimbrelftp6.ini"},
                         Row{10, "NIMBREL10.INI", "SYNOP10.INI", "nimbrelftp10.ini"}}) {
    const InstanceFileNames names = instanceFileNames(row.instance);
    EXPECT_EQ((std::vector<std::string>{names.mainSettings, names.synopSettings, names.registryStore}),
              (std::vector<std::string>{row.main, row.synop, row.registry}))
        << "instance " << row.instance;
  }
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
  stores.registry.WriteString("watchdog", "close now", "no");
  EXPECT_TRUE(stores.flushAll());
  EXPECT_EQ(folder.read("nimbrelftp6.ini"), "[watchdog]\r\nclose now=no\r\n\r\n");
}

}  // namespace
}  // namespace nimbrel
