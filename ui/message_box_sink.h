// The model's messages ("Error lectura XML. CIfcPropertySet") in a message box when a person can
// see one, else wherever they went before (stderr by default). A message box is shown only when a
// QApplication exists, this is its thread, and its platform puts windows on a screen: "offscreen"
// and "minimal" (and "minimalegl") draw nowhere, so a box there would wait for a click that never
// comes, and a headless host would hang.
#ifndef ORVANE_UI_MESSAGE_BOX_SINK_H
#define ORVANE_UI_MESSAGE_BOX_SINK_H

#include <string_view>

#include "model/message_sink.h"

namespace orvane {

// Whether the Qt platform plugin of that name shows windows to a person.
bool platformShowsWindows(std::string_view platformName);

// A QApplication on this thread whose platform shows windows.
bool canShowMessageBoxes();

// Installs the message-box sink and returns the sink it replaced, to which it hands the messages it
// cannot show; restore it with setMessageSink when the editors close.
MessageSink useMessageBoxes();

}  // namespace orvane

#endif
