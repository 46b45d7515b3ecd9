// SPDX-License-Identifier: MIT
#include "stockbook/paper/journal_files.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFontMetrics>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <cerrno>
#include <memory>
#include <sstream>

#include "qt/sheet/text.h"
#include "stockbook/command/command_line.h"
#include "stockbook/command/journal_export.h"
#include "stockbook/command/output_check.h"
#include "stockbook/command/output_file.h"
#include "stockbook/export/xlsx_writer.h"
#include "stockbook/import/import_sentence.h"
#include "stockbook/platform/error.h"
#include "stockbook/sheet/grid_sheet.h"

namespace stockbook::app {
namespace {

// What they say is translated as the texts of classes are.
class FilesText {
  Q_DECLARE_TR_FUNCTIONS(JournalFiles)
};

// Spreadsheet programs take a file for UTF-8 by its mark alone.
bool WriteTable(const JournalFileRequest& request, std::ostream& out) {
  SeparatedOptions options;
  options.mark = ByteOrderMark::kWritten;
  WriteSeparated(request.journal.sheet(), options, out);
  return static_cast<bool>(out);
}

bool WriteWorkbook(const JournalFileRequest& request, std::ostream& out) {
  XlsxOptions options;
  options.title = request.heading.Page();
  options.goes_on = [&request](int row) {
    return !request.progress || request.progress(row, request.journal.sheet().Rows());
  };
  try {
    return WriteXlsx(request.journal.sheet(), options, out) && out;
  } catch (const TableError& error) {
    throw platform::Error("export", error.chinese());
  }
}

bool WritePages(const JournalFileRequest& request, std::ostream& out) {
  const auto aside = request.journal.control().SetHotRowAside();
  sheet::Sheet& sheet = request.journal.sheet();
  return qt::WritePdf(sheet, DocumentFor(sheet, request.paper, request.heading), out, request.progress);
}

// The view in the pixels of the screen, below two lines that say what it is of.
QImage ViewBelowHeading(const JournalFileRequest& request) {
  constexpr int kGap = 6;
  const QImage view = request.journal.grab().toImage();
  const double ratio = view.devicePixelRatio();
  const QFontMetrics metrics(request.journal.font());
  const int line = metrics.lineSpacing() + kGap;
  const QSize room = (QSizeF(view.size()) / ratio).toSize();
  QImage picture((QSizeF(room.width(), room.height() + 2 * line) * ratio).toSize(), QImage::Format_RGB32);
  if (picture.isNull()) return picture;
  picture.setDevicePixelRatio(ratio);
  picture.fill(request.journal.palette().color(QPalette::Window));
  QPainter painter(&picture);
  painter.setFont(request.journal.font());
  painter.setPen(request.journal.palette().color(QPalette::WindowText));
  const QRect first(kGap, 0, room.width() - 2 * kGap, line);
  const QRect second = first.translated(0, line);
  const auto draw = [&](const QRect& rect, Qt::Alignment side, const std::string& words) {
    const QString text = metrics.elidedText(qt::ToQString(words), Qt::ElideRight, rect.width());
    painter.drawText(rect, static_cast<int>(side | Qt::AlignVCenter) | Qt::TextSingleLine, text);
  };
  draw(first, Qt::AlignLeft, request.heading.Page());
  draw(second, Qt::AlignLeft, request.heading.Range() + "　" + request.heading.Source());
  draw(second, Qt::AlignRight, request.heading.Made());
  painter.drawImage(0, 2 * line, view);
  return picture;
}

bool WriteView(const JournalFileRequest& request, std::ostream& out) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!ViewBelowHeading(request).save(&buffer, "PNG"))
    throw platform::Error("export", qt::FromQString(FilesText::tr("画面太大，做不成图片；请缩小窗口后再试。")));
  out.write(bytes.constData(), bytes.size());
  return static_cast<bool>(out);
}

// Why the system refuses a file, and what to do.
QString ReasonOf(const platform::Error& error) {
  switch (error.native_code()) {
    case EACCES:
    case EPERM:
      return FilesText::tr("没有写入的权限；请换一个文件夹");
    case EROFS:
      return FilesText::tr("这个磁盘是只读的；请换一个文件夹");
    case ENOSPC:
      return FilesText::tr("磁盘已满；请换一个磁盘，或腾出空间");
    case ENOENT:
      return FilesText::tr("没有这个文件夹；请换一个文件夹");
    case EISDIR:
      return FilesText::tr("它是一个文件夹；请换一个文件名");
    case EIO:
      return FilesText::tr("磁盘已满或出错；请换一个磁盘");
    default:
      return qt::ToQString(error.what());
  }
}

[[noreturn]] void FailToWrite(const std::string& path, const QString& reason) {
  throw platform::Error("export",
                        qt::FromQString(FilesText::tr("文件“%1”没有写成：%2。").arg(qt::ToQString(path), reason)));
}

}  // namespace

std::vector<JournalFileFormat> JournalFileFormats() {
  std::vector<JournalFileFormat> formats;
  if (CanWriteXlsx()) formats.push_back({QStringLiteral("xlsx"), FilesText::tr("XLSX 工作簿"), WriteWorkbook});
  formats.push_back({QStringLiteral("csv"), FilesText::tr("CSV 表格"), WriteTable});
  formats.push_back({QStringLiteral("pdf"), FilesText::tr("PDF 文件"), WritePages});
  formats.push_back({QStringLiteral("png"), FilesText::tr("PNG 图片，当前画面"), WriteView});
  return formats;
}

FileOutcome WriteWholeFile(const std::string& path, const std::string& input,
                           const std::function<bool(std::ostream& out)>& write) {
  try {
    CheckOutput(path, input, Replaces::kNoInventory);
  } catch (const UsageError&) {
    FailToWrite(path, FilesText::tr("它是数据库，或属于数据库，不能覆盖；请换一个文件名"));
  }
  std::ostringstream unused;
  const auto open = [&]() -> std::unique_ptr<OutputFile> {
    try {
      return std::make_unique<OutputFile>(path, unused);
    } catch (const platform::Error& error) {
      FailToWrite(path, ReasonOf(error));
    }
  };
  const std::unique_ptr<OutputFile> file = open();
  const bool whole = write(file->stream());
  if (!whole && file->stream()) return FileOutcome::kCancelled;
  try {
    file->Commit();
  } catch (const platform::Error& error) {
    FailToWrite(path, ReasonOf(error));
  }
  return FileOutcome::kWritten;
}

}  // namespace stockbook::app
