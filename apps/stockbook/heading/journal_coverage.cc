// SPDX-License-Identifier: MIT
#include "stockbook/heading/journal_coverage.h"

#include <string_view>

#include "stockbook/base/journal_type.h"
#include "stockbook/base/value.h"
#include "stockbook/platform/recordset.h"

namespace stockbook::app {
namespace {

struct PartnerTables {
  std::string partners;
  std::string lines;
};

PartnerTables TablesOf(int journal_type) {
  if (journal_type == base::SupplierJournal) return {"厂商资料", "入库记录"};
  return {"客户资料", "出库记录"};
}

// The beginning of the codes whose partners are listed. The customer journal takes the number of its second key for a
// class, whatever class was chosen.
std::string WantedCode(const JournalOptions& options) {
  return options.journal_type == base::CustomerJournal ? std::to_string(options.dp_id) : options.dp_code;
}

struct PartnerCounts {
  int64_t listed = 0;
  int64_t left_out = 0;
};

PartnerCounts CountPartners(platform::Connection& connection, const std::string& table, std::string_view code) {
  PartnerCounts counts;
  for (platform::Recordset rows = connection.Execute("Select KSID, ClassCode From " + table); !rows.AtEnd();
       rows.MoveNext()) {
    const base::Value class_code = rows.FieldValue(1);
    const bool listed = !class_code.IsNull() && class_code.Text().starts_with(code);
    ++(listed ? counts.listed : counts.left_out);
  }
  return counts;
}

int64_t CountLinesOfNobody(platform::Connection& connection, const JournalOptions& options, const std::string& table) {
  const std::string product = options.key_id >= 1 ? " And pdID=" + std::to_string(options.key_id) : "";
  const platform::Recordset rows =
      connection.Execute("Select Count(*) From " + table + " Where (ksID Is Null Or ksID<1)" + product);
  return rows.AtEnd() ? 0 : rows.FieldValue(size_t{0}).AsInteger().value_or(0);
}

}  // namespace

std::string AllCovers(int journal_type) {
  if (journal_type == base::CustomerJournal) return "（分类以“0”开头的）";
  if (journal_type == base::SupplierJournal) return "（有分类的）";
  return {};
}

JournalCoverage ReadCoverage(platform::Connection& connection, const JournalOptions& options) {
  const bool partner = options.journal_type == base::SupplierJournal || options.journal_type == base::CustomerJournal;
  if (!partner || options.dp_id >= 1) return {};
  const PartnerTables tables = TablesOf(options.journal_type);
  const std::string code = WantedCode(options);
  const PartnerCounts partners = CountPartners(connection, tables.partners, code);
  JournalCoverage coverage;
  coverage.of_suppliers = options.journal_type == base::SupplierJournal;
  coverage.code = code;
  if (partners.listed == 0) {
    // Without anybody to list there is no condition, and every line is there.
    coverage.listed = JournalCoverage::Listed::kEverything;
    return coverage;
  }
  coverage.listed = code.empty() ? JournalCoverage::Listed::kWithClass : JournalCoverage::Listed::kOfClass;
  coverage.partners_left_out = partners.left_out;
  coverage.lines_left_out = CountLinesOfNobody(connection, options, tables.lines);
  return coverage;
}

}  // namespace stockbook::app
