#pragma once
// Checks settings a test expects a store to hold, as a table of
// {section, key, value}; a failure names the section and key.

#include <gtest/gtest.h>

#include <array>
#include <initializer_list>

#include "core/settings_store.h"

namespace nimbrel::testsupport {

using StoredEntry = std::array<const char*, 3>;

inline void expectStored(const SettingsStore& store, std::initializer_list<StoredEntry> entries) {
  for (const auto& [section, key, value] : entries)
    EXPECT_EQ(store.ReadString(section, key), value) << '[' << section << "] " << key;
}

}  // namespace nimbrel::testsupport
