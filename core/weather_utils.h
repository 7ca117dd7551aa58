#pragma once
// Meteorological formulas and unit conversions: stateless, double in and
// double out (the arithmetic inside runs in long double).
//
// Argument conventions:
//  - `humidity` is relative humidity in whole percent (0-255);
//  - `algorithm` selects a formula variant; unknown values fall back to the
//    default variant of each function, as documented below;
//  - metric functions take °C, metres, hPa and km/h; the ...US variants take
//    °F, feet, inches of mercury and mph.

namespace nimbrel {

class TWeatherUtils {
 public:
  TWeatherUtils() = delete;

  // Unit conversions.
  static double FToC(double fahrenheit);
  static double CToF(double celsius);
  static double CToK(double celsius);
  static double KToC(double kelvin);
  static double FToR(double fahrenheit);
  static double RToF(double rankine);
  static double InToHPa(double inches);
  static double HPaToIn(double hectopascals);
  static double FtToM(double feet);
  static double MToFt(double metres);
  static double InToMm(double inches);
  static double MmToIn(double millimetres);

  // base raised to exponent through exp/ln: 1 for exponent 0, 0 for base 0
  // and a positive exponent (note the argument order).
  static double Power(double exponent, double base);
  // Ten raised to x; exactly 1 for x == 0.
  static double Power10(double x);

  // Saturation vapour pressure over water in hPa at `celsius`.
  // 0: Magnus (17.62 / 243.12); 1: Buck 1996; 2: Buck 1981 (17.502 / 240.97);
  // 3 and any other value: Bolton (17.67 / 243.5); 4: 7.5 / 237.3 coefficients
  // used with the natural exponential (deliberately not a power of ten).
  static double SaturationVaporPressure(int algorithm, double celsius);
  // Vapour pressure in hPa: the saturation pressure scaled by humidity / 100.
  static double ActualVaporPressure(int humidity, int algorithm, double celsius);

  // Dew point in °C. Algorithm 0 inverts with the 243.12 / 17.62 Magnus
  // constants, every other value with 237.7 / 17.27. Humidity 0 has no dew
  // point (the logarithm of zero) and must not be passed.
  static double DewPoint(int humidity, int algorithm, double celsius);
  static double DewPointUS(int humidity, int algorithm, double fahrenheit);

  // Wind chill; the air temperature itself outside the formula's range
  // (10 °C / 50 °F and above, 4.8 km/h / 3 mph and below) and whenever the
  // formula would not come out below it.
  static double WindChill(double windKmh, double celsius);
  static double WindChillUS(double windMph, double fahrenheit);

  // Humidity term of the pressure reduction, in kelvin, for a station at
  // `heightM` metres. The vapour pressure always uses variant 0; `algorithm`
  // is accepted only so that all pressure helpers share one argument pattern.
  static double HumidityCorrection(int humidity, int algorithm, double heightM, double celsius);
  // The same term for feet and °F, in rankine (x 1.8).
  static double HumidityCorrectionUS(int humidity, int algorithm, double heightFt,
                                     double fahrenheit);

  // Grams of water vapour per kilogram of dry air.
  static double MixingRatio(int humidity, double celsius, double pressureHPa);
  static double VirtualTempK(int humidity, double celsius, double pressureHPa);
  static double VirtualTempC(int humidity, double celsius, double pressureHPa);

  // Geopotential height in metres of a geometric height in metres.
  static double GeopotentialAltitude(double heightM);

  // Pressure carried from the sensor's height to the station's height.
  static double SensorToStationPressure(double celsius, double sensorHeightM,
                                        double stationHeightM, double pressureHPa);
  static double SensorToStationPressureUS(double fahrenheit, double sensorHeightFt,
                                          double stationHeightFt, double pressureIn);

  // Altimeter setting from station pressure.
  // Metric: 1 NWS equation on the geopotential height; 2 and 3 the
  // standard-atmosphere forms; 4 NWS equation; 0, 5, 6 and any other value
  // through the US variant. US: 0 classic 0.1903 / 5.255 form; 5 exact
  // standard-atmosphere exponents; 6 NWS equation on the geopotential height;
  // any other value through the metric variant.
  static double StationToAltimeter(int algorithm, double heightM, double pressureHPa);
  static double StationToAltimeterUS(int algorithm, double heightFt, double pressureIn);

  // Sea-level pressure divided by station pressure.
  // `celsius` is the air temperature used for the air column, `humidityCelsius`
  // the temperature at which the humidity term is evaluated (usually the
  // current reading). US 0 and 2, and metric 1 (the default), are formulas of
  // their own; the others go through the other unit system.
  static double PressureReductionRatio(int humidity, int algorithm, double celsius,
                                       double humidityCelsius, double heightM,
                                       double pressureHPa);
  static double PressureReductionRatioUS(int humidity, int algorithm, double fahrenheit,
                                         double humidityFahrenheit, double heightFt,
                                         double pressureIn);

  // Station pressure (hPa) reduced to sea level.
  static double StationToSeaLevelPressure(int humidity, int algorithm, double celsius,
                                          double humidityCelsius, double heightM,
                                          double stationHPa);
  // Inverse of StationToSeaLevelPressure: the ratio is re-evaluated at the
  // estimated station pressure so that the two round-trip.
  static double SeaLevelToStationPressure(int humidity, int algorithm, double celsius,
                                          double humidityCelsius, double heightM,
                                          double seaLevelHPa);
  // Sea-level pressure carried down to a sensor at `sensorHeightM`, with the
  // ratio evaluated once at the sea-level pressure.
  static double SeaLevelToSensorPressureVP(int humidity, int algorithm, double celsius,
                                           double humidityCelsius, double sensorHeightM,
                                           double seaLevelHPa);
};

}  // namespace nimbrel
