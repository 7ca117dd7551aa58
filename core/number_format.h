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

// Plain decimal text of a double with up to 15 significant digits and no
// trailing zeros ("12.5", "0", "-3.25", "9.27777777777778"): the form the
// settings store keeps, and what other programs reading it expect.
std::string floatText(double value);

// Text to number, accepting only the whole text (blanks around it allowed).
bool parseInt(const std::string& text, long long& out);
bool parseDouble(const std::string& text, double& out);

}  // namespace nimbrel
