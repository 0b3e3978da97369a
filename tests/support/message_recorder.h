// Replaces the model's message sink for the life of the object and keeps every message shown.
#ifndef ORVANE_TESTS_MESSAGE_RECORDER_H
#define ORVANE_TESTS_MESSAGE_RECORDER_H

#include <string>
#include <utility>
#include <vector>

#include "model/message_sink.h"

namespace orvane::test {

class MessageRecorder {
 public:
  MessageRecorder() : previous_(setMessageSink([this](std::string_view text) { messages_.emplace_back(text); })) {}
  ~MessageRecorder() { setMessageSink(std::move(previous_)); }
  MessageRecorder(const MessageRecorder&) = delete;
  MessageRecorder& operator=(const MessageRecorder&) = delete;

  const std::vector<std::string>& messages() const { return messages_; }

 private:
  std::vector<std::string> messages_;
  MessageSink previous_;
};

}  // namespace orvane::test

#endif
