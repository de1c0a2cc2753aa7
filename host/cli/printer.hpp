// Prints the results of one operation as the provider returns them: each
// result is written to standard output at once, in MOF, JSON or CIM-XML; in
// the table format they are kept and written by finish().
#pragma once

#include <string>
#include <vector>

#include "options.hpp"
#include "zeda/host/outcome.hpp"
#include "zeda/host/result_sink.hpp"

namespace zeda::cim {

// Writes all of text to the file descriptor, whatever the size of the pipe
// behind it; throws std::runtime_error when the output is gone.
void writeAll(int fd, const std::string& text);

class StreamPrinter final : public host::ResultSink {
 public:
  // Nothing is written before the first result or finish().
  StreamPrinter(Format format, std::string operation, int fd);

  void instance(const host::Instance& i) override;
  void path(const host::ObjectPath& p) override;
  void value(const host::Value& v) override;

  // The end of the document: for JSON the status and the done flag (the
  // members after "results"), for CIM-XML the closing element, for the
  // table format the tables of every result.
  void finish(const host::Outcome& outcome);

 private:
  void begin();
  void emit();

  Format format_;
  std::string operation_;
  int fd_;
  bool begun_ = false;
  bool anyResult_ = false;
  std::string buffer_;  // the text of one result, reused
  std::vector<host::ResultItem> kept_;  // the table format's results
};

}  // namespace zeda::cim
