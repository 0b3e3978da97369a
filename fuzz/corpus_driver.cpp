// Feeds a fuzz target's entry every file of the folders (and every file) named on the command line,
// so that its corpus runs as an ordinary test. A broken invariant or a crash aborts the run, which
// fails the test; so does an empty corpus, which means a wrong path.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "fuzz/fuzz_support.h"

namespace fs = std::filesystem;

namespace {

std::vector<fs::path> inputsIn(const fs::path& path) {
  if (!fs::is_directory(path)) return {path};
  std::vector<fs::path> files;
  for (const auto& entry : fs::directory_iterator(path))
    if (entry.is_regular_file()) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}

std::string bytesOf(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace

int main(int argc, char** argv) {
  std::size_t count = 0;
  for (int i = 1; i < argc; ++i) {
    for (const fs::path& file : inputsIn(argv[i])) {
      const std::string bytes = bytesOf(file);
      std::fprintf(stderr, "%s\n", file.c_str());
      LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
      ++count;
    }
  }
  std::printf("%zu inputs passed\n", count);
  return count > 0 ? 0 : 1;
}
