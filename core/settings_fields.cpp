#include "core/settings_fields.h"

#include <fmt/format.h>

#include "core/number_format.h"

namespace nimbrel {

void FieldLoader::integer(std::string_view section, std::string_view key, int& field, int min, int max) {
  field = static_cast<int>(store_.readInteger(section, key, field, {min, max}));
}

void FieldLoader::integerOr(std::string_view section, std::string_view key, int& field, const int& whenEmpty, int min,
                            int max) {
  if (store_.ReadString(section, key).empty())
    field = whenEmpty;
  else
    integer(section, key, field, min, max);
}

void FieldLoader::decimal(std::string_view section, std::string_view key, double& field, const DecimalRange& range) {
  field = store_.readDecimal(section, key, field, range);
}

void FieldLoader::text(std::string_view section, std::string_view key, std::string& field) {
  std::string stored = store_.ReadString(section, key);
  if (!stored.empty()) field = std::move(stored);
}

void FieldLoader::onOff(std::string_view section, std::string_view key, bool& field) {
  field = store_.readSwitch(section, key);
}

void FieldSaver::integer(std::string_view section, std::string_view key, const int& field, int, int) {
  store_.WriteString(section, key, fmt::format("{}", field));
}

void FieldSaver::decimal(std::string_view section, std::string_view key, const double& field, const DecimalRange&) {
  store_.WriteString(section, key, floatText(field));
}

void FieldSaver::text(std::string_view section, std::string_view key, const std::string& field) {
  store_.WriteString(section, key, field);
}

void FieldSaver::onOff(std::string_view section, std::string_view key, const bool& field) {
  store_.writeSwitch(section, key, field);
}

}  // namespace nimbrel
