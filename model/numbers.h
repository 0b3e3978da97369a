// Numbers read from and written to texts in the "C" locale, whatever locale the host process set:
// a German host must still read "2.75" and write "1.235".
#ifndef ORVANE_MODEL_NUMBERS_H
#define ORVANE_MODEL_NUMBERS_H

#include <cstddef>
#include <cstdint>

namespace orvane {

// As atoi: leading white space, an optional sign, then the leading digits; 0 when there are none.
// A number beyond the 32-bit range gives the nearest end of the range.
int32_t readInt(const char* text) noexcept;

// As atof in the "C" locale: the longest leading floating-point number, 0.0 when there is none.
double readReal(const char* text) noexcept;

// A number printed into a small buffer owned by the value; c_str() lives as long as it does.
class NumberText {
 public:
  const char* c_str() const noexcept { return text_; }

 private:
  friend NumberText formatInt(int32_t) noexcept;
  friend NumberText formatReal3(double) noexcept;
  friend NumberText formatRealForField(double, std::size_t) noexcept;
  char text_[400];  // "%0.3lf" of the largest double has 313 characters
};

NumberText formatInt(int32_t value) noexcept;    // "%d"
NumberText formatReal3(double value) noexcept;   // "%0.3lf": three decimals, a point, no grouping

// formatReal3 when its text fits a field of `fieldSize` bytes with the terminator; otherwise (a
// magnitude of about 1e252 or more, in a 256-byte record field) the shortest text that reads back
// as the same double, such as "1e+308": cutting the long form would give the host a number
// hundreds of orders of magnitude smaller.
NumberText formatRealForField(double value, std::size_t fieldSize) noexcept;

}  // namespace orvane

#endif
