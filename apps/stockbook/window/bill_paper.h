// SPDX-License-Identifier: MIT
#pragma once

#include <QPagedPaintDevice>
#include <QString>

#include "stockbook/window/bill_view.h"

namespace stockbook::app {

// A bill as a page of rich text: its kind and number, what is said of it, its lines and totals. Texts of the bill are
// never taken for markup.
QString BillHtml(const BillView& bill);

// Prints it to a printer or a PDF, on as many pages as it needs; each has the captions of the lines.
void PrintBill(const BillView& bill, QPagedPaintDevice& device);

}  // namespace stockbook::app
