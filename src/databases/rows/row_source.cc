// SPDX-License-Identifier: MIT
#include "stockbook/databases/rows/row_source.h"

#include <algorithm>

#include "base/text.h"

namespace stockbook::databases {

bool RowFilter::Has(const std::vector<int64_t>& asked, int64_t key) {
  return asked.empty() || std::find(asked.begin(), asked.end(), key) != asked.end();
}

// As the engine compares texts.
bool RowFilter::HasPeriod(std::string_view period) const {
  return last_period.empty() || base::AsciiLower(period) <= base::AsciiLower(last_period);
}

void RowSource::Products(const RowFilter&, const Take<Product>&) {}
void RowSource::Depots(const RowFilter&, const Take<Depot>&) {}
void RowSource::Suppliers(const RowFilter&, const Take<Partner>&) {}
void RowSource::Customers(const RowFilter&, const Take<Partner>&) {}
void RowSource::Projects(const RowFilter&, const Take<Project>&) {}
void RowSource::Classes(ClassTree, const Take<Class>&) {}
void RowSource::Balances(BalanceOwner, const RowFilter&, const Take<Balance>&) {}

std::optional<std::vector<platform::Field>> RowSource::Columns(std::string_view, const RowFilter&) {
  return std::nullopt;
}

}  // namespace stockbook::databases
