// SPDX-License-Identifier: MIT
#include "stockbook/window/import_fields.h"

#include <QAbstractItemView>
#include <QGridLayout>
#include <QLabel>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStringList>

#include "base/text.h"
#include "qt/sheet/text.h"

namespace stockbook::app {
namespace {

constexpr int kFieldsInARow = 4;
constexpr int kFieldSpacing = 8;
constexpr int kImportFieldCharacters = 5;
constexpr size_t kLongestCaption = 30;

struct FieldCaption {
  const char* caption;
  bool is_needed;
};

// In the order of ImportField.
constexpr std::array<FieldCaption, kImportFieldCount> kFieldCaptions{{
    {QT_TRANSLATE_NOOP("Import", "商品编号"), true},
    {QT_TRANSLATE_NOOP("Import", "商品名称"), false},
    {QT_TRANSLATE_NOOP("Import", "单据编号"), false},
    {QT_TRANSLATE_NOOP("Import", "日期"), true},
    {QT_TRANSLATE_NOOP("Import", "数量"), true},
    {QT_TRANSLATE_NOOP("Import", "单价"), false},
    {QT_TRANSLATE_NOOP("Import", "往来单位"), false},
    {QT_TRANSLATE_NOOP("Import", "项目"), false},
}};

// An empty caption still has to be told from others.
QString ColumnText(const std::string& caption, size_t column) {
  const QString text = qt::ToQString(base::LeftCharacters(base::OneLine(caption, " "), kLongestCaption));
  return text.isEmpty() ? ImportFields::tr("第 %1 列").arg(column + 1) : text;
}

}  // namespace

void WidenList(QComboBox& chooser) {
  QAbstractItemView* list = chooser.view();
  list->setMinimumWidth(list->sizeHintForColumn(0) + 2 * list->frameWidth() +
                        list->verticalScrollBar()->sizeHint().width());
}

ImportFields::ImportFields(QWidget* parent) : QWidget(parent) {
  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setHorizontalSpacing(kFieldSpacing);
  for (size_t field = 0; field < kImportFieldCount; ++field) {
    auto* chooser = new QComboBox;
    chooser->setObjectName(QStringLiteral("field%1").arg(field));
    chooser->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    chooser->setMinimumContentsLength(kImportFieldCharacters);
    const FieldCaption& caption = kFieldCaptions[field];
    const QString mark = caption.is_needed ? QStringLiteral(" *") : QString();
    auto* label = new QLabel(tr(caption.caption) + QStringLiteral(" (&%1)").arg(field + 1) + mark);
    label->setBuddy(chooser);
    const int row = static_cast<int>(field) / kFieldsInARow;
    const int column = static_cast<int>(field) % kFieldsInARow * 2;
    grid->addWidget(label, row, column, Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(chooser, row, column + 1);
    grid->setColumnStretch(column + 1, 1);
    connect(chooser, &QComboBox::activated, this, &ImportFields::Changed);
    choosers_[field] = chooser;
  }
}

void ImportFields::Show(const std::vector<std::string>& header, const ImportMapping::Positions& positions) {
  QStringList columns{tr("（无）")};
  for (size_t column = 0; column < header.size(); ++column) columns.append(ColumnText(header[column], column));
  for (size_t field = 0; field < kImportFieldCount; ++field) {
    const QSignalBlocker quiet(choosers_[field]);
    choosers_[field]->clear();
    choosers_[field]->addItems(columns);
    WidenList(*choosers_[field]);
    choosers_[field]->setCurrentIndex(positions[field] ? static_cast<int>(*positions[field]) + 1 : 0);
  }
}

ImportMapping::Positions ImportFields::Positions() const {
  ImportMapping::Positions positions;
  for (size_t field = 0; field < kImportFieldCount; ++field) {
    const int index = choosers_[field]->currentIndex();
    if (index > 0) positions[field] = static_cast<size_t>(index) - 1;
  }
  return positions;
}

QString ImportFields::Missing() const {
  QStringList missing;
  for (size_t field = 0; field < kImportFieldCount; ++field) {
    const bool is_missing = kFieldCaptions[field].is_needed && choosers_[field]->currentIndex() <= 0;
    if (is_missing) missing.append(tr(kFieldCaptions[field].caption));
  }
  return missing.join(tr("、"));
}

}  // namespace stockbook::app
