// SPDX-License-Identifier: MIT
#include "stockbook/window/journal_bar.h"

#include <QHBoxLayout>

#include "platform/error.h"
#include "qt/text.h"
#include "stockbook/inventory/inventory_catalog.h"
#include "stockbook/window/bar_layout.h"

namespace stockbook::app {
namespace {

QString SecondKeyLabel(base::tqJournalTypeContants type) {
  switch (type) {
    case base::MaterialJournal:
      return QStringLiteral("仓库(&W)");
    case base::SupplierJournal:
      return QStringLiteral("供应商(&S)");
    case base::CustomerJournal:
      return QStringLiteral("客户(&S)");
    case base::ProjectJournal:
      return QStringLiteral("项目(&S)");
  }
  return {};
}

// In the partner journals no product stands for every product.
bool MayBeEveryProduct(base::tqJournalTypeContants type) {
  return type == base::SupplierJournal || type == base::CustomerJournal;
}

}  // namespace

JournalBar::JournalBar(QWidget* parent)
    : QWidget(parent),
      type_(new QComboBox),
      second_label_(new QLabel),
      product_(new SubjectChooser),
      second_(new SubjectChooser),
      quantity2_(new QCheckBox(QStringLiteral("双数量(&2)"))),
      tax_(new QCheckBox(QStringLiteral("税额(&T)"))),
      restrict_(new QCheckBox(QStringLiteral("隐藏金额(&A)"))),
      load_(new QPushButton(QStringLiteral("载入(&L)"))) {
  type_->addItems({QStringLiteral("商品台账"), QStringLiteral("供应商台账"), QStringLiteral("客户台账"),
                   QStringLiteral("项目台账")});
  load_->setDefault(true);
  load_->setToolTip(QStringLiteral("载入台账（Enter 或 F5）"));
  BuildRow();
  FillChoosers();
  connect(type_, &QComboBox::activated, this, [this] {
    FillChoosers();
    emit LoadWanted();
  });
  for (SubjectChooser* chooser : {product_, second_}) {
    connect(chooser, &SubjectChooser::Chosen, this, &JournalBar::LoadWanted);
    connect(chooser, &SubjectChooser::NothingFound, this,
            [this](const QString& words) { emit Failed(QStringLiteral("没有找到：%1").arg(words)); });
  }
  connect(load_, &QPushButton::clicked, this, &JournalBar::LoadWanted);
  // The tax columns show amounts, which a restriction hides: there are never both.
  connect(restrict_, &QCheckBox::toggled, tax_, [this](bool restricted) {
    if (restricted) tax_->setChecked(false);
    tax_->setDisabled(restricted);
  });
  tax_->setToolTip(QStringLiteral("显示税率、税额和含税金额；隐藏金额时不可用"));
  for (QCheckBox* box : {quantity2_, tax_, restrict_}) connect(box, &QCheckBox::clicked, this, &JournalBar::LoadWanted);
}

void JournalBar::BuildRow() {
  auto* product_label = new QLabel(QStringLiteral("商品(&P)"));
  product_label->setBuddy(product_);
  second_label_->setBuddy(second_);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(kBarMargin, kBarSpacing, kBarMargin, kBarSpacing);
  row->setSpacing(kBarSpacing);
  row->addWidget(type_);
  row->addSpacing(kBarMargin);
  row->addWidget(product_label);
  row->addWidget(product_, 3);
  row->addSpacing(kBarMargin);
  row->addWidget(second_label_);
  row->addWidget(second_, 2);
  row->addSpacing(kBarMargin);
  for (QCheckBox* box : {quantity2_, tax_, restrict_}) row->addWidget(box);
  row->addSpacing(kBarMargin);
  row->addWidget(load_);
}

void JournalBar::SetInventory(std::shared_ptr<platform::Connection> connection) {
  const auto type = static_cast<base::tqJournalTypeContants>(type_->currentIndex());
  // Both are read before anything is shown, so that a failure leaves the bar unchanged.
  const InventoryCatalog catalog(*connection);
  catalog.Products();
  catalog.SecondKeys(type);
  connection_ = std::move(connection);
  FillChoosers();
}

void JournalBar::FillChoosers() {
  const auto type = static_cast<base::tqJournalTypeContants>(type_->currentIndex());
  std::vector<CatalogEntry> products;
  std::vector<CatalogEntry> seconds;
  if (connection_ != nullptr) {
    try {
      const InventoryCatalog catalog(*connection_);
      products = catalog.Products();
      seconds = catalog.SecondKeys(type);
    } catch (const platform::Error& error) {
      // What could be chosen stays, for the journal that is still shown.
      emit Failed(qt::ToQString(error.what()));
      return;
    }
  }
  second_label_->setText(SecondKeyLabel(type));
  if (MayBeEveryProduct(type)) products.insert(products.begin(), CatalogEntry{0, {}, "全部商品"});
  const CatalogEntry product = product_->Current();
  product_->SetEntries(std::move(products));
  product_->Choose(product.key, product.class_code);
  second_->SetEntries(std::move(seconds));
}

JournalOptions JournalBar::Options() const {
  JournalOptions options;
  options.journal_type = type_->currentIndex();
  options.key_id = product_->Current().key;
  options.dp_id = second_->Current().key;
  options.dp_code = second_->Current().class_code;
  options.allow_qty2 = quantity2_->isChecked();
  options.allow_inv = tax_->isChecked();
  options.acc_restrict = restrict_->isChecked();
  return options;
}

void JournalBar::SetOptions(const JournalOptions& options) {
  type_->setCurrentIndex(options.journal_type);
  FillChoosers();
  product_->Choose(options.key_id, {});
  second_->Choose(options.dp_id, options.dp_id > 0 ? std::string() : options.dp_code);
  quantity2_->setChecked(options.allow_qty2);
  tax_->setChecked(options.allow_inv && !options.acc_restrict);
  restrict_->setChecked(options.acc_restrict);
}

}  // namespace stockbook::app
