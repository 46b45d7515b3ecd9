// SPDX-License-Identifier: MIT
#include "designer/sample_in_form.h"

#include <QMetaMethod>
#include <QScopedValueRollback>
#include <cstring>

#include "designer/sample_journal.h"
#include "stockbook/platform/grid.h"

namespace stockbook::designer {
namespace {

// Those that a load may write, and the form too: the type alone is never written by one.
bool IsWrittenByBoth(const QMetaProperty& property) {
  static const QMetaMethod changed = QMetaMethod::fromSignal(&qt::StockbookWidget::JournalChanged);
  return property.isWritable() && property.isStored() && property.notifySignal() == changed &&
         std::strcmp(property.name(), "JournalType") != 0;
}

}  // namespace

SampleInForm::SampleInForm(qt::StockbookWidget& widget)
    : widget_(widget), type_(widget.JournalType()), at_first_(HeightsNow()) {
  const QMetaObject& meta = qt::StockbookWidget::staticMetaObject;
  for (int index = 0; index < meta.propertyCount(); ++index) {
    if (const QMetaProperty property = meta.property(index); IsWrittenByBoth(property))
      kept_.emplace_back(property, QVariant());
  }
  KeepProperties();
  widget_.SetConn(SampleJournal());
  Show();
}

void SampleInForm::Follow() {
  if (showing_) return;
  if (type_ == widget_.JournalType()) {
    KeepProperties();
  } else {
    // The layout of another type has written heights already.
    Show();
  }
}

void SampleInForm::KeepProperties() {
  for (auto& [property, value] : kept_) value = property.read(&widget_);
}

void SampleInForm::Show() {
  const QScopedValueRollback<bool> showing(showing_, true);
  type_ = widget_.JournalType();
  // A class of the form's is none of the sample's.
  widget_.SetdpCode({});
  widget_.Load(1, 0);
  platform::Grid& grid = widget_.Grid();
  std::vector<int> loaded;
  for (int row = 0; row < grid.Rows(); ++row) loaded.push_back(grid.RowHeight(row));
  const Heights unset{at_first_.line, at_first_.title, widget_.RowHeightSum()};
  for (const auto& [property, value] : kept_) {
    if (property.read(&widget_) != value) property.write(&widget_, value);
  }
  // Rows whose height the form leaves alone are as high as in a program, where the load sizes them by the font.
  const Heights form = HeightsNow();
  for (int row = 0; row < grid.Rows(); ++row) {
    const auto kind = row == 0 ? &Heights::title : grid.IsSubtotal(row) ? &Heights::sum : &Heights::line;
    if (form.*kind == unset.*kind) grid.SetRowHeight(row, loaded[static_cast<size_t>(row)]);
  }
}

SampleInForm::Heights SampleInForm::HeightsNow() const {
  return {widget_.RowHeight(), widget_.RowHeightTitle(), widget_.RowHeightSum()};
}

}  // namespace stockbook::designer
