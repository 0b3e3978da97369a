// Whether an editor creates an item or changes an existing one.
#ifndef ORVANE_EDITORS_COMMON_EDIT_MODE_H
#define ORVANE_EDITORS_COMMON_EDIT_MODE_H

namespace orvane {

enum EditMode : int { kNewItem = 0, kEditItem = 1 };

}  // namespace orvane

#endif
