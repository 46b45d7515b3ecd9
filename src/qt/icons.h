// SPDX-License-Identifier: MIT
#pragma once

#include <QPainter>
#include <cstdint>

namespace stockbook::qt {

// The control's icons as drawings on a field of 16 by 16 units, which the painter scales. All outlines are on half or
// whole units, so that they are sharp at 16 pixels and multiples of it.
enum class BillIcon : uint8_t { kReceipt, kPurchase, kIssue, kSale, kTransfer, kOther };
enum class Audit : uint8_t { kOpen, kAudited };

// A coloured sheet of paper: a down arrow for goods coming in, up for goods going out, both for a transfer; a band on
// top for a purchase or sale, where money is due; a stamp with a tick for an audited bill.
void DrawBill(QPainter& painter, BillIcon kind, Audit audit);

enum class SubjectIcon : uint8_t { kProduct, kDepot, kSupplier, kCustomer, kProject };
void DrawSubject(QPainter& painter, SubjectIcon subject);

// A bound book with the journal's subject in front of it, except for the stock journal.
void DrawStockBook(QPainter& painter);
void DrawJournal(QPainter& painter, SubjectIcon subject);

// A dot in the upper right, on a field of 6 by 6 units.
void DrawMark(QPainter& painter);

}  // namespace stockbook::qt
