#pragma once
// Every periodic duty runs through runDuty: a failure is written to the error
// log as "error with <duty> <what went wrong>" and the caller carries on with
// its next duty.

#include <exception>
#include <string>
#include <string_view>

#include "core/text_log.h"

namespace nimbrel {

template <class Duty>
bool runDuty(TextLog& errorLog, std::string_view name, Duty&& duty) noexcept {
  try {
    duty();
    return true;
  } catch (const std::exception& e) {
    errorLog.write("error with " + std::string(name) + " " + e.what());
  } catch (...) {
    errorLog.write("error with " + std::string(name) + " unknown error");
  }
  return false;
}

}  // namespace nimbrel
