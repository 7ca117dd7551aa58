#include "core/ini_store.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "core/reg_export.h"
#include "support/expect_stored.h"
#include "support/settings_test_folder.h"

namespace nimbrel {
namespace {

using Keys = std::vector<std::string>;

size_t lineCount(const std::string& text) { return static_cast<size_t>(std::count(text.begin(), text.end(), '\n')); }
bool contains(const std::string& text, std::string_view part) { return text.find(part) != std::string::npos; }

class IniStoreTest : public ::testing::Test {
 protected:
  IniStore open(std::string_view name = "s.ini") { return IniStore(folder / name, folder.log()); }
  // The section's key names; the list handed in is not empty, so that a
  // store which forgot to clear it shows.
  static Keys keysOf(const IniStore& store, std::string_view section) {
    Keys keys{"stale"};
    store.ReadSection(section, keys);
    return keys;
  }

  testsupport::SettingsTestFolder folder;
};

TEST_F(IniStoreTest, RoundTripKeepsOrderNameCaseAndExactValues) {
  folder.write("NIMBREL.INI", "[Zeta]\nlast hour =  7 \nPath=C:\\wd\\a=b;c\n\n[Alpha]\nNumber=12\nempty=\n");
  {
    IniStore store = open("NIMBREL.INI");
    store.WriteString("alpha", "NEW key", "x");  // existing section, new key: appended to it
    store.WriteString("Beta", "k", "v");         // new section: appended at the end
    ASSERT_TRUE(store.flush());
  }
  EXPECT_EQ(folder.read("NIMBREL.INI"),
            "[Zeta]\r\nlast hour =  7 \r\nPath=C:\\wd\\a=b;c\r\n\r\n"
            "[Alpha]\r\nNumber=12\r\nempty=\r\nNEW key=x\r\n\r\n"
            "[Beta]\r\nk=v\r\n\r\n");

  const IniStore reread = open("NIMBREL.INI");
  testsupport::expectStored(reread, {{"Zeta", "last hour ", "  7 "}, {"Zeta", "Path", "C:\\wd\\a=b;c"}});
  EXPECT_EQ(reread.ReadString("Alpha", "empty", "fallback"), "");
  EXPECT_EQ(reread.ReadString("Alpha", "missing", "fallback"), "fallback");
  EXPECT_EQ(folder.logText(), "");
}

TEST_F(IniStoreTest, NamesCompareWithoutCaseAndEditsKeepTheRestInOrder) {
  folder.write("s.ini", "[New Units]\nWind=kts\n[a]\nk1=1\nk2=2\nk3=3\n[b]\nx=1\n[c]\ny=2\n");
  IniStore store = open();
  EXPECT_EQ(store.ReadString("new units", "WIND"), "kts");
  store.WriteString("NEW UNITS", "wind", "mph");
  EXPECT_EQ(keysOf(store, "new units"), Keys{"Wind"});  // the first spelling stays
  EXPECT_EQ(store.ReadString("New Units", "Wind"), "mph");
  EXPECT_TRUE(keysOf(store, "no such section").empty());

  store.DeleteKey("A", "K2");
  store.EraseSection("B");
  store.WriteString("a", "k2", "again");
  EXPECT_EQ(keysOf(store, "a"), (Keys{"k1", "k3", "k2"}));
  EXPECT_EQ(store.ReadString("b", "x"), "");
  ASSERT_TRUE(store.flush());
  EXPECT_EQ(folder.read("s.ini"), "[New Units]\r\nWind=mph\r\n\r\n[a]\r\nk1=1\r\nk3=3\r\nk2=again\r\n\r\n[c]\r\ny=2\r\n\r\n");
}

TEST_F(IniStoreTest, ReadsOddFilesKeepingWhatParsesAndLogsDamageOnceNamingTheFile) {
  folder.write("bom.ini", "\xEF\xBB\xBF[one]\r\nk=first\r\nK=second\n  ; a comment\n[two]\nz=1\n[ONE]\nlate=yes");
  const IniStore odd = open("bom.ini");
  // A repeated key keeps the first; a repeated section adds to the first.
  testsupport::expectStored(odd, {{"one", "k", "first"}, {"one", "late", "yes"}});
  EXPECT_EQ(keysOf(odd, "one"), (Keys{"k", "late"}));
  EXPECT_EQ(lineCount(folder.logText()), 3u);  // the key, the section, and where the original is kept

  const std::string longValue(60000, 'v');
  const char binary[] = "\x01\x02\x00\xff\xfe binary=junk\n";
  folder.write("NIMBREL.INI", "orphan=before any section\n[good]\na=1\n" + std::string(binary, sizeof binary - 1) +
                                  "no equals sign here\n=no key\nb=" + longValue + "\n[trunc");
  const IniStore damaged = open("NIMBREL.INI");
  testsupport::expectStored(damaged, {{"good", "a", "1"}, {"good", "b", longValue.c_str()}, {"", "orphan", ""}});
  EXPECT_EQ(keysOf(damaged, "good"), (Keys{"a", "b"}));
  const std::string log = folder.logText();
  EXPECT_EQ(lineCount(log), 4u) << log;  // the three of the repeats above, one for the damage
  for (const char* part : {"NIMBREL.INI", "skipped 5", "line 1"}) EXPECT_TRUE(contains(log, part)) << log;
}

TEST_F(IniStoreTest, WritesOnlyWhenSomethingChangedAndLogsAnUnreadableFile) {
  IniStore missing = open("absent.ini");
  EXPECT_EQ(missing.ReadString("a", "b", "d"), "d");
  EXPECT_TRUE(missing.flush());  // nothing changed: no file appears
  EXPECT_FALSE(std::filesystem::exists(folder / "absent.ini"));
  EXPECT_EQ(folder.logText(), "");

  folder.write("s.ini", "[a]\nk=1\n");
  IniStore store = open();
  // Edit the file behind the store's back: a flush that rewrote it would undo this.
  folder.write("s.ini", "edited elsewhere");
  store.WriteString("a", "k", "1");  // the same value is no change
  store.DeleteKey("a", "missing");
  store.EraseSection("missing");
  EXPECT_FALSE(store.hasUnsavedChanges());
  EXPECT_TRUE(store.flush());
  EXPECT_EQ(folder.read("s.ini"), "edited elsewhere");
  store.WriteString("a", "k", "2");
  EXPECT_TRUE(store.flush());
  EXPECT_EQ(folder.read("s.ini"), "[a]\r\nk=2\r\n\r\n");

  std::filesystem::create_directory(folder / "dir.ini");
  EXPECT_TRUE(keysOf(open("dir.ini"), "a").empty());
  EXPECT_TRUE(contains(folder.logText(), "dir.ini cannot be read"));
}

TEST_F(IniStoreTest, FailedFlushLeavesTheOldFileAndRetriesLater) {
  folder.write("NIMBREL.INI", "[a]\r\nk=old\r\n");
  IniStore store = open("NIMBREL.INI");
  store.WriteString("a", "k", "new");
  // A folder where the temporary file would go makes its creation fail.
  std::filesystem::create_directory(folder / "NIMBREL.INI.tmp");
  EXPECT_FALSE(store.flush());
  EXPECT_FALSE(store.flush());
  EXPECT_TRUE(store.lastFlushFailed());
  EXPECT_EQ(folder.read("NIMBREL.INI"), "[a]\r\nk=old\r\n");
  const std::string log = folder.logText();
  EXPECT_EQ(lineCount(log), 1u) << log;  // one message per run of failures
  EXPECT_TRUE(contains(log, "NIMBREL.INI cannot be saved")) << log;

  std::filesystem::remove(folder / "NIMBREL.INI.tmp");
  EXPECT_TRUE(store.flush());
  EXPECT_FALSE(store.lastFlushFailed());
  EXPECT_EQ(folder.read("NIMBREL.INI"), "[a]\r\nk=new\r\n\r\n");
}

TEST_F(IniStoreTest, RefusesNamesThatCannotBeReadBackAndFlattensLineBreaks) {
  IniStore store = open();
  for (const auto& [section, key] : {std::pair{"a", "k=x"}, {"a", ";k"}, {"", "k"}}) store.WriteString(section, key, "1");
  EXPECT_FALSE(store.hasUnsavedChanges());
  EXPECT_EQ(lineCount(folder.logText()), 3u);

  store.WriteString("a", "text", "line one\r\nline two");
  ASSERT_TRUE(store.flush());
  EXPECT_EQ(open().ReadString("a", "text"), "line one  line two");
}

TEST_F(IniStoreTest, RegExportWritesRegistryEditorTextWithEscapes) {
  IniStore store = open("nimbrelftp.ini");
  store.WriteString("Files", "local \"1\"", "C:\\web\\index.htm");
  store.WriteString("watchdog", "close now", "no");
  ASSERT_TRUE(exportReg(store, folder / "nimbrelftp.reg"));
  EXPECT_EQ(folder.read("nimbrelftp.reg"),
            "Windows Registry Editor Version 5.00\r\n\r\n"
            "[HKEY_CURRENT_USER\\Software\\nimbrelftp.ini]\r\n\r\n"
            "[HKEY_CURRENT_USER\\Software\\nimbrelftp.ini\\Files]\r\n"
            "\"local \\\"1\\\"\"=\"C:\\\\web\\\\index.htm\"\r\n\r\n"
            "[HKEY_CURRENT_USER\\Software\\nimbrelftp.ini\\watchdog]\r\n"
            "\"close now\"=\"no\"\r\n\r\n");
}

}  // namespace
}  // namespace nimbrel
