// SPDX-License-Identifier: MIT
// What the host sets and reads back, and nothing else happens.
#include <utility>

#include "control/control_state.h"

namespace stockbook::control {

void Stockbook::AddListener(interaction::EventListener* listener) { state_->events.AddListener(listener); }
void Stockbook::RemoveListener(interaction::EventListener* listener) { state_->events.RemoveListener(listener); }
std::shared_ptr<platform::Connection> Stockbook::Conn() const { return state_->connection; }
void Stockbook::SetConn(std::shared_ptr<platform::Connection> connection) {
  const State::Watched journal(*state_);
  state_->connection = std::move(connection);
}
tqJournalTypeContants Stockbook::JournalType() const { return state_->layout.journal_type; }
bool Stockbook::AllowQty2() const { return state_->layout.allow_qty2; }
bool Stockbook::AllowInv() const { return state_->layout.allow_inv; }
int32_t Stockbook::dpID() const { return state_->keys.dpID; }
void Stockbook::SetdpCode(std::string_view code) {
  const State::Watched journal(*state_);
  state_->keys.dpCode = code;
}
const std::string& Stockbook::dpCode() const { return state_->keys.dpCode; }
int32_t Stockbook::KeyID() const { return state_->keys.KeyID; }
const std::string& Stockbook::KeyName() const { return state_->subject.key_name; }
const std::string& Stockbook::ProductNo() const { return state_->subject.product_no; }
const std::string& Stockbook::Model() const { return state_->subject.model; }
const std::string& Stockbook::Standard() const { return state_->subject.standard; }
const std::string& Stockbook::Measure() const { return state_->subject.measure; }
void Stockbook::SetMaterielTitle(std::string_view title) {
  const State::Watched journal(*state_);
  state_->layout.titles[0] = title;
}
const std::string& Stockbook::MaterielTitle() const { return state_->layout.titles[0]; }
void Stockbook::SetSupplierTitle(std::string_view title) {
  const State::Watched journal(*state_);
  state_->layout.titles[1] = title;
}
const std::string& Stockbook::SupplierTitle() const { return state_->layout.titles[1]; }
void Stockbook::SetCustomerTitle(std::string_view title) {
  const State::Watched journal(*state_);
  state_->layout.titles[2] = title;
}
const std::string& Stockbook::CustomerTitle() const { return state_->layout.titles[2]; }
void Stockbook::SetProjectTitle(std::string_view title) {
  const State::Watched journal(*state_);
  state_->layout.titles[3] = title;
}
const std::string& Stockbook::ProjectTitle() const { return state_->layout.titles[3]; }
void Stockbook::SetField00(std::string_view caption) {
  const State::Watched journal(*state_);
  state_->layout.field_captions[0][0] = caption;
}
const std::string& Stockbook::Field00() const { return state_->layout.field_captions[0][0]; }
void Stockbook::SetField01(std::string_view caption) {
  const State::Watched journal(*state_);
  state_->layout.field_captions[1][0] = caption;
}
const std::string& Stockbook::Field01() const { return state_->layout.field_captions[1][0]; }
void Stockbook::SetField02(std::string_view caption) {
  const State::Watched journal(*state_);
  state_->layout.field_captions[2][0] = caption;
}
const std::string& Stockbook::Field02() const { return state_->layout.field_captions[2][0]; }
void Stockbook::SetField03(std::string_view caption) {
  const State::Watched journal(*state_);
  state_->layout.field_captions[3][0] = caption;
}
const std::string& Stockbook::Field03() const { return state_->layout.field_captions[3][0]; }
void Stockbook::SetField04(std::string_view caption) {
  const State::Watched journal(*state_);
  state_->layout.field_captions[4][0] = caption;
}
const std::string& Stockbook::Field04() const { return state_->layout.field_captions[4][0]; }
void Stockbook::SetField05(std::string_view caption) {
  const State::Watched journal(*state_);
  state_->layout.field_captions[5][0] = caption;
}
const std::string& Stockbook::Field05() const { return state_->layout.field_captions[5][0]; }
void Stockbook::SetField06(std::string_view caption) {
  const State::Watched journal(*state_);
  state_->layout.field_captions[6][0] = caption;
}
const std::string& Stockbook::Field06() const { return state_->layout.field_captions[6][0]; }
void Stockbook::SetField10(std::string_view caption) {
  const State::Watched journal(*state_);
  state_->layout.field_captions[0][1] = caption;
}
const std::string& Stockbook::Field10() const { return state_->layout.field_captions[0][1]; }
void Stockbook::SetField11(std::string_view caption) {
  const State::Watched journal(*state_);
  state_->layout.field_captions[1][1] = caption;
}
const std::string& Stockbook::Field11() const { return state_->layout.field_captions[1][1]; }
void Stockbook::SetField12(std::string_view caption) {
  const State::Watched journal(*state_);
  state_->layout.field_captions[2][1] = caption;
}
const std::string& Stockbook::Field12() const { return state_->layout.field_captions[2][1]; }
void Stockbook::SetField13(std::string_view caption) {
  const State::Watched journal(*state_);
  state_->layout.field_captions[3][1] = caption;
}
const std::string& Stockbook::Field13() const { return state_->layout.field_captions[3][1]; }
void Stockbook::SetField14(std::string_view caption) {
  const State::Watched journal(*state_);
  state_->layout.field_captions[4][1] = caption;
}
const std::string& Stockbook::Field14() const { return state_->layout.field_captions[4][1]; }
void Stockbook::SetField15(std::string_view caption) {
  const State::Watched journal(*state_);
  state_->layout.field_captions[5][1] = caption;
}
const std::string& Stockbook::Field15() const { return state_->layout.field_captions[5][1]; }
void Stockbook::SetField16(std::string_view caption) {
  const State::Watched journal(*state_);
  state_->layout.field_captions[6][1] = caption;
}
const std::string& Stockbook::Field16() const { return state_->layout.field_captions[6][1]; }
void Stockbook::SetFieldsFilter(std::string_view filter) {
  const State::Watched journal(*state_);
  state_->layout.fields_filter = filter;
}
const std::string& Stockbook::FieldsFilter() const { return state_->layout.fields_filter; }
const std::string& Stockbook::ColsFilter() const { return state_->hidden_keys.Text(); }
const std::string& Stockbook::AccRestrict() const { return state_->acc_restrict_text; }
void Stockbook::SetPriceFormat(std::string_view format) {
  const State::Watched journal(*state_);
  state_->layout.price_format = format;
}
const std::string& Stockbook::PriceFormat() const { return state_->layout.price_format; }
void Stockbook::SetQuantityFormat(std::string_view format) {
  const State::Watched journal(*state_);
  state_->layout.quantity_format = format;
}
const std::string& Stockbook::QuantityFormat() const { return state_->layout.quantity_format; }
void Stockbook::SetAccountFormat(std::string_view format) {
  const State::Watched journal(*state_);
  state_->layout.account_format = format;
}
const std::string& Stockbook::AccountFormat() const { return state_->layout.account_format; }
platform::Grid& Stockbook::Grid() const { return state_->fg; }
int32_t Stockbook::Row() const { return state_->fg.Row(); }
int32_t Stockbook::Rows() const { return state_->fg.Rows(); }
const std::string& Stockbook::OutlineColKey() const { return state_->outline_col_key; }
float Stockbook::RowHeight() const { return state_->row_height; }
float Stockbook::RowHeightTitle() const { return state_->row_height_title; }
float Stockbook::RowHeightSum() const { return state_->row_height_sum; }
bool Stockbook::AllowView() const { return state_->allow_view; }
void Stockbook::SetAllowView(bool allow) {
  const State::Watched journal(*state_);
  state_->allow_view = allow;
}
bool Stockbook::AllowPrint() const { return state_->allow_print; }
void Stockbook::SetAllowPrint(bool allow) {
  const State::Watched journal(*state_);
  state_->allow_print = allow;
}
const Container& Stockbook::C1EDesk() const { return state_->c1e_desk; }
const Container& Stockbook::C1EBody() const { return state_->c1e_body; }
const Container& Stockbook::C1EHeader() const { return state_->c1e_header; }
platform::PictureRef Stockbook::imgMark() const { return state_->img_mark; }
bool Stockbook::IsRaising() const { return state_->events.IsRaising(); }

}  // namespace stockbook::control
