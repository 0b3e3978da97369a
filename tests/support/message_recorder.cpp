#include "support/message_recorder.h"

#include <utility>

namespace orvane::test {

MessageRecorder::MessageRecorder()
    : previous_(setMessageSink([this](std::string_view text) { messages_.emplace_back(text); })) {}

MessageRecorder::~MessageRecorder() { setMessageSink(std::move(previous_)); }

}  // namespace orvane::test
