// SPDX-License-Identifier: MIT
#pragma once

#include <QMetaProperty>
#include <QVariant>
#include <utility>
#include <vector>

#include "stockbook/qt/stockbook_widget.h"

namespace stockbook::designer {

// The made-up journal in a widget of a form editor, and anew whenever a property of the journal is edited, as many take
// effect with a load alone. A load writes properties, which the editor would save: they stay what the form makes them.
class SampleInForm {
 public:
  // Shows it at once.
  explicit SampleInForm(qt::StockbookWidget& widget);

  // To be called when a property of the journal has changed.
  void Follow();

 private:
  void Show();

  qt::StockbookWidget& widget_;
  std::vector<QMetaProperty> kept_;
  bool showing_ = false;
};

}  // namespace stockbook::designer
