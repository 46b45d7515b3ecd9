// SPDX-License-Identifier: MIT
#include "stockbook/window/bill_paper.h"

#include <QApplication>
#include <QTextDocument>

namespace stockbook::app {
namespace {

constexpr int kFactsInALine = 4;

QString PaperCell(const QString& text, bool is_number, const char* element) {
  const QLatin1String tag(element);
  return QLatin1Char('<') + tag + (is_number ? QLatin1String(" align=\"right\">") : QLatin1String(" align=\"left\">")) +
         text.toHtmlEscaped() + QLatin1String("</") + tag + QLatin1Char('>');
}

QString PaperRow(const BillView& bill, const std::vector<QString>& texts, const char* element) {
  QString row = QStringLiteral("<tr>");
  for (size_t column = 0; column < texts.size(); ++column)
    row += PaperCell(texts[column], bill.columns[column].is_number, element);
  return row + QStringLiteral("</tr>");
}

QString PaperFacts(const BillView& bill) {
  QString html = QStringLiteral("<table width=\"100%\" cellpadding=\"2\"><tr>");
  int index = 0;
  for (const auto& [label, text] : bill.facts) {
    if (index > 0 && index % kFactsInALine == 0) html += QStringLiteral("</tr><tr>");
    html += QStringLiteral("<td>") + label.toHtmlEscaped() + QStringLiteral("：") + text.toHtmlEscaped() +
            QStringLiteral("</td>");
    ++index;
  }
  return html + QStringLiteral("</tr></table><br>");
}

}  // namespace

QString BillHtml(const BillView& bill) {
  std::vector<QString> captions;
  for (const BillView::Column& column : bill.columns) captions.push_back(column.caption);
  QString html = QStringLiteral("<h2>") + (bill.kind + QLatin1Char(' ') + bill.number).toHtmlEscaped() +
                 QStringLiteral("</h2>") + PaperFacts(bill) +
                 QStringLiteral(
                     "<table border=\"1\" cellspacing=\"0\" cellpadding=\"3\" width=\"100%\" "
                     "style=\"border-collapse:collapse\"><thead>") +
                 PaperRow(bill, captions, "th") + QStringLiteral("</thead>");
  for (const BillView::Line& line : bill.lines) html += PaperRow(bill, line.texts, "td");
  for (const std::vector<QString>& total : bill.totals) html += PaperRow(bill, total, "th");
  return html + QStringLiteral("</table>");
}

void PrintBill(const BillView& bill, QPagedPaintDevice& device) {
  QTextDocument document;
  document.setDefaultFont(QApplication::font());
  document.setHtml(BillHtml(bill));
  document.print(&device);
}

}  // namespace stockbook::app
