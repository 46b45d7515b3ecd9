// SPDX-License-Identifier: MIT
#include "stockbook/paper/paper_actions.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QStandardPaths>
#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "qt/sheet/text.h"
#include "stockbook/control/stockbook.h"
#include "stockbook/paper/page_setup_dialog.h"
#include "stockbook/paper/paper_memory.h"
#include "stockbook/paper/print_preview.h"
#include "stockbook/platform/error.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::app {
namespace {

// The format of the ending that the user wrote, otherwise the one that was chosen in the list.
const JournalFileFormat& FormatOf(const std::vector<JournalFileFormat>& formats, const QString& path,
                                  const QString& filter) {
  const QString suffix = QFileInfo(path).suffix();
  const auto named = std::find_if(formats.begin(), formats.end(), [&](const JournalFileFormat& format) {
    return format.suffix.compare(suffix, Qt::CaseInsensitive) == 0;
  });
  if (named != formats.end()) return *named;
  const auto chosen = std::find_if(formats.begin(), formats.end(),
                                   [&](const JournalFileFormat& format) { return format.Filter() == filter; });
  return chosen == formats.end() ? formats.front() : *chosen;
}

// The pages of the printer's choice, counted from 0.
sheet::Span PagesOf(const QPrinter& printer, int count) {
  if (printer.printRange() != QPrinter::PageRange || printer.fromPage() < 1) return {0, count};
  const int first = std::min(printer.fromPage() - 1, count);
  return {first, std::clamp(printer.toPage(), first, count)};
}

}  // namespace

PaperActions::PaperActions(Window window, QObject* parent) : QObject(parent), window_(std::move(window)) {}

PaperActions::~PaperActions() = default;

void PaperActions::Remember(QSettings& settings) {
  settings_ = &settings;
  choice_ = RememberedPaper(settings_);
}

QWidget* PaperActions::Front() {
  if (preview_ != nullptr && preview_->isVisible()) return preview_.data();
  return &window_.window;
}

void PaperActions::SetChoice(const PaperChoice& choice) {
  choice_ = choice;
  RememberPaper(settings_, choice_);
}

bool PaperActions::HasJournal() {
  const sheet::GridSheet& sheet = window_.journal.sheet();
  if (sheet.Rows() > sheet.FixedRows()) return true;
  emit Told(tr("还没有载入台账，没有内容可以输出；请先选择并载入一个台账。"));
  return false;
}

void PaperActions::Fail(const QString& message) {
  auto* box = new QMessageBox(QMessageBox::Warning, tr("没有完成"), message, QMessageBox::NoButton, Front());
  box->setTextFormat(Qt::PlainText);
  box->addButton(tr("关闭(&C)"), QMessageBox::AcceptRole);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->open();
}

void PaperActions::Preview() {
  if (!HasJournal()) return;
  auto* preview = new PrintPreview(window_.journal, window_.heading(), choice_, &window_.window);
  preview_ = preview;
  preview->setAttribute(Qt::WA_DeleteOnClose);
  connect(preview, &PrintPreview::ChoiceChanged, this, &PaperActions::SetChoice);
  connect(preview, &PrintPreview::PrintWanted, this, [this, preview] { AskForPrinter(preview); });
  connect(preview, &PrintPreview::SaveWanted, this, [this, preview] { AskForFile(QStringLiteral("pdf"), preview); });
  preview->open();
}

void PaperActions::SetUpPage() {
  auto* dialog = new PageSetupDialog(choice_, &window_.window);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  connect(dialog, &QDialog::accepted, this, [this, dialog] { SetChoice(dialog->Choice()); });
  dialog->open();
}

void PaperActions::Print() {
  if (HasJournal()) AskForPrinter(&window_.window);
}

void PaperActions::AskForPrinter(QWidget* parent) {
  const auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
  printer->setPageLayout(choice_.page);
  // The dialog proposes it as the name of a file, too.
  printer->setDocName(qt::ToQString(window_.heading().FileName()));
  auto* dialog = new QPrintDialog(printer.get(), parent);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setOption(QAbstractPrintDialog::PrintPageRange);
  // The printer lives as long as its dialog, which lives until the printing has ended.
  connect(dialog, &QDialog::accepted, this, [this, printer] { PrintTo(*printer); });
  dialog->open();
}

bool PaperActions::PrintTo(QPrinter& printer) {
  if (!HasJournal()) return false;
  const bool whole_pdf = printer.outputFormat() == QPrinter::PdfFormat && !printer.outputFileName().isEmpty() &&
                         printer.printRange() == QPrinter::AllPages && printer.copyCount() == 1;
  if (!whole_pdf) return PrintPages(printer);
  PaperChoice choice = choice_;
  choice.page = printer.pageLayout();
  const std::vector<JournalFileFormat> formats = JournalFileFormats();
  return WriteFile(printer.outputFileName(), FormatOf(formats, QStringLiteral("x.pdf"), {}), choice);
}

bool PaperActions::PrintPages(QPrinter& printer) {
  const auto aside = window_.journal.control().SetHotRowAside();
  sheet::GridSheet& sheet = window_.journal.sheet();
  PaperProgress progress(Front(), patience_ms_);
  QPainter painter;
  if (!painter.begin(&printer)) {
    Fail(tr("打印机“%1”不接受文档；请检查它是否接通，或换一台打印机。").arg(printer.printerName()));
    return false;
  }
  qt::GridPrinter pages(sheet, qt::PaperOf(printer), WordsFor(window_.heading()), SetupFor(sheet, choice_));
  const sheet::Span wanted = PagesOf(printer, pages.PageCount());
  bool cancelled = false;
  const bool printed = qt::PrintPages(pages, painter, printer, wanted, [&](int done, int all) {
    cancelled = !progress.Tell(done, all);
    return !cancelled;
  });
  if (cancelled) printer.abort();
  const bool ended = painter.end();
  if (cancelled) {
    emit Told(tr("打印已取消。"));
  } else if (!printed || !ended) {
    Fail(tr("打印机“%1”中途不再接受文档，后面的页没有打印；请检查打印机后再打印一次。").arg(printer.printerName()));
  } else {
    emit Told(tr("已送去打印，共 %1 页。").arg(wanted.last - wanted.first));
  }
  return printed && ended && !cancelled;
}

void PaperActions::Export() {
  if (HasJournal()) AskForFile({}, &window_.window);
}

void PaperActions::AskForFile(const QString& suffix, QWidget* parent) {
  const std::vector<JournalFileFormat> formats = JournalFileFormats();
  QStringList filters;
  QString chosen;
  for (const JournalFileFormat& format : formats) {
    filters.append(format.Filter());
    if (format.suffix == suffix) chosen = format.Filter();
  }
  auto* dialog = new QFileDialog(parent, suffix.isEmpty() ? tr("导出台账") : tr("存为文件"),
                                 QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setAcceptMode(QFileDialog::AcceptSave);
  dialog->setNameFilters(filters);
  if (!chosen.isEmpty()) dialog->selectNameFilter(chosen);
  const auto follow = [dialog, formats](const QString& filter) {
    dialog->setDefaultSuffix(FormatOf(formats, {}, filter).suffix);
  };
  follow(dialog->selectedNameFilter());
  connect(dialog, &QFileDialog::filterSelected, dialog, follow);
  dialog->selectFile(qt::ToQString(window_.heading().FileName()));
  connect(dialog, &QFileDialog::fileSelected, this, [this, dialog, formats](const QString& path) {
    const JournalFileFormat& format = FormatOf(formats, path, dialog->selectedNameFilter());
    const bool named = path.endsWith(QLatin1Char('.') + format.suffix, Qt::CaseInsensitive);
    ExportTo(named ? path : path + QLatin1Char('.') + format.suffix, format);
  });
  dialog->open();
}

bool PaperActions::ExportTo(const QString& path, const JournalFileFormat& format) {
  return HasJournal() && WriteFile(path, format, choice_);
}

bool PaperActions::WriteFile(const QString& path, const JournalFileFormat& format, const PaperChoice& choice) {
  PaperProgress progress(Front(), patience_ms_);
  const JournalFileRequest request{window_.journal, window_.heading(), choice, progress.Telling()};
  try {
    const auto write = [&](std::ostream& out) { return format.write(request, out); };
    const FileOutcome outcome = WriteWholeFile(qt::FromQString(path), window_.input(), write);
    const bool written = outcome == FileOutcome::kWritten;
    emit Told(written ? tr("已导出：%1").arg(QDir::toNativeSeparators(path)) : tr("导出已取消，没有写文件。"));
    return written;
  } catch (const platform::Error& error) {
    Fail(qt::ToQString(error.what()));
  }
  return false;
}

}  // namespace stockbook::app
