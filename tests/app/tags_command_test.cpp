#include "app/tags_command.h"

#include <gtest/gtest.h>

#include <fmt/format.h>

#include <map>

#include "core/number_format.h"
#include "datafiles/clientraw_layout.h"
#include "datafiles/clientraw_reader.h"
#include "support/demo_folder.h"
#include "support/temp_folder.h"

namespace nimbrel {
namespace {

namespace fs = std::filesystem;

struct Printed {
  int status;
  std::string out;
  std::string err;
};

std::string readBack(std::FILE* file) {
  std::rewind(file);
  std::string text(1 << 16, '\0');
  text.resize(std::fread(text.data(), 1, text.size(), file));
  std::fclose(file);
  return text;
}

Printed tags(const TagsRequest& request) {
  std::FILE* out = std::tmpfile();
  std::FILE* err = std::tmpfile();
  const int status = runTags(request, out, err);
  return {status, readBack(out), readBack(err)};
}

std::map<std::string, fs::file_time_type> filesOf(const fs::path& folder) {
  std::map<std::string, fs::file_time_type> files;
  for (const auto& entry : fs::recursive_directory_iterator(folder))
    if (entry.is_regular_file()) files[entry.path().string()] = entry.last_write_time();
  return files;
}

TEST(TagsCommand, PreviewsATemplateFromTheFoldersStateWithoutTouchingIt) {
  testsupport::TempFolder work;
  const fs::path dir = work / "demo";
  ASSERT_EQ(testsupport::runFastDemo(dir, fromLocalTime(2026, 6, 15, 14, 0, 0), 300).status, 0);
  ASSERT_TRUE(writeFileAtomically(work / "t.txt", "%temp%|%maxtemp%|%stationname%|%avtenminutewind%|%time%\n"));
  const auto before = filesOf(dir);

  const Printed printed = tags({dir, (work / "t.txt").string(), "", false});
  ASSERT_EQ(printed.status, 0) << printed.err;
  const auto reading = readClientrawFile(dir / "webfiles" / "clientraw.txt");
  ASSERT_TRUE(reading);
  double temp = 0;
  ASSERT_TRUE(parseDouble(std::string(*reading->field(clientraw::outdoorTemp)), temp));
  const std::string high = testsupport::readSetting(dir, "Daily high temperature", "number2");
  double highValue = 0;
  ASSERT_TRUE(parseDouble(high, highValue));
  // The demo writes its pages with units; the 10-minute average lives only
  // in the running program; the time is the last reading's, five minutes
  // after the start.
  const std::string expected = fmt::format("{:.1f}&deg;C|{:.1f}&deg;C|Demo Station|---|14:0", temp, highValue);
  EXPECT_EQ(printed.out.substr(0, expected.size()), expected) << printed.out;
  EXPECT_EQ(printed.out.size(), expected.size() + 2) << printed.out;
  EXPECT_EQ(filesOf(dir), before);

  const Printed missing = tags({dir, "nowhere.txt", "", false});
  EXPECT_EQ(missing.status, 2);
  EXPECT_NE(missing.err.find("nowhere.txt"), std::string::npos);
  EXPECT_EQ(filesOf(dir), before);
}

}  // namespace
}  // namespace nimbrel
