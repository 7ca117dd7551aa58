#pragma once
// The one interface through which every part reads and writes its settings:
// sections of keys with text values. Everything is text; the reader converts.
// A missing key reads as the empty text, and an empty text means "use the
// setting's built-in default". Switches are on only when the text is "yes".

#include <string>
#include <string_view>
#include <vector>

namespace nimbrel {

// `value` as it may appear in a log: hidden for keys that hold a password or
// another secret, and shortened when long.
std::string shownSettingValue(std::string_view key, std::string_view value);

class SettingsStore {
 public:
  virtual ~SettingsStore() = default;

  // The stored text, or `fallback` when the key is missing.
  virtual std::string ReadString(std::string_view section, std::string_view key,
                                 std::string_view fallback = "") const = 0;
  virtual void WriteString(std::string_view section, std::string_view key, std::string_view value) = 0;
  // Fills `keys` with the key names of `section`, in stored order.
  virtual void ReadSection(std::string_view section, std::vector<std::string>& keys) const = 0;
  virtual void EraseSection(std::string_view section) = 0;
  virtual void DeleteKey(std::string_view section, std::string_view key) = 0;
  // Writes the store to its backing file; false (and the reason logged) on failure.
  virtual bool flush() = 0;

  bool readSwitch(std::string_view section, std::string_view key) const {
    return ReadString(section, key) == "yes";
  }
  void writeSwitch(std::string_view section, std::string_view key, bool on) {
    WriteString(section, key, on ? "yes" : "no");
  }
};

}  // namespace nimbrel
