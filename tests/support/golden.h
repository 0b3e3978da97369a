// Compares a written file with its golden copy under tests/data/golden. With ORVANE_UPDATE_GOLDEN
// set in the environment the golden copy is rewritten instead (review the diff before committing).
#ifndef ORVANE_TESTS_GOLDEN_H
#define ORVANE_TESTS_GOLDEN_H

#include <gtest/gtest.h>

#include <cstdlib>

#include "support/temp_dir.h"

namespace orvane::test {

inline void expectGolden(const std::string& writtenPath, const std::string& goldenName) {
  const std::string golden = std::string(ORVANE_TEST_DATA) + "/golden/" + goldenName;
  if (std::getenv("ORVANE_UPDATE_GOLDEN") != nullptr) writeBytes(golden, readBytes(writtenPath));
  EXPECT_EQ(readBytes(writtenPath), readBytes(golden)) << "differs from " << golden;
}

}  // namespace orvane::test

#endif
