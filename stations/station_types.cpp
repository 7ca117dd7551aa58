#include "stations/station_types.h"

#include <algorithm>
#include <span>
#include <tuple>

#include "stations/port_settings.h"

namespace nimbrel {
namespace {

constexpr SerialLine k9600None1{9600, Parity::none, 1};
constexpr SerialLine k9600Even2{9600, Parity::even, 2};
constexpr SerialLine k19200Even2{19200, Parity::even, 2};
constexpr SerialLine k2400None1{2400, Parity::none, 1};
constexpr SerialLine k19200None1{19200, Parity::none, 1};
constexpr SerialLine k38400None1{38400, Parity::none, 1};
// Models whose line speed we have no record of, and the models that run from
// files rather than a port: 9600 8N1, the speed most station interfaces use.
// The speed-key rows start from it too when their key holds nothing usable.
constexpr SerialLine kUnrecorded = k9600None1;

constexpr std::string_view kType = kStationTypeSection;
constexpr SpeedKey kVantageSpeed{kType, "Davis vp speed", {19200, 14400, 9600, 2400}};
// The Weather Monitor II family runs at 2400 unless the user picked 1200; the
// choice is kept under this key of ours.
constexpr SpeedKey kWmiiSpeed{kType, "Davis wmii speed", {2400, 1200}};
constexpr SpeedKey kVaisalaSpeed{kType, "Vaisala speed", {4800, 2400, 9600}};
constexpr SpeedKey kClimatronicsSpeed{kType, "climatronics speed", {9600, 19200}};
constexpr SpeedKey kAsosSpeed{"Weather Station Type asos speed", "speed", {9600, 19200, 2400}};
constexpr SpeedKey kTexasSpeed{kType, "texas baud rate", {19200}};
constexpr SpeedKey kUws3000wsSpeed{kType, "UWS3000ws speed", {19200}};
constexpr SpeedKey kUniversalSpeed{kType, "universal speed", {9600, 14400, 19200, 38400, 115200}};

// One row per stored name. Names that share a code share its decoder. Where a
// code has more captions than stored names, the extra caption stays here as a
// row with an empty name: no stored name selects it, but the screens that list
// captions still know it. Names are paired with the caption that says the
// same thing (the US Navy "30 seconds" name shows the "30 sec" caption).
constexpr StationTypeRow kRows[] = {
    {1, "WM-918", "  -WM918/WX200", k9600None1},
    {2, "WS2000", "  -WS2000", k9600Even2},
    {2, "WS2010", "  -WS2010", k9600Even2},
    {2, "WMR900H", "  -WMR-900H", k9600Even2},
    {3, "WMR918", "  -WMR918", k9600None1},
    {4, "DAVIS WMII", "  -DAVIS WMII ", k2400None1, kWmiiSpeed},
    {5, "DAVIS WIZARD III", "  -DAVIS WIZARD III", k2400None1, kWmiiSpeed},
    {6, "DAVIS WMII Standard", "  -DAVIS WMII Standard", k2400None1, kWmiiSpeed},
    {7, "DAVIS ENERGY", "  -DAVIS ENERGY ", k2400None1, kWmiiSpeed},
    {8, "WMR968", "  -WMR968", k9600None1},
    {10, "ULTIMETER II", "  -ULTIMETER II", kUnrecorded},
    {10, "ULTIMETER 2000", "  -ULTIMETER 2000", k9600None1},
    {10, "ULTIMETER", "  -ULTIMETER ", kUnrecorded},
    {10, "CONRAD", "  -CONRAD ", kUnrecorded},
    // The two stationless modes: readings typed in or taken from a data.csv
    // file of another program; they run under the Ultimeter code.
    {10, "stationless", "  -Stationless", kUnrecorded},
    {10, "stationless vws", "  -Stationless, VWS data.csv", kUnrecorded},
    {15, "DAVIS GROW", "  -DAVIS GROW ", k2400None1, kWmiiSpeed},
    {15, "DAVIS HEALTH", "  -DAVIS HEALTH ", k2400None1, kWmiiSpeed},
    {15, "currdatalst", "  -currdatalst", kUnrecorded},
    {15, "", "  -Heavy Weather", kUnrecorded},
    {16, "UWS3000ws", "   UWS-3000ws ", kUnrecorded, kUws3000wsSpeed},
    {17, "weathermax", "   - Weather Max ", kUnrecorded},
    {18, "RAWS input", "  -RAWS input ", kUnrecorded},
    {19, "", "  -US Navy 15 sec serial update", k2400None1},
    {19, "US Navy 30 seconds", "  -US Navy 30 sec serial update", k2400None1},
    {19, "US Navy 1 minute", "  -US Navy 1 minute serial update", k2400None1},
    {20, "RAIN WISE WS2000", "  -RAIN WISE WS2000", k9600None1},
    {21, "Iquest Datalogger", "  -Iquest Datalogger", kUnrecorded},
    {25, "Texas Instruments WR-25", "  -Texas Instruments WR-25", kUnrecorded, kTexasSpeed},
    // The 38400 variant of the WR-25 says its speed in its name.
    {25, "Texas Instruments WR-25 38400", "  -Texas Instruments WR-25", k38400None1},
    {25, "Texas Instruments WLS8000", "  -Texas Instruments WLS-8000", kUnrecorded},
    {26, "Dallas 1 wire", "  -Dallas 1 wire", kUnrecorded},
    {26, "Dallas 1 wire version 3", "  -Dallas 1 wire version 3", kUnrecorded},
    {29, "Morgan", "  -Morgan weather station", k9600None1},
    {30, "ASOS", "  -ASOS weather station", kUnrecorded, kAsosSpeed},
    {31, "DAVIS VANTAGE PRO", "  -DAVIS Vantage Pro", k19200None1, kVantageSpeed},
    {32, "climatronics ultrasonic", "  -Climatronics Ultrasonic", kUnrecorded, kClimatronicsSpeed},
    {35, "heathkit", "  -Heath kit ID5001", kUnrecorded},
    {36, "reinhard", "  -Reinhard", k19200None1},
    {37, "vaisala", "  -Vaisala", kUnrecorded, kVaisalaSpeed},
    {38, "cambel scientific", "  -Campbell Scientific", kUnrecorded},
    {39, "Reinhardt", "  -Reinhardt MWS9-5", kUnrecorded},
    {39, "observer", "  -Observer", k9600None1},
    {40, "microsigma", "  -Mirosigma", k9600None1},
    {41, "young", "  -Young", kUnrecorded},
    {42, "ws16", "  -WS-16", k9600None1},
    {43, "capricorn", "  -Capricorn", k9600None1},
    {44, "UWS3000sx", "   UWS-3000sx ", kUnrecorded},
    {45, "monitor", "  -Monitor sensor", k9600None1},
    {46, "ws2500log", "  -WS2500 log", kUnrecorded},
    {47, "hawk", "  -Weather Hawk", kUnrecorded},
    {48, "universal", "  -Universal file input", kUnrecorded},
    {51, "WS2500PC", "  -WS2500PC", k19200Even2},
    {51, "WS2500PC15", "  -WS2500PC", k19200Even2},
    {52, "weather pak", "  -Weather Pak", kUnrecorded},
    {54, "metone", "  -MetOne", kUnrecorded},
    {54, "sparkfun", "  -MetOne", kUnrecorded},
    {55, "monitor new", "  -Monitor sensor", k9600None1},
    {59, "honeywell", "  -Honeywell/Irox", kUnrecorded},
    {59, "irox direct", "  -Honeywell/Irox", kUnrecorded},
    {60, "WS2310", "  -WS2310", k2400None1},
    {61, "WS3600", "  -WS3600", kUnrecorded},
    {71, "owwcustom", "", kUnrecorded},
    {119, "weatherpac", "  -WEATHERPAC", k9600None1},
    {120, "kestral", "  -Kestrel", k9600None1},
    {121, "master2000", "  -Weather Master 2000", kUnrecorded},
    {122, "AWS", "  -AWS", k2400None1},
    {123, "Arduino", "  -Arduino", kUnrecorded, kUniversalSpeed},
    {150, "metlog", "  -Met-Log", k9600None1},
    {151, "casella", "  -Casella", kUnrecorded},
    {152, "INSTROMET", "", kUnrecorded},
    {160, "Hobo", "  -Hobo", kUnrecorded},
    {161, "H-500XL", "  -H-500XL", kUnrecorded},
    {162, "MEC", "  -MEC", kUnrecorded},
    {163, "weather reporter", "  -Reporter", kUnrecorded},
    {164, "WE800", "  -we800", kUnrecorded},
    {165, "zeno", "  -Zeno data logger", kUnrecorded},
    {165, "420ma", "  -420ma", kUnrecorded},
    {166, "easyweather", "  -WH1080", kUnrecorded},
    {190, "vaisala wxt510", "  -Vaisala WXT510", kUnrecorded},
    {192, "windguru", "  -Wind Guru", kUnrecorded},
    {210, "skye", "  -Skye", kUnrecorded},
    {232, "WMR100", "  -WMR100", kUnrecorded},
    {233, "WMR200", "  -WMR200", kUnrecorded},
    {234, "WMR300", "  -WMR300", kUnrecorded},
    {239, "smartweather", "  -Smart Weather", kUnrecorded},
    {323, "irdam", "  -IRDAM", kUnrecorded},
    {330, "vortex", "", kUnrecorded},
    {400, "acurite", "  -Acurite", kUnrecorded},
    {401, "stationless wlk", "  -Stationless, WLK", kUnrecorded},
    {600, "WS9000", "  -WS9000", k9600Even2},
    {601, "WS500", "  -WS500", kUnrecorded},
};

// Names are compared exactly, so the order in which they are tried does not
// matter as long as no name appears twice.
constexpr bool storedNamesAreUnique() {
  for (std::size_t i = 0; i < std::size(kRows); ++i)
    for (std::size_t j = i + 1; j < std::size(kRows); ++j)
      if (!kRows[i].storedName.empty() && kRows[i].storedName == kRows[j].storedName) return false;
  return true;
}
static_assert(storedNamesAreUnique(), "a stored station name appears twice");

}  // namespace

std::span<const StationTypeRow> stationTypeTable() { return kRows; }

const StationTypeRow* findStationType(std::string_view storedName) {
  if (storedName.empty()) return nullptr;  // never select a caption-only row
  const auto* row = std::find_if(std::begin(kRows), std::end(kRows),
                                 [storedName](const StationTypeRow& r) { return r.storedName == storedName; });
  return row == std::end(kRows) ? nullptr : row;
}

std::uint16_t stationTypeFromName(std::string_view storedName) {
  const StationTypeRow* row = findStationType(storedName);
  return row ? row->code : stationtype::none;
}

SerialLine serialLineFor(const StationTypeRow& row, const SettingsStore& mainSettings) {
  SerialLine line = row.line;
  if (row.speed.key.empty()) return line;
  std::array<long long, std::tuple_size_v<decltype(row.speed.choices)>> choices{};
  const auto end = std::copy_if(row.speed.choices.begin(), row.speed.choices.end(), choices.begin(),
                                [](std::uint32_t baud) { return baud != 0; });
  const IntegerRule rule{.choices = std::span<const long long>(choices.begin(), end)};
  line.baud = static_cast<std::uint32_t>(mainSettings.readInteger(row.speed.section, row.speed.key, line.baud, rule));
  return line;
}

StationSelection selectStation(const SettingsStore& mainSettings) {
  StationSelection selection;
  selection.storedName = mainSettings.ReadString(kStationTypeSection, "Name");
  const StationTypeRow* row = findStationType(selection.storedName);
  if (!row) return selection;
  selection.code = row->code;
  selection.caption = row->caption;
  selection.line = serialLineFor(*row, mainSettings);
  if (row->code == stationtype::vantagePro) {
    selection.vantageExtraSensors = mainSettings.readSwitch(kStationTypeSection, "Vantage pro extra sensors");
    selection.vantageOverTcp = mainSettings.readSwitch(kComportSection, "use tcpip vp");
  }
  return selection;
}

}  // namespace nimbrel
