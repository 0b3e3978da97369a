// How the merge targets read their input lives with the targets' other shared parts.
#include "fuzz/document_checks.h"
