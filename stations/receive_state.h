#pragma once
// What the receive handlers share: the frame buffer and the signs of life
// that the main cycle watches (no-data ticks, the data-received flag) and the
// data watchdog's completeness flags. One instance, owned by the program.

#include <array>
#include <cstdint>
#include <string>

namespace nimbrel {

inline constexpr std::size_t kFrameBufferLast = 700;  // indexes 0 ... 700
inline constexpr std::size_t kDebugCaptureLimit = 4096;

struct ReceiveState {
  std::array<std::uint8_t, kFrameBufferLast + 1> buffer{};
  std::uint16_t writeIndex = 0;
  std::uint16_t lastChunkLength = 0;
  bool decoding = false;      // a decoder is running: later events only store bytes
  bool blockMode = false;     // the next bytes answer a block request (HILOWS)
  std::uint16_t blockCrc = 0;
  bool headerVariant = false;  // "use revb": which header the live-packet sync looks for
  std::uint16_t decoderFieldCounter = 0;

  // Signs of life.
  std::uint16_t noDataTicks = 0;
  bool dataReceived = false;
  bool indicatorLime = false;  // the data-received light; the cycle turns it off again

  // Data watchdog (packet groups of the WM918 family, completeness).
  std::array<bool, 5> groupFlags{};
  bool processData = false;  // the cycle takes the present readings as new
  // The watchdog found more than 150 ticks without data; the next reading
  // clears it. While it is set the readings are old, and nothing logs them.
  bool stationSilent = false;
  bool hold = false;
  bool busy = false;
  bool onceOnlyReset = false;
  std::int32_t slowCounter = 0;

  // Raw-data logging.
  bool rawLogging = false;
  std::string debugCapture;
};

}  // namespace nimbrel
