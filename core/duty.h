#pragma once
// Every periodic duty runs through runDuty: a failure is written to the error
// log and the caller carries on with its next duty. The logged line is the
// duty's failure text followed by what went wrong; by default that text is
// "error with " and the duty's name and a blank.

#include <exception>
#include <string>
#include <string_view>

#include "core/text_log.h"

namespace nimbrel {

template <class Duty>
bool runDutyWithMessage(TextLog& errorLog, std::string_view failureText, Duty&& duty) noexcept {
  try {
    duty();
    return true;
  } catch (const std::exception& e) {
    errorLog.write(std::string(failureText) + e.what());
  } catch (...) {
    errorLog.write(std::string(failureText) + "unknown error");
  }
  return false;
}

template <class Duty>
bool runDuty(TextLog& errorLog, std::string_view name, Duty&& duty) noexcept {
  return runDutyWithMessage(errorLog, "error with " + std::string(name) + " ", std::forward<Duty>(duty));
}

}  // namespace nimbrel
