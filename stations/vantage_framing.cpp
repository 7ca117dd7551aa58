#include "stations/vantage_framing.h"

#include "core/text_log.h"
#include "stations/crc_ccitt.h"

namespace nimbrel {
namespace {

void noteReceiveEvent(ReceiveState& state, std::size_t count) {
  state.noDataTicks = 0;
  state.dataReceived = true;
  state.indicatorLime = true;
  state.lastChunkLength = static_cast<std::uint16_t>(count);
}

void capture(ReceiveState& state, std::uint8_t byte) {
  if (!state.rawLogging || byte == 0x13 || byte == 0x10 || byte == 0xAE) return;
  if (state.debugCapture.size() < kDebugCaptureLimit) state.debugCapture += static_cast<char>(byte);
}

void log(TextLog* rawLog, const ReceiveState& state, const char* text) {
  if (rawLog && state.rawLogging) rawLog->write(text);
}

// Runs the decoder once; false when one is already running.
bool decodeFrame(ReceiveState& state, const VantageFrameHandlers& handlers) {
  if (state.decoding) return false;
  state.decoding = true;
  state.decoderFieldCounter = 0;
  if (handlers.onLoopFrame) handlers.onLoopFrame();
  state.decoding = false;
  state.writeIndex = 0;  // the next byte starts the next frame
  return true;
}

// One byte of a live packet; true when a decode ended the receive event.
bool liveByte(ReceiveState& state, std::uint8_t byte, const VantageFrameHandlers& handlers,
              TextLog* rawLog) {
  auto& index = state.writeIndex;
  if (index < 301) {
    state.buffer[index] = byte;
    capture(state, byte);
  }
  index = index < kFrameBufferLast ? index + 1 : 0;
  if (index >= 300) return false;

  if (!state.headerVariant) {
    if (state.buffer[index] == 'P' && byte == 'O') index = 0;
    if (index == kLoopFrameLength) {
      if (state.buffer[0] == 'P' && decodeFrame(state, handlers)) return true;
      index = 0;
    }
    return false;
  }

  if (state.buffer[index] == 'O' && byte == 'O') {
    index = 0;
    log(rawLog, state, "setting counter to zero");
  }
  if (index > kLoopFrameLength - 1) {
    log(rawLog, state, "99 reached");
    if (state.buffer[0] == 'O') {
      log(rawLog, state, "formating the data");
      if (decodeFrame(state, handlers)) return true;
    }
    index = 0;
  }
  return false;
}

void blockByte(ReceiveState& state, std::uint8_t byte, const VantageFrameHandlers& handlers) {
  auto& index = state.writeIndex;
  state.buffer[index] = byte;
  if (index < kHilowsLastIndex) {
    ++index;
    return;
  }
  index = 0;
  state.blockMode = false;
  state.blockCrc = crcCcitt(std::span<const std::uint8_t>(state.buffer).subspan(1, kHilowsLastIndex));
  if (state.blockCrc == 0 && handlers.onGoodBlock) handlers.onGoodBlock();
}

}  // namespace

void commportdriverReceiveData31(ReceiveState& state, std::span<const std::uint8_t> bytes,
                                 const VantageFrameHandlers& handlers, TextLog* rawLog) {
  noteReceiveEvent(state, bytes.size());
  for (std::uint8_t byte : bytes) {
    if (state.blockMode) {
      blockByte(state, byte, handlers);
      continue;
    }
    if (liveByte(state, byte, handlers, rawLog)) return;
  }
}

void beginBlock(ReceiveState& state) {
  state.blockMode = true;
  state.writeIndex = 0;
}

}  // namespace nimbrel
