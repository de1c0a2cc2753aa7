// Streaming output. The JSON document is
//   {"operation": op, "results": [...], "status": {...}, "done": b}
// with one result a line, so that it can be written as the results come and
// still be one valid document; MOF and CIM-XML are the text toMof / toXml
// give for the whole outcome, written piece by piece. The table format is the
// exception: its column widths depend on every row, so the results are kept
// and the tables written at the end (format_table.cpp says why that is fine).
#include "printer.hpp"

#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include "zeda/host/format.hpp"
#include "zeda/host/wbem_uri.hpp"

namespace zeda::cim {

void writeAll(int fd, const std::string& text) {
  std::size_t done = 0;
  while (done < text.size()) {
    const ssize_t n = ::write(fd, text.data() + done, text.size() - done);
    if (n < 0) {
      if (errno == EINTR) continue;
      throw std::runtime_error(std::string("cannot write the output: ") + std::strerror(errno));
    }
    done += static_cast<std::size_t>(n);
  }
}

StreamPrinter::StreamPrinter(Format format, std::string operation, int fd)
    : format_(format), operation_(std::move(operation)), fd_(fd) {}

void StreamPrinter::begin() {
  if (begun_) return;
  begun_ = true;
  switch (format_) {
    case Format::Json:
      buffer_.insert(0,
                     "{\n  \"operation\": " + host::jsonQuote(operation_) + ",\n  \"results\": [");
      break;
    case Format::Xml:
      buffer_.insert(0, "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<IRETURNVALUE>\n");
      break;
    case Format::Mof:
    case Format::Table:
      break;
  }
}

void StreamPrinter::emit() {
  writeAll(fd_, buffer_);
  buffer_.clear();
}

void StreamPrinter::instance(const host::Instance& i) {
  switch (format_) {
    case Format::Json:
      buffer_ = anyResult_ ? ",\n    " : "\n    ";
      buffer_ += host::instanceToJson(i);
      break;
    case Format::Mof:
      // A blank line between an instance and whatever came before it.
      buffer_ = anyResult_ ? "\n" : "";
      buffer_ += host::instanceToMof(i);
      break;
    case Format::Xml:
      buffer_ = host::instanceToXml(i) + "\n";
      break;
    case Format::Table:
      kept_.emplace_back(i);  // written by finish()
      return;
  }
  begin();
  anyResult_ = true;
  emit();
}

void StreamPrinter::path(const host::ObjectPath& p) {
  switch (format_) {
    case Format::Json:
      buffer_ = anyResult_ ? ",\n    " : "\n    ";
      buffer_ += host::objectPathToJson(p);
      break;
    case Format::Mof:
      buffer_ = host::formatObjectPath(p) + "\n";
      break;
    case Format::Xml:
      buffer_ = host::objectPathToXml(p) + "\n";
      break;
    case Format::Table:
      kept_.emplace_back(p);  // written by finish()
      return;
  }
  begin();
  anyResult_ = true;
  emit();
}

void StreamPrinter::value(const host::Value& v) {
  switch (format_) {
    case Format::Json:
      buffer_ = anyResult_ ? ",\n    " : "\n    ";
      buffer_ += host::typedValueToJson(v);
      break;
    case Format::Mof:
      buffer_ = host::valueToMof(v) + "\n";
      break;
    case Format::Xml:
      buffer_ = host::valueToXml(v) + "\n";
      break;
    case Format::Table:
      kept_.emplace_back(v);  // written by finish()
      return;
  }
  begin();
  anyResult_ = true;
  emit();
}

void StreamPrinter::finish(const host::Outcome& outcome) {
  buffer_.clear();
  begin();
  switch (format_) {
    case Format::Json:
      buffer_ += anyResult_ ? "\n  ],\n" : "],\n";
      buffer_ += "  \"status\": " + host::statusToJson(outcome.status) + ",\n  \"done\": ";
      buffer_ += outcome.done ? "true\n}\n" : "false\n}\n";
      break;
    case Format::Xml:
      buffer_ += "</IRETURNVALUE>\n";
      break;
    case Format::Table:
      buffer_ = host::toTable(kept_);
      kept_.clear();
      break;
    case Format::Mof:
      break;
  }
  emit();
}

}  // namespace zeda::cim
