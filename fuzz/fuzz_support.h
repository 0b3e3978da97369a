// What the fuzz targets share: a scratch folder for the files the library reads and writes, byte
// streams for the text-file parsers, and checks that stop the run when an invariant breaks.
//
// Each target's entry, LLVMFuzzerTestOneInput, runs under libFuzzer in the fuzz build and, fed every
// file of the target's corpus by corpus_driver.cpp, as an ordinary test in every other build.
#ifndef ORVANE_FUZZ_FUZZ_SUPPORT_H
#define ORVANE_FUZZ_FUZZ_SUPPORT_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace orvane::fuzz {

// The path of `name` in a folder of this process's own, made on first use and removed at exit. It
// lies in /dev/shm where there is one: every save flushes its files to disk, which memory makes cheap.
std::string scratchPath(const char* name);

// Writes the bytes to `name` in the scratch folder and returns its path.
std::string writeScratchFile(const char* name, std::string_view bytes);

// Removes `name` from the scratch folder, with the ".bak" a save may have left beside it.
void removeScratchFile(const char* name);

// The input as a read-only stream, for the parsers of the host's text files; null when the system
// refuses one. The caller closes it.
std::FILE* openBytes(const uint8_t* data, size_t size);

// The readers show messages for damaged records; a fuzzer feeds little else, and only crashes and
// broken invariants interest it.
void silenceMessages();

// Reports a broken invariant and aborts, which both libFuzzer and the corpus tests catch.
[[noreturn]] void fail(const char* what);

inline void check(bool condition, const char* what) {
  if (!condition) fail(what);
}

// A text field is terminated within its size.
template <std::size_t N>
bool terminated(const char (&field)[N]) {
  for (char c : field)
    if (c == '\0') return true;
  return false;
}

}  // namespace orvane::fuzz

#endif
