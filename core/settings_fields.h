#pragma once
// Typed reading and writing of single settings, shaped so that one list of
// (section, key, field) calls can both load and save a settings struct:
//
//   template <class Settings, class Fields>
//   void visitFields(Settings& s, Fields& f) { f.integer("Max wind gauge", "number", s.maxWindGauge); }
//
// run once with a FieldLoader over a struct and once with a FieldSaver over a
// const struct. The loader keeps a field's current value (its default) when
// the stored text is empty, does not parse or lies outside the range; the
// store reports the last two (SettingsStore::readInteger).

#include <climits>
#include <string>
#include <string_view>

#include "core/settings_store.h"
#include "core/unit_choices.h"

namespace nimbrel {

class FieldLoader {
 public:
  explicit FieldLoader(const SettingsStore& store) : store_(store) {}

  void integer(std::string_view section, std::string_view key, int& field, int min = INT_MIN, int max = INT_MAX);
  // Like integer(), but an empty value takes `whenEmpty` (a field read before).
  void integerOr(std::string_view section, std::string_view key, int& field, const int& whenEmpty, int min, int max);
  void decimal(std::string_view section, std::string_view key, double& field, const DecimalRange& range = {});
  void text(std::string_view section, std::string_view key, std::string& field);
  void onOff(std::string_view section, std::string_view key, bool& field);

  template <class Choice>
  void choice(std::string_view section, std::string_view key, Choice& field) {
    if (const auto chosen = choiceFromWord<Choice>(store_.ReadString(section, key))) field = *chosen;
  }

 private:
  const SettingsStore& store_;
};

class FieldSaver {
 public:
  explicit FieldSaver(SettingsStore& store) : store_(store) {}

  void integer(std::string_view section, std::string_view key, const int& field, int = 0, int = 0);
  void integerOr(std::string_view section, std::string_view key, const int& field, const int&, int, int) {
    integer(section, key, field);
  }
  void decimal(std::string_view section, std::string_view key, const double& field, const DecimalRange& = {});
  void text(std::string_view section, std::string_view key, const std::string& field);
  void onOff(std::string_view section, std::string_view key, const bool& field);

  template <class Choice>
  void choice(std::string_view section, std::string_view key, const Choice& field) {
    store_.WriteString(section, key, choiceWord(field));
  }

 private:
  SettingsStore& store_;
};

}  // namespace nimbrel
