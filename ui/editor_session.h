// The Qt side of every editor entry point: for the whole call there is a QApplication (the host's
// own, or one this library creates once and keeps), the model's messages go to message boxes, and
// dialogs run through QtDialogServices.
#ifndef ORVANE_UI_EDITOR_SESSION_H
#define ORVANE_UI_EDITOR_SESSION_H

#include <functional>

#include "editors/common/dialog.h"

namespace orvane {

// Runs `work` inside an editor session. When no window can be shown (no display, or a host whose
// application object has no widgets), writes why to stderr and returns false without running it:
// the host is never aborted by Qt and no file changes.
bool runEditorSession(const std::function<void(DialogServices&)>& work);

}  // namespace orvane

#endif
