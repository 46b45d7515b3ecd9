// SPDX-License-Identifier: MIT
#include "stockbook/window/journal_bar.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QMenu>
#include <algorithm>
#include <utility>

#include "qt/sheet/text.h"
#include "stockbook/inventory/inventory_catalog.h"
#include "stockbook/platform/error.h"
#include "stockbook/window/bar_layout.h"

namespace stockbook::app {
namespace {

constexpr char16_t kFullWidthCharacter = u'单';
constexpr int kReadableProduct = 17;  // in full-width characters
constexpr int kReadableSecond = 10;

QString SecondKeyLabel(base::tqJournalTypeContants type) {
  switch (type) {
    case base::MaterialJournal:
      return JournalBar::tr("仓库(&W)");
    case base::SupplierJournal:
      return JournalBar::tr("供应商(&S)");
    case base::CustomerJournal:
      return JournalBar::tr("客户(&S)");
    case base::ProjectJournal:
      return JournalBar::tr("项目(&S)");
  }
  return {};
}

// What stands for all of them, in the language of the window.
QString AllSeconds(base::tqJournalTypeContants type) {
  switch (type) {
    case base::MaterialJournal:
      return JournalBar::tr("全部仓库");
    case base::SupplierJournal:
      return JournalBar::tr("全部供应商");
    case base::CustomerJournal:
      return JournalBar::tr("全部客户");
    case base::ProjectJournal:
      return JournalBar::tr("全部项目");
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
      rows_(new QGridLayout(this)),
      type_(new QComboBox),
      product_label_(new QLabel(tr("商品(&P)"))),
      second_label_(new QLabel),
      product_(new SubjectChooser),
      second_(new SubjectChooser),
      boxes_(new QWidget(this)),
      quantity2_(new QCheckBox(tr("双数量(&2)"))),
      tax_(new QCheckBox(tr("税额(&T)"))),
      restrict_(new QCheckBox(tr("隐藏金额(&A)"))),
      more_(new QToolButton(this)),
      load_(new QPushButton(tr("载入(&L)"))) {
  type_->addItems({tr("商品台账"), tr("供应商台账"), tr("客户台账"), tr("项目台账")});
  load_->setDefault(true);
  load_->setToolTip(tr("载入台账（Enter 或 F5）"));
  // A click must find what was typed still there.
  load_->setFocusPolicy(Qt::TabFocus);
  NameType();
  product_label_->setBuddy(product_);
  second_label_->setBuddy(second_);
  rows_->setContentsMargins(kBarMargin, kBarSpacing, kBarMargin, kBarSpacing);
  rows_->setSpacing(kBarSpacing);
  BuildBoxes();
  BuildMoreMenu();
  Arrange(Fold::kNone);
  OrderFields();
  FillChoosers();
  ConnectParts();
}

// The name of a box is its text: what it chooses is said by a label, for which the bar has no room.
void JournalBar::NameType() {
  auto* label = new QLabel(tr("台账类型"), this);
  label->setBuddy(type_);
  label->hide();
}

void JournalBar::OrderFields() {
  QWidget* before = type_;
  for (QWidget* field :
       {static_cast<QWidget*>(product_), static_cast<QWidget*>(second_), static_cast<QWidget*>(quantity2_),
        static_cast<QWidget*>(tax_), static_cast<QWidget*>(restrict_), static_cast<QWidget*>(more_),
        static_cast<QWidget*>(load_)}) {
    setTabOrder(std::exchange(before, field), field);
  }
}

void JournalBar::BuildBoxes() {
  auto* row = new QHBoxLayout(boxes_);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(kBarSpacing);
  for (QCheckBox* box : {quantity2_, tax_, restrict_}) row->addWidget(box);
  // The tax columns show amounts, which a restriction hides: there are never both.
  connect(restrict_, &QCheckBox::toggled, tax_, [this](bool restricted) {
    if (restricted) tax_->setChecked(false);
    tax_->setDisabled(restricted);
  });
  tax_->setToolTip(tr("显示税率、税额和含税金额；隐藏金额时不可用"));
  for (QCheckBox* box : {quantity2_, tax_, restrict_}) connect(box, &QCheckBox::clicked, this, &JournalBar::LoadWanted);
}

// The menu shows the boxes as they are each time that it opens.
void JournalBar::BuildMoreMenu() {
  more_->setText(tr("选项(&M)"));
  more_->setToolTip(tr("双数量、税额、隐藏金额"));
  more_->setPopupMode(QToolButton::InstantPopup);
  more_->setFocusPolicy(Qt::TabFocus);
  auto* menu = new QMenu(more_);
  for (QCheckBox* box : {quantity2_, tax_, restrict_}) {
    QAction* item = menu->addAction(box->text());
    item->setCheckable(true);
    connect(menu, &QMenu::aboutToShow, item, [item, box] {
      item->setChecked(box->isChecked());
      item->setEnabled(box->isEnabled());
    });
    connect(item, &QAction::triggered, box, [box] { box->click(); });
  }
  more_->setMenu(menu);
}

void JournalBar::ConnectParts() {
  connect(type_, &QComboBox::activated, this, [this] {
    if (FillChoosers()) emit LoadWanted();
  });
  for (SubjectChooser* chooser : {product_, second_}) {
    connect(chooser, &SubjectChooser::Chosen, this, [this] {
      CountUses();
      emit LoadWanted();
    });
    connect(chooser, &SubjectChooser::NothingFound, this,
            [this](const QString& words) { emit Failed(tr("没有找到：%1").arg(words)); });
  }
  connect(load_, &QPushButton::clicked, this, [this] {
    TakeTypedTexts();
    emit LoadWanted();
  });
}

void JournalBar::Arrange(Fold fold) {
  fold_ = fold;
  while (QLayoutItem* item = rows_->takeAt(0)) delete item;
  const bool two_rows = fold == Fold::kTwoRows;
  QWidget* options = fold == Fold::kNone ? boxes_ : static_cast<QWidget*>(more_);
  boxes_->setVisible(options == boxes_);
  more_->setVisible(options == more_);
  for (int column = 0; column < rows_->columnCount(); ++column) rows_->setColumnStretch(column, 0);
  rows_->addWidget(type_, 0, 0);
  rows_->addWidget(product_label_, 0, 1);
  rows_->addWidget(product_, 0, 2);
  rows_->setColumnStretch(2, 3);
  if (two_rows) {
    rows_->addWidget(load_, 0, 3);
    rows_->addWidget(second_label_, 1, 0, 1, 2, Qt::AlignRight | Qt::AlignVCenter);
    rows_->addWidget(second_, 1, 2);
    rows_->addWidget(options, 1, 3);
  } else {
    rows_->addWidget(second_label_, 0, 3);
    rows_->addWidget(second_, 0, 4);
    rows_->setColumnStretch(4, 2);
    rows_->addWidget(options, 0, 5);
    rows_->addWidget(load_, 0, 6);
  }
  updateGeometry();
}

int JournalBar::WidthOf(Fold fold) const {
  const auto width = [](const QWidget* part) { return part->minimumSizeHint().width() + kBarSpacing; };
  const int first = width(type_) + width(product_label_) + width(product_);
  const int ends = 2 * kBarMargin;
  if (fold == Fold::kTwoRows) return ends + first + std::max(width(load_), width(more_));
  const int row = ends + first + width(second_label_) + width(second_) + width(load_);
  if (fold == Fold::kBoxes) return row + width(more_);
  // Before the choosers get too narrow for what they show, the boxes give way.
  const int character = fontMetrics().horizontalAdvance(QChar(kFullWidthCharacter));
  const auto lacking = [character](const QWidget* chooser, int characters) {
    return std::max(0, characters * character - chooser->minimumSizeHint().width());
  };
  return row + width(boxes_) + lacking(product_, kReadableProduct) + lacking(second_, kReadableSecond);
}

void JournalBar::FollowWidth() {
  Fold wanted = Fold::kNone;
  if (width() < WidthOf(Fold::kNone)) wanted = Fold::kBoxes;
  if (width() < WidthOf(Fold::kBoxes)) wanted = Fold::kTwoRows;
  if (wanted != fold_) Arrange(wanted);
}

QSize JournalBar::minimumSizeHint() const { return {WidthOf(Fold::kTwoRows), rows_->minimumSize().height()}; }

void JournalBar::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  FollowWidth();
}

void JournalBar::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) FollowWidth();
}

base::tqJournalTypeContants JournalBar::Type() const {
  return static_cast<base::tqJournalTypeContants>(type_->currentIndex());
}

void JournalBar::SetInventory(std::shared_ptr<platform::Connection> connection) {
  // All is read before anything is shown, so that a failure leaves the bar unchanged.
  Subjects subjects = Read(*connection, Type());
  connection_ = std::move(connection);
  Fill(std::move(subjects));
  left_type_ = -1;
}

SubjectChooser::Uses JournalBar::UsesOf(const QString& kind) const {
  return [uses = uses_, kind](const CatalogEntry& entry) { return uses == nullptr ? 0 : uses->Of(kind, entry); };
}

void JournalBar::SetUses(SubjectUses* uses) {
  uses_ = uses;
  product_->Rank(UsesOf(SubjectUses::ProductKind()));
  second_->Rank(UsesOf(SubjectUses::SecondKind(Type())));
}

void JournalBar::CountUses() const {
  if (uses_ == nullptr) return;
  uses_->Count(SubjectUses::ProductKind(), product_->Current());
  uses_->Count(SubjectUses::SecondKind(Type()), second_->Current());
}

JournalBar::Subjects JournalBar::Read(platform::Connection& connection, base::tqJournalTypeContants type) {
  const InventoryCatalog catalog(connection);
  return {catalog.Products(), catalog.SecondKeys(type)};
}

void JournalBar::ReadAgain() {
  const JournalOptions chosen = Options();
  if (FillChoosers()) SetOptions(chosen);
}

// Where the inventory cannot be read, as while the window is closing, the bar goes back to what it knew of the type
// that it had before; for another one it stays at the type that it has the subjects of, and returns false.
bool JournalBar::FillChoosers() {
  try {
    Fill(connection_ == nullptr ? Subjects() : Read(*connection_, Type()));
  } catch (const platform::Error& error) {
    if (type_->currentIndex() == left_type_) {
      Fill(Subjects(left_));
      return true;
    }
    type_->setCurrentIndex(filled_type_);
    emit Failed(qt::ToQString(error.what()));
    return false;
  }
  return true;
}

void JournalBar::Fill(Subjects subjects) {
  const base::tqJournalTypeContants type = Type();
  if (filled_type_ != type_->currentIndex()) {
    left_ = std::move(filled_);
    left_type_ = filled_type_;
  }
  filled_ = subjects;
  filled_type_ = type_->currentIndex();
  second_label_->setText(SecondKeyLabel(type));
  if (MayBeEveryProduct(type)) {
    subjects.products.insert(subjects.products.begin(), CatalogEntry{0, {}, qt::FromQString(tr("全部商品"))});
  }
  if (!subjects.seconds.empty()) subjects.seconds.front().text = qt::FromQString(AllSeconds(type));
  const CatalogEntry product = product_->Current();
  product_->SetEntries(std::move(subjects.products), UsesOf(SubjectUses::ProductKind()));
  product_->Choose(product.key, product.class_code);
  second_->SetEntries(std::move(subjects.seconds), UsesOf(SubjectUses::SecondKind(type)));
  FollowWidth();
}

void JournalBar::TakeTypedTexts() {
  product_->TakeTypedText();
  second_->TakeTypedText();
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

// The subjects are read again only for another type, or where they lack one of the options.
void JournalBar::SetOptions(const JournalOptions& options) {
  const std::string code = options.dp_id > 0 ? std::string() : options.dp_code;
  const bool known = options.journal_type == filled_type_ && product_->Choose(options.key_id, {}) &&
                     second_->Choose(options.dp_id, code);
  type_->setCurrentIndex(options.journal_type);
  if (!known) FillChoosers();
  if (!known && type_->currentIndex() == options.journal_type && connection_ != nullptr) {
    product_->Show(options.key_id, {});
    second_->Show(options.dp_id, code);
  }
  quantity2_->setChecked(options.allow_qty2);
  tax_->setChecked(options.allow_inv && !options.acc_restrict);
  restrict_->setChecked(options.acc_restrict);
}

}  // namespace stockbook::app
