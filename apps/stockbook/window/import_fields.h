// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QWidget>
#include <array>
#include <string>
#include <vector>

#include "stockbook/import/import_mapping.h"

namespace stockbook::app {

// Makes the list that drops down as wide as its texts, however narrow the chooser is.
void WidenList(QComboBox& chooser);

// A chooser for each meaning that a column of a table can have, with the columns by their captions.
class ImportFields : public QWidget {
  Q_OBJECT

 public:
  explicit ImportFields(QWidget* parent = nullptr);

  // Offers other columns, without telling of a change.
  void Show(const std::vector<std::string>& header, const ImportMapping::Positions& positions);
  ImportMapping::Positions Positions() const;
  // The captions of the meanings that an import needs and that have no column: 商品编号、日期; "" if none is missing.
  QString Missing() const;

 signals:
  // The user chose another column.
  void Changed();

 private:
  std::array<QComboBox*, kImportFieldCount> choosers_{};
};

}  // namespace stockbook::app
