#include "csv.h"

#include <fstream>
#include <iterator>

#include "documents.h"
#include "tool_error.h"

namespace orvane::cli {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// Walks the text one record at a time, keeping the line number for messages.
class CsvParser {
 public:
  CsvParser(std::string_view text, const std::string& source) : text_(text), source_(source) {
    if (text_.substr(0, kByteOrderMark.size()) == kByteOrderMark) pos_ = kByteOrderMark.size();
  }

  std::vector<CsvRecord> records() {
    std::vector<CsvRecord> result;
    while (pos_ < text_.size()) {
      CsvRecord record = nextRecord();
      const bool emptyLine = record.fields.size() == 1 && record.fields[0].empty();
      if (!emptyLine) result.push_back(std::move(record));
    }
    return result;
  }

 private:
  CsvRecord nextRecord() {
    CsvRecord record;
    record.line = line_;
    for (;;) {
      record.fields.push_back(atQuote() ? quotedField() : plainField());
      if (pos_ < text_.size() && text_[pos_] == ',') {
        ++pos_;
        continue;
      }
      skipLineEnd();
      return record;
    }
  }

  bool atQuote() const { return pos_ < text_.size() && text_[pos_] == '"'; }

  bool atLineEnd() const {
    if (pos_ >= text_.size()) return true;
    return text_[pos_] == '\n' || (text_[pos_] == '\r' && pos_ + 1 < text_.size() && text_[pos_ + 1] == '\n');
  }

  void skipLineEnd() {
    if (pos_ < text_.size() && text_[pos_] == '\r') ++pos_;
    if (pos_ < text_.size() && text_[pos_] == '\n') ++pos_;
    ++line_;
  }

  std::string plainField() {
    std::string field;
    while (!atLineEnd() && text_[pos_] != ',') {
      if (text_[pos_] == '"') fail(line_, "a quote inside an unquoted field (quote the whole field and double the quote)");
      field += text_[pos_++];
    }
    return field;
  }

  std::string quotedField() {
    const std::size_t opened = line_;
    std::string field;
    ++pos_;
    for (;;) {
      if (pos_ >= text_.size()) fail(opened, "a quoted field is never closed");
      const char c = text_[pos_++];
      if (c == '"') {
        if (pos_ < text_.size() && text_[pos_] == '"') {
          field += '"';
          ++pos_;
          continue;
        }
        break;
      }
      if (c == '\n') ++line_;
      field += c;
    }
    if (!atLineEnd() && text_[pos_] != ',') fail(line_, "text after the closing quote of a field");
    return field;
  }

  [[noreturn]] void fail(std::size_t line, const std::string& message) const {
    throw ToolError(source_ + ":" + std::to_string(line) + ": " + message);
  }

  std::string_view text_;
  const std::string& source_;
  std::size_t pos_ = 0;
  std::size_t line_ = 1;
};

bool needsQuotes(std::string_view field) {
  return field.find_first_of(",\"\r\n") != std::string_view::npos;
}

}  // namespace

std::vector<CsvRecord> parseCsv(std::string_view text, const std::string& source) {
  return CsvParser(text, source).records();
}

std::vector<CsvRecord> readCsvFile(const std::string& path) {
  return parseCsv(readInputFile(path, "records file"), path);
}

void writeCsvLine(std::ostream& out, const std::vector<std::string>& fields) {
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (i > 0) out << ',';
    if (!needsQuotes(fields[i])) {
      out << fields[i];
      continue;
    }
    out << '"';
    for (const char c : fields[i]) out << (c == '"' ? "\"\"" : std::string(1, c));
    out << '"';
  }
  out << '\n';
}

}  // namespace orvane::cli
