#include "editors/common/dialog.h"

namespace orvane {

DialogServices::~DialogServices() = default;
Dialog::~Dialog() = default;

}  // namespace orvane
