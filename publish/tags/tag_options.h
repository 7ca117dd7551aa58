#pragma once
// How the owner wants tag values written, and where the station stands.
//
// Settings (main settings, section "Use my own template" unless said):
//   "html degree sign"   "yes": the degree sign is written "&deg;" (for web pages)
//   "spell minus"        "yes": every "-" of a number is written "minus " (for speech)
//   "word language"      language of the trend and compass words: "english"
//                        (the default), "german", "italian", "spanish",
//                        "french", "danish"
//   section "Station position", keys "latitude" and "longitude": decimal
//   degrees, north and east positive; the altitude is the station's "Height
//   above sea level".

#include <optional>
#include <string_view>

namespace nimbrel {

class SettingsStore;
struct UnitSettings;

enum class WordLanguage { english, german, italian, spanish, french, danish };

struct StationPosition {
  std::optional<double> latitude;   // degrees, north positive; empty: not set
  std::optional<double> longitude;  // degrees, east positive
  double altitudeMetres = 0;
};

struct TagOptions {
  bool htmlDegreeSign = false;
  bool spellMinus = false;
  WordLanguage language = WordLanguage::english;
  StationPosition position;
};

inline constexpr std::string_view kStationPositionSection = "Station position";

// The options and position as the settings hold them; a value that does
// not parse keeps its default.
TagOptions readTagOptions(const SettingsStore& main, const UnitSettings& units);

}  // namespace nimbrel
