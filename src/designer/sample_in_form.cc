// SPDX-License-Identifier: MIT
#include "designer/sample_in_form.h"

#include <QMetaMethod>
#include <QScopedValueRollback>

#include "designer/sample_journal.h"

namespace stockbook::designer {
namespace {

// Those that a load may write, and the form too.
bool IsWrittenByBoth(const QMetaProperty& property) {
  static const QMetaMethod changed = QMetaMethod::fromSignal(&qt::StockbookWidget::JournalChanged);
  return property.isWritable() && property.isStored() && property.isDesignable() && property.notifySignal() == changed;
}

}  // namespace

SampleInForm::SampleInForm(qt::StockbookWidget& widget) : widget_(widget) {
  const QMetaObject& meta = qt::StockbookWidget::staticMetaObject;
  for (int index = 0; index < meta.propertyCount(); ++index) {
    if (const QMetaProperty property = meta.property(index); IsWrittenByBoth(property)) kept_.push_back(property);
  }
  widget_.SetConn(SampleJournal());
  Show();
}

void SampleInForm::Follow() {
  if (!showing_) Show();
}

void SampleInForm::Show() {
  const QScopedValueRollback<bool> showing(showing_, true);
  std::vector<QVariant> values;
  for (const QMetaProperty& property : kept_) values.push_back(property.read(&widget_));
  // A class of the form's is none of the sample's.
  widget_.SetdpCode({});
  widget_.Load(1, 0);
  for (size_t index = 0; index < kept_.size(); ++index) {
    if (kept_[index].read(&widget_) != values[index]) kept_[index].write(&widget_, values[index]);
  }
}

}  // namespace stockbook::designer
