#include <gtest/gtest.h>

#include <random>

#include "core/clock.h"
#include "core/file_io.h"
#include "core/text_log.h"
#include "publish/template/custom_web_page.h"
#include "publish/template/template_lines.h"
#include "support/temp_folder.h"
#include "support/toy_vocabulary.h"

namespace nimbrel {
namespace {

using testsupport::ToySlot;

// The scan word for word, 1-based, slow on purpose: every candidate length
// at every "%" goes to every replacer in turn, and a replacer that owns the
// candidate splices its value into the line itself.
struct LiteralModel {
  const std::vector<ToySlot>& slots;
  std::vector<std::string> errors;

  void callReplacer(std::size_t k, const std::string& candidate, std::size_t position, std::string& line) {
    for (const auto& name : slots[k].failing)
      if (candidate == "%" + name + "%") throw std::runtime_error("no reading for " + name);
    for (const auto& [name, value] : slots[k].values) {
      if (candidate != "%" + name + "%") continue;
      line.erase(position - 1, candidate.size());
      line.insert(position - 1, value);
      return;
    }
  }

  void callChain(const std::string& candidate, std::size_t position, std::string& line) {
    const std::string before = line;
    for (std::size_t k = 0; k < slots.size() && line == before; ++k) {
      try {
        callReplacer(k, candidate, position, line);
      } catch (const std::exception& e) {
        errors.push_back("error with new custom string " + std::string(kReplacerNumbers[k]) + " " + e.what());
      }
    }
  }

  std::string run(std::string line, std::size_t bound) {
    if (line.find('%') == std::string::npos) return line;
    for (std::size_t position = 1; position <= bound; ++position) {
      if (position > line.size()) break;
      if (line[position - 1] != '%') continue;
      for (std::size_t length = 3; length <= 43; ++length) {
        const std::string candidate = position - 1 <= line.size() ? line.substr(position - 1, length) : "";
        if (candidate.size() > 1 && candidate.back() == '%') callChain(candidate, position, line);
      }
    }
    return line;
  }
};

class TagEngine : public ::testing::Test {
 protected:
  TagEngine() {
    for (std::size_t k = 0; k < kReplacerCount; ++k) chain_[k] = &replacers_[k];
  }

  std::string fill(const std::string& line, std::string_view templateName = "wx.html") {
    const ReplacerErrorSink sink = [this](std::string_view m) { errors_.emplace_back(m); };
    return fillTemplate({line}, templateName, chain_, TagRun{}, sink).at(0);
  }

  const std::vector<ToySlot> slots_ = testsupport::toySlots();
  std::vector<testsupport::ToyReplacer> replacers_{slots_.begin(), slots_.end()};
  ReplacerChain chain_{};
  std::vector<std::string> errors_;
};

// Lines built from the pieces that make the scan interesting.
std::string randomLine(std::mt19937& random) {
  static const std::vector<std::string> pieces = {
      "%temp%", "%temp,%", "%hum%", "%dew%", "%baro%", "%long%", "%pct%", "%opener%", "%same%",
      "%x%", "%wind dir%", "%a/b=%", "%empty%", "%rain%", "%mid%", "%sixb%", "%twin%", "%bad%",
      "%seven%", "%broken%", "%" + testsupport::longestName() + "%", "%" + testsupport::tooLongName() + "%",
      "%Temp%", "%nosuch%", "%", "%%", "100%%temp%", "50% humidity %hum%", "um%", " ", "text",
      "<td>", "\xff\xfe", "%%%", "%t", "emp%", "\t"};
  std::uniform_int_distribution<std::size_t> count(0, 14), pick(0, pieces.size() - 1);
  std::string line;
  for (std::size_t n = count(random); n > 0; --n) line += pieces[pick(random)];
  return line;
}

TEST_F(TagEngine, GivesWhatTheLiteralScanGivesOnGeneratedLines) {
  std::mt19937 random(20261123);
  int boundMattered = 0, failed = 0;
  for (const char* name : {"wx.html", "climatedata.html", "testtags.txt"}) {
    for (int i = 0; i < 3000; ++i) {
      const std::string line = randomLine(random);
      LiteralModel model{slots_, {}};
      const std::string expected = model.run(line, scanBound(name, line.size()));
      errors_.clear();
      ASSERT_EQ(fill(line, name), expected) << name << " line: " << line;
      ASSERT_EQ(errors_, model.errors) << name << " line: " << line;
      failed += !errors_.empty();
      boundMattered += LiteralModel{slots_, {}}.run(line, 1'000'000) != expected;
    }
  }
  // The generated lines reach the cases that matter.
  EXPECT_GT(boundMattered, 100);
  EXPECT_GT(failed, 100);
}

TEST_F(TagEngine, KeepsALoneSignAndReplacesOnlyWholeTags) {
  EXPECT_EQ(fill("100%%temp%"), "100%12.3");
  EXPECT_EQ(fill("50% humidity %hum%"), "50% humidity 81");
}

TEST_F(TagEngine, LeavesATagPushedPastTheScanBound) {
  // 12 characters: the bound is 22, and "%temp%" moves to position 71.
  EXPECT_EQ(fill("%long%%temp%"), testsupport::longValue() + "%temp%");
  EXPECT_EQ(fill("%long%%temp%", "testtags.txt"), testsupport::longValue() + "12.3");  // bound 72
  EXPECT_EQ(fill("%long%%temp%", "climatedata.html"), testsupport::longValue() + "12.3");
}

TEST_F(TagEngine, MatchesNamesExactlyWithTheirCase) {
  EXPECT_EQ(fill("%Temp% %temp% %TEMP%"), "%Temp% 12.3 %TEMP%");
  EXPECT_EQ(fill("%" + testsupport::longestName() + "% %" + testsupport::tooLongName() + "%"),
            "43! %" + testsupport::tooLongName() + "%");
}

TEST_F(TagEngine, ReportsAFailingReplacerAndAsksTheNextOne) {
  EXPECT_EQ(fill("rain %rain% today"), "rain 0.4 mm today");
  EXPECT_EQ(errors_, std::vector<std::string>{"error with new custom string 2 no reading for rain"});
  errors_.clear();
  EXPECT_EQ(fill("%bad% "), "recovered ");
  EXPECT_EQ(errors_, std::vector<std::string>{"error with new custom string 6b no reading for bad"});
}

TEST_F(TagEngine, LongAndOddLinesGiveWhatTheRulesGive) {
  std::string tags;
  for (int i = 0; i < 170'000; ++i) tags += "%temp%";  // 1 MB; each value is shorter than its tag
  std::string expected;
  for (int i = 0; i < 170'000; ++i) expected += "12.3";
  EXPECT_EQ(fill(tags), expected);
  const std::string signs(1'000'000, '%');
  EXPECT_EQ(fill(signs), signs);
  using namespace std::string_literals;
  EXPECT_EQ(fill("\0%temp%\xff%\x80%hum%\0%"s), "\0" "12.3\xff%\x80" "81\0%"s);
}

TEST(TemplateLines, KeepsTheFirst4500LinesOnly) {
  std::string text;
  for (int i = 1; i <= 4502; ++i) text += "line " + std::to_string(i) + "\r\n";
  const auto lines = templateLines(text);
  ASSERT_EQ(lines.size(), 4500u);
  EXPECT_EQ(lines.front(), "line 1");
  EXPECT_EQ(lines.back(), "line 4500");
  EXPECT_EQ(templateLines("a\nb\r\n\nlast"), (std::vector<std::string>{"a", "b", "", "last"}));
}

TEST_F(TagEngine, AMissingTemplateBecomesItsOwnMessage) {
  testsupport::TempFolder dir;
  ManualClock clock;
  TextLog log(dir / "programerrorlog.txt", clock);
  const TemplateJob job{dir.path(), "wxlocal.html", "wx.html"};
  ASSERT_TRUE(customwebpage(job, {}, chain_, {}, [&log](std::string_view m) { log.write(m); }));
  const std::string message = "Custom file does not exist " + (dir / "wxlocal.html").string();
  EXPECT_EQ(readWholeFile(dir / "wx.html"), message + "\r\n");
  EXPECT_NE(readWholeFile(log.path()).value_or("").find(message), std::string::npos);
}

}  // namespace
}  // namespace nimbrel
