// The scripted services live in their header; the suites that list this file keep building.
#include "support/scripted_services.h"
