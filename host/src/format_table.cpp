// Table output: the results of one answer as bordered text tables, one per
// class (instances, instance names) and one for plain values.
//
// Unlike MOF, JSON and CIM-XML, a table cannot be written as the results
// come: its column widths depend on every row. zeda-cim therefore keeps the
// results of one answer and prints the tables at its end. The table is for
// people reading a handful of instances, not for answers of 100,000 of them;
// those are what the streaming formats are for.
#include <algorithm>
#include <cctype>
#include <map>

#include "zeda/host/format.hpp"
#include "zeda/host/wbem_uri.hpp"

namespace zeda::host {

namespace {

std::string lowered(std::string s) {
  std::transform(s.begin(), s.end(), s.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return s;
}

// One table: the columns in first-seen order (names compared without
// regard to case, as CIM names are) and the rows, a cell per column or
// empty where the row has no such property or key.
class Table {
 public:
  // noColumns: the one header of a table whose rows have no cells at all
  // (instances without properties, paths without keys), so that each row
  // still shows.
  Table(std::string title, std::string noColumns)
      : title_(std::move(title)), noColumns_(std::move(noColumns)) {}

  void addRow(const std::vector<NamedValue>& cells) {
    std::vector<std::string>& row = rows_.emplace_back();
    for (const auto& c : cells) {
      const std::size_t column = columnOf(c.name);
      if (row.size() <= column) row.resize(column + 1);
      row[column] = tableCell(c.value);
    }
  }
  void addRow(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }
  void setColumns(std::vector<std::string> headers) { headers_ = std::move(headers); }

  std::string text() const {
    return title_ + "\n" +
           textTable(headers_.empty() ? std::vector<std::string>{noColumns_} : headers_, rows_);
  }

 private:
  std::size_t columnOf(const std::string& name) {
    const auto [at, added] = columns_.emplace(lowered(name), headers_.size());
    if (added) headers_.push_back(name);
    return at->second;
  }

  std::string title_;
  std::string noColumns_;
  std::vector<std::string> headers_;
  std::map<std::string, std::size_t> columns_;  // lowered name -> column
  std::vector<std::vector<std::string>> rows_;
};

// The tables of one answer in the order their first row came.
class Tables {
 public:
  Table& of(const std::string& title, const std::string& noColumns) {
    const auto [at, added] = index_.emplace(lowered(title), tables_.size());
    if (added) tables_.emplace_back(title, noColumns);
    return tables_[at->second];
  }

  std::string text() const {
    std::string out;
    for (const auto& t : tables_) out += (out.empty() ? "" : "\n") + t.text();
    return out;
  }

 private:
  std::vector<Table> tables_;
  std::map<std::string, std::size_t> index_;  // lowered title -> table
};

std::string classPath(const ObjectPath& p) {
  return formatObjectPath(ObjectPath(p.nameSpace(), p.className()));
}

// An embedded instance in MOF, its lines joined into one.
std::string oneLineMof(const Value& v) {
  const std::string mof = valueToMof(v);
  std::string out;
  for (std::size_t i = 0; i < mof.size(); ++i) {
    if (mof[i] != '\n') {
      out += mof[i];
      continue;
    }
    while (i + 1 < mof.size() && mof[i + 1] == ' ') ++i;
    out += ' ';
  }
  return out;
}

}  // namespace

std::string tableCell(const Value& v) {
  if (v.isNull()) return "NULL";
  if (v.isArray()) {
    std::string out = "{";
    const auto& e = v.elements();
    for (std::size_t n = 0; n < e.size(); ++n) out += (n ? ", " : "") + tableCell(e[n]);
    return out + "}";
  }
  if (v.type() == type::ref) return formatObjectPath(v.ref());
  if (v.type() == type::instance) return oneLineMof(v);
  return valueToMof(v);
}

std::string toTable(const std::vector<ResultItem>& results) {
  Tables tables;
  for (const auto& r : results) {
    if (r.isInstance()) {
      const Instance& i = r.instance();
      tables.of("Instances of " + classPath(i.path()), "(no properties)").addRow(i.properties());
    } else if (r.isPath()) {
      const ObjectPath& p = r.path();
      tables.of("Instance names of " + classPath(p), "(no keys)").addRow(p.keys());
    } else {
      Table& values = tables.of("Values", "");
      values.setColumns({"Type", "Value"});
      values.addRow({r.value().typeName(), tableCell(r.value())});
    }
  }
  return tables.text();
}

}  // namespace zeda::host
