// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "com/window/shapes.h"

namespace stockbook::com {

// The control's icons as shapes on a field of 16 by 16 units. All outlines are on half or whole units, so that they are
// sharp at 16 pixels and multiples of it.
inline constexpr int kIconUnits = 16;
inline constexpr int kMarkUnits = 6;

enum class BillIcon : uint8_t { kReceipt, kPurchase, kIssue, kSale, kTransfer, kOther };
enum class Audit : uint8_t { kOpen, kAudited };

// A coloured sheet of paper: a down arrow for goods coming in, up for goods going out, both for a transfer; a band on
// top for a purchase or sale, where money is due; a stamp with a tick for an audited bill.
std::vector<Shape> BillShapes(BillIcon kind, Audit audit);

enum class SubjectIcon : uint8_t { kProduct, kDepot, kSupplier, kCustomer, kProject };
std::vector<Shape> SubjectShapes(SubjectIcon subject);

// A bound book with the journal's subject in front of it, except for the stock journal.
std::vector<Shape> StockBookShapes();
std::vector<Shape> JournalShapes(SubjectIcon subject);

// A folded corner, on a field of 6 by 6 units.
std::vector<Shape> MarkShapes();

}  // namespace stockbook::com
