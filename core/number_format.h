#pragma once
// Numbers as the data files write them: always a point as decimal separator,
// whatever the machine's locale.

#include <string>

namespace nimbrel {

// "Width w with d decimals": at least `width` characters, padded on the left
// with blanks, exactly `decimals` decimals (like printf's "%w.df").
std::string fixed(double value, int width, int decimals);

// An integer padded on the left with blanks to at least `width` characters.
std::string padded(long long value, int width);

// Plain decimal text of a double, the shortest that reads back to the same
// value ("12.5", "0", "-3.25"); the form the settings store keeps.
std::string floatText(double value);

// Text to number, accepting only the whole text (blanks around it allowed).
bool parseInt(const std::string& text, long long& out);
bool parseDouble(const std::string& text, double& out);

}  // namespace nimbrel
