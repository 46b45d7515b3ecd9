// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "control/kept_journal.h"
#include "grid/layout_settings.h"
#include "grid/pictures.h"
#include "interaction/events.h"
#include "interaction/grid_handlers.h"
#include "interaction/journal_caption.h"
#include "journal/inventory.h"
#include "journal/subject_keys.h"
#include "journal/subjects.h"
#include "stockbook/base/api.h"
#include "stockbook/base/journal_type.h"
#include "stockbook/base/value.h"
#include "stockbook/control/container.h"
#include "stockbook/control/row_fields.h"
#include "stockbook/platform/clipboard.h"
#include "stockbook/platform/connection.h"
#include "stockbook/platform/control_site.h"
#include "stockbook/platform/grid.h"
#include "stockbook/platform/images.h"
#include "stockbook/platform/menu.h"
#include "stockbook/platform/property_bag.h"
#include "stockbook/platform/text_metrics.h"

namespace stockbook::control {

using base::tqJournalTypeContants;

// What a control is composed of. All of it outlives the control, which owns none of it.
struct Surroundings {
  platform::Grid& fg;   // the journal grid
  platform::Grid& fg1;  // the second grid, kept invisible and empty
  const platform::TextMetrics& text_metrics;
  const platform::Images& images;
  platform::Menu& menu;
  platform::Clipboard& clipboard;
  platform::ControlSite& site;
};

// The stock journal control without a toolkit: its state and its public interface, whose members are declared in the
// interface's order (a property's writer is named Set...). The host sets Conn, JournalType and the keys and calls Load;
// everything runs on the caller's thread. Row arguments below 0 mean the grid's current row. Readers never fail: what
// is missing or refused reads as 0 or "", and what the database could not read for a reason of its own (busy, damaged,
// interrupted) does so too and is reported through Notify. Errors of Load are reported through Notify. A listener may
// call back into the control while it hears an event; whoever owns the control keeps it alive until the event is over.
// What a listener throws is reported through Notify if Load, Find or a user action raised the event; for other members
// it reaches the caller.
class STOCKBOOK_API Stockbook {
 public:
  explicit Stockbook(const Surroundings& surroundings);
  ~Stockbook();
  Stockbook(const Stockbook&) = delete;
  Stockbook& operator=(const Stockbook&) = delete;

  void AddListener(interaction::EventListener* listener) { events_.AddListener(listener); }
  void RemoveListener(interaction::EventListener* listener) { events_.RemoveListener(listener); }

  // Connection, rights and journal selection.
  std::shared_ptr<platform::Connection> Conn() const { return connection_; }
  void SetConn(std::shared_ptr<platform::Connection> connection) { connection_ = std::move(connection); }
  void SetJournalType(tqJournalTypeContants type);
  tqJournalTypeContants JournalType() const { return layout_.journal_type; }
  std::string FmtName() const;
  void SetAllowQty2(bool allow);
  bool AllowQty2() const { return layout_.allow_qty2; }
  void SetAllowInv(bool allow);
  bool AllowInv() const { return layout_.allow_inv; }
  // Stored in 16 bits; a value outside -32768..32767 throws platform::Error and keeps the old one.
  void SetdpID(int32_t id);
  int32_t dpID() const { return keys_.dpID; }
  void SetdpCode(std::string_view code) { keys_.dpCode = code; }
  const std::string& dpCode() const { return keys_.dpCode; }
  // The newest accounting period, read from the database; "" when there is none.
  std::string AccPeriod() const;
  std::string DepotName() const;
  // Also looks up the subject's header texts.
  void SetKeyID(int32_t id);
  int32_t KeyID() const { return keys_.KeyID; }
  const std::string& KeyName() const { return subject_.key_name; }
  const std::string& ProductNo() const { return subject_.product_no; }
  const std::string& Model() const { return subject_.model; }
  const std::string& Standard() const { return subject_.standard; }
  const std::string& Measure() const { return subject_.measure; }

  // Captions and filters.
  void SetMaterielTitle(std::string_view title) { layout_.titles[0] = title; }
  const std::string& MaterielTitle() const { return layout_.titles[0]; }
  void SetSupplierTitle(std::string_view title) { layout_.titles[1] = title; }
  const std::string& SupplierTitle() const { return layout_.titles[1]; }
  void SetCustomerTitle(std::string_view title) { layout_.titles[2] = title; }
  const std::string& CustomerTitle() const { return layout_.titles[2]; }
  void SetProjectTitle(std::string_view title) { layout_.titles[3] = title; }
  const std::string& ProjectTitle() const { return layout_.titles[3]; }
  void SetField00(std::string_view caption) { layout_.field_captions[0][0] = caption; }
  const std::string& Field00() const { return layout_.field_captions[0][0]; }
  void SetField01(std::string_view caption) { layout_.field_captions[1][0] = caption; }
  const std::string& Field01() const { return layout_.field_captions[1][0]; }
  void SetField02(std::string_view caption) { layout_.field_captions[2][0] = caption; }
  const std::string& Field02() const { return layout_.field_captions[2][0]; }
  void SetField03(std::string_view caption) { layout_.field_captions[3][0] = caption; }
  const std::string& Field03() const { return layout_.field_captions[3][0]; }
  void SetField04(std::string_view caption) { layout_.field_captions[4][0] = caption; }
  const std::string& Field04() const { return layout_.field_captions[4][0]; }
  void SetField05(std::string_view caption) { layout_.field_captions[5][0] = caption; }
  const std::string& Field05() const { return layout_.field_captions[5][0]; }
  void SetField06(std::string_view caption) { layout_.field_captions[6][0] = caption; }
  const std::string& Field06() const { return layout_.field_captions[6][0]; }
  void SetField10(std::string_view caption) { layout_.field_captions[0][1] = caption; }
  const std::string& Field10() const { return layout_.field_captions[0][1]; }
  void SetField11(std::string_view caption) { layout_.field_captions[1][1] = caption; }
  const std::string& Field11() const { return layout_.field_captions[1][1]; }
  void SetField12(std::string_view caption) { layout_.field_captions[2][1] = caption; }
  const std::string& Field12() const { return layout_.field_captions[2][1]; }
  void SetField13(std::string_view caption) { layout_.field_captions[3][1] = caption; }
  const std::string& Field13() const { return layout_.field_captions[3][1]; }
  void SetField14(std::string_view caption) { layout_.field_captions[4][1] = caption; }
  const std::string& Field14() const { return layout_.field_captions[4][1]; }
  void SetField15(std::string_view caption) { layout_.field_captions[5][1] = caption; }
  const std::string& Field15() const { return layout_.field_captions[5][1]; }
  void SetField16(std::string_view caption) { layout_.field_captions[6][1] = caption; }
  const std::string& Field16() const { return layout_.field_captions[6][1]; }
  // Shown in the header band trimmed and followed by three blanks; reads back trimmed.
  void SetCaption(std::string_view caption);
  std::string Caption() const;
  void SetFieldsFilter(std::string_view filter) { layout_.fields_filter = filter; }
  const std::string& FieldsFilter() const { return layout_.fields_filter; }
  const std::string& ColsFilter() const { return hidden_keys_.Text(); }
  // "true", "false" or a number; other texts throw platform::Error and change nothing. Restriction shows "-" in six
  // cells of every line: Price, Account, RevAcc, IssAcc, StoPrice and StoAcc. It does not cover the opening row, the
  // total rows and the tax columns (AllowInv): a host that restricts amounts offers no tax columns.
  void SetAccRestrict(std::string_view text);
  const std::string& AccRestrict() const { return acc_restrict_text_; }
  void SetPriceFormat(std::string_view format) { layout_.price_format = format; }
  const std::string& PriceFormat() const { return layout_.price_format; }
  void SetQuantityFormat(std::string_view format) { layout_.quantity_format = format; }
  const std::string& QuantityFormat() const { return layout_.quantity_format; }
  void SetAccountFormat(std::string_view format) { layout_.account_format = format; }
  const std::string& AccountFormat() const { return layout_.account_format; }

  // Rows and grid.
  platform::Grid& Grid() const { return fg_; }
  int32_t BillID(int32_t row = -1) const;
  std::string BillName(int32_t row = -1) const;
  int16_t Flag(int32_t row = -1) const;
  std::string FlagName() const;
  void SetRow(int32_t row);
  int32_t Row() const { return fg_.Row(); }
  int32_t Rows() const { return fg_.Rows(); }
  const std::string& OutlineColKey() const { return outline_col_key_; }
  // Heights in twips.
  void SetRowHeight(float twips);
  float RowHeight() const { return row_height_; }
  void SetRowHeightTitle(float twips);
  float RowHeightTitle() const { return row_height_title_; }
  void SetRowHeightSum(float twips);
  float RowHeightSum() const { return row_height_sum_; }

  // Appearance: the saved properties. Every writer goes through their table (saved_properties.cc), which tells the site
  // which of them changed.
  void SetBackColor(platform::Colour colour) { Change(&Stockbook::BackColor, colour); }
  platform::Colour BackColor() const { return fg_.ColourOf(platform::GridColour::kBackColor); }
  void SetBackColorBkg(platform::Colour colour) { Change(&Stockbook::BackColorBkg, colour); }
  platform::Colour BackColorBkg() const { return fg_.ColourOf(platform::GridColour::kBackColorBkg); }
  void SetBackColorFixed(platform::Colour colour) { Change(&Stockbook::BackColorFixed, colour); }
  platform::Colour BackColorFixed() const { return fg_.ColourOf(platform::GridColour::kBackColorFixed); }
  void SetBackColorFrozen(platform::Colour colour) { Change(&Stockbook::BackColorFrozen, colour); }
  platform::Colour BackColorFrozen() const { return fg_.ColourOf(platform::GridColour::kBackColorFrozen); }
  void SetBackColorSel(platform::Colour colour) { Change(&Stockbook::BackColorSel, colour); }
  platform::Colour BackColorSel() const { return fg_.ColourOf(platform::GridColour::kBackColorSel); }
  void SetForeColor(platform::Colour colour) { Change(&Stockbook::ForeColor, colour); }
  platform::Colour ForeColor() const { return fg_.ColourOf(platform::GridColour::kForeColor); }
  void SetForeColorFixed(platform::Colour colour) { Change(&Stockbook::ForeColorFixed, colour); }
  platform::Colour ForeColorFixed() const { return fg_.ColourOf(platform::GridColour::kForeColorFixed); }
  void SetForeColorFrozen(platform::Colour colour) { Change(&Stockbook::ForeColorFrozen, colour); }
  platform::Colour ForeColorFrozen() const { return fg_.ColourOf(platform::GridColour::kForeColorFrozen); }
  void SetForeColorSel(platform::Colour colour) { Change(&Stockbook::ForeColorSel, colour); }
  platform::Colour ForeColorSel() const { return fg_.ColourOf(platform::GridColour::kForeColorSel); }
  void SetGridColor(platform::Colour colour) { Change(&Stockbook::GridColor, colour); }
  platform::Colour GridColor() const { return fg_.ColourOf(platform::GridColour::kGridColor); }
  void SetGridColorFixed(platform::Colour colour) { Change(&Stockbook::GridColorFixed, colour); }
  platform::Colour GridColorFixed() const { return fg_.ColourOf(platform::GridColour::kGridColorFixed); }
  void SetGridLines(platform::GridLineStyle style) { Change(&Stockbook::GridLines, style); }
  platform::GridLineStyle GridLines() const { return fg_.GridLines(); }
  void SetGridLinesFixed(platform::GridLineStyle style) { Change(&Stockbook::GridLinesFixed, style); }
  platform::GridLineStyle GridLinesFixed() const { return fg_.GridLinesFixed(); }
  void SetOutlinebar(platform::OutlineBarStyle style) { Change(&Stockbook::Outlinebar, style); }
  platform::OutlineBarStyle Outlinebar() const { return fg_.OutlineBar(); }
  void SetRowHeightMin(float twips) { Change(&Stockbook::RowHeightMin, twips); }
  float RowHeightMin() const { return fg_.RowHeightMin(); }
  void SetRowHeightMax(float twips) { Change(&Stockbook::RowHeightMax, twips); }
  float RowHeightMax() const { return fg_.RowHeightMax(); }
  void SetScrollBars(platform::ScrollBarsSetting setting) { Change(&Stockbook::ScrollBars, setting); }
  platform::ScrollBarsSetting ScrollBars() const { return fg_.ScrollBars(); }
  void SetBillPicture(platform::PictureRef picture) { Change(&Stockbook::BillPicture, std::move(picture)); }
  platform::PictureRef BillPicture() const { return pictures_.bill; }
  void SetBillAuditedPicture(platform::PictureRef picture) {
    Change(&Stockbook::BillAuditedPicture, std::move(picture));
  }
  platform::PictureRef BillAuditedPicture() const { return pictures_.bill_audited; }
  void SetRevPicture(platform::PictureRef picture) { Change(&Stockbook::RevPicture, std::move(picture)); }
  platform::PictureRef RevPicture() const { return pictures_.rev; }
  void SetRevAuditedPicture(platform::PictureRef picture) { Change(&Stockbook::RevAuditedPicture, std::move(picture)); }
  platform::PictureRef RevAuditedPicture() const { return pictures_.rev_audited; }
  void SetIssPicture(platform::PictureRef picture) { Change(&Stockbook::IssPicture, std::move(picture)); }
  platform::PictureRef IssPicture() const { return pictures_.iss; }
  void SetIssAuditedPicture(platform::PictureRef picture) { Change(&Stockbook::IssAuditedPicture, std::move(picture)); }
  platform::PictureRef IssAuditedPicture() const { return pictures_.iss_audited; }
  void SetShiftPicture(platform::PictureRef picture) { Change(&Stockbook::ShiftPicture, std::move(picture)); }
  platform::PictureRef ShiftPicture() const { return pictures_.shift; }
  void SetShiftAuditedPicture(platform::PictureRef picture) {
    Change(&Stockbook::ShiftAuditedPicture, std::move(picture));
  }
  platform::PictureRef ShiftAuditedPicture() const { return pictures_.shift_audited; }
  void SetNodeClosedPicture(platform::PictureRef picture) { Change(&Stockbook::NodeClosedPicture, std::move(picture)); }
  platform::PictureRef NodeClosedPicture() const { return pictures_.node_closed; }
  void SetNodeOpenPicture(platform::PictureRef picture) { Change(&Stockbook::NodeOpenPicture, std::move(picture)); }
  platform::PictureRef NodeOpenPicture() const { return pictures_.node_open; }
  void SetBackColorHot(platform::Colour colour) { Change(&Stockbook::BackColorHot, colour); }
  platform::Colour BackColorHot() const { return back_color_hot_; }
  void SetForeColorHot(platform::Colour colour) { Change(&Stockbook::ForeColorHot, colour); }
  platform::Colour ForeColorHot() const { return fore_color_hot_; }
  void SetTitleBackPicture(platform::PictureRef picture) { Change(&Stockbook::TitleBackPicture, std::move(picture)); }
  platform::PictureRef TitleBackPicture() const { return pictures_.title_back; }
  void SetMarkBackPicture(platform::PictureRef picture) { Change(&Stockbook::MarkBackPicture, std::move(picture)); }
  platform::PictureRef MarkBackPicture() const { return pictures_.mark_back; }
  void SetBorderWidth(int16_t pixels) { Change(&Stockbook::BorderWidth, pixels); }
  int16_t BorderWidth() const { return c1e_desk_.border_width; }
  void SetChildSpacing(int16_t pixels) { Change(&Stockbook::ChildSpacing, pixels); }
  int16_t ChildSpacing() const { return c1e_desk_.child_spacing; }
  void SetBorderColor(platform::Colour colour) { Change(&Stockbook::BorderColor, colour); }
  platform::Colour BorderColor() const { return c1e_body_.back_color; }
  void SetSheetBorderColor(platform::Colour colour) { Change(&Stockbook::SheetBorderColor, colour); }
  platform::Colour SheetBorderColor() const { return fg_.ColourOf(platform::GridColour::kSheetBorder); }

  // Methods. Loads the journal; -1 or an empty code keeps the current setting, so that a class code stays from load to
  // load, one that a load has found for its second key too: SetdpCode("") before a load of another partner. Returns
  // true if it was loaded, false if it was cancelled or failed. A database that cannot be read (busy, say) leaves keys,
  // rows and header as they were. What the journal could do without (a refused balance, class or name) is told through
  // Notify after 已读入. Called by a listener during a load it does nothing and returns false.
  bool Load(int32_t rKeyID = -1, int32_t rdpID = -1, std::string_view rdpCode = {});
  // Raises Notify and nothing else.
  void Prompt(const std::string& Msg);
  // Raises FindMsg for every row that holds all words of the text, see interaction::Find; StartRow is ignored and the
  // result always false.
  bool Find(std::string_view rSearchString, int32_t StartRow = -1);
  bool IsRangeSelected() const;
  void DefaultFormat();
  std::string Statistics() const;
  // "ColChanged" with a column key in rParas[0], "SetColFont"; others do nothing. The result is always empty.
  base::Value DoCommand(std::string_view CmdName, std::vector<base::Value>& rParas);

  // Plain flags for the host's use.
  bool AllowView() const { return allow_view_; }
  void SetAllowView(bool allow) { allow_view_ = allow; }
  bool AllowPrint() const { return allow_print_; }
  void SetAllowPrint(bool allow) { allow_print_ = allow; }

  // The frames around the grid, for the toolkit to draw.
  const Container& C1EDesk() const { return c1e_desk_; }
  const Container& C1EBody() const { return c1e_body_; }
  const Container& C1EHeader() const { return c1e_header_; }
  platform::PictureRef imgMark() const { return img_mark_; }
  // The appearance that a host keeps with its form, read from and written to its bag in a fixed order. An error of the
  // bag reaches the caller at once: what was read or written before it stays, the rest is not touched. Reading does not
  // report changed properties to the site; an absent key leaves its property unchanged.
  void ReadProperties(platform::PropertyBag& bag);
  void WriteProperties(platform::PropertyBag& bag) const;
  // Every field of the rows, for code composed with the control; amounts are masked according to AccRestrict.
  RowFields Fields() const;
  // For a toolkit whose own font has changed: sets the grid's font and the row heights for it at once, unless other
  // heights have been set since the last layout. A host that sets the grid's font itself calls DefaultFormat.
  void FollowFont(const platform::Font& font);
  // What the control knows of the journal in its grid, and the same again after a load that is to leave no trace. The
  // host keeps and puts back what the grid holds (sheet::GridSheet::Keep). Raises no event; nothing inside of a load.
  KeptJournal Keep() const;
  void PutBack(KeptJournal kept);
  // Whether an event is being delivered; the control must not be destroyed until it is over.
  bool IsRaising() const { return events_.IsRaising(); }

  // While the returned guard lives, the current row does not have its hot colours: for printing, and for changing the
  // grid's colours.
  [[nodiscard]] auto SetHotRowAside() { return handlers_->hot_row().SetAside(); }

 private:
  class JournalLoad;
  class SavedProperties;

  // A second key as it is stored; throws platform::Error where it has no room.
  static int16_t NarrowedKey(int32_t id);
  journal::SecondUnit SecondUnit() const;
  // Raises Notify.
  journal::Tell Teller() const;
  void WatchGrid();
  // What the host hears of a row: where its stock came from, or why that could not be read.
  std::string DescribeSource(int row) const;
  void StoreRowHeight(interaction::ResizedRow kind, int twips);
  void ForgetHotRow();
  // Raises AfterFormatted.
  void FormatGrid();
  void SizeRows();
  // Writes the saved property with that reader, and tells the site.
  template <typename Type>
  void Change(Type (Stockbook::*property)() const, std::type_identity_t<Type> value);
  void ShowCaption(const interaction::JournalCaption& caption);
  void RefreshProductNames();
  void ReadRowHeightsBack();
  void ApplyBackPictures();

  platform::Grid& fg_;
  platform::Grid& fg1_;
  const platform::TextMetrics& text_metrics_;
  const platform::Images& images_;
  platform::Menu& menu_;
  platform::Clipboard& clipboard_;
  platform::ControlSite& site_;
  // Readers tell what they could not read.
  mutable interaction::Events events_;

  std::shared_ptr<platform::Connection> connection_;
  grid::LayoutSettings layout_;
  grid::HiddenKeys hidden_keys_;
  grid::Pictures pictures_;
  journal::SubjectKeys keys_;
  journal::SubjectTexts subject_;
  Container c1e_desk_;
  Container c1e_body_;
  Container c1e_header_;
  platform::PictureRef img_mark_;
  std::string outline_col_key_;
  std::string acc_restrict_text_;
  bool acc_restricted_ = false;
  bool loading_ = false;
  bool allow_view_ = false;
  bool allow_print_ = false;
  float row_height_ = 250;
  float row_height_title_ = 400;
  float row_height_sum_ = 400;
  int title_as_laid_out_ = 0;  // twips
  int data_as_laid_out_ = 0;
  platform::Colour back_color_hot_ = 0x00E2D2C7;
  platform::Colour fore_color_hot_ = 0;
  int64_t record_count_ = -1;  // of the last journal query; -1 before the first
  std::unique_ptr<interaction::GridHandlers> handlers_;
};

}  // namespace stockbook::control
