// Each step of the documents' life, timed and measured in a process of its own, against the XML
// library's floor measured the same way, with the ratios checked against the goals at the end.
//
// The parent writes the documents (sets in reverse name order, so that reading must sort them),
// then runs every step nine times, each time in a fresh process (this program run again with
// --step), and keeps the medians. A step's process first does what the step needs (loading the
// document a save will write, say), hands its free memory back (malloc_trim), resets its peak
// resident size, and then times the step alone. So no step runs on memory that another step has
// just freed, which would hide the cost of faulting fresh pages in.
//
//   orvane_bench_steps                  all steps, 10,000 and 100,000 entries
//   orvane_bench_steps --quick          10,000 entries only, five runs
//   orvane_bench_steps --step STEP FILE ENTRIES   one step, as the parent runs it (for profiling)
//   orvane_bench_steps --documents DIR  writes the documents there and ends
#include <fcntl.h>
#include <malloc.h>
#include <sys/wait.h>
#include <tinyxml2.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "bench_support.h"
#include "orvane/orvane.h"

namespace {

namespace fs = std::filesystem;
using orvane::bench::scratch;

// ---- In the step's own process ----

long statusKb(const char* field) {
  std::ifstream status("/proc/self/status");
  std::string line;
  const std::size_t length = std::strlen(field);
  while (std::getline(status, line))
    if (line.compare(0, length, field) == 0) return std::atol(line.c_str() + length + 1);
  return 0;
}

std::size_t walk(const tinyxml2::XMLElement* element) {
  std::size_t bytes = 0;
  for (; element != nullptr; element = element->NextSiblingElement()) {
    bytes += std::strlen(element->Name());
    for (const tinyxml2::XMLAttribute* a = element->FirstAttribute(); a != nullptr; a = a->Next())
      bytes += std::strlen(a->Name()) + std::strlen(a->Value());
    if (const char* text = element->GetText()) bytes += std::strlen(text);
    bytes += walk(element->FirstChildElement());
  }
  return bytes;
}

// The document a save replaces is on disk, as one a host saved earlier is: its copy is synced, so
// that no step pays for writing out the copy made just before it.
void copyFile(const std::string& from, const std::string& to) {
  fs::copy_file(from, to, fs::copy_options::overwrite_existing);
  const int fd = ::open(to.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0 || ::fsync(fd) != 0) std::abort();
  ::close(fd);
}

volatile std::size_t sink;

// Runs one step on `file` (a document of `count` entries) and prints "milliseconds peak-growth-kB".
int runStep(const std::string& step, const std::string& file, int count) {
  const std::string work = file + "." + step + ".work.xml";
  const std::string other = file + "." + step + ".other.xml";
  const bool properties = file.find("psets") != std::string::npos;
  std::function<void()> body;
  // What the step needs, made before the clock starts. The objects live until the process ends.
  auto* tree = new tinyxml2::XMLDocument;
  auto* psets = new CIfcProyectPSet;
  auto* qsets = new CIfcProyectQSet;
  std::vector<FlatPropertyRecord>* precords = nullptr;
  std::vector<FlatQuantityRecord>* qrecords = nullptr;
  if (step == "parse+walk") {
    body = [&] {
      tinyxml2::XMLDocument parsed;
      parsed.LoadFile(file.c_str());
      sink = walk(parsed.RootElement());
    };
  } else if (step == "print+write") {
    tree->LoadFile(file.c_str());
    copyFile(file, work);
    body = [&] {
      tinyxml2::XMLPrinter printer;
      tree->Print(&printer);
      const int fd = ::open(work.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
      const auto size = static_cast<std::size_t>(printer.CStrSize() - 1);
      if (fd < 0 || ::write(fd, printer.CStr(), size) != static_cast<ssize_t>(size) || ::fsync(fd) != 0) std::abort();
      ::close(fd);
    };
  } else if (step == "lee") {
    body = [&] { sink = properties ? psets->lee(file.c_str()) : qsets->lee(file.c_str()); };
  } else if (step == "graba") {
    if (properties) psets->lee(file.c_str());
    else qsets->lee(file.c_str());
    copyFile(file, work);  // a save over an existing document, with its backup
    body = [&] { sink = properties ? psets->graba(work.c_str()) : qsets->graba(work.c_str()); };
  } else if (step == "get") {
    precords = new std::vector<FlatPropertyRecord>(properties ? count : 0);
    qrecords = new std::vector<FlatQuantityRecord>(properties ? 0 : count);
    body = [&] {
      sink = properties ? getPropiedadesFichero(file.c_str(), precords->data(), count)
                        : getCuantificadoresFichero(file.c_str(), qrecords->data(), count);
    };
  } else if (step == "set") {
    // Every entry of the document comes back in a record: the partial document is the whole one.
    precords = new std::vector<FlatPropertyRecord>(properties ? count : 0);
    qrecords = new std::vector<FlatQuantityRecord>(properties ? 0 : count);
    if (properties) getPropiedadesFichero(file.c_str(), precords->data(), count);
    else getCuantificadoresFichero(file.c_str(), qrecords->data(), count);
    copyFile(file, work);
    copyFile(file, other);
    body = [&] {
      sink = properties ? setPropiedadesFichero(work.c_str(), other.c_str(), precords->data(), count, 1)
                        : setCuantificadoresFichero(work.c_str(), other.c_str(), qrecords->data(), count);
    };
  } else {
    std::fprintf(stderr, "unknown step %s\n", step.c_str());
    return 2;
  }
  ::malloc_trim(0);
  { std::ofstream("/proc/self/clear_refs") << "5"; }  // the peak resident size starts again from here
  const long before = statusKb("VmRSS:");
  const auto start = std::chrono::steady_clock::now();
  body();
  const auto end = std::chrono::steady_clock::now();
  const long peak = statusKb("VmHWM:");
  std::printf("%.3f %ld\n", std::chrono::duration<double, std::milli>(end - start).count(), peak - before);
  std::fflush(stdout);
  ::_exit(0);  // the step's objects are the process's; tearing them down is not measured
}

// ---- In the parent ----

struct Measure {
  double ms = 0;
  double peakMb = 0;
};

const char* gSelf = nullptr;

// One run of a step in a fresh process; `environment` (may be null) is added to its environment.
Measure runChild(const std::string& step, const std::string& file, int count, const char* environment) {
  int out[2];
  if (::pipe(out) != 0) std::abort();
  const pid_t child = ::fork();
  if (child == 0) {
    ::dup2(out[1], 1);
    ::close(out[0]);
    if (environment != nullptr) ::putenv(const_cast<char*>(environment));
    const std::string countText = std::to_string(count);
    ::execl(gSelf, gSelf, "--step", step.c_str(), file.c_str(), countText.c_str(), static_cast<char*>(nullptr));
    ::_exit(127);
  }
  ::close(out[1]);
  char buffer[128] = {};
  const ssize_t got = ::read(out[0], buffer, sizeof buffer - 1);
  ::close(out[0]);
  int status = 0;
  ::waitpid(child, &status, 0);
  Measure m;
  long kb = 0;
  if (got <= 0 || std::sscanf(buffer, "%lf %ld", &m.ms, &kb) != 2 || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
    std::fprintf(stderr, "step %s on %s failed\n", step.c_str(), file.c_str());
    std::exit(1);
  }
  m.peakMb = static_cast<double>(kb) / 1024.0;
  return m;
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t n = values.size();
  return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

std::string documentFile(const char* kind, int count, const std::string& folder = "") {
  const std::string name = std::string(kind) + std::to_string(count) + ".xml";
  const std::string path = folder.empty() ? scratch().file(name) : (fs::path(folder) / name).string();
  if (std::string(kind) == "psets") {
    CIfcProyectPSet doc = orvane::bench::propertyDocument(count);
    std::reverse(doc.propertySets.begin(), doc.propertySets.end());
    doc.graba(path.c_str());
  } else {
    CIfcProyectQSet doc = orvane::bench::quantityDocument(count);
    std::reverse(doc.quantitySets.begin(), doc.quantitySets.end());
    doc.graba(path.c_str());
  }
  return path;
}

struct Goal {
  std::string what;
  double value;
  double limit;
  const char* unit;
};

}  // namespace

int main(int argc, char** argv) {
  gSelf = argv[0];
  if (argc == 5 && std::string(argv[1]) == "--step") return runStep(argv[2], argv[3], std::atoi(argv[4]));
  if (argc == 3 && std::string(argv[1]) == "--documents") {
    for (int count : {10000, 100000})
      for (const char* kind : {"psets", "qsets"}) std::printf("%s\n", documentFile(kind, count, argv[2]).c_str());
    return 0;
  }
  const bool quick = argc > 1 && std::string(argv[1]) == "--quick";
  const int runs = quick ? 5 : 9;
  const std::vector<int> sizes = quick ? std::vector<int>{10000} : std::vector<int>{10000, 100000};
  const char* const steps[] = {"parse+walk", "print+write", "lee", "graba", "get", "set"};

  // Every round runs each step once, so a change in the machine's load over the minutes of a run
  // reaches all steps alike, and the ratios of medians stay fair.
  std::map<std::string, Measure> at;  // "kind/step/size"
  std::map<std::string, double> fileMb;
  std::printf("%-7s %-12s %8s %10s %10s\n", "kind", "step", "entries", "median ms", "peak +MB");
  for (int count : sizes) {
    for (const char* kind : {"psets", "qsets"}) {
      const std::string file = documentFile(kind, count);
      fileMb[std::string(kind) + std::to_string(count)] = static_cast<double>(fs::file_size(file)) / (1024.0 * 1024.0);
      std::map<std::string, std::vector<Measure>> rounds;
      for (int round = 0; round < runs; ++round) {
        for (const char* step : steps) rounds[step].push_back(runChild(step, file, count, nullptr));
        rounds["lee-hugetlb"].push_back(runChild("lee", file, count, "GLIBC_TUNABLES=glibc.malloc.hugetlb=1"));
      }
      for (const auto& [step, measures] : rounds) {
        std::vector<double> ms, mb;
        for (const Measure& m : measures) {
          ms.push_back(m.ms);
          mb.push_back(m.peakMb);
        }
        const Measure m{median(ms), median(mb)};
        at[std::string(kind) + "/" + step + "/" + std::to_string(count)] = m;
        std::printf("%-7s %-12s %8d %10.1f %10.1f\n", kind, step.c_str(), count, m.ms, m.peakMb);
      }
      std::fflush(stdout);
    }
  }

  std::vector<Goal> goals;
  for (int count : sizes) {
    const std::string n = std::to_string(count);
    for (const char* kind : {"psets", "qsets"}) {
      const std::string k = kind;
      const auto ms = [&](const char* step) { return at[k + "/" + step + "/" + n].ms; };
      const auto mb = [&](const char* step) { return at[k + "/" + step + "/" + n].peakMb; };
      const double file = fileMb[k + n];
      goals.push_back({k + " " + n + " lee / parse+walk", ms("lee") / ms("parse+walk"), 1.5, "x"});
      goals.push_back({k + " " + n + " lee (huge pages) / parse+walk", ms("lee-hugetlb") / ms("parse+walk"), 1.5, "x"});
      goals.push_back({k + " " + n + " graba / print+write", ms("graba") / ms("print+write"), 1.0, "x"});
      goals.push_back({k + " " + n + " get / lee", ms("get") / ms("lee"), 1.0, "x"});
      goals.push_back({k + " " + n + " set / (lee + graba)", ms("set") / (ms("lee") + ms("graba")), 1.2, "x"});
      goals.push_back({k + " " + n + " lee memory / file", mb("lee") / file, 16, "x file"});
      goals.push_back({k + " " + n + " get memory / file", mb("get") / file, 6, "x file"});
      goals.push_back({k + " " + n + " set memory / file", mb("set") / file, 6, "x file"});
      goals.push_back({k + " " + n + " graba memory", mb("graba"), 2, "MB"});
    }
  }
  if (sizes.size() > 1) {
    for (const char* kind : {"psets", "qsets"})
      for (const char* step : steps)
        goals.push_back({std::string(kind) + " " + step + " growth 10k -> 100k",
                         at[std::string(kind) + "/" + step + "/100000"].ms / at[std::string(kind) + "/" + step + "/10000"].ms,
                         11, "x"});
  }
  std::printf("\n%-44s %8s %8s\n", "ratio (medians, each step in its own process)", "value", "goal");
  int missed = 0;
  for (const Goal& goal : goals) {
    const bool met = goal.value <= goal.limit;
    missed += met ? 0 : 1;
    std::printf("%-44s %8.2f %8.2f %-6s %s\n", goal.what.c_str(), goal.value, goal.limit, goal.unit, met ? "met" : "MISSED");
  }
  for (int count : sizes)
    std::printf("file sizes at %d entries: psets %.1f MB, qsets %.1f MB\n", count, fileMb["psets" + std::to_string(count)],
                fileMb["qsets" + std::to_string(count)]);
  std::printf("%s\n", missed == 0 ? "Every goal is met." : "Some goals are missed: docs/performance.md says which and why.");
  return 0;
}
