#include "datafiles/monthly_log_reader.h"

#include <gtest/gtest.h>

#include "core/file_io.h"
#include "datafiles/log_context.h"
#include "datafiles/monthly_log.h"
#include "log_test_world.h"

namespace nimbrel {
namespace {

TEST(MonthlyLogReader, KeepsDataLinesAndSkipsHeaderBlankForeignAndHalfWrittenLines) {
  const MonthlyLogText log(
      "day month year hour minute temperature   humidity     dewpoint   barometer  windspeed  gustspeed "
      "direction   rainlastmin    dailyrain  monthlyrain   yearlyrain  heatindex\r\n"
      "14 11 2026  9  5 05.3  65 -0.8 1013.3 3.1 12.4   7 0.2 2.4 35.6 412.0 05.3\r\n"
      "\r\n"
      "imported from another program\r\n"
      "14 11 2026  9  6 05.3  65 -0.8 1013.3 3.1 12.4   7 0.2 2.4 35.6\r\n"               // sixteen fields
      "14 11 2026  9  7 05.3  65 -0.8 1013.3 3.1 12.4   7 0.2 2.4 35.6 412.0 x\r\n"       // not a number
      "14 11 2026 9.5  8 05.3  65 -0.8 1013.3 3.1 12.4   7 0.2 2.4 35.6 412.0 05.3\r\n"   // a broken hour
      "14 11 2026  9  9 -0.5  65 -6.3 1013.3 3.1 12.4 270     0.0 2.4 35.6 412.0 -0.5\n"  // LF only
      "14 11 2026  9 10 05.3  65 -0.8 1013.3 3.1 12.4   7 0.2 2.4 35.6 412.0 0");  // still being written
  ASSERT_EQ(log.lines().size(), 2u);
  EXPECT_EQ(log.skipped(), 7u);
  const MonthlyLogLine& first = log.lines()[0];
  EXPECT_EQ(first[LogColumn::day], "14");
  EXPECT_EQ(first[LogColumn::temperature], "05.3");
  EXPECT_EQ(first[LogColumn::heatindex], "05.3");
  EXPECT_DOUBLE_EQ(first.number(LogColumn::barometer), 1013.3);
  const MonthlyLogLine& second = log.lines()[1];
  EXPECT_EQ(second[LogColumn::minute], "9");
  EXPECT_DOUBLE_EQ(second.number(LogColumn::temperature), -0.5);
  EXPECT_EQ(second[LogColumn::direction], "270");
  EXPECT_EQ(second[LogColumn::rainlastmin], "0.0");
}

TEST(MonthlyLogReader, ReadsBackWhatTheWriterWrote) {
  testsupport::LogWorld world;
  testsupport::fillAutumnMinute(world.record);
  for (int minute = 0; minute < 3; ++minute) {
    world.record.outtemp = -1.0 + minute;
    world.record.winddir = static_cast<std::uint16_t>(5 * minute);
    logfile(world.record, world.at(2026, 11, 14, 9, minute), world.options, world.mainSettings, world.sinks);
  }
  const auto log = readMonthlyLog(world.dir / "logs" / "112026lg.txt");
  ASSERT_TRUE(log.has_value());
  ASSERT_EQ(log->lines().size(), 3u);
  EXPECT_EQ(log->skipped(), 1u);  // the header
  for (int minute = 0; minute < 3; ++minute) {
    const MonthlyLogLine& line = log->lines()[static_cast<std::size_t>(minute)];
    EXPECT_DOUBLE_EQ(line.number(LogColumn::minute), minute);
    EXPECT_DOUBLE_EQ(line.number(LogColumn::temperature), -1.0 + minute);
    EXPECT_DOUBLE_EQ(line.number(LogColumn::direction), 5 * minute);
    EXPECT_DOUBLE_EQ(line.number(LogColumn::yearlyrain), 412.0);
  }
  EXPECT_FALSE(readMonthlyLog(world.dir / "logs" / "122026lg.txt").has_value());
}

}  // namespace
}  // namespace nimbrel
