// How fast documents load and save, against the XML library's own floor measured in the same run:
// tinyxml2 parsing the same file and walking every element and attribute, and tinyxml2 printing an
// equivalent tree into memory plus writing those bytes to disk. The exchange functions are measured
// against a load plus a save of the same document. At the end the program prints every ratio and
// whether it meets its goal, and the peak memory of loading the largest property document.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <tinyxml2.h>
#include <unistd.h>

#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "bench_support.h"
#include "orvane/orvane.h"

namespace {

using orvane::bench::scratch;

constexpr int kSizes[] = {1000, 10000, 100000};

std::string sized(const char* kind, int64_t count) { return scratch().file(std::string(kind) + std::to_string(count) + ".xml"); }

// The documents are written once, before anything is timed.
void writeDocuments() {
  for (int count : kSizes) {
    orvane::bench::propertyDocument(count).graba(sized("psets", count).c_str());
    orvane::bench::quantityDocument(count).graba(sized("qsets", count).c_str());
  }
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

void writeAndSync(const std::string& path, const char* bytes, std::size_t size) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  if (fd < 0 || ::write(fd, bytes, size) != static_cast<ssize_t>(size) || ::fsync(fd) != 0) std::abort();
  ::close(fd);
}

void ParseWalkFloor(benchmark::State& state, const char* kind) {
  const std::string path = sized(kind, state.range(0));
  for (auto _ : state) {
    tinyxml2::XMLDocument tree;
    tree.LoadFile(path.c_str());
    benchmark::DoNotOptimize(walk(tree.RootElement()));
  }
}

void PrintFloor(benchmark::State& state, const char* kind) {
  tinyxml2::XMLDocument tree;
  tree.LoadFile(sized(kind, state.range(0)).c_str());
  for (auto _ : state) {
    tinyxml2::XMLPrinter printer;
    tree.Print(&printer);
    benchmark::DoNotOptimize(printer.CStr());
  }
}

void WriteFloor(benchmark::State& state, const char* kind) {
  tinyxml2::XMLDocument tree;
  tree.LoadFile(sized(kind, state.range(0)).c_str());
  tinyxml2::XMLPrinter printer;
  tree.Print(&printer);
  const std::string out = scratch().file(std::string("floor-") + kind + ".xml");
  for (auto _ : state) writeAndSync(out, printer.CStr(), static_cast<std::size_t>(printer.CStrSize() - 1));
}

// Times the reading only: destroying the loaded document afterwards is the document's end of life,
// not part of lee (the XML tree, which lee destroys before it returns, is counted like the floor's).
template <class Document>
void Lee(benchmark::State& state, const char* kind) {
  const std::string path = sized(kind, state.range(0));
  for (auto _ : state) {
    auto doc = std::make_unique<Document>();
    benchmark::DoNotOptimize(doc->lee(path.c_str()));
    state.PauseTiming();
    doc.reset();
    state.ResumeTiming();
  }
}

template <class Document>
void Graba(benchmark::State& state, const char* kind) {
  Document doc;
  doc.lee(sized(kind, state.range(0)).c_str());
  const std::string out = scratch().file(std::string("graba-") + kind + ".xml");
  for (auto _ : state) benchmark::DoNotOptimize(doc.graba(out.c_str()));
}

void GetPropiedades(benchmark::State& state) {
  const std::string path = sized("psets", state.range(0));
  std::vector<FlatPropertyRecord> records(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state)
    benchmark::DoNotOptimize(getPropiedadesFichero(path.c_str(), records.data(), static_cast<int>(records.size())));
}

// Every property of the document comes back in a record: the partial document is the whole one.
void SetPropiedades(benchmark::State& state) {
  const std::string source = sized("psets", state.range(0));
  const std::string path = scratch().file("set-psets.xml");
  const std::string partial = scratch().file("set-psets-partial.xml");
  std::vector<FlatPropertyRecord> records(static_cast<std::size_t>(state.range(0)));
  getPropiedadesFichero(source.c_str(), records.data(), static_cast<int>(records.size()));
  CIfcProyectPSet doc;
  doc.lee(source.c_str());
  doc.graba(path.c_str());
  for (auto _ : state)
    benchmark::DoNotOptimize(
        setPropiedadesFichero(path.c_str(), partial.c_str(), records.data(), static_cast<int>(records.size()), 1));
}

void GetCuantificadores(benchmark::State& state) {
  const std::string path = sized("qsets", state.range(0));
  std::vector<FlatQuantityRecord> records(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state)
    benchmark::DoNotOptimize(getCuantificadoresFichero(path.c_str(), records.data(), static_cast<int>(records.size())));
}

void SetCuantificadores(benchmark::State& state) {
  const std::string source = sized("qsets", state.range(0));
  const std::string path = scratch().file("set-qsets.xml");
  const std::string out = scratch().file("set-qsets-out.xml");
  std::vector<FlatQuantityRecord> records(static_cast<std::size_t>(state.range(0)));
  getCuantificadoresFichero(source.c_str(), records.data(), static_cast<int>(records.size()));
  CIfcProyectQSet doc;
  doc.lee(source.c_str());
  doc.graba(path.c_str());
  for (auto _ : state)
    benchmark::DoNotOptimize(setCuantificadoresFichero(path.c_str(), out.c_str(), records.data(),
                                                       static_cast<int>(records.size())));
}

void registerAll() {
  const auto add = [](const std::string& name, auto function) {
    auto* b = benchmark::RegisterBenchmark(name.c_str(), function);
    for (int count : kSizes) b->Arg(count);
    b->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true)->MinTime(0.05);
  };
  for (const char* kind : {"psets", "qsets"}) {
    const std::string k = kind;
    add("ParseWalkFloor/" + k, [kind](benchmark::State& s) { ParseWalkFloor(s, kind); });
    add("PrintFloor/" + k, [kind](benchmark::State& s) { PrintFloor(s, kind); });
    add("WriteFloor/" + k, [kind](benchmark::State& s) { WriteFloor(s, kind); });
  }
  add("Lee/psets", [](benchmark::State& s) { Lee<CIfcProyectPSet>(s, "psets"); });
  add("Graba/psets", [](benchmark::State& s) { Graba<CIfcProyectPSet>(s, "psets"); });
  add("Lee/qsets", [](benchmark::State& s) { Lee<CIfcProyectQSet>(s, "qsets"); });
  add("Graba/qsets", [](benchmark::State& s) { Graba<CIfcProyectQSet>(s, "qsets"); });
  add("getPropiedadesFichero", GetPropiedades);
  add("setPropiedadesFichero", SetPropiedades);
  add("getCuantificadoresFichero", GetCuantificadores);
  add("setCuantificadoresFichero", SetCuantificadores);
}

// Keeps the median time of every benchmark, by "name/size", for the ratios.
class MedianCollector : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs)
      if (run.aggregate_name == "median")
        medians[run.run_name.function_name + "/" + run.run_name.args] = run.GetAdjustedRealTime();
    ConsoleReporter::ReportRuns(runs);
  }
  std::map<std::string, double> medians;
};

struct Goal {
  std::string what;
  double ratio;
  double limit;
};

std::vector<Goal> goals(const std::map<std::string, double>& t) {
  std::vector<Goal> out;
  const auto at = [&](const std::string& name, int count) { return t.at(name + "/" + std::to_string(count)); };
  for (int n : kSizes) {
    const std::string size = std::to_string(n);
    for (const char* kind : {"psets", "qsets"}) {
      const std::string k = kind;
      out.push_back({"lee/" + k + " " + size + " vs parse+walk", at("Lee/" + k, n) / at("ParseWalkFloor/" + k, n), 1.3});
      out.push_back({"graba/" + k + " " + size + " vs print+write",
                     at("Graba/" + k, n) / (at("PrintFloor/" + k, n) + at("WriteFloor/" + k, n)), 1.3});
    }
    const double psetLoadSave = at("Lee/psets", n) + at("Graba/psets", n);
    const double qsetLoadSave = at("Lee/qsets", n) + at("Graba/qsets", n);
    out.push_back({"getPropiedadesFichero " + size + " vs lee+graba", at("getPropiedadesFichero", n) / psetLoadSave, 1.5});
    out.push_back({"setPropiedadesFichero " + size + " vs lee+graba", at("setPropiedadesFichero", n) / psetLoadSave, 1.5});
    out.push_back({"getCuantificadoresFichero " + size + " vs lee+graba", at("getCuantificadoresFichero", n) / qsetLoadSave, 1.5});
    out.push_back({"setCuantificadoresFichero " + size + " vs lee+graba", at("setCuantificadoresFichero", n) / qsetLoadSave, 1.5});
  }
  for (const char* name : {"Lee/psets", "Graba/psets", "Lee/qsets", "Graba/qsets", "getPropiedadesFichero",
                           "setPropiedadesFichero", "getCuantificadoresFichero", "setCuantificadoresFichero"})
    out.push_back({std::string(name) + " growth 10k -> 100k", at(name, 100000) / at(name, 10000), 12.0});
  return out;
}

// Loads the largest property document in a child process, whose peak resident size is then its own.
void reportPeakMemory() {
  const std::string path = sized("psets", 100000);
  const pid_t child = ::fork();
  if (child == 0) {
    CIfcProyectPSet doc;
    ::_exit(doc.lee(path.c_str()) == 1 ? 0 : 1);
  }
  int status = 0;
  ::waitpid(child, &status, 0);
  struct rusage usage {};
  ::getrusage(RUSAGE_CHILDREN, &usage);
  std::printf("\nPeak memory loading the 100,000-property document (%.1f MB file): %.1f MB resident\n",
              static_cast<double>(std::filesystem::file_size(path)) / 1e6, static_cast<double>(usage.ru_maxrss) / 1e3);
}

}  // namespace

int main(int argc, char** argv) {
  writeDocuments();
  registerAll();
  benchmark::Initialize(&argc, argv);
  MedianCollector reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf("\n%-52s %8s %6s\n", "ratio (medians of the same run)", "value", "goal");
  bool allMet = true;
  try {
    for (const Goal& goal : goals(reporter.medians)) {
      const bool met = goal.ratio <= goal.limit;
      allMet = allMet && met;
      std::printf("%-52s %8.2f %6.2f %s\n", goal.what.c_str(), goal.ratio, goal.limit, met ? "met" : "MISSED");
    }
  } catch (const std::out_of_range&) {
    std::printf("(a filter left out benchmarks the ratios need)\n");
  }
  std::printf("%s\n", allMet ? "Every goal is met." : "Some goals are missed: docs/performance.md says which and why.");
  reportPeakMemory();
  benchmark::Shutdown();
  return 0;
}
