#pragma once
// A tag's value as text: converted to the unit shown, written with the
// tag's width and decimals and a point as decimal separator, the unit's
// symbol appended when the display-units flag asks for it, minus signs
// spelt out for speech. A missing or non-finite value is "---".

#include <string>
#include <string_view>

#include "core/unit_settings.h"
#include "publish/tags/tag_def.h"

namespace nimbrel {

inline constexpr std::string_view kNoData = "---";

struct TagWriting {
  UnitChoicesSettings units;  // the web units are the ones shown
  bool displayUnits = false;
  bool htmlDegreeSign = false;
  bool spellMinus = false;
};

std::string formatTag(const TagDef& def, const TagValue& value, const TagWriting& writing);

// The symbol the display-units flag appends to a number shown in `unit`
// (the owner's choice already resolved for the families): "°C", " km/h".
std::string unitSymbol(Unit unit, const TagWriting& writing);

// An internal number of `family` in the unit this owner is shown.
double shownValue(double internal, Unit family, const UnitChoicesSettings& units);

// The unit a family's number is shown in for this owner; a fixed unit stays.
Unit shownUnit(Unit unit, const UnitChoicesSettings& units);

}  // namespace nimbrel
