#pragma once
// Export of a settings store as a registry-editor text file, the form in
// which the upload and signal settings are backed up: every section becomes
// the key "HKEY_CURRENT_USER\Software\<store name>\<section>" and every entry
// a string value. The store name is the store's file name, which is also the
// name of its registry key ("nimbrelftp.ini", "nimbrelftp2.ini", ...).
//
// The file is 8-bit text with CR LF line ends (values are written byte for
// byte as stored); backslashes and double quotes in names and values are
// escaped with a backslash.

#include <filesystem>
#include <string>
#include <string_view>

#include "core/ini_document.h"
#include "core/ini_store.h"

namespace nimbrel {

std::string regExportText(const IniDocument& document, std::string_view storeName);

// Writes the export of `store` to `target` (through a temporary file).
bool exportReg(const IniStore& store, const std::filesystem::path& target, std::string* error = nullptr);

}  // namespace nimbrel
