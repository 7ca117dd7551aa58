#include "core/ini_store.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "core/reg_export.h"
#include "support/settings_test_folder.h"

namespace nimbrel {
namespace {

using testsupport::SettingsTestFolder;

size_t lineCount(const std::string& text) { return static_cast<size_t>(std::count(text.begin(), text.end(), '\n')); }

std::vector<std::string> keysOf(const IniStore& store, std::string_view section) {
  std::vector<std::string> keys{"stale"};
  store.ReadSection(section, keys);
  return keys;
}

TEST(IniStore, RoundTripKeepsOrderNameCaseAndExactValues) {
  SettingsTestFolder folder;
  folder.write("NIMBREL.INI",
               "[Zeta]\nlast hour =  7 \nPath=C:\\wd\\a=b;c\n\n"
               "[Alpha]\nNumber=12\nempty=\n");
  {
    IniStore store(folder / "NIMBREL.INI", folder.log());
    store.WriteString("alpha", "NEW key", "x");  // existing section, new key: appended to it
    store.WriteString("Beta", "k", "v");         // new section: appended at the end
    ASSERT_TRUE(store.flush());
  }
  EXPECT_EQ(folder.read("NIMBREL.INI"),
            "[Zeta]\r\nlast hour =  7 \r\nPath=C:\\wd\\a=b;c\r\n\r\n"
            "[Alpha]\r\nNumber=12\r\nempty=\r\nNEW key=x\r\n\r\n"
            "[Beta]\r\nk=v\r\n\r\n");

  IniStore reread(folder / "NIMBREL.INI", folder.log());
  EXPECT_EQ(reread.ReadString("Zeta", "last hour "), "  7 ");
  EXPECT_EQ(reread.ReadString("Zeta", "Path"), "C:\\wd\\a=b;c");
  EXPECT_EQ(reread.ReadString("Alpha", "empty", "fallback"), "");
  EXPECT_EQ(reread.ReadString("Alpha", "missing", "fallback"), "fallback");
  EXPECT_EQ(folder.logText(), "");
}

TEST(IniStore, NamesCompareWithoutCaseAndKeepTheirFirstSpelling) {
  SettingsTestFolder folder;
  folder.write("s.ini", "[New Units]\nWind=kts\n");
  IniStore store(folder / "s.ini", folder.log());
  EXPECT_EQ(store.ReadString("new units", "WIND"), "kts");
  store.WriteString("NEW UNITS", "wind", "mph");
  EXPECT_EQ(keysOf(store, "new units"), std::vector<std::string>{"Wind"});
  EXPECT_EQ(store.ReadString("New Units", "Wind"), "mph");
  EXPECT_TRUE(keysOf(store, "no such section").empty());
}

TEST(IniStore, EraseAndDeleteKeepTheRestInOrder) {
  SettingsTestFolder folder;
  folder.write("s.ini", "[a]\nk1=1\nk2=2\nk3=3\n[b]\nx=1\n[c]\ny=2\n");
  IniStore store(folder / "s.ini", folder.log());
  store.DeleteKey("A", "K2");
  store.EraseSection("B");
  store.WriteString("a", "k2", "again");
  EXPECT_EQ(keysOf(store, "a"), (std::vector<std::string>{"k1", "k3", "k2"}));
  EXPECT_EQ(store.ReadString("a", "k3"), "3");
  EXPECT_EQ(store.ReadString("b", "x"), "");
  EXPECT_EQ(store.ReadString("c", "y"), "2");
  ASSERT_TRUE(store.flush());
  EXPECT_EQ(folder.read("s.ini"), "[a]\r\nk1=1\r\nk3=3\r\nk2=again\r\n\r\n[c]\r\ny=2\r\n\r\n");
}

TEST(IniStore, ReadsByteOrderMarkMixedLineEndsAndDuplicates) {
  SettingsTestFolder folder;
  folder.write("s.ini", "\xEF\xBB\xBF[one]\r\nk=first\r\nK=second\n  ; a comment\n[two]\nz=1\n[ONE]\nlate=yes");
  IniStore store(folder / "s.ini", folder.log());
  EXPECT_EQ(store.ReadString("one", "k"), "first");
  EXPECT_EQ(store.ReadString("one", "late"), "yes");  // a repeated section adds to the first
  EXPECT_EQ(keysOf(store, "one"), (std::vector<std::string>{"k", "late"}));
  EXPECT_EQ(lineCount(folder.logText()), 3u);  // the key, the section, and where the original is kept
}

TEST(IniStore, DamagedFileKeepsWhatParsesAndLogsOnceNamingTheFile) {
  SettingsTestFolder folder;
  const std::string longValue(60000, 'v');
  std::string text = "orphan=before any section\n[good]\na=1\n";
  const char binary[] = "\x01\x02\x00\xff\xfe binary=junk\n";
  text += std::string(binary, sizeof binary - 1);
  text += "no equals sign here\n=no key\nb=" + longValue + "\n[trunc";
  folder.write("NIMBREL.INI", text);
  IniStore store(folder / "NIMBREL.INI", folder.log());
  EXPECT_EQ(store.ReadString("good", "a"), "1");
  EXPECT_EQ(store.ReadString("good", "b"), longValue);
  EXPECT_EQ(store.ReadString("", "orphan"), "");
  EXPECT_EQ(keysOf(store, "good"), (std::vector<std::string>{"a", "b"}));
  const std::string log = folder.logText();
  EXPECT_EQ(lineCount(log), 1u);
  EXPECT_NE(log.find("NIMBREL.INI"), std::string::npos);
  EXPECT_NE(log.find("skipped 5"), std::string::npos) << log;
  EXPECT_NE(log.find("line 1"), std::string::npos) << log;
}

TEST(IniStore, MissingFileIsQuietAndUnreadableOneIsLogged) {
  SettingsTestFolder folder;
  IniStore missing(folder / "absent.ini", folder.log());
  EXPECT_EQ(missing.ReadString("a", "b", "d"), "d");
  EXPECT_TRUE(missing.flush());  // nothing changed: no file appears
  EXPECT_FALSE(std::filesystem::exists(folder / "absent.ini"));
  EXPECT_EQ(folder.logText(), "");

  std::filesystem::create_directory(folder / "dir.ini");
  IniStore unreadable(folder / "dir.ini", folder.log());
  EXPECT_TRUE(keysOf(unreadable, "a").empty());
  EXPECT_NE(folder.logText().find("dir.ini cannot be read"), std::string::npos);
}

TEST(IniStore, FlushWritesOnlyWhenSomethingChanged) {
  SettingsTestFolder folder;
  folder.write("s.ini", "[a]\nk=1\n");
  IniStore store(folder / "s.ini", folder.log());
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
}

TEST(IniStore, FailedFlushLeavesTheOldFileAndRetriesLater) {
  SettingsTestFolder folder;
  folder.write("NIMBREL.INI", "[a]\r\nk=old\r\n");
  IniStore store(folder / "NIMBREL.INI", folder.log());
  store.WriteString("a", "k", "new");
  // A folder where the temporary file would go makes its creation fail.
  std::filesystem::create_directory(folder / "NIMBREL.INI.tmp");
  EXPECT_FALSE(store.flush());
  EXPECT_FALSE(store.flush());
  EXPECT_TRUE(store.lastFlushFailed());
  EXPECT_EQ(folder.read("NIMBREL.INI"), "[a]\r\nk=old\r\n");
  const std::string log = folder.logText();
  EXPECT_EQ(lineCount(log), 1u) << log;  // one message per run of failures
  EXPECT_NE(log.find("NIMBREL.INI cannot be saved"), std::string::npos) << log;

  std::filesystem::remove(folder / "NIMBREL.INI.tmp");
  EXPECT_TRUE(store.flush());
  EXPECT_FALSE(store.lastFlushFailed());
  EXPECT_EQ(folder.read("NIMBREL.INI"), "[a]\r\nk=new\r\n\r\n");
}

TEST(IniStore, RefusesNamesThatCannotBeReadBackAndFlattensLineBreaks) {
  SettingsTestFolder folder;
  IniStore store(folder / "s.ini", folder.log());
  store.WriteString("a", "k=x", "1");
  store.WriteString("a", ";k", "1");
  store.WriteString("", "k", "1");
  EXPECT_FALSE(store.hasUnsavedChanges());
  EXPECT_EQ(lineCount(folder.logText()), 3u);

  store.WriteString("a", "text", "line one\r\nline two");
  ASSERT_TRUE(store.flush());
  IniStore reread(folder / "s.ini", folder.log());
  EXPECT_EQ(reread.ReadString("a", "text"), "line one  line two");
}

TEST(RegExport, WritesRegistryEditorTextWithEscapes) {
  SettingsTestFolder folder;
  IniStore store(folder / "nimbrelftp.ini", folder.log());
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
