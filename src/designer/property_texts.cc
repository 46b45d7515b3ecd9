// SPDX-License-Identifier: MIT
#include "designer/property_texts.h"

namespace stockbook::designer {
namespace {

constexpr PropertyText kTexts[] = {
    {"JournalType",
     "Whose journal it is: a product's, a supplier's, a customer's or a project's. It decides the columns."},
    {"AllowQty2", "Shows the columns of the second unit."},
    {"AllowInv", "Shows the columns of tax."},
    {"dpID", "The second key: the depot of a product's journal, 0 for all depots. 16 bits."},
    {"dpCode", "The class code of the second key. It stays from load to load."},
    {"MaterielTitle", "What the caption calls a product (商品)."},
    {"SupplierTitle", "What the caption calls a supplier (发货单位)."},
    {"CustomerTitle", "What the caption calls a customer (收货单位)."},
    {"ProjectTitle", "What the caption calls a project (项目)."},
    {"Field00", "Caption of the first optional field of receipts."},
    {"Field01", "Caption of the second optional field of receipts."},
    {"Field02", "Caption of the third optional field of receipts."},
    {"Field03", "Caption of the fourth optional field of receipts."},
    {"Field04", "Caption of the fifth optional field of receipts."},
    {"Field05", "Caption of the sixth optional field of receipts."},
    {"Field06", "Caption of the seventh optional field of receipts."},
    {"Field10", "Caption of the first optional field of issues."},
    {"Field11", "Caption of the second optional field of issues."},
    {"Field12", "Caption of the third optional field of issues."},
    {"Field13", "Caption of the fourth optional field of issues."},
    {"Field14", "Caption of the fifth optional field of issues."},
    {"Field15", "Caption of the sixth optional field of issues."},
    {"Field16", "Caption of the seventh optional field of issues."},
    {"Caption", "The text in the band above the grid. A load writes it."},
    {"FieldsFilter", "Keys of columns that the menu of columns leaves out, each followed by a bar: Depot|Inputor|"},
    {"AccRestrict", "true, false or a number: shows - in place of prices and amounts."},
    {"PriceFormat", "How prices are shown, such as #,##0.00"},
    {"QuantityFormat", "How quantities are shown, such as #,##0.00"},
    {"AccountFormat", "How amounts are shown, such as #,##0.00"},
    {"BackColor", "Background of the lines."},
    {"BackColorBkg", "Background where there are no cells."},
    {"BackColorFixed", "Background of captions and row marks."},
    {"BackColorFrozen", "Background of frozen columns."},
    {"BackColorSel", "Background of the selection."},
    {"ForeColor", "Text of the lines."},
    {"ForeColorFixed", "Text of captions and row marks."},
    {"ForeColorFrozen", "Text in frozen columns."},
    {"ForeColorSel", "Text of the selection."},
    {"GridColor", "Lines between cells."},
    {"GridColorFixed", "Lines between captions and row marks."},
    {"GridLines", "Which lines are between cells, and how they are drawn."},
    {"GridLinesFixed", "Which lines are between captions and row marks."},
    {"Outlinebar", "How the outline of the periods is drawn."},
    {"RowHeightMin", "Least height of a row in twips, 0 for none."},
    {"RowHeightMax", "Greatest height of a row in twips, 0 for none."},
    {"ScrollBars", "Which scroll bars the grid may show."},
    {"BillPicture", "Picture of a bill of another kind."},
    {"BillAuditedPicture", "Picture of a bill of another kind that is audited."},
    {"RevPicture", "Picture of a receipt."},
    {"RevAuditedPicture", "Picture of an audited receipt."},
    {"IssPicture", "Picture of an issue."},
    {"IssAuditedPicture", "Picture of an audited issue."},
    {"ShiftPicture", "Picture of a transfer between depots."},
    {"ShiftAuditedPicture", "Picture of an audited transfer."},
    {"NodeClosedPicture", "Picture of a folded period."},
    {"NodeOpenPicture", "Picture of an unfolded period."},
    {"BackColorHot", "Background of the current row."},
    {"ForeColorHot", "Text of the current row."},
    {"TitleBackPicture", "Picture behind the captions."},
    {"MarkBackPicture", "Picture behind the row marks."},
    {"BorderWidth", "Space around the control in pixels; 0 draws a line around the grid instead."},
    {"ChildSpacing", "Space between the band and the grid in pixels."},
    {"BorderColor", "The line around the grid."},
    {"SheetBorderColor", "The line around all cells."},
    {"AllowView", "Whether users may look at bills; kept for the host, which decides."},
    {"AllowPrint", "Whether users may print; kept for the host, which decides."},
};

// Texts that are data, not words.
const char* const kUntranslated[] = {"dpCode",      "FieldsFilter",   "AccRestrict",
                                     "PriceFormat", "QuantityFormat", "AccountFormat"};

}  // namespace

std::span<const PropertyText> PropertyTexts() { return kTexts; }

QString PropertySpecifications() {
  QString specifications;
  for (const PropertyText& text : kTexts) {
    specifications += QStringLiteral("    <tooltip name=\"%1\">%2</tooltip>\n")
                          .arg(QLatin1String(text.name), QString::fromUtf8(text.tool_tip).toHtmlEscaped());
  }
  for (const char* name : kUntranslated) {
    specifications +=
        QStringLiteral("    <stringpropertyspecification name=\"%1\" type=\"singleline\" notr=\"true\"/>\n")
            .arg(QLatin1String(name));
  }
  return specifications;
}

}  // namespace stockbook::designer
