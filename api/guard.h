// The boundary of every exported entry: nothing thrown inside may reach the host, whose frames
// know nothing of C++ exceptions. Exhausted memory is the only thing the library throws for.
#ifndef ORVANE_API_GUARD_H
#define ORVANE_API_GUARD_H

#include <utility>

namespace orvane::api {

// Runs `body` and returns what it returns, or `failure` when anything is thrown.
template <class Result, class Body>
Result guarded(Result failure, Body&& body) noexcept {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    return failure;
  }
}

}  // namespace orvane::api

#endif
