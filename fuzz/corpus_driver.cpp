// Feeds a fuzz target's entry every file of the folders named on the command line, so that its corpus
// runs as an ordinary test. A broken invariant or a crash aborts the run, which fails the test; so
// does a run without inputs (an empty corpus) or a path that is no folder.
#include <filesystem>

#include "fuzz/document_checks.h"

namespace fs = std::filesystem;

int main(int argc, char** argv) {
  std::vector<fs::path> files;
  for (int i = 1; i < argc; ++i) files.insert(files.end(), fs::directory_iterator(argv[i]), fs::directory_iterator());
  std::sort(files.begin(), files.end());
  for (const fs::path& file : files) {
    const std::string bytes = orvane::test::readBytes(file);
    std::fprintf(stderr, "%s\n", file.c_str());
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
  }
  std::printf("%zu inputs passed\n", files.size());
  return files.empty() ? 1 : 0;
}
