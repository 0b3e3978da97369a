// Marks what liborvane.so exports. The library is built with hidden visibility, so every class or
// function a host may use carries ORVANE_API and nothing else leaves the library.
#ifndef ORVANE_EXPORT_H
#define ORVANE_EXPORT_H

#if defined(__GNUC__) || defined(__clang__)
#define ORVANE_API __attribute__((visibility("default")))
#else
#define ORVANE_API
#endif

#endif
