// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <cstdint>
#include <memory>

#include "stockbook/base/api.h"
#include "stockbook/qt/journal_events.h"

namespace stockbook::control {
class Stockbook;
}

namespace stockbook::qt {

class WidgetParts;

// The control's journal, captions, filters and rows as properties of the toolkit, with the names and in the order of
// its interface. 16-bit numbers are int here. No setter throws, because exceptions must not pass through the toolkit:
// if the control rejects a value (a dpID beyond 16 bits, an AccRestrict that is not a truth value, a height below 0),
// the old value stays and Notify reports the error. Call control() to get the exception itself.
class STOCKBOOK_API JournalProperties : public JournalEvents {
  Q_OBJECT
  Q_PROPERTY(tqJournalTypeContants JournalType READ JournalType WRITE SetJournalType NOTIFY JournalChanged)
  Q_PROPERTY(QString FmtName READ FmtName NOTIFY JournalChanged DESIGNABLE false STORED false)
  Q_PROPERTY(bool AllowQty2 READ AllowQty2 WRITE SetAllowQty2 NOTIFY JournalChanged)
  Q_PROPERTY(bool AllowInv READ AllowInv WRITE SetAllowInv NOTIFY JournalChanged)
  Q_PROPERTY(int dpID READ dpID WRITE SetdpID NOTIFY JournalChanged)
  Q_PROPERTY(QString dpCode READ dpCode WRITE SetdpCode NOTIFY JournalChanged)
  Q_PROPERTY(QString AccPeriod READ AccPeriod NOTIFY JournalChanged DESIGNABLE false STORED false)
  Q_PROPERTY(QString DepotName READ DepotName NOTIFY JournalChanged DESIGNABLE false STORED false)
  Q_PROPERTY(int KeyID READ KeyID WRITE SetKeyID NOTIFY JournalChanged DESIGNABLE false)
  Q_PROPERTY(QString KeyName READ KeyName NOTIFY JournalChanged DESIGNABLE false STORED false)
  Q_PROPERTY(QString ProductNo READ ProductNo NOTIFY JournalChanged DESIGNABLE false STORED false)
  Q_PROPERTY(QString Model READ Model NOTIFY JournalChanged DESIGNABLE false STORED false)
  Q_PROPERTY(QString Standard READ Standard NOTIFY JournalChanged DESIGNABLE false STORED false)
  Q_PROPERTY(QString Measure READ Measure NOTIFY JournalChanged DESIGNABLE false STORED false)
  Q_PROPERTY(QString MaterielTitle READ MaterielTitle WRITE SetMaterielTitle NOTIFY JournalChanged)
  Q_PROPERTY(QString SupplierTitle READ SupplierTitle WRITE SetSupplierTitle NOTIFY JournalChanged)
  Q_PROPERTY(QString CustomerTitle READ CustomerTitle WRITE SetCustomerTitle NOTIFY JournalChanged)
  Q_PROPERTY(QString ProjectTitle READ ProjectTitle WRITE SetProjectTitle NOTIFY JournalChanged)
  Q_PROPERTY(QString Field00 READ Field00 WRITE SetField00 NOTIFY JournalChanged)
  Q_PROPERTY(QString Field01 READ Field01 WRITE SetField01 NOTIFY JournalChanged)
  Q_PROPERTY(QString Field02 READ Field02 WRITE SetField02 NOTIFY JournalChanged)
  Q_PROPERTY(QString Field03 READ Field03 WRITE SetField03 NOTIFY JournalChanged)
  Q_PROPERTY(QString Field04 READ Field04 WRITE SetField04 NOTIFY JournalChanged)
  Q_PROPERTY(QString Field05 READ Field05 WRITE SetField05 NOTIFY JournalChanged)
  Q_PROPERTY(QString Field06 READ Field06 WRITE SetField06 NOTIFY JournalChanged)
  Q_PROPERTY(QString Field10 READ Field10 WRITE SetField10 NOTIFY JournalChanged)
  Q_PROPERTY(QString Field11 READ Field11 WRITE SetField11 NOTIFY JournalChanged)
  Q_PROPERTY(QString Field12 READ Field12 WRITE SetField12 NOTIFY JournalChanged)
  Q_PROPERTY(QString Field13 READ Field13 WRITE SetField13 NOTIFY JournalChanged)
  Q_PROPERTY(QString Field14 READ Field14 WRITE SetField14 NOTIFY JournalChanged)
  Q_PROPERTY(QString Field15 READ Field15 WRITE SetField15 NOTIFY JournalChanged)
  Q_PROPERTY(QString Field16 READ Field16 WRITE SetField16 NOTIFY JournalChanged)
  Q_PROPERTY(QString Caption READ Caption WRITE SetCaption NOTIFY JournalChanged)
  Q_PROPERTY(QString FieldsFilter READ FieldsFilter WRITE SetFieldsFilter NOTIFY JournalChanged)
  Q_PROPERTY(QString ColsFilter READ ColsFilter NOTIFY JournalChanged DESIGNABLE false STORED false)
  Q_PROPERTY(QString AccRestrict READ AccRestrict WRITE SetAccRestrict NOTIFY JournalChanged)
  Q_PROPERTY(QString PriceFormat READ PriceFormat WRITE SetPriceFormat NOTIFY JournalChanged)
  Q_PROPERTY(QString QuantityFormat READ QuantityFormat WRITE SetQuantityFormat NOTIFY JournalChanged)
  Q_PROPERTY(QString AccountFormat READ AccountFormat WRITE SetAccountFormat NOTIFY JournalChanged)
  Q_PROPERTY(QString FlagName READ FlagName NOTIFY RowChanged DESIGNABLE false STORED false)
  Q_PROPERTY(int Row READ Row WRITE SetRow NOTIFY RowChanged DESIGNABLE false STORED false)
  Q_PROPERTY(int Rows READ Rows NOTIFY RowChanged DESIGNABLE false STORED false)
  Q_PROPERTY(QString OutlineColKey READ OutlineColKey NOTIFY JournalChanged DESIGNABLE false STORED false)
  // These are heights in twips. Each load sizes the rows by the font, so that a form has no say: programs set them when
  // one has ended. Of single precision for code, and of double for QUiLoader, which knows no other.
  Q_PROPERTY(double RowHeight READ RowHeight WRITE WriteRowHeight NOTIFY JournalChanged DESIGNABLE false)
  Q_PROPERTY(double RowHeightTitle READ RowHeightTitle WRITE WriteRowHeightTitle NOTIFY JournalChanged DESIGNABLE false)
  Q_PROPERTY(double RowHeightSum READ RowHeightSum WRITE WriteRowHeightSum NOTIFY JournalChanged DESIGNABLE false)

 public:
  // Whose journal it is: of a product, a supplier, a customer or a project. The interface spells it like this.
  enum tqJournalTypeContants : int32_t {
    MaterialJournal = 0,
    SupplierJournal = 1,
    CustomerJournal = 2,
    ProjectJournal = 3,
  };
  Q_ENUM(tqJournalTypeContants)

  // The control itself, without the toolkit (control/stockbook.h). It throws where the widget raises Notify, and goes
  // with the widget.
  control::Stockbook& control();
  const control::Stockbook& control() const;

  // MaterialJournal unless set. Setting it lays the columns out anew and raises AfterFormatted; the rows stay those of
  // the last load.
  void SetJournalType(tqJournalTypeContants type);
  tqJournalTypeContants JournalType() const;
  // "Stockbook", "SupplierJournal", "CustomerJournal" or "ProjectJournal", by JournalType; empty for other numbers.
  QString FmtName() const;
  // Both are false unless set. False hides the columns at once; true shows them from the next layout or load on.
  void SetAllowQty2(bool allow);
  bool AllowQty2() const;
  void SetAllowInv(bool allow);
  bool AllowInv() const;
  // 0 unless set; below 1 means all. Beyond -32768..32767 the old value stays and Notify tells of it. A load uses it.
  void SetdpID(int id);
  int dpID() const;
  // Empty unless set. A load that finds it empty stores the class of the supplier or customer that dpID is, if KeyID is
  // above 0.
  void SetdpCode(const QString& text);
  QString dpCode() const;
  // The newest accounting period; empty when there is none. Each call asks the database.
  QString AccPeriod() const;
  // What the second key is called; 全部仓库 or 全部项目 for all of them, empty where it is not found. Each call asks
  // the database.
  QString DepotName() const;
  // The product; 0 unless set. Setting it looks up the texts of the header in the database, in a supplier's or
  // customer's journal among these.
  void SetKeyID(int id);
  int KeyID() const;
  // Name of what KeyID is; empty where it is not found. In a supplier's or customer's journal the four texts after it
  // are empty.
  QString KeyName() const;
  // Number of the product.
  QString ProductNo() const;
  // 型号 of the product.
  QString Model() const;
  // 规格 of the product.
  QString Standard() const;
  // Unit of the product.
  QString Measure() const;
  // These count from the next load on in the band above the grid, and in captions of columns from the next layout on.
  void SetMaterielTitle(const QString& text);
  QString MaterielTitle() const;
  void SetSupplierTitle(const QString& text);
  QString SupplierTitle() const;
  void SetCustomerTitle(const QString& text);
  QString CustomerTitle() const;
  void SetProjectTitle(const QString& text);
  QString ProjectTitle() const;
  // These are captions from the next layout on. A supplier's journal shows those of receipts (Field00 to Field06), a
  // customer's those of issues (Field10 to Field16), the others both where they differ. The columns are hidden until
  // the user or the host shows them. 经手人, 交接人, 包装, 货位, 期限, 序列号 and 生产日期 unless set.
  void SetField00(const QString& text);
  QString Field00() const;
  void SetField01(const QString& text);
  QString Field01() const;
  void SetField02(const QString& text);
  QString Field02() const;
  void SetField03(const QString& text);
  QString Field03() const;
  void SetField04(const QString& text);
  QString Field04() const;
  void SetField05(const QString& text);
  QString Field05() const;
  void SetField06(const QString& text);
  QString Field06() const;
  void SetField10(const QString& text);
  QString Field10() const;
  void SetField11(const QString& text);
  QString Field11() const;
  void SetField12(const QString& text);
  QString Field12() const;
  void SetField13(const QString& text);
  QString Field13() const;
  void SetField14(const QString& text);
  QString Field14() const;
  void SetField15(const QString& text);
  QString Field15() const;
  void SetField16(const QString& text);
  QString Field16() const;
  // Trimmed. Each load writes one of its own.
  void SetCaption(const QString& text);
  QString Caption() const;
  // Keys of columns (base/column_keys.h), each followed by a bar; others are ignored. Counts from the next layout on.
  // It takes its columns out of the menu of columns and hides ProductName, Price, Quantity, Quantity2 and Account; the
  // menu alone leaves the other ones out.
  void SetFieldsFilter(const QString& text);
  QString FieldsFilter() const;
  // Keys of the columns that the menu of columns leaves out, with a bar before and after each; those of FieldsFilter
  // among them.
  QString ColsFilter() const;
  // Empty unless set, which means false, as 0 does. Counts from the next load on: "-" in Price, Account, RevAcc,
  // IssAcc, StoPrice and StoAcc of every line, but not in opening and total rows and in the columns of tax. Other texts
  // keep the old value, and Notify tells of them.
  void SetAccRestrict(const QString& text);
  QString AccRestrict() const;
  // These count from the next layout on; #,##0.00 unless set.
  void SetPriceFormat(const QString& text);
  QString PriceFormat() const;
  void SetQuantityFormat(const QString& text);
  QString QuantityFormat() const;
  void SetAccountFormat(const QString& text);
  QString AccountFormat() const;

  // Key of the bill of a row; 0 where it has none. A row below 0 is the current one; one that is not there has no bill.
  Q_INVOKABLE int BillID(int Row = -1) const;
  // Type of the bill as a text, 入库单 say; empty where the row has none.
  Q_INVOKABLE QString BillName(int Row = -1) const;
  // 0 for a receipt, and where the row has no bill; another number for an issue.
  Q_INVOKABLE int Flag(int Row = -1) const;
  // 入库 or 出库: whether the bill of the current row is a receipt or an issue; 入库 where it has no bill.
  QString FlagName() const;
  // The current row, -1 where there is none. Setting it brings the row into view, out of folded nodes, too; a fixed row
  // or one that is not there changes nothing.
  void SetRow(int row);
  int Row() const;
  // How many rows the grid has, the caption row included.
  int Rows() const;
  // Key of the column with the outline: BillNo after every layout and load.
  QString OutlineColKey() const;
  // Of all lines, in twips; before the first load it reads 250, whatever the font has made of them. Below 0 is refused,
  // and Notify tells of it.
  void SetRowHeight(float twips);
  float RowHeight() const;
  // Of the row of captions, in twips; before the first load it reads 400. Below 0 is refused as for RowHeight.
  void SetRowHeightTitle(float twips);
  float RowHeightTitle() const;
  // Of nodes and totals, in twips; each layout makes it twice the height of a line. Below 0 is refused as for
  // RowHeight.
  void SetRowHeightSum(float twips);
  float RowHeightSum() const;

 Q_SIGNALS:
  // One of these properties is another than before, whoever changed it: a setter, a load, which tells it once at its
  // end, or a user who drags a row's height. What the database alone changed (AccPeriod, DepotName) is not told.
  void JournalChanged();
  // Row, Rows or FlagName is another than before, by the user, a setter or a load. A host that changes the rows of the
  // grid itself knows it.
  void RowChanged();

 protected:
  // For StockbookWidget alone, which makes the parts.
  explicit JournalProperties(QWidget* parent);
  ~JournalProperties() override;

  // Shared with the calls in progress, which may outlive the widget.
  std::shared_ptr<WidgetParts> parts_;

 private:
  void WriteRowHeight(double twips) { SetRowHeight(static_cast<float>(twips)); }
  void WriteRowHeightTitle(double twips) { SetRowHeightTitle(static_cast<float>(twips)); }
  void WriteRowHeightSum(double twips) { SetRowHeightSum(static_cast<float>(twips)); }
};

}  // namespace stockbook::qt
