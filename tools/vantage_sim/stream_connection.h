#pragma once
// One open byte stream (a TCP client or a pseudo-terminal master) between the
// simulated console and a program: reads go to a handler, writes are queued
// and go out one after the other, each as its own write so a split packet
// really arrives in two pieces. Owned through shared_ptr so that pending
// operations keep it alive; after close() it calls nothing back.

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <span>
#include <vector>

#include <asio.hpp>

namespace nimbrel::sim {

template <class Stream>
class StreamConnection : public std::enable_shared_from_this<StreamConnection<Stream>> {
 public:
  using ReceiveHandler = std::function<void(std::span<const std::uint8_t>)>;

  StreamConnection(Stream stream, ReceiveHandler onReceive)
      : stream_(std::move(stream)), onReceive_(std::move(onReceive)) {}

  void start() { readNext(); }

  void send(std::vector<std::uint8_t> bytes) {
    // A reader that stopped reading must not make us hoard without end.
    if (closed_ || pending_.size() >= kMostPendingWrites) return;
    pending_.push_back(std::move(bytes));
    if (!writing_) writeNext();
  }

  void close() {
    closed_ = true;
    asio::error_code ignored;
    stream_.close(ignored);
  }

  bool isOpen() const { return !closed_; }

 private:
  static constexpr std::size_t kMostPendingWrites = 1024;

  void readNext() {
    auto self = this->shared_from_this();
    stream_.async_read_some(asio::buffer(buffer_), [self](const asio::error_code& error, std::size_t count) {
      if (self->closed_) return;
      if (error) {
        self->close();
        return;
      }
      self->onReceive_(std::span<const std::uint8_t>(self->buffer_.data(), count));
      if (!self->closed_) self->readNext();
    });
  }

  void writeNext() {
    writing_ = true;
    auto self = this->shared_from_this();
    asio::async_write(stream_, asio::buffer(pending_.front()), [self](const asio::error_code& error, std::size_t) {
      self->writing_ = false;
      if (self->closed_) return;
      if (error) {
        self->close();
        return;
      }
      self->pending_.pop_front();
      if (!self->pending_.empty()) self->writeNext();
    });
  }

  Stream stream_;
  ReceiveHandler onReceive_;
  std::array<std::uint8_t, 512> buffer_{};
  std::deque<std::vector<std::uint8_t>> pending_;
  bool writing_ = false;
  bool closed_ = false;
};

}  // namespace nimbrel::sim
