// The recorder lives in its header; the suites that list this file keep building.
#include "support/message_recorder.h"
