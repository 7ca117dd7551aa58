#pragma once
// The owners' list of template tags (docs/tags.md), made from the
// vocabulary's table so that it always says what the program does.

#include <string>

namespace nimbrel {

std::string tagListMarkdown();

}  // namespace nimbrel
