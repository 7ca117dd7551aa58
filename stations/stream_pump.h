#pragma once
// The asynchronous plumbing the serial and TCP links share, for any Asio
// stream: read a chunk and hand it on a byte at a time, write the send queue
// block by block, try again after an outage. Every completion first checks
// the link's session, which the link renews when it closes or reopens, so a
// completion of an old connection never acts on the new one.

#include <asio.hpp>

#include <memory>
#include <span>

#include "stations/link_support.h"

namespace nimbrel {

using LinkSession = std::weak_ptr<const char>;

// Reads into `buffer` and delivers each byte to `onReceive`, again and again
// until an error (passed to `onError`) or the end of the session.
template <class Stream, class OnError>
void readAndDeliver(Stream& stream, std::span<std::uint8_t> buffer, const ByteLink::ReceiveHandler& onReceive,
                    LinkSession session, OnError onError) {
  stream.async_read_some(asio::buffer(buffer.data(), buffer.size()),
                         [&stream, buffer, &onReceive, session, onError](const asio::error_code& error,
                                                                          std::size_t count) {
                           if (session.expired()) return;
                           if (error) {
                             onError(error);
                             return;
                           }
                           if (deliverEachByte(buffer.first(count), onReceive, session))
                             readAndDeliver(stream, buffer, onReceive, session, onError);
                         });
}

// Writes the queue's front block, then the next, until the queue is empty
// or a write fails (passed to `onError`).
template <class Stream, class OnError>
void writeQueued(Stream& stream, SendQueue& queue, LinkSession session, OnError onError) {
  asio::async_write(stream, asio::buffer(queue.front().data(), queue.front().size()),
                    [&stream, &queue, session, onError](const asio::error_code& error, std::size_t) {
                      if (session.expired()) return;
                      if (error) {
                        onError(error);
                        return;
                      }
                      if (queue.popWritten()) writeQueued(stream, queue, session, onError);
                    });
}

// Calls `retry` after `interval`, unless the timer is cancelled or the
// session ends first.
template <class Retry>
void retryAfter(asio::steady_timer& timer, LinkClock::duration interval, LinkSession session, Retry retry) {
  timer.expires_after(interval);
  timer.async_wait([session, retry](const asio::error_code& error) {
    if (error || session.expired()) return;
    retry();
  });
}

}  // namespace nimbrel
