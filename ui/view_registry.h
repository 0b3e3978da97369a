// Which view shows which dialog class.
#ifndef ORVANE_UI_VIEW_REGISTRY_H
#define ORVANE_UI_VIEW_REGISTRY_H

#include <memory>

#include "editors/common/dialog.h"
#include "ui/dialog_view.h"

namespace orvane {

// A new, not yet shown view over `dialog`, chosen by the dialog's exact class; null for a class
// without a view.
std::unique_ptr<DialogView> createView(Dialog& dialog, QWidget* parent);

}  // namespace orvane

#endif
