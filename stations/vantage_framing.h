#pragma once
// Framing of the Vantage console's byte stream (serial or TCP).
//
// Live packets: the 99-byte LOOP packet starts "LOO" followed by 'P' (older
// firmware, "use revb" off) or by the barometric trend ("use revb" on). The
// handler stores bytes in the frame buffer and re-aligns on the header by
// looking at the byte the previous frame left in the slot at the new index:
// that stale byte is what keeps successive packets at the same offset. With
// "use revb" off a frame is complete with 'P' at position 0 (packet byte 3);
// with it on, with 'O' at position 0 and the decoder shifts it into place.
//
// Block answers (HILOWS): the acknowledge byte and 438 bytes, checked with
// the CRC over buffer[1] ... buffer[438].
//
// A decode ends the receive event: the rest of that event's bytes are
// dropped. The links deliver one byte per event, so nothing is lost.

#include <cstdint>
#include <functional>
#include <span>

#include "stations/receive_state.h"

namespace nimbrel {

class TextLog;

inline constexpr std::uint16_t kLoopFrameLength = 99;
inline constexpr std::uint16_t kHilowsLastIndex = 438;

struct VantageFrameHandlers {
  std::function<void()> onLoopFrame;  // the frame is in the buffer; decode it
  std::function<void()> onGoodBlock;  // a HILOWS block with a good CRC
};

void commportdriverReceiveData31(ReceiveState& state, std::span<const std::uint8_t> bytes,
                                 const VantageFrameHandlers& handlers, TextLog* rawLog = nullptr);

// Starts block mode just before a block request is sent.
void beginBlock(ReceiveState& state);

}  // namespace nimbrel
