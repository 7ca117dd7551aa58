#pragma once
// A line under scan, split where the scan stands, so that replacing a tag
// costs the same at the end of a long line as at its start: `done` holds the
// text before the position, `ahead` the (possibly changed) text from the
// position on, at least a longest tag and one character more while the line
// goes on, and `rest` the untouched original after that.

#include <cstddef>
#include <string>
#include <string_view>

namespace nimbrel {

class ScanCursor {
 public:
  // Takes the line over; `finish` puts the scanned line back into it.
  explicit ScanCursor(std::string& line);

  // The 0-based position the scan stands at.
  std::size_t position() const { return done_.size(); }
  // Moves on to the next "%" (true), or past the end of the line (false).
  bool toNextSign();
  // Moves one character on.
  void step();
  // The text from the position on: all of it, or at least kAhead characters.
  std::string_view ahead();
  // Whether `ahead` reaches the end of the line.
  bool aheadIsAll() const { return rest_.empty(); }
  // Puts `text` in place of the first `length` characters from the position.
  void replace(std::size_t length, std::string_view text) { ahead_.replace(0, length, text); }
  void finish();

  static constexpr std::size_t kAhead = 44;

 private:
  std::string& done_;
  const std::string original_;
  std::string_view rest_;
  std::string ahead_;
};

}  // namespace nimbrel
