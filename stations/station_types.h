#pragma once
// Station types: the small number that every driver and many later steps
// branch on. The user's choice of model is stored as a name (section
// "Weather Station Type", key "Name"); at each start the name is looked up in
// the table below, which gives the type code, the caption shown after the
// program title and the serial line the model talks on.

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "core/settings_store.h"
#include "stations/serial_line.h"

namespace nimbrel {

inline constexpr std::string_view kStationTypeSection = "Weather Station Type";

// Codes that other parts refer to by name. 0 means no station chosen; every
// receive path ignores input then.
namespace stationtype {
inline constexpr std::uint16_t none = 0;
inline constexpr std::uint16_t wm918 = 1;
inline constexpr std::uint16_t wmr918 = 3;
inline constexpr std::uint16_t wmr968 = 8;
inline constexpr std::uint16_t ultimeter = 10;  // also the stationless modes
inline constexpr std::uint16_t dallasOneWire = 26;
inline constexpr std::uint16_t vantagePro = 31;
}  // namespace stationtype

// A setting that picks the baud rate among a few fixed choices. A stored
// value that is empty, not a number or not one of the choices keeps the
// row's own line speed (the last two are reported in the error log).
struct SpeedKey {
  std::string_view section;  // empty: the model has no speed choice
  std::string_view key;
  std::array<std::uint32_t, 5> choices{};  // 0 marks an unused slot
};

struct StationTypeRow {
  std::uint16_t code = 0;
  std::string_view storedName;  // empty: a caption that no stored name selects
  std::string_view caption;     // may be empty: the model shows none
  SerialLine line;              // the line used when the speed key does not choose
  SpeedKey speed{};
};

// Every row of the station-type table, in the order of the type codes.
std::span<const StationTypeRow> stationTypeTable();

// The row whose stored name equals `storedName` exactly (case counts), or
// nullptr when there is none.
const StationTypeRow* findStationType(std::string_view storedName);

// The type code of a stored name; 0 when no row has that name.
std::uint16_t stationTypeFromName(std::string_view storedName);

// The row's serial line, with the baud rate taken from its speed key when
// that holds one of the key's choices.
SerialLine serialLineFor(const StationTypeRow& row, const SettingsStore& mainSettings);

// What the start-up reads from the main settings before the port is opened.
struct StationSelection {
  std::uint16_t code = stationtype::none;
  std::string storedName;
  std::string_view caption;  // points into the table; empty when no row matched
  SerialLine line;
  bool vantageExtraSensors = false;  // "Vantage pro extra sensors" (Vantage only)
  bool vantageOverTcp = false;       // "use tcpip vp" (Vantage only)
};

StationSelection selectStation(const SettingsStore& mainSettings);

}  // namespace nimbrel
