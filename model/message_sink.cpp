#include "model/message_sink.h"

#include <cstdio>
#include <utility>

namespace orvane {
namespace {

void writeToStderr(std::string_view text) {
  std::fprintf(stderr, "orvane: %.*s\n", static_cast<int>(text.size()), text.data());
}

MessageSink& installedSink() {
  static MessageSink sink = writeToStderr;
  return sink;
}

}  // namespace

void showMessage(std::string_view text) noexcept {
  try {
    installedSink()(text);
  } catch (...) {
    // A message that cannot be shown must not turn a handled read error into a crash.
  }
}

MessageSink setMessageSink(MessageSink sink) {
  if (!sink) sink = writeToStderr;
  return std::exchange(installedSink(), std::move(sink));
}

}  // namespace orvane
