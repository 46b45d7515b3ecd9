// SPDX-License-Identifier: MIT
#include "stockbook/window/import_dialog.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QHeaderView>
#include <QSignalBlocker>
#include <QStringList>
#include <QVBoxLayout>
#include <algorithm>
#include <exception>
#include <utility>

#include "base/text.h"
#include "qt/sheet/text.h"
#include "stockbook/command/command_line.h"
#include "stockbook/command/output_check.h"
#include "stockbook/window/import_run.h"
#include "stockbook/window/screen_fit.h"

namespace stockbook::app {
namespace {

constexpr QSize kImportSize(940, 580);
constexpr int kImportMargin = 12;
constexpr int kImportSpacing = 8;
constexpr int kLeadingColumns = 2;  // the line's number and its problem, before the columns of the table
constexpr int kMostColumnWidth = 260;
constexpr int kMostProblemWidth = 420;
constexpr int kBriefProblem = 8;  // in full-width characters
constexpr int kSettingCharacters = 7;
constexpr size_t kLongestField = 200;

QComboBox* MakeSettingChooser(const char* name) {
  auto* chooser = new QComboBox;
  chooser->setObjectName(QString::fromLatin1(name));
  // The whole row has to fit on small screens; the list that drops down is as wide as its texts.
  chooser->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  chooser->setMinimumContentsLength(kSettingCharacters);
  return chooser;
}

void FillEncodings(QComboBox* chooser) {
  const auto add = [&](const QString& text, TextEncoding encoding) {
    chooser->addItem(text, static_cast<int>(encoding));
  };
  add(ImportDialog::tr("自动识别"), TextEncoding::kDetected);
  add(QStringLiteral("UTF-8"), TextEncoding::kUtf8);
  add(QStringLiteral("GB18030（GBK）"), TextEncoding::kGb18030);
  add(ImportDialog::tr("Big5（繁体）"), TextEncoding::kBig5);
  add(QStringLiteral("UTF-16"), TextEncoding::kUtf16Le);
  add(QStringLiteral("UTF-16BE"), TextEncoding::kUtf16Be);
  add(ImportDialog::tr("Windows-1252（西文）"), TextEncoding::kWindows1252);
}

QString DelimiterText(char delimiter) {
  switch (delimiter) {
    case ',':
      return ImportDialog::tr("逗号");
    case ';':
      return ImportDialog::tr("分号");
    case '\t':
      return ImportDialog::tr("制表符");
    case '|':
      return ImportDialog::tr("竖线");
    default:
      return QString(QLatin1Char(delimiter));
  }
}

void FillDelimiters(QComboBox* chooser) {
  chooser->addItem(ImportDialog::tr("自动识别"), 0);
  for (const char delimiter : {',', ';', '\t', '|'}) chooser->addItem(DelimiterText(delimiter), int{delimiter});
}

void FillDecimals(QComboBox* chooser) {
  chooser->addItem(ImportDialog::tr("自动识别"), -1);
  chooser->addItem(ImportDialog::tr("点（1,234.56）"), static_cast<int>(DecimalMark::kPoint));
  chooser->addItem(ImportDialog::tr("逗号（1.234,56）"), static_cast<int>(DecimalMark::kComma));
}

void FillDirections(QComboBox* chooser) {
  chooser->addItem(ImportDialog::tr("出库（销售）"), static_cast<int>(Direction::Issue));
  chooser->addItem(ImportDialog::tr("入库（采购）"), static_cast<int>(Direction::Receipt));
}

QString FieldText(const std::string& field) {
  return qt::ToQString(base::LeftCharacters(base::OneLine(field, " "), kLongestField));
}

QTableWidgetItem* MakePreviewItem(const QString& text) {
  auto* item = new QTableWidgetItem(text);
  item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
  item->setToolTip(text);
  return item;
}

// Whether the file may be written; otherwise it is the table itself, or part of another database.
bool MayWrite(const std::string& file, const std::string& table) {
  try {
    CheckOutput(file, table, Replaces::kAnyInventory);
    return true;
  } catch (const UsageError&) {
    return false;
  }
}

}  // namespace

ImportDialog::ImportDialog(std::string path, QWidget* parent)
    : QDialog(parent),
      path_(std::move(path)),
      encoding_(MakeSettingChooser("encoding")),
      delimiter_(MakeSettingChooser("delimiter")),
      sheet_(MakeSettingChooser("sheet")),
      decimal_(MakeSettingChooser("decimal")),
      direction_(MakeSettingChooser("direction")),
      fields_(new ImportFields),
      lines_(new QTableWidget),
      only_skipped_(new QCheckBox(tr("只看将被跳过的行(&K)"))),
      summary_(new QLabel),
      problem_(new QLabel),
      import_(nullptr) {
  setWindowTitle(tr("导入 — %1").arg(QFileInfo(qt::ToQString(path_)).fileName()));
  FillEncodings(encoding_);
  FillDelimiters(delimiter_);
  FillDecimals(decimal_);
  FillDirections(direction_);
  for (QComboBox* chooser : {encoding_, delimiter_, decimal_, direction_}) WidenList(*chooser);
  auto* settings = new QGridLayout;
  BuildSettings(settings);
  BuildRows(settings);
  for (const QComboBox* chooser : {encoding_, delimiter_, sheet_})
    connect(chooser, &QComboBox::activated, this, &ImportDialog::TakeTable);
  for (const QComboBox* chooser : {decimal_, direction_})
    connect(chooser, &QComboBox::activated, this, &ImportDialog::TakeFields);
  connect(fields_, &ImportFields::Changed, this, &ImportDialog::TakeFields);
  connect(only_skipped_, &QCheckBox::toggled, this, &ImportDialog::ShowLines);
  ResizeWithinScreen(*this, kImportSize);
  TakeTable();
}

void ImportDialog::BuildSettings(QGridLayout* grid) {
  grid->setHorizontalSpacing(kImportSpacing);
  int column = 0;
  const auto add = [&](const QString& caption, QComboBox* chooser) {
    auto* label = new QLabel(caption);
    label->setBuddy(chooser);
    grid->addWidget(label, 0, column++, Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(chooser, 0, column++);
    return label;
  };
  add(tr("编码(&E)"), encoding_);
  add(tr("分隔符(&D)"), delimiter_);
  sheet_label_ = add(tr("工作表(&S)"), sheet_);
  add(tr("小数点(&P)"), decimal_);
  add(tr("正数为(&R)"), direction_);
  grid->setColumnStretch(column, 1);
}

void ImportDialog::BuildRows(QGridLayout* settings) {
  lines_->setObjectName(QStringLiteral("lines"));
  lines_->setAccessibleName(tr("预览"));
  lines_->setSelectionBehavior(QAbstractItemView::SelectRows);
  lines_->setTabKeyNavigation(false);
  lines_->setWordWrap(false);
  lines_->verticalHeader()->hide();
  lines_->horizontalHeader()->setHighlightSections(false);
  only_skipped_->setObjectName(QStringLiteral("only_skipped"));
  summary_->setObjectName(QStringLiteral("summary"));
  problem_->setObjectName(QStringLiteral("problem"));
  for (QLabel* label : {summary_, problem_}) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  }
  QFont bold = problem_->font();
  bold.setBold(true);
  problem_->setFont(bold);
  auto* buttons = new QDialogButtonBox;
  import_ = buttons->addButton(tr("导入(&I)..."), QDialogButtonBox::ActionRole);
  import_->setDefault(true);
  buttons->addButton(tr("取消(&C)"), QDialogButtonBox::RejectRole);
  connect(import_, &QPushButton::clicked, this, &ImportDialog::ChooseFile);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* foot = new QHBoxLayout;
  foot->addWidget(only_skipped_);
  foot->addWidget(buttons, 1);
  auto* rows = new QVBoxLayout(this);
  rows->setContentsMargins(kImportMargin, kImportMargin, kImportMargin, kImportMargin);
  rows->setSpacing(kImportSpacing);
  rows->addLayout(settings);
  rows->addWidget(fields_);
  rows->addWidget(lines_, 1);
  rows->addWidget(summary_);
  rows->addWidget(problem_);
  rows->addLayout(foot);
}

TableOptions ImportDialog::Options() const {
  TableOptions options;
  options.encoding = static_cast<TextEncoding>(encoding_->currentData().toInt());
  const int delimiter = delimiter_->currentData().toInt();
  if (delimiter != 0) options.delimiter = static_cast<char>(delimiter);
  options.sheet = qt::FromQString(sheet_->currentText());
  const int decimal = decimal_->currentData().toInt();
  if (decimal >= 0) options.decimal = static_cast<DecimalMark>(decimal);
  return options;
}

Direction ImportDialog::ChosenDirection() const { return static_cast<Direction>(direction_->currentData().toInt()); }

void ImportDialog::TakeTable() { Refresh(std::nullopt); }

void ImportDialog::TakeFields() { Refresh(fields_->Positions()); }

void ImportDialog::Refresh(std::optional<ImportMapping::Positions> mapping) {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  QString problem;
  try {
    preview_ = PreviewTable(path_, {Options(), ChosenDirection(), mapping});
  } catch (const std::exception& error) {
    preview_ = {};
    problem = ImportErrorText(error);
  }
  QApplication::restoreOverrideCursor();
  fields_->Show(preview_.header, preview_.mapping);
  ShowSheets();
  ShowLines();
  ShowSummary();
  const QString missing = fields_->Missing();
  if (problem.isEmpty() && !missing.isEmpty())
    problem = tr("请选定%1所在的列；整行都在一列中时，请改选分隔符。").arg(missing);
  ShowProblem(problem);
  import_->setEnabled(preview_.is_mapped && preview_.tally.imported > 0);
}

// A workbook has sheets, and neither an encoding nor a delimiter.
void ImportDialog::ShowSheets() {
  const bool is_workbook = !preview_.sheets.empty();
  if (is_workbook && sheet_->count() == 0) {
    const QSignalBlocker quiet(sheet_);
    for (const std::string& name : preview_.sheets) sheet_->addItem(qt::ToQString(name));
    sheet_->setCurrentText(qt::ToQString(preview_.sheet));
    WidenList(*sheet_);
  }
  const bool has_sheets = sheet_->count() > 0;
  sheet_->setVisible(has_sheets);
  sheet_label_->setVisible(has_sheets);
  encoding_->setEnabled(!has_sheets);
  delimiter_->setEnabled(!has_sheets);
}

void ImportDialog::ShowLines() {
  const auto& shown = only_skipped_->isChecked() ? preview_.skipped : preview_.lines;
  QStringList captions{tr("行"), tr("问题")};
  for (const std::string& caption : preview_.header) captions.append(FieldText(caption));
  lines_->clear();
  lines_->setColumnCount(static_cast<int>(captions.size()));
  lines_->setRowCount(static_cast<int>(shown.size()));
  lines_->setHorizontalHeaderLabels(captions);
  for (int row = 0; row < lines_->rowCount(); ++row) {
    const PreviewLine& line = shown[static_cast<size_t>(row)];
    lines_->setItem(row, 0, MakePreviewItem(QString::number(line.line)));
    lines_->setItem(row, 1, MakePreviewItem(SentenceText(line.problem)));
    const size_t fields = std::min(line.fields.size(), preview_.header.size());
    for (size_t field = 0; field < fields; ++field)
      lines_->setItem(row, static_cast<int>(field) + kLeadingColumns, MakePreviewItem(FieldText(line.fields[field])));
  }
  const bool has_problems =
      std::any_of(shown.begin(), shown.end(), [](const auto& line) { return !line.problem.english.empty(); });
  lines_->setColumnHidden(1, !has_problems);
  FitLines();
}

// Where most lines have no problem, the column of problems shows how one begins and leaves the room to the table; the
// whole text is in its tooltip, and in the list of the skipped lines.
void ImportDialog::FitLines() {
  lines_->resizeColumnsToContents();
  const int brief = kBriefProblem * lines_->fontMetrics().horizontalAdvance(QChar(u'单'));
  const int most_problem = only_skipped_->isChecked() ? kMostProblemWidth : brief;
  for (int column = 0; column < lines_->columnCount(); ++column)
    lines_->setColumnWidth(column,
                           std::min(lines_->columnWidth(column), column == 1 ? most_problem : kMostColumnWidth));
}

void ImportDialog::ShowSummary() {
  const ImportTally& tally = preview_.tally;
  QStringList parts;
  if (!preview_.encoding.empty()) parts.append(tr("编码 %1").arg(qt::ToQString(preview_.encoding)));
  if (preview_.delimiter != 0) parts.append(tr("以%1分隔").arg(DelimiterText(preview_.delimiter)));
  if (preview_.is_mapped) {
    const QString range = tally.is_whole ? tr("共 %L1 行") : tr("前 %L1 行中");
    QString count = range.arg(tally.imported + tally.skipped) + tr("，可导入 %L1 行").arg(tally.imported);
    if (tally.skipped > 0) count += tr("，将跳过 %L1 行（%2）").arg(tally.skipped).arg(SkippedText(tally));
    if (tally.damaged > 0) count += tr("，%L1 行有无法识别的字符（请核对编码）").arg(tally.damaged);
    parts.append(count);
  }
  summary_->setText(parts.join(tr("；")));
  only_skipped_->setEnabled(tally.skipped > 0);
  if (tally.skipped == 0) only_skipped_->setChecked(false);
}

void ImportDialog::ShowProblem(const QString& problem) {
  problem_->setText(problem);
  problem_->setVisible(!problem.isEmpty());
}

void ImportDialog::ChooseFile() {
  const QFileInfo table(qt::ToQString(path_));
  const QString suggested = table.path() + QLatin1Char('/') + table.completeBaseName() + QStringLiteral(".db");
  QString file = QFileDialog::getSaveFileName(this, tr("导入到新的库存数据库"), suggested, tr("库存数据库 (*.db)"));
  if (file.isEmpty()) return;
  // Whether an existing file may be replaced was asked for the name as it was typed.
  const QString named = file + QStringLiteral(".db");
  if (QFileInfo(file).suffix().isEmpty() && !QFileInfo::exists(named)) file = named;
  ImportInto(qt::FromQString(file));
}

bool ImportDialog::ImportInto(const std::string& file) {
  if (!MayWrite(file, path_)) {
    ShowProblem(tr("不能写入“%1”：它是要导入的表，或属于另一个数据库，请换一个文件名。").arg(qt::ToQString(file)));
    return false;
  }
  ImportPlan plan{ImportMapping(fields_->Positions()), ChosenDirection(), preview_.decimal, file};
  // The dialog listens to the user meanwhile.
  import_->setEnabled(false);
  const ImportEnd end = ImportBesideWindow(this, path_, Options(), std::move(plan));
  import_->setEnabled(true);
  if (!end.result.is_written) {
    ShowProblem(end.message);
    return false;
  }
  imported_ = {file, end.message};
  accept();
  return true;
}

std::optional<ImportedInventory> ImportDialog::Run(QWidget* parent, const std::string& path) {
  ImportDialog dialog(path, parent);
  dialog.exec();
  return dialog.imported();
}

}  // namespace stockbook::app
