// How the merge targets read their input: one byte of flags, then as many host records as the flags
// ask for, as raw images (texts without terminators, any kind, any number; zeros where the input
// ends), then the bytes of the document file the records are merged into.
#ifndef ORVANE_FUZZ_MERGE_INPUT_H
#define ORVANE_FUZZ_MERGE_INPUT_H

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace orvane::fuzz {

template <class Record>
struct MergeInput {
  bool saveDocument = false;    // bit 0 of the flags
  std::vector<Record> records;  // bits 1 to 3: 0 to 7 records
  std::string_view document;
};

template <class Record>
MergeInput<Record> splitMergeInput(const uint8_t* data, size_t size) {
  MergeInput<Record> input;
  if (size == 0) return input;
  input.saveDocument = (*data & 1) != 0;
  input.records.resize((*data >> 1) & 7);  // zeroed
  ++data, --size;
  for (Record& record : input.records) {
    const size_t taken = std::min(size, sizeof record);
    if (taken > 0) std::memcpy(&record, data, taken);
    data += taken, size -= taken;
  }
  input.document = {reinterpret_cast<const char*>(data), size};
  return input;
}

}  // namespace orvane::fuzz

#endif
