// Merging host records into documents must cost about what loading and saving the files does, not
// grow with records x sets. The document has 10,000 sets of 10 properties (or quantities); the
// merges apply 1,000 to 100,000 records that update existing entries spread over all sets.
//
// Compare each merge with the load-and-save benchmarks: a property merge loads the document and
// saves it and its partial document, which at 100,000 records is as large as the document itself
// (LoadAndSave/2 does that). A quantity merge saves its output twice besides the document
// (LoadAndSave/3 at full size).
#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include "bench_support.h"
#include "orvane/ifc_proyect_pset.h"
#include "orvane/ifc_proyect_qset.h"
#include "orvane/orvane.h"

namespace {

constexpr int kSets = 10000;
constexpr int kPerSet = 10;

using orvane::bench::scratch;

void name(char* field, std::size_t size, const char* prefix, int number) {
  std::snprintf(field, size, "%s%05d", prefix, number);
}

// The property-set document, written once.
const std::string& propertyDocument() {
  static const std::string path = [] {
    CIfcProyectPSet doc;
    doc.propertySets.resize(kSets);
    for (int s = 0; s < kSets; ++s) {
      CIfcPropertySet& set = doc.propertySets[static_cast<std::size_t>(s)];
      name(set.name, sizeof set.name, "Pset_", s);
      set.properties.resize(kPerSet);
      for (int p = 0; p < kPerSet; ++p) {
        CIfcPropertyName& property = set.properties[static_cast<std::size_t>(p)];
        name(property.name, sizeof property.name, "Propiedad", p);
        property.valueType = p % 3;  // Integer, Real, String
        std::strcpy(property.textValue, p % 3 == 2 ? "texto" : "");
      }
    }
    std::string file = scratch().file("properties.xml");
    doc.graba(file.c_str());
    return file;
  }();
  return path;
}

const std::string& quantityDocument() {
  static const std::string path = [] {
    CIfcProyectQSet doc;
    doc.quantitySets.resize(kSets);
    for (int s = 0; s < kSets; ++s) {
      CIfcQuantitySet& set = doc.quantitySets[static_cast<std::size_t>(s)];
      name(set.name, sizeof set.name, "Qto_", s);
      set.quantities.resize(kPerSet);
      for (int q = 0; q < kPerSet; ++q) {
        CIfcQuantityName& quantity = set.quantities[static_cast<std::size_t>(q)];
        name(quantity.name, sizeof quantity.name, "Cantidad", q);
        quantity.measureType = q % 3;
        quantity.value = q * 1.5;
      }
    }
    std::string file = scratch().file("quantities.xml");
    doc.graba(file.c_str());
    return file;
  }();
  return path;
}

// Record i names set i % kSets (in upper case, so every match ignores case) and one of its entries.
std::vector<FlatPropertyRecord> propertyRecords(int count) {
  std::vector<FlatPropertyRecord> records(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    FlatPropertyRecord& record = records[static_cast<std::size_t>(i)];
    std::memset(&record, 0, sizeof record);
    name(record.setName, sizeof record.setName, "PSET_", i % kSets);
    name(record.propertyName, sizeof record.propertyName, "PROPIEDAD", (i / kSets) % kPerSet);
    record.valueType = 1;
    std::snprintf(record.valueText, sizeof record.valueText, "%d.25", i);
  }
  return records;
}

std::vector<FlatQuantityRecord> quantityRecords(int count) {
  std::vector<FlatQuantityRecord> records(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    FlatQuantityRecord& record = records[static_cast<std::size_t>(i)];
    std::memset(&record, 0, sizeof record);
    name(record.setName, sizeof record.setName, "QTO_", i % kSets);
    name(record.quantityName, sizeof record.quantityName, "CANTIDAD", (i / kSets) % kPerSet);
    record.value = i;
  }
  return records;
}

// Loads the document and saves it state.range(0) times, the first time over itself.
void BM_PropertyDocumentLoadAndSave(benchmark::State& state) {
  const std::string& path = propertyDocument();
  const std::string copy = scratch().file("properties-copy.xml");
  for (auto _ : state) {
    CIfcProyectPSet doc;
    doc.lee(path.c_str());
    doc.graba(path.c_str());
    for (int64_t i = 1; i < state.range(0); ++i) doc.graba(copy.c_str());
  }
}

void BM_PropertyMerge(benchmark::State& state) {
  const std::string& path = propertyDocument();
  const std::string partial = scratch().file("partial.xml");
  const auto records = propertyRecords(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(setPropiedadesFichero(path.c_str(), partial.c_str(), records.data(),
                                                   static_cast<int>(records.size()), 1));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

void BM_QuantityDocumentLoadAndSave(benchmark::State& state) {
  const std::string& path = quantityDocument();
  const std::string copy = scratch().file("quantities-copy.xml");
  for (auto _ : state) {
    CIfcProyectQSet doc;
    doc.lee(path.c_str());
    doc.graba(path.c_str());
    for (int64_t i = 1; i < state.range(0); ++i) doc.graba(copy.c_str());
  }
}

void BM_QuantityMerge(benchmark::State& state) {
  const std::string& path = quantityDocument();
  const std::string out = scratch().file("quantities-out.xml");
  const auto records = quantityRecords(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(setCuantificadoresFichero(path.c_str(), out.c_str(), records.data(),
                                                       static_cast<int>(records.size())));
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(BM_PropertyDocumentLoadAndSave)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_PropertyMerge)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_QuantityDocumentLoadAndSave)->Arg(1)->Arg(3)->Unit(benchmark::kMillisecond)->MinTime(2.0);
BENCHMARK(BM_QuantityMerge)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->MinTime(2.0);

}  // namespace

BENCHMARK_MAIN();
