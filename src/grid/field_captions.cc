// SPDX-License-Identifier: MIT
#include "grid/field_captions.h"

#include <stdexcept>

namespace stockbook::grid {

std::string FieldCaption(const LayoutSettings& settings, int index) {
  if (index < 0 || index >= kFieldCount) throw std::out_of_range("字段序号必须在 0 与 6 之间。");
  const auto& [receipt, issue] = settings.field_captions[static_cast<size_t>(index)];
  switch (settings.journal_type) {
    case base::MaterialJournal:
    case base::ProjectJournal:
      return receipt == issue ? receipt : receipt + "|" + issue;
    case base::SupplierJournal:
      return receipt;
    case base::CustomerJournal:
      return issue;
  }
  return {};
}

}  // namespace stockbook::grid
