// SPDX-License-Identifier: MIT
#include "stockbook/qt/journal_properties.h"

#include "qt/sheet/text.h"
#include "qt/widget_parts.h"
#include "stockbook/base/journal_type.h"
#include "stockbook/control/stockbook.h"

namespace stockbook::qt {

static_assert(static_cast<int>(JournalProperties::MaterialJournal) == base::MaterialJournal);
static_assert(static_cast<int>(JournalProperties::SupplierJournal) == base::SupplierJournal);
static_assert(static_cast<int>(JournalProperties::CustomerJournal) == base::CustomerJournal);
static_assert(static_cast<int>(JournalProperties::ProjectJournal) == base::ProjectJournal);

JournalProperties::JournalProperties(QWidget* parent) : JournalEvents(parent) {}

JournalProperties::~JournalProperties() = default;

control::Stockbook& JournalProperties::control() { return parts_->control(); }

const control::Stockbook& JournalProperties::control() const { return parts_->control(); }

void JournalProperties::SetJournalType(tqJournalTypeContants type) {
  parts_->Attempt([&] {
    parts_->layouts().BeforeOtherType();
    control().SetJournalType(static_cast<base::tqJournalTypeContants>(type));
  });
}
JournalProperties::tqJournalTypeContants JournalProperties::JournalType() const {
  return static_cast<tqJournalTypeContants>(control().JournalType());
}
QString JournalProperties::FmtName() const { return ToQString(control().FmtName()); }
void JournalProperties::SetAllowQty2(bool allow) {
  parts_->Attempt([&] { parts_->layouts().ChangeRight([&] { control().SetAllowQty2(allow); }); });
}
bool JournalProperties::AllowQty2() const { return control().AllowQty2(); }
void JournalProperties::SetAllowInv(bool allow) {
  parts_->Attempt([&] { parts_->layouts().ChangeRight([&] { control().SetAllowInv(allow); }); });
}
bool JournalProperties::AllowInv() const { return control().AllowInv(); }
void JournalProperties::SetdpID(int id) {
  parts_->Attempt([&] { control().SetdpID(id); });
}
int JournalProperties::dpID() const { return control().dpID(); }
void JournalProperties::SetdpCode(const QString& text) {
  parts_->Attempt([&] { control().SetdpCode(FromQString(text)); });
}
QString JournalProperties::dpCode() const { return ToQString(control().dpCode()); }
QString JournalProperties::AccPeriod() const { return ToQString(control().AccPeriod()); }
QString JournalProperties::DepotName() const { return ToQString(control().DepotName()); }
void JournalProperties::SetKeyID(int id) {
  parts_->Attempt([&] { control().SetKeyID(id); });
}
int JournalProperties::KeyID() const { return control().KeyID(); }
QString JournalProperties::KeyName() const { return ToQString(control().KeyName()); }
QString JournalProperties::ProductNo() const { return ToQString(control().ProductNo()); }
QString JournalProperties::Model() const { return ToQString(control().Model()); }
QString JournalProperties::Standard() const { return ToQString(control().Standard()); }
QString JournalProperties::Measure() const { return ToQString(control().Measure()); }
void JournalProperties::SetMaterielTitle(const QString& text) {
  parts_->Attempt([&] { control().SetMaterielTitle(FromQString(text)); });
}
QString JournalProperties::MaterielTitle() const { return ToQString(control().MaterielTitle()); }
void JournalProperties::SetSupplierTitle(const QString& text) {
  parts_->Attempt([&] { control().SetSupplierTitle(FromQString(text)); });
}
QString JournalProperties::SupplierTitle() const { return ToQString(control().SupplierTitle()); }
void JournalProperties::SetCustomerTitle(const QString& text) {
  parts_->Attempt([&] { control().SetCustomerTitle(FromQString(text)); });
}
QString JournalProperties::CustomerTitle() const { return ToQString(control().CustomerTitle()); }
void JournalProperties::SetProjectTitle(const QString& text) {
  parts_->Attempt([&] { control().SetProjectTitle(FromQString(text)); });
}
QString JournalProperties::ProjectTitle() const { return ToQString(control().ProjectTitle()); }
void JournalProperties::SetField00(const QString& text) {
  parts_->Attempt([&] { control().SetField00(FromQString(text)); });
}
QString JournalProperties::Field00() const { return ToQString(control().Field00()); }
void JournalProperties::SetField01(const QString& text) {
  parts_->Attempt([&] { control().SetField01(FromQString(text)); });
}
QString JournalProperties::Field01() const { return ToQString(control().Field01()); }
void JournalProperties::SetField02(const QString& text) {
  parts_->Attempt([&] { control().SetField02(FromQString(text)); });
}
QString JournalProperties::Field02() const { return ToQString(control().Field02()); }
void JournalProperties::SetField03(const QString& text) {
  parts_->Attempt([&] { control().SetField03(FromQString(text)); });
}
QString JournalProperties::Field03() const { return ToQString(control().Field03()); }
void JournalProperties::SetField04(const QString& text) {
  parts_->Attempt([&] { control().SetField04(FromQString(text)); });
}
QString JournalProperties::Field04() const { return ToQString(control().Field04()); }
void JournalProperties::SetField05(const QString& text) {
  parts_->Attempt([&] { control().SetField05(FromQString(text)); });
}
QString JournalProperties::Field05() const { return ToQString(control().Field05()); }
void JournalProperties::SetField06(const QString& text) {
  parts_->Attempt([&] { control().SetField06(FromQString(text)); });
}
QString JournalProperties::Field06() const { return ToQString(control().Field06()); }
void JournalProperties::SetField10(const QString& text) {
  parts_->Attempt([&] { control().SetField10(FromQString(text)); });
}
QString JournalProperties::Field10() const { return ToQString(control().Field10()); }
void JournalProperties::SetField11(const QString& text) {
  parts_->Attempt([&] { control().SetField11(FromQString(text)); });
}
QString JournalProperties::Field11() const { return ToQString(control().Field11()); }
void JournalProperties::SetField12(const QString& text) {
  parts_->Attempt([&] { control().SetField12(FromQString(text)); });
}
QString JournalProperties::Field12() const { return ToQString(control().Field12()); }
void JournalProperties::SetField13(const QString& text) {
  parts_->Attempt([&] { control().SetField13(FromQString(text)); });
}
QString JournalProperties::Field13() const { return ToQString(control().Field13()); }
void JournalProperties::SetField14(const QString& text) {
  parts_->Attempt([&] { control().SetField14(FromQString(text)); });
}
QString JournalProperties::Field14() const { return ToQString(control().Field14()); }
void JournalProperties::SetField15(const QString& text) {
  parts_->Attempt([&] { control().SetField15(FromQString(text)); });
}
QString JournalProperties::Field15() const { return ToQString(control().Field15()); }
void JournalProperties::SetField16(const QString& text) {
  parts_->Attempt([&] { control().SetField16(FromQString(text)); });
}
QString JournalProperties::Field16() const { return ToQString(control().Field16()); }
void JournalProperties::SetCaption(const QString& text) {
  parts_->Attempt([&] { control().SetCaption(FromQString(text)); });
}
QString JournalProperties::Caption() const { return ToQString(control().Caption()); }
void JournalProperties::SetFieldsFilter(const QString& text) {
  parts_->Attempt([&] { control().SetFieldsFilter(FromQString(text)); });
}
QString JournalProperties::FieldsFilter() const { return ToQString(control().FieldsFilter()); }
QString JournalProperties::ColsFilter() const { return ToQString(control().ColsFilter()); }
void JournalProperties::SetAccRestrict(const QString& text) {
  parts_->Attempt([&] { control().SetAccRestrict(FromQString(text)); });
}
QString JournalProperties::AccRestrict() const { return ToQString(control().AccRestrict()); }
void JournalProperties::SetPriceFormat(const QString& text) {
  parts_->Attempt([&] { control().SetPriceFormat(FromQString(text)); });
}
QString JournalProperties::PriceFormat() const { return ToQString(control().PriceFormat()); }
void JournalProperties::SetQuantityFormat(const QString& text) {
  parts_->Attempt([&] { control().SetQuantityFormat(FromQString(text)); });
}
QString JournalProperties::QuantityFormat() const { return ToQString(control().QuantityFormat()); }
void JournalProperties::SetAccountFormat(const QString& text) {
  parts_->Attempt([&] { control().SetAccountFormat(FromQString(text)); });
}
QString JournalProperties::AccountFormat() const { return ToQString(control().AccountFormat()); }

int JournalProperties::BillID(int Row) const { return control().BillID(Row); }
QString JournalProperties::BillName(int Row) const { return ToQString(control().BillName(Row)); }
int JournalProperties::Flag(int Row) const { return control().Flag(Row); }
QString JournalProperties::FlagName() const { return ToQString(control().FlagName()); }
void JournalProperties::SetRow(int row) {
  parts_->Attempt([&] { control().SetRow(row); });
}
int JournalProperties::Row() const { return control().Row(); }
int JournalProperties::Rows() const { return control().Rows(); }
QString JournalProperties::OutlineColKey() const { return ToQString(control().OutlineColKey()); }
void JournalProperties::SetRowHeight(float twips) {
  parts_->Attempt([&] { control().SetRowHeight(twips); });
}
float JournalProperties::RowHeight() const { return control().RowHeight(); }
void JournalProperties::SetRowHeightTitle(float twips) {
  parts_->Attempt([&] { control().SetRowHeightTitle(twips); });
}
float JournalProperties::RowHeightTitle() const { return control().RowHeightTitle(); }
void JournalProperties::SetRowHeightSum(float twips) {
  parts_->Attempt([&] { control().SetRowHeightSum(twips); });
}
float JournalProperties::RowHeightSum() const { return control().RowHeightSum(); }

}  // namespace stockbook::qt
