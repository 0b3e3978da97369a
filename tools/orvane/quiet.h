// --quiet: the commands whose standard output is only a word about what they did print nothing.
#ifndef ORVANE_TOOLS_QUIET_H
#define ORVANE_TOOLS_QUIET_H

#include <iostream>
#include <streambuf>

namespace orvane::cli {

// While it lives, std::cout goes nowhere (errors still reach stderr).
class SilencedOutput {
 public:
  explicit SilencedOutput(bool silence) : previous_(silence ? std::cout.rdbuf(&sink_) : nullptr) {}
  ~SilencedOutput() {
    if (previous_ != nullptr) std::cout.rdbuf(previous_);
  }
  SilencedOutput(const SilencedOutput&) = delete;
  SilencedOutput& operator=(const SilencedOutput&) = delete;

 private:
  class NullBuffer : public std::streambuf {
   protected:
    int overflow(int c) override { return traits_type::not_eof(c); }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
  };
  NullBuffer sink_;
  std::streambuf* previous_;
};

}  // namespace orvane::cli

#endif
