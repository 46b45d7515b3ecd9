// SPDX-License-Identifier: MIT
#pragma once

// The keys of the grid's columns, which are also the aliases of the journal statement's fields. Cells are found by key,
// never by position; docs/glossary.md says what each holds. No other file spells a key, except inside SQL texts.
namespace stockbook::base::keys {

// In the order of the default layout.
inline constexpr const char* kSeqNo = "SeqNo";
inline constexpr const char* kPeriod = "Period";
inline constexpr const char* kBillDate = "BillDate";
inline constexpr const char* kBillNo = "BillNo";
inline constexpr const char* kBillKind = "BillKind";
inline constexpr const char* kExplain = "Explain";
inline constexpr const char* kProductName = "ProductName";
inline constexpr const char* kProductNo = "ProductNo";
inline constexpr const char* kModel = "Model";
inline constexpr const char* kStandard = "Standard";
inline constexpr const char* kMeasure = "Measure";
inline constexpr const char* kMeasure2 = "Measure2";
inline constexpr const char* kPrice = "Price";
inline constexpr const char* kQuantity = "Quantity";
inline constexpr const char* kQuantity2 = "Quantity2";
inline constexpr const char* kAccount = "Account";
inline constexpr const char* kRevQty = "RevQty";
inline constexpr const char* kRevQty2 = "RevQty2";
inline constexpr const char* kRevAcc = "RevAcc";
inline constexpr const char* kIssQty = "IssQty";
inline constexpr const char* kIssQty2 = "IssQty2";
inline constexpr const char* kIssAcc = "IssAcc";
inline constexpr const char* kStoPrice = "StoPrice";
inline constexpr const char* kStoQty = "StoQty";
inline constexpr const char* kStoQty2 = "StoQty2";
inline constexpr const char* kStoAcc = "StoAcc";
inline constexpr const char* kRatio = "Ratio";
inline constexpr const char* kTax = "Tax";
inline constexpr const char* kTaxPrice = "TaxPrice";
inline constexpr const char* kTaxAccount = "TaxAccount";
inline constexpr const char* kField0 = "Field0";
inline constexpr const char* kField1 = "Field1";
inline constexpr const char* kField2 = "Field2";
inline constexpr const char* kField3 = "Field3";
inline constexpr const char* kField4 = "Field4";
inline constexpr const char* kField5 = "Field5";
inline constexpr const char* kField6 = "Field6";
inline constexpr const char* kDepot = "Depot";
inline constexpr const char* kEnterprise = "Enterprise";
inline constexpr const char* kProject = "Project";
inline constexpr const char* kProjNo = "ProjNo";
inline constexpr const char* kInputor = "Inputor";
inline constexpr const char* kInputDate = "InputDate";
inline constexpr const char* kAuditor = "Auditor";
inline constexpr const char* kAuditDate = "AuditDate";
inline constexpr const char* kDQty = "DQty";
inline constexpr const char* kDStoQty = "DStoQty";
inline constexpr const char* kBillID = "BillID";
inline constexpr const char* kRecID = "RecID";
inline constexpr const char* kDpID = "dpID";
inline constexpr const char* kKsID = "ksID";
inline constexpr const char* kPjID = "pjID";
inline constexpr const char* kOtherID = "OtherID";
inline constexpr const char* kPdID = "pdID";
inline constexpr const char* kFlag = "Flag";
inline constexpr const char* kBillName = "BillName";

// Keys that no layout has: a host may add the columns, and fields of rows read them then.
inline constexpr const char* kTaxRate = "TaxRate";
inline constexpr const char* kAccPeriod = "AccPeriod";
inline constexpr const char* kDeadline = "Deadline";
inline constexpr const char* kProductDate = "ProductDate";
inline constexpr const char* kSerialNo = "SerialNo";
inline constexpr const char* kQty2 = "Qty2";

// The columns of the second unit, which are there only where it is allowed.
inline constexpr const char* kSecondUnit[] = {kQuantity2, kRevQty2, kIssQty2, kStoQty2};
// The columns of the tax, which are there only where invoices are allowed.
inline constexpr const char* kTaxes[] = {kRatio, kTax, kTaxPrice, kTaxAccount};
// What the stock columns show after every line.
inline constexpr const char* kRunning[] = {kStoPrice, kStoQty, kStoQty2, kStoAcc};
// The amounts that AccRestrict hides.
inline constexpr const char* kRestricted[] = {kPrice, kAccount, kRevAcc, kIssAcc, kStoPrice, kStoAcc};
// The parts that a product's name is composed of, as the command "ColChanged" searches them.
inline constexpr const char* kNamePartsText = "Model|Standard|Measure";
// The columns of numbers, as the command "SetColFont" lists them.
inline constexpr const char* kNumericText =
    "|Price|Quantity|Quantity2|Account|RevQty|RevQty2|RevAcc|IssQty|IssQty2|IssAcc|StoPrice|StoQty|StoQty2|StoAcc|"
    "Ratio|Tax|TaxPrice|TaxAccount|";

}  // namespace stockbook::base::keys
