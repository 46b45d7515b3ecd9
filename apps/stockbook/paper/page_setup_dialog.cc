// SPDX-License-Identifier: MIT
#include "stockbook/paper/page_setup_dialog.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "stockbook/paper/paper_memory.h"

namespace stockbook::app {
namespace {

constexpr double kMostMargin = 50;  // millimetres

}  // namespace

PageSetupDialog::PageSetupDialog(const PaperChoice& choice, QWidget* parent)
    : QDialog(parent),
      size_(new QComboBox),
      orientation_(new QComboBox),
      pages_wide_(new QSpinBox),
      carrying_(new QCheckBox(tr("页首写承前页，页末写过次页(&C)"))) {
  setWindowTitle(tr("页面设置"));
  for (const QPageSize::PageSizeId id : kPaperSizes) size_->addItem(QPageSize::name(id), static_cast<int>(id));
  orientation_->addItem(tr("横向"), static_cast<int>(QPageLayout::Landscape));
  orientation_->addItem(tr("纵向"), static_cast<int>(QPageLayout::Portrait));
  pages_wide_->setRange(1, PaperChoice::kMostPagesWide);
  pages_wide_->setSpecialValueText(tr("缩放到一页宽"));
  pages_wide_->setSuffix(tr(" 页宽"));
  pages_wide_->setToolTip(tr("列太多时缩小到这么多页；续页上重复“单据”列"));
  auto* form = new QFormLayout;
  form->addRow(tr("纸张(&S)："), size_);
  form->addRow(tr("方向(&O)："), orientation_);
  form->addRow(tr("宽度(&W)："), pages_wide_);
  AddMargins(*form);
  form->addRow(QString(), carrying_);
  auto* buttons = new QDialogButtonBox;
  buttons->addButton(tr("确定"), QDialogButtonBox::AcceptRole);
  buttons->addButton(tr("取消"), QDialogButtonBox::RejectRole);
  QPushButton* usual = buttons->addButton(tr("恢复默认(&D)"), QDialogButtonBox::ResetRole);
  connect(usual, &QPushButton::clicked, this, [this] { Show(PaperChoice()); });
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* rows = new QVBoxLayout(this);
  rows->addLayout(form);
  rows->addWidget(buttons);
  Show(choice);
}

void PageSetupDialog::AddMargins(QFormLayout& form) {
  const std::array<QString, 4> labels{tr("左边距(&L)："), tr("上边距(&T)："), tr("右边距(&R)："), tr("下边距(&B)：")};
  for (size_t side = 0; side < margins_.size(); ++side) {
    auto* margin = margins_[side] = new QDoubleSpinBox;
    margin->setRange(0, kMostMargin);
    margin->setDecimals(1);
    margin->setSuffix(tr(" 毫米"));
    form.addRow(labels[side], margin);
  }
}

void PageSetupDialog::Show(const PaperChoice& choice) {
  size_->setCurrentIndex(size_->findData(static_cast<int>(choice.page.pageSize().id())));
  orientation_->setCurrentIndex(orientation_->findData(static_cast<int>(choice.page.orientation())));
  const QMarginsF margins = choice.page.margins(QPageLayout::Millimeter);
  const std::array<double, 4> values{margins.left(), margins.top(), margins.right(), margins.bottom()};
  for (size_t side = 0; side < margins_.size(); ++side) margins_[side]->setValue(values[side]);
  pages_wide_->setValue(choice.pages_wide);
  carrying_->setChecked(choice.carrying == Carrying::kTold);
}

PaperChoice PageSetupDialog::Choice() const {
  PaperChoice choice;
  choice.page =
      QPageLayout(QPageSize(static_cast<QPageSize::PageSizeId>(size_->currentData().toInt())),
                  static_cast<QPageLayout::Orientation>(orientation_->currentData().toInt()),
                  QMarginsF(margins_[0]->value(), margins_[1]->value(), margins_[2]->value(), margins_[3]->value()),
                  QPageLayout::Millimeter);
  choice.pages_wide = pages_wide_->value();
  choice.carrying = carrying_->isChecked() ? Carrying::kTold : Carrying::kNotTold;
  return choice;
}

}  // namespace stockbook::app
