// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaProperty>
#include <QVariant>
#include <utility>
#include <vector>

#include "stockbook/qt/stockbook_widget.h"

namespace stockbook::designer {

// The made-up journal in a widget of a form editor, and anew as that of another type when the property is edited. A
// load writes properties, which the editor would save: they stay what the form makes them.
class SampleInForm {
 public:
  // Shows it at once.
  explicit SampleInForm(qt::StockbookWidget& widget);

  // To be called when a property of the journal has changed.
  void Follow();

 private:
  struct Heights {
    float line = 0;
    float title = 0;
    float sum = 0;
  };

  void KeepProperties();
  void Show();
  Heights HeightsNow() const;

  qt::StockbookWidget& widget_;
  qt::StockbookWidget::tqJournalTypeContants type_;
  std::vector<std::pair<QMetaProperty, QVariant>> kept_;
  const Heights at_first_;
  bool showing_ = false;
};

}  // namespace stockbook::designer
