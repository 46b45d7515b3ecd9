// SPDX-License-Identifier: MIT
#include "stockbook/qt/pdf_printer.h"

#include <QDateTime>
#include <QRectF>
#include <stdexcept>
#include <string>
#include <vector>

#include "qt/sheet/pdf_canvas.h"
#include "qt/sheet/pdf_file.h"
#include "qt/sheet/text.h"
#include "sheet/print/page_painter.h"

namespace stockbook::qt {
namespace {

constexpr double kPixelsInPoint = 96.0 / 72.0;

class PdfPages {
 public:
  PdfPages(sheet::Sheet& sheet, const PdfDocument& document, std::ostream& out)
      : document_(document),
        paper_(document.page.fullRect(QPageLayout::Point)),
        area_(document.page.paintRect(QPageLayout::Point)),
        out_(out),
        file_(out),
        resources_(file_),
        painter_(sheet, {area_.width() * kPixelsInPoint, area_.height() * kPixelsInPoint}, document.words,
                 document.setup) {}

  bool Write(const PageProgress& progress) {
    pages_object_ = file_.Number();
    resources_object_ = file_.Number();
    for (int page = 0; page < painter_.PageCount(); ++page) {
      WritePage(page);
      if (!out_) return false;
      if (progress && !progress(page + 1, painter_.PageCount())) return false;
    }
    file_.Write(resources_object_, resources_.Write());
    WriteTree();
    const int contents = WriteContents();
    const int catalog = file_.Number();
    const std::string outline = contents == 0 ? "" : " /Outlines " + PdfReference(contents) + " /PageMode /UseOutlines";
    file_.Write(catalog, "<< /Type /Catalog /Pages " + PdfReference(pages_object_) + outline + " >>");
    const int information = file_.Number();
    file_.Write(information, Information());
    file_.Finish(catalog, information);
    return static_cast<bool>(out_.flush());
  }

 private:
  void WritePage(int page) {
    PdfPage target(resources_, {area_.left(), area_.top(), paper_.height()});
    painter_.Paint(page, target);
    const int content = file_.Number();
    file_.WriteStream(content, "", target.commands());
    page_objects_.push_back(file_.Number());
    file_.Write(page_objects_.back(), "<< /Type /Page /Parent " + PdfReference(pages_object_) + " /Contents " +
                                          PdfReference(content) + " /Resources " + PdfReference(resources_object_) +
                                          " /MediaBox [0 0 " + PdfNumber(paper_.width()) + " " +
                                          PdfNumber(paper_.height()) + "] >>");
  }

  void WriteTree() {
    std::string kids;
    for (const int page : page_objects_) kids += PdfReference(page) + " ";
    file_.Write(pages_object_,
                "<< /Type /Pages /Count " + std::to_string(page_objects_.size()) + " /Kids [ " + kids + "] >>");
  }

  // The object of the table of contents; 0 without any.
  int WriteContents() {
    const std::vector<sheet::PageBookmark> bookmarks = painter_.Bookmarks();
    if (bookmarks.empty()) return 0;
    const int root = file_.Number();
    std::vector<int> entries;
    for (size_t at = 0; at < bookmarks.size(); ++at) entries.push_back(file_.Number());
    for (size_t at = 0; at < bookmarks.size(); ++at) {
      std::string entry = "<< /Title " + PdfText(ToQString(bookmarks[at].title).simplified()) + " /Parent " +
                          PdfReference(root) + " /Dest [" +
                          PdfReference(page_objects_[static_cast<size_t>(bookmarks[at].page)]) + " /Fit]";
      if (at > 0) entry += " /Prev " + PdfReference(entries[at - 1]);
      if (at + 1 < entries.size()) entry += " /Next " + PdfReference(entries[at + 1]);
      file_.Write(entries[at], entry + " >>");
    }
    file_.Write(root, "<< /Type /Outlines /First " + PdfReference(entries.front()) + " /Last " +
                          PdfReference(entries.back()) + " /Count " + std::to_string(entries.size()) + " >>");
    return root;
  }

  std::string Information() const {
    const std::string now = QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMddHHmmss")).toStdString();
    return "<< /Title " + PdfText(document_.title.simplified()) + " /Creator (Stockbook) /Producer (Stockbook)" +
           " /CreationDate (D:" + now + "Z) >>";
  }

  const PdfDocument& document_;
  QRectF paper_;  // in points
  QRectF area_;   // of it, within the margins
  std::ostream& out_;
  PdfFile file_;
  PdfResources resources_;
  sheet::PagePainter painter_;
  int pages_object_ = 0;
  int resources_object_ = 0;
  std::vector<int> page_objects_;
};

}  // namespace

bool WritePdf(sheet::Sheet& sheet, const PdfDocument& document, std::ostream& out, const PageProgress& progress) {
  if (!document.page.isValid() || document.page.paintRect(QPageLayout::Point).isEmpty()) {
    throw std::invalid_argument(
        "WritePdf needs a page with room on it: give PdfDocument::page a paper size, and margins that are smaller.");
  }
  return PdfPages(sheet, document, out).Write(progress);
}

}  // namespace stockbook::qt
