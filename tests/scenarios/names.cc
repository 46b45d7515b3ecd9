// SPDX-License-Identifier: MIT
// The control's properties and the fields of its rows by the names that scenarios use.
#include <functional>
#include <stdexcept>
#include <tuple>

#include "scenarios/desk.h"
#include "stockbook/base/money.h"
#include "stockbook/base/value.h"
#include "stockbook/control/row_fields.h"

namespace stockbook::scenarios {
namespace {

using control::Stockbook;

struct Property {
  std::function<std::string(const Stockbook&)> read;
  std::function<void(Stockbook&, const std::string&)> write;
};

std::string TextOf(const std::string& text) { return text; }
std::string TextOf(bool truth) { return truth ? "true" : "false"; }
std::string TextOf(float number) { return base::Value(static_cast<double>(number)).Text(); }
std::string TextOf(int32_t number) { return std::to_string(number); }
std::string TextOf(int16_t number) { return std::to_string(number); }
std::string TextOf(uint32_t colour) {
  char text[12];
  std::snprintf(text, sizeof text, "#%06X", colour);
  return text;
}
std::string TextOf(const platform::PictureRef& picture) { return picture ? testing::NameOf(picture) : "none"; }
template <typename Setting>
requires std::is_enum_v<Setting> std::string TextOf(Setting setting) {
  return std::to_string(static_cast<int>(setting));
}

template <typename Type>
Type FromText(const std::string& text) {
  using Plain = std::decay_t<Type>;
  if constexpr (std::is_same_v<Plain, std::string_view>)
    return text;
  else if constexpr (std::is_same_v<Plain, bool>)
    return text == "true";
  else if constexpr (std::is_same_v<Plain, float>)
    return std::stof(text);
  else if constexpr (std::is_same_v<Plain, uint32_t>)
    return static_cast<uint32_t>(std::stoul(text.substr(text.starts_with("#") ? 1 : 0), nullptr, 16));
  else if constexpr (std::is_same_v<Plain, platform::PictureRef>)
    return text == "none" ? nullptr : testing::MakePicture(text);
  else
    return static_cast<Plain>(std::stoi(text));
}

template <typename Reader>
Property ReadOnly(Reader read) {
  return {[read](const Stockbook& control) { return TextOf((control.*read)()); }, nullptr};
}

template <typename Reader, typename Type>
Property Both(Reader read, void (Stockbook::*write)(Type)) {
  Property property = ReadOnly(read);
  property.write = [write](Stockbook& control, const std::string& text) { (control.*write)(FromText<Type>(text)); };
  return property;
}

#define BOTH(name) \
  { #name, Both(&Stockbook::name, &Stockbook::Set##name) }
#define READ(name) \
  { #name, ReadOnly(&Stockbook::name) }

const std::map<std::string, Property>& Properties() {
  static const std::map<std::string, Property> kProperties = {BOTH(JournalType),
                                                              READ(FmtName),
                                                              BOTH(AllowQty2),
                                                              BOTH(AllowInv),
                                                              BOTH(dpID),
                                                              BOTH(dpCode),
                                                              READ(AccPeriod),
                                                              READ(DepotName),
                                                              BOTH(KeyID),
                                                              READ(KeyName),
                                                              READ(ProductNo),
                                                              READ(Model),
                                                              READ(Standard),
                                                              READ(Measure),
                                                              BOTH(MaterielTitle),
                                                              BOTH(SupplierTitle),
                                                              BOTH(CustomerTitle),
                                                              BOTH(ProjectTitle),
                                                              BOTH(Field00),
                                                              BOTH(Field03),
                                                              BOTH(Field10),
                                                              BOTH(Field13),
                                                              BOTH(Caption),
                                                              BOTH(FieldsFilter),
                                                              READ(ColsFilter),
                                                              BOTH(AccRestrict),
                                                              BOTH(PriceFormat),
                                                              BOTH(QuantityFormat),
                                                              BOTH(AccountFormat),
                                                              READ(FlagName),
                                                              BOTH(Row),
                                                              READ(Rows),
                                                              READ(OutlineColKey),
                                                              BOTH(RowHeight),
                                                              BOTH(RowHeightTitle),
                                                              BOTH(RowHeightSum),
                                                              BOTH(BackColor),
                                                              BOTH(BackColorBkg),
                                                              BOTH(ForeColor),
                                                              BOTH(GridColor),
                                                              BOTH(SheetBorderColor),
                                                              BOTH(GridLines),
                                                              BOTH(Outlinebar),
                                                              BOTH(RowHeightMin),
                                                              BOTH(RowHeightMax),
                                                              BOTH(ScrollBars),
                                                              BOTH(BillPicture),
                                                              BOTH(BillAuditedPicture),
                                                              BOTH(RevPicture),
                                                              BOTH(RevAuditedPicture),
                                                              BOTH(IssPicture),
                                                              BOTH(IssAuditedPicture),
                                                              BOTH(ShiftPicture),
                                                              BOTH(ShiftAuditedPicture),
                                                              BOTH(NodeClosedPicture),
                                                              BOTH(NodeOpenPicture),
                                                              BOTH(BackColorHot),
                                                              BOTH(ForeColorHot),
                                                              BOTH(TitleBackPicture),
                                                              BOTH(MarkBackPicture),
                                                              BOTH(BorderWidth),
                                                              BOTH(ChildSpacing),
                                                              BOTH(BorderColor),
                                                              READ(IsRangeSelected),
                                                              READ(Statistics)};
  return kProperties;
}

#undef BOTH
#undef READ

const Property& PropertyOf(const std::string& name) {
  const auto found = Properties().find(name);
  if (found == Properties().end()) throw std::runtime_error("The control has no property \"" + name + "\" here.");
  return found->second;
}

namespace fields = control::fields;
const auto kFields = std::tuple(
    fields::Price, fields::Quantity, fields::Account, fields::RevQty, fields::RevAcc, fields::IssQty, fields::IssAcc,
    fields::StoPrice, fields::StoQty, fields::StoAcc, fields::TaxRate, fields::Tax, fields::TaxPrice,
    fields::TaxAccount, fields::AccPeriod, fields::BillDate, fields::BillNo, fields::BillKind, fields::Explain,
    fields::Depot, fields::Enterprise, fields::Project, fields::Auditor, fields::AuditDate, fields::RecID, fields::dpID,
    fields::OtherID, fields::pdID, fields::BillID, fields::BillName, fields::Flag);

// Calls `call` with the field of the name.
template <typename Call>
void WithField(const std::string& name, Call call) {
  const bool found =
      std::apply([&](const auto&... field) { return ((name == field.key && (call(field), true)) || ...); }, kFields);
  if (!found) throw std::runtime_error("Rows have no field \"" + name + "\" here.");
}

std::string TextOf(double number) { return base::Value(number).Text(); }
std::string TextOf(base::Money money) { return money.Text(); }
std::string TextOf(base::Date date) { return date.IsZero() ? "zero date" : date.Text(); }

}  // namespace

void SetProperty(Stockbook& control, const std::string& name, const std::string& value) {
  const Property& property = PropertyOf(name);
  if (!property.write) throw std::runtime_error("The property \"" + name + "\" is only read.");
  property.write(control, value);
}

std::string PropertyText(const Stockbook& control, const std::string& name) { return PropertyOf(name).read(control); }

std::string FieldText(const control::RowFields& rows, const std::string& name, int row) {
  std::string text;
  WithField(name, [&](const auto& field) { text = TextOf(rows.Get(field, row)); });
  return text;
}

void WriteField(const control::RowFields& rows, const std::string& name, int row, const std::string& value) {
  WithField(name, [&](const auto& field) {
    if constexpr (requires { rows.Set(field, row, {}); }) {
      using Type = decltype(rows.Get(field, row));
      if constexpr (std::is_same_v<Type, base::Money>)
        rows.Set(field, row, base::Money::Parse(value).value());
      else
        rows.Set(field, row, static_cast<Type>(std::stod(value)));
    } else {
      throw std::runtime_error("The field \"" + name + "\" is only read.");
    }
  });
}

}  // namespace stockbook::scenarios
