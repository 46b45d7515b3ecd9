// SPDX-License-Identifier: MIT
#pragma once

#include <QPainter>
#include <cstdint>

namespace stockbook::qt {

// The control's icons as drawings on a field of 16 by 16 units; the painter brings them to size. Every outline stands
// on half or whole units, so that they are sharp at 16 pixels and at its multiples.
enum class BillIcon : uint8_t { kReceipt, kPurchase, kIssue, kSale, kTransfer, kOther };
enum class Audit : uint8_t { kOpen, kAudited };

// A coloured sheet: an arrow down brings goods in, up takes them out, both ways moves them; a band on top says that
// money is due (purchase, sale); a tick in a stamp that it was audited.
void DrawBill(QPainter& painter, BillIcon kind, Audit audit);

enum class SubjectIcon : uint8_t { kProduct, kDepot, kSupplier, kCustomer, kProject };
void DrawSubject(QPainter& painter, SubjectIcon subject);

// A bound book; in front of it the subject, but for the stock journal.
void DrawStockBook(QPainter& painter);
void DrawJournal(QPainter& painter, SubjectIcon subject);

// A corner that is turned down, on a field of 6 by 6 units.
void DrawMark(QPainter& painter);

}  // namespace stockbook::qt
