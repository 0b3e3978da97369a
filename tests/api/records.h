// Flat records as a host fills them, for the exchange tests.
#ifndef ORVANE_TESTS_API_RECORDS_H
#define ORVANE_TESTS_API_RECORDS_H

#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "orvane/orvane.h"

namespace orvane::test {

inline constexpr unsigned char kHostByte = 0x5A;  // what the host left in its records

// Records whose every byte is kHostByte, so a test can see which bytes the library wrote.
template <class Record>
std::vector<Record> hostRecords(std::size_t count) {
  std::vector<Record> records(count);
  std::memset(static_cast<void*>(records.data()), kHostByte, count * sizeof(Record));
  return records;
}

// True when every byte of `field` from `from` to its end is still kHostByte.
template <std::size_t N>
bool untouchedFrom(const char (&field)[N], std::size_t from) {
  for (std::size_t i = from; i < N; ++i)
    if (static_cast<unsigned char>(field[i]) != kHostByte) return false;
  return true;
}

// Puts `text` and its terminator at the start of `field`, as a host would; a text that fills the
// field gets no terminator.
template <std::size_t N>
void put(char (&field)[N], std::string_view text) {
  std::memcpy(field, text.data(), text.size() < N ? text.size() : N);
  if (text.size() < N) field[text.size()] = '\0';
}

inline FlatPropertyRecord propertyRecord(int32_t type, std::string_view set, std::string_view name,
                                         std::string_view value, int32_t unit = 0,
                                         std::string_view enumName = "") {
  FlatPropertyRecord record = hostRecords<FlatPropertyRecord>(1)[0];
  record.valueType = type;
  put(record.setName, set);
  put(record.propertyName, name);
  put(record.valueText, value);
  put(record.enumName, enumName);
  record.unit = unit;
  return record;
}

inline FlatQuantityRecord quantityRecord(int32_t kind, std::string_view set, std::string_view name,
                                         double value) {
  FlatQuantityRecord record = hostRecords<FlatQuantityRecord>(1)[0];
  record.measureType = kind;
  put(record.setName, set);
  put(record.quantityName, name);
  record.value = value;
  return record;
}

}  // namespace orvane::test

#endif
