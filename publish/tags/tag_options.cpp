#include "publish/tags/tag_options.h"

#include <array>
#include <utility>

#include "core/number_format.h"
#include "core/settings_store.h"
#include "core/unit_settings.h"
#include "publish/template/custom_web_page.h"

namespace nimbrel {
namespace {

constexpr std::array<std::pair<std::string_view, WordLanguage>, 6> kLanguages = {{
    {"english", WordLanguage::english},
    {"german", WordLanguage::german},
    {"italian", WordLanguage::italian},
    {"spanish", WordLanguage::spanish},
    {"french", WordLanguage::french},
    {"danish", WordLanguage::danish},
}};

std::optional<double> degrees(const SettingsStore& main, std::string_view key, double limit) {
  double value = 0;
  if (!parseDouble(main.ReadString(kStationPositionSection, key), value)) return std::nullopt;
  if (value < -limit || value > limit) return std::nullopt;
  return value;
}

}  // namespace

TagOptions readTagOptions(const SettingsStore& main, const UnitSettings& units) {
  TagOptions options;
  options.htmlDegreeSign = main.readSwitch(kTemplateSection, "html degree sign");
  options.spellMinus = main.readSwitch(kTemplateSection, "spell minus");
  const std::string language = main.ReadString(kTemplateSection, "word language");
  for (const auto& [word, choice] : kLanguages)
    if (language == word) options.language = choice;
  options.position.latitude = degrees(main, "latitude", 90.0);
  options.position.longitude = degrees(main, "longitude", 180.0);
  options.position.altitudeMetres = units.heightAboveSeaLevel;
  return options;
}

}  // namespace nimbrel
