#include "publish/template/custom_web_page.h"

#include <gtest/gtest.h>

#include "core/clock.h"
#include "core/file_io.h"
#include "core/text_log.h"
#include "publish/template/map_tag_replacer.h"
#include "support/memory_settings_store.h"
#include "support/temp_folder.h"

namespace nimbrel {
namespace {

// "%temp%" with its unit when the run asks for units.
class TempReplacer final : public TagReplacer {
 public:
  std::optional<std::string> value(std::string_view tag, const TagRun& run) const override {
    if (tag != "%temp%") return std::nullopt;
    return run.displayUnits ? "12.3°C" : "12.3";
  }
};

class TemplateOutput : public ::testing::Test {
 protected:
  TemplateOutput() {
    names_.set("hum", "81");
    chain_ = {&temp_, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &names_};
  }

  std::string run(const std::string& templateName, const std::string& outputName, const TemplateOptions& options,
                  const RawHeaderValues& header = {}) {
    const TemplateJob job{dir_.path(), templateName, outputName};
    EXPECT_TRUE(customwebpage(job, options, chain_, header, [this](std::string_view m) { log_.write(m); }));
    return readWholeFile(dir_ / outputName).value_or("<missing>");
  }

  // The options read from settings where `key` is switched on.
  static TemplateOptions optionsWith(std::string_view key) {
    testsupport::MemorySettingsStore settings;
    settings.writeSwitch(kTemplateSection, key, true);
    return readTemplateOptions(settings);
  }

  void writeTemplate(const std::string& name, std::string_view text) {
    ASSERT_TRUE(writeFileAtomically(dir_ / name, text));
  }

  testsupport::TempFolder dir_;
  ManualClock clock_;
  TextLog log_{dir_ / "programerrorlog.txt", clock_};
  TempReplacer temp_;
  MapTagReplacer names_;
  ReplacerChain chain_{};
};

TEST_F(TemplateOutput, RewritesOrAppendsAsTheOutputAndSwitchSay) {
  writeTemplate("custom.txt", "T %temp%\nH %hum%\n");
  const std::string once = "T 12.3\r\nH 81\r\n";
  const struct {
    const char* output;
    bool append;
    std::string expected;
  } runs[] = {{"out.txt", false, once},
              {"out.txt", true, once},
              {"customtextout10.txt", true, once},
              {"customtextout10.txt", true, once + once},
              {"customtextout10.txt", false, once},
              {"customtextout11.txt", true, once},
              {"customtextout11.txt", true, once}};
  for (const auto& r : runs)
    EXPECT_EQ(run("custom.txt", r.output, {.appendCustomText = r.append}), r.expected) << r.output;
}

TEST_F(TemplateOutput, UnitsComeFromTheSettingsExceptInTheFullDataFile) {
  const TemplateOptions options = optionsWith("display units");
  writeTemplate("qzfulldata.htm", "%temp%");
  writeTemplate("wxlocal.html", "%temp%");
  EXPECT_EQ(run("wxlocal.html", "wx.html", options), "12.3°C\r\n");
  EXPECT_EQ(run("qzfulldata.htm", "fulldata.htm", options), "12.3\r\n");
}

TEST_F(TemplateOutput, WxPageStartsWithTheRawHeaderWhenAsked) {
  const TemplateOptions options = optionsWith("raw data in header");
  writeTemplate("wxlocal.html", "<p>%hum%</p>\n");
  RawHeaderValues v{.time = {2026, 11, 3, 19, 5}, .timeStyle = HeaderTimeStyle::TwelveHour};
  v.temperature = 12.34, v.humidity = 81, v.dewPoint = 9.1, v.averageWind = 5.55, v.gust = 12;
  v.direction = 225, v.pressure = 1013.25, v.rainToday = 1.2, v.rainMonth = 40, v.rainYear = 612.3;
  v.rainRate = 0.5;
  EXPECT_EQ(run("wxlocal.html", "wx.html", options, v),
            "<META RAW MET DATA 7:05 pm, 03/11/26,tmp 12.3,hum 81,dew 9.1,wav 5.5,wgt 12.0,dir 225,"
            "bar 1013.2,rdy 1.20,rmt 40.00,ryr 612.30,rhr 0.50>\r\n<p>81</p>\r\n");
  EXPECT_EQ(run("wxlocal2.html", "wx2.html", options, v).find("<META"), std::string::npos);
  EXPECT_EQ(run("wxlocal.html", "wx.html", {}, v), "<p>81</p>\r\n");
}

TEST(RawHeader, WritesTheTimeInTheOwnersStyle) {
  RawHeaderValues v{.time = {2026, 1, 2, 0, 7}};
  const std::pair<HeaderTimeStyle, std::string> cases[] = {{HeaderTimeStyle::PaddedTwelveHour, "12:07 am"},
                                                           {HeaderTimeStyle::TwelveHour, "12:07 am"},
                                                           {HeaderTimeStyle::PaddedDay, "00:07"},
                                                           {HeaderTimeStyle::PlainDay, "0:07"}};
  for (const auto& [style, time] : cases) {
    v.timeStyle = style;
    EXPECT_TRUE(rawHeaderLine(v).starts_with("<META RAW MET DATA " + time + ", 02/01/26,tmp ")) << time;
  }
  v.time.hour = 9;
  v.timeStyle = HeaderTimeStyle::PaddedTwelveHour;
  EXPECT_TRUE(rawHeaderLine(v).starts_with("<META RAW MET DATA 09:07 am, 02/01/26,"));
}

}  // namespace
}  // namespace nimbrel
