#include "core/weather_utils.h"

#include <gtest/gtest.h>

#include <cmath>

// Expected values were worked out independently with python3's math module
// (double precision) from the published formulas; the tolerances allow for
// the long double arithmetic here.

namespace nimbrel {
namespace {

using WU = TWeatherUtils;

TEST(WeatherUtilsConversions, FixedPointsAndRoundTrips) {
  EXPECT_DOUBLE_EQ(WU::FToC(212.0), 100.0);
  EXPECT_DOUBLE_EQ(WU::CToF(-40.0), -40.0);
  EXPECT_DOUBLE_EQ(WU::CToK(0.0), 273.15);
  EXPECT_DOUBLE_EQ(WU::FToR(0.0), 459.67);
  EXPECT_NEAR(WU::HPaToIn(1013.25), 29.9212725, 1e-9);
  EXPECT_DOUBLE_EQ(WU::FtToM(1000.0), 304.8);
  EXPECT_DOUBLE_EQ(WU::InToMm(2.0), 50.8);
  for (double v : {-30.5, 0.0, 17.25, 1013.2}) {
    EXPECT_NEAR(WU::KToC(WU::CToK(v)), v, 1e-12);
    EXPECT_NEAR(WU::RToF(WU::FToR(v)), v, 1e-12);
    EXPECT_NEAR(WU::InToHPa(WU::HPaToIn(v)), v, 1e-12);
    EXPECT_NEAR(WU::MToFt(WU::FtToM(v)), v, 1e-12);
    EXPECT_NEAR(WU::MmToIn(WU::InToMm(v)), v, 1e-12);
  }
}

TEST(WeatherUtilsPower, EdgeCasesAndArgumentOrder) {
  EXPECT_EQ(WU::Power(0.0, 0.0), 1.0);
  EXPECT_EQ(WU::Power(0.0, -3.0), 1.0);  // exponent 0 wins over a bad base
  EXPECT_EQ(WU::Power(2.5, 0.0), 0.0);
  EXPECT_TRUE(std::isinf(WU::Power(-1.0, 0.0)));
  EXPECT_NEAR(WU::Power(3.0, 2.0), 8.0, 1e-12);  // exponent first, base second
  EXPECT_NEAR(WU::Power(0.5, 16.0), 4.0, 1e-12);
  EXPECT_EQ(WU::Power10(0.0), 1.0);
  EXPECT_NEAR(WU::Power10(2.0), 100.0, 1e-6);
  EXPECT_NEAR(WU::Power10(-1.0), 0.1, 1e-9);
}

TEST(WeatherUtilsVapour, SaturationPressurePerAlgorithm) {
  // Algorithm 4 uses a natural exponential: with a power of ten it would be 23.376.
  const double at20[] = {23.32596022097807, 23.383399784500185, 23.37282472851255, 23.36947123406443,
                         10.939176262163935};
  for (int algorithm = 0; algorithm <= 4; ++algorithm)
    EXPECT_NEAR(WU::SaturationVaporPressure(algorithm, 20.0), at20[algorithm], 1e-9) << algorithm;
  for (double t : {-20.0, 0.0, 35.0}) {
    EXPECT_EQ(WU::SaturationVaporPressure(9, t), WU::SaturationVaporPressure(3, t));
    EXPECT_EQ(WU::SaturationVaporPressure(-1, t), WU::SaturationVaporPressure(3, t));
  }
  EXPECT_NEAR(WU::ActualVaporPressure(50, 0, 20.0), 23.32596022097807 / 2, 1e-9);
}

TEST(WeatherUtilsDewPoint, InversionConstantsSwitchOnlyOnAlgorithmZero) {
  EXPECT_NEAR(WU::DewPoint(65, 0, 20.0), 13.218114424815507, 1e-9);
  EXPECT_NEAR(WU::DewPoint(100, 0, 20.0), 20.00086276123235, 1e-9);
  // Bolton vapour pressure with the 237.7 / 17.27 inversion: not exactly T.
  EXPECT_NEAR(WU::DewPoint(100, 3, 20.0), 20.01906295706124, 1e-9);
  EXPECT_NEAR(WU::DewPoint(50, 1, -5.0), -13.790017236018306, 1e-9);
  EXPECT_NEAR(WU::DewPointUS(65, 0, 68.0), 55.792605964667914, 1e-9);
  EXPECT_FALSE(std::isfinite(WU::DewPoint(0, 0, 20.0)));
}

TEST(WeatherUtilsWindChill, MetricAndUsLimits) {
  EXPECT_EQ(WU::WindChill(40.0, 10.0), 10.0);
  EXPECT_EQ(WU::WindChill(4.8, 9.9), 9.9);
  EXPECT_NEAR(WU::WindChill(4.81, 9.9), 9.693184851164858, 1e-9);
  EXPECT_NEAR(WU::WindChill(20.0, -5.0), -11.559403812073429, 1e-9);
  EXPECT_EQ(WU::WindChillUS(3.0, 40.0), 40.0);
  EXPECT_NEAR(WU::WindChillUS(3.01, 40.0), 38.354125878151855, 1e-9);
  EXPECT_EQ(WU::WindChillUS(30.0, 50.0), 50.0);
  EXPECT_NEAR(WU::WindChillUS(10.0, 20.0), 8.854038235710776, 1e-9);
}

TEST(WeatherUtilsMoistAir, HumidityTermsAndVirtualTemperature) {
  EXPECT_NEAR(WU::HumidityCorrection(60, 3, 300.0, 15.0), 1.1676182346052546, 1e-9);
  EXPECT_NEAR(WU::HumidityCorrectionUS(60, 3, WU::MToFt(300.0), WU::CToF(15.0)),
              1.8 * 1.1676182346052546, 1e-9);
  EXPECT_NEAR(WU::MixingRatio(50, 20.0, 1000.0), 7.358267994093245, 1e-9);
  EXPECT_NEAR(WU::VirtualTempK(50, 20.0, 1000.0), 294.451316569105, 1e-9);
  EXPECT_NEAR(WU::VirtualTempC(0, 20.0, 1000.0), 20.0, 1e-12);
  EXPECT_NEAR(WU::GeopotentialAltitude(1000.0), 999.8427120469674, 1e-9);
}

TEST(WeatherUtilsPressure, SensorToStationHeightAndAltimeterSettingAt100Metres) {
  EXPECT_NEAR(WU::SensorToStationPressureUS(59.0, 100.0, 0.0, 29.5), 29.39371949198359, 1e-9);
  EXPECT_NEAR(WU::SensorToStationPressure(15.0, 10.0, 0.0, 1000.0), 998.8165687396993, 1e-7);
  EXPECT_DOUBLE_EQ(WU::SensorToStationPressure(15.0, 25.0, 25.0, 1000.0), 1000.0);
  const double expected[] = {1012.0340047842294, 1011.6449662129513, 1011.9431122284363, 1011.638906897964,
                             1011.6451550271745};
  for (int algorithm = 0; algorithm <= 4; ++algorithm)
    EXPECT_NEAR(WU::StationToAltimeter(algorithm, 100.0, 1000.0), expected[algorithm], 1e-7) << algorithm;
  EXPECT_EQ(WU::StationToAltimeter(7, 100.0, 1000.0), WU::StationToAltimeter(0, 100.0, 1000.0));
  EXPECT_NEAR(WU::StationToAltimeterUS(6, 1000.0, 29.5), 30.574828822337736, 1e-9);
  EXPECT_NEAR(WU::StationToAltimeterUS(1, 1000.0, 29.5), 30.5760056493416, 1e-9);
  EXPECT_NEAR(WU::StationToAltimeter(2, 0.0, 1000.0), 1000.0, 1e-9);
  const double feet = WU::MToFt(100.0);
  const double inches = WU::HPaToIn(1000.0);
  // The same equations in inches (the NWS one with 0.01 inHg instead of 0.3 hPa).
  EXPECT_NEAR(WU::InToHPa(WU::StationToAltimeterUS(6, feet, inches)),
              WU::StationToAltimeter(1, 100.0, 1000.0), 0.05);
  EXPECT_NEAR(WU::InToHPa(WU::StationToAltimeterUS(5, feet, inches)),
              WU::StationToAltimeter(2, 100.0, 1000.0), 0.01);
}

// 15 °C, 70 % at a station 100 m up reading 1000 hPa.
double ratioAt100m(int algorithm, int humidity = 70) {
  return WU::PressureReductionRatio(humidity, algorithm, 15.0, 15.0, 100.0, 1000.0);
}

TEST(WeatherUtilsPressure, ReductionRatio) {
  EXPECT_NEAR(ratioAt100m(1), 1.0118588956676335, 1e-12);
  EXPECT_NEAR(ratioAt100m(1, 0), 1.011912902153175, 1e-12);
  EXPECT_NEAR(WU::PressureReductionRatio(70, 1, 10.0, 20.0, 300.0, 980.0), 1.036485218072059, 1e-12);
  EXPECT_NEAR(ratioAt100m(0), 1.0118501299475942, 1e-9);
  EXPECT_NEAR(ratioAt100m(2), 1.0118504775541484, 1e-9);
  EXPECT_EQ(ratioAt100m(3), ratioAt100m(1));
  EXPECT_NEAR(WU::PressureReductionRatioUS(50, 0, 59.0, 50.0, 1000.0, 28.9), 1.0365710516032074, 1e-9);
}

TEST(WeatherUtilsPressure, SeaLevelConversions) {
  for (int algorithm : {0, 1, 2}) {
    SCOPED_TRACE(algorithm);
    EXPECT_NEAR(WU::StationToSeaLevelPressure(80, algorithm, 12.0, 12.0, 0.0, 1003.4), 1003.4, 1e-9);
    const double seaLevel = WU::StationToSeaLevelPressure(70, algorithm, 15.0, 15.0, 100.0, 1000.0);
    EXPECT_NEAR(seaLevel - 1000.0, 11.85, 0.05);
    EXPECT_NEAR(WU::SeaLevelToStationPressure(70, algorithm, 15.0, 15.0, 100.0, seaLevel), 1000.0, 1e-6);
  }
  const double sensor = WU::SeaLevelToSensorPressureVP(70, 1, 15.0, 15.0, 100.0, 1013.0);
  EXPECT_NEAR(sensor, 1013.0 / ratioAt100m(1), 0.01);
}

}  // namespace
}  // namespace nimbrel
