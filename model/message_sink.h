// Where the model's messages go ("Error lectura XML. CIfcPropertySet", ...). A host application
// shows them in a message box with one OK button; without a screen they go to stderr. Tests put a
// recorder in its place.
#ifndef ORVANE_MODEL_MESSAGE_SINK_H
#define ORVANE_MODEL_MESSAGE_SINK_H

#include <functional>
#include <string_view>

namespace orvane {

using MessageSink = std::function<void(std::string_view text)>;

// Shows `text` through the installed sink. Never throws: a sink that fails is ignored.
void showMessage(std::string_view text) noexcept;

// Installs `sink` and returns the one it replaces. An empty sink restores the default (stderr).
MessageSink setMessageSink(MessageSink sink);

}  // namespace orvane

#endif
