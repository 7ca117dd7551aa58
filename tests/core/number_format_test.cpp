#include "core/number_format.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <locale>
#include <string>

namespace nimbrel {
namespace {

TEST(FixedWidth, PadsOnTheLeftRoundsToTheDecimalsAndNeverWritesMinusZero) {
  EXPECT_EQ(fixed(5.3, 4, 1), " 5.3");
  EXPECT_EQ(fixed(1013.25, 6, 1), "1013.3");
  EXPECT_EQ(fixed(9.95, 3, 1), "10.0");  // halfway in decimal, not in binary
  EXPECT_EQ(fixed(12.345, 3, 3), "12.345");
  EXPECT_EQ(fixed(-0.5, 3, 1), "-0.5");
  EXPECT_EQ(fixed(-12.25, 1, 0), "-12");
  EXPECT_EQ(fixed(-0.04, 3, 1), "0.0");
  EXPECT_EQ(fixed(-0.0, 1, 2), "0.00");
  EXPECT_EQ(fixed(-0.06, 3, 1), "-0.1");
  EXPECT_EQ(padded(7, 2), " 7");
  EXPECT_EQ(padded(45, 3), " 45");
  EXPECT_EQ(padded(1234, 2), "1234");
}

// Thousandths have exact decimal texts, so the expected rounding can be done
// in integers: every tie and every near-tie from -20 to 20 at 0, 1 and 2
// decimals.
TEST(FixedWidth, ThousandthsRoundHalfAwayFromZeroLikeTheirDecimalText) {
  for (int decimals = 0; decimals <= 2; ++decimals) {
    const long long step = decimals == 0 ? 1000 : decimals == 1 ? 100 : 10;
    for (long long thousandths = -20000; thousandths <= 20000; ++thousandths) {
      const long long magnitude = (std::llabs(thousandths) * 2 + step) / (2 * step);  // half away from zero
      std::string expected = std::to_string(magnitude);
      if (decimals > 0) {
        const auto width = static_cast<std::size_t>(decimals + 1);
        if (expected.size() < width) expected.insert(0, width - expected.size(), '0');
        expected.insert(expected.size() - decimals, ".");
      }
      if (thousandths < 0 && magnitude != 0) expected.insert(0, "-");
      ASSERT_EQ(fixed(thousandths / 1000.0, 1, decimals), expected) << thousandths << " at " << decimals;
    }
  }
}

// A decimal comma in both the C and the C++ global locale, restored afterwards.
class CommaLocale {
 public:
  CommaLocale() : savedC_(std::setlocale(LC_ALL, nullptr)), savedCpp_(std::locale()) {
    for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"})
      if (std::setlocale(LC_ALL, name)) break;
    std::locale::global(std::locale(std::locale::classic(), new CommaPunct));
  }
  ~CommaLocale() {
    std::setlocale(LC_ALL, savedC_.c_str());
    std::locale::global(savedCpp_);
  }
  static bool cHasComma() { return *std::localeconv()->decimal_point == ','; }

 private:
  struct CommaPunct : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
  };
  std::string savedC_;
  std::locale savedCpp_;
};

TEST(FixedWidth, UsesAPointEvenWhenTheLocaleUsesAComma) {
  CommaLocale comma;
  EXPECT_EQ(fixed(3.25, 5, 2), " 3.25");
  EXPECT_EQ(fixed(-0.5, 3, 1), "-0.5");
  EXPECT_EQ(floatText(1013.5), "1013.5");
  double parsed = 0;
  EXPECT_TRUE(parseDouble("12.75", parsed));
  EXPECT_DOUBLE_EQ(parsed, 12.75);
  if (!CommaLocale::cHasComma()) GTEST_SKIP() << "no C locale with a decimal comma installed";
}

TEST(FloatText, FifteenSignificantDigitsThatReadBack) {
  EXPECT_EQ(floatText(83.5 / 9), "9.27777777777778");
  EXPECT_EQ(floatText(1024.9616879999999), "1024.961688");
  EXPECT_EQ(floatText(0.0), "0");
  EXPECT_EQ(floatText(12.5), "12.5");
  for (double v : {0.0, 0.1, 12.7, -3.25, 1013.2, 123456.789}) {
    double back = -1;
    ASSERT_TRUE(parseDouble(floatText(v), back)) << floatText(v);
    EXPECT_EQ(back, v);
  }
}

TEST(StrictParsing, RejectsPartialAndEmptyText) {
  long long i = 0;
  EXPECT_TRUE(parseInt(" 42 ", i));
  EXPECT_EQ(i, 42);
  EXPECT_TRUE(parseInt("-7", i));
  EXPECT_EQ(i, -7);
  for (const char* bad : {"", "12a", "1.5"}) EXPECT_FALSE(parseInt(bad, i)) << bad;
  double d = 0;
  for (const char* bad : {"1,5", "nan", "   "}) EXPECT_FALSE(parseDouble(bad, d)) << bad;
}

}  // namespace
}  // namespace nimbrel
