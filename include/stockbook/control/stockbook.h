// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "stockbook/base/api.h"
#include "stockbook/base/journal_type.h"
#include "stockbook/base/value.h"
#include "stockbook/control/container.h"
#include "stockbook/interaction/event_listener.h"
#include "stockbook/platform/grid_types.h"
#include "stockbook/platform/picture.h"

namespace stockbook::platform {
class Clipboard;
class Connection;
class ControlSite;
class Grid;
class Images;
class Menu;
class PropertyBag;
class TextMetrics;
struct Font;
enum class GridLineStyle : int32_t;
enum class OutlineBarStyle : int32_t;
enum class ScrollBarsSetting : int32_t;
}  // namespace stockbook::platform

namespace stockbook::control {

using base::tqJournalTypeContants;

class RowFields;
struct KeptJournal;

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
  // Empties both grids, but for a row of captions, and lays the columns out.
  explicit Stockbook(const Surroundings& surroundings);
  // Takes its observer off the grid, which it leaves as it is.
  ~Stockbook();
  Stockbook(const Stockbook&) = delete;
  Stockbook& operator=(const Stockbook&) = delete;

  // From now on the listener hears every event, after those that were added before it, and once, however often it was
  // added. The caller keeps it alive.
  void AddListener(interaction::EventListener* listener);
  // It hears nothing more, not even the rest of the event under way; nothing for one that was not added.
  void RemoveListener(interaction::EventListener* listener);

  // Connection, rights and journal selection.

  // nullptr unless set: nothing can be loaded then. A load that is under way keeps the one that it began with.
  std::shared_ptr<platform::Connection> Conn() const;
  void SetConn(std::shared_ptr<platform::Connection> connection);
  // MaterialJournal unless set; other numbers are kept. Setting it lays the columns out anew and raises AfterFormatted;
  // the rows stay those of the last load.
  void SetJournalType(tqJournalTypeContants type);
  tqJournalTypeContants JournalType() const;
  // "Stockbook", "SupplierJournal", "CustomerJournal" or "ProjectJournal", by JournalType; "" for other numbers.
  std::string FmtName() const;
  // Both are false unless set. False hides the columns at once; true shows them from the next layout or load on.
  void SetAllowQty2(bool allow);
  bool AllowQty2() const;
  void SetAllowInv(bool allow);
  bool AllowInv() const;
  // Stored in 16 bits; a value outside -32768..32767 throws platform::Error and keeps the old one. Below 1 means all.
  void SetdpID(int32_t id);
  int32_t dpID() const;
  // Empty unless set. A load that finds it empty stores the class of the supplier or customer that dpID is, if KeyID is
  // above 0.
  void SetdpCode(std::string_view code);
  const std::string& dpCode() const;
  // The newest accounting period; "" when there is none. Each call asks the database.
  std::string AccPeriod() const;
  // What the second key is called; 全部仓库 or 全部项目 for all of them, "" where it is not found. Each call asks the
  // database.
  std::string DepotName() const;
  // 0 unless set. Also looks up the subject's header texts in the database, in a supplier's or customer's journal among
  // these.
  void SetKeyID(int32_t id);
  int32_t KeyID() const;
  // Name of what KeyID is; "" where it is not found. In a supplier's or customer's journal the four texts after it are
  // "".
  const std::string& KeyName() const;
  // Number of the product.
  const std::string& ProductNo() const;
  // 型号 of the product.
  const std::string& Model() const;
  // 规格 of the product.
  const std::string& Standard() const;
  // Unit of the product.
  const std::string& Measure() const;

  // Captions and filters.

  // These count from the next load on in the header band, and in captions of columns from the next layout on.
  void SetMaterielTitle(std::string_view title);
  const std::string& MaterielTitle() const;
  void SetSupplierTitle(std::string_view title);
  const std::string& SupplierTitle() const;
  void SetCustomerTitle(std::string_view title);
  const std::string& CustomerTitle() const;
  void SetProjectTitle(std::string_view title);
  const std::string& ProjectTitle() const;
  // These are captions from the next layout on. A supplier's journal shows those of receipts (Field00 to Field06), a
  // customer's those of issues (Field10 to Field16), the others both where they differ. 经手人, 交接人, 包装, 货位,
  // 期限, 序列号 and 生产日期 unless set.
  void SetField00(std::string_view caption);
  const std::string& Field00() const;
  void SetField01(std::string_view caption);
  const std::string& Field01() const;
  void SetField02(std::string_view caption);
  const std::string& Field02() const;
  void SetField03(std::string_view caption);
  const std::string& Field03() const;
  void SetField04(std::string_view caption);
  const std::string& Field04() const;
  void SetField05(std::string_view caption);
  const std::string& Field05() const;
  void SetField06(std::string_view caption);
  const std::string& Field06() const;
  void SetField10(std::string_view caption);
  const std::string& Field10() const;
  void SetField11(std::string_view caption);
  const std::string& Field11() const;
  void SetField12(std::string_view caption);
  const std::string& Field12() const;
  void SetField13(std::string_view caption);
  const std::string& Field13() const;
  void SetField14(std::string_view caption);
  const std::string& Field14() const;
  void SetField15(std::string_view caption);
  const std::string& Field15() const;
  void SetField16(std::string_view caption);
  const std::string& Field16() const;
  // Shown in the header band trimmed and followed by three blanks; reads back trimmed.
  void SetCaption(std::string_view caption);
  std::string Caption() const;
  // Keys of columns (base/column_keys.h), each followed by a bar; others are ignored. Counts from the next layout on.
  // It takes its columns out of the menu of columns and hides ProductName, Price, Quantity, Quantity2 and Account; the
  // menu alone leaves the other ones out.
  void SetFieldsFilter(std::string_view filter);
  const std::string& FieldsFilter() const;
  // Keys of the columns that the menu of columns leaves out, with a bar before and after each; those of FieldsFilter
  // among them.
  const std::string& ColsFilter() const;
  // "true", "false" or a number; other texts throw platform::Error and change nothing. "" unless set, which means
  // false, as 0 does. From the next load on restriction shows "-" in six cells of every line: Price, Account, RevAcc,
  // IssAcc, StoPrice and StoAcc. It does not cover the opening row, the total rows and the tax columns (AllowInv): a
  // host that restricts amounts offers no tax columns.
  void SetAccRestrict(std::string_view text);
  const std::string& AccRestrict() const;
  // These count from the next layout on; #,##0.00 unless set.
  void SetPriceFormat(std::string_view format);
  const std::string& PriceFormat() const;
  void SetQuantityFormat(std::string_view format);
  const std::string& QuantityFormat() const;
  void SetAccountFormat(std::string_view format);
  const std::string& AccountFormat() const;

  // Rows and grid.

  // Surroundings::fg.
  platform::Grid& Grid() const;
  // Key of the row's bill; 0 where there is none, as in a row that is not there.
  int32_t BillID(int32_t row = -1) const;
  // Type of the row's bill as a text, 入库单 say; "" where there is none.
  std::string BillName(int32_t row = -1) const;
  // 0 for a receipt, and where there is no bill; another number for an issue.
  int16_t Flag(int32_t row = -1) const;
  // 入库 or 出库: whether the bill of the current row is a receipt or an issue; 入库 where there is none.
  std::string FlagName() const;
  // The current row, -1 where there is none; a fixed row or one that is not there changes nothing. Setting it brings
  // the row into view, out of folded nodes, too.
  void SetRow(int32_t row);
  int32_t Row() const;
  // How many rows the grid has, the caption row included.
  int32_t Rows() const;
  // Key of the column with the outline: BillNo after every layout and load.
  const std::string& OutlineColKey() const;
  // Heights in twips.

  // Of all lines; before the first load it reads 250, whatever the font has made of them. Below 0 throws
  // platform::Error, and the old height stays.
  void SetRowHeight(float twips);
  float RowHeight() const;
  // Of the row of captions; before the first load it reads 400. Below 0 throws as RowHeight does.
  void SetRowHeightTitle(float twips);
  float RowHeightTitle() const;
  // Of nodes and totals; each layout makes it twice the height of a line. Below 0 throws as RowHeight does.
  void SetRowHeightSum(float twips);
  float RowHeightSum() const;

  // Appearance: the saved properties. Every writer goes through their table (saved_properties.cc), which tells the site
  // which of them changed.

  // These are the grid's, which has its own until they are set. Setting one takes the hot colours off the current row
  // and puts them back.
  void SetBackColor(platform::Colour colour);
  platform::Colour BackColor() const;
  void SetBackColorBkg(platform::Colour colour);
  platform::Colour BackColorBkg() const;
  void SetBackColorFixed(platform::Colour colour);
  platform::Colour BackColorFixed() const;
  void SetBackColorFrozen(platform::Colour colour);
  platform::Colour BackColorFrozen() const;
  void SetBackColorSel(platform::Colour colour);
  platform::Colour BackColorSel() const;
  void SetForeColor(platform::Colour colour);
  platform::Colour ForeColor() const;
  void SetForeColorFixed(platform::Colour colour);
  platform::Colour ForeColorFixed() const;
  void SetForeColorFrozen(platform::Colour colour);
  platform::Colour ForeColorFrozen() const;
  void SetForeColorSel(platform::Colour colour);
  platform::Colour ForeColorSel() const;
  void SetGridColor(platform::Colour colour);
  platform::Colour GridColor() const;
  void SetGridColorFixed(platform::Colour colour);
  platform::Colour GridColorFixed() const;
  // These go straight to the grid; of a sheet::GridSheet kFlat, kFlat and kComplete unless set.
  void SetGridLines(platform::GridLineStyle style);
  platform::GridLineStyle GridLines() const;
  void SetGridLinesFixed(platform::GridLineStyle style);
  platform::GridLineStyle GridLinesFixed() const;
  void SetOutlinebar(platform::OutlineBarStyle style);
  platform::OutlineBarStyle Outlinebar() const;
  // Both in twips, and as the grid takes them: of a sheet::GridSheet 0 to 144000, and the least height wins.
  void SetRowHeightMin(float twips);
  float RowHeightMin() const;
  void SetRowHeightMax(float twips);
  float RowHeightMax() const;
  // The grid's, kBoth of a sheet::GridSheet unless set.
  void SetScrollBars(platform::ScrollBarsSetting setting);
  platform::ScrollBarsSetting ScrollBars() const;
  // These stand in the column BillKind from the next load on; none unless set.
  void SetBillPicture(platform::PictureRef picture);
  platform::PictureRef BillPicture() const;
  void SetBillAuditedPicture(platform::PictureRef picture);
  platform::PictureRef BillAuditedPicture() const;
  void SetRevPicture(platform::PictureRef picture);
  platform::PictureRef RevPicture() const;
  void SetRevAuditedPicture(platform::PictureRef picture);
  platform::PictureRef RevAuditedPicture() const;
  void SetIssPicture(platform::PictureRef picture);
  platform::PictureRef IssPicture() const;
  void SetIssAuditedPicture(platform::PictureRef picture);
  platform::PictureRef IssAuditedPicture() const;
  void SetShiftPicture(platform::PictureRef picture);
  platform::PictureRef ShiftPicture() const;
  void SetShiftAuditedPicture(platform::PictureRef picture);
  platform::PictureRef ShiftAuditedPicture() const;
  // Both go to the grid at once; none unless set, which leaves it its own signs.
  void SetNodeClosedPicture(platform::PictureRef picture);
  platform::PictureRef NodeClosedPicture() const;
  void SetNodeOpenPicture(platform::PictureRef picture);
  platform::PictureRef NodeOpenPicture() const;
  // 0x00E2D2C7 unless set.
  void SetBackColorHot(platform::Colour colour);
  platform::Colour BackColorHot() const;
  // The grid's ForeColor when the control was made, unless set.
  void SetForeColorHot(platform::Colour colour);
  platform::Colour ForeColorHot() const;
  // Both fill every cell, from the next load or ReadProperties on; none unless set.
  void SetTitleBackPicture(platform::PictureRef picture);
  platform::PictureRef TitleBackPicture() const;
  void SetMarkBackPicture(platform::PictureRef picture);
  platform::PictureRef MarkBackPicture() const;
  // 0 unless set; a toolkit takes less for 0. Setting it gives C1EBody a border of 1 pixel for 0, and none for others.
  void SetBorderWidth(int16_t pixels);
  int16_t BorderWidth() const;
  // 0 unless set; a toolkit takes less for 0.
  void SetChildSpacing(int16_t pixels);
  int16_t ChildSpacing() const;
  // White unless set: the back colour of C1EBody.
  void SetBorderColor(platform::Colour colour);
  platform::Colour BorderColor() const;
  // The grid's GridColour::kSheetBorder.
  void SetSheetBorderColor(platform::Colour colour);
  platform::Colour SheetBorderColor() const;

  // Methods. Loads the journal; -1 or an empty code keeps the current setting, so that a class code stays from load to
  // load, one that a load has found for its second key too: SetdpCode("") before a load of another partner. Returns
  // true if it was loaded, false if it was cancelled or failed. A database that cannot be read (busy, say) leaves keys,
  // rows and header as they were. What the journal could do without (a refused balance, class or name), and what the
  // connection remarks of rows that it left out, is told through Notify after 已读入. Called by a listener during a
  // load it does nothing and returns false.
  bool Load(int32_t rKeyID = -1, int32_t rdpID = -1, std::string_view rdpCode = {});
  // Raises Notify and nothing else.
  void Prompt(const std::string& Msg);
  // Raises FindMsg for every row that holds all words of the text, see interaction::Find; StartRow is ignored and the
  // result always false.
  bool Find(std::string_view rSearchString, int32_t StartRow = -1);
  // Whether the selection is more than the current cell.
  bool IsRangeSelected() const;
  // Lays the columns out anew, as the settings say. Raises AfterFormatted.
  void DefaultFormat();
  // How many rows are bills, by kind, as lines of text. More than 32767 throw base::ArithmeticError.
  std::string Statistics() const;
  // "ColChanged" with a column key in rParas[0] (without one it throws std::out_of_range) writes the names of the
  // products anew if it is a part of theirs: Model, Standard or Measure. "SetColFont" gives the columns of numbers the
  // font Arial. Others do nothing. The result is always empty.
  base::Value DoCommand(std::string_view CmdName, std::vector<base::Value>& rParas);

  // Both are false unless set, and plain flags: the control reads neither.
  bool AllowView() const;
  void SetAllowView(bool allow);
  bool AllowPrint() const;
  void SetAllowPrint(bool allow);

  // These are frames for the toolkit to draw: C1EDesk around band and grid, C1EBody around the grid alone, C1EHeader
  // the band. ControlSite::FrameChanged tells when they are others.
  const Container& C1EDesk() const;
  const Container& C1EBody() const;
  const Container& C1EHeader() const;
  // The mark at the end of the band, and of lines with a source: Images' "Mark".
  platform::PictureRef imgMark() const;
  // Both are about the appearance that a host keeps with its form, read from and written to its bag in a fixed order.
  // An error of the bag reaches the caller at once: what was read or written before it stays, the rest is not touched.
  // Reading does not report changed properties to the site; an absent key leaves its property unchanged.
  void ReadProperties(platform::PropertyBag& bag);
  void WriteProperties(platform::PropertyBag& bag) const;

  // Every field of the rows, for code composed with the control; amounts are masked according to AccRestrict.
  RowFields Fields() const;
  // For a toolkit whose own font has changed: sets the grid's font and the row heights for it at once, unless other
  // heights have been set since the last layout. A host that sets the grid's font itself calls DefaultFormat.
  void FollowFont(const platform::Font& font);
  // Both are about what the control knows of the journal in its grid, kept and put back after a load that is to leave
  // no trace. The host keeps and puts back what the grid holds (sheet::GridSheet::Keep). Putting back raises no event
  // and does nothing inside of a load.
  std::shared_ptr<KeptJournal> Keep() const;
  void PutBack(KeptJournal&& kept);
  // Whether an event is being delivered; the control must not be destroyed until it is over.
  bool IsRaising() const;

  // While the returned guard lives, the current row does not have its hot colours: for printing, and for changing the
  // grid's colours.
  [[nodiscard]] std::shared_ptr<const void> SetHotRowAside();

 private:
  // Everything behind the interface; src/control/control_state.h has it.
  struct State;

  std::unique_ptr<State> state_;
};

}  // namespace stockbook::control
